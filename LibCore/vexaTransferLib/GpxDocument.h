// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The whole content of one GPX file in memory, and its output.

#include <common/Export.h>
#include <common/UnicodeStrUtils.h>
#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxElementEditor.h>
#include <vexaTransferLib/GpxListEditor.h>
#include <vexaTransferLib/GpxPoint.h>
#include <vexaTransferLib/GpxRoute.h>
#include <vexaTransferLib/GpxTrack.h>
#include <vexaTransferLib/GpxVersion.h>
#include <vexaTransferLib/OptionalValue.h>

#include <boost/shared_ptr.hpp>
#include <unicode/unistr.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vexaTransferLib {

/// Vendor metadata: the file as a layer of a mapping application.
struct VEXATRANSFERLIB_API GISMetaData {
    icu::UnicodeString layerKey;    ///< the layer's identifier
    icu::UnicodeString layerName;   ///< the layer's name
    icu::UnicodeString form;        ///< the form's name
    std::int32_t defaultSymbol = 1; ///< the vendor's number of the symbol
};

/// Vendor metadata: the identifiers of the file's track and waypoint.
struct VEXATRANSFERLIB_API AnnotateMetaData {
    icu::UnicodeString trackGUID;    ///< of the file's track
    icu::UnicodeString waypointGUID; ///< of the file's waypoint
};

/// Vendor metadata: the file's summary as the file states it. The library does not compute
/// these numbers.
struct VEXATRANSFERLIB_API GPXStats {
    std::int32_t wptcount = 0;       ///< waypoints
    std::int32_t trkcount = 0;       ///< tracks
    std::int32_t trksegcount = 0;    ///< segments of tracks
    double trktotalkm = 0.0;         ///< kilometres
    std::int32_t geocachecount = -1; ///< -1 when the file states none
};

/// Waypoints, routes and tracks in file order, the document's name and time, and the vendor's metadata
/// records.
///
/// A host adds points, routes and tracks and writes the document, or has a GpxParser fill one. The metadata records
/// come from a file only; they have no setters. EditWaypoints, EditRoutes and EditTracks change the lists and what is
/// in them, EditElements and EditMetadata what the model has no member for; Clear removes all.
///
/// Copies are deep, except that they share the three metadata records. Moves do not throw. An operation that
/// throws leaves the document unchanged. Const operations, the output among them, may run on several threads
/// at once.
///
///     GpxDocument document;
///     document.AddWaypoint(GpxPoint(kGpxWaypoint, 47.5, -122.25));
///     document.WriteToFile(GpxVersion::GetLatestVersion(), "MyApp", "https://example.org/", "out.gpx");
class VEXATRANSFERLIB_API GpxDocument {
public:
    /// \{
    /// The lists of a document, and their iterators.
    typedef std::vector<GpxPoint> Waypoints;
    typedef std::vector<GpxRoute> Routes;
    typedef std::vector<GpxTrack> Tracks;
    typedef Waypoints::const_iterator WaypointIterator;
    typedef Routes::const_iterator RouteIterator;
    typedef Tracks::const_iterator TrackIterator;
    /// \}

    GpxDocument();
    /// \{
    /// Copies share the metadata records, moves do not throw.
    GpxDocument(const GpxDocument&) = default;
    GpxDocument(GpxDocument&&) noexcept = default;
    GpxDocument& operator=(const GpxDocument& other);
    GpxDocument& operator=(GpxDocument&&) noexcept = default;
    /// \}
    virtual ~GpxDocument();

    /// \{
    /// Each appends a copy, or the object itself when it is an rvalue. Amortised constant time; iterators of
    /// the list become invalid.
    /// \throws dbc::precondition_error "Only waypoints can be added the GPX waypoint list."
    void AddWaypoint(const GpxPoint& point);
    void AddWaypoint(GpxPoint&& point);
    void AddRoute(const GpxRoute& route);
    void AddRoute(GpxRoute&& route);
    void AddTrack(const GpxTrack& track);
    void AddTrack(GpxTrack&& track);
    /// \}

    /// Removes everything, so that the document is like a new one. Other documents keep the metadata records that
    /// they share with this one.
    void Clear();

    /// \{
    /// The waypoints, routes and tracks, each in the order added.
    WaypointIterator GetWaypointIter() const;
    WaypointIterator GetWaypointEndIter() const;
    std::size_t GetWaypointCount() const;

    RouteIterator GetRouteIter() const;
    RouteIterator GetRouteEndIter() const;
    std::size_t GetRouteCount() const;

    TrackIterator GetTrackIter() const;
    TrackIterator GetTrackEndIter() const;
    std::size_t GetTrackCount() const;
    /// \}

    /// \{
    /// All objects of a list, for a range-based `for`.
    const Waypoints& GetWaypoints() const { return waypoints_; }
    const Routes& GetRoutes() const { return routes_; }
    const Tracks& GetTracks() const { return tracks_; }
    /// \}
    /// \{
    /// For changing a list and the objects in it.
    GpxListEditor<GpxPoint> EditWaypoints() { return {waypoints_, GpxListChecks::kDocument}; }
    GpxListEditor<GpxRoute> EditRoutes() { return {routes_, GpxListChecks::kDocument}; }
    GpxListEditor<GpxTrack> EditTracks() { return {tracks_, GpxListChecks::kDocument}; }
    /// \}
    /// \{
    /// For changing what the model has no member for, in a document that was read completely.
    GpxElementEditor EditElements() { return GpxElementEditor(*this); }
    GpxMetadataEditor EditMetadata() { return GpxMetadataEditor(*this); }
    /// \}

