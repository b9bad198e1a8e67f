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

/// How far a file has been read, told to an observer at some 200 places of the file, and now and again while what has
/// been read is worked on.
class Progress {
public:
    /// \param bytesInAll 0 when it is not known
    /// \param name of the file, for the error of a cancelled reading
    Progress(GpxReadObserver& observer, std::uint64_t bytesInAll, InputName name)
        : observer_(observer), bytesInAll_(bytesInAll), name_(std::move(name)) {}

    // None of these three throws. What the observer throws, and that it cancels, is kept for ThrowIfStopped; it is not
    // called again.

    /// Nothing is read yet, or not any more.
    void Begin();
    void Add(std::uint64_t bytes);
    /// Everything is read, if it could be opened at all.
    void End();

    /// \throws ReadAborted
    void ThrowIfStopped() const;

    /// Some work on what has been read, so much as goes with about so many bytes: 1 for an element. Tells the
    /// observer about once for each hundredth of the file's length.
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

/// A source of bytes whose reading is told to a Progress. Both stay the caller's.
class ProgressInputSource final : public xercesc::InputSource {
public:
    ProgressInputSource(const xercesc::InputSource& source, Progress& progress);

    xercesc::BinInputStream* makeStream() const override;

private:
    const xercesc::InputSource& source_;
    Progress& progress_;
};

} // namespace vexaTransferLib::reader
