// SPDX-License-Identifier: MIT
#include "support/Session.h"
#include "support/Tool.h"

#include <algorithm>
#include <clocale>
#include <cwchar>

namespace {

using cli::Data;
using cli::Folder;
using cli::Gpx;
using cli::Lines;
using cli::Result;
using cli::RunTool;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

std::string ShowOf(const std::string& document, std::vector<std::string> options = {}) {
    const Folder folder;
    folder.Write("t.gpx", document);
    options.insert(options.begin(), "show");
    options.emplace_back("t.gpx");
    const Result result = RunTool(options, folder.Path());
    EXPECT_EQ(result.status, 0) << document;
    EXPECT_EQ(result.err, "") << document;
    return result.out;
}

/// Columns of a line in a terminal, as the C library counts them; -1 when something in it is not printable.
int TerminalWidth(const std::string& line) {
    std::wstring wide(line.size() + 1, L'\0');
    const std::size_t length = std::mbstowcs(wide.data(), line.c_str(), wide.size());
    return length == static_cast<std::size_t>(-1) ? -1 : wcswidth(wide.c_str(), length);
}

std::string Point(const std::string& element, double latitude, double longitude,
                  const std::string& content = "") {
    return "<" + element + " lat='" + std::to_string(latitude) + "' lon='" + std::to_string(longitude) +
           "'>" + content + "</" + element + ">";
}

TEST(ShowTest, ShowsWhatIsInTheFile) {
    const Result result = RunTool({"show", "hand-written.gpx"}, Data(""));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, cli::ReadFile(Data("hand-written.show.txt")));
}

TEST(ShowTest, AnEmptyDocumentSaysSo) {
    EXPECT_EQ(ShowOf(Gpx(""), {"--as-host"}),
              "t.gpx\n"
              "  Name       t\n"
              "  Waypoints  0\n"
              "  Routes     0\n"
              "  Tracks     0\n"
              "  It holds no waypoint, route or track in the GPX namespace of its version.\n");
}

TEST(ShowTest, LengthIsThatOfTheGeodesic) {
    const std::string equator = Point("rtept", 0, 0) + Point("rtept", 0, 1);
    EXPECT_THAT(ShowOf(Gpx("<rte>" + equator + "</rte>")), HasSubstr(" 111.3 km\n"));
    const std::string meridian = Point("rtept", 0, 0) + Point("rtept", 1, 0);
    EXPECT_THAT(ShowOf(Gpx("<rte>" + meridian + "</rte>")), HasSubstr(" 110.6 km\n"));
    const std::string across180 = Point("rtept", 0, 179.5) + Point("rtept", 0, -179.5);
    EXPECT_THAT(ShowOf(Gpx("<rte>" + across180 + "</rte>")), HasSubstr(" 111.3 km\n"));
}

TEST(ShowTest, GapsBetweenSegmentsAreNotCounted) {
    const std::string first = "<trkseg>" + Point("trkpt", 0, 0) + Point("trkpt", 0, 1) + "</trkseg>";
    const std::string second = "<trkseg>" + Point("trkpt", 0, 50) + Point("trkpt", 0, 51) + "</trkseg>";
    EXPECT_THAT(ShowOf(Gpx("<trk>" + first + second + "</trk>")), HasSubstr(" 222.6 km\n"));
}

TEST(ShowTest, TracksAreMeasuredApart) {
    const std::string track =
        "<trk><trkseg>" + Point("trkpt", 0, 0) + Point("trkpt", 0, 1) + "</trkseg></trk>";
    const std::string other =
        "<trk><trkseg>" + Point("trkpt", 40, 0) + Point("trkpt", 40, 0.001) + "</trkseg></trk>";
    const std::vector<std::string> lines = Lines(ShowOf(Gpx(track + other)));
    EXPECT_THAT(lines, Contains("  1         1       2  111.3 km"));
    EXPECT_THAT(lines, Contains("  2         1       2      85 m"));
}

