// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Show.h>

#include <vexagpx/commands/PathSummary.h>
#include <vexagpx/commands/ShowDetails.h>
#include <vexagpx/commands/ShowJson.h>
#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/output/HiddenFields.h>
#include <vexagpx/report/DocumentCounts.h>
#include <vexagpx/terminal/DisplayText.h>
#include <vexagpx/terminal/Table.h>

#include <vexaTrackLib/Bounds.h>
#include <vexaTrackLib/TimeSpan.h>

#include <algorithm>
#include <limits>
#include <optional>

namespace vexagpx {

using namespace vexaTransferLib;
using vexaTrackLib::Bounds;
using vexaTrackLib::TimeSpan;

namespace {

constexpr std::size_t kRowLimit = 20;
// Where the texts after "  Name       " start.
constexpr std::size_t kLabelEnd = 13;

template <class Owner>
icu::UnicodeString Get(const Owner& owner, bool (Owner::*get)(icu::UnicodeString&) const) {
    icu::UnicodeString text;
    (owner.*get)(text);
    return text;
}

/// "2009-01-15T10:20:30Z to 2009-01-15T12:00:00Z, 1 h 39 min"; empty when there are no times.
icu::UnicodeString SpanText(const TimeSpan& span) {
    if (span.IsEmpty())
        return {};
    if (span.First() == span.Last())
        return TimeText(span.First());
    return TimeText(span.First()) + u" to " + TimeText(span.Last()) + u", " +
           DurationText(span.Last() - span.First());
}

/// Collects the lines of one document in one pass over its points.
class Summary {
public:
    Summary(const GpxDocument& document, bool all) : rowLimit_(all ? kNoLimit : kRowLimit) {
        TakeWaypoints(document);
        TakeRoutes(document);
        TakeTracks(document);
    }

    void Write(const GpxDocument& document, Output& out);

private:
    static constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

    void TakeWaypoints(const GpxDocument& document);
    void TakeGeocache(const GpxPoint& waypoint, const GpxGroundspeakCache& cache);
    void TakeRoutes(const GpxDocument& document);
    void TakeTracks(const GpxDocument& document);

    void WriteHead(const GpxDocument& document, Output& out) const;
    void WriteBounds(Output& out) const;
    void WriteTable(const char16_t* title, std::size_t count, Table& table, Output& out) const;

    std::size_t rowLimit_;
    Bounds bounds_;
    DocumentCounts counts_; ///< without logs and travel bugs
    Table waypoints_{{{u"#", Column::Kind::kNumber},
                      {u"Name", Column::Kind::kFlexible},
                      {u"Latitude", Column::Kind::kNumber},
                      {u"Longitude", Column::Kind::kNumber},
                      {u"Elevation", Column::Kind::kNumber},
                      {u"Time", Column::Kind::kText}}};
    Table geocaches_{{{u"#", Column::Kind::kNumber},
                      {u"Code", Column::Kind::kText},
                      {u"Name", Column::Kind::kFlexible},
                      {u"Type", Column::Kind::kText},
                      {u"Size", Column::Kind::kText},
                      {u"D/T", Column::Kind::kText}}};
    Table routes_{{{u"#", Column::Kind::kNumber},
                   {u"Name", Column::Kind::kFlexible},
                   {u"Points", Column::Kind::kNumber},
                   {u"Length", Column::Kind::kNumber}}};
    Table tracks_{{{u"#", Column::Kind::kNumber},
                   {u"Name", Column::Kind::kFlexible},
                   {u"Segments", Column::Kind::kNumber},
                   {u"Points", Column::Kind::kNumber},
                   {u"Length", Column::Kind::kNumber}}};
};

void Summary::TakeWaypoints(const GpxDocument& document) {
    for (auto point = document.GetWaypointIter(); point != document.GetWaypointEndIter(); ++point) {
        double latitude;
        double longitude;
        point->GetPoint(latitude, longitude);
        bounds_.Add(latitude, longitude);
        if (++counts_.waypoints <= rowLimit_) {
            double elevation = 0.0;
            double time = 0.0;
            waypoints_.AddRow({NumberText(counts_.waypoints), Get(*point, &GpxPoint::GetName),
                               DegreesText(latitude), DegreesText(longitude),
                               point->GetElevation(elevation) ? HeightText(elevation) : icu::UnicodeString(),
                               point->GetTime(time) ? TimeText(time) : icu::UnicodeString()});
        }
        GpxGroundspeakCache cache;
        if (point->GetGroundspeakCache(cache))
            TakeGeocache(*point, cache);
    }
}

void Summary::TakeGeocache(const GpxPoint& waypoint, const GpxGroundspeakCache& cache) {
    if (++counts_.geocaches > rowLimit_)
        return;
    const auto OrDash = [](const icu::UnicodeString& text) {
        return text.isEmpty() ? icu::UnicodeString(u'-') : text;
    };
    icu::UnicodeString rating;
    if (!cache.difficulty.isEmpty() || !cache.terrain.isEmpty())
        rating = OrDash(cache.difficulty) + u'/' + OrDash(cache.terrain);
    geocaches_.AddRow({NumberText(counts_.geocaches), Get(waypoint, &GpxPoint::GetName), cache.name,
                       cache.type, cache.container, rating},
                      GeocacheNote(waypoint.GetElement()));
}

void Summary::TakeRoutes(const GpxDocument& document) {
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route) {
        PathSummary path(bounds_);
        for (auto point = route->GetPointIter(); point != route->GetPointEndIter(); ++point)
            path.Add(*point);
        counts_.routePoints += path.Points();
        if (++counts_.routes <= rowLimit_) {
            routes_.AddRow({NumberText(counts_.routes), Get(*route, &GpxRoute::GetName),
                            NumberText(path.Points()), LengthText(path.Metres())},
                           SpanText(path.Times()));
            routes_.AddNote(PathNote(route->GetElement()));
        }
    }
}

void Summary::TakeTracks(const GpxDocument& document) {
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track) {
        PathSummary path(bounds_);
        SensorStatistics sensors;
        const bool isListed = counts_.tracks < rowLimit_;
        for (auto segment = track->GetSegmentIter(); segment != track->GetSegmentEndIter(); ++segment) {
            path.Break();
            for (auto point = track->GetPointIter(segment); point != track->GetPointEndIter(segment);
                 ++point) {
                path.Add(*point);
                if (isListed)
                    sensors.Add(*point);
            }
        }
        counts_.segments += track->GetSegmentCount();
        counts_.trackPoints += path.Points();
        ++counts_.tracks;
        if (isListed) {
            tracks_.AddRow({NumberText(counts_.tracks), Get(*track, &GpxTrack::GetName),
                            NumberText(track->GetSegmentCount()), NumberText(path.Points()),
                            LengthText(path.Metres())},
                           SpanText(path.Times()));
            tracks_.AddNote(PathNote(track->GetElement()));
            for (const icu::UnicodeString& note : sensors.Notes())
                tracks_.AddNote(note);
        }
    }
}

