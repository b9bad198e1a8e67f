// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/EventTree.h>

#include <vexaTransferLib/text/IcuText.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace vexaTransferLib::reader {

namespace {

/// Memory in more blocks than these is freed after a big tree: the small trees that follow do not need it.
constexpr std::size_t kKeptBlocks = 16;

enum Kind { kElement, kText, kOther };

} // namespace

void* Arena::AllocateInNextBlock(std::size_t size) {
    while (nextBlock_ < blocks_.size() && blocks_[nextBlock_].size < size)
        ++nextBlock_;
    if (nextBlock_ == blocks_.size()) {
        const std::size_t blockSize = std::max(kBlockSize, size);
        // Not std::make_unique, which would fill the block with zeros. libc++ 14 lacks
        // std::make_unique_for_overwrite.
        blocks_.push_back({std::unique_ptr<std::byte[]>(new std::byte[blockSize]), blockSize});
    }
    bytes_ = blocks_[nextBlock_].bytes.get();
    size_ = blocks_[nextBlock_].size;
    used_ = size;
    ++nextBlock_;
    return bytes_;
}

void Arena::Rewind() {
    const bool isBig = blocks_.size() > kKeptBlocks ||
                       std::any_of(blocks_.begin(), blocks_.end(),
                                   [](const Block& block) { return block.size > kBlockSize; });
    if (isBig)
        blocks_.clear();
    nextBlock_ = blocks_.empty() ? 0 : 1;
    bytes_ = blocks_.empty() ? nullptr : blocks_.front().bytes.get();
    size_ = blocks_.empty() ? 0 : blocks_.front().size;
}

// An attribute. Its name follows this object in memory.
struct EventTree::AttributeNode {
    AttributeNode* next;
    const char16_t* value;

    const char16_t* QualifiedName() const { return reinterpret_cast<const char16_t*>(this + 1); }
};

struct EventTree::Node {
    int kind;
    const char16_t* namespaceUri;
    const char16_t* localName;
    const char16_t* text;
    AttributeNode* attributes;
    Node* parent;
    Node* firstChild;
    Node* next;
    SourceLocation location;
};

const EventTree::Node& EventTree::AsNode(const void* node) {
    return *static_cast<const Node*>(node);
}

void EventTree::Clear() {
    arena_.Clear();
    root_ = nullptr;
    open_ = nullptr;
    next_ = &root_;
    depth_ = 0;
    growing_ = nullptr;
    growingText_.clear();
}

EventTree::Node& EventTree::Append(int kind) {
    FinishText();
    Node* const node = new (arena_.Allocate(sizeof(Node), alignof(Node))) Node{};
    node->kind = kind;
    node->parent = open_;
    *next_ = node;
    next_ = &node->next;
    return *node;
}

const char16_t* EventTree::Copy(std::u16string_view text) {
    const std::size_t size = text.size() * sizeof(char16_t);
    auto* const copy = static_cast<char16_t*>(arena_.Allocate(size + sizeof(char16_t), alignof(char16_t)));
    std::memcpy(copy, text.data(), size);
    copy[text.size()] = u'\0';
    return copy;
}

void EventTree::FinishText() {
    if (growing_ == nullptr)
        return;
    if (!growingText_.empty()) {
        growing_->text = Copy(growingText_);
        growingText_.clear();
    }
    growing_ = nullptr;
}

void EventTree::StartElement(const char16_t* namespaceUri, const char16_t* localName,
                             SourceLocation location) {
    Node& node = Append(kElement);
    node.namespaceUri = namespaceUri;
    node.localName = localName;
    node.location = location;
    open_ = &node;
    next_ = &node.firstChild;
    ++depth_;
}

