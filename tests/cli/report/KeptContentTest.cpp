// SPDX-License-Identifier: MIT
#include <vexagpx/report/WritingCheck.h>

#include "support/Tool.h"
#include "support/XercesPlatform.h"

#include <vexagpx/input/FileParser.h>

#include <vexaTransferLib/GpxStandardWriter.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using cli::XercesPlatform;
using testing::ElementsAre;
using testing::IsEmpty;
using vexagpx::ContentForm;
using vexagpx::FileParser;
using vexagpx::FindLost;
using vexagpx::InputRules;
using vexagpx::LostContent;
using vexagpx::LostContents;
using vexagpx::UnwrittenCounts;
using vexaTransferLib::GpxDocument;

GpxDocument Read(const std::string& gpx) {
    const XercesPlatform platform;
    InputRules rules;
    rules.isTrusted = true;
    FileParser parser{rules};
    GpxDocument document;
    parser.ReadBytes(gpx, "a.gpx", document);
    return document;
}

std::string Gpx10(const std::string& elements) {
    return "<gpx version='1.0' creator='x' xmlns='http://www.topografix.com/GPX/1/0'>" + elements + "</gpx>";
}

std::vector<std::string> Texts(const LostContents& lost) {
    std::vector<std::string> texts;
    for (const LostContent& one : lost.first)
        texts.push_back(one.Text());
    return texts;
}

/// What the first document loses when it is written as the second one.
std::vector<std::string> Lost(const std::string& before, const std::string& after,
                              ContentForm form = ContentForm::kGpx11, UnwrittenCounts unwritten = {}) {
    return Texts(FindLost(Read(before), Read(after), form, std::move(unwritten)));
}

std::vector<std::string> LostElements(const std::string& before, const std::string& after) {
    return Lost(cli::Gpx(before), cli::Gpx(after));
}

std::string Point(const std::string& content) {
    return "<wpt lat='1' lon='2'>" + content + "</wpt>";
}

TEST(KeptContentTest, NamesWhatIsMissingAndWhatIsChangedWithItsLine) {
    EXPECT_THAT(
        LostElements("<wpt lat='1' lon='2'><ele>5</ele>\n<sym>Flag</sym></wpt>", Point("<ele>6</ele>")),
        ElementsAre("gpx/wpt[1]/ele is \"6\", and not \"5\" (line 2).",
                    "gpx/wpt[1]/sym, \"Flag\", is missing (line 3)."));
    EXPECT_THAT(LostElements("<trk><trkseg/><trkseg><trkpt lat='1' lon='2'/></trkseg></trk>",
                             "<trk><trkseg/><trkseg><trkpt lat='1' lon='3'/></trkseg></trk>"),
                ElementsAre("gpx/trk[1]/trkseg[2]/trkpt[1]/@lon is \"3\", and not \"2\" (line 2)."));
    EXPECT_THAT(LostElements("<trk><trkseg/><trkseg/></trk>", "<trk><trkseg/></trk>"),
                ElementsAre("gpx/trk[1]/trkseg[2] is missing (line 2)."));
}

TEST(KeptContentTest, FindsWhatTheElementsOfOtherProgramsLose) {
    const std::string start = "<extensions><a xmlns='urn:a' k='1'>";
    EXPECT_THAT(LostElements(Point(start + "<b>x</b><c>y</c></a></extensions>"),
                             Point(start + "<c>y</c><b>x</b></a></extensions>")),
                ElementsAre("gpx/wpt[1]/extensions/{urn:a}a/{urn:a}b[1], \"x\", is missing (line 2).",
                            "gpx/wpt[1]/extensions/{urn:a}a/{urn:a}c[2], \"y\", is missing (line 2)."));
    EXPECT_THAT(LostElements(Point(start + "</a></extensions>"),
                             Point("<extensions><a xmlns='urn:a' k='2'/></extensions>")),
                ElementsAre("gpx/wpt[1]/extensions/{urn:a}a/@k is \"2\", and not \"1\" (line 2)."));
    EXPECT_THAT(
        LostElements(Point(start + "mixed<b/></a></extensions>"), Point(start + "<b/></a></extensions>")),
        ElementsAre("gpx/wpt[1]/extensions/{urn:a}a/text(), \"mixed\", is missing (line 2)."));
    EXPECT_THAT(LostElements(Point("<extensions><a xmlns='urn:a'>1</a></extensions>"),
                             Point("<extensions><a xmlns='urn:b'>1</a></extensions>")),
                ElementsAre("gpx/wpt[1]/extensions/{urn:a}a, \"1\", is missing (line 2)."));
}

