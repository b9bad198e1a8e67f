// SPDX-License-Identifier: MIT
#include <vexagpx/Culprit.h>

#include <vexagpx/DisplayText.h>
#include <vexagpx/Dump.h>
#include <vexagpx/WellFormed.h>

#include <vexaTransferLib/GpxUtils.h>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

bool BreaksElement(const icu::UnicodeString& text) {
    std::string xml = "<x>";
    text.toUTF8String(xml);
    return !IsWellFormed(xml + "</x>");
}

bool BreaksAttribute(const icu::UnicodeString& text) {
    std::string xml = "<x key=\"";
    text.toUTF8String(xml);
    return !IsWellFormed(xml + "\"/>");
}

bool Breaks(const RawText& raw) {
    return raw.place == RawText::Place::kAttribute ? BreaksAttribute(raw.text) : BreaksElement(raw.text);
}

std::string Named(const std::string& field, const icu::UnicodeString& text) {
    constexpr std::size_t kLongest = 60;
    std::string name = field + " \"";
    Fitted(Printable(text), kLongest).toUTF8String(name);
    return name + '"';
}

} // namespace

std::string FindCulprit(const GpxDocument& document, const GpxVersion& version,
                        const icu::UnicodeString& applicationName, const icu::UnicodeString& applicationUrl,
                        const std::string& path) {
    if (BreaksAttribute(EscapeXMLValueString(applicationName)))
        return Named("application name", applicationName);
    if (BreaksAttribute(EscapeXMLValueString(applicationUrl)))
        return Named("application URL", applicationUrl);
    for (const RawText& raw : ListRawTexts(document, version))
        if (Breaks(raw))
            return Named(raw.field, raw.text);
    return "text of " + PlaceOfXmlError(path);
}

} // namespace vexagpx
