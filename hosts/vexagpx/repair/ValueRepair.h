// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/repair/StartTag.h>

#include <unicode/timezone.h>

#include <string>
#include <string_view>

namespace vexagpx {

/// True for the start tag of a point that has a latitude and a longitude of the earth.
bool HasPlace(const StartTag& tag);

/// True for a time of day without a zone: "2024-05-01T08:00:00".
bool LacksZone(std::string_view time);

/// What such a time needs behind it in a zone, at that time of the year: "+02:00", or "Z".
std::string ZoneText(std::string_view time, const icu::TimeZone& zone);

} // namespace vexagpx
