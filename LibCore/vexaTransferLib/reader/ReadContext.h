// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/ModelLimiter.h>
#include <vexaTransferLib/reader/Progress.h>
#include <vexaTransferLib/reader/SkipReporter.h>
#include <vexaTransferLib/text/UsNumberFormat.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <memory>

namespace vexaTransferLib::reader {

/// What the node readers share during one public operation of the parser.
class ReadContext {
public:
    /// \param observer told what is skipped; null for silence
    explicit ReadContext(GpxReadObserver* observer = nullptr) : reporter(observer) {}
    virtual ~ReadContext() = default;

    /// Cleans a geocache text in place; never throws.
    virtual void CleanText(icu::UnicodeString& text) = 0;

    /// Called for each child that is read, and with more for what takes longer: an element may have millions of
    /// children, and the observer of a file is asked now and again whether to go on.
    /// \throws ReadAborted
    void Work(std::uint64_t amount = 1) const {
        if (progress != nullptr)
            progress->Work(amount);
    }

    /// Something of the model that is no point is read: told before memory is taken for it.
    /// \throws ReadAborted when an untrusted file has too many
    void CountObject() const {
        if (limiter != nullptr)
            limiter->AddObject();
    }

    SkipReporter reporter;
    /// Of a file that is watched; null otherwise.
    Progress* progress = nullptr;
    /// Of an untrusted file; null when the file is trusted.
    std::unique_ptr<ModelLimiter> limiter;
    /// Made on first use: most files hold no vendor number.
    text::UsNumberFormat numberFormat;
};

} // namespace vexaTransferLib::reader
