// SPDX-License-Identifier: MIT
#include <vexaTransferLib/model/SourceText.h>

#include <algorithm>
#include <utility>

namespace vexaTransferLib {

SourceText::Pointer SourceText::Make(std::string text, std::uint64_t root, std::vector<Scope> scopes) {
    return Pointer(new SourceText(std::move(text), root, std::move(scopes)));
}

SourceText::SourceText(std::string text, std::uint64_t root, std::vector<Scope> scopes)
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

std::optional<std::string_view> SourceText::FindNamespace(std::string_view prefix,
                                                          std::uint64_t place) const {
    const auto after =
        std::upper_bound(scopes_.begin(), scopes_.end(), place,
                         [](std::uint64_t wanted, const Scope& scope) { return wanted < scope.begin; });
    std::size_t at =
        after == scopes_.begin() ? kNoScope : static_cast<std::size_t>(after - scopes_.begin()) - 1;
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
