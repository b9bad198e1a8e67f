// SPDX-License-Identifier: MIT

// Models that no file can produce.

#include <vexagpx/commands/Dump.h>

#include "support/Tool.h"
#include "support/XercesPlatform.h"

#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include <boost/make_shared.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace vexaTransferLib;

std::string DumpOf(const GpxDocument& document) {
    const cli::Folder folder;
    const std::string path = folder.Write("out", "");
    vexagpx::Output out(::open(path.c_str(), O_WRONLY));
    const std::string file = "t.gpx";
    vexagpx::DumpDocument(document, {file, nullptr}, out);
    out.Close();
    return cli::ReadFile(path);
}

std::string Line(const std::string& head, const std::string& waypoints) {
    return R"({"file":"t.gpx",)" + head + R"("waypoints":[)" + waypoints +
           R"(],"routes":[],"tracks":[]})"
           "\n";
}

TEST(DumpModelTest, TheStatsContainAllFiveNumbers) {
    GpxDocument document;
    GpxModelAccess::SetStats(document, boost::make_shared<GPXStats>());
    EXPECT_EQ(
        DumpOf(document),
        Line(R"("stats":{"wptcount":0,"trkcount":0,"trksegcount":0,"trktotalkm":0,"geocachecount":-1},)",
             ""));
    const auto stats = boost::make_shared<GPXStats>();
    *stats = {1, 100000, 3, 1234.5678, 0};
    GpxModelAccess::SetStats(document, stats);
    EXPECT_EQ(DumpOf(document), Line(R"("stats":{"wptcount":1,"trkcount":100000,"trksegcount":3,)"
                                     R"("trktotalkm":1234.5678,"geocachecount":0},)",
                                     ""));
}

TEST(DumpModelTest, RecordsAreInOrder) {
    GpxDocument document;
    GpxModelAccess::SetStats(document, boost::make_shared<GPXStats>());
    GpxModelAccess::SetAnnotateMetaData(document, boost::make_shared<AnnotateMetaData>());
    GpxModelAccess::SetGISMetaData(document, boost::make_shared<GISMetaData>());
    EXPECT_THAT(DumpOf(document),
                testing::StartsWith(
                    R"({"file":"t.gpx","gisMetaData":{"defaultSymbol":1},"annotateMetaData":{},"stats":{)"));
}

TEST(DumpModelTest, ANewDocumentHasNoName) {
    EXPECT_EQ(DumpOf(GpxDocument()), Line("", ""));
}

TEST(DumpModelTest, TheCommentIsBeforeTheDescription) {
    GpxDocument document;
    GpxPoint point(kGpxWaypoint, 1, 2);
    point.SetDescription(u"d");
    point.SetComment(u"c");
    document.AddWaypoint(point);
    EXPECT_EQ(DumpOf(document), Line("", R"({"latitude":1,"longitude":2,"comment":"c","description":"d"})"));
}

TEST(DumpModelTest, AFormAttributeMayHaveAnEmptyKey) {
    GpxDocument document;
    GpxPoint point(kGpxWaypoint, 1, 2);
    point.SetFormAttribute(u"", u"", 0.0);
    document.AddWaypoint(point);
    EXPECT_EQ(DumpOf(document), Line("", R"({"latitude":1,"longitude":2,"formAttributes":[{}]})"));
}

TEST(DumpModelTest, ALogMayBeEmpty) {
    GpxDocument document;
    GpxPoint point(kGpxWaypoint, 1, 2);
    GpxGroundspeakCache cache;
    cache.logs.emplace_back();
    point.SetGroundspeakCache(cache);
    document.AddWaypoint(point);
    EXPECT_EQ(DumpOf(document), Line("", R"({"latitude":1,"longitude":2,"geocache":{"logs":[{}]}})"));
}

TEST(DumpModelTest, ANumberThatJsonCannotHoldIsText) {
    const double infinity = std::numeric_limits<double>::infinity();
    GpxDocument document;
    GpxPoint point(kGpxWaypoint, 1, 2);
    point.SetElevation(-infinity);
    document.AddWaypoint(point);
    EXPECT_EQ(DumpOf(document), Line("", R"({"latitude":1,"longitude":2,"elevation":"-Infinity"})"));
}

TEST(DumpModelTest, ATimeWithoutADateIsLeftOut) {
    const double infinity = std::numeric_limits<double>::infinity();
    constexpr double kYear10000 = 253402300800000.0;
    GpxDocument document;
    GpxModelAccess::SetTime(document, std::numeric_limits<double>::quiet_NaN());
    for (const double time : {infinity, kYear10000}) {
        GpxPoint point(kGpxWaypoint, 1, 2);
        point.SetTime(time);
        point.SetFormAttribute(u"k", u"", -infinity);
        document.AddWaypoint(point);
    }
    const std::string waypoint = R"({"latitude":1,"longitude":2,"formAttributes":[{"key":"k"}]})";
    EXPECT_EQ(DumpOf(document), Line("", waypoint + "," + waypoint));
}

TEST(DumpModelTest, APointOfAnotherDocumentKeepsWhatItWasReadWith) {
    const cli::XercesPlatform platform;
    GpxParser parser;
    parser.SetComplete();
    GpxDocument source;
    parser.Parse(std::string_view("<gpx><wpt lat='1' lon='2'><sat>5</sat></wpt></gpx>"), u"t.gpx", source);
    GpxDocument document;
    document.AddWaypoint(*source.GetWaypointIter());
    EXPECT_EQ(DumpOf(document), Line("", R"({"latitude":1,"longitude":2,"satellites":5})"));
}

TEST(DumpModelTest, VendorDataOfRouteAndTrackPointsIsContained) {
    GpxPoint point(kGpxRoutePoint, 1, 2);
    GpxModelAccess::SetSymbolNumber(point, 7);
    GpxModelAccess::SetGUID(point, u"g");
    point.SetTarvikRoutePointType(kTarvikRoutePointVia);
    GpxRoute route(kTarvikRouteStandard);
    route.AddPoint(point);
    GpxDocument document;
    document.AddRoute(route);
    EXPECT_EQ(DumpOf(document),
              R"({"file":"t.gpx","waypoints":[],"routes":[{"points":[{"latitude":1,"longitude":2,)"
              R"("routePointType":"via","symbolNumber":7,"guid":"g"}]}],"tracks":[]})"
              "\n");
}

} // namespace
