// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vexaTransferLib::saving {

/// Changes to a text, each a part of it and what takes the part's place. All places are those of the text as it was.
class TextEdits {
public:
    /// Puts a text in place of a part, which may be empty. Parts do not overlap. Of what is inserted at the same place,
    /// the first comes first, and before what replaces a part that starts there. What is inserted inside a part that is
    /// replaced comes after it.
    void Replace(std::uint64_t begin, std::uint64_t end, std::string text);
    void Insert(std::uint64_t place, std::string text) { Replace(place, place, std::move(text)); }
    void Remove(std::uint64_t begin, std::uint64_t end) { Replace(begin, end, {}); }

    /// Takes all edits of another one, which is empty then.
    void Append(TextEdits&& other);
    /// Adds those edits of another one that lie in a part of the text and that none of these overlaps.
    /// \param others sorted
    void AddUntouched(const TextEdits& others, std::uint64_t begin, std::uint64_t end);
    /// Brings the edits into the order of the text.
    void Sort();

    bool IsEmpty() const { return edits_.empty(); }

    /// Passes on the changed part of the text from one place to another, piece by piece. Edits outside of it are left
    /// out; none reaches across its ends. A piece of the text itself is passed as it is, however long; none is empty.
    void Apply(std::string_view text, std::uint64_t begin, std::uint64_t end,
               const std::function<void(std::string_view)>& receive);
    /// The whole text, changed.
    std::string Apply(std::string_view text);

private:
    struct Edit {
        std::uint64_t begin;
        std::uint64_t end;
        std::string text;

        bool IsInsertion() const { return begin == end; }
    };

    std::vector<Edit> edits_;
};

} // namespace vexaTransferLib::saving
