// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/unistr.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vexaTransferLib::reader {

class NodeView;

/// Where an element's start tag ends, from 1; zeros when that is not known.
struct SourceLocation {
    std::uint64_t line = 0;
    std::uint64_t column = 0;
};

/// A kind of tree whose nodes NodeView shows. Nodes are handles that only their source understands; none is
/// null. Texts are zero-terminated, belong to the tree and live as long as it.
class NodeSource {
public:
    virtual ~NodeSource() = default;

    virtual bool IsElement(const void* node) const = 0;
    /// Null when the node has none, for example a text node.
    virtual const char16_t* LocalName(const void* node) const = 0;
    /// Null when the node is in no namespace.
    virtual const char16_t* NamespaceUri(const void* node) const = 0;
    /// The value of the attribute with this qualified name; null when there is none.
    virtual const char16_t* Attribute(const void* node, const char16_t* qualifiedName) const = 0;
    /// The value of the first child when that is a text or CDATA section; null otherwise.
    virtual const char16_t* FirstChildText(const void* node) const = 0;
    /// All text and CDATA below the node, without comments and processing instructions; false when the node
    /// is of a kind that has none. The stack that it needs does not grow with the depth.
    virtual bool TextContent(const void* node, icu::UnicodeString& out) const = 0;
    virtual bool HasChildList(const void* node) const = 0;
    /// Moves to the next child; false after the last. \p child is null for an entry that is missing. Only the
    /// source knows the meaning of \p position, which is null before the first child.
    virtual bool NextChild(const void* node, const void*& position, const void*& child) const = 0;

    // These are for the reports to an observer. They may take long, and a source that cannot answer need not
    // override them.

    /// Local names from the root of the file to an element, with slashes between them, in UTF-8.
    virtual std::string Path(const void*) const { return {}; }
    virtual SourceLocation Location(const void*) const { return {}; }
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
    bool IsElement() const { return !IsNull() && source_->IsElement(node_); }
    const char16_t* LocalName() const { return IsNull() ? nullptr : source_->LocalName(node_); }
    const char16_t* NamespaceUri() const { return IsNull() ? nullptr : source_->NamespaceUri(node_); }
    const char16_t* Attribute(const char16_t* qualifiedName) const {
        return IsNull() ? nullptr : source_->Attribute(node_, qualifiedName);
    }
    const char16_t* FirstChildText() const { return IsNull() ? nullptr : source_->FirstChildText(node_); }
    bool TextContent(icu::UnicodeString& out) const { return !IsNull() && source_->TextContent(node_, out); }
    std::string Path() const { return IsNull() ? std::string() : source_->Path(node_); }
    SourceLocation Location() const { return IsNull() ? SourceLocation() : source_->Location(node_); }
    bool HasChildList() const { return !IsNull() && source_->HasChildList(node_); }

private:
    friend class ChildWalk;

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
        if (!hasChildren_ || !parent_.source_->NextChild(parent_.node_, position_, next))
            return false;
        child = NodeView(*parent_.source_, next);
        return true;
    }

private:
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

} // namespace vexaTransferLib::reader
