// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include <nlohmann/json.hpp>

namespace {

using cli::Folder;
using cli::Gpx;
using cli::Lines;
using cli::Result;
using cli::RunTool;
using nlohmann::json;
using testing::HasSubstr;

Folder& WriteSamples(Folder& folder) {
    folder.Write("cut.gpx",
                 "<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'><wpt lat='1' lon='2'>");
    folder.Write("fine.gpx", Gpx("<wpt lat='1' lon='2'/>"));
    folder.Write("image.gpx", "\xFF\xD8\xFF\xE0 JFIF");
    folder.Write("lossy.gpx",
                 Gpx("<trk><trkseg><trkpt lat='1' lon='2'><speed>1</speed></trkpt></trkseg></trk>"));
    return folder;
}

TEST(CheckSummaryTest, GroupsTheCausesOfAFolder) {
    Folder folder;
    WriteSamples(folder);
    const Result result = RunTool({"check", "--summary", "."}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out,
                HasSubstr("4 documents: 1 without a loss, 1 with losses, 2 that could not be read.\n"));
    EXPECT_THAT(result.out,
                HasSubstr("  1 file: The file is cut off. Get it again from where it comes; its end is "
                          "missing.\n    ./cut.gpx\n"));
    EXPECT_THAT(result.out, HasSubstr("  1 file: The file has another format."));
    EXPECT_THAT(result.out, HasSubstr("    gpx/trk/trkseg/trkpt/speed (1)\n    ./lossy.gpx:"));
}

TEST(CheckSummaryTest, PrintsOneLineOfJson) {
    Folder folder;
    WriteSamples(folder);
    const Result result = RunTool({"check", "--summary", "--json", "."}, folder.Path());
    EXPECT_EQ(result.status, 1);
    ASSERT_EQ(Lines(result.out).size(), 1U);
    const json summary = json::parse(result.out);
    EXPECT_EQ(summary["documents"], 4);
    EXPECT_EQ(summary["unreadable"], 2);
    EXPECT_EQ(summary["lossy"], 1);
}

TEST(CheckSummaryTest, FilesWithoutALossEndWithSuccess) {
    Folder folder;
    folder.Write("fine.gpx", Gpx("<wpt lat='1' lon='2'/>"));
    const Result result = RunTool({"check", "--summary", "fine.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "1 document: 1 without a loss.\n");
}

TEST(CheckSummaryTest, AMissingFileIsACause) {
    const Folder folder;
    const Result result = RunTool({"check", "--summary", "none.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("1 document: 0 without a loss, 1 that could not be read."));
    EXPECT_THAT(result.out, HasSubstr("none.gpx"));
}

TEST(CheckSummaryTest, IsNotForWhatConvertKeeps) {
    EXPECT_EQ(RunTool({"check", "--summary", "--keep", "a.gpx"}).status, 2);
}

} // namespace
