// SPDX-License-Identifier: MIT
#include <vexagpx/report/Collapsed.h>
#include <vexagpx/report/ReceiptText.h>
#include <vexagpx/terminal/ShellText.h>

#include "support/Tool.h"

#include <tests/support/ZipBuilder.h>

#include <nlohmann/json.hpp>

#include <fcntl.h>

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
using namespace vexaTransferLib;
using vexagpx::CheckTotals;
using vexagpx::Collapsed;
using vexagpx::Place;

// The line and column of an element stand where its start tag ends.
const std::string kMixed = "<wpt lat='1' lon='2'><ele>high</ele><hdop>1</hdop><time>noon</time></wpt>\n"
                           "<trk><trkseg>\n"
                           "<trkpt lat='1' lon='2'><t:hr>99</t:hr></trkpt>\n"
                           "<trkpt lat='1' lon='2'><t:hr>98</t:hr></trkpt>\n"
                           "</trkseg></trk>\n"
                           "<wpt lat='1' lon='2'/>";

TEST(CheckTest, TellsWhatWasReadAndWhatWasPassedOver) {
    const Folder folder;
    folder.Write("walk.gpx", Gpx(kMixed));
    const Result result = RunTool({"check", "walk.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "walk.gpx\n"
                          "  Waypoints  1\n"
                          "  Routes     0\n"
                          "  Tracks     1 (1 segment, 2 points)\n"
                          "\n"
                          "Passed over\n"
                          "  2:27  gpx/wpt/ele (lost)\n"
                          "      unreadable: \"high\" is not a number.\n"
                          "  2:43  gpx/wpt/hdop\n"
                          "      unknown-element: The library does not keep this element.\n"
                          "  2:57  gpx/wpt/time (lost)\n"
                          "      unreadable: \"noon\" is not a time.\n"
                          "  4:30  gpx/trk/trkseg/trkpt/hr\n"
                          "      foreign-namespace: Its namespace is "
                          "\"https://tarvik.example/xmlschemas/gpx-extensions/1/0\", not that of GPX 1.1.\n"
                          "      2 times, at 4:30, 5:30\n"
                          "  7:23  gpx/wpt (lost)\n"
                          "      out-of-order: It stands behind a route or a track.\n"
                          "\n"
                          "6 things were passed over, 3 of which a document could have held.\n");
}

TEST(CheckTest, AFileThatIsReadWholeIsFine) {
    const Folder folder;
    folder.Write("walk.gpx", Gpx("<rte><rtept lat='1' lon='2'/></rte>"));
    const Result result = RunTool({"check", "walk.gpx", "walk.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 0);
    const std::string receipt = "walk.gpx\n  Waypoints  0\n  Routes     1 (1 point)\n  Tracks     0\n\n";
    EXPECT_EQ(result.out, receipt + receipt + "Everything was read.\n");
}

TEST(CheckTest, WhatNoDocumentCouldHoldIsNoFailure) {
    const Folder folder;
    folder.Write("walk.gpx", Gpx("<wpt lat='1' lon='2'><hdop>1</hdop></wpt>"));
    const Result result = RunTool({"check", "walk.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(Lines(result.out).back(),
              "Everything that a document can hold was read. 1 other thing was passed over.");
}

TEST(CheckTest, CountsGeocachesTheirLogsAndTravelBugs) {
    EXPECT_THAT(RunTool({"check", Data("full.gpx")}).out,
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

TEST(CheckTest, EqualThingsAreOneEntryWithItsFirstTenPlaces) {
    const Folder folder;
    folder.Write("a.gpx", Gpx(Points(1000, [](int) { return "<ele>x</ele>"; })));
    const Result result = RunTool({"check", "a.gpx"}, folder.Path());
    EXPECT_THAT(result.out, HasSubstr("\nPassed over\n"
                                      "  3:29  gpx/trk/trkseg/trkpt/ele (lost)\n"
                                      "      unreadable: \"x\" is not a number.\n"
                                      "      1000 times, first at 3:29, 4:29, 5:29, 6:29, 7:29, 8:29, 9:29, "
                                      "10:29, 11:29, 12:29\n"
                                      "\n"
                                      "1000 things were passed over, all of which a document could have "
                                      "held.\n"));
}

TEST(CheckTest, AllListsEachByItself) {
    const Folder folder;
    folder.Write("a.gpx", Gpx(Points(1000, [](int) { return "<ele>x</ele>"; })));
    const std::string out = RunTool({"check", "--all", "a.gpx"}, folder.Path()).out;
    for (const int line : {3, 500, 1002})
        EXPECT_THAT(out, HasSubstr("\n  " + std::to_string(line) +
                                   ":29  gpx/trk/trkseg/trkpt/ele (lost)\n      unreadable: \"x\""));
    EXPECT_THAT(out, Not(HasSubstr(" times")));
    EXPECT_EQ(Lines(out).back(), "1000 things were passed over, all of which a document could have held.");
}

TEST(CheckTest, ManyTextsOfOneKindAreNotAllListed) {
    const Folder folder;
    folder.Write("a.gpx", Gpx(Points(1000, [](int i) { return "<ele>x" + std::to_string(i) + "</ele>"; })));
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

TEST(CheckTest, AFileWithADocumentTypeHasNoPlaces) {
    const Folder folder;
    folder.Write("a.gpx", "<!DOCTYPE gpx>" + Gpx("<wpt lat='1' lon='2'><hdop>1</hdop><hdop>1</hdop></wpt>"));
    EXPECT_THAT(RunTool({"check", "--trust", "a.gpx"}, folder.Path()).out,
                HasSubstr("  -  gpx/wpt/hdop\n"
                          "      unknown-element: The library does not keep this element.\n"
                          "      2 times\n"));
    const json receipt = json::parse(RunTool({"check", "--trust", "--json", "a.gpx"}, folder.Path()).out);
    EXPECT_EQ(receipt["passedOver"][0]["places"], json::array());
}

TEST(CheckTest, AFileThatCannotBeReadShowsOnlyWhatTheParserSaid) {
    const Folder folder;
    folder.Write("good.gpx", Gpx(""));
    folder.Write("bad.gpx", "<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'>\n"
                            "<wpt lat='1' lon='2'><ele>x</ele></wpt><wpt");
    folder.Write("other.gpx", Gpx("<wpt/>"));
    const Result result =
        RunTool({"check", "bad.gpx", "good.gpx", "other.gpx", "missing.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, StartsWith("bad.gpx\n"
                                       "  It could not be read.\n"
                                       "\n"
                                       "Messages of the XML parser\n"
                                       "  2:44  fatal-error: "));
    EXPECT_THAT(result.out, Not(HasSubstr("other.gpx")));
    EXPECT_THAT(result.out, Not(HasSubstr("Passed over")));
    EXPECT_EQ(Lines(result.out).back(), "3 files could not be read. Everything else was read.");
    EXPECT_THAT(Lines(result.err), ElementsAre(HasSubstr("bad.gpx (line 2, column 44: "),
                                               "vexagpx: Unable to read a GPX point's latitude. (other.gpx)",
                                               HasSubstr("missing.gpx")));
}

TEST(CheckTest, AMessageAboutAnotherFileNamesIt) {
    const Folder folder;
    folder.Write("bad.xml", "<a>");
    folder.Write("a.gpx", "<!DOCTYPE gpx [<!ENTITY e SYSTEM 'bad.xml'>]>" + Gpx("&e;"));
    const Result result = RunTool({"check", "--trust", "a.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("/bad.xml\n"));
}

TEST(CheckTest, EntriesOfArchivesAndStandardInput) {
    const Folder folder;
    folder.Write("a.zip", testing_support::BuildZip({{.name = "one.gpx", .content = Gpx(kMixed)},
                                                     {.name = "bad.gpx", .content = "<gpx"},
                                                     {.name = "notes.txt", .content = "<gpx"}}));
    const Result archive = RunTool({"check", "a.zip"}, folder.Path());
    EXPECT_EQ(archive.status, 1);
    EXPECT_THAT(archive.out, StartsWith("a.zip: one.gpx\n  Waypoints  1\n"));
    EXPECT_THAT(archive.out, HasSubstr("\na.zip: bad.gpx\n  It could not be read.\n"));
    EXPECT_EQ(Lines(archive.out).back(), "1 file could not be read. 6 things were passed over, 3 of which a "
                                         "document could have held.");
    const Result input = Tool({"check", "-"}).Stdin(Gpx("")).Run();
    EXPECT_EQ(input.status, 0);
    EXPECT_EQ(input.out, "-\n  Waypoints  0\n  Routes     0\n  Tracks     0\n\nEverything was read.\n");
}

TEST(CheckTest, JsonIsALineForEachDocument) {
    const Folder folder;
    folder.Write("a.gpx", Gpx("<wpt lat='1' lon='2'><ele>x</ele><hdop>1</hdop></wpt>\n"
                              "<wpt lat='1' lon='2'><ele>x</ele></wpt>"));
    folder.Write("b.zip", testing_support::BuildZip({{.name = "c.gpx", .content = Gpx("")}}));
    const Result result = RunTool({"check", "--json", "a.gpx", "b.zip"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    const std::string none = R"("routes":0,"routePoints":0,"tracks":0,"segments":0,"trackPoints":0,)"
                             R"("geocaches":0,"logs":0,"travelBugs":0},"messages":[],)";
    EXPECT_THAT(Lines(result.out),
                ElementsAre(R"({"file":"a.gpx","contents":{"waypoints":2,)" + none +
                                R"("passedOverCount":3,"lostCount":2,"passedOver":[)"
                                R"({"element":"gpx/wpt/ele","reason":"unreadable",)"
                                R"("message":"\"x\" is not a number.","isLoss":true,"count":2,)"
                                R"("places":[{"line":2,"column":27},{"line":3,"column":27}]},)"
                                R"({"element":"gpx/wpt/hdop","reason":"unknown-element",)"
                                R"("message":"The library does not keep this element.","isLoss":false,)"
                                R"("count":1,"places":[{"line":2,"column":40}]}]})",
                            R"({"entry":"c.gpx","file":"b.zip","contents":{"waypoints":0,)" + none +
                                R"("passedOverCount":0,"lostCount":0,"passedOver":[]})"));
}

TEST(CheckTest, JsonHasTheErrorOfWhatCannotBeRead) {
    const Folder folder;
    folder.Write("bad.gpx", "<gpx>\n<");
    folder.Write("empty.zip", testing_support::BuildZip({}));
    const Result result =
        RunTool({"check", "--json", "bad.gpx", ".", "empty.zip", "missing.gpx"}, folder.Path());
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
    EXPECT_EQ(json::parse(lines[1])["error"], "Unable to read the file: . (Is a directory)");
    EXPECT_THAT(lines[2], HasSubstr("The archive holds no GPX file."));
    EXPECT_EQ(json::parse(lines[3])["file"], "missing.gpx");
}

TEST(CheckTest, HostileTextsDoNotReachTheTerminalRaw) {
    const Folder folder;
    folder.Write("a\x1B[2J.gpx", Gpx("<wpt lat='1' lon='2'><ele>\xC2\x9B"
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
        const json receipt = json::parse(result.out);
        const bool lost = receipt.contains("error") || receipt["lostCount"] > 0;
        EXPECT_EQ(result.status, lost ? 1 : 0) << file;
        EXPECT_EQ(receipt.contains("error"), RunTool({"dump", file}).status == 1) << file;
    }
}

TEST(CheckSummaryTest, SaysInPlainWordsWhatTheReceiptsComeTo) {
    const std::vector<std::pair<CheckTotals, const char*>> rows = {
        {{1, 0, 0, 0}, "Everything was read."},
        {{1, 0, 1, 0}, "Everything that a document can hold was read. 1 other thing was passed over."},
        {{1, 0, 5, 0}, "Everything that a document can hold was read. 5 other things were passed over."},
        {{1, 0, 1, 1}, "1 thing was passed over, and a document could have held it."},
        {{1, 0, 3, 2}, "3 things were passed over, 2 of which a document could have held."},
        {{1, 0, 3, 3}, "3 things were passed over, all of which a document could have held."},
        {{0, 1, 0, 0}, "1 file could not be read."},
        {{1, 2, 0, 0}, "2 files could not be read. Everything else was read."},
        {{1, 1, 2, 0},
         "1 file could not be read. Everything else that a document can hold was read. 2 other "
         "things were passed over."},
        {{1, 1, 2, 1},
         "1 file could not be read. 2 things were passed over, 1 of which a document could have "
         "held."},
    };
    for (const auto& [totals, expected] : rows)
        EXPECT_EQ(vexagpx::SummaryText(totals), expected);
}

TEST(CollapsedTest, EntriesComeInTheOrderOfTheirFirstPlace) {
    Collapsed<std::string> things(false);
    things.Add("b", {5, 1});
    things.Add("a", {2, 9});
    things.Add("c", {2, 3});
    things.Add("b", {1, 7});
    std::vector<std::string> order;
    std::vector<std::vector<Place>> places;
    things.ForEach([&](const auto& entry) {
        order.push_back(entry.thing);
        places.emplace_back(entry.places.begin(), entry.places.end());
    });
    EXPECT_THAT(order, ElementsAre("b", "c", "a"));
    EXPECT_EQ(things.Count(), 4U);
    EXPECT_THAT(places[0], ElementsAre(Place{1, 7}, Place{5, 1}));
}

TEST(CollapsedTest, OnlyTheFirstTenPlacesAreKept) {
    Collapsed<std::string> things(false);
    for (std::uint64_t line = 1000; line > 0; --line)
        things.Add("a", {line, 1});
    things.ForEach([](const auto& entry) {
        EXPECT_EQ(entry.count, 1000U);
        ASSERT_EQ(entry.places.size(), 10U);
        EXPECT_EQ(entry.places.front(), (Place{1, 1}));
        EXPECT_EQ(entry.places.back(), (Place{10, 1}));
    });
    EXPECT_EQ(things.DifferentCount(), 1U);
}

TEST(CollapsedTest, ThingsAtOnePlaceComeInTheOrderInWhichTheyWereAdded) {
    for (const bool each : {false, true}) {
        Collapsed<std::string> things(each);
        for (const char* thing : {"c", "a", "b"})
            things.Add(thing, {0, 0});
        std::vector<std::string> order;
        things.ForEach([&](const auto& entry) { order.push_back(entry.thing); });
        EXPECT_THAT(order, ElementsAre("c", "a", "b"));
    }
}

TEST(CollapsedTest, EachMayBeAnEntry) {
    Collapsed<std::string> things(true);
    for (int i = 0; i < 3; ++i)
        things.Add("a", {std::uint64_t(3 - i), 1});
    std::vector<Place> places;
    things.ForEach([&](const auto& entry) {
        EXPECT_EQ(entry.count, 1U);
        EXPECT_EQ(entry.places.size(), 1U);
        places.push_back(entry.places.front());
    });
    EXPECT_THAT(places, ElementsAre(Place{1, 1}, Place{2, 1}, Place{3, 1}));
    EXPECT_EQ(things.Count(), 3U);
    EXPECT_EQ(things.DifferentCount(), 1U);
}

GpxSkippedElement Passed(const std::string& element, const std::string& message, std::uint64_t line,
                         bool lost = false) {
    GpxSkippedElement what;
    what.element = element;
    what.line = line;
    what.column = 1;
    what.reason = kGpxUnreadable;
    what.message = message;
    what.isLoss = lost;
    return what;
}

struct Listed {
    std::string element;
    std::string message;
    std::uint64_t count;
    bool operator==(const Listed&) const = default;
};

std::vector<Listed> ListedBy(const vexagpx::Receipt& receipt) {
    std::vector<Listed> listed;
    receipt.Passed().ForEach([&](const auto& entry) {
        listed.push_back({entry.thing.element, entry.thing.message, entry.count});
    });
    return listed;
}

TEST(ReceiptTest, BeyondAThousandKindsTheRestIsCounted) {
    vexagpx::Receipt receipt(false);
    for (std::uint64_t i = 0; i < 3000; ++i)
        receipt.Skipped(Passed("n" + std::to_string(i), "m", i + 1, i >= 2000));
    receipt.Skipped(Passed("n999", "another", 4000));
    receipt.Skipped(Passed("n999", "m", 4001));
    const std::vector<Listed> listed = ListedBy(receipt);
    ASSERT_EQ(listed.size(), 1003U);
    EXPECT_EQ(listed[0], (Listed{"n0", "m", 1}));
    EXPECT_EQ(listed[999], (Listed{"n999", "m", 2}));
    EXPECT_EQ(listed[1000], (Listed{"...", "More elements, which --all lists.", 1000}));
    EXPECT_EQ(listed[1001], (Listed{"...", "More elements, which --all lists.", 1000}));
    EXPECT_EQ(listed[1002], (Listed{"n999", "another", 1}));
    EXPECT_EQ(receipt.Passed().Count(), 3002U);
    EXPECT_EQ(receipt.LostCount(), 1000U);
}

TEST(ReceiptTest, WithAllEveryPlaceIsListedAndBeyondAHundredThousandNotEveryText) {
    constexpr std::size_t kMost = vexagpx::Receipt::kMostListed;
    vexagpx::Receipt receipt(true);
    for (std::uint64_t i = 0; i < 2 * kMost; ++i)
        receipt.Skipped(Passed("n", std::to_string(i), i + 1, true));
    receipt.Skipped(Passed("other", "m", 2 * kMost + 1));
    receipt.Skipped(Passed("n", "7", 2 * kMost + 2));
    const std::vector<Listed> listed = ListedBy(receipt);
    ASSERT_EQ(listed.size(), 2 * kMost + 2);
    EXPECT_EQ(listed[kMost - 1], (Listed{"n", std::to_string(kMost - 1), 1}));
    EXPECT_EQ(listed[kMost], (Listed{"n", "More of this kind than are listed.", 1}));
    EXPECT_EQ(listed[2 * kMost], (Listed{"...", "More elements than are listed.", 1}));
    EXPECT_EQ(receipt.LostCount(), 2 * kMost);
    EXPECT_LT(receipt.Passed().DifferentCount(), kMost + 10);
}

TEST(ReceiptTest, ALongTextIsCutBetweenCharacters) {
    vexagpx::Receipt receipt(false);
    const std::string start(999, 'a');
    receipt.Skipped(Passed(start + "b", "m", 1));
    receipt.Skipped(Passed(start + "\xC3\xA4z", start + "bc", 2));
    EXPECT_THAT(ListedBy(receipt),
                ElementsAre(Listed{start + "b", "m", 1}, Listed{start + "...", start + "b...", 1}));
}

TEST(ReceiptTest, MessagesOfTheParserAreLimitedToo) {
    for (const bool each : {false, true}) {
        vexagpx::Receipt receipt(each);
        const std::size_t most = each ? vexagpx::Receipt::kMostListed : vexagpx::Receipt::kMostKinds;
        for (std::size_t i = 0; i < most + 5; ++i)
            receipt.ParserMessage({kGpxMessageError, i + 1, 1, std::to_string(i), "f"});
        receipt.ParserMessage({kGpxMessageError, most + 6, 1, "0", "f"});
        std::string last;
        std::uint64_t more = 0;
        receipt.Complaints().ForEach([&](const auto& entry) {
            if (!entry.thing.text.starts_with("More"))
                return;
            more += entry.count;
            last = entry.thing.text;
            EXPECT_EQ(entry.thing.file, "");
        });
        EXPECT_EQ(more, 5U);
        EXPECT_EQ(last, each ? "More messages than are listed." : "More messages, which --all lists.");
        EXPECT_EQ(receipt.Complaints().DifferentCount(), most + 1);
        EXPECT_EQ(receipt.Complaints().Count(), most + 6);
    }
}

TEST(CheckTest, OfVeryManyNamesTheFirstAreListedAndAllAreCounted) {
    std::string children;
    for (int i = 0; i < 1100; ++i)
        children += "<n" + std::to_string(i) + "/>\n";
    const Folder folder;
    folder.Write("a.gpx", Gpx("<wpt lat='1' lon='2'>\n" + children + "</wpt>"));
    const Result result = RunTool({"check", "--trust", "a.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out.substr(result.out.find("  1002:8")),
                StartsWith("  1002:8  gpx/wpt/n999\n"
                           "      unknown-element: The library does not keep this element.\n"
                           "  1003:9  ...\n"
                           "      unknown-element: More elements, which --all lists.\n"
                           "      100 times, first at 1003:9, 1004:9, "));
    EXPECT_EQ(Lines(result.out).back(),
              "Everything that a document can hold was read. 1100 other things were passed over.");
    EXPECT_THAT(RunTool({"check", "--trust", "--all", "a.gpx"}, folder.Path()).out,
                HasSubstr("  gpx/wpt/n1099\n"));
    const json receipt = json::parse(RunTool({"check", "--trust", "--json", "a.gpx"}, folder.Path()).out);
    EXPECT_EQ(receipt["passedOverCount"], 1100);
    EXPECT_EQ(receipt["passedOver"].size(), 1001U);
    EXPECT_EQ(receipt["passedOver"][1000]["count"], 100);
}

TEST(ReceiptTest, EveryReasonAndSeverityHasItsWord) {
    const std::vector<std::pair<GpxSkipReason, const char*>> reasons = {
        {kGpxForeignNamespace, "foreign-namespace"},
        {kGpxUnknownElement, "unknown-element"},
        {kGpxOtherVersion, "other-version"},
        {kGpxOutOfOrder, "out-of-order"},
        {kGpxUnreadable, "unreadable"},
        {kGpxRefused, "refused"},
        {kGpxIncomplete, "incomplete"},
        {kGpxReplaced, "replaced"},
    };
    for (const auto& [reason, word] : reasons)
        EXPECT_EQ(vexagpx::Word(reason), word);
    EXPECT_EQ(vexagpx::Word(kGpxMessageWarning), "warning");
    EXPECT_EQ(vexagpx::Word(kGpxMessageError), "error");
    EXPECT_EQ(vexagpx::Word(kGpxMessageFatalError), "fatal-error");
}

TEST(ReceiptTextTest, MessagesOfTheParserHavePlaceSeverityAndFile) {
    vexagpx::Receipt receipt(false);
    receipt.ParserMessage({kGpxMessageWarning, 3, 7, "odd", ""});
    receipt.ParserMessage({kGpxMessageError, 0, 0, "gone", "other.xml"});
    const Folder folder;
    vexagpx::Output out(::open(folder.Write("out", "").c_str(), O_WRONLY));
    vexagpx::WriteReceiptText("walk.gpx", nullptr, receipt, out);
    out.Close();
    EXPECT_EQ(cli::ReadFile(folder.File("out")), "walk.gpx\n"
                                                 "  It could not be read.\n"
                                                 "\n"
                                                 "Messages of the XML parser\n"
                                                 "  -  error: gone\n"
                                                 "      in other.xml\n"
                                                 "  3:7  warning: odd\n");
}

TEST(ShellTextTest, QuotesWhereAShellNeedsIt) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"walk.gpx", "walk.gpx"},
        {"/a/b-c_d/1.gpx", "/a/b-c_d/1.gpx"},
        {"höhe 日本.gpx", "'höhe 日本.gpx'"},
        {"höhe.gpx", "höhe.gpx"},
        {"-", "-"},
        {"-x.gpx", "./-x.gpx"},
        {"", "''"},
        {"~/a", "'~/a'"},
        {"a'b", "'a'\\''b'"},
        {"$(x)`y`;z&\"*?[a]#!\\", "'$(x)`y`;z&\"*?[a]#!\\'"},
        {"a\nb'c\\", "$'a\\012b\\'c\\\\'"},
        {"\x1B[2J\x7F", "$'\\033[2J\\177'"},
        {"c1\xC2\x9Bx", "$'c1\\302\\233x'"},
        {"x\xE2\x80\xAEy", "$'x\\342\\200\\256y'"},
        {"no\xFFutf8 \xC3", "$'no\\377utf8 \\303'"},
        {"a\xE2\x80\x8Dz", "a\xE2\x80\x8Dz"},
    };
    for (const auto& [argument, expected] : rows)
        EXPECT_EQ(vexagpx::ShellText(argument), expected);
}

} // namespace
