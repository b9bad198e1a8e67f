// SPDX-License-Identifier: MIT
#include <vexagpx/commands/IllFormedField.h>

#include <vexagpx/input/XmlCheck.h>
#include <vexagpx/output/HiddenFields.h>
#include <vexagpx/terminal/DisplayText.h>

#include <vexaTransferLib/GpxUtils.h>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

bool BreaksElement(const icu::UnicodeString& text) {
    std::string xml = "<x>";
    text.toUTF8String(xml);
    return FindXmlError(xml + "</x>").has_value();
}

bool BreaksAttribute(const icu::UnicodeString& text) {
    std::string xml = "<x key=\"";
    text.toUTF8String(xml);
    return FindXmlError(xml + "\"/>").has_value();
}

bool Breaks(const icu::UnicodeString& text, RawText::Context context) {
    return context == RawText::Context::kAttribute ? BreaksAttribute(text) : BreaksElement(text);
}

/// True when the text, written without escapes, is read as another text or as more than text. An XML parser turns line
/// ends in elements into line feeds, and all white space in attributes into spaces. Attributes have double quotes.
bool IsReadOtherwise(const icu::UnicodeString& text, RawText::Context context) {
    static const icu::UnicodeString kOfElements(u"<&\r");
    static const icu::UnicodeString kOfAttributes(u"<&\"\t\n\r");
    const icu::UnicodeString& changed = context == RawText::Context::kAttribute ? kOfAttributes : kOfElements;
    for (std::int32_t i = 0; i < text.length(); ++i)
        if (changed.indexOf(text[i]) >= 0)
            return true;
    return false;
}

std::string Named(const std::string& field, const icu::UnicodeString& text) {
    constexpr std::size_t kLongest = 60;
    std::string name = field + " \"";
    Fitted(Printable(text), kLongest).toUTF8String(name);
    return name + '"';
}

} // namespace

std::string FindIllFormedField(const GpxDocument& document, const GpxVersion& version,
                               const icu::UnicodeString& applicationName,
                               const icu::UnicodeString& applicationUrl, std::string_view xml) {
    if (BreaksAttribute(EscapeXMLValueString(applicationName)))
        return Named("application name", applicationName);
    if (BreaksAttribute(EscapeXMLValueString(applicationUrl)))
        return Named("application URL", applicationUrl);
    if (const std::optional<RawText> raw = FindRawText(document, version, Breaks))
        return Named(raw->field, raw->text);
    return "text of " + XmlErrorPath(xml);
}

std::optional<std::string> FindChangedText(const GpxDocument& document, const GpxVersion& version) {
    const std::optional<RawText> raw = FindRawText(document, version, IsReadOtherwise);
    return raw ? std::optional(Named(raw->field, raw->text)) : std::nullopt;
}

} // namespace vexagpx
