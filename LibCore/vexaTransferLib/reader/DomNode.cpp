// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/DomNode.h>

#include <vexaTransferLib/text/IcuText.h>

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include <algorithm>
#include <string>
#include <type_traits>
#include <vector>

namespace vexaTransferLib::reader {

namespace {

using xercesc::DOMNode;

static_assert(std::is_same_v<XMLCh, char16_t>, "names are compared as the XML parser's own units");

const DOMNode& AsDom(const void* node) {
    return *static_cast<const DOMNode*>(node);
}

bool IsText(const DOMNode& node) {
    return node.getNodeType() == DOMNode::TEXT_NODE || node.getNodeType() == DOMNode::CDATA_SECTION_NODE;
}

// The text of a comment or a processing instruction does not belong to the text of its parent.
bool HasTextContent(const DOMNode& node) {
    switch (node.getNodeType()) {
    case DOMNode::ELEMENT_NODE:
    case DOMNode::ATTRIBUTE_NODE:
    case DOMNode::ENTITY_NODE:
    case DOMNode::ENTITY_REFERENCE_NODE:
    case DOMNode::DOCUMENT_FRAGMENT_NODE:
        return true;
    default:
        return false;
    }
}

// Returns the next node after `node` and its descendants within the tree of `root`; null when there is none.
const DOMNode* NextOutside(const DOMNode* node, const DOMNode* root) {
    while (node != root) {
        if (const DOMNode* sibling = node->getNextSibling())
            return sibling;
        node = node->getParentNode();
    }
    return nullptr;
}

class DomSource final : public OpaqueNodeSource {
public:
    bool IsElement(const void* node) const override {
        return AsDom(node).getNodeType() == DOMNode::ELEMENT_NODE;
    }
    const char16_t* LocalName(const void* node) const override { return AsDom(node).getLocalName(); }
    const char16_t* NamespaceUri(const void* node) const override { return AsDom(node).getNamespaceURI(); }

    const char16_t* Attribute(const void* node, const char16_t* qualifiedName) const override {
        const xercesc::DOMNamedNodeMap* attributes = AsDom(node).getAttributes();
        const DOMNode* attribute = attributes != nullptr ? attributes->getNamedItem(qualifiedName) : nullptr;
        return attribute != nullptr ? attribute->getNodeValue() : nullptr;
    }

    const char16_t* FirstChildText(const void* node) const override {
        const DOMNode* first = AsDom(node).getFirstChild();
        return first != nullptr && IsText(*first) ? first->getNodeValue() : nullptr;
    }

    // Does not use getTextContent of Xerces, which recurses: about 100,000 nested elements would end the
    // process.
    bool TextContent(const void* node, icu::UnicodeString& out) const override {
        const DOMNode& root = AsDom(node);
        if (!HasTextContent(root)) {
            const XMLCh* value = root.getTextContent();
            if (value != nullptr)
                out = text::CopyOf(value);
            return value != nullptr;
        }
        out.remove();
        for (const DOMNode* current = root.getFirstChild(); current != nullptr;) {
            if (IsText(*current))
                out.append(current->getNodeValue(), -1);
            const DOMNode* child = HasTextContent(*current) ? current->getFirstChild() : nullptr;
            current = child != nullptr ? child : NextOutside(current, &root);
        }
        text::ThrowIfBogus(out);
        return true;
    }

    bool IsTextWithContent(const void* node) const override {
        if (!IsText(AsDom(node)))
            return false;
        const XMLCh* unit = AsDom(node).getNodeValue();
        while (IsXmlBlank(*unit))
            ++unit;
        return *unit != u'\0';
    }

    void OtherAttributes(const void* node, AttributeNames names,
                         std::vector<AttributeView>& out) const override {
        const xercesc::DOMNamedNodeMap* const attributes = AsDom(node).getAttributes();
        const XMLSize_t count = attributes != nullptr ? attributes->getLength() : 0;
        for (XMLSize_t i = 0; i < count; ++i) {
            const auto& attribute = static_cast<const xercesc::DOMAttr&>(*attributes->item(i));
            if (attribute.getSpecified() && !Contains(names, attribute.getName()))
                out.push_back(
                    {attribute.getName(), attribute.getNamespaceURI(), *attribute.getValue() == u'\0'});
        }
    }

    bool HasChildList(const void*) const override { return true; }

    std::string Path(const void* node) const override {
        std::vector<const char16_t*> names;
        for (const DOMNode* current = &AsDom(node); current != nullptr; current = current->getParentNode())
            if (current->getLocalName() != nullptr)
                names.push_back(current->getLocalName());
        std::reverse(names.begin(), names.end());
        return PathOf(names);
    }

    // Goes from sibling to sibling, because every access by index walks the list from its start.
    bool NextChild(const void* node, const void*& position, const void*& child) const override {
        const DOMNode* next =
            position == nullptr ? AsDom(node).getFirstChild() : AsDom(position).getNextSibling();
        if (next == nullptr)
            return false;
        position = next;
        child = next;
        return true;
    }
};

} // namespace

NodeView ViewOf(const xercesc::DOMNode* node) {
    static const DomSource source;
    return node != nullptr ? NodeView(source, node) : NodeView();
}

} // namespace vexaTransferLib::reader
