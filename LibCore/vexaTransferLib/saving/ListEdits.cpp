// SPDX-License-Identifier: MIT
#include <vexaTransferLib/saving/ListEdits.h>

#include <vexaTransferLib/model/GpxModelAccess.h>

#include <algorithm>
#include <utility>

namespace vexaTransferLib::saving {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/// One list, while it is saved.
class ListSaving {
public:
    ListSaving(Saving& saving, TextEdits& edits, ElementEdits& parent, const ListKind& kind, SavedList& list)
        : saving_(saving), edits_(edits), parent_(parent), kind_(kind), list_(list) {}

    void Save() {
        if (IsInOrder()) {
            for (std::size_t i = 0; i < list_.Count(); ++i)
                EditIfChanged(i);
            return;
        }
        FindRead();
        FindKept();
        RemoveOthers();
        Write();
    }

private:
    // As many different elements as were read are all of them.
    bool IsInOrder() const {
        if (list_.Count() != kind_.readCount)
            return false;
        const SavedElement& element = parent_.Element();
        std::uint64_t last = saving_.Source().PlaceOf(element.child.begin);
        const std::uint64_t end = saving_.Source().PlaceOf(element.end);
        for (std::size_t i = 0; i < list_.Count(); ++i) {
            const std::uint64_t place = list_.PlaceOf(i);
            if (list_.SourceOf(i) != &saving_.Source() || place <= last || place >= end)
                return false;
            last = place;
        }
        return true;
    }
    void EditIfChanged(std::size_t index) {
        if (list_.IsChanged(index))
            list_.Edit(index, saving_.ElementAt(list_.PlaceOf(index)), edits_);
    }

    void FindRead() {
        std::vector<std::uint64_t> unread;
        if (kind_.unread != nullptr)
            for (const GpxElement& element : *kind_.unread)
                if (GpxModelAccess::GetSource(element) == &saving_.Source())
                    unread.push_back(GpxModelAccess::GetPlace(element));
        std::sort(unread.begin(), unread.end());
        for (const SavedChild& child : parent_.Children())
            if (child.Is(kind_.kind, kind_.name) &&
                !std::binary_search(unread.begin(), unread.end(), saving_.Source().PlaceOf(child.begin)))
                read_.push_back(&child);
    }
    // The index of the element among those that were read.
    std::size_t FindElement(std::size_t index) const {
        if (list_.SourceOf(index) != &saving_.Source())
            return kNone;
        const char* const begin = saving_.Source().At(list_.PlaceOf(index));
        const auto found = std::partition_point(
            read_.begin(), read_.end(), [begin](const SavedChild* child) { return child->begin < begin; });
        return found != read_.end() && (*found)->begin == begin
                   ? static_cast<std::size_t>(found - read_.begin())
                   : kNone;
    }
    void FindKept() {
        std::vector<std::size_t> objects;
        std::vector<std::size_t> elements;
        for (std::size_t i = 0; i < list_.Count(); ++i) {
            const std::size_t element = FindElement(i);
            if (element == kNone)
                continue;
            objects.push_back(i);
            elements.push_back(element);
        }
        kept_.assign(list_.Count(), kNone);
        for (const std::size_t index : LongestIncrease(elements))
            kept_[objects[index]] = elements[index];
    }
    void RemoveOthers() {
        std::vector<bool> isKept(read_.size());
        for (const std::size_t element : kept_)
            if (element != kNone)
                isKept[element] = true;
        for (std::size_t i = 0; i < read_.size(); ++i)
            if (!isKept[i])
                parent_.Remove(*read_[i]);
    }

    // An object that is added comes after the one before it; the first ones come before the first that is kept.
    void Write() {
        const auto firstKept =
            std::find_if(kept_.begin(), kept_.end(), [](std::size_t element) { return element != kNone; });
        const SavedChild* before = nullptr;
        for (std::size_t i = 0; i < list_.Count(); ++i) {
            if (kept_[i] != kNone) {
                before = read_[kept_[i]];
                EditIfChanged(i);
            } else if (before != nullptr) {
                edits_.Insert(PlaceAfter(saving_.Text(), saving_.Source().PlaceOf(before->end)),
                              list_.Render(i, LayoutOf(before)));
            } else if (firstKept != kept_.end()) {
                AddBefore(*read_[*firstKept], i);
            } else {
                parent_.Add(kind_.name, list_.Render(i, LayoutOf(nullptr)));
            }
        }
    }
    void AddBefore(const SavedChild& child, std::size_t index) {
        const std::uint64_t place = saving_.Source().PlaceOf(child.begin);
        const std::size_t separator = SeparatorBefore(saving_.Text(), place).size();
        edits_.Insert(place - separator, list_.Render(index, LayoutOf(&child)));
    }
    ElementLayout LayoutOf(const SavedChild* neighbour) {
        if (neighbour == nullptr)
            return parent_.ChildLayout();
        const std::string_view separator =
            SeparatorBefore(saving_.Text(), saving_.Source().PlaceOf(neighbour->begin));
        return {std::string(separator), saving_.Indent()};
    }

    Saving& saving_;
    TextEdits& edits_;
    ElementEdits& parent_;
    const ListKind& kind_;
    SavedList& list_;
    /// The elements of the list that were read.
    std::vector<const SavedChild*> read_;
    /// For each object the index of its element, if it stays where it is.
    std::vector<std::size_t> kept_;
};

} // namespace

void SaveList(Saving& saving, TextEdits& edits, ElementEdits& parent, const ListKind& kind, SavedList& list) {
    ListSaving(saving, edits, parent, kind, list).Save();
}

// For each length, the part of this length that ends with the smallest number is the one that can grow.
std::vector<std::size_t> LongestIncrease(const std::vector<std::size_t>& numbers) {
    std::vector<std::size_t> ends;
    std::vector<std::size_t> before(numbers.size(), kNone);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const auto place = std::partition_point(ends.begin(), ends.end(),
                                                [&](std::size_t end) { return numbers[end] < numbers[i]; });
        if (place != ends.begin())
            before[i] = *(place - 1);
        if (place == ends.end())
            ends.push_back(i);
        else
            *place = i;
    }
    std::vector<std::size_t> longest;
    for (std::size_t i = ends.empty() ? kNone : ends.back(); i != kNone; i = before[i])
        longest.push_back(i);
    std::reverse(longest.begin(), longest.end());
    return longest;
}

} // namespace vexaTransferLib::saving
