// SPDX-License-Identifier: MIT
#include <vexagpx/output/CsvWriter.h>

#include <vexagpx/output/ValueText.h>

namespace vexagpx {

namespace {

bool IsBlank(char byte) {
    return byte == ' ' || byte == '\t';
}

bool NeedsQuotes(std::string_view text) {
    return !text.empty() && (IsBlank(text.front()) || IsBlank(text.back()) ||
                             text.find_first_of(",\"\r\n") != std::string_view::npos);
}

} // namespace

void CsvWriter::Text(std::string_view utf8) {
    if (!NeedsQuotes(utf8))
        return Cell(utf8);
    Cell("\"");
    for (std::size_t quote = utf8.find('"'); quote != std::string_view::npos; quote = utf8.find('"')) {
        out_.Write(utf8.substr(0, quote + 1));
        out_.Write("\"");
        utf8.remove_prefix(quote + 1);
    }
    out_.Write(utf8);
    out_.Write("\"");
}

void CsvWriter::Text(const icu::UnicodeString& text) {
    utf8_.clear();
    text.toUTF8String(utf8_);
    Text(utf8_);
}

void CsvWriter::Number(double number) {
    Cell(NumberDigits(number).Text());
}

void CsvWriter::Number(std::int64_t number) {
    Cell(std::to_string(number));
}

void CsvWriter::Number(std::uint64_t number) {
    Cell(std::to_string(number));
}

void CsvWriter::Bool(bool value) {
    Cell(value ? "true" : "false");
}

void CsvWriter::Time(double millis) {
    Cell(TimeDigits(millis).Text());
}

void CsvWriter::Empty() {
    Cell({});
}

void CsvWriter::EndRow() {
    // An empty line would be no row to many readers.
    if (cells_ == 1 && isBlank_)
        out_.Write("\"\"");
    out_.Write("\r\n");
    cells_ = 0;
    isBlank_ = true;
}

void CsvWriter::Cell(std::string_view text) {
    if (cells_ != 0)
        out_.Write(",");
    ++cells_;
    isBlank_ = isBlank_ && text.empty();
    out_.Write(text);
}

} // namespace vexagpx