TEST(KeptContentTest, NumbersAndTimesAreComparedByValueAndTextsExactly) {
    EXPECT_THAT(LostElements(
                    "<wpt lat='1.0' lon='+2'><ele> 0.50 </ele><time>2009-01-15T10:20:30.50Z</time></wpt>",
                    "<wpt lat='1' lon='2.000'><ele>5e-1</ele><time>2009-01-15T11:20:30.5+01:00</time></wpt>"),
                IsEmpty());
    for (const auto& [before, after] : std::vector<std::pair<std::string, std::string>>{
             {"<ele>0.1234567890123456789</ele>", "<ele>0.1234567890123456788</ele>"},
             {"<ele>-5</ele>", "<ele>5</ele>"},
             {"<ele>1e2</ele>", "<ele>1e3</ele>"},
             {"<time>2009-01-15T10:20:30.12345Z</time>", "<time>2009-01-15T10:20:30.123Z</time>"},
             {"<time>2009-01-15T10:20:30Z</time>", "<time>2009-01-15T10:20:30+01:00</time>"},
             {"<name>5.0</name>", "<name>5</name>"},
             {"<name> a</name>", "<name>a</name>"}})
        EXPECT_EQ(LostElements(Point(before), Point(after)).size(), 1U) << before;
}

TEST(KeptContentTest, WhatMovesBetweenTheVersionsIsNotLost) {
    const std::string v10 =
        Gpx10("<name>n</name><author>a</author><email>b@c</email><url>u</url><urlname>t</urlname>"
              "<z xmlns='urn:z'/><trk><trkseg><trkpt lat='1' lon='2'><speed>3</speed></trkpt>"
              "</trkseg></trk>");
    const std::string v11 = cli::Gpx(
        "<metadata><name>n</name><author><name>a</name><email id='b' domain='c'/></author>"
        "<link href='u'><text>t</text></link></metadata><trk><trkseg><trkpt lat='1' lon='2'><extensions>"
        "<speed>3</speed></extensions></trkpt></trkseg></trk><extensions><y:z "
        "xmlns:y='urn:z'/></extensions>");
    EXPECT_THAT(Lost(v10, v11), IsEmpty());
    EXPECT_THAT(Lost(v11, v10, ContentForm::kGpx10), IsEmpty());
    EXPECT_THAT(Lost(cli::Gpx("<metadata><extensions><z xmlns='urn:z'/></extensions></metadata>"),
                     Gpx10("<z xmlns='urn:z'/>"), ContentForm::kGpx10),
                IsEmpty());
}

TEST(KeptContentTest, TheTextOfALinkBelongsToItsAddress) {
    EXPECT_THAT(
        LostElements(Point("<link href='u'><text>1</text></link><link href='v'><text>2</text></link>"),
                     Point("<link href='u'><text>2</text></link><link href='v'><text>1</text></link>")),
        ElementsAre("gpx/wpt[1]/link(u)/text is \"2\", and not \"1\" (line 2).",
                    "gpx/wpt[1]/link(v)/text is \"1\", and not \"2\" (line 2)."));
}

