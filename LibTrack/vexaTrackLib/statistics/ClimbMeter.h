// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

namespace vexaTrackLib::statistics {

/// Ascent and descent of successive heights, in metres: of all differences, and between valleys and peaks only.
class ClimbMeter {
public:
    /// \param climb the smallest difference between a valley and a peak
    explicit ClimbMeter(double climb) : climb_(climb) {}

    void Add(double height);
    /// Ends a segment: the next height is not compared with the last.
    void Break();

    /// \{
    /// Of the segments that have ended.
    double Ascent() const { return ascent_; }
    double Descent() const { return descent_; }
    /// \}
    /// \{
    double RawAscent() const { return rawAscent_; }
    double RawDescent() const { return rawDescent_; }
    /// \}

private:
    enum class Direction { kNone, kFlat, kUp, kDown };

    void Turn(Direction direction, double height);

    double climb_;
    Direction direction_ =
        Direction::kNone; ///< kNone before the first height, kFlat until one is far from another
    double last_ = 0.0;
    double low_ = 0.0;  ///< the lowest height since the last peak
    double high_ = 0.0; ///< the highest height since the last valley
    double ascent_ = 0.0;
    double descent_ = 0.0;
    double rawAscent_ = 0.0;
    double rawDescent_ = 0.0;
};

} // namespace vexaTrackLib::statistics
