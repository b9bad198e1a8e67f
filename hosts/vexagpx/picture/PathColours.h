// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/picture/Drawing.h>
#include <vexagpx/picture/PathData.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vexagpx {

/// What the colours of the paths mean.
enum class ColourBy { kNone, kHeight, kSpeed };

/// The speed at each point in metres a second, over some ten seconds around it; kNoValue where it is not known.
std::vector<double> SpeedsOf(const PathSegment& segment);

/// Chooses the colours of paths: one for each path, or those of a scale for heights or speeds.
class PathColours {
public:
    /// \param data must outlive this
    PathColours(const PathData& data, ColourBy by);

    /// Whether there is a scale: not for ColourBy::kNone, nor if no value is known.
    bool HasScale() const { return low_ <= high_; }
    ColourBy By() const { return by_; }
    double Low() const { return low_; }
    double High() const { return high_; }

    /// A number for each point of a segment: points of the same number have the same colour.
    std::vector<std::uint8_t> StepsOf(std::size_t path, std::size_t segment) const;
    Colour ColourOf(std::size_t path, std::uint8_t step) const;

private:
    std::vector<double> ValuesOf(std::size_t path, std::size_t segment) const;
    std::uint8_t StepOf(double value) const;

    const PathData& data_;
    ColourBy by_;
    double low_ = 1.0;
    double high_ = 0.0;
};

} // namespace vexagpx
