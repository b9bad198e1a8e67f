// SPDX-License-Identifier: MIT

// The display of long readings on a terminal.

#include <vexagpx/terminal/DisplayText.h>
#include <vexagpx/terminal/ProgressBar.h>

#include "support/Session.h"
#include "support/SlowPipe.h"

#include "support/ZipBuilder.h"

#include <chrono>
#include <thread>

namespace {

using cli::Folder;
using cli::Gpx;
using cli::Session;
using cli::SlowPipe;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using vexagpx::ProgressLine;
using namespace std::chrono_literals;

constexpr char kClear[] = "\r\x1B[K";

std::string Utf8(const icu::UnicodeString& text) {
    std::string bytes;
    text.toUTF8String(bytes);
    return bytes;
}

std::string Repeated(const std::string& text, std::size_t count) {
    std::string repeated;
    for (std::size_t i = 0; i < count; ++i)
        repeated += text;
    return repeated;
}

/// The lines that were drawn over one another.
std::vector<std::string> Drawn(const std::string& screen) {
    std::vector<std::string> lines;
    for (std::size_t at = 0; (at = screen.find('\r', at)) != std::string::npos;) {
        const std::size_t end = screen.find("\x1B[K", ++at);
        if (end == std::string::npos)
            break;
        if (end > at)
            lines.push_back(screen.substr(at, end - at));
    }
    return lines;
}

TEST(ProgressLineTest, ShowsNameBarAndPercentInWhatRoomThereIs) {
    struct Row {
        std::size_t width;
        std::uint64_t done;
        std::uint64_t inAll;
        const char* expected;
    };
    const std::vector<Row> rows = {
        {79, 0, 100, "walk.gpx  [                                        ]    0%"},
        {79, 999, 1000, "walk.gpx  [======================================= ]   99%"},
        {79, 100, 100, "walk.gpx  [========================================]  100%"},
        {79, 150, 100, "walk.gpx  [========================================]  100%"},
        {30, 50, 100, "walk.gpx  [======      ]   50%"},
        {28, 50, 100, "walk.gpx  [=====     ]   50%"},
        {27, 50, 100, "walk.gpx   50%"},
        {14, 50, 100, "walk.gpx   50%"},
        {13, 50, 100, "…lk.gpx   50%"},
        {7, 50, 100, "…   50%"},
        {6, 50, 100, " 50%"},
        {4, 50, 100, " 50%"},
        {3, 50, 100, ""},
        {79, 12345678, 0, "walk.gpx  12.3 MB"},
        {79, 0, 0, "walk.gpx  0 B"},
        {12, 12345678, 0, "…px  12.3 MB"},
        {9, 12345678, 0, "12.3 MB"},
        {6, 12345678, 0, ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Utf8(ProgressLine(u"walk.gpx", {row.done, row.inAll}, row.width)), row.expected)
            << row.width;
}

TEST(ProgressLineTest, ALongNameLeavesRoomForABarAndItsEndIsShown) {
    EXPECT_EQ(Utf8(ProgressLine(u"/a/long/way/to/the/file/walk.gpx", {50, 100}, 40)),
              "…o/the/file/walk.gpx  [=====     ]   50%");
    EXPECT_EQ(Utf8(ProgressLine(u"日本日本日本日本日本日本日本日本", {50, 100}, 40)),
              "…本日本日本日本日本  [=====     ]   50%");
}

TEST(ProgressLineTest, IsNeverWiderThanAllowed) {
    for (std::size_t width = 0; width < 120; ++width)
        for (const char16_t* name : {u"", u"w", u"walk.gpx", u"日本日本日本日本日本日本日本日本日本日本.gpx"})
            for (const std::uint64_t inAll : {0U, 7000U})
                EXPECT_LE(vexagpx::DisplayWidth(ProgressLine(name, {4999, inAll}, width)), width);
}

TEST(ProgressPaceTest, StartsAfterHalfASecondAndGoesOnTenTimesASecond) {
    const vexagpx::ProgressPace::Time start{};
    vexagpx::ProgressPace pace(start);
    EXPECT_FALSE(pace.IsDue(start));
    EXPECT_FALSE(pace.IsDue(start + 499ms));
    EXPECT_TRUE(pace.IsDue(start + 500ms));
    EXPECT_FALSE(pace.IsDue(start + 500ms));
    EXPECT_FALSE(pace.IsDue(start + 599ms));
    EXPECT_TRUE(pace.IsDue(start + 750ms));
    EXPECT_FALSE(pace.IsDue(start + 800ms));
    EXPECT_TRUE(pace.IsDue(start + 850ms));
}

/// Writes a waypoint every few milliseconds until the condition holds, then the rest of the document.
void FeedUntil(SlowPipe& pipe, Session& session, const std::function<bool()>& condition) {
    pipe.Write("<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'>");
    EXPECT_TRUE(session.Until([&] {
        pipe.Write("<wpt lat='1' lon='2'/>");
        return condition();
    }));
    pipe.Write("</gpx>");
    pipe.Close();
    session.Finish();
}

std::function<bool()> After(std::chrono::milliseconds time) {
    const auto start = std::chrono::steady_clock::now();
    return [start, time] { return std::chrono::steady_clock::now() - start > time; };
}

class ProgressBarTest : public cli::TerminalTest {};

TEST_F(ProgressBarTest, APipeShowsItsBytesAndNothingRemains) {
    const Folder folder;
    SlowPipe pipe(folder.File("walk.gpx"));
    Session session({"show", "walk.gpx"});
    session.In(folder.Path()).Start();
    FeedUntil(pipe, session, [&] { return Drawn(session.Screen()).size() >= 3; });
    EXPECT_EQ(session.Status(), 0);
    EXPECT_THAT(session.Out(), StartsWith("walk.gpx\n"));
    EXPECT_THAT(session.Screen(), EndsWith(kClear));
    for (const std::string& line : Drawn(session.Screen()))
        EXPECT_THAT(line, testing::MatchesRegex("walk\\.gpx  [0-9.]+ k?B"));
}

TEST_F(ProgressBarTest, NoMoreThanTenTimesASecond) {
    const Folder folder;
    SlowPipe pipe(folder.File("walk.gpx"));
    Session session({"dump", "walk.gpx"});
    const auto start = std::chrono::steady_clock::now();
    session.In(folder.Path()).Start();
    FeedUntil(pipe, session, [&] { return Drawn(session.Screen()).size() >= 5; });
    const auto tenths = (std::chrono::steady_clock::now() - start) / 100ms;
    EXPECT_LE(Drawn(session.Screen()).size(), static_cast<std::size_t>(tenths) + 1);
}

TEST_F(ProgressBarTest, AMessageIsWrittenOnAClearedLine) {
    const Folder folder;
    SlowPipe pipe(folder.File("walk.gpx"));
    Session session({"show", "walk.gpx"});
    session.In(folder.Path()).Start();
    pipe.Write("<gpx>&");
    ASSERT_TRUE(session.Until([&] {
        pipe.Write("x");
        return !Drawn(session.Screen()).empty();
    }));
    pipe.Close();
    session.Finish();
    EXPECT_EQ(session.Status(), 1);
    EXPECT_THAT(session.Screen(), HasSubstr(std::string(kClear) + "vexagpx: One or more errors"));
    EXPECT_THAT(session.Screen(), EndsWith("\r\n"));
}

TEST_F(ProgressBarTest, TheWidthIsThatOfTheTerminal) {
    for (const unsigned short columns : std::initializer_list<unsigned short>{12, 30}) {
        const Folder folder;
        SlowPipe pipe(folder.File("a-rather-long-name.gpx"));
        Session session({"show", "a-rather-long-name.gpx"});
        session.In(folder.Path()).Columns(columns).Start();
        FeedUntil(pipe, session, [&] { return Drawn(session.Screen()).size() >= 2; });
        for (const std::string& line : Drawn(session.Screen()))
            EXPECT_LT(vexagpx::DisplayWidth(icu::UnicodeString::fromUTF8(line)), columns) << line;
    }
}

TEST_F(ProgressBarTest, ANameWithControlCharactersDoesNotReachTheTerminalRaw) {
    const Folder folder;
    SlowPipe pipe(folder.File("a\x1B[2Jb.gpx"));
    Session session({"dump", "a\x1B[2Jb.gpx"});
    session.In(folder.Path()).Start();
    FeedUntil(pipe, session, [&] { return !Drawn(session.Screen()).empty(); });
    EXPECT_THAT(session.Screen(), Not(HasSubstr("\x1B[2J")));
}

TEST_F(ProgressBarTest, NothingIsShownWhereItIsNotWanted) {
    struct Row {
        const char* name;
        std::vector<std::string> arguments;
        const char* terminal;
        bool inBackground;
    };
    const std::vector<Row> rows = {
        {"the option behind the command", {"dump", "--no-progress", "walk.gpx"}, "xterm", false},
        {"the option before the command", {"--no-progress", "dump", "walk.gpx"}, "xterm", false},
        {"a dumb terminal", {"dump", "walk.gpx"}, "dumb", false},
        {"an unknown terminal", {"dump", "walk.gpx"}, "", false},
        {"a job in the background", {"dump", "walk.gpx"}, "xterm", true},
    };
    for (const Row& row : rows) {
        const Folder folder;
        SlowPipe pipe(folder.File("walk.gpx"));
        Session session(row.arguments);
        session.In(folder.Path()).Set("TERM", row.terminal);
        if (row.inBackground)
            session.InBackground();
        session.Start();
        FeedUntil(pipe, session, After(1200ms));
        EXPECT_EQ(session.Status(), 0) << row.name;
        EXPECT_THAT(session.Out(), HasSubstr("\"waypoints\":[{")) << row.name;
        EXPECT_EQ(session.Screen(), "") << row.name;
    }
}

TEST(ProgressBarWithoutTerminalTest, NothingIsWritten) {
    const Folder folder;
    SlowPipe pipe(folder.File("walk.gpx"));
    std::thread writer([&] {
        pipe.Write("<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'>");
        for (const auto isOver = After(1200ms); !isOver();) {
            pipe.Write("<wpt lat='1' lon='2'/>");
            std::this_thread::sleep_for(5ms);
        }
        pipe.Write("</gpx>");
        pipe.Close();
    });
    const cli::Result result = cli::Tool({"dump", "walk.gpx"}).In(folder.Path()).Set("TERM", "xterm").Run();
    writer.join();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
}

TEST_F(ProgressBarTest, AReadingOfLessThanHalfASecondShowsNothing) {
    const Folder folder;
    folder.Write("a.gpx", Gpx("<wpt lat='1' lon='2'/>"));
    for (int i = 0; i < 20; ++i) {
        Session session({"dump", "a.gpx", "a.gpx"});
        const auto isSlow = After(500ms);
        session.In(folder.Path()).Start().Finish();
        EXPECT_EQ(session.Status(), 0);
        if (isSlow())
            continue;
        EXPECT_EQ(session.Screen(), "");
        return;
    }
    GTEST_SKIP() << "this machine takes half a second to read two waypoints";
}

// Each pause is longer than the time between two states of the bar, so that a fast machine shows some, too.
bool StepUntilItMoves(Session& session) {
    return session.StepUntil([&] { return Drawn(session.Screen()).size() >= 2; }, 150ms);
}

std::string ManyWaypoints() {
    return Gpx(Repeated("<wpt lat='47.5' lon='-122.25'><ele>35.5</ele><name>a name</name></wpt>\n", 150000));
}

TEST_F(ProgressBarTest, AFileShowsItsShareInPercent) {
    const Folder folder;
    folder.Write("long.gpx", ManyWaypoints());
    Session session({"check", "long.gpx"});
    session.In(folder.Path()).Start();
    EXPECT_TRUE(StepUntilItMoves(session));
    session.Continue();
    session.Finish();
    EXPECT_EQ(session.Status(), 0);
    EXPECT_THAT(session.Out(), HasSubstr("  Waypoints  150000\n"));
    EXPECT_THAT(session.Screen(), EndsWith(kClear));
    for (const std::string& line : Drawn(session.Screen()))
        EXPECT_THAT(line, testing::MatchesRegex("long\\.gpx  \\[=* *\\]  [ 0-9][ 0-9][0-9]%"));
}

TEST_F(ProgressBarTest, AnEntryOfAnArchiveShowsItsShareInPercent) {
    const Folder folder;
    folder.Write("a.zip", testing_support::BuildZip({{.name = "long.gpx", .content = ManyWaypoints()}}));
    Session session({"check", "a.zip", "--max-ratio", "5000"});
    session.In(folder.Path()).Start();
    EXPECT_TRUE(StepUntilItMoves(session));
    session.Continue();
    session.Finish();
    EXPECT_EQ(session.Status(), 0);
    EXPECT_THAT(Drawn(session.Screen()), testing::Each(StartsWith("a.zip/long.gpx  [")));
}

} // namespace
