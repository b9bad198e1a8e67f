// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include <nlohmann/json.hpp>

namespace {

using cli::Folder;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using cli::Tool;
using nlohmann::json;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

const std::string kHead = "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1'>\n";
const std::string kOld =
    "<wpt lat='1' lon='1'><time>2024-05-01T00:00:00Z</time><name>Hut</name><desc>old</desc></wpt>\n";
const std::string kNew =
    "<wpt lat='1' lon='1'><time>2024-05-02T00:00:00Z</time><name>Hut</name><desc>new</desc></wpt>\n";
const std::string kTrack = "<trk><trkseg><trkpt lat='1' lon='1'/><trkpt lat='2' lon='1'/></trkseg></trk>\n";

Result Merge(const Folder& folder, const std::vector<std::string>& options) {
    folder.Write("a.gpx", kHead + kOld + "</gpx>\n");
    folder.Write("b.gpx", kHead + kNew + kTrack + "</gpx>\n");
    std::vector<std::string> arguments = {"merge", "a.gpx", "b.gpx"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunTool(arguments, folder.Path());
}

TEST(MergeToolTest, PutsFilesTogetherAndTellsWhatCame) {
    const Folder folder;
    const Result result = Merge(folder, {"-o", "out.gpx"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "a.gpx\n"
                          "  Document: 1 waypoint replaced by newer versions\n"
                          "  Document: 1 track added, with 2 points\n"
                          "out.gpx was written.\n");
    EXPECT_THAT(
        result.err,
        HasSubstr("Note: 1 waypoint had another version, which was left out; --conflicts FILE keeps such."));
    const std::string text = ReadFile(folder.File("out.gpx"));
    EXPECT_THAT(text, HasSubstr("<desc>new</desc>"));
    EXPECT_THAT(text, Not(HasSubstr("<desc>old</desc>")));
    EXPECT_EQ(ReadFile(folder.File("a.gpx")), kHead + kOld + "</gpx>\n");
}

TEST(MergeToolTest, TheSameMergeTwiceChangesNothing) {
    const Folder folder;
    EXPECT_EQ(Merge(folder, {"-o", "out.gpx"}).status, 0);
    const Result result = RunTool({"merge", "out.gpx", "b.gpx", "a.gpx", "-o", "again.gpx"}, folder.Path());
    EXPECT_EQ(result.out, "out.gpx\nagain.gpx was written without a change.\n");
    EXPECT_EQ(ReadFile(folder.File("again.gpx")), ReadFile(folder.File("out.gpx")));
}

TEST(MergeToolTest, KeepsTheVersionsThatAreLeftOut) {
    const Folder folder;
    const Result result = Merge(folder, {"-o", "out.gpx", "--conflicts", "left.gpx"});
    EXPECT_THAT(result.err, HasSubstr("Note: 1 waypoint had another version, which was left out."));
    EXPECT_THAT(ReadFile(folder.File("left.gpx")), HasSubstr("<desc>old</desc>"));
}

TEST(MergeToolTest, ADryRunWritesNothing) {
    const Folder folder;
    const Result result = Merge(folder, {"--dry-run", "--conflicts", "left.gpx"});
    EXPECT_THAT(result.out, HasSubstr("Nothing was written.\n"));
    EXPECT_THAT(folder.Names(), testing::UnorderedElementsAre("a.gpx", "b.gpx"));
}

TEST(MergeToolTest, TellsItAsJson) {
    const Folder folder;
    const Result result = Merge(folder, {"-o", "out.gpx", "--by", "time", "--json"});
    EXPECT_EQ(json::parse(result.out),
              json::parse(R"({"file":"a.gpx","written":"out.gpx","changeCount":2,"changes":[)"
                          R"({"kind":"replaced","object":"document","count":1},)"
                          R"({"kind":"tracks","object":"document","count":1}]})"));
}

TEST(MergeToolTest, ReplacesNoFileThatItReads) {
    const Folder folder;
    for (const std::vector<std::string>& options :
         {std::vector<std::string>{"-o", "b.gpx"}, {"-o", "out.gpx", "--conflicts", "./a.gpx"}}) {
        const Result result = Merge(folder, options);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, HasSubstr("A merge does not replace what it reads; write another file."));
        EXPECT_THAT(folder.Names(), Not(Contains("out.gpx")));
        EXPECT_EQ(ReadFile(folder.File("a.gpx")), kHead + kOld + "</gpx>\n");
    }
}

TEST(MergeToolTest, TheFirstFileIsReplacedOnlyWhenThatIsWanted) {
    const Folder folder;
    EXPECT_THAT(Merge(folder, {"-o", "./a.gpx"}).err, HasSubstr("or use --in-place. (a.gpx)"));
    EXPECT_EQ(ReadFile(folder.File("a.gpx")), kHead + kOld + "</gpx>\n");
    const Result result = Merge(folder, {"--in-place"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("a.gpx was written.\n"));
    EXPECT_THAT(ReadFile(folder.File("a.gpx")), HasSubstr("<desc>new</desc>"));
}

TEST(MergeToolTest, ResultsThatExcludeEachOtherAreRefused) {
    const Folder folder;
    EXPECT_EQ(Merge(folder, {}).status, 2);
    EXPECT_THAT(Merge(folder, {}).err,
                HasSubstr("-o is missing: a file to write, or --in-place, or --dry-run."));
    EXPECT_THAT(Merge(folder, {"-o", "out.gpx", "--in-place"}).err,
                HasSubstr("--in-place changes the first FILE, and there is an OUT."));
    EXPECT_THAT(Merge(folder, {"-o", "out.gpx", "--conflicts", "-"}).err,
                HasSubstr("--conflicts takes a file, and not standard output."));
    EXPECT_THAT(Merge(folder, {"-o", "out.gpx", "--conflicts", "out.gpx"}).err,
                HasSubstr("-o and --conflicts both write to out.gpx."));
    EXPECT_THAT(folder.Names(), testing::UnorderedElementsAre("a.gpx", "b.gpx"));
}

TEST(MergeToolTest, ConflictsAreWrittenAfterTheResult) {
    const Folder folder;
    const Result result = Merge(folder, {"-o", "none/out.gpx", "--conflicts", "left.gpx"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(folder.Names(), testing::UnorderedElementsAre("a.gpx", "b.gpx"));
}

TEST(MergeToolTest, AFileThatCannotBeReadIsAnErrorAndNothingIsWritten) {
    const Folder folder;
    folder.Write("bad.gpx", "<gpx");
    const Result result = Merge(folder, {"bad.gpx", "-o", "out.gpx"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("bad.gpx"));
    EXPECT_THAT(folder.Names(), Not(Contains("out.gpx")));
}

TEST(MergeToolTest, StandardInputMayBeOneOfTheFiles) {
    const Folder folder;
    folder.Write("a.gpx", kHead + kOld + "</gpx>\n");
    const Result result =
        Tool({"merge", "a.gpx", "-", "-o", "-"}).In(folder.Path()).Stdin(kHead + kTrack + "</gpx>").Run();
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("<trkpt lat='2' lon='1'>"));
}

} // namespace
