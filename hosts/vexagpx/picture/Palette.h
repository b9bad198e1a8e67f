// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/picture/Drawing.h>

#include <cstddef>

namespace vexagpx {

inline constexpr Colour kBlack = {0.13, 0.13, 0.15};
inline constexpr Colour kGrey = {0.42, 0.43, 0.46};
inline constexpr Colour kLightGrey = {0.80, 0.82, 0.85};
inline constexpr Colour kPaper = {1.0, 1.0, 1.0};
inline constexpr Colour kMapGround = {0.975, 0.975, 0.965};
inline constexpr Colour kProfileGround = {0.93, 0.94, 0.95};
inline constexpr Colour kStartColour = {0.10, 0.55, 0.20};
inline constexpr Colour kEndColour = {0.75, 0.10, 0.10};
inline constexpr Colour kWaypointColour = {0.10, 0.30, 0.70};
inline constexpr Colour kCacheColour = {0.10, 0.50, 0.25};
/// Of the part of a path whose height or speed is not known.
inline constexpr Colour kUnknownColour = {0.62, 0.62, 0.64};

/// How many colours a scale has.
inline constexpr int kRampSteps = 24;

/// A colour from blue over green and orange to red, all dark enough for white paper; people who do not tell red from
/// green see it grow lighter and darker again.
/// \param step 0 to kRampSteps - 1
Colour RampColour(int step);

/// Colours that differ for up to eight paths, and then repeat.
Colour PathColour(std::size_t index);

/// A colour nearer to white.
/// \param part how much of the colour is left, 0 to 1
Colour Lighter(const Colour& colour, double part);

} // namespace vexagpx
