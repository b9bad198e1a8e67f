// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/Arena.h>
#include <vexaTransferLib/reader/ByteWindow.h>
#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/text/RawText.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::reader {

using text::RawText;

/// Where the start tag of an element is. The XML parser gives a location, the lexer of plain files the places of its
/// first byte and of the byte after it; what is not known is zero.
struct TagPlace {
    SourceLocation location;
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
};

/// A small tree that is built from the events of an XML parser or of the lexer of plain files, for one child of a long
/// element at a time. It gives the same answers about a node as the DOM: adjacent character data is one text; CDATA
/// sections, comments and processing instructions are nodes of their own. Texts of a plain file stay in its window
/// until they are asked for.
class EventTree final : public NodeSource {
public:
    /// \param outerNames the names of the elements around the tree; read whenever a path is asked for
    explicit EventTree(const std::vector<const char16_t*>& outerNames) : outerNames_(outerNames) {}

    /// Takes the texts of the trees from a window, which must contain the whole tree. The caller owns the window.
    void ReadFrom(ByteWindow& window) { window_ = &window; }
    /// The place of the root's first byte in the window.
    std::uint64_t RootBegin() const { return AsNode(root_).raw.begin; }

    /// Forgets the tree.
    void Clear();
    bool IsEmpty() const { return depth_ == 0; }

    // Building. The first element is the root; each other element becomes a child of the one that is open.
    // Namespaces, also of attributes, names of elements, and names of attributes with raw values must outlive the tree;
    // other texts are copied.

    void StartElement(const char16_t* namespaceUri, const char16_t* localName, const TagPlace& place) {
        Node& node = Append(Kind::kElement);
        node.namespaceUri = namespaceUri;
        node.localName = localName;
        node.location = place.location;
        node.raw.begin = place.begin;
        node.raw.end = place.end;
        open_ = &node;
        next_ = &node.firstChild;
        ++depth_;
    }
    void AddAttribute(const char16_t* qualifiedName, const char16_t* value,
                      const char16_t* namespaceUri = nullptr);
    void AddAttribute(const char16_t* qualifiedName, const RawText& value,
                      const char16_t* namespaceUri = nullptr) {
        void* const bytes = arena_.Allocate(sizeof(AttributeNode), alignof(AttributeNode));
        open_->attributes =
            new (bytes) AttributeNode{open_->attributes, qualifiedName, namespaceUri, nullptr, value};
    }
    void AddText(std::u16string_view text);
    /// A raw text is complete: the next one is not adjacent to it.
    void AddText(const RawText& text) { Append(Kind::kText).raw = text; }
    void AddCData(std::u16string_view text);
    void AddCData(const RawText& text) { AddText(text); }
    /// Adds a comment or a processing instruction. Only its place matters: it separates the texts before and
    /// after it.
    void AddOther() { Append(Kind::kOther); }
    /// Returns true when the root has ended.
    bool EndElement() {
        if (growing_ != nullptr)
            FinishText();
        next_ = &open_->next;
        open_ = open_->parent;
        return --depth_ == 0;
    }

    /// \{
    /// True for a text that has more than white space, and need not belong to the tree.
    static bool HasContent(std::u16string_view text) {
        return !std::all_of(text.begin(), text.end(), IsXmlBlank<char16_t>);
    }
    bool HasContent(const RawText& text) const {
        // A plain file has no other characters below the blank.
        const char* at = window_->At(text.begin);
        const char* const end = at + (text.end - text.begin);
        while (at != end && static_cast<unsigned char>(*at) <= ' ')
            ++at;
        return at != end && (*at != '&' || HasContentInReferences(text));
    }
    /// \}

    NodeView Root() const { return root_ != nullptr ? NodeView(*this, root_) : NodeView(); }

    // Reading.

    const char16_t* Attribute(const void* node, const char16_t* qualifiedName) const override;
    const char16_t* FirstChildText(const void* node) const override;
    bool FirstChildBytes(const void* node, std::string_view& bytes) const override;
    bool AttributeBytes(const void* node, const char16_t* qualifiedName,
                        std::string_view& bytes) const override;
    bool TextContent(const void* node, icu::UnicodeString& out) const override;
    bool IsTextWithContent(const void* node) const override;
    std::string Path(const void* node) const override;
    SourceLocation Location(const void* node) const override;
    void OtherAttributes(const void* node, AttributeNames names,
                         std::vector<AttributeView>& out) const override;

private:
    using Kind = OwnNode::Kind;

    struct AttributeNode {
        AttributeNode* next;
        const char16_t* qualifiedName;
        const char16_t* namespaceUri;
        /// Null until a raw value has been decoded.
        mutable const char16_t* value;
        RawText raw;
    };

    struct Node : OwnNode {
        /// Null until a raw text has been decoded.
        mutable const char16_t* text = nullptr;
        AttributeNode* attributes = nullptr;
        Node* parent = nullptr;
        /// Of an element in a file that is not plain.
        SourceLocation location = {};
        /// In a plain file: the text, or the place of the start tag.
        RawText raw = {};
    };

    static const Node& AsNode(const void* node) {
        return static_cast<const Node&>(*static_cast<const OwnNode*>(node));
    }
    Node& Append(Kind kind) {
        if (growing_ != nullptr)
            FinishText();
        Node* const node = new (arena_.Allocate(sizeof(Node), alignof(Node))) Node;
        node->kind = kind;
        node->parent = open_;
        *next_ = node;
        next_ = &node->next;
        return *node;
    }
    const AttributeNode* FindAttribute(const void* node, const char16_t* qualifiedName) const;
    bool BytesOf(const RawText& text, std::string_view& bytes) const;
    const char16_t* Decoded(const RawText& text, text::TextPlace place) const;
    const char16_t* TextOf(const Node& node) const;
    bool HasContentInReferences(const RawText& text) const;
    const char16_t* Copy(std::u16string_view text);
    void GrowText(std::u16string_view text);
    void FinishText();

    const std::vector<const char16_t*>& outerNames_;
    ByteWindow* window_ = nullptr;
    /// Decoded texts are added to it while the tree is read.
    mutable Arena arena_;
    OwnNode* root_ = nullptr;
    Node* open_ = nullptr;
    /// The pointer that the next node is stored in.
    OwnNode** next_ = &root_;
    std::size_t depth_ = 0;
    /// The text that may still grow; its node is the last child of the open element. It is complete unless
    /// growingText_ holds more: nearly every text comes in one piece.
    Node* growing_ = nullptr;
    std::size_t growingLength_ = 0;
    std::u16string growingText_;
};

} // namespace vexaTransferLib::reader
