// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/JsonWriter.h>
#include <vexagpx/output/ValueText.h>

#include <unicode/unistr.h>

#include <optional>
#include <string_view>

namespace vexagpx {

/// \{
/// Writes a member of the current object unless there is nothing to write. An empty text is nothing.
inline void MemberIfAny(JsonWriter& json, std::string_view key, const icu::UnicodeString& text) {
    if (!text.isEmpty())
        json.Member(key, text);
}

inline void MemberIfAny(JsonWriter& json, std::string_view key,
                        const std::optional<icu::UnicodeString>& text) {
    if (text)
        MemberIfAny(json, key, *text);
}

template <class Value>
void MemberIfAny(JsonWriter& json, std::string_view key, const std::optional<Value>& value) {
    if (value)
        json.Member(key, *value);
}
/// \}

/// \{
/// Writes a member with a time, in the form of TimeDigits, which is that of all JSON. A time that this form has no
/// place for has no member.
inline void TimeMember(JsonWriter& json, std::string_view key, double millis) {
    if (const TimeDigits time(millis); !time.Text().empty())
        json.Member(key, time.Text());
}

inline void TimeMember(JsonWriter& json, std::string_view key, const std::optional<double>& millis) {
    if (millis)
        TimeMember(json, key, *millis);
}
/// \}

/// Writes a member with an array of what `write` writes for each value. No values give no member.
template <class Values, class Write>
void ArrayIfAny(JsonWriter& json, std::string_view key, const Values& values, Write write) {
    if (values.empty())
        return;
    json.Key(key);
    json.BeginArray();
    for (const auto& value : values)
        write(value);
    json.EndArray();
}

} // namespace vexagpx
