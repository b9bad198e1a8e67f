// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/writer/TextSink.h>

#include <cstdint>
#include <string_view>

namespace vexaTransferLib::writer {

inline constexpr std::string_view kEndOfLine = "\r\n";

// The functions that every point of a track needs are inline. Their names are constants, whose characters the compiler
// then stores without a loop or a call.

/// `<name>`, without indentation or the end of a line.
inline void AppendOpen(TextSink& sink, std::string_view name) {
    sink.Ascii("<", name, ">");
}

/// `<name>` and the end of the line, for an element whose children have lines of their own.
inline void AppendLineStart(TextSink& sink, std::string_view name) {
    sink.Ascii("<", name, ">", kEndOfLine);
}

/// `</name>` and the end of the line.
inline void AppendLineEnd(TextSink& sink, std::string_view name) {
    sink.Ascii("</", name, ">", kEndOfLine);
}

inline void AppendAsciiElement(TextSink& sink, std::string_view name, std::string_view text) {
    AppendOpen(sink, name);
    sink.Ascii(text);
    AppendLineEnd(sink, name);
}

inline void AppendFixedElement(TextSink& sink, std::string_view name, double number, int decimals) {
    AppendOpen(sink, name);
    sink.Fixed(number, decimals);
    AppendLineEnd(sink, name);
}

/// A whole line with its escaped text; nothing when the text is empty.
void AppendTextElement(TextSink& sink, std::string_view name, const icu::UnicodeString& text);
/// A whole line that starts with `indent`, with the text unescaped; nothing when the text is empty.
void AppendRawElement(TextSink& sink, std::string_view indent, std::string_view name,
                      const icu::UnicodeString& text);
void AppendGroupedElement(TextSink& sink, std::string_view indent, std::string_view name,
                          std::int32_t number);
void AppendGroupedElement(TextSink& sink, std::string_view indent, std::string_view name, double number);

/// The start tag of a point with its position. A latitude within one epsilon of -90 or 90, and a longitude within one
/// epsilon of -180, is written as that number. A longitude of 180 cannot occur.
void AppendPointStart(TextSink& sink, std::string_view name, double latitude, double longitude);

} // namespace vexaTransferLib::writer
