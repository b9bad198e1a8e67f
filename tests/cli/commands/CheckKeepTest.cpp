// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include "support/ZipBuilder.h"

#include <nlohmann/json.hpp>

namespace {

using cli::Folder;
using cli::Gpx;
using cli::Lines;
using cli::Result;
using cli::RunTool;
using cli::Tool;
using nlohmann::json;
using testing::HasSubstr;

/// What check --keep says of a document on standard input.
Result Checked(const std::string& document, std::vector<std::string> options = {}) {
    std::vector<std::string> arguments = {"check", "--keep", "-"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return Tool(std::move(arguments)).Stdin(document).Run();
}

std::string Gpx10(const std::string& elements) {
    return "<gpx version='1.0' creator='x' xmlns='http://www.topografix.com/GPX/1/0'>" + elements + "</gpx>";
}

const std::string kForeign =
    "<wpt lat='1' lon='2'><hdop>1</hdop><extensions><z xmlns='urn:z'>1</z></extensions></wpt>";

TEST(CheckKeepTest, SaysThatNothingIsLost) {
    const Result result = Checked(Gpx(kForeign));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "-\n"
                          "  Waypoints  1\n"
                          "  Routes     0\n"
                          "  Tracks     0\n"
                          "\n"
                          "Written as GPX 1.1\n"
                          "  Nothing is lost.\n"
                          "\n"
                          "Nothing is lost.\n");
    EXPECT_EQ(Tool({"check", "-"})
                  .Stdin(Gpx("<name>n</name><wpt lat='1' lon='2'><time>noon</time></wpt>"))
                  .Run()
                  .status,
              1);
}

TEST(CheckKeepTest, ListsWhatIsNotAsItShouldBeWithItsLine) {
    const Result result =
        Checked(Gpx("<wpt lat='1' lon='2'><ele>high</ele></wpt>\n<trk/>\n<wpt lat=' 1' lon='2'/>\n"
                    "<wpt lat='91' lon='2'/>"));
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr("\nNot as it should be, but kept\n"));
    EXPECT_THAT(result.out, HasSubstr("gpx/wpt/ele\n      unreadable: \"high\" is not a number.\n"));
    EXPECT_THAT(result.out, HasSubstr("gpx/wpt\n      tolerated: It comes after a route or a track.\n"));
    EXPECT_THAT(result.out, HasSubstr("\nNothing is lost; 5 things are not as it should be, but kept.\n"));
}

TEST(CheckKeepTest, AFileOfVersion10IsWrittenAsBoth) {
    const Result fine = Checked(Gpx10("<wpt lat='1' lon='2'/>"));
    EXPECT_EQ(fine.status, 0);
    EXPECT_THAT(
        fine.out,
        HasSubstr("Written as GPX 1.0\n  Nothing is lost.\n\nWritten as GPX 1.1\n  Nothing is lost.\n"));
    const Result lossy =
        Checked(Gpx10("<trk><trkseg><extensions><z xmlns='urn:z'/></extensions></trkseg></trk>"
                      "<wpt lat='1' lon='2'><link href='u'/><link href='v'/></wpt>"));
    EXPECT_EQ(lossy.status, 1);
    EXPECT_THAT(lossy.out,
                HasSubstr("  link (in waypoint 1): GPX 1.0 has a place for one link only. (lost)\n"));
}

TEST(CheckKeepTest, WritesJson) {
    const json report = json::parse(
        Checked(Gpx10("<wpt lat='1' lon='2'><link href='u'/><link href='v'/></wpt>"), {"--json"}).out);
    EXPECT_EQ(report["lostCount"], 1);
    ASSERT_EQ(report["written"].size(), 2U);
    EXPECT_EQ(report["written"][0],
              json({{"version", "1.0"},
                    {"lostCount", 1},
                    {"unwritten", json::array({{{"element", "link"},
                                                {"message", "GPX 1.0 has a place for one link only."},
                                                {"first", "waypoint 1"},
                                                {"count", 1}}})},
                    {"differences", json::array()}}));
    EXPECT_EQ(report["written"][1]["lostCount"], 0);
    EXPECT_FALSE(json::parse(Tool({"check", "--json", "-"}).Stdin(Gpx("")).Run().out).contains("written"));
    EXPECT_EQ(json::parse(Checked("<gpx version='7'/>", {"--json"}).out)["skipped"][0]["reason"],
              "tolerated");
}

TEST(CheckKeepTest, ArchivesAndFilesThatCannotBeReadAreReported) {
    const Folder folder;
    folder.Write("a.zip", testing_support::BuildZip({{.name = "one.gpx", .content = Gpx(kForeign)},
                                                     {.name = "bad.gpx", .content = "<gpx"}}));
    const Result result = RunTool({"check", "--keep", "a.zip"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("a.zip: one.gpx\n"));
    EXPECT_THAT(result.out, HasSubstr("\n1 file could not be read. Nothing is lost.\n"));
    EXPECT_THAT(result.err, HasSubstr("bad.gpx"));
}

TEST(CheckKeepTest, OfTheCorpusNothingIsLostInVersion11) {
    const std::vector<std::string> files = cli::Corpus("gpx");
    if (files.empty())
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    for (const std::string& file : files) {
        const json report = json::parse(RunTool({"check", "--keep", "--json", file}).out);
        if (report.contains("error"))
            continue;
        EXPECT_EQ(report["written"].back()["lostCount"], 0) << file << report["written"];
    }
}

} // namespace
