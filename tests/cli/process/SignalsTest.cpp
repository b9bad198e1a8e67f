// SPDX-License-Identifier: MIT

// The effects of Ctrl-C and SIGTERM.

#include "support/Session.h"
#include "support/SlowPipe.h"

#include "support/ZipBuilder.h"

#include <csignal>

namespace {

using cli::Folder;
using cli::Gpx;
using cli::ReadFile;
using cli::Session;
using cli::SlowPipe;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr char kControlC[] = "\x03";

std::string Cancelled(const std::string& name) {
    return "\r\x1B[Kvexagpx: The reading of the GPX file was cancelled: " + name + "\r\n";
}

/// True when the bar has been drawn and not cleared since.
bool ShowsProgress(const Session& session) {
    return session.Screen().ends_with("\x1B[K") && !session.Screen().ends_with("\r\x1B[K");
}

std::string ManyWaypoints() {
    std::string waypoints;
    for (int i = 0; i < 400000; ++i)
        waypoints += "<wpt lat='47.5' lon='-122.25'><ele>35.5</ele><name>a name</name></wpt>\n";
    return Gpx(waypoints);
}

/// Stops the run in the middle of reading a document, sends it a signal or keys, and lets it continue.
template <class Act>
void InterruptReading(Session& session, Act act) {
    ASSERT_TRUE(session.StepUntil([&] { return ShowsProgress(session); })) << session.Screen();
    act();
    session.Continue();
    session.Finish();
}

class SignalsTest : public cli::TerminalTest {};

TEST_F(SignalsTest, ControlCCancelsTheReadingAndTheFilesThatFollow) {
    const Folder folder;
    folder.Write("long.gpx", ManyWaypoints());
    folder.Write("next.gpx", Gpx(""));
    for (const char* command : {"show", "dump", "check"}) {
        Session session({command, "long.gpx", "next.gpx", "missing.gpx"});
        session.In(folder.Path()).Start();
        InterruptReading(session, [&] { session.Type(kControlC); });
        EXPECT_EQ(session.Status(), -SIGINT) << command;
        EXPECT_TRUE(session.Out().empty()) << command;
        EXPECT_THAT(session.Screen(), EndsWith(Cancelled("long.gpx"))) << command;
    }
}

TEST_F(SignalsTest, SigtermDoesTheSame) {
    const Folder folder;
    folder.Write("long.gpx", ManyWaypoints());
    Session session({"show", "long.gpx"});
    session.In(folder.Path()).Start();
    InterruptReading(session, [&] { session.Send(SIGTERM); });
    EXPECT_EQ(session.Status(), -SIGTERM);
    EXPECT_TRUE(session.Out().empty());
    EXPECT_THAT(session.Screen(), EndsWith(Cancelled("long.gpx")));
}

TEST_F(SignalsTest, DocumentsBeforeItHaveBeenPrinted) {
    const Folder folder;
    folder.Write("first.gpx", Gpx(""));
    folder.Write("long.gpx", ManyWaypoints());
    Session session({"dump", "--as-host", "first.gpx", "long.gpx"});
    session.In(folder.Path()).Start();
    InterruptReading(session, [&] { session.Type(kControlC); });
    EXPECT_EQ(session.Out(), "{\"file\":\"first.gpx\",\"waypoints\":[],\"routes\":[],\"tracks\":[]}\n");
}

TEST_F(SignalsTest, AConversionLeavesTheTargetAsItWas) {
    const Folder folder;
    const std::string before = ManyWaypoints();
    for (const char* out : {"long.gpx", "old.gpx", "new.gpx"}) {
        folder.Write("long.gpx", before);
        folder.Write("old.gpx", "as it was");
        Session session({"convert", "long.gpx", out});
        session.In(folder.Path()).Start();
        InterruptReading(session, [&] { session.Type(kControlC); });
        EXPECT_EQ(session.Status(), -SIGINT) << out;
        EXPECT_THAT(session.Screen(), EndsWith(Cancelled("long.gpx"))) << out;
        EXPECT_THAT(folder.Names(), ElementsAre("long.gpx", "old.gpx")) << out;
        EXPECT_EQ(ReadFile(folder.File("old.gpx")), "as it was") << out;
        EXPECT_TRUE(ReadFile(folder.File("long.gpx")) == before) << out;
    }
}

TEST_F(SignalsTest, AnEntryOfAnArchiveIsNamed) {
    const Folder folder;
    folder.Write("a.zip", testing_support::BuildZip({{.name = "long.gpx", .content = ManyWaypoints()},
                                                     {.name = "next.gpx", .content = Gpx("")}}));
    Session session({"dump", "a.zip", "--max-ratio", "5000"});
    session.In(folder.Path()).Start();
    InterruptReading(session, [&] { session.Type(kControlC); });
    EXPECT_EQ(session.Status(), -SIGINT);
    EXPECT_TRUE(session.Out().empty());
    EXPECT_THAT(session.Screen(), EndsWith(Cancelled("a.zip/long.gpx")));
}

TEST_F(SignalsTest, ReadingAPipeIsCancelledAndItsCopyRemoved) {
    for (const int signal : {SIGINT, SIGTERM}) {
        const Folder folder;
        const Folder temporary;
        SlowPipe pipe(folder.File("walk.gpx"));
        Session session({"dump", "walk.gpx", "missing.gpx"});
        session.In(folder.Path()).Set("TMPDIR", temporary.Path()).Start();
        ASSERT_TRUE(session.Until([&] {
            pipe.Write("<gpx>");
            return ShowsProgress(session);
        }));
        EXPECT_THAT(temporary.Names(), testing::SizeIs(1));
        session.Send(signal);
        session.Finish();
        EXPECT_EQ(session.Status(), -signal);
        EXPECT_TRUE(session.Out().empty());
        EXPECT_THAT(session.Screen(), EndsWith(Cancelled("walk.gpx")));
        EXPECT_THAT(temporary.Names(), IsEmpty());
    }
}

TEST_F(SignalsTest, StandardInputIsCancelledToo) {
    const Folder temporary;
    Session session({"show", "-"});
    session.Set("TMPDIR", temporary.Path()).Start();
    ASSERT_TRUE(session.Until([&] { return !temporary.Names().empty(); }));
    session.Type(kControlC);
    session.Finish();
    EXPECT_EQ(session.Status(), -SIGINT);
    EXPECT_EQ(session.Screen(), "^Cvexagpx: The reading of the GPX file was cancelled: -\r\n");
    EXPECT_THAT(temporary.Names(), IsEmpty());
}

/// A document that the XML parser cannot finish reading: it waits for another file.
struct Stuck {
    Folder folder;
    SlowPipe pipe{folder.File("slow.xml")};

