// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxPoint.h>

#include <unicode/unistr.h>

#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace vexagpx {

// What only a document that was read completely has, as text for a person. Of any other there is nothing.

/// Lines of the head: author, description, keywords and links.
std::vector<icu::UnicodeString> HeadLines(const vexaTransferLib::GpxDocument& document);

/// "number 3, type running, comment: ..."; empty when the route or track has none of them.
icu::UnicodeString PathNote(const vexaTransferLib::GpxElement& path);

/// "not available, Germany, Hesse"; empty when the geocache of a waypoint has nothing of that.
icu::UnicodeString GeocacheNote(const vexaTransferLib::GpxElement& waypoint);

/// What sensors measured along a path.
class SensorStatistics {
public:
    struct Range {
        double lowest = std::numeric_limits<double>::infinity();
        double highest = -std::numeric_limits<double>::infinity();
        double sum = 0.0;
        std::uint64_t count = 0;

        void Add(const std::optional<double>& value);
        double Mean() const { return sum / static_cast<double>(count); }
    };
    /// Heart rate, cadence, power and temperature. One without values has the count 0.
    using Ranges = std::array<Range, 4>;

    void Add(const vexaTransferLib::GpxPoint& point);
    /// "heart rate 90 to 150 (mean 120) bpm, power 200 W": lines of two sensors each, without those that have no
    /// values.
    std::vector<icu::UnicodeString> Notes() const;
    const Ranges& All() const { return ranges_; }

private:
    Ranges ranges_;
};

} // namespace vexagpx
