// SPDX-License-Identifier: MIT
#include <vexaTrackLib/statistics/FastestMeter.h>

namespace vexaTrackLib::statistics {

namespace {

constexpr double kSeconds = 10.0;
constexpr std::size_t kSteps = 3;

} // namespace

void FastestMeter::Add(const Step& step) {
    if (count_ == kRoom)
        DropOldest();
    pieces_[(oldest_ + count_) % kRoom] = {step.metres, step.seconds};
    ++count_;
    metres_ += step.metres;
    seconds_ += step.seconds;
    while (count_ > kSteps && seconds_ - pieces_[oldest_].seconds >= kSeconds)
        DropOldest();
    if (count_ < kSteps || seconds_ < kSeconds)
        return;
    if (!fastest_ || metres_ > *fastest_ * seconds_)
        fastest_ = metres_ / seconds_;
}

void FastestMeter::DropOldest() {
    metres_ -= pieces_[oldest_].metres;
    seconds_ -= pieces_[oldest_].seconds;
    oldest_ = (oldest_ + 1) % kRoom;
    --count_;
}

void FastestMeter::Break() {
    count_ = 0;
    metres_ = 0.0;
    seconds_ = 0.0;
}

} // namespace vexaTrackLib::statistics
