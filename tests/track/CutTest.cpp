// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Cut.h>

#include "support/Reading.h"

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxSaver.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace vexaTransferLib;
using vexaTrackLib::CutArea;
using vexaTrackLib::CutOut;
using vexaTrackLib::CutResult;
using vexaTrackLib::CutTo;

const std::string kHead =
    "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1' xmlns:x='urn:x'>";
const std::string kTail = "</gpx>\n";
// A kilometre around the place 46, 7.
const CutArea kHome = CutArea::Around(46.0, 7.0, 1000.0);

// A point whose longitude is 7, within home for a latitude of 46.
std::string Point(const std::string& kind, const std::string& latitude, const std::string& inside = "") {
    return "<" + kind + " lat='" + latitude + "' lon='7'>" + inside + "</" + kind + ">";
}
std::string Track(const std::string& latitudes) {
    std::string points;
    for (const char latitude : latitudes) {
        if (latitude == '|')
            points += "</trkseg><trkseg>";
        else
            points += Point("trkpt", std::string("4") + latitude);
    }
    return "<trk><name>t</name><trkseg>" + points + "</trkseg></trk>";
}

struct Cutting {
    std::string text;
    CutResult result;
};

Cutting CutFrom(const std::string& content, const CutArea& area,
                CutResult (*cut)(GpxDocument&, const CutArea&)) {
    GpxDocument document = track_tests::ReadCompletely(kHead + content + kTail);
    Cutting cutting;
    cutting.result = cut(document, area);
    cutting.text = GpxSaver().GetText(document);
    const GpxDocument saved = track_tests::ReadCompletely(cutting.text);
    EXPECT_TRUE(saved == document || cutting.result.traces > 0) << cutting.text;
    EXPECT_TRUE(cutting.text.starts_with(kHead));
    EXPECT_TRUE(cutting.text.ends_with(kTail));
    cutting.text = cutting.text.substr(kHead.size(), cutting.text.size() - kHead.size() - kTail.size());
    return cutting;
}

std::string WithoutHome(const std::string& content) {
    return CutFrom(content, kHome, CutOut).text;
}

TEST(CutTest, WaypointsInTheAreaAreRemoved) {
    const Cutting cutting =
        CutFrom(Point("wpt", "46") + Point("wpt", "47") + Point("wpt", "46.001"), kHome, CutOut);
    EXPECT_EQ(cutting.text, Point("wpt", "47"));
    EXPECT_EQ(cutting.result.waypoints, 2U);
    EXPECT_FALSE(cutting.result.IsNothing());
    EXPECT_EQ(CutFrom(Point("wpt", "46") + Point("wpt", "47"), kHome, CutTo).text, Point("wpt", "46"));
}

TEST(CutTest, AHoleStartsANewSegment) {
    const Cutting cutting = CutFrom(Track("444658"), CutArea::Box({45.5, 6, 46.5, 8}), CutOut);
    EXPECT_EQ(cutting.text, Track("444|5|8"));
    EXPECT_EQ(cutting.result.trackPoints, 1U);
    EXPECT_EQ(cutting.result.holes, 2U);
}

TEST(CutTest, ALineThroughTheAreaIsDivided) {
    const Cutting cutting = CutFrom(Track("4578"), kHome, CutOut);
    EXPECT_EQ(cutting.text, Track("45|78"));
    EXPECT_EQ(cutting.result.trackPoints, 0U);
    EXPECT_EQ(cutting.result.holes, 1U);
    EXPECT_FALSE(cutting.result.IsNothing());
    EXPECT_EQ(CutFrom(Track("66446"), kHome, CutTo).text, Track("66|6"));
}

TEST(CutTest, PointsAtTheEndsOfSegmentsGoWithoutANewSegment) {
    EXPECT_EQ(WithoutHome(Track("6644|4466|6664")), Track("44|44|4"));
}

TEST(CutTest, SegmentsAndTracksThatLoseAllPointsAreRemoved) {
    const Cutting cutting = CutFrom(Track("66|4|") + Track("6|6") + Track(""), kHome, CutOut);
    EXPECT_EQ(cutting.text, Track("4|") + Track(""));
    EXPECT_EQ(cutting.result.tracks, 1U);
    EXPECT_EQ(cutting.result.trackPoints, 4U);
}

TEST(CutTest, ARouteIsDividedIntoSeveralWithAllItsTexts) {
    const std::string head = "<rte><name>r</name><desc>d</desc>";
    const auto route = [&](const std::string& latitudes) {
        std::string points;
        for (const char latitude : latitudes)
            points += Point("rtept", std::string("4") + latitude);
        return head + points + "</rte>";
    };
    const Cutting cutting = CutFrom(route("44688") + route("66") + head + "</rte>", kHome, CutOut);
    EXPECT_EQ(cutting.text, route("44") + route("88") + head + "</rte>");
    EXPECT_EQ(cutting.result.routePoints, 3U);
    EXPECT_EQ(cutting.result.routes, 1U);
    EXPECT_EQ(cutting.result.holes, 1U);
}

TEST(CutTest, WhatIsNotInTheAreaStaysAsItIs) {
    const std::string content =
        "<metadata><bounds minlat='44' minlon='7' maxlat='44.0' maxlon='7'/></metadata>\n" +
        Point("wpt", "44", "<desc>44.001, 7.001</desc>") + "<!-- c -->" + Track("444|44") + "\n";
    const Cutting cutting = CutFrom(content, kHome, CutOut);
    EXPECT_EQ(cutting.text, content);
    EXPECT_TRUE(cutting.result.IsNothing());
}

