// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/NodeView.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::reader {

/// Memory for one tree after another. Single objects are not freed: Clear gives up all of them at once, and
/// the next tree uses the same memory.
class Arena {
public:
    /// \param alignment a power of two
    void* Allocate(std::size_t size, std::size_t alignment) {
        const std::size_t start = (used_ + alignment - 1) & ~(alignment - 1);
        if (start + size > size_)
            return AllocateInNextBlock(size);
        used_ = start + size;
        return bytes_ + start;
    }
    void Clear() {
        if (nextBlock_ > 1 || size_ > kBlockSize)
            Rewind();
        used_ = 0;
    }

private:
    static constexpr std::size_t kBlockSize = 65536;

    struct Block {
        std::unique_ptr<std::byte[]> bytes;
        std::size_t size;
    };

    void* AllocateInNextBlock(std::size_t size);
    void Rewind();

    std::vector<Block> blocks_;
    std::size_t nextBlock_ = 0;
    // The block that is in use.
    std::byte* bytes_ = nullptr;
    std::size_t size_ = 0;
    std::size_t used_ = 0;
};

/// A small tree that is built from the XML parser's events, for one child of a long element at a time. It
/// gives the same answers about a node as the DOM: adjacent character data is one text; CDATA sections,
/// comments and processing instructions are nodes of their own.
class EventTree final : public NodeSource {
public:
    /// \param outerNames the names of the elements around the tree; read whenever a path is asked for
    explicit EventTree(const std::vector<const char16_t*>& outerNames) : outerNames_(outerNames) {}

    /// Forgets the tree.
    void Clear();
    bool IsEmpty() const { return depth_ == 0; }

    // Building. The first element is the root; each other element becomes a child of the one that is open.
    // Namespace and name must outlive the tree; other texts are copied.

    void StartElement(const char16_t* namespaceUri, const char16_t* localName, SourceLocation location);
    void AddAttribute(const char16_t* qualifiedName, const char16_t* value);
    void AddText(std::u16string_view text);
    void AddCData(std::u16string_view text);
    /// Adds a comment or a processing instruction. Only its place matters: it separates the texts before and
    /// after it.
    void AddOther();
    /// Returns true when the root has ended.
    bool EndElement();

    NodeView Root() const { return root_ != nullptr ? NodeView(*this, root_) : NodeView(); }

    // Reading.

    bool IsElement(const void* node) const override;
    const char16_t* LocalName(const void* node) const override;
    const char16_t* NamespaceUri(const void* node) const override;
    const char16_t* Attribute(const void* node, const char16_t* qualifiedName) const override;
    const char16_t* FirstChildText(const void* node) const override;
    bool TextContent(const void* node, icu::UnicodeString& out) const override;
    bool HasChildList(const void* node) const override;
    bool NextChild(const void* node, const void*& position, const void*& child) const override;
    std::string Path(const void* node) const override;
    SourceLocation Location(const void* node) const override;

private:
    struct AttributeNode;
    struct Node;

    static const Node& AsNode(const void* node);
    Node& Append(int kind);
    const char16_t* Copy(std::u16string_view text);
    void GrowText(std::u16string_view text);
    void FinishText();

    const std::vector<const char16_t*>& outerNames_;
    Arena arena_;
    Node* root_ = nullptr;
    Node* open_ = nullptr;
    /// The pointer that the next node is stored in.
    Node** next_ = &root_;
    std::size_t depth_ = 0;
    /// The text that may still grow; its node is the last child of the open element. It is complete unless
    /// growingText_ holds more: nearly every text comes in one piece.
    Node* growing_ = nullptr;
    std::size_t growingLength_ = 0;
    std::u16string growingText_;
};

} // namespace vexaTransferLib::reader
