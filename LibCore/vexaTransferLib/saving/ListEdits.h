// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/saving/ElementEdits.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::saving {

/// Objects of the model that are children of one element, in their order.
class SavedList {
public:
    SavedList() = default;
    SavedList(const SavedList&) = delete;
    SavedList& operator=(const SavedList&) = delete;
    virtual ~SavedList() = default;

    virtual std::size_t Count() const = 0;
    /// \{
    /// Of the element that an object was read from; null for an object without one.
    virtual const SourceText* SourceOf(std::size_t index) const = 0;
    virtual std::uint64_t PlaceOf(std::size_t index) const = 0;
    /// \}
    /// False when the object is surely as its element is.
    virtual bool IsChanged(std::size_t index) const = 0;
    /// Makes the element be as the object is.
    virtual void Edit(std::size_t index, const SavedElement& element, TextEdits& edits) = 0;
    /// The object's element anew, after the separator of the layout.
    virtual std::string Render(std::size_t index, const ElementLayout& layout) = 0;
};

/// What the elements of a list have in common.
struct ListKind {
    std::string_view name; ///< of the elements
    std::size_t readCount; ///< how many there were
    /// Among others, the elements with this name that are not in the list; null for none.
    const std::vector<GpxElement>* unread = nullptr;
    NamespaceKind kind = NamespaceKind::kGpx;
};

/// Makes the children of an element be the objects of a list: edits those that stay, removes those that are gone, and
/// adds the others beside them.
void SaveList(Saving& saving, TextEdits& edits, ElementEdits& parent, const ListKind& kind, SavedList& list);

/// The indexes of a longest part of the numbers that increases.
std::vector<std::size_t> LongestIncrease(const std::vector<std::size_t>& numbers);

} // namespace vexaTransferLib::saving
