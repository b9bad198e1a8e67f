// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/ElementContent.h>

#include <algorithm>
#include <string_view>
#include <vector>

namespace vexaTransferLib::reader {

namespace {

constexpr std::u16string_view kXmlns = u"xmlns";
constexpr char16_t kXsiNamespace[] = u"http://www.w3.org/2001/XMLSchema-instance";

bool IsDeclaration(std::u16string_view name) {
    return name.starts_with(kXmlns) && (name.size() == kXmlns.size() || name[kXmlns.size()] == u':');
}

bool HasAttributeWithContent(const NodeView& element) {
    std::vector<AttributeView> attributes;
    element.OtherAttributes({}, attributes);
    return std::any_of(attributes.begin(), attributes.end(),
                       [](const AttributeView& attribute) { return HasContent(attribute); });
}

enum class Texts { kCount, kDoNotCount };

// Keeps its own stack, because a file may nest its elements to any depth.
bool HasContentBelow(const NodeView& element, Texts texts) {
    std::vector<ChildWalk> open{ChildWalk(element)};
    while (!open.empty()) {
        NodeView child;
        if (!open.back().Next(child)) {
            open.pop_back();
        } else if (child.IsElement()) {
            if (HasAttributeWithContent(child))
                return true;
            open.emplace_back(child);
        } else if (texts == Texts::kCount && child.IsTextWithContent()) {
            return true;
        }
    }
    return false;
}

} // namespace

bool HasContent(const AttributeView& attribute) {
    return !attribute.isEmpty && !IsDeclaration(attribute.qualifiedName) &&
           !Equals(attribute.namespaceUri, kXsiNamespace);
}

bool HasContent(const NodeView& element) {
    return HasAttributeWithContent(element) || HasContentBelow(element, Texts::kCount);
}

bool HasAttributesBelow(const NodeView& element) {
    return HasContentBelow(element, Texts::kDoNotCount);
}

} // namespace vexaTransferLib::reader
