// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Corrections of all points of a document.

#include <common/Export.h>
#include <vexaTransferLib/GpxPointDetails.h>

#include <cstddef>
#include <vector>

namespace vexaTransferLib {
class GpxDocument;
} // namespace vexaTransferLib

namespace vexaTrackLib {

// Time and memory are linear in the document. They throw std::bad_alloc, and then some points may be changed already.

/// Adds to the times of all points: of waypoints, routes and tracks. The time of the document, and what is in
/// geocaches, stay.
/// \param milliseconds any number
/// \returns how many points have a time
/// \throws dbc::precondition_error "The shift must be a number of milliseconds."
VEXATRANSFERLIB_API std::size_t ShiftTimes(vexaTransferLib::GpxDocument& document, double milliseconds);

/// Removes what sensors measured from all points, and elements of other formats that are empty then. The document must
/// have been read completely; GpxSaver writes it without these elements.
///
///     const std::size_t count = StripSensors(document, {GpxSensor::kHeartRate});
///
/// \returns how many elements of sensors were removed
VEXATRANSFERLIB_API std::size_t StripSensors(vexaTransferLib::GpxDocument& document,
                                             const std::vector<vexaTransferLib::GpxSensor>& sensors);

/// Makes the bounds of the metadata those of all points. They are removed when there are no points, or when they had no
/// numbers; a document without bounds gets none. The document must have been read completely; GpxSaver writes them.
VEXATRANSFERLIB_API void CorrectBounds(vexaTransferLib::GpxDocument& document);

} // namespace vexaTrackLib
