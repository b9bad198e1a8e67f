// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <functional>
#include <string_view>

namespace vexaTrackLib::cutting {

/// Calls `visit(latitude, longitude)` for each place that a text may name, until it returns true: two decimals with
/// three digits or more after the point, in either order; or degrees with minutes and seconds or without, each with a
/// letter for its half of the earth before or after it. Linear in the text.
/// \param text in UTF-8
/// \returns whether a call returned true
bool FindPlace(std::string_view text, const std::function<bool(double latitude, double longitude)>& visit);

} // namespace vexaTrackLib::cutting
