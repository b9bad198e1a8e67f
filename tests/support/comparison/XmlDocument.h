// SPDX-License-Identifier: MIT
#pragma once

#include <libxml/tree.h>

#include <memory>
#include <string>
#include <string_view>

namespace vexaTransferLib::testing_support {

/// A text that libxml2 has parsed, with the entities and default attributes of its internal subset in their
/// places. Nothing outside the text is read: an external entity is an undeclared one. A text that declares no
/// entity may be of any size and depth; one that declares some is held to libxml2's limits.
class XmlDocument {
public:
    /// Throws std::runtime_error with line and reason when the text is not well-formed, or uses a prefix
    /// without a declaration.
    explicit XmlDocument(std::string_view text);

    xmlNode* Root() const { return xmlDocGetRootElement(document_.get()); }
    xmlDoc* Get() const { return document_.get(); }

private:
    struct Free {
        void operator()(xmlDoc* document) const { xmlFreeDoc(document); }
    };
    std::unique_ptr<xmlDoc, Free> document_;
};

/// libxml2's text as a view; empty for a null pointer.
std::string_view ViewOf(const xmlChar* text);

/// The value of an attribute.
std::string ValueOf(const xmlAttr* attribute);

/// The namespace of an element or attribute; empty for none.
template <class Node>
std::string_view NamespaceOf(const Node* node) {
    return node->ns == nullptr ? std::string_view() : ViewOf(node->ns->href);
}

/// The next element in document order, or null after the last one below `top`.
xmlNode* NextElement(xmlNode* node, const xmlNode* top);

} // namespace vexaTransferLib::testing_support
