// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <thread>

#include <sys/stat.h>

namespace {

using cli::Data;
using cli::Failed;
using cli::Folder;
using cli::Gpx;
using cli::Lines;
using cli::Result;
using cli::RunTool;
using cli::Tool;
using nlohmann::json;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::string kTime = "<time>2009-01-15T10:20:30Z</time>";
const std::string kTimeMember = R"("time":"2009-01-15T10:20:30Z")";
const std::string kVersionLine = "  Version      1.1\n";
const std::string kNothingLine = "  Contents     no waypoint, route or track\n";

/// The member for the head of a GPX 1.1 document.
std::string Head(const std::string& members, const std::string& end) {
    return R"("head":{"version":"1.1",)" + members + R"("end":")" + end + "\"}";
}

/// The JSON of a GPX 1.1 document that has a time and then an object.
std::string WithTimeAndObject(const std::string& file) {
    return R"({"file":")" + file + "\"," + kTimeMember + "," + Head(kTimeMember + ",", "object") + "}\n";
}

std::string Metadata(const std::string& vendorElements, const std::string& time = "") {
    return "<metadata>" + time + "<extensions>" + vendorElements + "</extensions></metadata>";
}

const std::string kAllRecords =
    Metadata("<t:layername>Hikes &amp; walks</t:layername><t:layerkey>k-1</t:layerkey><t:form>survey</t:form>"
             "<t:defaultsymbol>12</t:defaultsymbol><t:trackGUID>t-g</t:trackGUID>"
             "<t:waypointGUID>w-g</t:waypointGUID><t:wptcount>21</t:wptcount><t:trkcount>1</t:trkcount>"
             "<t:trksegcount>3</t:trksegcount><t:trktotalkm>12.5</t:trktotalkm>"
             "<t:geocachecount>44</t:geocachecount>",
             kTime);

/// What `info` prints for a document; there must be no error, and one line of JSON.
std::string InfoOf(const std::string& document, std::vector<std::string> options = {}) {
    const Folder folder;
    folder.Write("t.gpx", document);
    options.insert(options.begin(), "info");
    options.push_back("t.gpx");
    const Result result = RunTool(options, folder.Path());
    EXPECT_EQ(result.status, 0) << document;
    EXPECT_EQ(result.err, "") << document;
    if (options[1] == "--json") {
        EXPECT_EQ(Lines(result.out).size(), 1U) << result.out;
    }
    EXPECT_THAT(result.out, EndsWith("\n"));
    return result.out;
}

/// The same for a document that is a failure.
Result InfoOfWhatIsNotGpx(const std::string& document, std::vector<std::string> options = {}) {
    const Folder folder;
    folder.Write("t.gpx", document);
    options.insert(options.begin(), "info");
    options.push_back("t.gpx");
    Result result = RunTool(options, folder.Path());
    EXPECT_EQ(result.status, 1) << document;
    return result;
}

/// The first line of it.
std::string FirstLineOf(const std::string& document) {
    return Lines(InfoOf(document)).at(0);
}

TEST(InfoTest, OneLineShowsEverythingInTheHead) {
    const std::string line = FirstLineOf(Gpx(kAllRecords));
    EXPECT_THAT(line, StartsWith("t.gpx: "));
    for (const char* item : {"Hikes & walks", "k-1", "survey", "symbol 12", "t-g", "w-g", "21 waypoints",
                             "1 track,", "3 segments", "12.5 km", "44 geocaches", "2009-01-15T10:20:30Z"})
        EXPECT_THAT(line, HasSubstr(item));
}

TEST(InfoTest, OnlyWhatIsFoundIsShown) {
    const std::string line = FirstLineOf(Gpx(Metadata("<t:layername>Hikes</t:layername>")));
    EXPECT_THAT(line, HasSubstr("layer Hikes"));
    for (const char* item : {"key", "form", "GUID", "waypoint", "track", "segment", "geocache", "km"})
        EXPECT_THAT(line, Not(HasSubstr(item)));
    EXPECT_THAT(FirstLineOf(Gpx("")), StartsWith("t.gpx: "));
}

TEST(InfoTest, AWholeNumberOfKilometresIsALengthToo) {
    EXPECT_THAT(FirstLineOf(Gpx(Metadata("<t:trktotalkm>12</t:trktotalkm>"))), HasSubstr("12"));
    EXPECT_THAT(FirstLineOf(Gpx(Metadata("<t:trktotalkm>12</t:trktotalkm>"))), HasSubstr(" km"));
}

