// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include "support/ZipBuilder.h"

#include <nlohmann/json.hpp>

#include <sys/stat.h>

namespace {

using cli::Data;
using cli::Folder;
using cli::Gpx;
using cli::Lines;
using cli::Result;
using cli::RunTool;
using cli::Tool;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

/// A file that has a name, after everything else: otherwise a name that is invented would be reported.
std::string Named(const std::string& children) {
    return Gpx(children + "<name>n</name>");
}

// The line and column of an element are those of the end of its start tag.
const std::string kMixed = "<wpt lat='1' lon='2'><ele>high</ele><hdop>1</hdop><time>noon</time></wpt>\n"
                           "<trk><trkseg>\n"
                           "<trkpt lat='1' lon='2'><t:hr>99</t:hr></trkpt>\n"
                           "<trkpt lat='1' lon='2'><t:hr>98</t:hr></trkpt>\n"
                           "</trkseg></trk>\n"
                           "<wpt lat='1' lon='2'/>";

TEST(CheckTest, ReportsWhatWasReadAndWhatWasSkipped) {
    const Folder folder;
    folder.Write("walk.gpx", Named(kMixed));
    const Result result = RunTool({"check", "walk.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "walk.gpx\n"
                          "  Waypoints  1\n"
                          "  Routes     0\n"
                          "  Tracks     1 (1 segment, 2 points)\n"
                          "\n"
                          "Skipped or changed\n"
                          "  2:27  gpx/wpt/ele (lost)\n"
                          "      unreadable: \"high\" is not a number.\n"
                          "  2:43  gpx/wpt/hdop (lost)\n"
                          "      unknown-element: The library does not keep this element.\n"
                          "  2:57  gpx/wpt/time (lost)\n"
                          "      unreadable: \"noon\" is not a time.\n"
                          "  4:30  gpx/trk/trkseg/trkpt/hr (lost)\n"
                          "      foreign-namespace: Its namespace is "
                          "\"https://tarvik.example/xmlschemas/gpx-extensions/1/0\", not that of GPX 1.1.\n"
                          "      2 times, at 4:30, 5:30\n"
                          "  7:23  gpx/wpt (lost)\n"
                          "      out-of-order: It comes after a route or a track.\n"
                          "\n"
                          "6 things were skipped or changed, and all of them are losses.\n");
}

TEST(CheckTest, AFileThatIsReadWholeIsASuccess) {
    const Folder folder;
    folder.Write("walk.gpx", Named("<rte><rtept lat='1' lon='2'/></rte>"));
    const Result result = RunTool({"check", "walk.gpx", "walk.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 0);
    const std::string report = "walk.gpx\n  Waypoints  0\n  Routes     1 (1 point)\n  Tracks     0\n\n";
    EXPECT_EQ(result.out, report + report + "Everything was read.\n");
}

TEST(CheckTest, SkippingAnElementThatNoDocumentCanHoldIsAFailure) {
    const Folder folder;
    folder.Write("walk.gpx", Named("<wpt lat='1' lon='2'><hdop>1</hdop></wpt>"));
    const Result result = RunTool({"check", "walk.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(Lines(result.out).back(), "1 thing was skipped or changed, which is a loss.");
}

TEST(CheckTest, SkippingAnElementThatSaysNothingIsNoFailure) {
    const Folder folder;
    folder.Write("walk.gpx", Named("<wpt lat='1' lon='2'><hdop/></wpt><extensions> </extensions>"));
    const Result result = RunTool({"check", "walk.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(Lines(result.out).back(),
              "Everything that a document can hold was read. 2 other things were skipped or changed.");
}

TEST(CheckTest, AttributesAndValuesThatAreNotKeptAreLosses) {
    const Folder folder;
    folder.Write("walk.gpx",
                 "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1'>\n"
                 "<wpt lat='1.0123456789' lon='2' id='3'/>\n<wpt lat='1.0123456788' lon='2' id='4'/>\n"
                 "</gpx>");
    const Result result = RunTool({"check", "walk.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out,
                HasSubstr("\nSkipped or changed\n"
                          "  1:74  gpx@creator\n"
                          "      unread-attribute: The library does not keep this attribute.\n"
                          "  1:74  gpx\n"
                          "      invented: The document's name is not from the file, which has none.\n"
                          "  2:41  gpx/wpt@lat (lost)\n"
                          "      rounded: Only 9 decimals are written.\n"
                          "      2 times, at 2:41, 3:41\n"
                          "  2:41  gpx/wpt@id (lost)\n"
                          "      unread-attribute: The library does not keep this attribute.\n"
                          "      2 times, at 2:41, 3:41\n"
                          "\n"
                          "6 things were skipped or changed, and 4 of them are losses.\n"));
    const json report = json::parse(RunTool({"check", "--json", "walk.gpx"}, folder.Path()).out);
    EXPECT_EQ(report["skipped"][0]["attribute"], "creator");
    EXPECT_FALSE(report["skipped"][1].contains("attribute"));
    EXPECT_EQ(report["skipped"][2]["element"], "gpx/wpt");
    EXPECT_EQ(report["skipped"][2]["reason"], "rounded");
    EXPECT_EQ(report["lostCount"], 4);
}

TEST(CheckTest, CountsGeocachesTheirLogsAndTravelBugs) {
    EXPECT_THAT(RunTool({"check", Data("hand-written.gpx")}).out,
                HasSubstr("\n  Waypoints  2 (1 geocache, 2 logs, 2 travel bugs)\n"
                          "  Routes     2 (2 points)\n"
                          "  Tracks     2 (3 segments, 4 points)\n"));
}

std::string Points(int count, const std::function<std::string(int)>& content) {
    std::string points = "<trk><trkseg>\n";
    for (int i = 0; i < count; ++i)
        points += "<trkpt lat='1' lon='2'>" + content(i) + "</trkpt>\n";
    return points + "</trkseg></trk>";
}

TEST(CheckTest, EqualThingsAreOneEntryWithItsFirstTenLocations) {
    const Folder folder;
    folder.Write("a.gpx", Named(Points(1000, [](int) { return "<ele>x</ele>"; })));
    const Result result = RunTool({"check", "a.gpx"}, folder.Path());
    EXPECT_THAT(result.out, HasSubstr("\nSkipped or changed\n"
                                      "  3:29  gpx/trk/trkseg/trkpt/ele (lost)\n"
                                      "      unreadable: \"x\" is not a number.\n"
                                      "      1000 times, first at 3:29, 4:29, 5:29, 6:29, 7:29, 8:29, 9:29, "
                                      "10:29, 11:29, 12:29\n"
                                      "\n"
                                      "1000 things were skipped or changed, and all of them are losses.\n"));
}

TEST(CheckTest, AllListsEachByItself) {
    const Folder folder;
    folder.Write("a.gpx", Named(Points(1000, [](int) { return "<ele>x</ele>"; })));
    const std::string out = RunTool({"check", "--all", "a.gpx"}, folder.Path()).out;
    for (const int line : {3, 500, 1002})
        EXPECT_THAT(out, HasSubstr("\n  " + std::to_string(line) +
                                   ":29  gpx/trk/trkseg/trkpt/ele (lost)\n      unreadable: \"x\""));
    EXPECT_THAT(out, Not(HasSubstr(" times")));
    EXPECT_EQ(Lines(out).back(), "1000 things were skipped or changed, and all of them are losses.");
}

TEST(CheckTest, ManyTextsOfOneKindAreNotAllListed) {
    const Folder folder;
    folder.Write("a.gpx", Named(Points(1000, [](int i) { return "<ele>x" + std::to_string(i) + "</ele>"; })));
    const std::string out = RunTool({"check", "a.gpx"}, folder.Path()).out;
    EXPECT_THAT(out, HasSubstr("  12:29  gpx/trk/trkseg/trkpt/ele (lost)\n"
                               "      unreadable: \"x9\" is not a number.\n"
                               "  13:29  gpx/trk/trkseg/trkpt/ele (lost)\n"
                               "      unreadable: More of this kind, which --all lists.\n"
                               "      990 times, first at 13:29, "));
    EXPECT_THAT(RunTool({"check", "--all", "a.gpx"}, folder.Path()).out,
                HasSubstr("  1002:29  gpx/trk/trkseg/trkpt/ele (lost)\n"
                          "      unreadable: \"x999\" is not a number.\n"));
}

TEST(CheckTest, AFileWithADocumentTypeHasNoLocations) {
    const Folder folder;
    folder.Write("a.gpx",
                 "<!DOCTYPE gpx>" + Named("<wpt lat='1' lon='2'><hdop>1</hdop><hdop>1</hdop></wpt>"));
    EXPECT_THAT(RunTool({"check", "--trust", "a.gpx"}, folder.Path()).out,
                HasSubstr("  -  gpx/wpt/hdop (lost)\n"
                          "      unknown-element: The library does not keep this element.\n"
                          "      2 times\n"));
    const json report = json::parse(RunTool({"check", "--trust", "--json", "a.gpx"}, folder.Path()).out);
    EXPECT_EQ(report["skipped"][0]["places"], json::array());
}

TEST(CheckTest, AFileThatCannotBeReadShowsOnlyWhatTheParserSaid) {
    const Folder folder;
    folder.Write("good.gpx", Named(""));
    folder.Write("bad.gpx", "<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'>\n"
                            "<wpt lat='1' lon='2'><ele>x</ele></wpt><wpt");
    folder.Write("other.gpx", Named("<wpt/>"));
    const Result result =
        RunTool({"check", "bad.gpx", "good.gpx", "other.gpx", "missing.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, StartsWith("bad.gpx\n"
                                       "  It could not be read.\n"
                                       "\n"
                                       "Messages of the XML parser\n"
                                       "  2:44  fatal-error: "));
    EXPECT_THAT(result.out, Not(HasSubstr("other.gpx")));
    EXPECT_THAT(result.out, Not(HasSubstr("Skipped")));
    EXPECT_EQ(Lines(result.out).back(), "3 files could not be read. Everything else was read.");
    EXPECT_THAT(Lines(result.err),
                ElementsAre(HasSubstr("bad.gpx (line 2, column 44: "),
                            "vexagpx: Unable to read a GPX point's latitude. (other.gpx, line 2, column 7) "
                            "Remove the point, or correct its lat and lon.",
                            HasSubstr("missing.gpx")));
}

TEST(CheckTest, AMessageAboutAnotherFileNamesIt) {
    const Folder folder;
    folder.Write("bad.xml", "<a>");
    folder.Write("a.gpx", "<!DOCTYPE gpx [<!ENTITY e SYSTEM 'bad.xml'>]>" + Named("&e;"));
    const Result result = RunTool({"check", "--trust", "a.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("/bad.xml\n"));
}

TEST(CheckTest, EntriesOfArchivesAndStandardInput) {
    const Folder folder;
    folder.Write("a.zip", testing_support::BuildZip({{.name = "one.gpx", .content = Named(kMixed)},
                                                     {.name = "bad.gpx", .content = "<gpx"},
                                                     {.name = "notes.txt", .content = "<gpx"}}));
    const Result archive = RunTool({"check", "a.zip"}, folder.Path());
    EXPECT_EQ(archive.status, 1);
    EXPECT_THAT(archive.out, StartsWith("a.zip: one.gpx\n  Waypoints  1\n"));
    EXPECT_THAT(archive.out, HasSubstr("\na.zip: bad.gpx\n  It could not be read.\n"));
    EXPECT_EQ(Lines(archive.out).back(),
              "1 file could not be read. 6 things were skipped or changed, and all of them are losses.");
    const Result input = Tool({"check", "-"}).Stdin(Named("")).Run();
    EXPECT_EQ(input.status, 0);
    EXPECT_EQ(input.out, "-\n  Waypoints  0\n  Routes     0\n  Tracks     0\n\nEverything was read.\n");
}

TEST(CheckTest, JsonIsALineForEachDocument) {
    const Folder folder;
    folder.Write("a.gpx", Named("<wpt lat='1' lon='2'><ele>x</ele><hdop>1</hdop></wpt>\n"
                                "<wpt lat='1' lon='2'><ele>x</ele></wpt>"));
    folder.Write("b.zip", testing_support::BuildZip({{.name = "c.gpx", .content = Named("")}}));
    const Result result = RunTool({"check", "--json", "a.gpx", "b.zip"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    const std::string none = R"("routes":0,"routePoints":0,"tracks":0,"segments":0,"trackPoints":0,)"
                             R"("geocaches":0,"logs":0,"travelBugs":0},"messages":[],)";
    EXPECT_THAT(Lines(result.out),
                ElementsAre(R"({"file":"a.gpx","contents":{"waypoints":2,)" + none +
                                R"("skippedCount":3,"lostCount":3,"skipped":[)"
                                R"({"element":"gpx/wpt/ele","reason":"unreadable",)"
                                R"("message":"\"x\" is not a number.","isLoss":true,"count":2,)"
                                R"("places":[{"line":2,"column":27},{"line":3,"column":27}]},)"
                                R"({"element":"gpx/wpt/hdop","reason":"unknown-element",)"
                                R"("message":"The library does not keep this element.","isLoss":true,)"
                                R"("count":1,"places":[{"line":2,"column":40}]}]})",
                            R"({"entry":"c.gpx","file":"b.zip","contents":{"waypoints":0,)" + none +
                                R"("skippedCount":0,"lostCount":0,"skipped":[]})"));
}

TEST(CheckTest, JsonHasTheErrorOfWhatCannotBeRead) {
    const Folder folder;
    folder.Write("bad.gpx", "<gpx>\n<");
    folder.Write("empty.zip", testing_support::BuildZip({}));
    ASSERT_EQ(::mkdir(folder.File("folder").c_str(), 0700), 0);
    const Result result =
        RunTool({"check", "--json", "bad.gpx", "folder", "empty.zip", "missing.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    const std::vector<std::string> lines = Lines(result.out);
    ASSERT_EQ(lines.size(), 4U);
    const json bad = json::parse(lines[0]);
    EXPECT_EQ(bad["file"], "bad.gpx");
    EXPECT_EQ("vexagpx: " + bad["error"].get<std::string>(), Lines(result.err)[0]);
    EXPECT_EQ(bad["messages"][0]["severity"], "fatal-error");
    EXPECT_EQ(bad["messages"][0]["places"][0]["line"], 2);
    EXPECT_FALSE(bad["messages"][0].contains("file"));
    EXPECT_FALSE(bad.contains("contents"));
    EXPECT_EQ(json::parse(lines[1])["error"], "The folder holds no GPX file and no archive. (folder)");
    EXPECT_THAT(lines[2], HasSubstr("The archive holds no GPX file."));
    EXPECT_EQ(json::parse(lines[3])["file"], "missing.gpx");
}

TEST(CheckTest, HostileTextsDoNotReachTheTerminalRaw) {
    const Folder folder;
    folder.Write("a\x1B[2J.gpx", Named("<wpt lat='1' lon='2'><ele>\xC2\x9B"
                                       "2J\xE2\x80\xAE</ele><b\xC2\xB7\xE3\x80\x87/></wpt>"));
    const Result result = RunTool({"check", "a\x1B[2J.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1) << result.err;
    for (const char* bytes : {"\x1B", "\xC2\x9B", "\xE2\x80\xAE"})
        EXPECT_THAT(result.out, Not(HasSubstr(bytes)));
}

TEST(CheckTest, EveryFileOfTheCorpusHasAReceipt) {
    const std::vector<std::string> files = cli::Corpus("gpx");
    if (files.empty())
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    for (const std::string& file : files) {
        const Result result = RunTool({"check", "--json", file});
        const json report = json::parse(result.out);
        const bool lost = report.contains("error") || report["lostCount"] > 0;
        EXPECT_EQ(result.status, lost ? 1 : 0) << file;
        EXPECT_EQ(report.contains("error"), RunTool({"dump", "--as-host", file}).status == 1) << file;
    }
}

TEST(CheckTest, OfVeryManyNamesTheFirstAreListedAndAllAreCounted) {
    std::string children;
    for (int i = 0; i < 1100; ++i)
        children += "<n" + std::to_string(i) + "/>\n";
    const Folder folder;
    folder.Write("a.gpx", Named("<wpt lat='1' lon='2'>\n" + children + "</wpt>"));
    const Result result = RunTool({"check", "--trust", "a.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out.substr(result.out.find("  1002:8")),
                StartsWith("  1002:8  gpx/wpt/n999\n"
                           "      unknown-element: The library does not keep this element.\n"
                           "  1003:9  ...\n"
                           "      unknown-element: More elements, which --all lists.\n"
                           "      100 times, first at 1003:9, 1004:9, "));
    EXPECT_EQ(Lines(result.out).back(),
              "Everything that a document can hold was read. 1100 other things were skipped or changed.");
    EXPECT_THAT(RunTool({"check", "--trust", "--all", "a.gpx"}, folder.Path()).out,
                HasSubstr("  gpx/wpt/n1099\n"));
    const json report = json::parse(RunTool({"check", "--trust", "--json", "a.gpx"}, folder.Path()).out);
    EXPECT_EQ(report["skippedCount"], 1100);
    EXPECT_EQ(report["skipped"].size(), 1001U);
    EXPECT_EQ(report["skipped"][1000]["count"], 100);
}

} // namespace
