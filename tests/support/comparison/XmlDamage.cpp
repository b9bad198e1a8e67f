// SPDX-License-Identifier: MIT
#include "support/comparison/XmlDamage.h"

#include "support/comparison/NormalValues.h"
#include "support/comparison/XmlDocument.h"

#include <functional>

namespace vexaTransferLib::testing_support {
namespace {

using Visitor = std::function<void(xmlNode*)>;

bool IsEmptyWrapper(const xmlNode* element) {
    const xmlNode* const content = element->children;
    return ViewOf(element->name) == "extensions" && element->properties == nullptr &&
           (content == nullptr || (content->next == nullptr && xmlIsBlankNode(content) == 1));
}

bool IsOfFile(const xmlAttr* attribute) {
    const std::string_view name = ViewOf(attribute->name);
    return name == "creator" || name == "version" || name == "schemaLocation";
}

void VisitAttributes(xmlNode* element, bool root, const Visitor& visit) {
    for (xmlAttr* attribute = element->properties; attribute != nullptr;) {
        xmlAttr* const next = attribute->next;
        if (!root || !IsOfFile(attribute))
            visit(reinterpret_cast<xmlNode*>(attribute));
        attribute = next;
    }
}

void VisitTexts(xmlNode* element, const Visitor& visit) {
    for (xmlNode* child = element->children; child != nullptr; child = child->next) {
        const bool text = child->type == XML_TEXT_NODE || child->type == XML_CDATA_SECTION_NODE;
        if (text && !TrimmedXml(ViewOf(child->content)).empty())
            visit(child);
    }
}

void VisitParts(const XmlDocument& document, XmlPart kind, const Visitor& visit) {
    xmlNode* const root = document.Root();
    for (xmlNode* element = root; element != nullptr; element = NextElement(element, root)) {
        if (kind == XmlPart::kAttribute)
            VisitAttributes(element, element == root, visit);
        else if (kind == XmlPart::kText)
            VisitTexts(element, visit);
        else if (element != root && !IsEmptyWrapper(element))
            visit(element);
    }
}

void Damage(xmlNode* part, XmlPart kind) {
    if (kind == XmlPart::kAttribute) {
        xmlRemoveProp(reinterpret_cast<xmlAttr*>(part));
    } else if (kind == XmlPart::kText) {
        xmlNodeAddContent(part, reinterpret_cast<const xmlChar*>("1"));
    } else {
        xmlUnlinkNode(part);
        xmlFreeNode(part);
    }
}

std::string Print(const XmlDocument& document) {
    xmlChar* bytes = nullptr;
    int size = 0;
    xmlDocDumpMemoryEnc(document.Get(), &bytes, &size, "UTF-8");
    std::string text(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(size));
    xmlFree(bytes);
    return text;
}

} // namespace

std::size_t CountParts(std::string_view xml, XmlPart kind) {
    std::size_t count = 0;
    VisitParts(XmlDocument(xml), kind, [&](xmlNode*) { ++count; });
    return count;
}

std::string Damaged(std::string_view xml, XmlPart kind, std::size_t n) {
    const XmlDocument document(xml);
    xmlNode* part = nullptr;
    std::size_t number = 0;
    VisitParts(document, kind, [&](xmlNode* one) { part = number++ == n ? one : part; });
    if (part != nullptr)
        Damage(part, kind);
    return Print(document);
}

} // namespace vexaTransferLib::testing_support
