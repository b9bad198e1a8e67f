// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include <nlohmann/json.hpp>

namespace {

using cli::Folder;
using cli::Lines;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using nlohmann::json;
using testing::HasSubstr;

// The second point of the track is 11 m beside the line, the third one on it.
constexpr char kWalk[] = "<?xml version='1.0'?>\n"
                         "<!-- a walk --><gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'>\n"
                         "  <rte><rtept lat='0' lon='0'/>\n"
                         "    <rtept lat='0' lon='0.01'/>\n"
                         "    <rtept lat='0' lon='0.02'/></rte>\n"
                         "  <trk><name>Walk</name><trkseg>\n"
                         "    <trkpt lat='0' lon='0'><ele>1.50</ele></trkpt>\n"
                         "    <trkpt lat='0.0001' lon='0.01'/>\n"
                         "    <trkpt lat='0' lon='0.02'/>\n"
                         "    <trkpt lat='0' lon='0.03'/> <!-- the end -->\n"
                         "  </trkseg></trk></gpx>\n";

std::string Without(std::string text, const std::string& part) {
    const std::size_t at = text.find(part);
    return at == std::string::npos ? "the part is not there" : text.erase(at, part.size());
}

TEST(SimplifyToolTest, LeavesOutPointsWithTheirLinesAndNothingElse) {
    const Folder folder;
    folder.Write("walk.gpx", kWalk);
    const Result result = RunTool({"simplify", "walk.gpx", "short.gpx", "--error", "20m"}, folder.Path());
    EXPECT_EQ(result.status, 0) << result.err;
    std::string expected = Without(kWalk, "    <rtept lat='0' lon='0.01'/>\n");
    expected = Without(expected, "    <trkpt lat='0.0001' lon='0.01'/>\n");
    expected = Without(expected, "    <trkpt lat='0' lon='0.02'/>\n");
    EXPECT_EQ(ReadFile(folder.File("short.gpx")), expected);
    EXPECT_EQ(ReadFile(folder.File("walk.gpx")), kWalk);
}

TEST(SimplifyToolTest, TellsHowManyPointsAreLeftAndHowFarOffTheOthersAre) {
    const Folder folder;
    folder.Write("walk.gpx", kWalk);
    const Result result = RunTool({"simplify", "walk.gpx", "short.gpx", "--error", "20m"}, folder.Path());
    EXPECT_EQ(result.out, "walk.gpx\n"
                          "  Route 1: 2 of 3 points are left, the others are at most 0 m off\n"
                          "  Track 1 (Walk): 2 of 4 points are left, the others are at most 11 m off\n"
                          "short.gpx was written.\n");
}

TEST(SimplifyToolTest, TellsItAsJson) {
    const Folder folder;
    folder.Write("walk.gpx", kWalk);
    const Result result = RunTool(
        {"simplify", "walk.gpx", "short.gpx", "--points", "3", "--track", "1", "--json"}, folder.Path());
    ASSERT_EQ(Lines(result.out).size(), 1U);
    EXPECT_EQ(
        json::parse(result.out),
        json::parse(
            R"({"file":"walk.gpx","written":"short.gpx","changeCount":1,"changes":[{"kind":"simplified",)"
            R"("object":"track","number":1,"name":"Walk","pointsBefore":4,"pointsAfter":3,"farthest":5.53}]})"));
    EXPECT_THAT(ReadFile(folder.File("short.gpx")), HasSubstr("<rtept lat='0' lon='0.01'/>"));
}

TEST(SimplifyToolTest, APathThatHasNoMorePointsIsNotChanged) {
    const Folder folder;
    folder.Write("walk.gpx", kWalk);
    const Result result = RunTool({"simplify", "walk.gpx", "same.gpx", "--points", "4"}, folder.Path());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "walk.gpx\nsame.gpx was written without a change.\n");
    EXPECT_EQ(ReadFile(folder.File("same.gpx")), kWalk);
}

} // namespace