    Stuck() {
        folder.Write("stuck.gpx", "<!DOCTYPE gpx [<!ENTITY slow SYSTEM 'slow.xml'>]>" + Gpx("&slow;"));
    }
};

TEST_F(SignalsTest, ASecondControlCEndsAtOnce) {
    Stuck stuck;
    Session session({"dump", "--trust", "stuck.gpx"});
    // The alarm, which would end the wait, is ignored.
    session.In(stuck.folder.Path()).Ignoring(SIGALRM).Start();
    stuck.pipe.Open();
    session.SendAndWait(SIGINT);
    EXPECT_FALSE(session.HasEnded());
    session.Send(SIGINT);
    session.Finish();
    EXPECT_EQ(session.Status(), -SIGINT);
    EXPECT_EQ(session.Screen(), "vexagpx: The reading of the GPX file was cancelled: stuck.gpx\r\n");
}

TEST_F(SignalsTest, AReadingThatDoesNotHeedItEndsAfterAWhile) {
    for (const int signal : {SIGINT, SIGTERM}) {
        Stuck stuck;
        Session session({"dump", "--trust", "stuck.gpx"});
        session.In(stuck.folder.Path()).Start();
        stuck.pipe.Open();
        session.Send(signal);
        session.Finish();
        EXPECT_EQ(session.Status(), -signal);
        EXPECT_EQ(session.Screen(), "vexagpx: The reading of the GPX file was cancelled: stuck.gpx\r\n");
    }
}

TEST_F(SignalsTest, ASignalThatTheCallerIgnoresIsIgnored) {
    const Folder folder;
    SlowPipe pipe(folder.File("walk.gpx"));
    Session session({"dump", "--as-host", "walk.gpx"});
    session.In(folder.Path()).Ignoring(SIGINT).Start();
    pipe.Write("<gpx version='1.1'>");
    session.SendAndWait(SIGINT);
    pipe.Write("</gpx>");
    pipe.Close();
    session.Finish();
    EXPECT_EQ(session.Status(), 0);
    EXPECT_THAT(session.Out(), HasSubstr("\"file\":\"walk.gpx\""));
}

TEST_F(SignalsTest, CommandsThatReadNoDocumentEndWithoutWords) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"clean"}, {"zip", "list", "-"}, {"zip", "test", "-"}}) {
        const Folder temporary;
        Session session(arguments);
        session.Set("TMPDIR", temporary.Path()).Start();
        if (arguments[0] == "zip") {
            ASSERT_TRUE(session.Until([&] { return !temporary.Names().empty(); }));
        }
        session.Send(SIGINT);
        session.Finish();
        EXPECT_EQ(session.Status(), -SIGINT) << arguments[0];
        EXPECT_EQ(session.Out(), "") << arguments[0];
        EXPECT_EQ(session.Screen(), "") << arguments[0];
        EXPECT_THAT(temporary.Names(), IsEmpty()) << arguments[0];
    }
}

