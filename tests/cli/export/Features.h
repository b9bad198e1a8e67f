// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/export/Properties.h>
#include <vexagpx/output/ValueText.h>

#include <string>
#include <type_traits>
#include <variant>

namespace cli {

inline std::string Utf8(const icu::UnicodeString& text) {
    std::string utf8;
    return text.toUTF8String(utf8);
}

/// "name=a sat=3", with a bar for each line end.
inline std::string TextOf(const vexagpx::Properties& properties) {
    std::string text;
    for (const vexagpx::Property& property : properties) {
        text += (text.empty() ? "" : " ") + std::string(NameOf(property.field)) + "=";
        std::visit(
            [&text](const auto& value) {
                using Type = std::decay_t<decltype(value)>;
                if constexpr (std::is_same_v<Type, vexagpx::Links>)
                    text += Utf8(vexagpx::TextOf(value));
                else if constexpr (std::is_same_v<Type, icu::UnicodeString>)
                    text += Utf8(value);
                else if constexpr (std::is_same_v<Type, bool>)
                    text += value ? "true" : "false";
                else if constexpr (std::is_same_v<Type, double>)
                    text += vexagpx::NumberDigits(value).Text();
                else
                    text += std::to_string(value);
            },
            property.value);
    }
    for (char& letter : text)
        letter = letter == '\n' ? '|' : letter;
    return text;
}

} // namespace cli
