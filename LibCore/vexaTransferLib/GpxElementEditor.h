// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Changing what the model has no member for: elements of other formats, and the metadata of a document.

#include <common/Export.h>
#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxMetadata.h>

#include <unicode/unistr.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vexaTransferLib {

class GpxDocument;

/// What the editors below changed in a document. A part of GpxDocument.
class VEXATRANSFERLIB_API GpxElementChanges {
private:
    friend class GpxElementEditor;
    friend class GpxMetadataEditor;
    friend class GpxModelAccess;

    struct NewChild {
        std::string nameSpace;
        std::string name;
        icu::UnicodeString text;
    };
    /// Of one element.
    struct Change {
        bool isRemoved = false;
        std::optional<icu::UnicodeString> text;
        /// Without a value it is removed.
        std::map<std::string, std::optional<icu::UnicodeString>> attributes;
        std::vector<NewChild> children;
    };
    /// Set or, when the inner one is empty, cleared.
    template <class Value>
    using Field = std::optional<std::optional<Value>>;
    struct Head {
        Field<icu::UnicodeString> description;
        Field<icu::UnicodeString> keywords;
        Field<GpxPerson> author;
        Field<GpxBounds> bounds;
    };

    /// By the places of the elements.
    std::map<std::uint64_t, Change> elements_;
    /// The places of comments that are removed, with the places after them.
    std::map<std::uint64_t, std::uint64_t> comments_;
    Head head_;
};

/// Changes elements of a document that was read completely; GpxDocument::EditElements gives it. It is for what the
/// model has no member for: the heart rate of a point, an attribute of another format.
///
///     for (const GpxPoint& point : document.GetWaypoints())
///         for (const GpxElement& element : GpxPointDetails(point.GetElement()).GetExtensions())
///             if (element.Is("urn:example:trees", "height"))
///                 document.EditElements().SetText(element, u"12.5");
///
/// **GpxSaver writes the changes**, and nothing else does: a GpxElement goes on to show what was read, and so do the
/// classes that are made of one; GpxStandardWriter writes what was read. Save the document and read it again to see
/// them. A change belongs to the document: its copies have it, and so has an object that is moved within it, but not
/// the copy of an object in another document. What is removed with an object is gone. Where an element's value was also
/// changed through the model, the model's counts.
///
/// The editor is valid until the document is moved, assigned to or destroyed. Each operation costs a search among the
/// changes, and the memory of one. An operation that throws changes nothing. All throw std::bad_alloc, and:
/// \throws dbc::precondition_error "Only an element of the document can be changed." for a view of nothing, of another
///         document, or in a document that was not read completely
class VEXATRANSFERLIB_API GpxElementEditor {
public:
    /// Puts a text in place of everything that is in an element; its attributes stay.
    /// \throws dbc::precondition_error "XML cannot hold this text." for one with a character such as U+0001
    void SetText(const GpxElement& element, const icu::UnicodeString& text) const;
    /// Gives an element an attribute that is in no namespace, or replaces the value of one.
    /// \param name in UTF-8
    /// \throws dbc::precondition_error "This is no name of XML.", then as SetText does
    void SetAttribute(const GpxElement& element, std::string_view name,
                      const icu::UnicodeString& value) const;
    /// Removes an attribute that is in no namespace, if there is one.
    void RemoveAttribute(const GpxElement& element, std::string_view name) const;
    /// Adds a child with a text: in the order of the schema when it is one of GPX, otherwise after the others.
    /// \param nameSpace, name in UTF-8; the former may be empty for none
    /// \throws dbc::precondition_error as SetAttribute does
    void AddChild(const GpxElement& parent, std::string_view nameSpace, std::string_view name,
                  const icu::UnicodeString& text) const;
    /// Removes an element, with its line when nothing else is in it.
    /// \throws dbc::precondition_error "The root of a document cannot be removed."
    void Remove(const GpxElement& element) const;
    /// Removes those comments and processing instructions of the whole file, and these only, for which a function
    /// returns true. One goes with its line when nothing else is in it. Looks at the bytes of the file once.
    /// \param isRemoved called for each in the order of the file, but for those that are removed already, with what is
    ///        between its marks, in UTF-8; what it throws is passed on, and nothing is removed then
    /// \returns how many were removed
    /// \throws dbc::precondition_error "Only comments of a document that was read completely can be removed."
    std::size_t RemoveComments(const std::function<bool(std::string_view content)>& isRemoved) const;
    /// Takes back what these operations did to an element. Nothing happens when that is nothing.
    void Restore(const GpxElement& element) const;

    /// How many elements are changed; comments do not count.
    std::size_t GetCount() const;

private:
    friend class GpxDocument;

    VEXATRANSFERLIB_LOCAL explicit GpxElementEditor(GpxDocument& document) : document_(&document) {}
    VEXATRANSFERLIB_LOCAL GpxElementChanges::Change& ChangeOf(const GpxElement& element) const;
    VEXATRANSFERLIB_LOCAL void RequireOwn(const GpxElement& element) const;

    GpxDocument* document_;
};

/// Changes the metadata of a document that was read completely; GpxDocument::EditMetadata gives it. GpxDocument has its
/// name and its time. All else that GpxElementEditor says of changes is true of these, too: GpxMetadata goes on to show
/// what was read.
///
///     GpxPerson author;
///     author.name = u"Ann";
///     document.EditMetadata().SetAuthor(author);
///
/// All throw std::bad_alloc, and:
/// \throws dbc::precondition_error "Only the metadata of a document that was read completely can be changed.", and for
///         a text with a character such as U+0001 "XML cannot hold this text."
class VEXATRANSFERLIB_API GpxMetadataEditor {
public:
    /// \{
    /// Replaces the value. An empty text clears it.
    void SetDescription(const icu::UnicodeString& text) const;
    void SetKeywords(const icu::UnicodeString& text) const;
    /// \}
    /// Replaces the author. GPX 1.0 has no place for the link, which GpxSaveOptions::unwritten then tells.
    /// \throws dbc::precondition_error "An address of mail has an @ with something before and after it."
    void SetAuthor(const GpxPerson& author) const;
    /// Replaces the bounds. They are not compared with the points.
    /// \throws dbc::precondition_error "Bounds must be finite."
    void SetBounds(const GpxBounds& bounds) const;
    /// \{
    /// Removes the value, if there is one.
    void ClearDescription() const;
    void ClearKeywords() const;
    void ClearAuthor() const;
    void ClearBounds() const;
    /// \}

private:
    friend class GpxDocument;

    VEXATRANSFERLIB_LOCAL explicit GpxMetadataEditor(GpxDocument& document) : document_(&document) {}
    VEXATRANSFERLIB_LOCAL GpxElementChanges::Head& Head() const;

    GpxDocument* document_;
};

} // namespace vexaTransferLib
