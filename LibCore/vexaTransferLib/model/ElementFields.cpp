// SPDX-License-Identifier: MIT
#include <vexaTransferLib/model/ElementFields.h>

#include <vexaTransferLib/text/ValueText.h>

#include <cstddef>
#include <string>
#include <utility>

namespace vexaTransferLib {

namespace {

template <class Value>
std::optional<Value> Read(std::optional<Value> (*read)(std::string_view),
                          const std::optional<icu::UnicodeString>& text) {
    std::string utf8;
    return text ? read(text->toUTF8String(utf8)) : std::nullopt;
}

} // namespace

GpxElement FindChildIn(bool (*isWanted)(std::string_view uri), const GpxElement& parent,
                       const text::ElementName& name) {
    for (const GpxElement& child : parent.GetChildren())
        if (child.GetName() == name.Local() && isWanted(child.GetNamespace()))
            return child;
    return {};
}

GpxElement FindVendorElement(const GpxElement& object, const text::ElementName& name) {
    GpxElement last;
    ForEachForeign(object, [&](const GpxElement& element) {
        if (element.GetName() == name.Local() && text::IsTarvikNamespace(element.GetNamespace()))
            last = element;
        return true;
    });
    return last;
}

std::optional<icu::UnicodeString> TextOf(const GpxElement& element) {
    return element ? std::optional(element.GetText()) : std::nullopt;
}

std::optional<std::uint64_t> UnsignedOf(const GpxElement& element) {
    return Read(text::ReadSchemaUnsigned, TextOf(element));
}

std::optional<std::int32_t> VendorIntegerOf(const GpxElement& element) {
    return Read(text::ReadGroupedInteger, TextOf(element));
}

std::optional<double> VendorNumberOf(const GpxElement& element) {
    return Read(text::ReadGroupedNumber, TextOf(element));
}

std::optional<icu::UnicodeString> TextOf(const GpxElement& element, const text::ElementName& attribute) {
    return element.GetAttribute(attribute.Local());
}

std::optional<double> NumberOf(const GpxElement& element, const text::ElementName& attribute) {
    return Read(text::ReadSchemaNumber, TextOf(element, attribute));
}

std::optional<std::int64_t> IntegerOf(const GpxElement& element, const text::ElementName& attribute) {
    return Read(text::ReadSchemaInteger, TextOf(element, attribute));
}

std::optional<bool> BooleanOf(const GpxElement& element, const text::ElementName& attribute) {
    return Read(text::ReadBoolean, TextOf(element, attribute));
}

std::optional<double> TimeOf(const GpxElement& element, const text::ElementName& attribute) {
    return Read(text::ReadSchemaTime, TextOf(element, attribute));
}

GpxLink LinkOf(const GpxElement& link) {
    return {TextOf(link, gpx::kHref).value_or(icu::UnicodeString()), FindGpxChild(link, gpx::kText).GetText(),
            FindGpxChild(link, gpx::kType).GetText()};
}

std::vector<GpxLink> LinksOf(const GpxElement& object) {
    std::vector<GpxLink> links;
    std::vector<std::size_t> urls; // by index in the links
    std::vector<icu::UnicodeString> names;
    for (const GpxElement& child : object.GetChildren()) {
        if (IsGpxElement(child, gpx::kLink)) {
            links.push_back(LinkOf(child));
        } else if (IsGpxElement(child, gpx::kUrl)) {
            urls.push_back(links.size());
            links.push_back({child.GetText(), {}, {}});
        } else if (IsGpxElement(child, gpx::kUrlname)) {
            names.push_back(child.GetText());
        }
    }
    for (std::size_t i = 0; i < urls.size() && i < names.size(); ++i)
        links[urls[i]].text = std::move(names[i]);
    return links;
}

} // namespace vexaTransferLib
