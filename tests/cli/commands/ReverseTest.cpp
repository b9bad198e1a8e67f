// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include <nlohmann/json.hpp>

namespace {

using cli::Folder;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

constexpr char kWalk[] = "<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'>\n"
                         "<rte><rtept lat='1' lon='1'/><rtept lat='2' lon='2'/></rte>\n"
                         "<trk>\n"
                         "<trkseg><trkpt lat='1' lon='0.10'><time>2020-01-01T00:00:00Z</time></trkpt>"
                         "<trkpt lat='2' lon='0.20'><time>2020-01-01T00:00:10Z</time></trkpt></trkseg>\n"
                         "<trkseg><trkpt lat='3' lon='0.30'/></trkseg>\n"
                         "</trk></gpx>\n";

/// The "lon" of the points, in the order of the file.
std::string Longitudes(const std::string& xml) {
    std::string all;
    for (std::size_t at = xml.find("lon='"); at != std::string::npos; at = xml.find("lon='", at + 1))
        all += xml.substr(at + 5, xml.find('\'', at + 5) - at - 5) + " ";
    return all;
}

TEST(ReverseTest, TurnsTheSegmentsAndThePointsOfEachAround) {
    const Folder folder;
    folder.Write("walk.gpx", kWalk);
    const Result result = RunTool({"reverse", "walk.gpx", "back.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "walk.gpx\n"
                          "  Route 1: 2 points reversed\n"
                          "  Track 1: 3 points reversed, 2 times removed\n"
                          "back.gpx was written.\n");
    const std::string back = ReadFile(folder.File("back.gpx"));
    EXPECT_EQ(Longitudes(back), "2 1 0.30 0.20 0.10 ");
    EXPECT_THAT(back, Not(HasSubstr("time")));
}

TEST(ReverseTest, TimesStayWhenThatIsWanted) {
    const Folder folder;
    folder.Write("walk.gpx", kWalk);
    const Result result =
        RunTool({"reverse", "walk.gpx", "back.gpx", "--keep-times", "--json"}, folder.Path());
    EXPECT_EQ(json::parse(result.out)["changes"][1]["timesRemoved"], 0);
    EXPECT_THAT(ReadFile(folder.File("back.gpx")),
                HasSubstr("<trkpt lat='2' lon='0.20'><time>2020-01-01T00:00:10Z"));
}

TEST(ReverseTest, OnlyTheChosenPathsAreTurned) {
    const Folder folder;
    folder.Write("walk.gpx", kWalk);
    RunTool({"reverse", "walk.gpx", "back.gpx", "--route", "1"}, folder.Path());
    EXPECT_EQ(Longitudes(ReadFile(folder.File("back.gpx"))), "2 1 0.10 0.20 0.30 ");
}

TEST(ReverseTest, TwiceIsNoChangeWhenTimesAreKept) {
    const Folder folder;
    folder.Write("walk.gpx", kWalk);
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(RunTool({"reverse", "walk.gpx", "--in-place", "--keep-times"}, folder.Path()).status, 0);
    EXPECT_EQ(Longitudes(ReadFile(folder.File("walk.gpx"))), Longitudes(kWalk));
}

TEST(ReverseTest, APathOfOnePointIsNoChange) {
    const Folder folder;
    folder.Write("one.gpx", "<gpx version='1.1'><trk><trkseg><trkpt lat='1' lon='2'/></trkseg></trk></gpx>");
    EXPECT_THAT(RunTool({"reverse", "one.gpx", "--dry-run"}, folder.Path()).out,
                HasSubstr("Nothing is to change."));
}

} // namespace
