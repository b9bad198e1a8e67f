// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Output.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <string_view>

namespace vexagpx {

/// Writes JSON as it comes, without line breaks: a document of a million points needs no tree in memory. The
/// caller sees to it that begins, ends and keys make sense.
class JsonWriter {
public:
    explicit JsonWriter(Output& out) : out_(out) {}

    void BeginObject() { Begin('{'); }
    void EndObject() { End('}'); }
    void BeginArray() { Begin('['); }
    void EndArray() { End(']'); }
    /// A name that needs no escape.
    void Key(std::string_view name);
    /// What a terminal would obey (IsTerminalControl) is escaped, "\\u009b", wherever the output goes: the
    /// bytes are the same on a terminal and in a pipe, and mean the same.
    void String(const icu::UnicodeString& text);
    void String(std::string_view utf8);
    /// The shortest form that reads back the same; "NaN", "Infinity" and "-Infinity" are strings, for JSON
    /// has no such numbers.
    void Number(double number);
    void Number(std::int32_t number);
    void Number(std::uint64_t number);
    void Bool(bool value);

private:
    void Begin(char bracket);
    void End(char bracket);
    void Value(std::string_view text);
    void Separate();

    Output& out_;
    bool separate_ = false;
};

} // namespace vexagpx
