// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/process/Output.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <string_view>
#include <type_traits>

namespace vexagpx {

/// Writes JSON while it is produced, so that a document of a million points needs no tree in memory. It has no line
/// breaks unless they are asked for. The caller is responsible for the right order of calls.
class JsonWriter {
public:
    explicit JsonWriter(Output& out) : out_(out) {}

    void BeginObject() { Begin('{'); }
    void EndObject() { End('}'); }
    void BeginArray() { Begin('['); }
    void EndArray() { End(']'); }

    /// A name that needs no escape. Its value follows.
    void Key(std::string_view name);

    /// A name of any characters, in UTF-8. Its value follows.
    void AnyKey(std::string_view name);

    /// A name and its value: a text, a number or a truth value.
    template <class T>
    void Member(std::string_view name, const T& value) {
        Key(name);
        if constexpr (std::is_same_v<T, bool>)
            Bool(value);
        else if constexpr (std::is_unsigned_v<T>)
            Number(std::uint64_t{value});
        else if constexpr (std::is_arithmetic_v<T>)
            Number(value);
        else if constexpr (std::is_convertible_v<const T&, std::string_view>)
            String(std::string_view(value));
        else
            String(value);
    }

    /// The characters that control a terminal (IsTerminalControl) are escaped, "\\u009b", wherever the output goes:
    /// the bytes are the same on a terminal and in a pipe, and mean the same.
    void String(const icu::UnicodeString& text);
    /// Bytes that are not UTF-8 become replacement characters.
    /// \throws std::runtime_error when there are 2 GiB or more, with others than plain ones among them
    void String(std::string_view utf8);
    /// The shortest form that reads back the same. NaN, Infinity and -Infinity are written as strings because JSON
    /// has no such numbers.
    void Number(double number);
    void Number(std::int32_t number);
    void Number(std::int64_t number);
    void Number(std::uint64_t number);
    void Bool(bool value);
    /// A value that is JSON already.
    void Literal(std::string_view json) { Value(json); }

    /// Starts a new line for the next element of an array.
    void BreakLine();

private:
    void Begin(char bracket);
    void End(char bracket);
    void Value(std::string_view text);
    void PlainString(std::string_view text);
    void Separate();

    Output& out_;
    bool needsComma_ = false;
};

} // namespace vexagpx
