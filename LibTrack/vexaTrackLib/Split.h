// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Splits the tracks of a document into several documents.

#include <common/Export.h>
#include <vexaTransferLib/GpxDocument.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace vexaTrackLib {

/// Where a part ends and the next one starts; at least one of the three.
struct VEXATRANSFERLIB_API SplitRule {
    /// After which no point follows for so long, in milliseconds above 0.
    std::optional<double> pause;
    /// At midnight; all tracks of a day are one part, wherever they are.
    bool byDay = false;
    /// After so many metres of track, above 0. The point where they end is in both parts, so that no piece of the way
    /// is missing.
    std::optional<double> length;
    /// How far the clocks are ahead of UTC at a time, both in milliseconds, for days; empty for UTC.
    std::function<double(double time)> clocks;
};

/// One of the documents.
struct VEXATRANSFERLIB_API SplitPart {
    vexaTransferLib::GpxDocument document; ///< what it has of the tracks, with the metadata of the whole
    std::optional<double>
        start; ///< the time of the first point that has one, in milliseconds since 1970-01-01T00:00:00 UTC
    double day = 0.0;       ///< days since 1970-01-01 by the clocks; only by day, and when there is a start
    std::size_t points = 0; ///< of its tracks
};

/// Splits the tracks, in their order. Points without a time stay with the one before. Texts, links and colours of a
/// track go with each part of it. Waypoints that have a time go to the last part that starts before it, or to the first
/// part; all others, and routes, stay in the first part. Nothing is left out. A document without points in tracks is
/// one part.
///
/// The bounds of the metadata, if there are any, become those of each part, as GpxMetadataEditor sets them: only
/// GpxSaver writes these. Saving one part costs as much as the whole; for many parts, write each with
/// GpxStandardWriter.
///
/// Time and memory are linear in the document and the number of parts.
///
///     SplitRule rule;
///     rule.pause = 4 * 3600000.0;
///     for (const SplitPart& part : Split(std::move(document), rule))
///         Write(part.document);
///
/// \throws dbc::precondition_error "A document is split by a pause, by days or by a length.", "Pauses and lengths must
///         be above 0."; std::bad_alloc; what the rule's function throws
VEXATRANSFERLIB_API std::vector<SplitPart> Split(vexaTransferLib::GpxDocument document,
                                                 const SplitRule& rule);

} // namespace vexaTrackLib
