// SPDX-License-Identifier: MIT
#include <vexagpx/picture/ColouredLine.h>

#include <vexaTrackLib/Simplify.h>

#include <cmath>
#include <cstddef>
#include <utility>

namespace vexagpx {

namespace {

// In units of the picture.
constexpr double kError = 0.15;
constexpr double kNear = 0.15;
// A stretch that stays nearer than this to its start has one colour: others would not be seen.
constexpr double kLeastRun = 2.0;

bool IsWithin(double distance, const Spot& one, const Spot& other) {
    const double x = one.x - other.x;
    const double y = one.y - other.y;
    return x * x + y * y < distance * distance;
}

/// Leaves out what is as good as in the place of the one before. Otherwise colours that change from point to point
/// would keep a million points of one place.
std::vector<std::size_t> Apart(const std::vector<Spot>& spots) {
    std::vector<std::size_t> kept = {0};
    for (std::size_t i = 1; i < spots.size(); ++i) {
        const Spot last = spots[kept.back()];
        if (!IsWithin(kNear, spots[i], last) || i + 1 == spots.size())
            kept.push_back(i);
    }
    return kept;
}

std::vector<Spot> Simplified(const std::vector<Spot>& spots) {
    std::vector<vexaTrackLib::MapProjection::Place> places;
    places.reserve(spots.size());
    for (const Spot& spot : spots)
        places.push_back({spot.x, spot.y});
    std::vector<Spot> fewer;
    for (const std::size_t i : vexaTrackLib::Simplify(places, kError))
        fewer.push_back(spots[i]);
    return fewer;
}

} // namespace

std::vector<ColouredRun> SimplifiedRuns(const std::vector<Spot>& spots,
                                        const std::vector<std::uint8_t>& steps) {
    std::vector<ColouredRun> runs;
    if (spots.empty())
        return runs;
    for (const std::size_t i : Apart(spots)) {
        if (runs.empty()) {
            runs.push_back({{spots[i]}, steps[i]});
            continue;
        }
        if (runs.back().spots.size() == 1 && runs.size() == 1)
            runs.back().step = steps[i];
        const Spot start = runs.back().spots.front();
        const Spot end = runs.back().spots.back();
        if (steps[i] != runs.back().step && !IsWithin(kLeastRun, start, end)) {
            const Spot joint = runs.back().spots.back();
            runs.push_back({{joint}, steps[i]});
        }
        runs.back().spots.push_back(spots[i]);
    }
    for (ColouredRun& run : runs)
        run.spots = Simplified(run.spots);
    return runs;
}

} // namespace vexagpx