TEST(InfoTest, TextsAreShownOnOneLineWithoutTerminalControls) {
    const std::string line = FirstLineOf(Gpx(Metadata("<t:layername>a\nb\tc</t:layername><t:form>\xC2\x9B"
                                                      "31m</t:form>")));
    EXPECT_THAT(line, Not(HasSubstr("\t")));
    EXPECT_THAT(line, Not(HasSubstr("\xC2\x9B")));
}

TEST(InfoTest, JsonHoldsEveryFieldOfAPresentRecordAndNoAbsentOne) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"", ""},
        {"<metadata><time>no time</time></metadata>", ""},
        {"<metadata>" + kTime + "</metadata>", "," + kTimeMember},
        {Metadata("<t:layername/>"),
         R"(,"gisMetaData":{"layerKey":"","layerName":"","form":"","defaultSymbol":1})"},
        {Metadata("<t:defaultsymbol>7</t:defaultsymbol>"),
         R"(,"gisMetaData":{"layerKey":"","layerName":"","form":"","defaultSymbol":7})"},
        {Metadata("<t:trackGUID>g</t:trackGUID>"),
         R"(,"annotateMetaData":{"trackGUID":"g","waypointGUID":""})"},
        {Metadata("<t:trkcount>2</t:trkcount>"),
         R"(,"stats":{"wptcount":0,"trkcount":2,"trksegcount":0,"trktotalkm":0,"geocachecount":-1})"},
        {kAllRecords,
         "," + kTimeMember +
             R"(,"gisMetaData":{"layerKey":"k-1","layerName":"Hikes & walks","form":"survey",)"
             R"("defaultSymbol":12},"annotateMetaData":{"trackGUID":"t-g","waypointGUID":"w-g"},)"
             R"("stats":{"wptcount":21,"trkcount":1,"trksegcount":3,"trktotalkm":12.5,"geocachecount":44})"},
    };
    for (const auto& [elements, members] : rows) {
        const bool hasTime = elements.find(kTime) != std::string::npos;
        EXPECT_EQ(InfoOf(Gpx(elements), {"--json"}), R"({"file":"t.gpx")" + members + "," +
                                                         Head(hasTime ? kTimeMember + "," : "", "endOfFile") +
                                                         "}\n")
            << elements;
    }
}

const std::string kWholeHead =
    "<gpx version='1.0' creator='C &amp; c'><name>Walk\n1</name><desc>D</desc><author>A</author>"
    "<email>e@x.example</email><time>1969-12-31T23:59:59.5Z</time>"
    "<bounds minlat='47.5' minlon='-1' maxlat='48' maxlon='2.25'/><wpt lat='48' lon='2'/></gpx>";

TEST(InfoTest, JsonHoldsTheHeadOfAForeignFile) {
    EXPECT_EQ(
        InfoOf(kWholeHead, {"--json"}),
        R"({"file":"t.gpx","head":{"version":"1.0","creator":"C & c","name":"Walk\n1","description":"D",)"
        R"("time":"1969-12-31T23:59:59.5Z","author":{"name":"A","email":"e@x.example"},"bounds":{"minLatitude":47.5,)"
        R"("minLongitude":-1,"maxLatitude":48,"maxLongitude":2.25},"end":"object"}})"
        "\n");
    EXPECT_EQ(InfoOf("<gpx><time>1970-01-01T00:00:00Z</time></gpx>", {"--json"}),
              R"({"file":"t.gpx","head":{"time":"1970-01-01T00:00:00Z","end":"endOfFile"}})"
              "\n");
    EXPECT_EQ(InfoOf("<gpx><author/></gpx>", {"--json"}),
              R"({"file":"t.gpx","head":{"author":{"name":"","email":""},"end":"endOfFile"}})"
              "\n");
    const Result other = InfoOfWhatIsNotGpx("<other/>", {"--json"});
    EXPECT_EQ(other.out, R"({"file":"t.gpx","head":{"rootName":"other","end":"notGpx"}})"
                         "\n");
    EXPECT_EQ(other.err, "vexagpx: The GPX document element was not found. (t.gpx) Export it as GPX from the "
                         "program that made it.\n");
}

