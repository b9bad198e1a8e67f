// SPDX-License-Identifier: MIT

// Which points are copied byte for byte: those whose comment is still there.
#include <vexaTransferLib/standard/PointForm.h>

#include "support/StandardWriting.h"

#include <gtest/gtest.h>

#include <string>

namespace vexaTransferLib::standard {
namespace {

using namespace testing_support;

bool IsCopied(const std::string& text, const GpxVersion& version) {
    return StandardText(ReadCompletely(text), version).text.find("<!--here-->") != std::string::npos;
}

bool IsCopiedIn11(const std::string& content) {
    return IsCopied(Gpx11(Waypoint(content + "<!--here-->"), " xmlns:x='urn:x'"), kGpx11);
}
bool IsCopiedIn10(const std::string& content) {
    return IsCopied(Gpx10(Waypoint(content + "<!--here-->"), " xmlns:x='urn:x'"), kGpx10);
}

TEST(PointFormTest, APointInTheOrderOfTheSchemaIsCopied) {
    for (const char* content :
         {"", "<ele>1</ele>", "<ele>1</ele><time>2009-01-15T10:20:30Z</time><name>n</name>", "<ele/>",
          "<ele></ele>", "<ele>x</ele>", "<ele> 1&#48; </ele>", "<time>x</time>",
          "<name>n</name><cmt>c</cmt><desc>d</desc><src>s</src>",
          "<sym>s</sym><type>t</type><fix>3d</fix><sat>1</sat><hdop>1</hdop><vdop>1</vdop>"
          "<pdop>1</pdop><ageofdgpsdata>1</ageofdgpsdata><dgpsid>1</dgpsid>",
          "<magvar>400</magvar>", "<fix>none at all</fix>"}) {
        EXPECT_TRUE(IsCopiedIn11(content)) << content;
        EXPECT_TRUE(IsCopiedIn10(content)) << content;
    }
    EXPECT_TRUE(IsCopiedIn11("<link href='a'/><link href='b'/><sym>s</sym><extensions><x:a/></extensions>"));
    EXPECT_TRUE(IsCopiedIn10("<url>a</url><urlname>n</urlname><sym>s</sym><x:a/>"));
}

TEST(PointFormTest, APointInAnotherOrderIsNot) {
    for (const char* content : {"<time>t</time><ele>1</ele>", "<ele>1</ele><ele>2</ele>",
                                "<name>n</name><time/>", "<unknown/>", "<name/><name/>"}) {
        EXPECT_FALSE(IsCopiedIn11(content)) << content;
        EXPECT_FALSE(IsCopiedIn10(content)) << content;
    }
    EXPECT_FALSE(IsCopiedIn11("<extensions/><sym>s</sym>"));
    EXPECT_FALSE(IsCopiedIn11("<extensions/><extensions/>"));
    EXPECT_FALSE(IsCopiedIn10("<x:a/><sym>s</sym>"));
}

TEST(PointFormTest, APointWithSomethingOfTheOtherVersionIsNot) {
    EXPECT_FALSE(IsCopiedIn11("<url>a</url>"));
    EXPECT_FALSE(IsCopiedIn11("<x:a/>"));
    EXPECT_FALSE(IsCopiedIn11("<speed>1</speed>"));
    EXPECT_FALSE(IsCopiedIn10("<link href='a'/>"));
    EXPECT_FALSE(IsCopiedIn10("<extensions><x:a/></extensions>"));
    EXPECT_FALSE(IsCopiedIn10("<speed>1</speed>"));
    EXPECT_TRUE(IsCopied(Gpx10(TrackPoint("<course>1</course><speed>1</speed><!--here-->")), kGpx10));
    EXPECT_FALSE(IsCopied(Gpx10(TrackPoint("<speed>1</speed><!--here-->")), kGpx11));
    EXPECT_FALSE(IsCopied(Gpx11(TrackPoint("<extensions/><!--here-->")), kGpx10));
}

TEST(PointFormTest, APointThatDeclaresADefaultNamespaceOrHasAPrefixIsNot) {
    const std::string declaration = " xmlns='http://www.topografix.com/GPX/1/1'";
    EXPECT_FALSE(IsCopied(Gpx11("<wpt lat='1' lon='2'" + declaration + "><!--here--></wpt>"), kGpx11));
    EXPECT_FALSE(IsCopiedIn11("<name" + declaration + ">n</name>"));
    EXPECT_FALSE(IsCopied(
        Gpx11("<g:wpt lat='1' lon='2'><!--here--></g:wpt>", " xmlns:g='http://www.topografix.com/GPX/1/1'"),
        kGpx11));
    EXPECT_TRUE(IsCopiedIn11("<name xmlns:y='urn:y'>n</name>"));
    EXPECT_TRUE(IsCopiedIn11("<extensions><a xmlns='urn:a'/></extensions>"));
}

TEST(PointFormTest, APointBelowAnElementThatDeclaresNamespacesIsNotCopiedAsItStands) {
    const std::string text =
        Gpx11("<trk xmlns:y='urn:y'><trkseg><trkpt lat='1' lon='2'><extensions><y:a/></extensions>"
              "<!--here--></trkpt></trkseg></trk>");
    EXPECT_FALSE(IsCopied(text, kGpx11));
    EXPECT_NE(StandardText(ReadCompletely(text), kGpx11).text.find("<y:a"), std::string::npos);
}

TEST(PointFormTest, TheFormHasTheNumbersOfThePoint) {
    GpxDocument document =
        ReadCompletely(Gpx11(Waypoint("<ele>1.5</ele><time>1970-01-01T00:00:01Z</time><!--here-->")));
    const auto isCopiedWith = [&](void (*change)(GpxPoint&)) {
        GpxDocument changed;
        GpxPoint point = *document.GetWaypointIter();
        change(point);
        changed.AddWaypoint(point);
        return StandardText(changed, kGpx11).text.find("<!--here-->") != std::string::npos;
    };
    EXPECT_TRUE(isCopiedWith([](GpxPoint&) {}));
    EXPECT_TRUE(isCopiedWith([](GpxPoint& point) { point.SetElevation(1.5); }));
    EXPECT_TRUE(isCopiedWith([](GpxPoint& point) { point.SetTime(1000.0); }));
    EXPECT_FALSE(isCopiedWith([](GpxPoint& point) { point.SetElevation(1.6); }));
    EXPECT_FALSE(isCopiedWith([](GpxPoint& point) { point.SetTime(1001.0); }));
    EXPECT_FALSE(isCopiedWith([](GpxPoint& point) { point.SetFix(kGpxFix2D); }));
    EXPECT_FALSE(isCopiedWith([](GpxPoint& point) { point.SetName(u"n"); }));
}

} // namespace
} // namespace vexaTransferLib::standard
