// SPDX-License-Identifier: MIT

// Untrusted files may have elements that are nested too deeply for any recursion, and texts and lists of any
// length.

#include <vexaTransferLib/GpxParser.h>

#include "support/GpxFiles.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"
#include "support/SmallStack.h"

#include <gtest/gtest.h>

#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

constexpr std::size_t kLevels = 1000000;
static_assert(kLevels * 2 * sizeof(void*) > kSmallStack, "a recursion would overflow it");

GpxDocument ReadOnASmallStack(const std::string& gpx) {
    GpxDocument document;
    RunOnASmallStack([&] { document = ReadGpx(gpx); });
    return document;
}

// Each with a namespace of its own: Xerces looks up an inherited one level by level.
std::string Nested(const std::string& innermost) {
    return Repeat("<a xmlns=\"u1\">", kLevels) + innermost + Repeat("</a>", kLevels);
}

TEST(ReaderDepthTest, AMillionLevelsInAWaypointAreSkipped) {
    const GpxDocument document =
        ReadOnASmallStack(Gpx11("<wpt lat='1' lon='2'>" + Nested("") + "<name>N</name></wpt><trk/>"));
    EXPECT_EQ(CountsOf(document), "1 waypoints, 0 routes, 1 tracks");
    EXPECT_EQ(TextOf(*document.GetWaypointIter(), &GpxPoint::GetName), "N");
}

TEST(ReaderDepthTest, AMillionLevelsInTheDocumentNameGiveTheirText) {
    const GpxDocument document =
        ReadOnASmallStack(Gpx11("<metadata><name>x" + Nested("y") + "z</name></metadata><trk/>"));
    EXPECT_EQ(NameOf(document), "xyz");
    EXPECT_EQ(CountsOf(document), "0 waypoints, 0 routes, 1 tracks");
}

TEST(ReaderDepthTest, DeepTextIsReadThroughTheDom) {
    constexpr std::size_t kDomLevels = 100000;
    static_assert(kDomLevels * 2 * sizeof(void*) > kSmallStack, "a recursion would overflow it");
    const std::string deep = Repeat("<a xmlns=\"u1\">", kDomLevels) + "y" + Repeat("</a>", kDomLevels);
    const GpxDocument document =
        ReadOnASmallStack("<!DOCTYPE gpx>" + Gpx11("<metadata><name>x" + deep + "z</name></metadata><trk/>"));
    EXPECT_EQ(NameOf(document), "xyz");
    EXPECT_EQ(CountsOf(document), "0 waypoints, 0 routes, 1 tracks");
}

TEST(ReaderDepthTest, AMillionLevelsBelowTheRootAreSkipped) {
    EXPECT_EQ(CountsOf(ReadOnASmallStack(Gpx11("<trk/>" + Nested("") + "<trk/>"))),
              "0 waypoints, 0 routes, 2 tracks");
}

TEST(ReaderDepthTest, ATextOfTenMillionCharactersIsReadWhole) {
    constexpr std::size_t kLength = 10000000;
    const std::string text = Repeat("0123456789", kLength / 10);
    const GpxDocument document =
        ReadGpx(Gpx11("<metadata><name>" + text + "</name></metadata><wpt lat='1' lon='2'><desc>" + text +
                      "</desc></wpt>"));
    EXPECT_TRUE(NameOf(document) == text);
    EXPECT_TRUE(TextOf(*document.GetWaypointIter(), &GpxPoint::GetDescription) == text);
}

// With access by index each step would walk the list from its start, which would take hours instead of
// seconds.
constexpr std::size_t kManyChildren = 200000;

TEST(ReaderDepthTest, ManyWaypointsAreReadInLinearTime) {
    EXPECT_EQ(ReadGpx(Gpx11(Repeat("<wpt lat='1' lon='2'/>", kManyChildren))).GetWaypointCount(),
              kManyChildren);
}

TEST(ReaderDepthTest, ManyTrackPointsAreReadInLinearTime) {
    const GpxDocument document = ReadGpx(
        Gpx11("<trk><trkseg>" + Repeat("<trkpt lat='1' lon='2'/>\n", kManyChildren) + "</trkseg></trk>"));
    const GpxTrack& track = *document.GetTrackIter();
    EXPECT_EQ(track.GetPointCount(track.GetSegmentIter()), kManyChildren);
}

TEST(ReaderDepthTest, ManyRoutePointsAreReadInLinearTime) {
    const GpxDocument document =
        ReadGpx(Gpx11("<rte>" + Repeat("<rtept lat='1' lon='2'/>", kManyChildren) + "</rte>"));
    EXPECT_EQ(document.GetRouteIter()->GetPointCount(), kManyChildren);
}

TEST(ReaderDepthTest, ManySegmentsAreReadInLinearTime) {
    EXPECT_EQ(ReadGpx(Gpx11("<trk>" + Repeat("<trkseg/>", kManyChildren) + "</trk>"))
                  .GetTrackIter()
                  ->GetSegmentCount(),
              kManyChildren);
}

TEST(ReaderDepthTest, ManyChildrenOfEveryKindOfElementAreWalkedInLinearTime) {
    const std::string many = Repeat("<x/>", kManyChildren);
    const std::string cache =
        "<groundspeak:cache>" + many + "<groundspeak:name>C</groundspeak:name><groundspeak:logs>" + many +
        "<groundspeak:log>" + many + "</groundspeak:log></groundspeak:logs>" + "<groundspeak:travelbugs>" +
        many + "</groundspeak:travelbugs></groundspeak:cache>";
    const GpxDocument document = ReadGpx(
        Gpx11("<metadata>" + many + "<extensions>" + many +
              "</extensions></metadata><wpt lat='1' lon='2'><link href='u'>" + many + "</link><extensions>" +
              many + cache + "<formdata>" + many + "</formdata></extensions></wpt>"));
    EXPECT_EQ(LinkOf(*document.GetWaypointIter()), "u|-|-");
    EXPECT_TRUE(GeocacheOf(*document.GetWaypointIter()).has_value());
}

TEST(ReaderDepthTest, ManyAttributesOfOneFormAreReadInGoodTime) {
    std::string strings;
    for (std::size_t i = 0; i < 20000; ++i)
        strings += "<formstring key='k" + std::to_string(i) + "'>v</formstring>";
    const GpxDocument document = ReadGpx(
        Gpx11("<wpt lat='1' lon='2'><extensions><formdata>" + strings + "</formdata></extensions></wpt>"));
    EXPECT_EQ(GpxModelAccess::GetFormAttributes(*document.GetWaypointIter()).size(), 20000u);
}

} // namespace
} // namespace vexaTransferLib
