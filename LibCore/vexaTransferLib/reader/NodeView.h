// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/text/SourceLocation.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::reader {

class NodeView;

/// Qualified names of attributes.
using AttributeNames = std::span<const char16_t* const>;

/// Of an element: where its start tag ends.
using text::SourceLocation;

/// The part of a node that every source which keeps its own nodes has in the same form, so that NodeView reads it
/// without a call of the source.
struct OwnNode {
    enum class Kind : std::uint8_t { kElement, kText, kOther };

    Kind kind = Kind::kOther;
    /// Of an element; null for none.
    const char16_t* namespaceUri = nullptr;
    /// Of an element; null for any other node.
    const char16_t* localName = nullptr;
    OwnNode* firstChild = nullptr;
    OwnNode* next = nullptr;
};

/// An attribute of an element, as the reports to an observer need it.
struct AttributeView {
    const char16_t* qualifiedName = nullptr;
    const char16_t* namespaceUri = nullptr; ///< null for none, as of every attribute without a prefix
    bool isEmpty = false;
};

/// A kind of tree whose nodes NodeView shows. Nodes are handles, none is null: an OwnNode, or what only an
/// OpaqueNodeSource understands. Texts are zero-terminated, belong to the tree and live as long as it.
class NodeSource {
public:
    virtual ~NodeSource() = default;

    /// True when the handles are pointers to OwnNode.
    bool HasOwnNodes() const { return hasOwnNodes_; }

    /// The value of the attribute with this qualified name; null when there is none.
    virtual const char16_t* Attribute(const void* node, const char16_t* qualifiedName) const = 0;
    /// The value of the first child when that is a text or CDATA section; null otherwise.
    virtual const char16_t* FirstChildText(const void* node) const = 0;
    /// The value of FirstChildText, and of Attribute, if it is ASCII and the source has it in this form; false
    /// otherwise, also when there is a value.
    virtual bool FirstChildBytes(const void*, std::string_view&) const { return false; }
    virtual bool AttributeBytes(const void*, const char16_t*, std::string_view&) const { return false; }
    /// All text and CDATA below the node, without comments and processing instructions; false when the node
    /// is of a kind that has none. The stack that it needs does not grow with the depth.
    virtual bool TextContent(const void* node, icu::UnicodeString& out) const = 0;

    // These are for the reports to an observer. They may take long, and a source that cannot answer need not
    // override them.

    /// True for a text or CDATA section that has more than white space.
    virtual bool IsTextWithContent(const void*) const { return false; }
    /// Local names from the root of the file to an element, with slashes between them, in UTF-8.
    virtual std::string Path(const void*) const { return {}; }
    virtual SourceLocation Location(const void*) const { return {}; }
    /// Appends the attributes of an element but those with one of these names, in any order. Namespace declarations are
    /// among them; attributes that a grammar adds are not.
    virtual void OtherAttributes(const void*, AttributeNames, std::vector<AttributeView>&) const {}

protected:
    /// For a source whose nodes are OwnNodes.
    NodeSource() : NodeSource(true) {}

private:
    friend class OpaqueNodeSource;

    explicit NodeSource(bool hasOwnNodes) : hasOwnNodes_(hasOwnNodes) {}

    const bool hasOwnNodes_;
};

/// A source that must be asked everything about its nodes.
class OpaqueNodeSource : public NodeSource {
public:
    virtual bool IsElement(const void* node) const = 0;
    /// Null when the node has none, for example a text node.
    virtual const char16_t* LocalName(const void* node) const = 0;
    /// Null when the node is in no namespace.
    virtual const char16_t* NamespaceUri(const void* node) const = 0;
    virtual bool HasChildList(const void* node) const = 0;
    /// Moves to the next child; false after the last. \p child is null for an entry that is missing. Only the
    /// source knows the meaning of \p position, which is null before the first child.
    virtual bool NextChild(const void* node, const void*& position, const void*& child) const = 0;

protected:
    OpaqueNodeSource() : NodeSource(false) {}
};

/// The names with slashes between them, in UTF-8. Linear in their length.
/// \throws std::bad_alloc for a path that ICU cannot hold
std::string PathOf(const std::vector<const char16_t*>& names);

/// A node of any source; null by default. Two pointers: copy it.
class NodeView {
public:
    NodeView() = default;
    NodeView(const NodeSource& source, const void* node) : source_(&source), node_(node) {}

    bool IsNull() const { return node_ == nullptr; }

