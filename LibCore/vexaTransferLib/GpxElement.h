// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// An XML element of a document that was read completely.

#include <common/Export.h>

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <unicode/unistr.h>

#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>
#include <vector>

namespace vexaTransferLib {

class SourceText;

/// An attribute of a GpxElement. Declarations of namespaces are none.
struct VEXATRANSFERLIB_API GpxAttribute {
    std::string_view name;      ///< local name, in UTF-8; belongs to the element's source
    std::string_view nameSpace; ///< empty for none, which is usual; belongs to the element's source
    icu::UnicodeString value;   ///< with references replaced
};

/// A view of an XML element in the source of a document that was read completely: what the model has no member for is
/// found here. Nothing is kept but the place, so each call reads the source again: a call for the element itself costs
/// as much as its start tag, and one for its content as much as the content up to what is found.
///
/// The source lives as long as one view of it, or one object that was read from it. It never changes: a view shows what
/// was read, whatever was done to the object since. Views are values; copying one costs next to nothing. Const
/// operations may run on several threads at once.
///
///     for (const GpxElement& child : point.GetElement().GetChildren())
///         std::cout << child.GetName() << '\n';
class VEXATRANSFERLIB_API GpxElement {
public:
    class Iterator;
    class Children;

    /// \{
    /// A view of nothing: all texts are empty, and there are no attributes and no children.
    GpxElement() noexcept;
    GpxElement(const GpxElement&) noexcept;
    GpxElement(GpxElement&&) noexcept;
    GpxElement& operator=(const GpxElement&) noexcept;
    GpxElement& operator=(GpxElement&&) noexcept;
    ~GpxElement();
    /// \}

    /// True when it is a view of an element.
    explicit operator bool() const noexcept { return source_ != nullptr; }
    /// \{
    /// Whether they are views of one element of one source.
    friend bool operator==(const GpxElement& left, const GpxElement& right) noexcept {
        return left.source_ == right.source_ && left.place_ == right.place_;
    }
    friend bool operator!=(const GpxElement& left, const GpxElement& right) noexcept {
        return !(left == right);
    }
    /// \}

    /// \{
    /// Local name, prefix and namespace in UTF-8; the latter two are empty for none. Valid as long as the source.
    std::string_view GetName() const;
    std::string_view GetPrefix() const;
    std::string_view GetNamespace() const;
    /// \}
    /// True when it has this name in this namespace.
    bool Is(std::string_view nameSpace, std::string_view name) const;

    /// The element as it stands in the source, from its start tag to the end of its end tag. Valid as long as the
    /// source.
    std::string_view GetXml() const;
    /// \{
    /// Where it starts, from 1; a column for each UTF-16 code unit. 0 for a view of nothing. The lines are counted on
    /// the first call, at the cost of the source up to the element.
    std::uint64_t GetLine() const;
    std::uint64_t GetColumn() const;
    /// \}

    /// All text in it and in its descendants, in their order, with references replaced and without comments.
    /// \throws std::bad_alloc
    icu::UnicodeString GetText() const;
    /// The text as a number as XML Schema writes a decimal or a double, with blanks around it or not; empty for any
    /// other text.
    std::optional<double> GetNumber() const;
    /// The text as a time as XML Schema writes it, in milliseconds since 1970-01-01T00:00:00 UTC; empty for any other
    /// text.
    std::optional<double> GetTime() const;

    /// The value of an attribute; empty when there is none.
    /// \param nameSpace empty for none, which is usual
    std::optional<icu::UnicodeString> GetAttribute(std::string_view name,
                                                   std::string_view nameSpace = {}) const;
    /// All attributes in their order.
    std::vector<GpxAttribute> GetAttributes() const;

    /// \{
    /// The first child that is an element, and the next one after this; views of nothing where there is none.
    GpxElement GetFirstChild() const;
    GpxElement GetNextSibling() const;
    /// \}
    /// The children that are elements, for a range-based `for`.
    Children GetChildren() const;
    /// The first child with this name in this namespace; a view of nothing when there is none.
    GpxElement FindChild(std::string_view nameSpace, std::string_view name) const;

private:
    friend class GpxModelAccess;

    VEXATRANSFERLIB_LOCAL GpxElement(boost::intrusive_ptr<const SourceText> source,
                                     std::uint64_t place) noexcept;
    VEXATRANSFERLIB_LOCAL const char* Begin() const;
    VEXATRANSFERLIB_LOCAL GpxElement FirstElementFrom(const char* at) const;
    VEXATRANSFERLIB_LOCAL std::string_view NamespaceOf(std::string_view prefix) const;

    boost::intrusive_ptr<const SourceText> source_;
    std::uint64_t place_ = 0;
};

/// Walks the children of a GpxElement.
class VEXATRANSFERLIB_API GpxElement::Iterator {
public:
    /// \{
    /// What a forward iterator has.
    using iterator_category = std::forward_iterator_tag;
    using value_type = GpxElement;
    using difference_type = std::ptrdiff_t;
    using pointer = const GpxElement*;
    using reference = const GpxElement&;

    Iterator() = default;
    explicit Iterator(GpxElement element) : element_(std::move(element)) {}
    reference operator*() const { return element_; }
    pointer operator->() const { return &element_; }
    Iterator& operator++() {
        element_ = element_.GetNextSibling();
        return *this;
    }
    Iterator operator++(int) {
        Iterator before = *this;
        ++*this;
        return before;
    }
    friend bool operator==(const Iterator& left, const Iterator& right) {
        return left.element_ == right.element_;
    }
    friend bool operator!=(const Iterator& left, const Iterator& right) { return !(left == right); }
    /// \}

private:
    GpxElement element_;
};

/// The children of a GpxElement that are elements.
class VEXATRANSFERLIB_API GpxElement::Children {
public:
    /// \{
    /// Of one element; begin and end are views of the first child and of nothing.
    explicit Children(const GpxElement& parent) : first_(parent.GetFirstChild()) {}
    Iterator begin() const { return Iterator(first_); }
    Iterator end() const { return Iterator(); }
    bool empty() const { return !first_; }
    /// \}

private:
    GpxElement first_;
};

} // namespace vexaTransferLib