TEST(InfoTest, LinesShowTheHeadOfAForeignFile) {
    EXPECT_EQ(InfoOf(kWholeHead), "t.gpx: 1969-12-31T23:59:59Z\n"
                                  "  Version      1.0\n"
                                  "  Creator      C & c\n"
                                  "  Name         Walk 1\n"
                                  "  Description  D\n"
                                  "  Author       A <e@x.example>\n"
                                  "  Bounds       latitude 47.500000 to 48.000000\n"
                                  "               longitude -1.000000 to 2.250000\n");
    EXPECT_EQ(InfoOf("<gpx><author> A\n</author><name> </name></gpx>"),
              "t.gpx: no vendor metadata and no time\n  Author       A\n" + kNothingLine);
    EXPECT_EQ(InfoOf("<gpx><email>e@x</email><name/></gpx>"),
              "t.gpx: no vendor metadata and no time\n  Author       <e@x>\n" + kNothingLine);
    EXPECT_EQ(InfoOfWhatIsNotGpx("<other/>").out,
              "t.gpx: no vendor metadata and no time\n  Root         other, which is not GPX\n");
}

TEST(InfoTest, ATimeIsShownOnceUnlessTheHeadHasTwo) {
    const std::string time = "<metadata>" + kTime + "</metadata>";
    EXPECT_EQ(InfoOf(Gpx(time)), "t.gpx: 2009-01-15T10:20:30Z\n" + kVersionLine + kNothingLine);
    EXPECT_EQ(InfoOf(Gpx(time + "<extensions><time>2020-01-01T00:00:00Z</time></extensions>")),
              "t.gpx: 2020-01-01T00:00:00Z\n" + kVersionLine + "  Time         2009-01-15T10:20:30Z\n" +
                  kNothingLine);
}

TEST(InfoTest, AFileWithoutObjectsSaysSo) {
    EXPECT_EQ(InfoOf("<gpx/>"), "t.gpx: no vendor metadata and no time\n" + kNothingLine);
    for (const char* object : {"<wpt lat='1' lon='2'/>", "<rte/>", "<trk/>"})
        EXPECT_EQ(InfoOf("<gpx>" + std::string(object) + "</gpx>"),
                  "t.gpx: no vendor metadata and no time\n");
    EXPECT_THAT(InfoOf("<gpx><a>"), Not(HasSubstr(kNothingLine)));
}

TEST(InfoTest, ALineOfTheHeadIsWholeWhereThereIsNoTerminal) {
    const std::string line = Lines(InfoOf("<gpx><name>" + std::string(200, 'x') + "</name></gpx>")).at(1);
    EXPECT_EQ(line, "  Name         " + std::string(200, 'x'));
}

TEST(InfoTest, JsonEscapesTexts) {
    const std::string quoted = Metadata("<t:layername>\"\\ a\nb</t:layername>");
    EXPECT_EQ(json::parse(InfoOf(Gpx(quoted), {"--json"}))["gisMetaData"]["layerName"], "\"\\ a\nb");
    const Folder folder;
    const std::string odd = "a\"\\\n\x1B.gpx";
    folder.Write(odd, Gpx(""));
    const Result result = RunTool({"info", "--json", odd}, folder.Path());
    EXPECT_EQ(Lines(result.out).size(), 1U);
    EXPECT_EQ(json::parse(result.out)["file"], odd);
}

TEST(InfoTest, TheRecordsAreThoseOfADump) {
    const json info = json::parse(RunTool({"info", "--json", Data("hand-written.gpx")}).out);
    const json dump = json::parse(RunTool({"dump", Data("hand-written.gpx")}).out);
    for (const char* member : {"time", "gisMetaData", "annotateMetaData"}) {
        ASSERT_TRUE(dump.contains(member)) << member;
        EXPECT_EQ(info[member], dump[member]) << member;
    }
}

TEST(InfoTest, OnlyTheHeadIsRead) {
    const std::string head =
        "<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'><metadata>" + kTime + "</metadata>";
    for (const std::string rest :
         {"<wpt lat='x'></oops>", "<rte></wpt>", "<trk>", "<wpt lat='1' lon='2'/><<<>"})
        EXPECT_EQ(InfoOf(head + rest, {"--json"}), WithTimeAndObject("t.gpx")) << rest;
    // The parser reads ahead, and wrong bytes there would be an error in the head.
    EXPECT_EQ(InfoOf(head + "<wpt lat='1' lon='2'/>" + std::string(100000, ' ') + "\xFF\xFE", {"--json"}),
              WithTimeAndObject("t.gpx"));
    // The time of a point is not the document's.
    EXPECT_EQ(InfoOf(head + "<wpt lat='1' lon='2'><time>2020-01-01T00:00:00Z</time></wpt></gpx>", {"--json"}),
              WithTimeAndObject("t.gpx"));
}

