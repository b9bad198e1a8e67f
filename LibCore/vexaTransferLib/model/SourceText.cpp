// SPDX-License-Identifier: MIT
#include <vexaTransferLib/model/SourceText.h>

#include <algorithm>
#include <utility>

namespace vexaTransferLib {

SourceText::Pointer SourceText::Make(SourceBytes text, std::uint64_t root, std::vector<Scope> scopes) {
    return Pointer(new SourceText(std::move(text), root, std::move(scopes)));
}

SourceText::SourceText(SourceBytes text, std::uint64_t root, std::vector<Scope> scopes)
    : text_(std::move(text)), root_(root), scopes_(std::move(scopes)) {
    outer_.reserve(scopes_.size());
    std::size_t around = kNoScope;
    for (std::size_t i = 0; i < scopes_.size(); ++i) {
        while (around != kNoScope && scopes_[around].end <= scopes_[i].begin)
            around = outer_[around];
        outer_.push_back(around);
        around = i;
    }
}

// The last scope that starts at the place or before it; it may have ended.
std::size_t SourceText::LastScopeBefore(std::uint64_t place) const {
    const auto after =
        std::upper_bound(scopes_.begin(), scopes_.end(), place,
                         [](std::uint64_t wanted, const Scope& scope) { return wanted < scope.begin; });
    return after == scopes_.begin() ? kNoScope : static_cast<std::size_t>(after - scopes_.begin()) - 1;
}

bool SourceText::IsInRootScope(std::uint64_t place) const {
    for (std::size_t at = LastScopeBefore(place); at != kNoScope; at = outer_[at])
        if (scopes_[at].begin != place && scopes_[at].begin != root_ && scopes_[at].end > place)
            return false;
    return true;
}

std::uint64_t SourceText::SameScopeUntil(std::uint64_t place) const {
    const std::size_t last = LastScopeBefore(place);
    const std::size_t next = last == kNoScope ? 0 : last + 1;
    std::uint64_t until = next < scopes_.size() ? scopes_[next].begin : text_.Size();
    for (std::size_t at = last; at != kNoScope; at = outer_[at])
        if (scopes_[at].end > place)
            return std::min(until, scopes_[at].end);
    return until;
}

std::optional<std::string_view> SourceText::FindNamespace(std::string_view prefix,
                                                          std::uint64_t place) const {
    std::size_t at = LastScopeBefore(place);
    for (; at != kNoScope; at = outer_[at]) {
        const Scope& scope = scopes_[at];
        if (scope.end <= place)
            continue;
        for (const Declaration& declaration : scope.declarations)
            if (declaration.prefix == prefix)
                return declaration.uri;
    }
    if (prefix.empty())
        return std::string_view();
    if (prefix == "xml")
        return "http://www.w3.org/XML/1998/namespace";
    return std::nullopt;
}

text::SourceLocation SourceText::Locate(std::uint64_t place) const {
    const std::lock_guard lock(linesMutex_);
    return lines_.Locate(Text(), 0, place);
}

} // namespace vexaTransferLib
