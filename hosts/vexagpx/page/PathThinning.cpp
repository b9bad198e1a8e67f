// SPDX-License-Identifier: MIT
#include <vexagpx/page/PathThinning.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace vexagpx {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kPi = 3.14159265358979323846;

// The page takes a longer piece for one that leaves a map of the world and enters it at the other edge.
constexpr double kLongestPiece = 8e6;

/// The slopes of the lines from one point of a curve that pass all later ones within a tolerance. The curve has one
/// value for each argument.
class SlopeSleeve {
public:
    SlopeSleeve(double tolerance, bool keepsGaps) : tolerance_(tolerance), keepsGaps_(keepsGaps) {}

    void Start(double argument, double value) {
        argument_ = argument;
        value_ = value;
        low_ = -kInfinity;
        high_ = kInfinity;
    }

    /// Whether the line to a point passes those before; if so, later lines must pass this one, too.
    bool Take(double argument, double value) {
        const bool isMissing = std::isnan(value) || std::isnan(argument);
        if (isMissing != (std::isnan(value_) || std::isnan(argument_)))
            return !keepsGaps_;
        if (isMissing)
            return true;
        const double run = argument - argument_;
        const double rise = value - value_;
        if (run < 0.0)
            return !keepsGaps_;
        if (run == 0.0)
            return low_ == -kInfinity && std::abs(rise) <= tolerance_;
        const bool fits = rise >= low_ * run && rise <= high_ * run;
        low_ = std::max(low_, (rise - tolerance_) / run);
        high_ = std::min(high_, (rise + tolerance_) / run);
        return fits;
    }

private:
    double tolerance_;
    bool keepsGaps_;
    double argument_ = 0.0;
    double value_ = 0.0;
    double low_ = 0.0;
    double high_ = 0.0;
};

/// The same for directions on the map. A path that turns back leaves the sleeve, too.
class DirectionSleeve {
public:
    explicit DirectionSleeve(double tolerance) : tolerance_(tolerance) {}

    void Start(double x, double y) {
        x_ = x;
        y_ = y;
        farthest_ = 0.0;
        isOpen_ = true;
    }

    bool Take(double x, double y) {
        const double dx = x - x_;
        const double dy = y - y_;
        const double distance = std::sqrt(dx * dx + dy * dy);
        if (distance < farthest_ - tolerance_ || distance > kLongestPiece)
            return false;
        farthest_ = std::max(farthest_, distance);
        if (distance <= tolerance_)
            return true;
        const double direction = std::atan2(dy, dx);
        const double half = std::asin(std::min(tolerance_ / distance, 1.0));
        if (isOpen_) {
            middle_ = direction;
            low_ = -half;
            high_ = half;
            isOpen_ = false;
            return true;
        }
        const double turn = std::remainder(direction - middle_, 2.0 * kPi);
        const bool fits = turn >= low_ && turn <= high_;
        low_ = std::max(low_, turn - half);
        high_ = std::min(high_, turn + half);
        return fits;
    }

private:
    double tolerance_;
    double x_ = 0.0;
    double y_ = 0.0;
    double farthest_ = 0.0;
    double middle_ = 0.0;
    double low_ = 0.0;
    double high_ = 0.0;
    bool isOpen_ = true;
};

/// All that a line from one point of a path must pass.
class PathSleeve {
public:
    explicit PathSleeve(const ThinningTolerance& tolerance)
        : map_(tolerance.map), height_(tolerance.height, tolerance.keepsGaps),
          time_(tolerance.distance, tolerance.keepsGaps) {}

    void Start(const PagePoint& point) {
        map_.Start(point.x, point.y);
        height_.Start(point.distance, point.height);
        time_.Start(point.time, point.distance);
    }

    bool Take(const PagePoint& point) {
        return map_.Take(point.x, point.y) && height_.Take(point.distance, point.height) &&
               time_.Take(point.time, point.distance);
    }

private:
    DirectionSleeve map_;
    SlopeSleeve height_;
    SlopeSleeve time_;
};

std::size_t CountPoints(const PageDocument& document) {
    std::size_t points = 0;
    for (const PagePath& path : document.paths)
        for (const PageSegment& segment : path.segments)
            points += segment.size();
    return points;
}

class Range {
public:
    /// \param value ignored when it is missing
    void Add(double value) {
        low_ = std::fmin(low_, value);
        high_ = std::fmax(high_, value);
    }
    double Size() const { return high_ >= low_ ? high_ - low_ : 0.0; }

private:
    double low_ = kInfinity;
    double high_ = -kInfinity;
};

/// What a screen of some thousand pixels cannot show of a path that fills it.
ThinningTolerance FirstTolerance(const PagePath& path) {
    Range x;
    Range y;
    Range heights;
    Range distances;
    for (const PageSegment& segment : path.segments) {
        for (const PagePoint& point : segment) {
            x.Add(point.x);
            y.Add(point.y);
            heights.Add(point.height);
            distances.Add(point.distance);
        }
    }
    return {std::max(x.Size(), y.Size()) / 4000.0, heights.Size() / 500.0, distances.Size() / 4000.0, true};
}

} // namespace

void ThinSegment(PageSegment& segment, const ThinningTolerance& tolerance) {
    if (segment.size() < 3)
        return;
    PathSleeve sleeve(tolerance);
    std::size_t kept = 0;
    std::size_t last = 0;
    const auto keep = [&](std::size_t i) {
        sleeve.Start(segment[i]);
        segment[kept++] = segment[i];
        last = i;
    };
    keep(0);
    for (std::size_t i = 1; i < segment.size(); ++i) {
        if (sleeve.Take(segment[i]))
            continue;
        // The line ends at the point before, unless it started there.
        if (last + 1 < i) {
            keep(i - 1);
            if (sleeve.Take(segment[i]))
                continue;
        }
        keep(i);
    }
    if (last + 1 < segment.size())
        keep(segment.size() - 1);
    segment.resize(kept);
}

void ThinPaths(PageDocument& document, std::size_t limit) {
    constexpr int kPasses = 24;
    constexpr int kPassesWithGaps = 10;
    std::vector<ThinningTolerance> tolerances;
    tolerances.reserve(document.paths.size());
    for (const PagePath& path : document.paths)
        tolerances.push_back(FirstTolerance(path));
    for (int pass = 0; pass == 0 || (pass < kPasses && CountPoints(document) > limit); ++pass) {
        for (std::size_t i = 0; i < document.paths.size(); ++i) {
            ThinningTolerance& tolerance = tolerances[i];
            tolerance.keepsGaps = pass < kPassesWithGaps;
            for (PageSegment& segment : document.paths[i].segments)
                ThinSegment(segment, tolerance);
            tolerance.Double();
        }
    }
}

void ThinDocuments(std::vector<PageDocument>& documents, std::size_t limit) {
    std::size_t points = 0;
    for (const PageDocument& document : documents)
        points += CountPoints(document);
    if (points <= limit)
        return;
    const double share = static_cast<double>(limit) / static_cast<double>(points);
    for (PageDocument& document : documents)
        ThinPaths(document, static_cast<std::size_t>(share * static_cast<double>(CountPoints(document))));
}

} // namespace vexagpx
