// SPDX-License-Identifier: MIT

// What the model can hold and no file puts there.

#include <vexagpx/Dump.h>

#include "support/Tool.h"

#include <vexaTransferLib/model/GpxModelAccess.h>

#include <boost/make_shared.hpp>

#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace vexaTransferLib;

std::string DumpOf(const GpxDocument& document) {
    const cli::Folder folder;
    const std::string path = folder.Write("out", "");
    vexagpx::Output out(::open(path.c_str(), O_WRONLY));
    vexagpx::DumpDocument(document, nullptr, out);
    out.Close();
    return cli::ReadFile(path);
}

std::string Line(const std::string& head, const std::string& waypoints) {
    return "{" + head + R"("waypoints":[)" + waypoints +
           R"(],"routes":[],"tracks":[]})"
           "\n";
}

TEST(DumpModelTest, AllFiveNumbersStandInTheStats) {
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

TEST(DumpModelTest, RecordsStandInOrder) {
    GpxDocument document;
    GpxModelAccess::SetStats(document, boost::make_shared<GPXStats>());
    GpxModelAccess::SetAnnotateMetaData(document, boost::make_shared<AnnotateMetaData>());
    GpxModelAccess::SetGISMetaData(document, boost::make_shared<GISMetaData>());
    EXPECT_THAT(DumpOf(document),
                testing::StartsWith(R"({"gisMetaData":{"defaultSymbol":1},"annotateMetaData":{},"stats":{)"));
}

TEST(DumpModelTest, ANewDocumentHasNoName) {
    EXPECT_EQ(DumpOf(GpxDocument()), Line("", ""));
}

TEST(DumpModelTest, CommentStandsBeforeTheDescription) {
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

TEST(DumpModelTest, NumbersThatJsonCannotHoldAreTextsEverywhere) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    GpxDocument document;
    GpxModelAccess::SetTime(document, nan);
    GpxPoint point(kGpxWaypoint, 1, 2);
    point.SetTime(infinity);
    point.SetFormAttribute(u"k", u"", -infinity);
    document.AddWaypoint(point);
    EXPECT_EQ(DumpOf(document),
              Line(R"("time":"NaN",)", R"({"latitude":1,"longitude":2,"time":"Infinity",)"
                                       R"("formAttributes":[{"key":"k","modTime":"-Infinity"}]})"));
}

TEST(DumpModelTest, VendorDataOfRouteAndTrackPointsStandToo) {
    GpxPoint point(kGpxRoutePoint, 1, 2);
    GpxModelAccess::SetSymbolNumber(point, 7);
    GpxModelAccess::SetGUID(point, u"g");
    point.SetTarvikRoutePointType(kTarvikRoutePointVia);
    GpxRoute route(kTarvikRouteStandard);
    route.AddPoint(point);
    GpxDocument document;
    document.AddRoute(route);
    EXPECT_EQ(DumpOf(document), R"({"waypoints":[],"routes":[{"points":[{"latitude":1,"longitude":2,)"
                                R"("routePointType":"via","symbolNumber":7,"guid":"g"}]}],"tracks":[]})"
                                "\n");
}

GpxPoint PointWith(GpxPointType type, const char16_t* key, const char16_t* guid) {
    GpxPoint point(type, 1, 2);
    point.SetFormAttribute(key, u"", 0.0);
    GpxModelAccess::SetGUID(point, guid);
    return point;
}

GpxDocument DocumentWithRawTexts() {
    GpxDocument document;
    const auto layer = boost::make_shared<GISMetaData>();
    layer->layerName = u"ln";
    layer->layerKey = u"lk";
    layer->form = u"f";
    GpxModelAccess::SetGISMetaData(document, layer);
    const auto identifiers = boost::make_shared<AnnotateMetaData>();
    identifiers->trackGUID = u"tg";
    identifiers->waypointGUID = u"wg";
    GpxModelAccess::SetAnnotateMetaData(document, identifiers);
    document.AddWaypoint(GpxPoint(kGpxWaypoint, 1, 2));
    document.AddWaypoint(PointWith(kGpxWaypoint, u"wk", u"w"));
    document.AddRoute(GpxRoute(kTarvikRouteStandard));
    GpxRoute route(kTarvikRouteStandard);
    route.AddPoint(GpxPoint(kGpxRoutePoint, 1, 2));
    route.AddPoint(PointWith(kGpxRoutePoint, u"rk", u"r"));
    document.AddRoute(route);
    document.AddTrack(GpxTrack());
    GpxTrack track;
    track.AddSegment();
    track.AddSegment();
    track.AddPoint(PointWith(kGpxTrackPoint, u"tk", u"t"));
    document.AddTrack(track);
    return document;
}

using NamedTexts = std::vector<std::pair<std::string, icu::UnicodeString>>;

/// The raw texts in the order in which they are looked at, each with the name under which it is found.
NamedTexts RawTextsOf(const GpxDocument& document, const char16_t* version) {
    const GpxVersion written{icu::UnicodeString(version)};
    std::vector<icu::UnicodeString> texts;
    vexagpx::FindRawText(document, written,
                         [&texts](const icu::UnicodeString& text, vexagpx::RawText::Place) {
                             texts.push_back(text);
                             return false;
                         });
    NamedTexts named;
    for (const icu::UnicodeString& wanted : texts) {
        const auto found = vexagpx::FindRawText(
            document, written,
            [&wanted](const icu::UnicodeString& text, vexagpx::RawText::Place) { return text == wanted; });
        named.emplace_back(found->field, found->text);
    }
    return named;
}

TEST(RawTextTest, EachIsFoundByItsFieldAndPlace) {
    const NamedTexts ofMetaData = {
        {"layer name", u"ln"}, {"layer key", u"lk"},     {"form", u"f"},
        {"track GUID", u"tg"}, {"waypoint GUID", u"wg"},
    };
    NamedTexts all = ofMetaData;
    all.insert(all.end(), {{"form key of waypoint 2", u"wk"},
                           {"GUID of waypoint 2", u"w"},
                           {"form key of point 2 of route 2", u"rk"},
                           {"GUID of point 2 of route 2", u"r"},
                           {"form key of point 1 of segment 2 of track 2", u"tk"},
                           {"GUID of point 1 of segment 2 of track 2", u"t"}});
    EXPECT_EQ(RawTextsOf(DocumentWithRawTexts(), u"1.1"), all);
    EXPECT_EQ(RawTextsOf(DocumentWithRawTexts(), u"1.0"), ofMetaData);
    EXPECT_EQ(RawTextsOf(GpxDocument(), u"1.1"), NamedTexts());
}

TEST(RawTextTest, TheTextIsThatOfTheWrittenField) {
    GpxDocument document = DocumentWithRawTexts();
    std::string bytes;
    document.WriteToString(GpxVersion(u"1.1"), u"a", u"u", bytes);
    for (const auto& [field, text] : RawTextsOf(document, u"1.1")) {
        std::string utf8;
        text.toUTF8String(utf8);
        EXPECT_TRUE(bytes.find('>' + utf8 + "</tarvik:") != std::string::npos ||
                    bytes.find("key=\"" + utf8 + '"') != std::string::npos)
            << field;
    }
}

TEST(RawTextTest, OnlyTheFirstThatIsWantedIsFound) {
    int looks = 0;
    const auto found =
        vexagpx::FindRawText(DocumentWithRawTexts(), GpxVersion(u"1.1"),
                             [&looks](const icu::UnicodeString&, vexagpx::RawText::Place place) {
                                 ++looks;
                                 return place == vexagpx::RawText::Place::kAttribute;
                             });
    ASSERT_TRUE(found);
    EXPECT_EQ(found->field, "form key of waypoint 2");
    EXPECT_EQ(found->place, vexagpx::RawText::Place::kAttribute);
    EXPECT_EQ(looks, 6);
}

} // namespace