    // A null node has no name, no namespace, no attributes, no text and no child list.
    bool IsElement() const {
        if (IsNull())
            return false;
        return IsOwn() ? Own().kind == OwnNode::Kind::kElement : Opaque().IsElement(node_);
    }
    const char16_t* LocalName() const {
        if (IsNull())
            return nullptr;
        return IsOwn() ? Own().localName : Opaque().LocalName(node_);
    }
    const char16_t* NamespaceUri() const {
        if (IsNull())
            return nullptr;
        return IsOwn() ? Own().namespaceUri : Opaque().NamespaceUri(node_);
    }
    const char16_t* Attribute(const char16_t* qualifiedName) const {
        return IsNull() ? nullptr : source_->Attribute(node_, qualifiedName);
    }
    const char16_t* FirstChildText() const { return IsNull() ? nullptr : source_->FirstChildText(node_); }
    /// True when the only child is a text. A source may also not know, and then this is false.
    bool IsKnownToBeOneText() const {
        if (IsNull() || !IsOwn())
            return false;
        const OwnNode* const first = Own().firstChild;
        return first != nullptr && first->kind == OwnNode::Kind::kText && first->next == nullptr;
    }
    bool FirstChildBytes(std::string_view& bytes) const {
        return !IsNull() && source_->FirstChildBytes(node_, bytes);
    }
    bool AttributeBytes(const char16_t* qualifiedName, std::string_view& bytes) const {
        return !IsNull() && source_->AttributeBytes(node_, qualifiedName, bytes);
    }
    bool TextContent(icu::UnicodeString& out) const { return !IsNull() && source_->TextContent(node_, out); }
    bool IsTextWithContent() const { return !IsNull() && source_->IsTextWithContent(node_); }
    std::string Path() const { return IsNull() ? std::string() : source_->Path(node_); }
    SourceLocation Location() const { return IsNull() ? SourceLocation() : source_->Location(node_); }
    void OtherAttributes(AttributeNames names, std::vector<AttributeView>& out) const {
        if (!IsNull())
            source_->OtherAttributes(node_, names, out);
    }
    /// True for the same node of a tree that still exists.
    bool IsSameAs(const NodeView& other) const { return node_ == other.node_; }
    bool HasChildList() const { return !IsNull() && (IsOwn() || Opaque().HasChildList(node_)); }

private:
    friend class ChildWalk;

    // For a node that is not null.
    bool IsOwn() const { return source_->HasOwnNodes(); }
    const OwnNode& Own() const { return *static_cast<const OwnNode*>(node_); }
    const OpaqueNodeSource& Opaque() const { return static_cast<const OpaqueNodeSource&>(*source_); }

    const NodeSource* source_ = nullptr;
    const void* node_ = nullptr;
};

/// Walks the children of a node in document order, each step in constant time.
///
///     ChildWalk children(node);
///     for (NodeView child; children.Next(child);) ...
class ChildWalk {
public:
    explicit ChildWalk(const NodeView& parent) : parent_(parent), hasChildren_(parent.HasChildList()) {}

    /// False after the last child, and for a node without a child list. \p child may be null.
    bool Next(NodeView& child) {
        const void* next = nullptr;
        if (!hasChildren_ ||
            !(parent_.IsOwn() ? NextOwn(next) : parent_.Opaque().NextChild(parent_.node_, position_, next)))
            return false;
        child = NodeView(*parent_.source_, next);
        return true;
    }

private:
    bool NextOwn(const void*& child) {
        child =
            position_ == nullptr ? parent_.Own().firstChild : static_cast<const OwnNode*>(position_)->next;
        if (child != nullptr)
            position_ = child;
        return child != nullptr;
    }

    NodeView parent_;
    bool hasChildren_;
    const void* position_ = nullptr;
};

/// Exact comparison of a name that may be null with one that is not.
inline bool Equals(const char16_t* name, const char16_t* expected) {
    if (name == nullptr || name == expected)
        return name != nullptr;
    while (*name == *expected) {
        if (*name == u'\0')
            return true;
        ++name;
        ++expected;
    }
    return false;
}

/// True for the characters that XML takes for white space.
template <class Unit>
constexpr bool IsXmlBlank(Unit unit) {
    return unit == Unit(' ') || unit == Unit('\n') || unit == Unit('\t') || unit == Unit('\r');
}

inline bool Contains(AttributeNames names, const char16_t* name) {
    for (const char16_t* const one : names)
        if (Equals(name, one))
            return true;
    return false;
}

} // namespace vexaTransferLib::reader