void EventTree::AddAttribute(const char16_t* qualifiedName, const char16_t* value) {
    // Both sizes include the terminating zero.
    const std::size_t nameSize = (std::char_traits<char16_t>::length(qualifiedName) + 1) * sizeof(char16_t);
    const std::size_t valueSize = (std::char_traits<char16_t>::length(value) + 1) * sizeof(char16_t);
    auto* const bytes = static_cast<std::byte*>(
        arena_.Allocate(sizeof(AttributeNode) + nameSize + valueSize, alignof(AttributeNode)));
    std::byte* const nameBytes = bytes + sizeof(AttributeNode);
    std::byte* const valueBytes = nameBytes + nameSize;
    std::memcpy(nameBytes, qualifiedName, nameSize);
    std::memcpy(valueBytes, value, valueSize);
    open_->attributes =
        new (bytes) AttributeNode{open_->attributes, reinterpret_cast<const char16_t*>(valueBytes)};
}

void EventTree::AddText(std::u16string_view text) {
    if (growing_ != nullptr) {
        GrowText(text);
        return;
    }
    Node& node = Append(kText);
    node.text = Copy(text);
    growing_ = &node;
    growingLength_ = text.size();
}

void EventTree::GrowText(std::u16string_view text) {
    if (growingText_.empty())
        growingText_.assign(growing_->text, growingLength_);
    growingText_.append(text);
}

void EventTree::AddCData(std::u16string_view text) {
    Append(kText).text = Copy(text);
}

void EventTree::AddOther() {
    Append(kOther);
}

bool EventTree::EndElement() {
    FinishText();
    next_ = &open_->next;
    open_ = open_->parent;
    return --depth_ == 0;
}

bool EventTree::IsElement(const void* node) const {
    return AsNode(node).kind == kElement;
}

const char16_t* EventTree::LocalName(const void* node) const {
    return AsNode(node).localName;
}

const char16_t* EventTree::NamespaceUri(const void* node) const {
    return AsNode(node).namespaceUri;
}

const char16_t* EventTree::Attribute(const void* node, const char16_t* qualifiedName) const {
    for (const AttributeNode* attribute = AsNode(node).attributes; attribute != nullptr;
         attribute = attribute->next)
        if (Equals(attribute->QualifiedName(), qualifiedName))
            return attribute->value;
    return nullptr;
}

const char16_t* EventTree::FirstChildText(const void* node) const {
    const Node* const first = AsNode(node).firstChild;
    return first != nullptr && first->kind == kText ? first->text : nullptr;
}

// Follows parent links instead of recursing, because a file may nest its elements to any depth.
bool EventTree::TextContent(const void* node, icu::UnicodeString& out) const {
    const Node* const root = &AsNode(node);
    if (root->kind == kOther)
        return false;
    out.remove();
    if (root->kind == kText) {
        out = text::CopyOf(root->text);
        return true;
    }
    const Node* current = root->firstChild;
    while (current != nullptr) {
        if (current->kind == kText)
            out.append(current->text, -1);
        if (current->firstChild != nullptr) {
            current = current->firstChild;
            continue;
        }
        while (current != root && current->next == nullptr)
            current = current->parent;
        current = current == root ? nullptr : current->next;
    }
    text::ThrowIfBogus(out);
    return true;
}

bool EventTree::HasChildList(const void*) const {
    return true;
}

bool EventTree::NextChild(const void* node, const void*& position, const void*& child) const {
    const Node* const next = position == nullptr ? AsNode(node).firstChild : AsNode(position).next;
    if (next == nullptr)
        return false;
    position = next;
    child = next;
    return true;
}

std::string EventTree::Path(const void* node) const {
    std::vector<const char16_t*> names(outerNames_);
    for (const Node* current = &AsNode(node); current != nullptr; current = current->parent)
        names.push_back(current->localName);
    std::reverse(names.begin() + static_cast<std::ptrdiff_t>(outerNames_.size()), names.end());
    return PathOf(names);
}

SourceLocation EventTree::Location(const void* node) const {
    return AsNode(node).location;
}

} // namespace vexaTransferLib::reader
