// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxPoint.h>
#include <vexaTransferLib/reader/ModelLimiter.h>
#include <vexaTransferLib/reader/Progress.h>
#include <vexaTransferLib/reader/SkipReporter.h>
#include <vexaTransferLib/text/UsNumberFormat.h>

#include <unicode/unistr.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <stdexcept>
#include <vector>

namespace vexaTransferLib::reader {

/// What the node readers share during one public operation of the parser.
class ReadContext {
public:
    /// \param observer receives the reports of skipped elements; may be null
    explicit ReadContext(GpxReadObserver* observer = nullptr) : reporter(observer) {}
    virtual ~ReadContext() = default;

    /// Cleans a geocache text in place; never throws.
    virtual void CleanText(icu::UnicodeString& text) = 0;

    /// Called for each child that is read, and with a greater amount for longer work. An element may have
    /// millions of children; through these calls the observer of a file can cancel while they are read.
    /// \throws ReadAborted
    void Work(std::uint64_t amount = 1) const {
        if (progress != nullptr)
            progress->Work(amount);
    }

    /// Counts an object of the model that is not a point. Called before memory is allocated for the object.
    /// \throws ReadAborted when an untrusted file has too many
    void CountObject() const {
        if (limiter != nullptr)
            limiter->AddObject();
    }

    /// Makes room for points that are expected. When there is not so much memory, they may still have it one by one.
    void MakeRoom(std::vector<GpxPoint>& points, std::uint64_t count) const {
        if (limiter != nullptr)
            count = std::min(count, limiter->PointsLeft());
        try {
            points.reserve(static_cast<std::size_t>(count));
        } catch (const std::bad_alloc&) {
        } catch (const std::length_error&) {
        }
    }

    SkipReporter reporter;
    /// How many children the element that is entered may have for the model; 0 when that is not known.
    std::uint64_t expectedChildren = 0;
    /// The progress of a file whose reading is observed; null otherwise.
    Progress* progress = nullptr;
    /// The limits of an untrusted file; null for a trusted one.
    std::unique_ptr<ModelLimiter> limiter;
    /// Made on first use: most files have no number in a vendor's element.
    text::UsNumberFormat numberFormat;
};

} // namespace vexaTransferLib::reader
