// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/CleanText.h>
#include <vexaTransferLib/GpxDocument.h>

#include <unicode/unistr.h>

namespace vexaTransferLib::testing_support {

/// The document that results when a document is written as GPX 1.1 and read again. It is computed from the
/// rules of writer and reader, without writing or reading anything:
///
/// - numbers keep 9 or 6 decimals, times lose their fraction of a second; times outside the years
///   1970 to 9999 are dropped;
/// - line ends and, in attributes, white space become what XML makes of them;
/// - a point's comment becomes its description;
/// - geocache texts are cleaned once more, empty ones are dropped, a log id ends at its first thousands
/// separator;
/// - only waypoints keep vendor data, only route points their type; statistics are not read.
class ReadBack {
public:
    /// `fileName` is the name that a document without one gets. Throws std::runtime_error for a text that is
    /// written unescaped and would make the file ill-formed.
    GpxDocument Of(const GpxDocument& written, const icu::UnicodeString& fileName);

private:
    GpxPoint PointOf(const GpxPoint& written);
    void AddWaypointData(const GpxPoint& written, GpxPoint& read);
    bool GeocacheOf(const GpxGroundspeakCache& written, GpxGroundspeakCache& read);
    icu::UnicodeString Cleaned(const icu::UnicodeString& text);

    CleanText cleaner_;
};

} // namespace vexaTransferLib::testing_support