TEST(ShowTest, TimeSpanIsFromTheEarliestToTheLatestPointWhateverTheOrder) {
    const std::string points = Point("trkpt", 0, 0, "<time>2009-01-15T12:00:00Z</time>") +
                               Point("trkpt", 0, 0) +
                               Point("trkpt", 0, 0, "<time>2009-01-15T10:58:30Z</time>") +
                               Point("trkpt", 0, 0, "<time>2009-01-15T11:00:00Z</time>");
    EXPECT_THAT(Lines(ShowOf(Gpx("<trk><trkseg>" + points + "</trkseg></trk>"))),
                Contains("     2009-01-15T10:58:30Z to 2009-01-15T12:00:00Z, 1 h 1 min"));
}

TEST(ShowTest, RoutesHaveATimeSpanToo) {
    const std::string points = Point("rtept", 0, 0, "<time>2009-01-15T12:00:00Z</time>") +
                               Point("rtept", 0, 0, "<time>2009-01-15T12:00:45Z</time>");
    EXPECT_THAT(Lines(ShowOf(Gpx("<rte>" + points + "</rte>"))),
                Contains("     2009-01-15T12:00:00Z to 2009-01-15T12:00:45Z, 45 s"));
}

TEST(ShowTest, BoundsAreThoseOfAllPoints) {
    const std::string elements = Point("wpt", 10, 20) + "<rte>" + Point("rtept", -5, 21) +
                                 "</rte><trk><trkseg>" + Point("trkpt", 0, 30.5) + "</trkseg></trk>";
    const std::vector<std::string> lines = Lines(ShowOf(Gpx(elements)));
    EXPECT_THAT(lines, Contains("  Bounds     latitude -5.000000 to 10.000000"));
    EXPECT_THAT(lines, Contains("             longitude 20.000000 to 30.500000"));
}

TEST(ShowTest, BoundsMayLieAcrossThe180thMeridian) {
    EXPECT_THAT(Lines(ShowOf(Gpx(Point("wpt", 0, 179) + Point("wpt", 0, -178)))),
                Contains("             longitude 179.000000 to -178.000000 (across the 180th meridian)"));
}

TEST(ShowTest, GeocachesHaveCodeNameTypeSizeAndRating) {
    const std::string cache =
        "<g:cache><g:name>N</g:name><g:type>Multi-cache</g:type><g:container>Micro</g:container>"
        "<g:difficulty>2</g:difficulty></g:cache>";
    EXPECT_THAT(Lines(ShowOf(Gpx(Point("wpt", 1, 2, "<name>GC1</name>" + cache)))),
                Contains("  1  GC1   N     Multi-cache  Micro  2/-"));
}

TEST(ShowTest, LongListsAreCutUnlessAllIsAskedFor) {
    std::string waypoints;
    for (int i = 0; i < 1000; ++i)
        waypoints += Point("wpt", 1, 2, "<name>W" + std::to_string(i) + "</name>");
    const std::string cut = ShowOf(Gpx(waypoints));
    EXPECT_LT(Lines(cut).size(), 40U);
    EXPECT_THAT(cut, HasSubstr("  Waypoints  1000\n"));
    EXPECT_THAT(cut, HasSubstr(" W19 "));
    EXPECT_THAT(cut, Not(HasSubstr(" W20 ")));
    EXPECT_THAT(cut, HasSubstr("  … and 980 more (--all lists them)\n"));
    const std::string all = ShowOf(Gpx(waypoints), {"--all"});
    EXPECT_THAT(all, HasSubstr(" W999 "));
    EXPECT_THAT(all, Not(HasSubstr(" more")));
}

TEST(ShowTest, SeveralFilesHaveAHeadingEachAndAnEmptyLineBetween) {
    const Result result = RunTool({"show", "empty.gpx", "./empty.gpx"}, Data(""));
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, testing::StartsWith("empty.gpx\n"));
    EXPECT_THAT(result.out, HasSubstr("\n\n./empty.gpx\n"));
}

