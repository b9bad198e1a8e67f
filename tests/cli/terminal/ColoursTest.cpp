// SPDX-License-Identifier: MIT
#include "support/Session.h"

namespace {

using cli::Folder;
using cli::Gpx;
using cli::Result;
using cli::RunTool;
using cli::Session;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr char kEscape[] = "\x1B";

class ColoursTest : public cli::TerminalTest {
protected:
    ColoursTest() {
        folder_.Write("walk.gpx",
                      Gpx("<wpt lat='1' lon='2'><name>Z\u00FCrich \u5C71</name><ele>high</ele></wpt>"));
    }

    std::string Screen(std::vector<std::string> arguments,
                       const std::map<std::string, std::string>& environment = {}) {
        Session run(std::move(arguments));
        run.In(folder_.Path())
            .OutToTerminal()
            .Set("TERM", "xterm")
            .Set("LC_ALL", "C.UTF-8")
            .Set("NO_COLOR", "");
        for (const auto& [name, value] : environment)
            run.Set(name, value);
        run.Start().Finish();
        return run.Screen();
    }

    Folder folder_;
};

TEST_F(ColoursTest, ATerminalHasThem) {
    EXPECT_THAT(Screen({"show", "walk.gpx"}), StartsWith("\x1B[1mwalk.gpx\x1B[0m"));
    const std::string check = Screen({"check", "walk.gpx"});
    EXPECT_THAT(check, HasSubstr("\x1B[1mSkipped or changed\x1B[0m"));
    EXPECT_THAT(check, HasSubstr("\x1B[31m  2:48  gpx/wpt/ele (lost)\x1B[0m"));
}

TEST_F(ColoursTest, EveryCommandForPeopleHasThem) {
    for (const char* command : {"show", "stats", "check", "index"}) {
        EXPECT_THAT(Screen({command, "walk.gpx"}), HasSubstr(kEscape)) << command;
        EXPECT_THAT(Screen({command, "--colour", "never", "walk.gpx"}), Not(HasSubstr(kEscape))) << command;
    }
}

TEST_F(ColoursTest, JsonHasNone) {
    for (const char* command : {"show", "stats", "check", "index", "info"})
        EXPECT_THAT(Screen({command, "--json", "--colour=always", "walk.gpx"}), Not(HasSubstr(kEscape)))
            << command;
}

TEST_F(ColoursTest, APipeHasNone) {
    const Result result = RunTool({"show", "walk.gpx"}, folder_.Path());
    EXPECT_THAT(result.out, StartsWith("walk.gpx\n"));
    EXPECT_THAT(RunTool({"show", "--colour", "auto", "walk.gpx"}, folder_.Path()).out,
                Not(HasSubstr(kEscape)));
}

TEST_F(ColoursTest, APipeHasThemWhenTheyAreWanted) {
    EXPECT_THAT(RunTool({"show", "--colour", "always", "walk.gpx"}, folder_.Path()).out,
                StartsWith("\x1B[1mwalk.gpx\x1B[0m\n"));
}

TEST_F(ColoursTest, TheEnvironmentForbidsThem) {
    EXPECT_THAT(Screen({"show", "walk.gpx"}, {{"NO_COLOR", "1"}}), Not(HasSubstr(kEscape)));
    EXPECT_THAT(Screen({"show", "walk.gpx"}, {{"TERM", "dumb"}}), Not(HasSubstr(kEscape)));
    EXPECT_THAT(Screen({"show", "walk.gpx"}, {{"TERM", ""}}), Not(HasSubstr(kEscape)));
    // Without a value it says nothing.
    EXPECT_THAT(Screen({"show", "walk.gpx"}, {{"NO_COLOR", ""}}), HasSubstr(kEscape));
}

TEST_F(ColoursTest, TheOptionIsStrongerThanTheEnvironment) {
    EXPECT_THAT(Screen({"show", "--colour", "always", "walk.gpx"}, {{"NO_COLOR", "1"}, {"TERM", "dumb"}}),
                HasSubstr(kEscape));
}

TEST_F(ColoursTest, AnyOtherWordIsRefused) {
    const Result result = RunTool({"show", "--colour", "sometimes", "walk.gpx"}, folder_.Path());
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.err, HasSubstr("--colour"));
}

TEST_F(ColoursTest, ALocaleWithoutUnicodeGetsAscii) {
    const std::string screen = Screen({"show", "walk.gpx"}, {{"LC_ALL", "C"}});
    EXPECT_THAT(screen, HasSubstr("  1  Zurich ??  "));
    EXPECT_THAT(Screen({"show", "walk.gpx"}), HasSubstr("  1  Z\u00FCrich \u5C71  "));
}

TEST_F(ColoursTest, ALocaleThatIsNotInstalledIsKnownByItsName) {
    EXPECT_THAT(Screen({"show", "walk.gpx"}, {{"LC_ALL", "xx_YY.UTF-8"}}), HasSubstr("Z\u00FCrich"));
    EXPECT_THAT(Screen({"show", "walk.gpx"}, {{"LC_ALL", "xx_YY"}}), HasSubstr("Zurich ??"));
}

TEST_F(ColoursTest, APipeGetsUnicodeWhateverTheLocale) {
    cli::Tool tool({"show", "walk.gpx"});
    EXPECT_THAT(tool.In(folder_.Path()).Set("LC_ALL", "C").Run().out, HasSubstr("Z\u00FCrich \u5C71"));
}

TEST_F(ColoursTest, MessagesInSuchALocaleAreAscii) {
    Session run({"show", "Z\u00FCrich.gpx"});
    run.In(folder_.Path()).Set("LC_ALL", "C").Start().Finish();
    EXPECT_THAT(run.Screen(), HasSubstr("Unable to read the file: Z?rich.gpx (No such file or directory)"));
}

} // namespace
