// SPDX-License-Identifier: MIT
#include <vexaTransferLib/writer/Elements.h>

#include <vexaTransferLib/text/ElementNames.h>

#include <limits>

namespace vexaTransferLib::writer {

namespace {

template <class Number>
void AppendGrouped(TextSink& sink, std::string_view indent, std::string_view name, Number number) {
    sink.Ascii(indent, "<", name, ">");
    sink.Grouped(number);
    AppendLineEnd(sink, name);
}

double SnapTo(double value, double limit) {
    const double epsilon = std::numeric_limits<double>::epsilon();
    return value >= limit - epsilon && value <= limit + epsilon ? limit : value;
}

} // namespace

void AppendTextElement(TextSink& sink, std::string_view name, const icu::UnicodeString& text) {
    if (text.isEmpty())
        return;
    AppendOpen(sink, name);
    sink.Escaped(text);
    AppendLineEnd(sink, name);
}

void AppendRawElement(TextSink& sink, std::string_view indent, std::string_view name,
                      const icu::UnicodeString& text) {
    if (text.isEmpty())
        return;
    sink.Ascii(indent, "<", name, ">");
    sink.Raw(text);
    AppendLineEnd(sink, name);
}

void AppendGroupedElement(TextSink& sink, std::string_view indent, std::string_view name,
                          std::int32_t number) {
    AppendGrouped(sink, indent, name, number);
}

void AppendGroupedElement(TextSink& sink, std::string_view indent, std::string_view name, double number) {
    AppendGrouped(sink, indent, name, number);
}

void AppendPointStart(TextSink& sink, std::string_view name, double latitude, double longitude) {
    sink.Ascii("<", name, " ", gpx::kLat, "=\"");
    sink.Fixed(SnapTo(SnapTo(latitude, -90.0), 90.0), text::kAngleDecimals);
    sink.Ascii("\" ", gpx::kLon, "=\"");
    sink.Fixed(SnapTo(longitude, -180.0), text::kAngleDecimals);
    sink.Ascii("\">", kEndOfLine);
}

} // namespace vexaTransferLib::writer
