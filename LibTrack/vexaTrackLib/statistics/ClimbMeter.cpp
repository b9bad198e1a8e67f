// SPDX-License-Identifier: MIT
#include <vexaTrackLib/statistics/ClimbMeter.h>

#include <algorithm>

namespace vexaTrackLib::statistics {

void ClimbMeter::Add(double height) {
    if (direction_ == Direction::kNone) {
        direction_ = Direction::kFlat;
        last_ = low_ = high_ = height;
        return;
    }
    if (height > last_)
        rawAscent_ += height - last_;
    else
        rawDescent_ += last_ - height;
    last_ = height;

    const bool isUp = height > low_ && height - low_ >= climb_;
    const bool isDown = height < high_ && high_ - height >= climb_;
    switch (direction_) {
    case Direction::kUp:
        if (isDown)
            Turn(Direction::kDown, height);
        else
            high_ = std::max(high_, height);
        break;
    case Direction::kDown:
        if (isUp)
            Turn(Direction::kUp, height);
        else
            low_ = std::min(low_, height);
        break;
    default:
        low_ = std::min(low_, height);
        high_ = std::max(high_, height);
        if (isUp)
            direction_ = Direction::kUp;
        else if (isDown)
            direction_ = Direction::kDown;
    }
}

// The height is far enough from the last extreme for it to be a valley or a peak.
void ClimbMeter::Turn(Direction direction, double height) {
    if (direction == Direction::kDown) {
        ascent_ += high_ - low_;
        low_ = height;
    } else {
        descent_ += high_ - low_;
        high_ = height;
    }
    direction_ = direction;
}

void ClimbMeter::Break() {
    if (direction_ == Direction::kUp)
        ascent_ += high_ - low_;
    else if (direction_ == Direction::kDown)
        descent_ += high_ - low_;
    direction_ = Direction::kNone;
}

} // namespace vexaTrackLib::statistics
