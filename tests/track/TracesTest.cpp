// SPDX-License-Identifier: MIT
#include <vexaTrackLib/cutting/Traces.h>

#include "support/LocaleScopes.h"
#include "support/Reading.h"

#include <vexaTransferLib/GpxSaver.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace {

using vexaTrackLib::CutArea;
using vexaTrackLib::cutting::RemoveTraces;
using vexaTransferLib::GpxDocument;
using vexaTransferLib::GpxSaver;
using vexaTransferLib::testing_support::CLocaleScope;

const std::string kHead =
    "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1' xmlns:x='urn:x'>";
const std::string kTail = "</gpx>\n";

// What is left of the content of the root without the traces of what is a kilometre around the place 46.5, 7.5.
std::string Left(const std::string& content, std::size_t count) {
    GpxDocument document = track_tests::ReadCompletely(kHead + content + kTail);
    EXPECT_EQ(RemoveTraces(document, CutArea::Around(46.5, 7.5, 1000.0)), count) << content;
    const std::string text = GpxSaver().GetText(document);
    return text.substr(kHead.size(), text.size() - kHead.size() - kTail.size());
}

std::string InExtensions(const std::string& inner) {
    return "<extensions>" + inner + "</extensions>";
}

TEST(TracesTest, AttributesForLatitudeAndLongitudeNameAPlace) {
    for (const char* names : {"lat lon", "latitude longitude", "LAT Long", "Lat lng"}) {
        const std::string both = names;
        const std::size_t blank = both.find(' ');
        const std::string element =
            "<x:home " + both.substr(0, blank) + "=' 46.5 ' " + both.substr(blank + 1) + "='+7.5'/>";
        EXPECT_EQ(Left(InExtensions(element), 1), InExtensions("")) << element;
    }
    EXPECT_EQ(Left(InExtensions("<x:a lat='46.5' lon='8'/>"), 0), InExtensions("<x:a lat='46.5' lon='8'/>"));
    EXPECT_EQ(Left(InExtensions("<x:a lat='46.5'/>"), 0), InExtensions("<x:a lat='46.5'/>"));
    EXPECT_EQ(Left(InExtensions("<x:a x='46.5' y='7.5'/>"), 0), InExtensions("<x:a x='46.5' y='7.5'/>"));
    EXPECT_EQ(Left(InExtensions("<x:a lat='nan' lon='inf'/>"), 0),
              InExtensions("<x:a lat='nan' lon='inf'/>"));
}

TEST(TracesTest, ElementsForLatitudeAndLongitudeNameAPlace) {
    EXPECT_EQ(Left(InExtensions("<x:a><x:lat>46.5</x:lat><x:lon>7.5</x:lon></x:a><x:b/>"), 1),
              InExtensions("<x:b/>"));
    EXPECT_EQ(Left(InExtensions(
                       "<x:a><x:b><x:Latitude>46.5</x:Latitude><x:Longitude>7.5</x:Longitude></x:b></x:a>"),
                   1),
              InExtensions("<x:a></x:a>"));
}

TEST(TracesTest, NumbersHaveAFullStopInEveryLocale) {
    const CLocaleScope german("de_DE.UTF-8");
    if (!german.IsInstalled())
        GTEST_SKIP() << "no locale with a decimal comma";
    EXPECT_EQ(Left(InExtensions("<x:a lat='46.5' lon='7.5'/>"), 1), InExtensions(""));
    EXPECT_EQ(Left("<metadata><desc>46.500, 7.500</desc></metadata>", 1), "<metadata></metadata>");
}

TEST(TracesTest, TextsLinksAndOtherAttributesNameAPlace) {
    EXPECT_EQ(Left("<metadata><desc>at 46.5001, 7.5001</desc><keywords>k</keywords></metadata>", 1),
              "<metadata><keywords>k</keywords></metadata>");
    EXPECT_EQ(
        Left("<metadata><link href='http://m.example/?q=46.5001,7.5001'><text>t</text></link></metadata>", 1),
        "<metadata></metadata>");
    EXPECT_EQ(Left(InExtensions("<x:a place='N 46 30.000 E 7 30.000'/>"), 1), InExtensions(""));
}

TEST(TracesTest, CommentsAndInstructionsNameAPlace) {
    EXPECT_EQ(Left("<!-- home: 46.5001, 7.5001 --><!-- 47.5001, 7.5001 --><?p N46.500 E7.500?>", 2),
              "<!-- 47.5001, 7.5001 -->");
    EXPECT_EQ(Left("<wpt lat='1' lon='2'><name><!-- 46.5001,7.5001 -->n</name></wpt>", 1),
              "<wpt lat='1' lon='2'><name>n</name></wpt>");
}

TEST(TracesTest, WhatIsInPointsRoutesTracksAndSegmentsIsFound) {
    const std::string trace = "<cmt>46.5001 7.5001</cmt>";
    const std::string foreign = InExtensions("<x:a>46.5001 7.5001</x:a>");
    EXPECT_EQ(Left("<wpt lat='1' lon='2'>" + trace + "</wpt>", 1), "<wpt lat='1' lon='2'></wpt>");
    EXPECT_EQ(Left("<rte>" + trace + "<rtept lat='1' lon='2'>" + trace + "</rtept></rte>", 2),
              "<rte><rtept lat='1' lon='2'></rtept></rte>");
    EXPECT_EQ(Left("<trk>" + trace + "<trkseg><trkpt lat='1' lon='2'>" + trace + "</trkpt>" + foreign +
                       "</trkseg></trk>",
                   3),
              "<trk><trkseg><trkpt lat='1' lon='2'></trkpt>" + InExtensions("") + "</trkseg></trk>");
}

TEST(TracesTest, PositionsAndBoundsAreLeftToOthers) {
    const std::string content =
        "<metadata><bounds minlat='46.5' minlon='7.5' maxlat='46.5' maxlon='7.5'/></metadata>"
        "<wpt lat='46.5' lon='7.5'/>";
    EXPECT_EQ(Left(content, 0), content);
}

TEST(TracesTest, ADocumentThatWasNotReadCompletelyHasNone) {
    GpxDocument document;
    EXPECT_EQ(RemoveTraces(document, CutArea::Around(46.5, 7.5, 1000.0)), 0U);
}

} // namespace
