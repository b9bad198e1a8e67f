// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxTrack.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include "support/ContractChecks.h"
#include "support/IcuMemory.h"
#include "support/ModelDoors.h"
#include "support/TestFiles.h"

#include <common/dbc.h>

#include <string>

using namespace vexaTransferLib;
using testing_support::ModelDoors;
using testing_support::RefusedIcuMemory;
using testing_support::Utf8;

namespace {

constexpr char kSource[] = "LibCore/vexaTransferLib/GpxTrack.cpp";
constexpr char kPointSource[] = "LibCore/vexaTransferLib/GpxPoint.cpp";

std::string Written(const GpxTrack& track, unsigned long minor) {
    icu::UnicodeString out;
    track.AppendToString(GpxVersion(1, minor), out);
    return Utf8(out);
}

std::string InTrack(const std::string& lines) {
    return "<trk>\r\n" + lines + "</trk>\r\n";
}

std::string ColorBlock(const std::string& number) {
    return "<extensions>\r\n\t<tarvik:color>" + number + "</tarvik:color>\r\n</extensions>\r\n";
}

GpxTrack FullTrack() {
    GpxTrack track;
    track.SetName(u"name & <more>");
    track.SetDescription(u"description's");
    track.SetSource(u"source");
    track.SetType(u"\"type\"");
    GpxUrl url(u"a");
    url.SetUrlText(u"text");
    url.SetUrlType(u"link type");
    track.SetURL(url);
    GpxModelAccess::SetColor(track, 0);
    track.AddSegment();
    track.AddSegment();
    GpxPoint point(kGpxTrackPoint, 1.0, 2.0);
    point.SetURL(GpxUrl(u"b"));
    track.AddPoint(point);
    track.AddPoint(GpxPoint(kGpxTrackPoint, 3.0, 4.0));
    track.AddSegment();
    track.AddPoint(GpxPoint(kGpxTrackPoint, 5.0, 6.0));
    return track;
}

} // namespace

TEST(GpxTrackWriterTest, AnEmptyTrackIsTwoLines) {
    EXPECT_EQ(Written(GpxTrack(), 0), InTrack(""));
    EXPECT_EQ(Written(GpxTrack(), 1), InTrack(""));
}

TEST(GpxTrackWriterTest, EverythingInOrder) {
    const std::string texts =
        "<name>name &amp; &lt;more&gt;</name>\r\n<desc>description&apos;s</desc>\r\n<src>source</src>\r\n";
    const std::string rest =
        "<trkpt lat=\"3.000000000\" lon=\"4.000000000\">\r\n</trkpt>\r\n</trkseg>\r\n"
        "<trkseg>\r\n<trkpt lat=\"5.000000000\" lon=\"6.000000000\">\r\n</trkpt>\r\n</trkseg>\r\n";
    const std::string segments =
        "<trkseg>\r\n</trkseg>\r\n<trkseg>\r\n<trkpt lat=\"1.000000000\" lon=\"2.000000000\">\r\n";
    EXPECT_EQ(Written(FullTrack(), 0),
              InTrack(texts + "<url>a</url>\r\n<urlname>text</urlname>\r\n" + ColorBlock("0") + segments +
                      "<url>b</url>\r\n</trkpt>\r\n" + rest));
    EXPECT_EQ(Written(FullTrack(), 1),
              InTrack(texts +
                      "<link href=\"a\">\r\n<text>text</text>\r\n<type>link type</type>\r\n</link>\r\n" +
                      "<type>&quot;type&quot;</type>\r\n" + ColorBlock("0") + segments +
                      "<link href=\"b\">\r\n</link>\r\n</trkpt>\r\n" + rest));
}

TEST(GpxTrackWriterTest, ColourIsGroupedAndWrittenFromZeroInBothVersions) {
    const struct {
        std::int16_t color;
        std::string expected;
    } rows[] = {
        {-32768, ""},
        {-1, ""},
        {0, ColorBlock("0")},
        {1024, ColorBlock("1,024")},
        {12345, ColorBlock("12,345")},
        {32767, ColorBlock("32,767")},
    };
    for (const auto& row : rows) {
        GpxTrack track;
        GpxModelAccess::SetColor(track, row.color);
        EXPECT_EQ(Written(track, 0), InTrack(row.expected));
        EXPECT_EQ(Written(track, 1), InTrack(row.expected));
    }
}

TEST(GpxTrackWriterTest, Appends) {
    icu::UnicodeString out(u"before ");
    GpxTrack().AppendToString(GpxVersion(1, 1), out);
    EXPECT_EQ(Utf8(out), "before " + InTrack(""));
}

TEST(GpxTrackWriterTest, RefusesUnknownVersionsAndAppendsNothing) {
    for (const GpxVersion& version :
         {ModelDoors::MakeVersion(1, 2), ModelDoors::MakeVersion(2, 1), ModelDoors::MakeVersion(0, 0)}) {
        icu::UnicodeString out(u"before");
        EXPECT_FAILURE(FullTrack().AppendToString(version, out), dbc::precondition_error,
                       "GPX tracks can only be written to version 1.0 or 1.1 files.", kSource);
        EXPECT_EQ(Utf8(out), "before");
    }
}

TEST(GpxTrackWriterTest, AnExceptionOfAPointPassesAndTheTextBeforeIsKept) {
    GpxTrack track;
    track.AddSegment();
    GpxPoint bad(kGpxTrackPoint, 3.0, 4.0);
    ModelDoors::SetFix(bad, 255);
    track.AddPoint(bad);
    icu::UnicodeString out;
    EXPECT_FAILURE(track.AppendToString(GpxVersion(1, 0), out), dbc::invariant_error,
                   "Unable to write an unknown GPS fix type.", kPointSource);
    EXPECT_EQ(Utf8(out), "<trk>\r\n<trkseg>\r\n<trkpt lat=\"3.000000000\" lon=\"4.000000000\">\r\n");
}

TEST(GpxTrackWriterTest, ReportsATextThatMemoryCannotHold) {
    GpxTrack track;
    track.SetName(icu::UnicodeString(20000, u'x', 20000));
    icu::UnicodeString out;
    {
        const RefusedIcuMemory refused = RefusedIcuMemory::Above(4096);
        EXPECT_FAILURE(track.AppendToString(GpxVersion(1, 1), out), dbc::postcondition_error,
                       "The GPX text is too large to be held in memory.", kSource);
    }
    EXPECT_TRUE(out.isBogus());
}

TEST(GpxTrackWriterTest, ReportsATextThatWasGivenUpBefore) {
    icu::UnicodeString out;
    out.setToBogus();
    EXPECT_FAILURE(GpxTrack().AppendToString(GpxVersion(1, 1), out), dbc::postcondition_error,
                   "The GPX text is too large to be held in memory.", kSource);
}
