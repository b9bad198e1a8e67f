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

TEST(RepairToolTest, MendsTimesAndPointsWhenThatIsWanted) {
    const Folder folder;
    const std::string text =
        kStart +
        "<wpt lat='91' lon='2'/>\n<wpt lat='3' lon='4'><time>2024-07-01T08:00:00</time></wpt>\n</gpx>\n";
    folder.Write("old.gpx", text);
    const Result notes = RunTool({"repair", "old.gpx", "same.gpx"}, folder.Path());
    EXPECT_EQ(notes.status, 0);
    EXPECT_THAT(notes.err,
                HasSubstr("Note: 1 time without a zone; --zone Europe/Zurich, for example, gives one."));
    EXPECT_THAT(
        notes.err,
        HasSubstr("Note: 1 point without a place on the earth; --drop-bad-points removes such points."));
    EXPECT_EQ(ReadFile(folder.File("same.gpx")), text);
    const Result result = RunTool(
        {"repair", "old.gpx", "new.gpx", "--zone", "Europe/Zurich", "--drop-bad-points"}, folder.Path());
    EXPECT_EQ(result.out, "old.gpx\n"
                          "  Line 2: the point <wpt> without a place on the earth is removed\n"
                          "  Line 3: the time 2024-07-01T08:00:00 gets the zone +02:00\n"
                          "new.gpx was written.\n");
    EXPECT_EQ(ReadFile(folder.File("new.gpx")),
              kStart + "\n<wpt lat='3' lon='4'><time>2024-07-01T08:00:00+02:00</time></wpt>\n</gpx>\n");
}

TEST(RepairToolTest, TellsOfEncodings) {
    const Folder folder;
    folder.Write("bytes.gpx", kStart + "<wpt lat='1' lon='2'><name>\xE4</name></wpt></gpx>");
    EXPECT_THAT(RunTool({"repair", "bytes.gpx", "text.gpx"}, folder.Path()).out,
                HasSubstr("  Document: bytes that are no UTF-8 are read as windows-1252\n"));
    const std::string latin = "<?xml version='1.0' encoding='ISO-8859-1'?>" + kStart +
                              "<wpt lat='1' lon='2'><name>\xE4</name></wpt></gpx>";
    folder.Write("latin.gpx", latin);
    EXPECT_THAT(RunTool({"repair", "latin.gpx", "same.gpx"}, folder.Path()).out,
                HasSubstr("was written without a change."));
    EXPECT_EQ(ReadFile(folder.File("same.gpx")), latin);
}

TEST(RepairToolTest, RefusesNoEntitiesOfADocumentType) {
    const Folder folder;
    std::string bomb = "<?xml version='1.0'?><!DOCTYPE gpx [<!ENTITY a 'aaaaaaaaaa'>";
    for (char entity = 'b'; entity < 'l'; ++entity) {
        bomb += std::string("<!ENTITY ") + entity + " '";
        for (int i = 0; i < 10; ++i)
            bomb += std::string("&") + static_cast<char>(entity - 1) + ";";
        bomb += "'>";
    }
    folder.Write("bomb.gpx", bomb + "]>" + kStart + "<wpt lat='1' lon='2'><name>&k;</name></wpt></gpx>");
    const Result result = RunTool({"repair", "bomb.gpx", "safe.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(ReadFile(folder.File("safe.gpx")), HasSubstr("<name>&amp;k;</name>"));
}

} // namespace
