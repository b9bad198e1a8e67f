// SPDX-License-Identifier: MIT
#include <vexaTransferLib/writer/Elements.h>

#include <vexaTransferLib/text/NumberText.h>

#include <limits>

namespace vexaTransferLib::writer {

namespace {

template <class Number>
void AppendGrouped(TextSink& sink, std::string_view indent, std::string_view name, Number number) {
    sink.Ascii(indent);
    AppendOpen(sink, name);
    sink.Grouped(number);
    AppendClose(sink, name);
    sink.Ascii(kEndOfLine);
}

double SnapTo(double value, double limit) {
    const double epsilon = std::numeric_limits<double>::epsilon();
    return value >= limit - epsilon && value <= limit + epsilon ? limit : value;
}

} // namespace

void AppendOpen(TextSink& sink, std::string_view name) {
    sink.Ascii("<");
    sink.Ascii(name);
    sink.Ascii(">");
}

void AppendClose(TextSink& sink, std::string_view name) {
    sink.Ascii("</");
    sink.Ascii(name);
    sink.Ascii(">");
}

void AppendTextElement(TextSink& sink, std::string_view name, const icu::UnicodeString& text) {
    if (text.isEmpty())
        return;
    AppendOpen(sink, name);
    sink.Escaped(text);
    AppendClose(sink, name);
    sink.Ascii(kEndOfLine);
}

void AppendRawElement(TextSink& sink, std::string_view indent, std::string_view name,
                      const icu::UnicodeString& text) {
    if (text.isEmpty())
        return;
    sink.Ascii(indent);
    AppendOpen(sink, name);
    sink.Raw(text);
    AppendClose(sink, name);
    sink.Ascii(kEndOfLine);
}

void AppendAsciiElement(TextSink& sink, std::string_view name, std::string_view text) {
    AppendOpen(sink, name);
    sink.Ascii(text);
    AppendClose(sink, name);
    sink.Ascii(kEndOfLine);
}

void AppendFixedElement(TextSink& sink, std::string_view name, double number, int decimals) {
    AppendAsciiElement(sink, name, text::FixedText(number, decimals).View());
}

void AppendGroupedElement(TextSink& sink, std::string_view indent, std::string_view name,
                          std::int32_t number) {
    AppendGrouped(sink, indent, name, number);
}

void AppendGroupedElement(TextSink& sink, std::string_view indent, std::string_view name, double number) {
    AppendGrouped(sink, indent, name, number);
}

void AppendPointStart(TextSink& sink, std::string_view name, double latitude, double longitude) {
    sink.Ascii("<");
    sink.Ascii(name);
    sink.Ascii(" lat=\"");
    sink.Fixed(SnapTo(SnapTo(latitude, -90.0), 90.0), kCoordinateDecimals);
    sink.Ascii("\" lon=\"");
    sink.Fixed(SnapTo(longitude, -180.0), kCoordinateDecimals);
    sink.Ascii("\">\r\n");
}

} // namespace vexaTransferLib::writer
