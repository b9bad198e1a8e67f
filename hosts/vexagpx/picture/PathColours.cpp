// SPDX-License-Identifier: MIT
#include <vexagpx/picture/PathColours.h>

#include <vexagpx/picture/Palette.h>

#include <algorithm>
#include <cmath>

namespace vexagpx {

namespace {

constexpr std::uint8_t kUnknownStep = 255;
constexpr double kHalfWindow = 5000.0; // milliseconds

/// The indexes of the points whose times are known and rise.
std::vector<std::size_t> TimedPoints(const PathSegment& segment) {
    std::vector<std::size_t> timed;
    for (std::size_t i = 0; i < segment.size(); ++i)
        if (!std::isnan(segment[i].time) && (timed.empty() || segment[i].time > segment[timed.back()].time))
            timed.push_back(i);
    return timed;
}

} // namespace

std::vector<double> SpeedsOf(const PathSegment& segment) {
    std::vector<double> speeds(segment.size(), kNoValue);
    const std::vector<std::size_t> timed = TimedPoints(segment);
    const auto timeOf = [&](std::size_t k) { return segment[timed[k]].time; };
    std::size_t first = 0;
    std::size_t last = 0;
    for (std::size_t k = 0; timed.size() > 1 && k < timed.size(); ++k) {
        while (timeOf(k) - timeOf(first) > kHalfWindow)
            ++first;
        last = std::max(last, k);
        while (last + 1 < timed.size() && timeOf(last + 1) - timeOf(k) <= kHalfWindow)
            ++last;
        const std::size_t from = first < k ? first : k - (k > 0 ? 1 : 0);
        const std::size_t to = last > k ? last : k + (k + 1 < timed.size() ? 1 : 0);
        const double metres = segment[timed[to]].distance - segment[timed[from]].distance;
        speeds[timed[k]] = metres / ((timeOf(to) - timeOf(from)) / 1000.0);
    }
    return speeds;
}

PathColours::PathColours(const PathData& data, ColourBy by) : data_(data), by_(by) {
    std::vector<double> known;
    for (std::size_t path = 0; by != ColourBy::kNone && path < data.paths.size(); ++path)
        for (std::size_t segment = 0; segment < data.paths[path].segments.size(); ++segment)
            for (const double value : ValuesOf(path, segment))
                if (!std::isnan(value))
                    known.push_back(value);
    if (known.empty())
        return;
    // Speeds have outliers, which would leave one colour for all others.
    const std::size_t beyond = by == ColourBy::kSpeed ? known.size() / 50 : 0;
    const auto low = known.begin() + static_cast<std::ptrdiff_t>(beyond);
    const auto high = known.end() - 1 - static_cast<std::ptrdiff_t>(beyond);
    std::nth_element(known.begin(), low, known.end());
    low_ = *low;
    std::nth_element(known.begin(), high, known.end());
    high_ = *high;
}

std::vector<double> PathColours::ValuesOf(std::size_t path, std::size_t segment) const {
    const PathSegment& points = data_.paths[path].segments[segment];
    if (by_ == ColourBy::kSpeed)
        return SpeedsOf(points);
    std::vector<double> heights;
    heights.reserve(points.size());
    for (const PathPoint& point : points)
        heights.push_back(point.height);
    return heights;
}

std::uint8_t PathColours::StepOf(double value) const {
    if (std::isnan(value))
        return kUnknownStep;
    const double part = high_ > low_ ? std::clamp((value - low_) / (high_ - low_), 0.0, 1.0) : 0.5;
    return static_cast<std::uint8_t>(std::min(part * kRampSteps, kRampSteps - 1.0));
}

std::vector<std::uint8_t> PathColours::StepsOf(std::size_t path, std::size_t segment) const {
    if (!HasScale())
        return std::vector<std::uint8_t>(data_.paths[path].segments[segment].size(), 0);
    std::vector<std::uint8_t> steps;
    for (const double value : ValuesOf(path, segment))
        steps.push_back(StepOf(value));
    return steps;
}

Colour PathColours::ColourOf(std::size_t path, std::uint8_t step) const {
    if (!HasScale())
        return PathColour(path);
    return step == kUnknownStep ? kUnknownColour : RampColour(step);
}

} // namespace vexagpx
