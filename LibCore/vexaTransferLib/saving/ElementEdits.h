// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/model/ChildScan.h>
#include <vexaTransferLib/saving/LineLayout.h>
#include <vexaTransferLib/saving/Saving.h>
#include <vexaTransferLib/saving/TextEdits.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::saving {

/// The name of a new child of an element, with the prefix of the element.
std::string QualifiedBelow(const SavedElement& parent, std::string_view name);

/// A child of an element that is saved.
struct SavedChild {
    const char* begin;
    const char* end; ///< the place after it
    std::string_view name;
    NamespaceKind kind;

    bool Is(NamespaceKind wantedKind, std::string_view wantedName) const {
        return kind == wantedKind && name == wantedName;
    }
};

/// The changes of one element's children. What is added is laid out as its neighbours are.
class ElementEdits {
public:
    /// Names of children in the order of their schema. All others come after them.
    using Order = std::span<const std::string_view>;

    /// \param edits gets the changes
    /// \param kind of the children that the order names
    ElementEdits(Saving& saving, TextEdits& edits, const SavedElement& element, Order order,
                 NamespaceKind kind = NamespaceKind::kGpx);

    const SavedElement& Element() const { return element_; }
    const std::vector<SavedChild>& Children();
    /// The first child with this name, of the kind of the order; null when there is none.
    const SavedChild* Find(std::string_view name);

    /// Replaces what is in a child.
    /// \param content escaped
    void SetContent(const SavedChild& child, std::string_view content);
    /// Replaces the value of an attribute without a prefix, or adds the attribute.
    /// \param value escaped
    void SetAttribute(const ScannedTag& tag, std::string_view name, std::string_view value);
    /// Removes an attribute with the blank before it, if there is one.
    void RemoveAttribute(const ScannedTag& tag, std::string_view name);
    void Remove(const SavedChild& child);
    /// Adds an element with a text, in the prefix of the parent, where the order has it.
    /// \param content escaped
    void AddText(std::string_view name, std::string_view content);
    /// Adds something that starts with its separator, where the order has this name.
    void Add(std::string_view name, std::string xml);
    /// Adds something that starts with its separator, after the last child.
    void AddLast(std::string xml) { Add({}, std::move(xml)); }
    /// The name of a new child, with the prefix of the parent.
    std::string Qualified(std::string_view name) const { return QualifiedBelow(element_, name); }
    /// How a new child is laid out.
    const ElementLayout& ChildLayout();

    /// Must be called when all is added.
    void Finish();

private:
    std::size_t RankOf(std::string_view name) const;
    std::size_t RankOf(const SavedChild& child) const;
    ElementLayout MakeLayout();
    bool HasContent() const { return !element_.child.tag.isEmpty; }
    std::uint64_t ContentEnd() const;
    /// True for an element without children that is not empty.
    bool HasTextOnly();

    Saving& saving_;
    TextEdits& edits_;
    SavedElement element_;
    Order order_;
    NamespaceKind kind_;
    bool areChildrenKnown_ = false;
    std::vector<SavedChild> children_;
    bool isLayoutKnown_ = false;
    ElementLayout layout_;
    /// What an element without content gets.
    std::string content_;
    bool hasAdded_ = false;
};

} // namespace vexaTransferLib::saving