TEST_F(SignalsTest, UnpackingLeavesNoPartOfAFile) {
    const Folder folder;
    const std::string content(100'000'000, 'x');
    folder.Write("a.zip", testing_support::BuildZip({{.name = "small", .content = "whole"},
                                                     {.name = "large", .content = content}}));
    Session session({"zip", "extract", "--max-ratio", "5000", "a.zip", "out"});
    session.In(folder.Path()).Start();
    const auto isWriting = [&] {
        const std::vector<std::string> paths = folder.Tree();
        return std::any_of(paths.begin(), paths.end(),
                           [](const std::string& path) { return path.starts_with("out/.vexagpx-"); }) &&
               std::count(paths.begin(), paths.end(), "out/small") == 1;
    };
    ASSERT_TRUE(session.StepUntil(isWriting));
    session.Type(kControlC);
    session.Continue();
    session.Finish();
    EXPECT_EQ(session.Status(), -SIGINT);
    EXPECT_THAT(folder.Tree(), ElementsAre("a.zip", "out/", "out/small"));
    EXPECT_EQ(ReadFile(folder.File("out/small")), "whole");
}

TEST_F(SignalsTest, WritingLeavesNoPartOfAFile) {
    const Folder folder;
    folder.Write("long.gpx", ManyWaypoints());
    folder.Write("out.gpx", "as it was");
    Session session({"convert", "long.gpx", "out.gpx"});
    session.In(folder.Path()).Start();
    ASSERT_TRUE(session.StepUntil([&] { return folder.Names().size() == 3; }));
    session.Type(kControlC);
    session.Continue();
    session.Finish();
    EXPECT_EQ(session.Status(), -SIGINT);
    EXPECT_THAT(session.Screen(), Not(HasSubstr("cancelled")));
    EXPECT_THAT(folder.Names(), ElementsAre("long.gpx", "out.gpx"));
    EXPECT_EQ(ReadFile(folder.File("out.gpx")), "as it was");
}

} // namespace
