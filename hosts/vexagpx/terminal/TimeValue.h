// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

namespace vexagpx {

/// The part of a day or a minute that a time means, which a person may write without seconds or without a time of the
/// day.
enum class TimePart {
    kStart, ///< its first millisecond
    kEnd    ///< its last one
};

/// A time that a person wrote, in milliseconds since 1970-01-01T00:00:00 UTC: "2024-05-01", "2024-05-01T08:30", with
/// seconds and a fraction of them, with "Z" or a zone such as "+02:00"; without a zone in UTC. Nothing for another
/// text.
std::optional<double> ParseTime(std::string_view text, TimePart part = TimePart::kStart);

} // namespace vexagpx
