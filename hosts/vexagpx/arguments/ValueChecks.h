// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/CLI.hpp>

#include <stdexcept>
#include <string>

namespace vexagpx {

// Each says what is wrong with the value of an option, such as "must not be empty"; nothing when it is right.

std::string RequireText(const std::string& text);
/// A unit may follow the number of bytes.
std::string RequireSize(const std::string& text);
std::string RequireLength(const std::string& text);
std::string RequireLengthAboveZero(const std::string& text);
/// As ParseTime reads it.
std::string RequireTime(const std::string& text);
std::string RequirePause(const std::string& text);
std::string RequireNumber(const std::string& text);
/// Of two or more.
std::string RequireTwo(const std::string& text);
/// The name of a time zone.
std::string RequireZone(const std::string& text);
std::string RequirePlace(const std::string& text);

/// A check that takes the message of an exception for the error.
template <class Parse>
CLI::Validator Parsed(Parse parse) {
    return CLI::Validator(
        [parse](const std::string& text) {
            try {
                parse(text);
                return std::string();
            } catch (const std::invalid_argument& error) {
                return std::string(error.what());
            }
        },
        "");
}

} // namespace vexagpx
