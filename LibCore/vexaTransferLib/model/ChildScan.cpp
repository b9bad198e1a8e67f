// SPDX-License-Identifier: MIT
#include <vexaTransferLib/model/ChildScan.h>

#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/Namespaces.h>

#include <cstddef>

namespace vexaTransferLib {

NamespaceCursor::NamespaceCursor(const SourceText& source) : source_(source) {
    const ScannedTag root = ScanTag(source.At(source.RootPlace()));
    rootUri_ = UriOf(PrefixOf(root.name), source.RootPlace());
}

std::string_view NamespaceCursor::UriOf(std::string_view prefix, std::uint64_t place) const {
    return source_.FindNamespace(prefix, place).value_or(std::string_view());
}

// What the root is in is taken for GPX, whatever it is: its name has been checked.
NamespaceKind NamespaceCursor::Find(std::string_view prefix, std::uint64_t place) {
    const std::string_view uri = UriOf(prefix, place);
    NamespaceKind kind = NamespaceKind::kOther;
    if (uri == rootUri_ || text::IsGpxNamespace(uri))
        kind = NamespaceKind::kGpx;
    else if (text::IsGroundspeakNamespace(uri))
        kind = NamespaceKind::kGroundspeak;
    else if (uri == text::kTarvikUri)
        kind = NamespaceKind::kTarvik;
    Known& known = prefix.empty() ? default_ : prefixed_;
    known = {prefix, place, source_.SameScopeUntil(place), kind, uri == rootUri_};
    return kind;
}

// A value is short: looking at its bytes one by one costs less than a search.
ScannedLeaf ScanLeaf(const ScannedTag& tag, const char* begin) {
    if (tag.isEmpty)
        return {std::string_view(tag.end, tag.end), tag.end, true};
    const char* at = tag.end;
    while (*at != '<' && *at != '&' && *at != '\r')
        ++at;
    if (at[0] != '<' || at[1] != '/')
        return {{}, SkipElement(begin), false};
    const std::string_view text(tag.end, static_cast<std::size_t>(at - tag.end));
    while (*at != '>')
        ++at;
    return {text, at + 1, true};
}

} // namespace vexaTransferLib
