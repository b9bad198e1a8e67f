// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/EventTree.h>

#include <vexaTransferLib/text/IcuText.h>

#include <algorithm>
#include <cstring>

namespace vexaTransferLib::reader {

void EventTree::Clear() {
    arena_.Clear();
    root_ = nullptr;
    open_ = nullptr;
    next_ = &root_;
    depth_ = 0;
    growing_ = nullptr;
    growingText_.clear();
}

const char16_t* EventTree::Copy(std::u16string_view text) {
    const std::size_t size = text.size() * sizeof(char16_t);
    auto* const copy = static_cast<char16_t*>(arena_.Allocate(size + sizeof(char16_t), alignof(char16_t)));
    std::memcpy(copy, text.data(), size);
    copy[text.size()] = u'\0';
    return copy;
}

void EventTree::FinishText() {
    if (!growingText_.empty()) {
        growing_->text = Copy(growingText_);
        growingText_.clear();
    }
    growing_ = nullptr;
}

void EventTree::AddAttribute(const char16_t* qualifiedName, const char16_t* value,
                             const char16_t* namespaceUri) {
    const char16_t* const name = Copy(qualifiedName);
    void* const bytes = arena_.Allocate(sizeof(AttributeNode), alignof(AttributeNode));
    open_->attributes = new (bytes) AttributeNode{open_->attributes, name, namespaceUri, Copy(value), {}};
}

void EventTree::AddText(std::u16string_view text) {
    if (growing_ != nullptr) {
        GrowText(text);
        return;
    }
    Node& node = Append(Kind::kText);
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
    Append(Kind::kText).text = Copy(text);
}

const EventTree::AttributeNode* EventTree::FindAttribute(const void* node,
                                                         const char16_t* qualifiedName) const {
    const AttributeNode* attribute = AsNode(node).attributes;
    while (attribute != nullptr && !Equals(attribute->qualifiedName, qualifiedName))
        attribute = attribute->next;
    return attribute;
}

const char16_t* EventTree::Attribute(const void* node, const char16_t* qualifiedName) const {
    const AttributeNode* const attribute = FindAttribute(node, qualifiedName);
    if (attribute == nullptr)
        return nullptr;
    if (attribute->value == nullptr)
        attribute->value = Decoded(attribute->raw, text::TextPlace::kAttribute);
    return attribute->value;
}

const char16_t* EventTree::FirstChildText(const void* node) const {
    const OwnNode* const first = AsNode(node).firstChild;
    return first != nullptr && first->kind == Kind::kText ? TextOf(AsNode(first)) : nullptr;
}

bool EventTree::FirstChildBytes(const void* node, std::string_view& bytes) const {
    const OwnNode* const first = AsNode(node).firstChild;
    return window_ != nullptr && first != nullptr && first->kind == Kind::kText &&
           BytesOf(AsNode(first).raw, bytes);
}

bool EventTree::AttributeBytes(const void* node, const char16_t* qualifiedName,
                               std::string_view& bytes) const {
    const AttributeNode* const attribute = window_ != nullptr ? FindAttribute(node, qualifiedName) : nullptr;
    return attribute != nullptr && BytesOf(attribute->raw, bytes);
}

bool EventTree::BytesOf(const RawText& text, std::string_view& bytes) const {
    bytes = {window_->At(text.begin), static_cast<std::size_t>(text.end - text.begin)};
    return text.form == RawText::Form::kAscii;
}

const char16_t* EventTree::Decoded(const RawText& text, text::TextPlace place) const {
    std::string_view bytes;
    BytesOf(text, bytes);
    auto* const units =
        static_cast<char16_t*>(arena_.Allocate((bytes.size() + 1) * sizeof(char16_t), alignof(char16_t)));
    *text::Decode(bytes, text.form, place, units) = u'\0';
    return units;
}

const char16_t* EventTree::TextOf(const Node& node) const {
    if (node.text == nullptr)
        node.text = Decoded(node.raw, text::TextPlace::kContent);
    return node.text;
}

// Follows parent links instead of recursing, because a file may nest its elements to any depth.
bool EventTree::TextContent(const void* node, icu::UnicodeString& out) const {
    const Node* const root = &AsNode(node);
    if (root->kind == Kind::kOther)
        return false;
    out.remove();
    if (root->kind == Kind::kText) {
        out = text::CopyOf(TextOf(*root));
        return true;
    }
    const OwnNode* current = root->firstChild;
    while (current != nullptr) {
        if (current->kind == Kind::kText)
            out.append(TextOf(AsNode(current)), -1);
        if (current->firstChild != nullptr) {
            current = current->firstChild;
            continue;
        }
        while (current != root && current->next == nullptr)
            current = AsNode(current).parent;
        current = current == root ? nullptr : current->next;
    }
    text::ThrowIfBogus(out);
    return true;
}

// A reference may be one of white space. In a section, an ampersand is none.
bool EventTree::HasContentInReferences(const RawText& text) const {
    return HasContent(std::u16string_view(Decoded(text, text::TextPlace::kContent)));
}

bool EventTree::IsTextWithContent(const void* node) const {
    if (AsNode(node).kind != Kind::kText)
        return false;
    return window_ != nullptr ? HasContent(AsNode(node).raw)
                              : HasContent(std::u16string_view(AsNode(node).text));
}

std::string EventTree::Path(const void* node) const {
    std::vector<const char16_t*> names(outerNames_);
    for (const Node* current = &AsNode(node); current != nullptr; current = current->parent)
        names.push_back(current->localName);
    std::reverse(names.begin() + static_cast<std::ptrdiff_t>(outerNames_.size()), names.end());
    return PathOf(names);
}

void EventTree::OtherAttributes(const void* node, AttributeNames names,
                                std::vector<AttributeView>& out) const {
    for (const AttributeNode* attribute = AsNode(node).attributes; attribute != nullptr;
         attribute = attribute->next) {
        if (Contains(names, attribute->qualifiedName))
            continue;
        const bool isEmpty = attribute->value != nullptr ? *attribute->value == u'\0'
                                                         : attribute->raw.begin == attribute->raw.end;
        out.push_back({attribute->qualifiedName, attribute->namespaceUri, isEmpty});
    }
}

SourceLocation EventTree::Location(const void* node) const {
    if (AsNode(node).kind != Kind::kElement)
        return {};
    return window_ != nullptr ? window_->Locate(AsNode(node).raw.end) : AsNode(node).location;
}

} // namespace vexaTransferLib::reader
