// SPDX-License-Identifier: MIT
#include <vexagpx/export/PathProperties.h>

#include "export/Features.h"
#include "export/Reading.h"

namespace {

using cli::PointText;
using vexagpx::ExportHead;
using vexagpx::LeftOut;
using vexagpx::Properties;
using vexaTransferLib::GpxDocument;

TEST(PathPropertiesTest, TracksHaveTheirElements) {
    const GpxDocument document = cli::DocumentOf(
        "<trk><name>n</name><cmt>c</cmt><desc>d</desc><src>s</src><link href='a'/><number>3</number>"
        "<type>t</type><extensions><v:color "
        "xmlns:v='http://example.org/other'>7</v:color></extensions><trkseg>" +
        PointText("trkpt", "1", "2", "<name>point</name>") +
        "<extensions><x xmlns='urn:x'>1</x></extensions></trkseg></trk>");
    Properties properties;
    LeftOut missing;
    TakeTrack(*document.GetTrackIter(), properties, missing);
    properties.Sort();
    EXPECT_EQ(cli::TextOf(properties), "number=3 name=n cmt=c desc=d src=s links=a type=t");
    EXPECT_EQ(missing.extensions, 2U);
}

TEST(PathPropertiesTest, UnknownElementsOfGpxAreCounted) {
    const GpxDocument document = cli::DocumentOf("<trk><time>2009-01-15T10:20:30Z</time></trk>");
    Properties properties;
    LeftOut missing;
    TakeTrack(*document.GetTrackIter(), properties, missing);
    EXPECT_EQ(properties.Size(), 0U);
    EXPECT_EQ(missing.extensions, 1U);
}

TEST(PathPropertiesTest, RoutesHaveTheirElements) {
    const GpxDocument document = cli::DocumentOf("<rte><name>n</name><desc>d</desc><number>0</number>" +
                                                 PointText("rtept", "1", "2", "<cmt>point</cmt>") + "</rte>");
    Properties properties;
    LeftOut missing;
    TakeRoute(*document.GetRouteIter(), properties, missing);
    properties.Sort();
    EXPECT_EQ(cli::TextOf(properties), "number=0 name=n desc=d");
    EXPECT_EQ(missing.extensions, 0U);
}

TEST(PathPropertiesTest, PlainPointsAreFoundByCountingTags) {
    const std::string plain = PointText("trkpt", "1", "2", "<ele>1</ele><time>2009-01-15T10:20:30Z</time>") +
                              PointText("trkpt", "1", "2") + "<trkpt lat='1' lon='2'/>";
    struct Row {
        std::string track;
        bool isPlain;
    };
    const Row rows[] = {
        {"<trk/>", true},
        {"<trk><trkseg/></trk>", true},
        {"<trk><trkseg>" + plain + "</trkseg><trkseg>" + plain + "</trkseg></trk>", true},
        {"<trk><name>a</name><link href='b'><text>c</text></link><extensions><x "
         "xmlns='urn:x'><y/></x></extensions>"
         "<trkseg>" +
             plain + "<extensions><x xmlns='urn:x'/></extensions></trkseg></trk>",
         true},
        {"<trk><trkseg>" + plain + PointText("trkpt", "1", "2", "<sat>3</sat>") + "</trkseg></trk>", false},
        {"<trk><trkseg>" + plain + PointText("trkpt", "1", "2", "<extensions/>") + "</trkseg></trk>", false},
        {"<trk><trkseg>" + plain + PointText("trkpt", "1", "2", "<ele>x</ele>") + "</trkseg></trk>", false},
        {"<trk><trkseg>" + plain + PointText("trkpt", "91", "2") + "</trkseg></trk>", false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(vexagpx::HasPlainPoints(*cli::DocumentOf(row.track).GetTrackIter()), row.isPlain)
            << row.track;
    const std::string route = "<rte><name>a</name>" + PointText("rtept", "1", "2", "<ele>1</ele>");
    EXPECT_TRUE(vexagpx::HasPlainPoints(*cli::DocumentOf(route + "</rte>").GetRouteIter()));
    EXPECT_FALSE(vexagpx::HasPlainPoints(
        *cli::DocumentOf(route + PointText("rtept", "1", "2", "<name>b</name>") + "</rte>").GetRouteIter()));
}

TEST(PathPropertiesTest, TheHeadHasNameDescriptionAndTime) {
    const GpxDocument document = cli::DocumentOf(
        "<metadata><name>n</name><desc>d</desc><author><name>a</name><email id='i' domain='d'/></author>"
        "<time>1970-01-01T00:00:01Z</time><keywords>k</keywords>"
        "<bounds minlat='1' minlon='1' maxlat='1' maxlon='1'/></metadata>");
    LeftOut missing;
    const ExportHead head = HeadOf(document, missing);
    EXPECT_EQ(head.name, u"n");
    EXPECT_EQ(head.description, u"d");
    EXPECT_EQ(head.time, 1000.0);
    EXPECT_EQ(missing.metadata, 4U);
    EXPECT_EQ(CountValues(head), 3U);
}

} // namespace
