// SPDX-License-Identifier: MIT
#include <vexagpx/export/PathGeometry.h>

#include <vexagpx/output/ValueText.h>

#include "export/Reading.h"

namespace {

using cli::PointText;
using vexagpx::NumberDigits;
using vexagpx::PathGeometry;
using vexagpx::Position;
using vexaTransferLib::GpxDocument;

std::string Text(double number) {
    return std::string(NumberDigits(number).Text());
}

/// "1,2 3,4 | 5,6": longitude and latitude of each position, height after a slash, time in seconds after an "@".
std::string LinesOf(const PathGeometry& geometry, bool asLines = true) {
    std::string text;
    for (const vexagpx::PathLine& line : geometry.Lines()) {
        text += text.empty() ? "" : " |";
        line.ForEachPosition(asLines, [&text](const Position& position) {
            text += (text.empty() ? "" : " ") + Text(position.longitude) + "," + Text(position.latitude);
            if (position.height)
                text += "/" + Text(*position.height);
            if (position.time)
                text += "@" + Text(*position.time / 1000.0);
        });
    }
    return text;
}

struct Point {
    std::string longitude;
    std::string latitude = "0";
    std::string content = {};
};

GpxDocument DocumentOf(const std::vector<std::vector<Point>>& segments) {
    std::string text = "<trk>";
    for (const std::vector<Point>& segment : segments) {
        text += "<trkseg>";
        for (const Point& point : segment)
            text += PointText("trkpt", point.latitude, point.longitude, point.content);
        text += "</trkseg>";
    }
    return cli::DocumentOf(text + "</trk>");
}

std::string LinesOf(const std::vector<std::vector<Point>>& segments) {
    const GpxDocument document = DocumentOf(segments);
    return LinesOf(PathGeometry(*document.GetTrackIter()));
}

TEST(PathGeometryTest, EverySegmentWithPointsIsALine) {
    EXPECT_EQ(LinesOf({{{"1"}, {"2"}, {"3"}}, {}, {{"4"}, {"5"}}}), "1,0 2,0 3,0 | 4,0 5,0");
}

TEST(PathGeometryTest, LinesAreCutAtThe180thMeridian) {
    struct Row {
        std::vector<Point> points;
        std::string lines;
    };
    const Row rows[] = {
        {{{"179"}, {"-179", "2"}}, "179,0 180,1 | -180,1 -179,2"},
        {{{"-179"}, {"178", "3"}}, "-179,0 -180,1 | 180,1 178,3"},
        {{{"178"}, {"179"}, {"-179"}, {"-178"}}, "178,0 179,0 180,0 | -180,0 -179,0 -178,0"},
        {{{"179"}, {"-179"}, {"179"}}, "179,0 180,0 | -180,0 -179,0 -180,0 | 180,0 179,0"},
        // A point on the meridian is the end of both lines, and no line by itself.
        {{{"179"}, {"180"}, {"-179"}}, "179,0 180,0 | -180,0 -179,0"},
        {{{"180", "5"}, {"-179"}}, "-180,5 -179,0"},
        {{{"-179"}, {"180", "5"}}, "-179,0 -180,5"},
        {{{"179"}, {"-180", "5"}}, "179,0 180,5"},
        {{{"179"}, {"-180", "5"}, {"-179"}}, "179,0 180,5 | -180,5 -179,0"},
        {{{"180"}, {"-180", "1"}}, "180,0 180,1"},
        {{{"180"}, {"-180", "1"}, {"-179"}}, "180,0 180,1 | -180,1 -179,0"},
        // Half of the world is not more than half.
        {{{"-90"}, {"90"}}, "-90,0 90,0"},
        {{{"0"}, {"180"}}, "0,0 180,0"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(LinesOf({row.points}), row.lines);
}

TEST(PathGeometryTest, HeightAndTimeOfACutAreBetweenThoseOfItsNeighbours) {
    const std::string first = "<ele>100</ele><time>1970-01-01T00:00:10Z</time>";
    const std::string second = "<ele>300</ele><time>1970-01-01T00:00:20Z</time>";
    EXPECT_EQ(LinesOf({{{"179", "0", first}, {"-179", "0", second}}}),
              "179,0/100@10 180,0/200@15 | -180,0/200@15 -179,0/300@20");
    EXPECT_EQ(LinesOf({{{"179", "0", first}, {"-179"}}}), "179,0/100@10 180,0 | -180,0 -179,0");
}

TEST(PathGeometryTest, ASinglePointBesideLinesIsALineOfNoLength) {
    EXPECT_EQ(LinesOf({{{"1"}}, {{"2"}, {"3"}}}), "1,0 1,0 | 2,0 3,0");
}

TEST(PathGeometryTest, SegmentsOfOnePointEachAreNoLines) {
    const GpxDocument document = DocumentOf({{{"1"}}, {}, {{"2"}}});
    const PathGeometry geometry(*document.GetTrackIter());
    EXPECT_TRUE(geometry.IsPoints());
    EXPECT_EQ(LinesOf(geometry, false), "1,0 | 2,0");
    EXPECT_FALSE(PathGeometry(*DocumentOf({{{"1"}}, {{"2"}, {"3"}}}).GetTrackIter()).IsPoints());
}

TEST(PathGeometryTest, ARouteIsOneSegment) {
    const GpxDocument document = cli::DocumentOf("<rte>" + PointText("rtept", "0", "1") +
                                                 PointText("rtept", "0", "2") + "</rte><rte/>");
    EXPECT_EQ(LinesOf(PathGeometry(*document.GetRouteIter())), "1,0 2,0");
    EXPECT_EQ(PathGeometry(*document.GetRouteIter()).SegmentCount(), 1U);
    EXPECT_TRUE(PathGeometry(*(document.GetRouteIter() + 1)).Lines().empty());
}

TEST(PathGeometryTest, PointsAndTimesAreCounted) {
    const GpxDocument document = DocumentOf({{{"179", "0", "<time>1970-01-01T00:00:20Z</time>"}, {"-179"}},
                                             {},
                                             {{"5", "0", "<time>1970-01-01T00:00:10Z</time>"}}});
    const PathGeometry geometry(*document.GetTrackIter());
    EXPECT_EQ(geometry.SegmentCount(), 3U);
    EXPECT_EQ(geometry.PointCount(), 3U);
    EXPECT_EQ(geometry.TimeCount(), 2U);
    EXPECT_EQ(geometry.FirstTime(), 10000.0);
    EXPECT_EQ(geometry.LastTime(), 20000.0);
}

} // namespace
