// SPDX-License-Identifier: MIT
#include "support/comparison/XmlEdits.h"

#include "support/comparison/XmlDocument.h"

#include <libxml/c14n.h>

#include <algorithm>
#include <stdexcept>

namespace vexaTransferLib::testing_support {

namespace {

const xmlChar* Xml(const char* text) {
    return reinterpret_cast<const xmlChar*>(text);
}

bool IsIn(const xmlNode* node, const xmlNode* parent) {
    return node->type == XML_ELEMENT_NODE && NamespaceOf(node) == NamespaceOf(parent);
}

xmlNode* FindChild(xmlNode* parent, std::string_view name) {
    for (xmlNode* node = parent->children; node != nullptr; node = node->next)
        if (IsIn(node, parent) && ViewOf(node->name) == name)
            return node;
    return nullptr;
}

xmlNode* Insert(xmlNode* parent, const char* name, const std::vector<std::string_view>& order) {
    const auto rank = [&](std::string_view candidate) {
        if (candidate == "url" || candidate == "urlname")
            candidate = "link";
        return std::find(order.begin(), order.end(), candidate) - order.begin();
    };
    xmlNode* before = nullptr;
    for (xmlNode* node = parent->children; node != nullptr; node = node->next)
        if (IsIn(node, parent) && rank(ViewOf(node->name)) <= rank(name) &&
            rank(ViewOf(node->name)) < rank(""))
            before = node;
    xmlNode* const added = xmlNewDocNode(parent->doc, parent->ns, Xml(name), nullptr);
    if (before != nullptr)
        return xmlAddNextSibling(before, added);
    return parent->children != nullptr ? xmlAddPrevSibling(parent->children, added)
                                       : xmlAddChild(parent, added);
}

void Replace(xmlNode* element, const char* text) {
    while (element->children != nullptr) {
        xmlNode* const child = element->children;
        xmlUnlinkNode(child);
        xmlFreeNode(child);
    }
    if (*text != '\0')
        xmlAddChild(element, xmlNewDocText(element->doc, Xml(text)));
}

void Drop(xmlNode* node) {
    xmlUnlinkNode(node);
    xmlFreeNode(node);
}

// Texts that a comment divided become one.
void DropComments(xmlNode* parent) {
    for (xmlNode* node = parent->children; node != nullptr;) {
        xmlNode* const next = node->next;
        if (node->type == XML_COMMENT_NODE) {
            xmlNode* const before = node->prev;
            Drop(node);
            if (before != nullptr && next != nullptr && before->type == XML_TEXT_NODE &&
                next->type == XML_TEXT_NODE) {
                node = next->next;
                xmlTextMerge(before, next);
                continue;
            }
        }
        node = next;
    }
}

// Blanks beside a text belong to it.
void DropBlanks(xmlNode* parent) {
    bool isText = false;
    for (xmlNode* node = parent->children; node != nullptr; node = node->next)
        isText = isText || xmlIsBlankNode(node) == 0;
    isText = isText && xmlFirstElementChild(parent) == nullptr;
    for (xmlNode* node = parent->children; node != nullptr && !isText;) {
        xmlNode* const next = node->next;
        if (xmlIsBlankNode(node) == 1)
            Drop(node);
        node = next;
    }
}

xmlNode* At(const XmlDocument& document, const XmlEdits::Path& path) {
    xmlNode* node = document.Root();
    for (const std::size_t index : path) {
        node = xmlFirstElementChild(node);
        for (std::size_t i = 0; i < index && node != nullptr; ++i)
            node = xmlNextElementSibling(node);
        if (node == nullptr)
            throw std::runtime_error("there is no such element");
    }
    return node;
}

} // namespace

XmlEdits::XmlEdits(std::string_view text) : document_(std::make_unique<XmlDocument>(text)) {}
XmlEdits::~XmlEdits() = default;

void XmlEdits::SetChild(const Path& parent, const char* name, const char* text,
                        const std::vector<std::string_view>& order) {
    xmlNode* child = FindChild(At(*document_, parent), name);
    if (child == nullptr)
        child = Insert(At(*document_, parent), name, order);
    Replace(child, text);
}

void XmlEdits::MakeChild(const Path& parent, const char* name, const std::vector<std::string_view>& order) {
    if (FindChild(At(*document_, parent), name) == nullptr)
        Insert(At(*document_, parent), name, order);
}

void XmlEdits::RemoveChildren(const Path& parent, const char* name) {
    while (xmlNode* const child = FindChild(At(*document_, parent), name))
        Drop(child);
}

std::size_t XmlEdits::NumberOf(const char* name) const {
    std::size_t number = 0;
    const xmlNode* const child = FindChild(document_->Root(), name);
    for (xmlNode* node = xmlFirstElementChild(document_->Root()); node != child;
         node = xmlNextElementSibling(node))
        ++number;
    return number;
}

void XmlEdits::SetText(const Path& element, const char* text) {
    Replace(At(*document_, element), text);
}

void XmlEdits::SetAttribute(const Path& element, const char* name, const char* value) {
    xmlSetNsProp(At(*document_, element), nullptr, Xml(name), Xml(value));
}

void XmlEdits::RemoveAttribute(const Path& element, const char* name) {
    xmlUnsetNsProp(At(*document_, element), nullptr, Xml(name));
}

void XmlEdits::AppendChild(const Path& parent, const char* name, const char* text) {
    xmlNode* const child = xmlNewChild(At(*document_, parent), nullptr, Xml(name), nullptr);
    xmlSetNs(child, xmlNewNs(child, Xml(""), nullptr));
    Replace(child, text);
}

void XmlEdits::Remove(const Path& element) {
    Drop(At(*document_, element));
}

std::string XmlEdits::TakeCanonical() {
    xmlNode* const root = document_->Root();
    for (xmlNode* node = root; node != nullptr; node = NextElement(node, root))
        DropComments(node);
    for (xmlNode* node = root; node != nullptr; node = NextElement(node, root))
        DropBlanks(node);
    xmlChar* text = nullptr;
    const int size = xmlC14NDocDumpMemory(document_->Get(), nullptr, XML_C14N_1_0, nullptr, 0, &text);
    if (size < 0)
        throw std::runtime_error("libxml2 makes no canonical XML of it");
    const std::string canonical(reinterpret_cast<const char*>(text), static_cast<std::size_t>(size));
    xmlFree(text);
    return canonical;
}

} // namespace vexaTransferLib::testing_support
