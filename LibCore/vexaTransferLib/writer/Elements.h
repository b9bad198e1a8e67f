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

inline constexpr int kCoordinateDecimals = 9;
inline constexpr int kHeightDecimals = 6;

// Those that every point of a track needs are inline: the names are constants, whose characters are then
// stored without a loop or a call.

/// `<name>`, nothing around it.
inline void AppendOpen(TextSink& sink, std::string_view name) {
    sink.Ascii("<", name, ">");
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
/// A whole line behind `indent` with its text as it stands; nothing when the text is empty.
void AppendRawElement(TextSink& sink, std::string_view indent, std::string_view name,
                      const icu::UnicodeString& text);
void AppendGroupedElement(TextSink& sink, std::string_view indent, std::string_view name,
                          std::int32_t number);
void AppendGroupedElement(TextSink& sink, std::string_view indent, std::string_view name, double number);

/// The start tag of a point with its position. A position within one epsilon of a pole or of -180 is written
/// as that number; +180 has no such case.
void AppendPointStart(TextSink& sink, std::string_view name, double latitude, double longitude);

} // namespace vexaTransferLib::writer