TEST(ShowTest, ControlCharactersDoNotReachTheTerminal) {
    const Result result = RunTool({"show", "--as-host", Data("control-character.gpx")});
    EXPECT_EQ(result.status, 0);
    for (const char byte : result.out)
        EXPECT_TRUE(byte == '\n' || static_cast<unsigned char>(byte) >= 0x20) << static_cast<int>(byte);
    EXPECT_THAT(result.out, HasSubstr("bell and escape [31m"));
}

class ShowInTerminalTest : public cli::TerminalTest {
protected:
    static std::vector<std::string> LinesOf(std::vector<std::string> arguments, const std::string& folder) {
        cli::Session run(std::move(arguments));
        run.In(folder).Columns(80).OutToTerminal().Start();
        run.Finish();
        EXPECT_EQ(run.Status(), 0);
        std::string screen = run.Screen();
        screen.erase(std::remove(screen.begin(), screen.end(), '\r'), screen.end());
        return Lines(screen);
    }
};

TEST_F(ShowInTerminalTest, NoLineIsWider) {
    ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
    std::string longName;
    for (int i = 0; i < 40; ++i)
        longName += "Straße 日本語 e\xCC\x81 😀 ";
    const std::string name = "<name>" + longName + "</name>";
    const std::string cache = "<g:cache><g:name>" + longName + "</g:name><g:type>" + longName +
                              "</g:type><g:container>" + longName + "</g:container><g:difficulty>" +
                              longName + "</g:difficulty></g:cache>";
    const std::string extreme = "<ele>-1e308</ele><time>9999-12-31T23:59:59Z</time>";
    const Folder folder;
    const std::string file = longName.substr(0, 200) + "x.gpx";
    folder.Write(file, Gpx("<metadata>" + name + "</metadata>" +
                           Point("wpt", -89.123456, -179.123456, name + extreme + cache) + "<rte>" + name +
                           "</rte><trk>" + name + "</trk>"));
    const std::vector<std::string> lines = LinesOf({"show", file}, folder.Path());
    EXPECT_GT(lines.size(), 15U);
    for (const std::string& line : lines) {
        EXPECT_LE(TerminalWidth(line), 80) << line;
        EXPECT_GE(TerminalWidth(line), 0) << line;
    }
}

TEST_F(ShowInTerminalTest, NoLineOfTheCorpusIsWider) {
    const std::vector<std::string> files = cli::Corpus("gpx");
    if (files.empty())
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    ASSERT_NE(std::setlocale(LC_CTYPE, "C.UTF-8"), nullptr);
    for (const std::string& file : files)
        for (const std::string& line : LinesOf({"show", "--all", "--no-progress", file}, ".")) {
            EXPECT_LE(TerminalWidth(line), 80) << file << "\n" << line;
            EXPECT_GE(TerminalWidth(line), 0) << file << "\n" << line;
        }
}

TEST(ShowTest, NothingIsCutWhereThereIsNoTerminal) {
    const std::string name(300, 'n');
    const std::string shown =
        ShowOf(Gpx("<metadata><name>" + name + "</name><desc>" + name + "</desc></metadata>" +
                   Point("wpt", 1, 2, "<name>" + name + "</name>")));
    EXPECT_THAT(shown, HasSubstr("  Name       " + name + "\n"));
    EXPECT_THAT(shown, HasSubstr("  1  " + name + "  1.000000"));
    EXPECT_THAT(shown, Not(HasSubstr("\u2026")));
}

// With columns as wide as the longest cell, each row would be as long.
TEST(ShowTest, ALongNameWidensOnlyItsOwnRow) {
    std::string points = Point("wpt", 1, 2, "<name>" + std::string(100'000, 'n') + "</name>");
    for (int i = 0; i < 1'000; ++i)
        points += Point("wpt", 1, 2, "<name>n</name>");
    EXPECT_LT(ShowOf(Gpx(points), {"--all"}).size(), 300'000U);
}

} // namespace