void Summary::Write(const GpxDocument& document, Output& out) {
    WriteHead(document, out);
    WriteTable(u"Waypoints", counts_.waypoints, waypoints_, out);
    WriteTable(u"Geocaches", counts_.geocaches, geocaches_, out);
    WriteTable(u"Routes", counts_.routes, routes_, out);
    WriteTable(u"Tracks", counts_.tracks, tracks_, out);
}

void Summary::WriteHead(const GpxDocument& document, Output& out) const {
    if (const icu::UnicodeString name = Printable(DocumentName(document));
        !name.isEmpty() || !document.GetElement())
        WriteNote(out, u"  Name       " + name, kLabelEnd);
    double time = 0.0;
    if (document.GetDocumentTime(time))
        WriteLine(out, u"  Time       " + TimeText(time));
    for (const icu::UnicodeString& line : HeadLines(document))
        WriteNote(out, line, kLabelEnd);
    WriteCounts(counts_, GeocacheDetail::kNumber, out);
    WriteBounds(out);
    if (counts_.waypoints + counts_.routes + counts_.tracks == 0)
        WriteNote(out,
                  document.GetElement()
                      ? u"  It holds no waypoint, route or track."
                      : u"  It holds no waypoint, route or track in the GPX namespace of its version.",
                  2);
}

void Summary::WriteBounds(Output& out) const {
    if (bounds_.IsEmpty())
        return;
    WriteNote(out,
              u"  Bounds     latitude " + DegreesText(bounds_.South()) + u" to " +
                  DegreesText(bounds_.North()),
              kLabelEnd);
    WriteNote(out,
              u"             longitude " + DegreesText(bounds_.West()) + u" to " +
                  DegreesText(bounds_.East()) +
                  (bounds_.West() > bounds_.East() ? u" (across the 180th meridian)" : u""),
              kLabelEnd);
}

void Summary::WriteTable(const char16_t* title, std::size_t count, Table& table, Output& out) const {
    if (count == 0)
        return;
    out.Write("\n");
    WriteLine(out, title, Style::kHeading);
    table.Write(out);
    if (count > rowLimit_)
        WriteLine(out, u"  \u2026 and " + NumberText(count - rowLimit_) + u" more (--all lists them)");
}

/// \param all lists every waypoint, route, track and geocache instead of the first few
void ShowDocument(const GpxDocument& document, const std::string& heading, bool all, Output& out) {
    WriteHeading(out, heading);
    Summary(document, all).Write(document, out);
}

} // namespace

bool Show(const ShowOptions& options, Output& out) {
    bool isFirst = true;
    const auto show = [&](const DocumentSource& source, const GpxDocument& document) {
        if (!isFirst && !options.json)
            out.Write("\n");
        isFirst = false;
        if (options.json)
            WriteShowJson(document, source, out);
        else
            ShowDocument(document, source.Text(), options.all, out);
        out.Flush();
    };
    return ReadDocuments(options.files, options.rules, show,
                         options.json ? Watched::kInventedNames : Watched::kNothing);
}

} // namespace vexagpx
