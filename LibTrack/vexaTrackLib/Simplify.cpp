// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Simplify.h>

#include <vexaTrackLib/paths/Length.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vexaTrackLib {

namespace {

using Place = MapProjection::Place;

/// The directions in which a straight piece from an anchor may go to be near to all places since then.
class Sector {
public:
    Sector(Place anchor, double error) : anchor_(anchor), error_(error) {}

    /// Whether a piece that ends here is near to all places since the anchor. Then this place is one of them from now
    /// on.
    bool Take(Place place) {
        const double x = place.x - anchor_.x;
        const double y = place.y - anchor_.y;
        const double distance = paths::Length(x, y);
        // The piece would end before a place that is farther: that place is near to its line, but not to the piece.
        if (distance < farthest_ - error_ / 2.0)
            return false;
        farthest_ = std::max(farthest_, distance);
        return (!isOpen_ && distance <= error_) || Narrow(x, y, distance);
    }

private:
    bool Narrow(double x, double y, double distance) {
        if (!isOpen_) {
            isOpen_ = true;
            axisX_ = x;
            axisY_ = y;
        }
        // From the direction of the first place, from -pi to pi.
        const double angle = std::atan2(axisX_ * y - axisY_ * x, axisX_ * x + axisY_ * y);
        if (angle < low_ || angle > high_)
            return false;
        // The end of the piece may itself be nearer to the anchor by a half of the error: the other half is left.
        const double half = std::asin(std::min(1.0, error_ * 0.85 / distance));
        low_ = std::max(low_, angle - half);
        high_ = std::min(high_, angle + half);
        return true;
    }

    Place anchor_;
    double error_;
    double farthest_ = 0.0;
    double axisX_ = 1.0;
    double axisY_ = 0.0;
    double low_ = -4.0;
    double high_ = 4.0;
    bool isOpen_ = false;
};

double Reach(const std::vector<Place>& places) {
    double reach = 0.0;
    for (const Place& place : places)
        reach = std::max(reach, paths::Length(place.x - places.front().x, place.y - places.front().y));
    return reach;
}

} // namespace

std::vector<std::size_t> Simplify(const std::vector<Place>& places, double error) {
    std::vector<std::size_t> kept;
    if (places.empty())
        return kept;
    kept.push_back(0);
    Sector sector(places.front(), error);
    for (std::size_t i = 1; i < places.size(); ++i) {
        if (error > 0.0 && sector.Take(places[i]))
            continue;
        if (kept.back() != i - 1)
            kept.push_back(i - 1);
        sector = Sector(places[i - 1], error);
        sector.Take(places[i]);
    }
    if (kept.back() != places.size() - 1)
        kept.push_back(places.size() - 1);
    return kept;
}

std::vector<std::size_t> SimplifyTo(const std::vector<Place>& places, std::size_t most) {
    std::vector<std::size_t> kept = Simplify(places, 0.0);
    if (kept.size() <= std::max<std::size_t>(most, 2))
        return kept;
    // An error twice as long as the way from the first place to any other leaves two places, also of a line that comes
    // back.
    double high = std::max(2.0 * Reach(places), 1e-9);
    double low = high * 1e-12;
    kept = Simplify(places, high);
    while (high > low * 1.01) {
        const double middle = std::sqrt(low * high);
        std::vector<std::size_t> fewer = Simplify(places, middle);
        const bool isEnough = fewer.size() <= most;
        (isEnough ? high : low) = middle;
        if (isEnough)
            kept = std::move(fewer);
    }
    return kept;
}

} // namespace vexaTrackLib
