// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxUtils.h>

#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/ContractSources.h>
#include <vexaTransferLib/text/OptionalText.h>
#include <vexaTransferLib/text/TimeText.h>
#include <vexaTransferLib/writer/TextSink.h>

#include <common/dbc.h>

namespace vexaTransferLib {

// Contract reports name these lines for the checks of other files that run on behalf of this one.
namespace text::sites {

static constexpr CheckSiteMaker Here{kGpxUtilsSource};

constinit const CheckSite kTextSetter = Here();   // text/OptionalText.h: a text to set is empty
constinit const CheckSite kLongField = Here();    // text/TimeText.cpp: a field without text or too wide
constinit const CheckSite kFraction = Here();     // text/TimeText.cpp: a fraction without text or too long
constinit const CheckSite kGpxTime = Here();      // text/TimeText.cpp: an empty time text
constinit const CheckSite kNumberFormat = Here(); // text/UsNumberFormat.cpp: ICU has no number format

} // namespace text::sites

icu::UnicodeString EscapeXMLValueString(const icu::UnicodeString& text) {
    icu::UnicodeString escaped;
    if (text.isBogus())
        escaped.setToBogus();
    else
        writer::UnicodeSink(escaped).Escaped(text);
    return escaped;
}

void AppendStringElement(icu::UnicodeString& out, const icu::UnicodeString& name,
                         const icu::UnicodeString& value) {
    dbc::Require(!name.isEmpty(), text::kGpxUtilsSource, "Cannot write an unnamed XML string element.");
    if (value.isEmpty())
        return;
    // Built in a string of its own, because the caller may pass the output itself as name or value.
    icu::UnicodeString line;
    writer::UnicodeSink sink(line);
    sink.Ascii("<");
    sink.Raw(name);
    sink.Ascii(">");
    sink.Escaped(value);
    sink.Ascii("</");
    sink.Raw(name);
    sink.Ascii(">\r\n");
    writer::RequireNotBogus(line, text::kGpxUtilsSource);
    out.append(line);
    writer::RequireNotBogus(out, text::kGpxUtilsSource);
}

bool GetStringValue(icu::UnicodeString& out, const icu::UnicodeString& value) {
    return text::CopyText(out, value);
}

void SetStringValue(const std::string& message, icu::UnicodeString& target, const icu::UnicodeString& value) {
    text::AssignText(message.c_str(), target, value);
}

bool ReadLongFromString(long& out, const char* text, unsigned long length, long min, long max) {
    return text::ReadLongField(out, text, length, min, max);
}

unsigned long ReadAndScaleDoubleFromString(long& out, const char* text, double scale) {
    return text::ReadFraction(out, text, scale);
}

bool ParseGpxTime(const std::string& text, double& millis) {
    return text::ReadTime(text, millis);
}

icu::UnicodeString ToGpxTime(icu::Calendar* calendar) {
    icu::UnicodeString result;
    if (!dbc::SoftCheck(calendar != nullptr, text::kGpxUtilsSource))
        return result;
    UErrorCode status = U_ZERO_ERROR;
    const UDate millis = calendar->getTime(status);
    if (U_SUCCESS(status))
        writer::UnicodeSink(result).Ascii(text::TimeText(millis, text::YearDigits::kFour).View());
    return result;
}

} // namespace vexaTransferLib
