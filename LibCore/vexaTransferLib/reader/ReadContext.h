// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/InputGuard.h>
#include <vexaTransferLib/reader/Progress.h>
#include <vexaTransferLib/reader/Receipt.h>
#include <vexaTransferLib/text/UsNumberFormat.h>

#include <unicode/unistr.h>

#include <cstdint>

namespace vexaTransferLib::reader {

/// What the node readers share during one public operation of the parser.
class ReadContext {
public:
    /// \param observer told what is passed over; null for silence
    explicit ReadContext(GpxReadObserver* observer = nullptr) : receipt(observer) {}
    virtual ~ReadContext() = default;

    /// Cleans a geocache text in place; never throws.
    virtual void CleanText(icu::UnicodeString& text) = 0;

    /// Called for each child that is read, and with more for what takes longer: an element may have millions of
    /// children, and the observer of a file is asked now and again whether to go on.
    /// \throws ReadingStop
    void Work(std::uint64_t amount = 1) const {
        if (progress != nullptr)
            progress->Work(amount);
    }

    /// Something of the model that is no point is read: told before memory is taken for it.
    /// \throws ReadingStop when a stranger's file has too many
    void CountObject() const {
        if (guard != nullptr)
            guard->AddObject();
    }

    Receipt receipt;
    /// Of a file that is watched; null otherwise.
    Progress* progress = nullptr;
    /// Of a file from a stranger; null when the file is trusted.
    InputGuard* guard = nullptr;
    /// Made on first use: most files hold no vendor number.
    text::UsNumberFormat numberFormat;
};

} // namespace vexaTransferLib::reader