TEST(KeptContentTest, OnlyWhatTheWriterReportsIsExplained) {
    const std::string before =
        cli::Gpx(Point("<link href='u'><type>t</type></link><link href='v'/><type>hut</type>") +
                 Point("<link href='w'/>"));
    const std::string after = Gpx10(Point("<url>u</url>") + Point(""));
    UnwrittenCounts unwritten;
    unwritten.Add({"waypoint 1", "link", ""});
    unwritten.Add({"waypoint 1", "type", ""});
    EXPECT_THAT(Lost(before, after, ContentForm::kGpx10, unwritten),
                ElementsAre("gpx/wpt[1]/type, \"hut\", is missing (line 2).",
                            "gpx/wpt[2]/link/@href, \"w\", is missing (line 2)."));
    EXPECT_EQ(Lost(before, after, ContentForm::kGpx10).size(), 4U);
    EXPECT_THAT(Lost(before, Gpx10(Point("<type>hut</type>") + Point("<url>w</url>")), ContentForm::kGpx10,
                     unwritten),
                ElementsAre("gpx/wpt[1]/link/@href, \"v\", is missing (line 2)."));
}

TEST(KeptContentTest, ElementsThatCannotBeReadAreComparedToo) {
    const std::string unread = "<wpt lat='x' lon='2'><name>n</name></wpt>";
    EXPECT_THAT(LostElements(unread + Point(""), Point("") + unread), IsEmpty());
    EXPECT_THAT(LostElements(unread + Point(""), Point("")),
                ElementsAre("gpx/wpt (unread)[1] is missing (line 2).",
                            "gpx/wpt (unread)[1]/@lat, \"x\", is missing (line 2).",
                            "gpx/wpt (unread)[1]/@lon, \"2\", is missing (line 2).",
                            "gpx/wpt (unread)[1]/name, \"n\", is missing (line 2)."));
}

TEST(KeptContentTest, ListsTheFirstAndCountsTheOthers) {
    std::string points;
    for (int i = 0; i < 1000; ++i)
        points += Point("<name>" + std::string(1000, 'n') + "</name>");
    const LostContents lost =
        FindLost(Read(cli::Gpx(points)), Read(cli::Gpx("")), ContentForm::kGpx11, UnwrittenCounts());
    EXPECT_EQ(lost.count, 4000U);
    EXPECT_EQ(lost.first.size(), LostContents::kMost);
    EXPECT_EQ(lost.first[3].Text(),
              "gpx/wpt[1]/name, \"" + std::string(59, 'n') + "…\", is missing (line 2).");
}

TEST(KeptContentTest, ElementsMayBeAsDeepAsAnyoneLikes) {
    constexpr int kDepth = 20000;
    std::string deep;
    for (int i = 0; i < kDepth; ++i)
        deep += "<z xmlns='urn:z'>";
    std::string end;
    for (int i = 0; i < kDepth; ++i)
        end += "</z>";
    const std::string before = Point("<extensions>" + deep + "1" + end + "</extensions>");
    EXPECT_THAT(LostElements(before, before), IsEmpty());
    EXPECT_EQ(LostElements(before, Point("<extensions>" + deep + "2" + end + "</extensions>")).size(), 1U);
}

TEST(WritingCheckTest, AWritingThatDropsSomethingIsNamed) {
    const GpxDocument document = Read(cli::Gpx(Point("<hdop>1</hdop>\n<src>s</src>")));
    std::string text = vexaTransferLib::GpxStandardWriter().GetText(document);
    const std::string dropped = "<hdop>1</hdop>";
    ASSERT_NE(text.find(dropped), std::string::npos);
    text.erase(text.find(dropped), dropped.size());
    vexagpx::WritingCheck check{"1.1", {}, {}, 0};
    const XercesPlatform platform;
    FileParser parser{InputRules()};
    CompareWithText(document, text, {}, parser, "a.gpx", check);
    EXPECT_THAT(check.differences, ElementsAre("gpx/wpt[1]/hdop, \"1\", is missing (line 2)."));
    EXPECT_EQ(check.LostCount(), 1U);
}

} // namespace
