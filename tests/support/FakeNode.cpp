// SPDX-License-Identifier: MIT
#include "support/FakeNode.h"

#include <vexaTransferLib/text/GpxNames.h>

#include <utility>

namespace vexaTransferLib::testing_support {

namespace {

const FakeNode& AsFake(const void* node) {
    return *static_cast<const FakeNode*>(node);
}

const char16_t* OrNull(const std::optional<std::u16string>& text) {
    return text ? text->c_str() : nullptr;
}

class FakeSource : public reader::OpaqueNodeSource {
public:
    bool IsElement(const void* node) const override { return AsFake(node).isElement; }
    const char16_t* LocalName(const void* node) const override { return OrNull(AsFake(node).localName); }
    const char16_t* NamespaceUri(const void* node) const override {
        return OrNull(AsFake(node).namespaceUri);
    }
    const char16_t* Attribute(const void* node, const char16_t* qualifiedName) const override {
        const auto found = AsFake(node).attributes.find(qualifiedName);
        return found != AsFake(node).attributes.end() ? found->second.c_str() : nullptr;
    }
    const char16_t* FirstChildText(const void* node) const override {
        if (AsFake(node).whenTextIsRead)
            AsFake(node).whenTextIsRead();
        return OrNull(AsFake(node).text);
    }
    bool TextContent(const void* node, icu::UnicodeString& out) const override {
        const char16_t* const text = FirstChildText(node);
        if (text != nullptr)
            out.setTo(text, -1);
        return text != nullptr;
    }
    bool HasChildList(const void* node) const override { return AsFake(node).hasChildList; }
    bool NextChild(const void* node, const void*& position, const void*& child) const override {
        const std::vector<FakeNodePtr>& children = AsFake(node).children;
        const auto* const last = static_cast<const FakeNodePtr*>(position);
        const FakeNodePtr* const next = last == nullptr ? children.data() : last + 1;
        if (next == children.data() + children.size())
            return false;
        position = next;
        child = next->get();
        return true;
    }
};

FakeNodePtr Node(const char16_t* uri, const char16_t* localName, std::vector<FakeNodePtr> children) {
    const auto node = std::make_shared<FakeNode>();
    node->namespaceUri = uri;
    node->localName = localName;
    node->children = std::move(children);
    return node;
}

FakeNodePtr TextNode(const char16_t* uri, const char16_t* localName, const char16_t* text) {
    const FakeNodePtr node = Node(uri, localName, {});
    node->text = text;
    return node;
}

} // namespace

reader::NodeView FakeNode::View() const {
    static const FakeSource source;
    return reader::NodeView(source, this);
}

FakeNodePtr Gpx11Node(const char16_t* localName, std::vector<FakeNodePtr> children) {
    return Node(text::kGpx11Namespace, localName, std::move(children));
}

FakeNodePtr Gpx11Text(const char16_t* localName, const char16_t* text) {
    return TextNode(text::kGpx11Namespace, localName, text);
}

FakeNodePtr GeocacheNode(const char16_t* localName, std::vector<FakeNodePtr> children) {
    return Node(text::kGroundspeak10Namespace, localName, std::move(children));
}

FakeNodePtr GeocacheText(const char16_t* localName, const char16_t* text) {
    return TextNode(text::kGroundspeak10Namespace, localName, text);
}

FakeNodePtr Gpx11Point(const char16_t* localName, std::vector<FakeNodePtr> children) {
    const FakeNodePtr point = Gpx11Node(localName, std::move(children));
    point->attributes = {{u"lat", u"1"}, {u"lon", u"2"}};
    return point;
}

FakeNodePtr WithoutChildList(const FakeNode& node) {
    const auto copy = std::make_shared<FakeNode>(node);
    copy->hasChildList = false;
    return copy;
}

reader::ReadContext& AnyContext() {
    static MarkingContext context;
    return context;
}

} // namespace vexaTransferLib::testing_support
