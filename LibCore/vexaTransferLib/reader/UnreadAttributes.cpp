// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/UnreadAttributes.h>

#include <vexaTransferLib/reader/ElementContent.h>
#include <vexaTransferLib/text/IcuText.h>

#include <algorithm>
#include <string_view>
#include <vector>

namespace vexaTransferLib::reader {

namespace {

// An attribute without a prefix belongs to its element, which is one that is read.
bool IsOwn(const AttributeView& attribute) {
    return attribute.namespaceUri == nullptr || IsNamespaceOfDocuments(attribute.namespaceUri);
}

std::string NameOf(const AttributeView& attribute) {
    std::string name;
    text::CopyOf(attribute.qualifiedName).toUTF8String(name);
    return name;
}

} // namespace

// Sorted, because not every source knows the order of the file.
void NotifyUnreadAttributes(SkipReporter& reporter, const NodeView& element, AttributeNames read,
                            const char16_t* noLoss) {
    std::vector<AttributeView> unread;
    element.OtherAttributes(read, unread);
    if (unread.empty())
        return;
    std::erase_if(unread, [](const AttributeView& attribute) { return !HasContent(attribute); });
    std::sort(unread.begin(), unread.end(), [](const AttributeView& one, const AttributeView& other) {
        return std::u16string_view(one.qualifiedName) < std::u16string_view(other.qualifiedName);
    });
    for (const AttributeView& attribute : unread) {
        if (IsOwn(attribute))
            reporter.Report(element, kGpxUnreadAttribute, "The library does not keep this attribute.",
                            noLoss == nullptr || !Equals(attribute.qualifiedName, noLoss), NameOf(attribute));
        else
            reporter.Report(element, kGpxForeignNamespace,
                            "The namespace of the attribute is " + Quoted(attribute.namespaceUri) + ".", true,
                            NameOf(attribute));
    }
}

} // namespace vexaTransferLib::reader