TEST(CutTest, TheBoundsBecomeThoseOfWhatIsLeft) {
    const std::string bounds = "<bounds minlat='44' minlon='7' maxlat='46' maxlon='7'/>";
    EXPECT_EQ(WithoutHome("<metadata>" + bounds + "</metadata>" + Track("4566")),
              "<metadata><bounds minlat=\"44\" minlon=\"7\" maxlat=\"45\" maxlon=\"7\"/></metadata>" +
                  Track("45"));
    EXPECT_EQ(WithoutHome("<metadata>" + bounds + "</metadata>" + Track("66")), "<metadata></metadata>");
    EXPECT_EQ(WithoutHome("<metadata><bounds minlat='46'/></metadata>" + Track("466")),
              "<metadata></metadata>" + Track("4"));
}

TEST(CutTest, ElementsThatNameAPlaceInTheAreaAreRemoved) {
    const auto kept = [](const std::string& inside) { return WithoutHome(Point("wpt", "44", inside)); };
    const std::string link = "<link href='https://example.org/?at=46.0001,7.0001'/>";
    EXPECT_EQ(kept(link + "<type>t</type>"), Point("wpt", "44", "<type>t</type>"));
    EXPECT_EQ(kept("<desc>N 46\xc2\xb0 00.010 E 7\xc2\xb0 00.010</desc>"), Point("wpt", "44"));
    EXPECT_EQ(kept("<extensions><x:at lat='46' "
                   "lon='7'/><x:b><x:lat>46</x:lat><x:lon>7</x:lon></x:b><x:c/></extensions>"),
              Point("wpt", "44", "<extensions><x:c/></extensions>"));
    EXPECT_EQ(kept("<extensions><x:a><x:b><x:c>46.0001 7.0001</x:c></x:b></x:a><x:d/></extensions>"),
              Point("wpt", "44", "<extensions><x:a><x:b></x:b></x:a><x:d/></extensions>"));
    EXPECT_EQ(WithoutHome("<metadata>" + link +
                          "</metadata><extensions><x:at Latitude='46' Longitude='7.0'/></extensions>"),
              "<metadata></metadata><extensions></extensions>");
}

TEST(CutTest, TracesAreFoundInAllObjects) {
    const std::string trace = "<desc>46.0001 7.0001</desc>";
    EXPECT_EQ(WithoutHome("<rte>" + trace + Point("rtept", "44", trace) + "</rte><trk>" + trace + "<trkseg>" +
                          Point("trkpt", "44", trace) +
                          "<extensions><x:at lat='46' lon='7'/></extensions></trkseg></trk>"),
              "<rte>" + Point("rtept", "44") + "</rte><trk><trkseg>" + Point("trkpt", "44") +
                  "<extensions></extensions></trkseg></trk>");
    const Cutting cutting = CutFrom("<rte>" + trace + Point("rtept", "44", trace) + Point("rtept", "46") +
                                        Point("rtept", "45", trace) + "</rte>",
                                    kHome, CutOut);
    EXPECT_EQ(cutting.text, "<rte>" + Point("rtept", "44") + "</rte><rte>" + Point("rtept", "45") + "</rte>");
    EXPECT_EQ(cutting.result.traces, 3U);
}

TEST(CutTest, APointThatCouldNotBeReadLeavesNoTrace) {
    EXPECT_EQ(
        WithoutHome(
            "<wpt lat='46' lon='7' x:a='b'><name/></wpt><wpt lat='x'><desc>46.0001 7.0001</desc></wpt>"),
        "<wpt lat='x'></wpt>");
}

TEST(CutTest, ASpanOfTimeTakesPointsWithTimes) {
    const auto point = [](const std::string& time) {
        return Point("trkpt", "46", "<time>2024-05-01T" + time + "Z</time>");
    };
    const auto track = [](const std::string& points) { return "<trk><trkseg>" + points + "</trkseg></trk>"; };
    CutArea area;
    area.SetSpan({1714550400000.0, 1714554000000.0}); // 08:00 to 09:00
    const std::string content = track(point("07:59:59") + point("08:00:00") + Point("trkpt", "46") +
                                      point("09:00:00") + point("09:00:01"));
    const Cutting cutting = CutFrom(content, area, CutOut);
    EXPECT_EQ(cutting.text, track(point("07:59:59") + "</trkseg><trkseg>" + Point("trkpt", "46") +
                                  "</trkseg><trkseg>" + point("09:00:01")));
    EXPECT_EQ(cutting.result.withoutTime, 1U);
    EXPECT_EQ(CutFrom(content, area, CutTo).text,
              track(point("08:00:00") + "</trkseg><trkseg>" + point("09:00:00")));
}

TEST(CutTest, ADocumentThatWasNotReadCompletelyIsCut) {
    GpxDocument document;
    document.AddWaypoint(GpxPoint(kGpxWaypoint, 46.0, 7.0));
    document.AddWaypoint(GpxPoint(kGpxWaypoint, 47.0, 7.0));
    EXPECT_EQ(CutOut(document, kHome).waypoints, 1U);
    EXPECT_EQ(document.GetWaypointCount(), 1U);
}

TEST(CutTest, ManyHolesAreCutInOneGo) {
    std::string latitudes;
    for (int i = 0; i < 20000; ++i)
        latitudes += "46";
    const Cutting cutting = CutFrom(Track(latitudes), kHome, CutOut);
    EXPECT_EQ(cutting.result.trackPoints, 20000U);
    EXPECT_EQ(cutting.result.holes, 19999U);
}

} // namespace
