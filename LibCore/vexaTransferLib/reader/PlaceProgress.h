// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/Progress.h>

#include <algorithm>
#include <cstdint>

namespace vexaTransferLib::reader {

/// Reports the progress of a reading that looks at the bytes of a file itself, in steps as long as those that the XML
/// parser takes.
class PlaceProgress {
public:
    /// \param progress may be null
    explicit PlaceProgress(Progress* progress) : progress_(progress) {}

    /// \param size how much of the file is known to be there
    void Begin(std::uint64_t size) {
        if (progress_ == nullptr)
            return;
        progress_->Begin();
        Add(size);
    }
    /// \param size at least the place
    /// \throws ReadAborted
    void Reach(std::uint64_t place, std::uint64_t size) {
        while (progress_ != nullptr && place > reported_) {
            progress_->ThrowIfStopped();
            Add(size);
        }
    }

private:
    static constexpr std::uint64_t kStep = std::uint64_t{48} * 1024;

    void Add(std::uint64_t size) {
        const std::uint64_t next = std::min(reported_ + kStep, size);
        progress_->Add(next - reported_);
        reported_ = next;
    }

    Progress* progress_;
    std::uint64_t reported_ = 0;
};

} // namespace vexaTransferLib::reader
