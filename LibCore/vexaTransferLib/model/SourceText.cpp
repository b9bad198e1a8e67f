// SPDX-License-Identifier: MIT
#include <vexaTransferLib/model/SourceText.h>

#include <algorithm>
#include <utility>

namespace vexaTransferLib {

namespace {

using Declaration = SourceText::Declaration;

bool IsBefore(const Declaration& left, const Declaration& right) {
    return left.prefix < right.prefix;
}

// The declarations are in the order of their prefixes.
const Declaration* Find(const std::vector<Declaration>& declarations, std::string_view prefix) {
    const auto found = std::lower_bound(
        declarations.begin(), declarations.end(), prefix,
        [](const Declaration& declaration, std::string_view wanted) { return declaration.prefix < wanted; });
    return found != declarations.end() && found->prefix == prefix ? &*found : nullptr;
}

} // namespace

SourceText::Pointer SourceText::Make(SourceBytes text, std::uint64_t root, std::vector<Scope> scopes) {
    return Pointer(new SourceText(std::move(text), root, std::move(scopes)));
}

SourceText::SourceText(SourceBytes text, std::uint64_t root, std::vector<Scope> scopes)
    : text_(std::move(text)), root_(root), scopes_(std::move(scopes)) {
    outer_.reserve(scopes_.size());
    boundaries_.reserve(2 * scopes_.size());
    std::size_t innermost = kNoScope;
    for (std::size_t i = 0; i < scopes_.size(); ++i) {
        std::sort(scopes_[i].declarations.begin(), scopes_[i].declarations.end(), IsBefore);
        EndScopes(innermost, scopes_[i].begin);
        outer_.push_back(innermost);
        boundaries_.push_back({scopes_[i].begin, i});
        innermost = i;
    }
    EndScopes(innermost, text_.Size());
}

// Of the innermost scope and of those around it, ends those that end up to a place.
void SourceText::EndScopes(std::size_t& innermost, std::uint64_t place) {
    while (innermost != kNoScope && scopes_[innermost].end <= place) {
        const std::uint64_t end = scopes_[innermost].end;
        innermost = outer_[innermost];
        boundaries_.push_back({end, innermost});
    }
}

std::vector<SourceText::Boundary>::const_iterator SourceText::FirstBoundaryAfter(std::uint64_t place) const {
    return std::upper_bound(
        boundaries_.begin(), boundaries_.end(), place,
        [](std::uint64_t wanted, const Boundary& boundary) { return wanted < boundary.place; });
}

std::size_t SourceText::InnermostAt(std::uint64_t place) const {
    const auto after = FirstBoundaryAfter(place);
    return after != boundaries_.begin() ? (after - 1)->scope : kNoScope;
}

bool SourceText::IsInRootScope(std::uint64_t place) const {
    for (std::size_t at = InnermostAt(place); at != kNoScope; at = outer_[at])
        if (scopes_[at].begin != place && scopes_[at].begin != root_)
            return false;
    return true;
}

bool SourceText::HasScopeIn(std::uint64_t begin, std::uint64_t end) const {
    const auto first =
        std::lower_bound(scopes_.begin(), scopes_.end(), begin,
                         [](const Scope& scope, std::uint64_t wanted) { return scope.begin < wanted; });
    return first != scopes_.end() && first->begin < end;
}

std::uint64_t SourceText::SameScopeUntil(std::uint64_t place) const {
    const auto next = FirstBoundaryAfter(place);
    return next != boundaries_.end() ? next->place : text_.Size();
}

std::optional<std::string_view> SourceText::FindNamespace(std::string_view prefix,
                                                          std::uint64_t place) const {
    for (std::size_t at = InnermostAt(place); at != kNoScope; at = outer_[at])
        if (const Declaration* const declaration = Find(scopes_[at].declarations, prefix))
            return declaration->uri;
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