    /// \{
    /// Whether the documents have equal names, times, metadata records and objects (see GpxPoint), in equal order.
    VEXATRANSFERLIB_API friend bool operator==(const GpxDocument& left, const GpxDocument& right);
    friend bool operator!=(const GpxDocument& left, const GpxDocument& right) { return !(left == right); }
    /// \}

    /// Milliseconds since 1970-01-01T00:00:00 UTC. Returns false and leaves \p time unchanged when there is none. A
    /// time of exactly 0 counts as none, except in a document that was read completely.
    bool GetDocumentTime(double& time) const;

    /// Replaces the time; any number is one.
    void SetDocumentTime(double time) noexcept;
    /// \{
    /// The name of the document: `name` of its `metadata`, or of GPX 1.0. Returns false and leaves \p name unchanged
    /// when there is none.
    bool GetName(icu::UnicodeString& name) const;
    /// \throws dbc::precondition_error "The GPX document name cannot be empty."
    void SetName(const icu::UnicodeString& name);
    /// \}
    /// \{
    /// Removes the value; nothing happens when there is none.
    void ClearName() noexcept { name_.remove(); }
    void ClearDocumentTime() noexcept;
    /// \}

    /// True when any of the three metadata records is present.
    bool HasExtensionData() const;
    /// True when the document has a name or any metadata record: it is then written with a `metadata`
    /// element.
    bool HasMetaData() const;

    /// \{
    /// Of a document that was read completely: the element that this was read from, and those children that should be
    /// objects of the model but could not be read, such as a waypoint without a position. Otherwise a view of nothing,
    /// and none.
    GpxElement GetElement() const { return element_; }
    const std::vector<GpxElement>& GetUnreadElements() const { return unread_; }
    /// \}

    /// The document as GPX text in UTF-8, without a byte order mark. The text does not depend on any locale.
    ///
    /// Both versions are written in the namespace of GPX 1.1. They differ in the `version` attribute and in what
    /// is written of points, links, routes and tracks. (GpxParser reads only elements in the namespace of the
    /// file's own version: from a file written as 1.0 it reads no waypoint, route or track.)
    /// Layer name and key, form, GUIDs and form keys are written unescaped: with "<" or "&" in them the text
    /// is ill-formed, or what they contain is read as elements. Control characters are written as they are in
    /// the model: with one of U+0000 to U+001F other than tab, line feed and carriage return, or with U+FFFE or U+FFFF,
    /// no XML parser reads the text.
    ///
    /// \throws dbc::precondition_error, in this order: "Cannot write to unknown GPX schema version.", "The
    ///         application name is required to write a GPX document.", "The application URL is required to
    ///         write a GPX document."
    /// \throws dbc::invariant_error what the points and routes throw
    /// \throws dbc::postcondition_error "The GPX text is too large to be held in memory.", also when the bytes
    ///         exceed 2^32 - 1
    UnicodeStrUtils::ByteString GetAsByteString(const GpxVersion& version,
                                                const icu::UnicodeString& applicationName,
                                                const icu::UnicodeString& applicationUrl) const;

    /// Assigns the text of GetAsByteString to \p out, up to the first zero byte (a U+0000 in the document
    /// ends it). Throws what GetAsByteString throws; \p out is then unchanged.
    void WriteToString(const GpxVersion& version, const icu::UnicodeString& applicationName,
                       const icu::UnicodeString& applicationUrl, std::string& out) const;

    /// Writes the bytes of GetAsByteString to a file, which is created or truncated. The name is converted to
    /// ICU's default code page; a host that has a name in bytes writes the result of GetAsByteString itself. All
    /// bytes are made before the file is opened. A file whose writing failed keeps what was written. When this
    /// returns, the operating system has every byte. A control character or markup in a text can make a file that
    /// no XML parser reads, as GetAsByteString says; the file is written all the same.
    ///
    /// \throws what GetAsByteString throws, before the file is opened
    /// \throws std::runtime_error when the name cannot be converted (see ByteString), before the file is opened
    /// \throws GpxWriteError "Unable to create the GPX file. Target could be write protected or full.", also for a
    ///         name that no file can have (empty, or with a U+0000 or a lone surrogate), and
    ///         "Unable to write the GPX file. Target could be write protected or full."
    void WriteToFile(const GpxVersion& version, const icu::UnicodeString& applicationName,
                     const icu::UnicodeString& applicationUrl, const icu::UnicodeString& fileName) const;

private:
    friend class GpxModelAccess;

    Waypoints waypoints_;
    Routes routes_;
    Tracks tracks_;
    icu::UnicodeString name_;
    double time_ = 0.0;
    boost::shared_ptr<GISMetaData> gisMetaData_;
    boost::shared_ptr<AnnotateMetaData> annotateMetaData_;
    boost::shared_ptr<GPXStats> stats_;
    bool hasTime_ = false; ///< also if the time is 0
    /// How many objects were read completely.
    struct ReadCounts {
        std::size_t waypoints = 0;
        std::size_t routes = 0;
        std::size_t tracks = 0;
    };
    ReadCounts readCounts_;
    GpxElement element_;
    /// The children of the element that are no points, segments, routes or tracks of the model, in their order.
    std::vector<GpxElement> fields_;
    std::vector<GpxElement> unread_;
    /// What the editors of elements and metadata changed; null for nothing.
    OwnedValue<GpxElementChanges> elementChanges_;
};

} // namespace vexaTransferLib
