// SPDX-License-Identifier: MIT
#include <vexaTransferLib/saving/TextEdits.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace vexaTransferLib::saving {

void TextEdits::Replace(std::uint64_t begin, std::uint64_t end, std::string text) {
    edits_.push_back({begin, end, std::move(text)});
}

void TextEdits::Append(TextEdits&& other) {
    edits_.insert(edits_.end(), std::make_move_iterator(other.edits_.begin()),
                  std::make_move_iterator(other.edits_.end()));
    other.edits_.clear();
}

// Both are in the order of the text, and the parts of each do not overlap.
void TextEdits::AddUntouched(const TextEdits& others, std::uint64_t begin, std::uint64_t end) {
    if (others.edits_.empty())
        return;
    Sort();
    std::vector<Edit> parts;
    for (const Edit& edit : edits_)
        if (!edit.IsInsertion())
            parts.push_back({edit.begin, edit.end, {}});
    const auto startsBefore = [](const Edit& edit, std::uint64_t place) { return edit.begin < place; };
    const auto isTouched = [&](const Edit& other) {
        const auto part = std::lower_bound(parts.begin(), parts.end(), other.begin, startsBefore);
        const bool isInside = part != parts.begin() && std::prev(part)->end > other.begin;
        const auto inner = std::lower_bound(edits_.begin(), edits_.end(), other.begin + 1, startsBefore);
        const bool isAtStart = part != parts.end() && part->begin == other.begin;
        return isInside ||
               (!other.IsInsertion() && (isAtStart || (inner != edits_.end() && inner->begin < other.end)));
    };
    std::vector<Edit> untouched;
    for (auto other = std::lower_bound(others.edits_.begin(), others.edits_.end(), begin, startsBefore);
         other != others.edits_.end() && other->begin <= end; ++other)
        if (other->end <= end && !isTouched(*other))
            untouched.push_back(*other);
    edits_.insert(edits_.end(), std::make_move_iterator(untouched.begin()),
                  std::make_move_iterator(untouched.end()));
}

// An insertion is empty, so it comes before what replaces a part that starts at its place.
void TextEdits::Sort() {
    const auto comesBefore = [](const Edit& left, const Edit& right) {
        if (left.begin != right.begin)
            return left.begin < right.begin;
        return left.IsInsertion() && !right.IsInsertion();
    };
    if (!std::is_sorted(edits_.begin(), edits_.end(), comesBefore))
        std::stable_sort(edits_.begin(), edits_.end(), comesBefore);
}

void TextEdits::Apply(std::string_view text, std::uint64_t begin, std::uint64_t end,
                      const std::function<void(std::string_view)>& receive) {
    Sort();
    const auto pass = [&](std::string_view piece) {
        if (!piece.empty())
            receive(piece);
    };
    std::size_t at = static_cast<std::size_t>(begin);
    for (const Edit& edit : edits_) {
        if (edit.begin < begin || edit.end > end)
            continue;
        if (edit.begin < at) {
            pass(edit.text);
            continue;
        }
        pass(text.substr(at, static_cast<std::size_t>(edit.begin) - at));
        pass(edit.text);
        at = static_cast<std::size_t>(edit.end);
    }
    pass(text.substr(at, static_cast<std::size_t>(end) - at));
}

std::string TextEdits::Apply(std::string_view text) {
    std::string changed;
    Apply(text, 0, text.size(), [&](std::string_view piece) { changed.append(piece); });
    return changed;
}

} // namespace vexaTransferLib::saving