TEST(InfoTest, WhatPrecedesAnErrorInTheHeadIsKept) {
    const std::string head =
        "<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'><metadata>" + kTime;
    const json cutOff = json::parse(InfoOf(head + "</oops>", {"--json"}));
    EXPECT_EQ(cutOff["time"], "2009-01-15T10:20:30Z");
    EXPECT_EQ(cutOff["head"]["time"], "2009-01-15T10:20:30Z");
    EXPECT_EQ(cutOff["head"]["end"], "illFormed");
    const json error = {{"line", 1}, {"column", 107}, {"message", "expected end of tag 'metadata'"}};
    EXPECT_EQ(cutOff["head"]["error"], error);
    EXPECT_EQ(InfoOfWhatIsNotGpx("no XML", {"--json"}).out,
              R"({"file":"t.gpx","head":{"end":"illFormed","error":{"line":1,"column":1,)"
              R"("message":"invalid document structure"}}})"
              "\n");
}

TEST(InfoTest, ALineReportsAHeadThatIsNotWellFormed) {
    const Result words = InfoOfWhatIsNotGpx("no XML");
    EXPECT_EQ(words.out, "t.gpx: the head is not well-formed XML\n"
                         "  Error        line 1, column 1\n"
                         "               invalid document structure\n");
    EXPECT_EQ(words.err, "vexagpx: The file has no head that can be read. (t.gpx, line 1, column 1: invalid "
                         "document structure) Look where it comes from for the GPX file.\n");
    EXPECT_EQ(InfoOf(Gpx("<metadata>" + kTime + "</metadata></oops>")),
              "t.gpx: 2009-01-15T10:20:30Z, the head is not well-formed XML\n" + kVersionLine +
                  "  Error        line 2, column 57\n"
                  "               expected end of tag 'gpx'\n");
    EXPECT_EQ(InfoOf(Gpx("<metadata>" + kTime + "</metadata><wpt></oops>")),
              "t.gpx: 2009-01-15T10:20:30Z\n" + kVersionLine);
}

TEST(InfoTest, ALargeFileTakesNoMemoryForItsRest) {
    const Folder folder;
    folder.Write("t.gpx", Gpx("<metadata>" + kTime + "</metadata><wpt lat='1' lon='2'/>"));
    constexpr std::uintmax_t kHuge = std::uintmax_t{1} << 40;
    std::error_code error;
    std::filesystem::resize_file(folder.File("t.gpx"), kHuge, error);
    if (error)
        GTEST_SKIP() << "no sparse file of 1 TiB can be made here: " << error.message();
    EXPECT_EQ(RunTool({"info", "--json", "t.gpx"}, folder.Path()).out, WithTimeAndObject("t.gpx"));
}

TEST(InfoTest, FilesThatCannotBeOpenedAreReportedInTheirOrderAndTheOthersAreRead) {
    for (const std::string option : {"--json", "--debug-log=/dev/null"}) {
        const Folder folder;
        folder.Write("a.gpx", Gpx(kAllRecords));
        std::filesystem::create_directory(folder.File("folder.gpx"));
        const std::vector<std::string> arguments = {"info",       option,  "a.gpx", "missing.gpx",
                                                    "folder.gpx", "a.gpx", ""};
        const Result apart = RunTool(arguments, folder.Path());
        for (const char* file : {"missing.gpx (No such", "no archive. (folder.gpx)"})
            EXPECT_TRUE(Failed(apart, file));
        EXPECT_EQ(Lines(apart.err).size(), 3U) << apart.err;
        const std::string lines = RunTool({"info", option, "a.gpx"}, folder.Path()).out;
        EXPECT_EQ(apart.out, lines + lines);
        const Result merged = Tool(arguments).In(folder.Path()).MergeOutput().Run();
        EXPECT_TRUE(merged.out.starts_with(lines + "vexagpx: ")) << merged.out;
        const std::size_t second = merged.out.rfind(lines);
        EXPECT_EQ(Lines(merged.out.substr(lines.size(), second - lines.size())).size(), 2U) << merged.out;
        EXPECT_THAT(Lines(merged.out.substr(second + lines.size())), ElementsAre(StartsWith("vexagpx: ")));
    }
}

