// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// Writes the bytes that GpxDocument::WriteToFile writes of a document with one track, with the least work: no checks,
/// no escaping, and no rounding but that of the processor. How long that takes is a limit for WriteToFile. Every
/// point must have elevation and time, coordinates and elevation must not be negative, and times must not be before
/// 1970.
class LimitWriter {
public:
    /// Takes the points out of the document.
    LimitWriter(const vexaTransferLib::GpxDocument& document, const std::string& applicationName,
                const std::string& applicationUrl);

    void WriteToFile(const std::string& path) const;

private:
    struct Point {
        double latitude;
        double longitude;
        double elevation;
        std::int64_t second; ///< since 1970
    };
    typedef std::vector<Point> Segment;

    static Point PointOf(const vexaTransferLib::GpxPoint& point);
    void AddTrack(const vexaTransferLib::GpxTrack& track);

    std::string head_; ///< everything before the first segment
    std::vector<Segment> segments_;
};

} // namespace bench
