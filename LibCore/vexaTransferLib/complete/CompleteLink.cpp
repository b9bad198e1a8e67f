// SPDX-License-Identifier: MIT
#include <vexaTransferLib/complete/CompleteReaders.h>

#include <vexaTransferLib/model/ElementText.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <string_view>

namespace vexaTransferLib::complete {

namespace {

icu::UnicodeString AttributeOf(const ScannedTag& tag, std::string_view name) {
    std::string_view rest = tag.attributes;
    for (ScannedAttribute attribute; ScanAttribute(rest, attribute);)
        if (attribute.name == name)
            return DecodedValue(attribute.value);
    return {};
}

} // namespace

// The first link that has an address is the one that the model gets.
const char* LinkParts::ReadLink(CompleteContext& context, const ScannedChild& link) {
    if (!address.isEmpty())
        return nullptr;
    address = AttributeOf(link.tag, gpx::kHref);
    if (address.isEmpty()) {
        context.ReportUnread(link, "It has no address.");
        return nullptr;
    }
    // They may be those of an address that is not there.
    text.remove();
    type.remove();
    isLink = true;
    element = context.ElementOf(link);
    return context.ForEach(link, [&](const ScannedChild& child) -> const char* {
        if (child.IsGpx(gpx::kText))
            return context.ReadText(child, text);
        return child.IsGpx(gpx::kType) ? context.ReadText(child, type) : nullptr;
    });
}

const char* LinkParts::Read(CompleteContext& context, const ScannedChild& child) {
    if (child.name == gpx::kLink)
        return ReadLink(context, child);
    if (child.name == gpx::kUrl && !isLink) {
        if (address.isEmpty())
            element = context.ElementOf(child);
        return context.ReadText(child, address);
    }
    return child.name == gpx::kUrlname && !isLink ? context.ReadText(child, text) : nullptr;
}

GpxUrl LinkParts::Made() const {
    GpxUrl link(address);
    if (!text.isEmpty())
        link.SetUrlText(text);
    if (!type.isEmpty())
        link.SetUrlType(type);
    GpxModelAccess::SetElement(link, element);
    return link;
}

} // namespace vexaTransferLib::complete
