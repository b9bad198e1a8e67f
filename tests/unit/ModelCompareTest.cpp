// SPDX-License-Identifier: MIT
#include "support/ModelCompare.h"

#include "support/GpxFiles.h"
#include "support/ModelDoors.h"
#include "support/SampleDocument.h"
#include "support/TestFiles.h"

#include <vexaTransferLib/model/GpxModelAccess.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <regex>
#include <string>
#include <vector>

namespace vexaTransferLib::testing_support {
namespace {

// A value other than the default in every field of the first waypoint.
GpxDocument Sample() {
    GpxDocument document = FullDocument();
    GpxModelAccess::SetSymbolNumber(const_cast<GpxPoint&>(*document.GetWaypointIter()), 5);
    return document;
}

// The lists give only const access, but their elements are not const objects.
GpxPoint& Waypoint(GpxDocument& document) {
    return const_cast<GpxPoint&>(*document.GetWaypointIter());
}
GpxRoute& Route(GpxDocument& document) {
    return const_cast<GpxRoute&>(*document.GetRouteIter());
}
GpxPoint& RoutePoint(GpxDocument& document) {
    return const_cast<GpxPoint&>(Route(document).GetPointIter()[2]);
}
GpxTrack& Track(GpxDocument& document) {
    return const_cast<GpxTrack&>(*document.GetTrackIter());
}
GpxPoint& TrackPoint(GpxDocument& document) {
    return const_cast<GpxPoint&>(*Track(document).GetPointIter(Track(document).GetSegmentIter() + 1));
}

template <class Change>
void ChangeGeocache(GpxDocument& document, Change change) {
    GpxGroundspeakCache cache;
    Waypoint(document).GetGroundspeakCache(cache);
    change(cache);
    Waypoint(document).SetGroundspeakCache(cache);
}

FormData& FormRecord(GpxDocument& document) {
    return *Waypoint(document).GetFormAttribute(u"Beta");
}

void SetLink(GpxDocument& document, const icu::UnicodeString& address, const icu::UnicodeString& text,
             const icu::UnicodeString& type) {
    GpxUrl url(address);
    url.SetUrlText(text);
    url.SetUrlType(type);
    Waypoint(document).SetURL(url);
}

struct Mutation {
    const char* where;
    void (*change)(GpxDocument&);
};

using D = GpxDocument;
using A = GpxModelAccess;
constexpr char16_t kOther[] = u"other";

const Mutation kMutations[] = {
    {"name", [](D& d) { A::SetName(d, kOther); }},
    {"time", [](D& d) { A::SetTime(d, 1.0); }},
    {"layer", [](D& d) { A::SetGISMetaData(d, nullptr); }},
    {"layer, layerKey", [](D& d) { A::GetGISMetaData(d)->layerKey = kOther; }},
    {"layer, layerName", [](D& d) { A::GetGISMetaData(d)->layerName = kOther; }},
    {"layer, form", [](D& d) { A::GetGISMetaData(d)->form = kOther; }},
    {"layer, defaultSymbol", [](D& d) { A::GetGISMetaData(d)->defaultSymbol = 9; }},
    {"annotation", [](D& d) { A::SetAnnotateMetaData(d, nullptr); }},
    {"annotation, trackGUID", [](D& d) { A::GetAnnotateMetaData(d)->trackGUID = kOther; }},
    {"annotation, waypointGUID", [](D& d) { A::GetAnnotateMetaData(d)->waypointGUID = kOther; }},
    {"statistics", [](D& d) { A::SetStats(d, nullptr); }},
    {"statistics, wptcount", [](D& d) { A::GetStats(d)->wptcount = 9; }},
    {"statistics, trkcount", [](D& d) { A::GetStats(d)->trkcount = 9; }},
    {"statistics, trksegcount", [](D& d) { A::GetStats(d)->trksegcount = 9; }},
    {"statistics, trktotalkm", [](D& d) { A::GetStats(d)->trktotalkm = 9.0; }},
    {"statistics, geocachecount", [](D& d) { A::GetStats(d)->geocachecount = 9; }},
    {"waypoints", [](D& d) { d.AddWaypoint(GpxPoint(kGpxWaypoint, 0.0, 0.0)); }},
    {"routes", [](D& d) { d.AddRoute(GpxRoute(kTarvikRouteStandard)); }},
    {"tracks", [](D& d) { d.AddTrack(GpxTrack()); }},

    {"waypoint 0, latitude", [](D& d) { ModelDoors::SetPosition(Waypoint(d), 45.6, -122.25); }},
    {"waypoint 0, longitude", [](D& d) { ModelDoors::SetPosition(Waypoint(d), 45.5, -122.26); }},
    {"waypoint 1, longitude",
     [](D& d) { ModelDoors::SetPosition(const_cast<GpxPoint&>(d.GetWaypointIter()[1]), 90.0, -0.0); }},
    {"waypoint 0, elevation", [](D& d) { Waypoint(d).SetElevation(1.0); }},
    {"waypoint 0, time", [](D& d) { Waypoint(d).SetTime(1.0); }},
    {"waypoint 0, magneticVariation", [](D& d) { Waypoint(d).SetMagneticVariation(1.0); }},
    {"waypoint 0, geoidHeight", [](D& d) { Waypoint(d).SetGeoidHeight(1.0); }},
    {"waypoint 0, name", [](D& d) { Waypoint(d).SetName(kOther); }},
    {"waypoint 0, comment", [](D& d) { Waypoint(d).SetComment(kOther); }},
    {"waypoint 0, description", [](D& d) { Waypoint(d).SetDescription(kOther); }},
    {"waypoint 0, source", [](D& d) { Waypoint(d).SetSource(kOther); }},
    {"waypoint 0, symbol", [](D& d) { Waypoint(d).SetSymbol(kOther); }},
    {"waypoint 0, type", [](D& d) { Waypoint(d).SetType(kOther); }},
    {"waypoint 1, url", [](D& d) { const_cast<GpxPoint&>(d.GetWaypointIter()[1]).SetURL(GpxUrl(u"u")); }},
    {"waypoint 0, url, address", [](D& d) { SetLink(d, kOther, u"link text", u"text/html"); }},
    {"waypoint 0, url, text", [](D& d) { SetLink(d, u"http://a/?x=1&y=2", kOther, u"text/html"); }},
    {"waypoint 0, url, type", [](D& d) { SetLink(d, u"http://a/?x=1&y=2", u"link text", kOther); }},
    {"waypoint 0, fix", [](D& d) { Waypoint(d).SetFix(kGpxFixNone); }},
    {"waypoint 0, symbolNumber", [](D& d) { A::SetSymbolNumber(Waypoint(d), 6); }},
    {"waypoint 0, guid", [](D& d) { A::SetGUID(Waypoint(d), kOther); }},
    {"waypoint 0, formAttributes", [](D& d) { Waypoint(d).SetFormAttribute(u"new", u"", 0.0); }},
    {"waypoint 0, form attribute Beta, record, key", [](D& d) { FormRecord(d).key = u"BETA"; }},
    {"waypoint 0, form attribute Beta, record, value", [](D& d) { FormRecord(d).value = kOther; }},
    {"waypoint 0, form attribute Beta, record, modTime", [](D& d) { FormRecord(d).modTime = 1.0; }},

    {"waypoint 1, geocache",
     [](D& d) { const_cast<GpxPoint&>(d.GetWaypointIter()[1]).SetGroundspeakCache({}); }},
    {"waypoint 0, geocache, name", [](D& d) { ChangeGeocache(d, [](auto& cache) { cache.name = kOther; }); }},
    {"waypoint 0, geocache, owner",
     [](D& d) { ChangeGeocache(d, [](auto& cache) { cache.owner = kOther; }); }},
    {"waypoint 0, geocache, type", [](D& d) { ChangeGeocache(d, [](auto& cache) { cache.type = kOther; }); }},
    {"waypoint 0, geocache, container",
     [](D& d) { ChangeGeocache(d, [](auto& cache) { cache.container = kOther; }); }},
    {"waypoint 0, geocache, difficulty",
     [](D& d) { ChangeGeocache(d, [](auto& cache) { cache.difficulty = kOther; }); }},
    {"waypoint 0, geocache, terrain",
     [](D& d) { ChangeGeocache(d, [](auto& cache) { cache.terrain = kOther; }); }},
    {"waypoint 0, geocache, short_description",
     [](D& d) { ChangeGeocache(d, [](auto& cache) { cache.short_description = kOther; }); }},
    {"waypoint 0, geocache, long_description",
     [](D& d) { ChangeGeocache(d, [](auto& cache) { cache.long_description = kOther; }); }},
    {"waypoint 0, geocache, encoded_hints",
     [](D& d) { ChangeGeocache(d, [](auto& cache) { cache.encoded_hints = kOther; }); }},
    {"waypoint 0, geocache, logs",
     [](D& d) { ChangeGeocache(d, [](auto& cache) { cache.logs.pop_back(); }); }},
    {"waypoint 0, geocache, log 0, id",
     [](D& d) { ChangeGeocache(d, [](auto& cache) { cache.logs[0].id = 1; }); }},
    {"waypoint 0, geocache, log 1, date",
     [](D& d) { ChangeGeocache(d, [](auto& cache) { cache.logs[1].date = kOther; }); }},
    {"waypoint 0, geocache, log 0, finder",
     [](D& d) { ChangeGeocache(d, [](auto& cache) { cache.logs[0].finder = kOther; }); }},
    {"waypoint 0, geocache, log 0, text",
     [](D& d) { ChangeGeocache(d, [](auto& cache) { cache.logs[0].text = kOther; }); }},
    {"waypoint 0, geocache, log 0, type",
     [](D& d) { ChangeGeocache(d, [](auto& cache) { cache.logs[0].type = kOther; }); }},
    {"waypoint 0, geocache, travelbugs",
     [](D& d) { ChangeGeocache(d, [](auto& cache) { cache.travelbugs.pop_back(); }); }},
    {"waypoint 0, geocache, travelbug 1, name",
     [](D& d) { ChangeGeocache(d, [](auto& cache) { cache.travelbugs[1] = kOther; }); }},

    {"route 0, name", [](D& d) { Route(d).SetName(kOther); }},
    {"route 0, source", [](D& d) { Route(d).SetSource(kOther); }},
    {"route 0, type", [](D& d) { Route(d).SetType(kOther); }},
    {"route 0, route type", [](D& d) { ModelDoors::SetRouteType(Route(d), 1); }},
    {"route 0, points", [](D& d) { Route(d).AddPoint(GpxPoint(RoutePoint(d))); }},
    {"route 0, point 2, name", [](D& d) { RoutePoint(d).SetName(kOther); }},
    {"route 0, point 2, routePointType",
     [](D& d) { RoutePoint(d).SetTarvikRoutePointType(kTarvikRoutePointStart); }},
    {"route 0, point 2, symbolNumber", [](D& d) { A::SetSymbolNumber(RoutePoint(d), 6); }},
    {"route 0, point 2, point type", [](D& d) { ModelDoors::SetPointType(RoutePoint(d), kGpxTrackPoint); }},

    {"track 0, name", [](D& d) { Track(d).SetName(kOther); }},
    {"track 0, description", [](D& d) { Track(d).SetDescription(kOther); }},
    {"track 0, source", [](D& d) { Track(d).SetSource(kOther); }},
    {"track 0, type", [](D& d) { Track(d).SetType(kOther); }},
    {"track 0, link, address",
     [](D& d) {
         GpxUrl url(kOther);
         url.SetUrlText(u"track link");
         Track(d).SetURL(url);
     }},
    {"track 0, color", [](D& d) { A::SetColor(Track(d), 9); }},
    {"track 0, segments", [](D& d) { Track(d).AddSegment(); }},
    {"track 0, segment 1, points", [](D& d) { Track(d).AddPoint(GpxPoint(kGpxTrackPoint, 0.0, 0.0)); }},
    {"track 0, segment 1, point 0, elevation", [](D& d) { TrackPoint(d).SetElevation(1.0); }},
    {"track 0, segment 1, point 1, longitude",
     [](D& d) { ModelDoors::SetPosition((&TrackPoint(d))[1], -0.0, 0.0); }},
    {"track 0, segment 1, point 0, has extensions", [](D& d) { ModelDoors::SetGeocache(TrackPoint(d), {}); }},
};

TEST(ModelCompareTest, EqualDocumentsHaveNoDifference) {
    EXPECT_THAT(DifferencesOf(Sample(), Sample()), testing::IsEmpty());
    EXPECT_TRUE(IsSameModel(Sample(), Sample()));
    EXPECT_TRUE(IsSameModel(GpxDocument(), GpxDocument()));
}

TEST(ModelCompareTest, EveryChangedFieldIsNoticedAndNamed) {
    for (const Mutation& mutation : kMutations) {
        GpxDocument changed = Sample();
        mutation.change(changed);
        const std::string place = std::string(mutation.where) + ": ";
        EXPECT_THAT(DifferencesOf(Sample(), changed), testing::ElementsAre(testing::StartsWith(place)));
        EXPECT_THAT(DifferencesOf(changed, Sample()), testing::ElementsAre(testing::StartsWith(place)));
        EXPECT_FALSE(IsSameModel(Sample(), changed)) << place;
    }
}

// The lines of a text that are one element each, with content, without the geocache's, in which a log without text
// is not read, and without the description, for which the comment is read.
std::vector<std::string> ElementLinesOf(const std::string& text) {
    const std::regex line("\t*<((tarvik:)?\\w+)[^>]*>[^<\r\n]+</\\1>\r\n");
    std::vector<std::string> lines;
    for (std::sregex_iterator match(text.begin(), text.end(), line), end; match != end; ++match)
        if (match->str(1) != "desc")
            lines.push_back(match->str());
    return lines;
}

// What is written and read, and is not in the list of a point's fields, makes no difference here.
TEST(ModelCompareTest, EveryElementOfAWaypointMakesADifference) {
    const std::string document = ReadTestData("writer/everything-1.1.gpx");
    const std::size_t first = document.find("<wpt");
    const std::vector<std::string> lines =
        ElementLinesOf(document.substr(first, document.find("</wpt>") - first));
    EXPECT_GE(lines.size(), 16U);
    const GpxDocument whole = ReadGpx(document);
    for (const std::string& line : lines) {
        std::string without = document;
        without.erase(without.find(line, first), line.size());
        EXPECT_FALSE(IsSameModel(whole, ReadGpx(without))) << line;
    }
}

// The spelling of the map's key is what the writer writes.
TEST(ModelCompareTest, TheSpellingOfAFormKeyCounts) {
    GpxDocument first;
    GpxDocument second;
    GpxPoint point(kGpxWaypoint, 0.0, 0.0);
    point.SetFormAttribute(u"key", u"", 0.0);
    first.AddWaypoint(point);
    GpxPoint other(kGpxWaypoint, 0.0, 0.0);
    other.SetFormAttribute(u"KEY", u"", 0.0);
    other.SetFormAttribute(u"key", u"", 0.0);
    second.AddWaypoint(other);
    EXPECT_THAT(DifferencesOf(first, second),
                testing::ElementsAre("waypoint 0, form attribute key, map key: \"key\", not \"KEY\""));
}

TEST(ModelCompareTest, APresentValueDiffersFromAnAbsentOne) {
    GpxDocument without;
    without.AddWaypoint(GpxPoint(kGpxWaypoint, 0.0, 0.0));
    GpxDocument with = without;
    Waypoint(with).SetElevation(0.0);
    EXPECT_THAT(DifferencesOf(without, with), testing::ElementsAre("waypoint 0, elevation: absent, not 0"));
}

TEST(ModelCompareTest, NumbersAreComparedBitByBitButAllNaNsAreOne) {
    const auto withElevation = [](double elevation) {
        GpxDocument document;
        document.AddWaypoint(GpxPoint(kGpxWaypoint, 0.0, 0.0));
        Waypoint(document).SetElevation(elevation);
        return document;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(IsSameModel(withElevation(nan), withElevation(-nan)));
    EXPECT_FALSE(IsSameModel(withElevation(nan), withElevation(0.0)));
    EXPECT_FALSE(IsSameModel(withElevation(0.0), withElevation(-0.0)));
    EXPECT_FALSE(IsSameModel(withElevation(1.0), withElevation(std::nextafter(1.0, 2.0))));
}

TEST(ModelCompareTest, ALongListOfDifferencesIsCutButCounted) {
    GpxDocument first;
    GpxDocument second;
    for (int i = 0; i < 12; ++i) {
        first.AddWaypoint(GpxPoint(kGpxWaypoint, 1.0, 0.0));
        second.AddWaypoint(GpxPoint(kGpxWaypoint, 2.0, 0.0));
    }
    const testing::AssertionResult result = IsSameModel(first, second);
    EXPECT_THAT(result.message(), testing::StartsWith("12 differences:\n  waypoint 0, latitude: 1, not 2\n"));
    EXPECT_THAT(result.message(), testing::Not(testing::HasSubstr("waypoint 10")));
}

} // namespace
} // namespace vexaTransferLib::testing_support
