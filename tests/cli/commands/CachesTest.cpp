// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Caches.h>

#include "support/Session.h"
#include "support/Tool.h"
#include "support/ZipBuilder.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using cli::Data;
using cli::Folder;
using cli::Lines;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

Result CachesOf(std::vector<std::string> options) {
    std::vector<std::string> arguments = {"caches", "query.gpx", "query-wpts.gpx"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunTool(arguments, Data(""));
}

std::vector<std::string> CodesOf(const std::vector<std::string>& options) {
    std::vector<std::string> all = options;
    all.emplace_back("--json");
    const Result result = CachesOf(all);
    EXPECT_EQ(result.err, "");
    std::vector<std::string> codes;
    for (const std::string& line : Lines(result.out))
        if (const json object = json::parse(line); object.contains("code"))
            codes.push_back(object["code"]);
    return codes;
}

std::string RefusalOf(const std::vector<std::string>& options) {
    const Result result = CachesOf(options);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    return Lines(result.err).at(0);
}

TEST(CachesTest, ListsCachesWithTheirCompanionsAndTheOrphans) {
    const Result result = CachesOf({"--hint", "--logs", "1"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, ReadFile(Data("query.caches.txt")));
}

TEST(CachesTest, ShowsDescriptionsAsParagraphsOfPlainText) {
    const Result result = CachesOf({"--text", "--near", "47.5,8.24"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, ReadFile(Data("query.caches-text.txt")));
}

TEST(CachesTest, PrintsJson) {
    const Result result = CachesOf({"--json", "--hint", "--text", "--logs", "9"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, ReadFile(Data("query.caches.jsonl")));
    for (const std::string& line : Lines(result.out))
        EXPECT_TRUE(json::parse(line).is_object());
}

TEST(CachesTest, PrintsCommaSeparatedValues) {
    const Result result = CachesOf({"--csv", "--hint", "--text", "--near", "47.5,8.24", "--logs", "2"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, ReadFile(Data("query.caches.csv")));
    EXPECT_EQ(result.err,
              "vexagpx: Note: the table has no place for logs; --json has.\n"
              "vexagpx: Note: 1 waypoint of geocaches that are in none of the files are not in the "
              "table.\n");
}

TEST(CachesTest, FiltersBySeveralConditions) {
    EXPECT_THAT(CodesOf({}), ElementsAre("GC1ABCD", "GC2WXYZ"));
    EXPECT_THAT(CodesOf({"--where", "difficulty>=4"}), ElementsAre("GC2WXYZ"));
    EXPECT_THAT(CodesOf({"--where", "available", "--where", "difficulty>=4"}), ElementsAre());
    EXPECT_THAT(CodesOf({"--where", "found>2024-05-29 and state~aar"}), ElementsAre("GC1ABCD"));
    EXPECT_THAT(CachesOf({"--where", "available"}).out, HasSubstr("1 geocache of 2"));
}

TEST(CachesTest, SortsAndMeasuresFromAPlace) {
    EXPECT_THAT(CodesOf({"--sort", "-difficulty"}), ElementsAre("GC2WXYZ", "GC1ABCD"));
    EXPECT_THAT(CodesOf({"--sort=terrain"}), ElementsAre("GC2WXYZ", "GC1ABCD"));
    EXPECT_THAT(CodesOf({"--near", "47.61,8.3"}), ElementsAre("GC2WXYZ", "GC1ABCD"));
    EXPECT_THAT(CodesOf({"--near", "47.61,8.3", "--within", "2km"}), ElementsAre("GC2WXYZ"));
    EXPECT_THAT(CodesOf({"--near", "-33.9,151.2", "--sort", "code"}), ElementsAre("GC1ABCD", "GC2WXYZ"));
}

TEST(CachesTest, ReadsArchivesAndFolders) {
    const Folder folder;
    folder.Write("query.zip", testing_support::BuildZip({{"a.gpx", ReadFile(Data("query.gpx"))},
                                                         {"b.gpx", ReadFile(Data("query-wpts.gpx"))}}));
    const std::string expected = CachesOf({}).out;
    EXPECT_EQ(RunTool({"caches", "query.zip"}, folder.Path()).out, expected);
    EXPECT_EQ(RunTool({"caches", "."}, folder.Path()).out, expected);
}

TEST(CachesTest, AFileThatCannotBeReadDoesNotHideTheOthers) {
    const Result result = RunTool({"caches", "missing.gpx", Data("query.gpx")});
    EXPECT_TRUE(cli::Failed(result, "missing.gpx"));
    EXPECT_THAT(result.out, HasSubstr("GC1ABCD"));
}

TEST(CachesTest, AFileWithoutGeocachesHasNone) {
    const Folder folder;
    folder.Write("a.gpx", cli::Gpx("<wpt lat='1' lon='2'/>"));
    const Result result = RunTool({"caches", "a.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "0 geocaches; 1 other waypoint is not listed\n");
    EXPECT_EQ(RunTool({"caches", "--json", "a.gpx"}, folder.Path()).out, "");
}

TEST(CachesTest, RefusalsSayWhatIsWrong) {
    EXPECT_THAT(
        RefusalOf({"--where", "dificulty>=4"}),
        HasSubstr(
            "--where: Column 1: There is no key \"dificulty\"; did you mean \"difficulty\"? The keys "));
    EXPECT_EQ(RefusalOf({"--where", "difficulty>=four"}),
              "vexagpx: --where: Column 13: \"four\" is not a number.");
    EXPECT_THAT(RefusalOf({"--sort", "foun"}), HasSubstr("did you mean \"found\"?"));
    EXPECT_EQ(RefusalOf({"--near", "Zurich"}),
              "vexagpx: --near: must be a latitude and a longitude, such as 47.5,8.25");
    EXPECT_EQ(RefusalOf({"--near", "91,0"}),
              "vexagpx: --near: must be a latitude and a longitude, such as 47.5,8.25");
    EXPECT_THAT(RefusalOf({"--near", "47,8", "--within", "far"}),
                HasSubstr("--within: must be a length, such as"));
    EXPECT_EQ(RefusalOf({"--within", "2km"}), "vexagpx: --within requires --near");
    EXPECT_THAT(RefusalOf({"--json", "--csv"}), HasSubstr("excludes"));
    EXPECT_THAT(RefusalOf({"--logs", "0"}), HasSubstr("--logs: must be a number above 0"));
}

TEST(CachesTest, PlacesAreReadFromTwoNumbers) {
    ASSERT_TRUE(vexagpx::ParsePlace("47.5, -8.25"));
    EXPECT_EQ(vexagpx::ParsePlace("47.5, -8.25")->longitude, -8.25);
    for (const char* const text :
         {"", "47", "47,", ",8", "47;8", "47,181", "-91,8", "nan,8", "47,8,9", "47,8x"})
        EXPECT_FALSE(vexagpx::ParsePlace(text)) << text;
}

class CachesInTerminalTest : public cli::TerminalTest {};

TEST_F(CachesInTerminalTest, FitsTheTerminal) {
    for (const unsigned short columns : std::vector<unsigned short>{40, 80, 200}) {
        cli::Session run({"caches", "query.gpx", "query-wpts.gpx", "--near", "47.5,8.24", "--hint"});
        run.In(Data("")).Columns(columns).OutToTerminal().Start();
        run.Finish();
        std::string screen = run.Screen();
        screen.erase(std::remove(screen.begin(), screen.end(), '\r'), screen.end());
        EXPECT_EQ(screen, ReadFile(Data("query.caches-" + std::to_string(columns) + ".txt")));
    }
}

} // namespace
