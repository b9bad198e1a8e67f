// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// A route: route points in the order of travel.

#include <common/Export.h>
#include <vexaTransferLib/GpxListEditor.h>
#include <vexaTransferLib/GpxPoint.h>
#include <vexaTransferLib/GpxVersion.h>

#include <unicode/unistr.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vexaTransferLib {

/// What kind of route the points describe (vendor extension `routeType`).
enum TarvikRouteType : std::uint32_t {
    kTarvikRouteStandard = 0,  ///< a plain GPX route
    kTarvikRoutePoints = 1,    ///< "points": given by its points
    kTarvikRouteDirections = 2 ///< "directions": with turn-by-turn directions
};

/// An ordered list of route points with the route's texts.
///
/// The route type is fixed at construction and decides which points are accepted:
///
/// | route type               | accepted route point types           |
/// |--------------------------|--------------------------------------|
/// | `kTarvikRouteStandard`   | every type, and no type              |
/// | `kTarvikRoutePoints`     | start, stop, via, finish             |
/// | `kTarvikRouteDirections` | start, stop, via, finish, turn       |
///
/// EditPoints changes the list of points. Text getters return false and leave their output
/// unchanged when the text is absent. Copies are deep, moves do not throw. An operation that throws leaves
/// the route unchanged. Const operations may run on several threads at once.
class VEXATRANSFERLIB_API GpxRoute {
public:
    /// \{
    /// The points of a route, and their iterator.
    typedef std::vector<GpxPoint> Points;
    typedef Points::const_iterator PointIterator;
    /// \}

    /// \throws dbc::precondition_error "The GPX route type is invalid."
    explicit GpxRoute(TarvikRouteType routeType);
    /// \{
    /// Copies are deep, moves do not throw.
    GpxRoute(const GpxRoute&) = default;
    GpxRoute(GpxRoute&&) noexcept = default;
    GpxRoute& operator=(const GpxRoute& other);
    GpxRoute& operator=(GpxRoute&&) noexcept = default;
    /// \}
    virtual ~GpxRoute();

    /// \{
    /// Returns false and leaves the output unchanged when there is no such text.
    bool GetName(icu::UnicodeString& name) const;
    bool GetSource(icu::UnicodeString& source) const;
    bool GetType(icu::UnicodeString& type) const; ///< GPX `type`: free text, not the vendor's route type
    /// \}

    /// \throws dbc::precondition_error "The GPX route name cannot be empty."
    void SetName(const icu::UnicodeString& name);
    /// \throws dbc::precondition_error "The GPX route source cannot be empty."
    void SetSource(const icu::UnicodeString& source);
    /// \throws dbc::precondition_error "The GPX route type cannot be empty."
    void SetType(const icu::UnicodeString& type);

    /// \{
    /// Removes the text; nothing happens when there is none.
    void ClearName() noexcept { name_.remove(); }
    void ClearSource() noexcept { source_.remove(); }
    void ClearType() noexcept { type_.remove(); }
    /// \}

    /// Changes the vendor's type of the route. Linear in the points.
    /// \throws dbc::precondition_error "The GPX route type is invalid.", then "The route point type cannot be used with
    ///         this route type." when the route has a point that the type does not accept
    void SetTarvikRouteType(TarvikRouteType routeType);

    /// Returns false and leaves \p routeType unchanged for a standard route.
    bool GetTarvikRouteType(TarvikRouteType& routeType) const;

    /// \{
    /// Appends a copy of the point, or the point itself when it is an rvalue. Amortised constant time.
    /// \throws dbc::precondition_error "Only route points can be added to GPX routes.", then "The route point
    ///         type cannot be used with this route type."
    void AddPoint(const GpxPoint& point);
    void AddPoint(GpxPoint&& point);
    /// \}

    /// \{
    /// The points in the order added. Adding a point invalidates iterators.
    PointIterator GetPointIter() const;
    PointIterator GetPointEndIter() const;
    std::size_t GetPointCount() const;
    /// \}

    /// All points, for a range-based `for`.
    const Points& GetPoints() const { return points_; }
    /// For changing the points.
    GpxListEditor<GpxPoint> EditPoints() { return {points_, GpxListChecks::kRoute, this}; }

    /// \{
    /// Whether texts, type and points are equal (see GpxPoint).
    VEXATRANSFERLIB_API friend bool operator==(const GpxRoute& left, const GpxRoute& right);
    friend bool operator!=(const GpxRoute& left, const GpxRoute& right) { return !(left == right); }
    /// \}

    /// Appends the route as GPX text; lines end in CR LF. The type and the route type are written in version 1.1
    /// only. The rules of GpxPoint::AppendToString apply to the points.
    /// \throws dbc::precondition_error "GPX routes can only be written to version 1.0 or 1.1 files."
    /// \throws dbc::invariant_error "Unable to write an unknown GPX route type.", nothing is appended
    ///         then; and what the points throw, \p out then contains what was written before
    /// \throws dbc::postcondition_error "The GPX text is too large to be held in memory."; \p out is then
    ///         bogus
    void AppendToString(const GpxVersion& version, icu::UnicodeString& out) const;

    /// \{
    /// Of a document that was read completely: the element that this was read from, and those children that should be
    /// objects of the model but could not be read, such as a route point without a position. Otherwise a view of
    /// nothing, and none.
    GpxElement GetElement() const { return element_; }
    const std::vector<GpxElement>& GetUnreadElements() const { return unread_; }
    /// \}

private:
    friend class GpxModelAccess;
    friend class GpxListChecks;

    VEXATRANSFERLIB_LOCAL void CheckPoint(const GpxPoint& point) const;

    icu::UnicodeString name_;
    icu::UnicodeString source_;
    icu::UnicodeString type_;
    TarvikRouteType routeType_;
    Points points_;
    GpxElement element_;
    /// The children of the element that are no points, segments, routes or tracks of the model, in their order.
    std::vector<GpxElement> fields_;
    std::vector<GpxElement> unread_;
    std::size_t readPoints_ = 0;      ///< how many were read completely
    std::uint32_t readRouteType_ = 0; ///< as it was read completely
};

} // namespace vexaTransferLib
