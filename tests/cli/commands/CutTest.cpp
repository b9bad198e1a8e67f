// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include <vexagpx/commands/Cut.h>

#include <nlohmann/json.hpp>

namespace {

using cli::Folder;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using nlohmann::json;
using testing::HasSubstr;
using testing::Not;
using vexagpx::ParseBox;
using vexagpx::ParseCircle;

constexpr char kWalk[] =
    "<?xml version='1.0'?>\n"
    "<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'>\n"
    "  <metadata><bounds minlat='46' minlon='7' maxlat='47' maxlon='7'/></metadata>\n"
    "  <wpt lat='46' lon='7'><name>Home</name></wpt>\n"
    "  <rte><rtept lat='46' lon='7'/></rte>\n"
    "  <trk><trkseg>\n"
    "    <trkpt lat='46' lon='7'><time>2024-05-01T08:00:00Z</time></trkpt>\n"
    "    <trkpt lat='46.5' lon='7'><time>2024-05-01T09:00:00Z</time></trkpt>\n"
    "    <trkpt lat='47' lon='7'><desc>N 46 00.001 E 7 00.001</desc></trkpt> <!-- the end -->\n"
    "  </trkseg></trk></gpx>\n";

Result Cut(const Folder& folder, std::vector<std::string> options) {
    folder.Write("walk.gpx", kWalk);
    std::vector<std::string> arguments = {"cut", "walk.gpx", "out.gpx"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunTool(arguments, folder.Path());
}

TEST(CutToolTest, LeavesNoTraceOfAPlace) {
    const Folder folder;
    const Result result = Cut(folder, {"--around", "46,7,500m"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "walk.gpx\n"
                          "  Document: 1 waypoint removed\n"
                          "  Document: 1 route point removed, and 1 route with it\n"
                          "  Document: 1 track point removed\n"
                          "  Document: 1 element or comment removed that names a place there\n"
                          "out.gpx was written.\n");
    EXPECT_EQ(ReadFile(folder.File("out.gpx")),
              "<?xml version='1.0'?>\n"
              "<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'>\n"
              "  <metadata><bounds minlat=\"46.5\" minlon=\"7\" maxlat=\"47\" maxlon=\"7\"/></metadata>\n"
              "  <trk><trkseg>\n"
              "    <trkpt lat='46.5' lon='7'><time>2024-05-01T09:00:00Z</time></trkpt>\n"
              "    <trkpt lat='47' lon='7'></trkpt> <!-- the end -->\n"
              "  </trkseg></trk></gpx>\n");
}

TEST(CutToolTest, KeepsOnlyWhatLiesInABox) {
    const Folder folder;
    const Result result = Cut(folder, {"--keep", "--box", "46.2,6,46.8,8"});
    EXPECT_EQ(result.status, 0) << result.err;
    const std::string text = ReadFile(folder.File("out.gpx"));
    EXPECT_THAT(text, HasSubstr("<trkpt lat='46.5' lon='7'>"));
    EXPECT_THAT(text, Not(HasSubstr("lat='46' lon='7'")));
    EXPECT_THAT(text, Not(HasSubstr("<trkpt lat='47'")));
}

TEST(CutToolTest, CutsASpanOfTimeAndTellsOfPointsWithoutTime) {
    const Folder folder;
    const Result result = Cut(folder, {"--from", "2024-05-01", "--to", "2024-05-01T08:00"});
    EXPECT_EQ(result.out, "walk.gpx\n"
                          "  Document: 1 track point removed\n"
                          "  Document: 3 points have no time, and were kept\n"
                          "out.gpx was written.\n");
    EXPECT_THAT(Cut(folder, {"--keep", "--to", "2024-05-01T08:59:59"}).out,
                HasSubstr("  Document: 3 points have no time, and were removed\n"));
}

TEST(CutToolTest, TellsItAsJson) {
    const Folder folder;
    const Result result = Cut(folder, {"--around", "46.25,7,500m", "--json"});
    EXPECT_EQ(json::parse(result.out),
              json::parse(R"({"file":"walk.gpx","written":"out.gpx","changeCount":1,"changes":[)"
                          R"({"kind":"divided","object":"document","holes":1}]})"));
}

TEST(CutToolTest, APlaceWhereNothingIsChangesNothing) {
    const Folder folder;
    const Result result = Cut(folder, {"--around", "10,10,5km"});
    EXPECT_EQ(result.out, "walk.gpx\nout.gpx was written without a change.\n");
    EXPECT_EQ(ReadFile(folder.File("out.gpx")), kWalk);
}

TEST(CutToolTest, ReadsCirclesAndBoxes) {
    EXPECT_TRUE(ParseCircle("46.5,-7.25,2km"));
    EXPECT_TRUE(ParseCircle("46.5, 7.25,15ft"));
    for (const char* text :
         {"", "46,7", "46,7,5", "46,7,5m,1", "91,7,5m", "46,181,5m", "46,7,0m", "a,7,5m", ",,"})
        EXPECT_FALSE(ParseCircle(text)) << text;
    EXPECT_TRUE(ParseBox("-10,170,10,-170"));
    for (const char* text : {"", "1,2,3", "1,2,3,4,5", "3,2,1,4", "1,2,91,4", "1,2,3,181", "1,2,3,x"})
        EXPECT_FALSE(ParseBox(text)) << text;
}

} // namespace
