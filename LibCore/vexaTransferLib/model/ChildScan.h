// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/model/ElementScan.h>
#include <vexaTransferLib/model/ElementText.h>
#include <vexaTransferLib/model/SourceText.h>

#include <cstdint>
#include <string_view>

namespace vexaTransferLib {

/// What kind of elements a namespace has.
enum class NamespaceKind : std::uint8_t { kGpx, kGroundspeak, kTarvik, kOther };

/// Finds the namespaces of elements that are visited in the order of the source, mostly without looking anything up.
class NamespaceCursor {
public:
    /// \param source must exist as long as the cursor
    explicit NamespaceCursor(const SourceText& source);

    NamespaceKind KindOf(std::string_view prefix, std::uint64_t place) {
        const Known& known = prefix.empty() ? default_ : prefixed_;
        if (place >= known.begin && place < known.end && prefix == known.prefix)
            return known.kind;
        return Find(prefix, place);
    }
    /// True when it is the namespace that the root is in.
    bool IsRoots(std::string_view prefix, std::uint64_t place) {
        KindOf(prefix, place);
        return (prefix.empty() ? default_ : prefixed_).isRoots;
    }
    std::string_view UriOf(std::string_view prefix, std::uint64_t place) const;
    /// The namespace of the root.
    std::string_view RootUri() const { return rootUri_; }

private:
    /// The namespace of a prefix in a part of the source.
    struct Known {
        std::string_view prefix;
        std::uint64_t begin = 0;
        std::uint64_t end = 0;
        NamespaceKind kind = NamespaceKind::kOther;
        bool isRoots = false;
    };

    NamespaceKind Find(std::string_view prefix, std::uint64_t place);

    const SourceText& source_;
    std::string_view rootUri_;
    Known default_;
    Known prefixed_;
};

/// An element while its parent is walked through.
struct ScannedChild {
    ScannedTag tag;
    const char* begin = nullptr; ///< its "<"
    std::string_view prefix;
    std::string_view name; ///< local
    NamespaceKind kind = NamespaceKind::kOther;

    bool Is(NamespaceKind wantedKind, std::string_view wantedName) const {
        return kind == wantedKind && name == wantedName;
    }
    bool IsGpx(std::string_view wantedName) const { return Is(NamespaceKind::kGpx, wantedName); }
};

/// The element that starts here.
inline ScannedChild ScanChild(NamespaceCursor& names, const SourceText& source, const char* begin) {
    ScannedChild child;
    child.tag = ScanTag(begin);
    child.begin = begin;
    child.prefix = PrefixOf(child.tag.name);
    child.name = child.prefix.empty() ? child.tag.name : child.tag.name.substr(child.prefix.size() + 1);
    child.kind = names.KindOf(child.prefix, source.PlaceOf(begin));
    return child;
}

/// Calls `visit(child)` for each child that is an element. It returns the place after the child, or null when the child
/// is to be skipped. Returns the place after the parent.
template <class Visit>
const char* ForEachChild(NamespaceCursor& names, const SourceText& source, const ScannedTag& parent,
                         Visit visit) {
    if (parent.isEmpty)
        return parent.end;
    for (const char* at = parent.end;;) {
        while (*at != '<')
            ++at;
        if (IsStartTag(at)) {
            const char* const end = visit(ScanChild(names, source, at));
            at = end != nullptr ? end : source.EndOf(at);
            continue;
        }
        const ScannedPart part = ScanPart(at);
        at = part.end;
        if (part.kind == ScannedPart::Kind::kEnd)
            return at;
    }
}

/// The text of an element that is a value.
struct ScannedLeaf {
    std::string_view text; ///< as it stands, if it is simple; otherwise empty
    const char* end;       ///< after the element
    bool isSimple;         ///< the content is one text without references and carriage returns, or nothing
};

ScannedLeaf ScanLeaf(const ScannedTag& tag, const char* begin);

} // namespace vexaTransferLib
