// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include <nlohmann/json.hpp>

namespace {

using cli::Folder;
using cli::Result;
using cli::RunTool;
using cli::Tool;
using nlohmann::json;
using testing::HasSubstr;

const std::string kHead = "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1'>";

std::string Gpx(const std::string& content) {
    return kHead + content + "</gpx>";
}

Result Diff(const std::string& before, const std::string& after,
            const std::vector<std::string>& options = {}) {
    const Folder folder;
    folder.Write("old.gpx", Gpx(before));
    folder.Write("new.gpx", Gpx(after));
    std::vector<std::string> arguments = {"diff", "old.gpx", "new.gpx"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunTool(arguments, folder.Path());
}

TEST(DiffToolTest, FilesThatSayTheSameDoNotDiffer) {
    const Result result = Diff("<wpt lat='1' lon='1'/>", "<wpt lon='1.0' lat='1'></wpt>");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "new.gpx, compared with old.gpx\nNo differences.\n");
    EXPECT_EQ(result.err, "");
}

TEST(DiffToolTest, TellsOfEachObject) {
    const Result result =
        Diff("<metadata><desc>d</desc></metadata>"
             "<wpt lat='1' lon='1'><name>gone</name></wpt>"
             "<wpt lat='2' lon='1'><name>moved</name></wpt>"
             "<wpt lat='3' lon='1'><name>old</name></wpt>"
             "<trk><name>t</name><trkseg><trkpt lat='1' lon='1'><time>2024-05-01T00:00:00Z</time></trkpt>"
             "<trkpt lat='2' lon='1'><time>2024-05-01T00:01:00Z</time></trkpt></trkseg></trk>",
             "<wpt lat='2.001' lon='1'><name>moved</name></wpt>"
             "<wpt lat='3' lon='1'><ele>5</ele><name>new</name></wpt>"
             "<wpt lat='4' lon='1'><name>added</name></wpt>"
             "<trk><name>t</name><trkseg><trkpt lat='1' lon='1'><time>2024-05-01T01:00:00Z</time></trkpt>"
             "</trkseg></trk>");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "new.gpx, compared with old.gpx\n"
                          "  Document: changed: description\n"
                          "  Waypoint 1 (moved): moved by 111 m\n"
                          "  Waypoint 2 (new): was old; changed: height\n"
                          "  Waypoint 3 (added): added\n"
                          "  Waypoint 1 (gone): removed\n"
                          "  Track 1 (t): 1 time changed by up to +1 h, 1 point removed\n"
                          "6 differences.\n");
}

TEST(DiffToolTest, TellsItAsJson) {
    const std::string cache =
        "<name>GC1</name><cache xmlns='http://www.groundspeak.com/cache/1/0/1' available='";
    const Result result = Diff("<wpt lat='1' lon='1'>" + cache + "True'><logs/></cache></wpt>",
                               "<wpt lat='1' lon='1'>" + cache +
                                   "False'><logs><log id='7'><text>t</text></log></logs></cache></wpt>"
                                   "<wpt lat='2' lon='2'/>",
                               {"--json"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(
        json::parse(result.out),
        json::parse(
            R"({"old":"old.gpx","new":"new.gpx","changeCount":2,"changes":[)"
            R"({"kind":"changed","object":"waypoint","number":1,"name":"GC1","oldNumber":1,"logsAdded":1,)"
            R"("isAvailable":false},{"kind":"added","object":"waypoint","number":2}]})"));
}

TEST(DiffToolTest, TellsOfNamesThatCameAndWent) {
    EXPECT_THAT(Diff("<wpt lat='1' lon='1'><name>a</name></wpt>", "<wpt lat='1' lon='1'/>").out,
                HasSubstr("  Waypoint 1: has no name any more; it was a\n"));
    EXPECT_THAT(Diff("<wpt lat='1' lon='1'/>", "<wpt lat='1' lon='1'><name>a</name></wpt>").out,
                HasSubstr("  Waypoint 1 (a): has a name now\n"));
}

TEST(DiffToolTest, OneFileMayBeStandardInput) {
    const Folder folder;
    folder.Write("old.gpx", Gpx("<wpt lat='1' lon='1'/>"));
    const Result result = Tool({"diff", "old.gpx", "-"}).In(folder.Path()).Stdin(Gpx("")).Run();
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("  Waypoint 1: removed\n1 difference.\n"));
}

TEST(DiffToolTest, AFileThatCannotBeReadIsAnErrorWithoutDifferences) {
    const Folder folder;
    folder.Write("old.gpx", Gpx(""));
    folder.Write("bad.gpx", "<gpx");
    for (const char* file : {"bad.gpx", "missing.gpx"}) {
        const Result result = RunTool({"diff", "old.gpx", file}, folder.Path());
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.out, "");
        EXPECT_THAT(result.err, HasSubstr(file));
    }
}

TEST(DiffToolTest, EveryFileOfTheCorpusIsLikeItself) {
    const std::vector<std::string> files = cli::Corpus("gpx");
    if (files.empty())
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    for (const std::string& file : files) {
        const Result result = RunTool({"diff", file, file}, ".");
        EXPECT_TRUE(result.err.empty() ? result.status == 0 : result.status == 2) << file << result.out;
    }
}

} // namespace
