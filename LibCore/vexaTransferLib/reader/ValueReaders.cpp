// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/ValueReaders.h>

#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/IcuText.h>
#include <vexaTransferLib/text/NumberText.h>
#include <vexaTransferLib/text/TimeText.h>

#include <common/UnicodeStrUtils.h>
#include <common/dbc.h>

#include <xercesc/util/XMLString.hpp>

#include <algorithm>
#include <array>
#include <memory>

namespace vexaTransferLib::reader {

namespace {

struct TranscodedDeleter {
    void operator()(char* text) const { xercesc::XMLString::release(&text); }
};

bool NonEmpty(const char16_t* text) {
    return text != nullptr && *text != u'\0';
}

bool ParseNumber(const char16_t* text, Number& out) {
    if (text == nullptr)
        return false;
    if (text::ReadShortDecimal(text, out.value, out.digits))
        return true;
    std::string narrow;
    return ToNarrow(text, narrow) && ReadNumber(narrow.c_str(), out.value);
}

// A text that is not a number as a whole may still have changed the value.
template <class Read>
bool ReadValueOf(double& out, Read read) {
    Number number{out, {}};
    const bool isRead = read(number);
    out = number.value;
    return isRead;
}

} // namespace

const char16_t* ElementText(const NodeView& node) {
    if (!text::SoftCheck(!node.IsNull(), text::sites::kElementText) || !node.IsElement())
        return nullptr;
    const char16_t* const text = node.FirstChildText();
    return NonEmpty(text) ? text : nullptr;
}

const char16_t* AttributeText(const NodeView& node, const char16_t* name) {
    if (!text::SoftCheck(!node.IsNull(), text::sites::kAttributeText))
        return nullptr;
    const char16_t* const text = node.Attribute(name);
    return NonEmpty(text) ? text : nullptr;
}

// Converts short ASCII texts itself, because nearly all texts are such and the parser's transcoder takes ten
// times as long. The transcoder converts all others.
bool ToNarrow(const char16_t* text, std::string& out) {
    if (text == nullptr)
        return false;
    std::array<char, 64> ascii;
    std::size_t length = 0;
    while (length < ascii.size() && text[length] != u'\0' && text[length] < 0x80) {
        ascii[length] = static_cast<char>(text[length]);
        ++length;
    }
    if (length < ascii.size() && text[length] == u'\0') {
        out.assign(ascii.data(), length);
        return true;
    }
    const std::unique_ptr<char, TranscodedDeleter> transcoded(xercesc::XMLString::transcode(text));
    if (!transcoded)
        return false;
    out = transcoded.get();
    return true;
}

bool ReadText(const NodeView& node, icu::UnicodeString& out) {
    const char16_t* const units = ElementText(node);
    if (units == nullptr)
        return false;
    out = text::CopyOf(units);
    return true;
}

bool ReadText(const NodeView& node, std::string& out) {
    return ToNarrow(ElementText(node), out);
}

bool ReadTextAttribute(const NodeView& node, const char16_t* name, icu::UnicodeString& out) {
    const char16_t* const units = AttributeText(node, name);
    if (units == nullptr)
        return false;
    out = text::CopyOf(units);
    return true;
}

bool ReadDouble(const NodeView& node, Number& out) {
    std::string_view bytes;
    if (node.FirstChildBytes(bytes) && text::ReadShortDecimal(bytes, out.value, out.digits))
        return true;
    return ParseNumber(ElementText(node), out);
}

bool ReadDouble(const NodeView& node, double& out) {
    return ReadValueOf(out, [&](Number& number) { return ReadDouble(node, number); });
}

bool ReadDoubleAttribute(const NodeView& node, const char16_t* name, Number& out) {
    std::string_view bytes;
    if (node.AttributeBytes(name, bytes) && text::ReadShortDecimal(bytes, out.value, out.digits))
        return true;
    return ParseNumber(AttributeText(node, name), out);
}

bool ReadDoubleAttribute(const NodeView& node, const char16_t* name, double& out) {
    return ReadValueOf(out, [&](Number& number) { return ReadDoubleAttribute(node, name, number); });
}

bool ReadTime(const NodeView& node, double& out, text::TimeLosses& losses) {
    std::string_view bytes;
    if (node.FirstChildBytes(bytes) && text::ReadPlainTime(bytes, out, losses))
        return true;
    const char16_t* const text = ElementText(node);
    if (text == nullptr)
        return false;
    if (text::ReadPlainTime(text, out, losses))
        return true;
    std::string narrow;
    return ToNarrow(text, narrow) && !narrow.empty() && text::ReadTime(narrow, out, losses);
}

bool ReadTime(const NodeView& node, double& out) {
    text::TimeLosses losses;
    return ReadTime(node, out, losses);
}

bool ReadFix(const NodeView& node, GpxFix& out) {
    std::string text;
    if (!ReadText(node, text) || text.empty())
        return false;
    const auto found = std::find(text::kFixTexts.begin(), text::kFixTexts.end(), text);
    if (found == text::kFixTexts.end())
        return false;
    out = static_cast<GpxFix>(found - text::kFixTexts.begin());
    return true;
}

bool ReadNumber(const char* text, double& out) {
    if (text == nullptr || *text == '\0')
        return false;
    return *text::ReadDouble(text, out) == '\0';
}

void FailWithoutNamespace(const GpxVersion& version) {
    throw dbc::precondition_error("The standard namespace URI is unknown for GPX version \"" +
                                  UnicodeStrUtils::UnicodeStringToStlString(version.GetVersionString()) +
                                  "\".");
}

bool IsGroundspeak(const NodeView& node) {
    if (!text::SoftCheck(!node.IsNull(), text::sites::kGroundspeakNode))
        return false;
    const char16_t* const uri = node.NamespaceUri();
    return Equals(uri, text::kGroundspeak10Namespace) || Equals(uri, text::kGroundspeak101Namespace);
}

} // namespace vexaTransferLib::reader