TEST(InfoTest, OneFileAfterAnotherKeepsNothingOfTheFirst) {
    const Folder folder;
    folder.Write("full.gpx", Gpx(kAllRecords));
    folder.Write("bare.gpx", Gpx(""));
    const Result result = RunTool({"info", "--json", "full.gpx", "bare.gpx"}, folder.Path());
    EXPECT_THAT(Lines(result.out),
                ElementsAre(HasSubstr("Hikes"), R"({"file":"bare.gpx",)" + Head("", "endOfFile") + "}"));
}

TEST(InfoTest, StandardInputAndANamedPipe) {
    const std::string document = Gpx("<metadata>" + kTime + "</metadata><wpt></oops>");
    const Folder temporary;
    const Result input = Tool({"info", "--json", "-"}).Stdin(document).Set("TMPDIR", temporary.Path()).Run();
    EXPECT_EQ(input.out, WithTimeAndObject("-"));
    EXPECT_EQ(input.status, 0);
    EXPECT_THAT(temporary.Names(), testing::IsEmpty());
    const Folder folder;
    ASSERT_EQ(::mkfifo(folder.File("pipe").c_str(), 0600), 0);
    std::thread writer([&] { folder.Write("pipe", document); });
    const Result pipe = RunTool({"info", "--json", "pipe"}, folder.Path());
    writer.join();
    EXPECT_EQ(pipe.out, WithTimeAndObject("pipe"));
    EXPECT_TRUE(Failed(Tool({"info", "-"}).CloseStdin().Run(), "standard input"));
}

TEST(InfoTest, AFullDeviceIsReported) {
    for (const char* option : {"--json", "--debug-log=/dev/null"})
        EXPECT_TRUE(Failed(Tool({"info", option, Data("hand-written.gpx")}).StdoutTo("/dev/full").Run(),
                           "Unable to write to standard output: No space left on device"));
}

/// How many time elements are before the first waypoint, route or track. Characters other than ASCII do not
/// matter here, so that UTF-16 is read without its zero bytes.
std::size_t TimesInHead(const std::string& path) {
    std::string text = cli::ReadFile(path);
    std::erase(text, '\0');
    std::size_t end = text.size();
    for (const char* element : {"<wpt", "<rte", "<trk"})
        end = std::min(end, text.find(element));
    std::size_t count = 0;
    for (std::size_t at = text.find("<time"); at < end; at = text.find("<time", at + 1))
        ++count;
    return count;
}

// A dump reads the time from its place in the version of GPX; the scanner takes the last time element of the
// head, wherever it is. They must agree where the head has one time element only and the dump has a time;
// without any time element the scanner cannot have one.
TEST(InfoTest, EveryFileOfTheCorpusIsOneLineOfJsonWithTheTimeOfItsDump) {
    std::vector<std::string> files = cli::Corpus("gpx");
    for (const std::string& file : cli::Corpus("gpx-malformed"))
        files.push_back(file);
    if (files.empty())
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    std::vector<std::string> arguments = {"info", "--json"};
    arguments.insert(arguments.end(), files.begin(), files.end());
    const Result all = RunTool(arguments);
    // What is known not to be GPX has a message instead of a line.
    std::erase_if(
        files, [&all](const std::string& file) { return all.err.find(file + " is ") != std::string::npos; });
    const std::vector<std::string> lines = Lines(all.out);
    ASSERT_EQ(lines.size(), files.size());
    std::size_t compared = 0;
    for (std::size_t i = 0; i < files.size(); ++i) {
        const json info = json::parse(lines[i]);
        EXPECT_EQ(info["file"], files[i]);
        const std::size_t times = TimesInHead(files[i]);
        if (times == 0) {
            EXPECT_FALSE(info.contains("time")) << files[i];
        }
        const Result dump = RunTool({"dump", "--as-host", files[i]});
        if (dump.status != 0 || times != 1)
            continue;
        const json document = json::parse(dump.out);
        if (!document.contains("time"))
            continue;
        ++compared;
        ASSERT_TRUE(info.contains("time")) << files[i];
        EXPECT_EQ(info["time"], document["time"]) << files[i];
    }
    EXPECT_GT(compared, files.size() / 3);
}

} // namespace
