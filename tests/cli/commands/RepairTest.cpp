// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include <fstream>
#include <string>

namespace {

using cli::Folder;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using testing::HasSubstr;

const std::string kStart = "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1'>\n";

TEST(RepairToolTest, ClosesAFileThatIsCutOff) {
    const Folder folder;
    folder.Write("cut.gpx", kStart + "<wpt lat='1' lon='2'/>\n<wpt lat='3' lon='4'><na");
    const Result result = RunTool({"repair", "cut.gpx", "whole.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(ReadFile(folder.File("whole.gpx")), kStart + "<wpt lat='1' lon='2'/>\n</gpx>");
    EXPECT_THAT(result.out, HasSubstr("Line 3: the unfinished <wpt> is left out"));
}

TEST(RepairToolTest, LeavesAReadableFileAsItIs) {
    const Folder folder;
    folder.Write("good.gpx", kStart + "<wpt  lat='1' lon='2'/></gpx >");
    const Result result = RunTool({"repair", "good.gpx", "same.gpx"}, folder.Path());
    EXPECT_EQ(result.out, "good.gpx\nsame.gpx was written without a change.\n");
    EXPECT_EQ(ReadFile(folder.File("same.gpx")), kStart + "<wpt  lat='1' lon='2'/></gpx >");
}

TEST(RepairToolTest, WritesNothingWhenItCannotRepair) {
    const Folder folder;
    folder.Write("text.gpx", "no XML at all");
    const Result result = RunTool({"repair", "text.gpx", "whole.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("There is no element of GPX in it. (text.gpx)"));
    EXPECT_FALSE(std::ifstream(folder.File("whole.gpx")).good());
}

} // namespace
