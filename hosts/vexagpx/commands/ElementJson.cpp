// SPDX-License-Identifier: MIT
#include <vexagpx/commands/ElementJson.h>

#include <vexagpx/output/OptionalMembers.h>

#include <unicode/uchar.h>

#include <cstdint>
#include <string>

namespace vexagpx {

using vexaTransferLib::GpxAttribute;
using vexaTransferLib::GpxElement;

namespace {

// Programs that read JSON limit how deep it is nested, some to 256 brackets.
constexpr int kMostLevels = 16;

std::int32_t CountWithoutBlanks(const icu::UnicodeString& text) {
    std::int32_t count = 0;
    for (std::int32_t i = 0; i < text.length(); ++i)
        count += u_isUWhiteSpace(text[i]) ? 0 : 1;
    return count;
}

/// True when the element has text beside its children.
bool IsMixed(const GpxElement& element) {
    std::int32_t ofChildren = 0;
    for (const GpxElement& child : element.GetChildren())
        ofChildren += CountWithoutBlanks(child.GetText());
    return CountWithoutBlanks(element.GetText()) != ofChildren;
}

/// "{http://www.w3.org/2001/XMLSchema-instance}type"; the local name alone of an attribute without a namespace.
std::string KeyOf(const GpxAttribute& attribute) {
    std::string key;
    if (!attribute.nameSpace.empty())
        key.append("{").append(attribute.nameSpace).append("}");
    return key.append(attribute.name);
}

} // namespace

void ElementJson::Write(std::string_view key, const std::vector<GpxElement>& elements) {
    ArrayIfAny(json_, key, elements,
               [this](const GpxElement& element) { WriteElement(element, {}, kMostLevels); });
}

void ElementJson::WriteWithLines(std::string_view key, const std::vector<GpxElement>& elements) {
    ArrayIfAny(json_, key, elements, [this](const GpxElement& element) {
        json_.BeginObject();
        json_.Member("line", element.GetLine());
        WriteMembers(element, {}, kMostLevels);
        json_.EndObject();
    });
}

void ElementJson::WriteElement(const GpxElement& element, std::string_view outerNamespace, int levels) {
    json_.BeginObject();
    WriteMembers(element, outerNamespace, levels);
    json_.EndObject();
}

void ElementJson::WriteMembers(const GpxElement& element, std::string_view outerNamespace, int levels) {
    const std::string_view nameSpace = element.GetNamespace();
    if (nameSpace != outerNamespace)
        json_.Member("namespace", nameSpace);
    json_.Member("name", element.GetName());
    WriteAttributes(element);
    WriteContent(element, levels);
}

void ElementJson::WriteAttributes(const GpxElement& element) {
    const std::vector<GpxAttribute> attributes = element.GetAttributes();
    if (attributes.empty())
        return;
    json_.Key("attributes");
    json_.BeginObject();
    for (const GpxAttribute& attribute : attributes) {
        json_.AnyKey(KeyOf(attribute));
        json_.String(attribute.value);
    }
    json_.EndObject();
}

void ElementJson::WriteContent(const GpxElement& element, int levels) {
    const GpxElement::Children children = element.GetChildren();
    if (children.empty()) {
        if (const icu::UnicodeString text = element.GetText(); !text.isEmpty())
            json_.Member("text", text);
        return;
    }
    if (levels == 1 || IsMixed(element)) {
        json_.Member("xml", element.GetXml());
        return;
    }
    json_.Key("children");
    json_.BeginArray();
    const std::string_view nameSpace = element.GetNamespace();
    for (const GpxElement& child : children)
        WriteElement(child, nameSpace, levels - 1);
    json_.EndArray();
}

} // namespace vexagpx
