// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxReadObserver.h>
#include <vexaTransferLib/reader/InputName.h>

#include <xercesc/sax/InputSource.hpp>

#include <cstdint>
#include <exception>
#include <utility>

namespace vexaTransferLib::reader {

/// Reports to an observer how far a file has been read: at about 200 places of the file, and from time to
/// time while the content that has been read is processed.
class Progress {
public:
    /// \param bytesInAll 0 when the size is not known
    /// \param the file's name, for the error when the reading is cancelled
    Progress(GpxReadObserver& observer, std::uint64_t bytesInAll, InputName name)
        : observer_(observer), bytesInAll_(bytesInAll), name_(std::move(name)) {}

    // None of these three throws. If the observer throws or cancels, that is kept for ThrowIfStopped, and the
    // observer is not called again.

    /// Reading starts at the first byte, for the first time or again.
    void Begin();
    void Add(std::uint64_t bytes);
    /// Reading has ended. Does nothing when the file could not be opened.
    void End();

    /// \throws ReadAborted
    void ThrowIfStopped() const;

    /// Counts work on content that has been read. The unit is the work that one byte causes on average;
    /// reading an element counts as 1. Calls the observer about once for each hundredth of the file's length.
    /// \throws ReadAborted
    void Work(std::uint64_t amount) {
        work_ += amount;
        if (work_ >= nextWorkNotice_)
            NotifyWork();
    }

private:
    void Notify() noexcept;
    void NotifyWork();
    std::uint64_t NextWorkNotice() const;

    GpxReadObserver& observer_;
    std::uint64_t bytesInAll_;
    InputName name_;
    bool hasBegun_ = false;
    std::uint64_t bytesRead_ = 0;
    std::uint64_t nextNotice_ = 0;
    std::uint64_t work_ = 0;
    std::uint64_t nextWorkNotice_ = 0;
    std::exception_ptr stop_;
};

/// Passes on another source of bytes and reports to a Progress how much was read. The caller owns both.
class ProgressInputSource final : public xercesc::InputSource {
public:
    ProgressInputSource(const xercesc::InputSource& source, Progress& progress);

    xercesc::BinInputStream* makeStream() const override;

private:
    const xercesc::InputSource& source_;
    Progress& progress_;
};

} // namespace vexaTransferLib::reader
