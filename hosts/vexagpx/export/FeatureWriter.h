// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/export/Layer.h>
#include <vexagpx/export/LeftOut.h>
#include <vexagpx/export/PathGeometry.h>
#include <vexagpx/export/Position.h>
#include <vexagpx/export/Properties.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <optional>

namespace vexagpx {

/// What is written of a whole export.
struct ExportHead {
    icu::UnicodeString name;        ///< may be empty
    icu::UnicodeString description; ///< may be empty
    std::optional<double> time;     ///< milliseconds since 1970-01-01T00:00:00 UTC
};

/// The number of values in it.
inline std::uint64_t CountValues(const ExportHead& head) {
    return (head.name.isEmpty() ? 0U : 1U) + (head.description.isEmpty() ? 0U : 1U) + (head.time ? 1U : 0U);
}

/// A format. It gets the features of one layer after the other, in the order of the documents, and writes each at once.
class FeatureWriter {
public:
    FeatureWriter() = default;
    FeatureWriter(const FeatureWriter&) = delete;
    FeatureWriter& operator=(const FeatureWriter&) = delete;
    virtual ~FeatureWriter() = default;

    virtual void Start(const ExportHead& head) = 0;
    virtual void StartLayer(Layer layer) = 0;
    /// A waypoint, or a point of a route or a track.
    virtual void WritePoint(const Position& position, const Properties& properties) = 0;
    /// A route or a track.
    virtual void WritePath(const PathGeometry& geometry, const Properties& properties) = 0;
    virtual void EndLayer() = 0;
    virtual void End() = 0;

    /// What the format had no place for so far.
    const LeftOut& Missing() const { return missing_; }

protected:
    LeftOut missing_;
};

} // namespace vexagpx
