// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Finds what differs between two documents.

#include <common/Export.h>

#include <unicode/unistr.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vexaTransferLib {
class GpxDocument;
} // namespace vexaTransferLib

namespace vexaTrackLib {

/// What differs of one object, or of the document itself. Plain data.
struct VEXATRANSFERLIB_API Difference {
    /// The kinds of objects.
    enum class Object : std::uint8_t { kDocument, kWaypoint, kRoute, kTrack };

    Object object = Object::kDocument; ///< whose difference it is
    std::size_t oldNumber =
        0; ///< its place in the old document, from 1; 0 for the document, and for what is new
    std::size_t newNumber =
        0; ///< its place in the new document, from 1; 0 for the document, and for what is removed
    icu::UnicodeString name; ///< in the new document, or in the old one if it is removed; may be empty
    std::optional<icu::UnicodeString> oldName; ///< when it is another one
    /// How far a waypoint was moved, or the point of a path that was moved farthest, in metres.
    std::optional<double> moved;
    /// By how much the time was changed, in milliseconds: of the document, of a waypoint, or of the point of a path
    /// whose time changed most.
    std::optional<double> retimed;
    /// The local names of elements that differ beside these, in order: "desc", "ele", "hr", "link". "time" when only
    /// one of both has a time, "order" when points of a path come in another order, and "trkseg" when segments end
    /// elsewhere.
    std::vector<std::string> values;

    /// \{
    /// How many points of a route or a track are new, gone, moved, have another time, or differ otherwise.
    std::size_t addedPoints = 0;
    std::size_t removedPoints = 0;
    std::size_t movedPoints = 0;
    std::size_t retimedPoints = 0;
    std::size_t changedPoints = 0;
    /// \}
    /// \{
    /// How many logs of a geocache are new and gone, by their identifiers.
    std::size_t addedLogs = 0;
    std::size_t removedLogs = 0;
    /// \}
    /// \{
    /// What a geocache is now, when it was something else.
    std::optional<bool> isAvailable;
    std::optional<bool> isArchived;
    /// \}

    /// \{
    /// Whether the object is only in one of the documents.
    bool IsAdded() const { return object != Object::kDocument && oldNumber == 0; }
    bool IsRemoved() const { return object != Object::kDocument && newNumber == 0; }
    /// \}
};

/// Compares two documents: the document itself, then waypoints, routes and tracks, what is new or stays in the order of
/// the new document and then what is gone.
///
/// Objects that are equal belong together; of the others those with the same name, then those at the same place
/// (waypoints) or with the same first point (routes, tracks). Points of paths belong together when they are equal, then
/// by their time, then by their place, and then, if as many are left of both, by their order.
///
/// What counts is what ContentHash says, and the metadata but its bounds. What is only in how a file is written is no
/// difference: white space, digits, the order of elements, GPX 1.0 or 1.1, the creator. Documents should have been read
/// completely; of others only positions, heights, times and texts are compared.
///
/// Linear in time and memory. Different documents may be compared on several threads at once.
///
///     for (const Difference& difference : Compare(before, after))
///         if (difference.IsAdded())
///             ++added;
///
/// \returns nothing for documents with the same content
/// \throws std::bad_alloc
VEXATRANSFERLIB_API std::vector<Difference> Compare(const vexaTransferLib::GpxDocument& oldDocument,
                                                    const vexaTransferLib::GpxDocument& newDocument);

} // namespace vexaTrackLib
