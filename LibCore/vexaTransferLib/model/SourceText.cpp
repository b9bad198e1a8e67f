// SPDX-License-Identifier: MIT
#include <vexaTransferLib/model/SourceText.h>

#include <vexaTransferLib/model/ElementScan.h>

#include <algorithm>
#include <utility>

namespace vexaTransferLib {

SourceText::Pointer SourceText::Make(SourceBytes text, std::uint64_t root, std::vector<Scope> scopes,
                                     std::vector<LongSpan> longSpans, bool isFile) {
    return Pointer(new SourceText(std::move(text), root, std::move(scopes), std::move(longSpans), isFile));
}

SourceText::SourceText(SourceBytes text, std::uint64_t root, std::vector<Scope> scopes,
                       std::vector<LongSpan> longSpans, bool isFile)
    : text_(std::move(text)), root_(root), isFile_(isFile), scopes_(std::move(scopes)),
      longSpans_(std::move(longSpans)) {
    std::sort(longSpans_.begin(), longSpans_.end(),
              [](const LongSpan& left, const LongSpan& right) { return left.begin < right.begin; });
    outer_.reserve(scopes_.size());
    boundaries_.reserve(2 * scopes_.size());
    std::size_t innermost = kNoScope;
    for (std::size_t i = 0; i < scopes_.size(); ++i) {
        EndScopes(innermost, scopes_[i].begin);
        Bind(scopes_[i]);
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
        Unbind(scopes_[innermost]);
        innermost = outer_[innermost];
        boundaries_.push_back({end, innermost});
    }
}

void SourceText::Bind(const Scope& scope) {
    for (const Declaration& declaration : scope.declarations) {
        Prefix& prefix = prefixes_[declaration.prefix];
        prefix.open.push_back(&declaration);
        prefix.bindings.push_back({scope.begin, &declaration});
    }
}

// The declarations of the scopes around it hold again.
void SourceText::Unbind(const Scope& scope) {
    for (const Declaration& declaration : scope.declarations) {
        Prefix& prefix = prefixes_[declaration.prefix];
        prefix.open.pop_back();
        prefix.bindings.push_back({scope.end, prefix.open.empty() ? nullptr : prefix.open.back()});
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

const char* SourceText::EndOf(const char* tag) const {
    const std::uint64_t place = PlaceOf(tag);
    const auto found =
        std::lower_bound(longSpans_.begin(), longSpans_.end(), place,
                         [](const LongSpan& span, std::uint64_t wanted) { return span.begin < wanted; });
    return found != longSpans_.end() && found->begin == place ? At(found->end) : SkipElement(tag);
}

std::optional<std::string_view> SourceText::FindNamespace(std::string_view prefix,
                                                          std::uint64_t place) const {
    if (const auto found = prefixes_.find(prefix); found != prefixes_.end()) {
        const std::vector<Binding>& bindings = found->second.bindings;
        const auto after = std::upper_bound(
            bindings.begin(), bindings.end(), place,
            [](std::uint64_t wanted, const Binding& binding) { return wanted < binding.place; });
        if (after != bindings.begin() && (after - 1)->declaration != nullptr)
            return (after - 1)->declaration->uri;
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
