// SPDX-License-Identifier: MIT
#include <vexagpx/terminal/Lines.h>

#include <vexagpx/terminal/DisplayText.h>

#include "support/Session.h"
#include "support/Tool.h"

#include <algorithm>
#include <string>
#include <vector>

namespace {

using cli::Folder;
using cli::Session;
using testing::ElementsAre;
using testing::HasSubstr;
using vexagpx::DisplayWidth;
using vexagpx::Wrapped;

TEST(LinesTest, BreaksAtSpacesAndIndentsWhatFollows) {
    EXPECT_THAT(Wrapped(u"  Name  one two three", 12, 4),
                ElementsAre(u"  Name  one", u"    two", u"    three"));
    EXPECT_THAT(Wrapped(u"", 12, 4), ElementsAre(u""));
    EXPECT_THAT(Wrapped(u"exactly ten", 11, 0), ElementsAre(u"exactly ten"));
}

TEST(LinesTest, BreaksAWordThatIsWiderThanALine) {
    EXPECT_THAT(Wrapped(u"abcdefgh", 3, 0), ElementsAre(u"abc", u"def", u"gh"));
    EXPECT_THAT(Wrapped(u"abcdefgh", 6, 2), ElementsAre(u"abcdef", u"  gh"));
    EXPECT_THAT(Wrapped(u"山山山", 3, 0), ElementsAre(u"山", u"山", u"山"));
    EXPECT_THAT(Wrapped(u"abc def", 3, 2), ElementsAre(u"abc", u"def"));
}

TEST(LinesTest, ALongTextTakesTimeInProportion) {
    const icu::UnicodeString text(3000000, u'a', 3000000);
    EXPECT_EQ(Wrapped(text, 30, 0).size(), 100000U);
}

class LinesInTerminalTest : public cli::TerminalTest {
protected:
    static std::vector<std::string> Shown(std::vector<std::string> arguments, const std::string& folder,
                                          unsigned short columns) {
        Session run(std::move(arguments));
        run.In(folder).Columns(columns).OutToTerminal().Start();
        run.Finish();
        std::string screen = run.Screen();
        screen.erase(std::remove(screen.begin(), screen.end(), '\r'), screen.end());
        return cli::Lines(screen);
    }
};

TEST_F(LinesInTerminalTest, NoLineIsWiderThanTheTerminal) {
    const std::string name =
        "A very long name with 🏔 and 山 in it, and-a-part-that-cannot-be-broken-at-any-space";
    std::string links;
    for (int i = 0; i < 7; ++i)
        links += "<link href='http://example.com/a/rather/long/address/of/a/page/" + std::to_string(i) +
                 "'><text>" + name + "</text></link>";
    const std::string points =
        "<trkpt lat='1' lon='2'><time>2009-01-15T10:20:30Z</time><extensions><hr>90</hr><cad>80"
        "</cad></extensions></trkpt><trkpt lat='1.1' lon='2'><time>2009-01-15T11:20:30Z</time>"
        "<extensions><hr>99</hr><cad>85</cad></extensions></trkpt>";
    const Folder folder;
    folder.Write("a-file-with-a-name-that-is-longer-than-a-narrow-terminal.gpx",
                 cli::Gpx("<metadata><name>" + name + "</name><desc>" + name + "</desc>" + links +
                          "</metadata><wpt lat='1' lon='2'><name>" + name + "</name><ele>" + name +
                          "</ele></wpt><trk><name>" + name + "</name><cmt>" + name + "</cmt><trkseg>" +
                          points + "</trkseg></trk>"));
    const std::string file = folder.Names().front();
    for (const unsigned short columns : std::vector<unsigned short>{40, 80, 200})
        for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
                 {"show", file}, {"check", file}, {"check", "--keep", file}}) {
            const std::vector<std::string> lines = Shown(arguments, folder.Path(), columns);
            std::size_t widest = 0;
            for (const std::string& line : lines)
                widest = std::max(widest, DisplayWidth(icu::UnicodeString::fromUTF8(line)));
            EXPECT_LE(widest, columns) << arguments.front() << testing::PrintToString(lines);
            EXPECT_GT(widest, columns / 3) << arguments.front() << testing::PrintToString(lines);
        }
}

TEST_F(LinesInTerminalTest, TextsAndNotesAreWrappedBelowTheirStart) {
    const Folder folder;
    folder.Write("a.gpx", cli::Gpx("<metadata><desc>one two three four five six seven</desc></metadata>"
                                   "<trk><cmt>a comment that is longer than a line</cmt></trk>"));
    const std::string screen = testing::PrintToString(Shown({"show", "a.gpx"}, folder.Path(), 40));
    EXPECT_THAT(screen, HasSubstr("\"  About      one two three four five six\", \"             seven\""));
    EXPECT_THAT(screen, HasSubstr("\"     comment: a comment that is longer\", \"     than a line\""));
}

TEST_F(LinesInTerminalTest, ANarrowTerminalGetsFewerColumnsAndWholeNumbers) {
    const Folder folder;
    folder.Write("a.gpx",
                 cli::Gpx("<wpt lat='45.5' lon='-122.25'><ele>1</ele><time>2009-01-15T10:20:30Z</time>"
                          "<name>n</name></wpt>"));
    const std::string narrow = testing::PrintToString(Shown({"show", "a.gpx"}, folder.Path(), 40));
    EXPECT_THAT(narrow, HasSubstr("  1  n     45.500000  -122.250000\""));
    EXPECT_THAT(testing::PrintToString(Shown({"show", "a.gpx"}, folder.Path(), 80)),
                HasSubstr("  1  n     45.500000  -122.250000        1 m  2009-01-15T10:20:30Z\""));
}

TEST_F(LinesInTerminalTest, APipeGetsWholeLinesOfCheck) {
    const Folder folder;
    const std::string value(300, 'x');
    folder.Write("a.gpx", cli::Gpx("<wpt lat='1' lon='2'><ele>" + value + "</ele></wpt>"));
    std::size_t widest = 0;
    for (const std::string& line : cli::Lines(cli::RunTool({"check", "a.gpx"}, folder.Path()).out))
        widest = std::max(widest, line.size());
    EXPECT_GT(widest, 80U);
    for (const std::string& line : cli::Lines(cli::RunTool({"show", "a.gpx"}, folder.Path()).out))
        EXPECT_LE(line.size(), 80U) << line;
}

} // namespace
