// SPDX-License-Identifier: MIT
#include <vexagpx/repair/MarkupRepair.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <libxml/parser.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace {

using testing::HasSubstr;
using vexagpx::ChangeList;
using vexagpx::RepairMarkup;

const std::string kRoot = "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1'>";

std::string Repaired(const std::string& text) {
    ChangeList changes;
    return RepairMarkup(text, {}, changes).text;
}

bool IsWellFormed(const std::string& text) {
    xmlDoc* const document = xmlReadMemory(text.data(), static_cast<int>(text.size()), "walk.gpx", nullptr,
                                           XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NONET);
    xmlFreeDoc(document);
    return document != nullptr;
}

std::size_t Count(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size()))
        ++count;
    return count;
}

TEST(MarkupRepairTest, CopiesGoodMarkup) {
    const std::string good =
        "<?xml version='1.0'?>\r\n<!-- a -->" + kRoot +
        "<wpt  lat = '1' lon=\"2\" ><name>a &amp; <![CDATA[<b>]]></name ></wpt>\n</gpx>\n";
    ChangeList changes;
    EXPECT_EQ(RepairMarkup(good, {}, changes).text, good);
    EXPECT_EQ(changes.Count(), 0U);
}

TEST(MarkupRepairTest, MendsText) {
    EXPECT_EQ(Repaired(kRoot + "<name>a & b &deg; \x01]]> 1 < 2</name></gpx>"),
              kRoot + "<name>a &amp; b \u00B0 ]]&gt; 1 &lt; 2</name></gpx>");
}

TEST(MarkupRepairTest, MendsAttributes) {
    EXPECT_EQ(Repaired(kRoot + "<wpt lat=1 lon='2' lat='3'/></gpx>"),
              kRoot + "<wpt lat=\"1\" lon='2'/></gpx>");
}

TEST(MarkupRepairTest, MendsEndTags) {
    EXPECT_EQ(Repaired(kRoot + "<trk><name>a</nam><desc>b</trk></x></gpx>"),
              kRoot + "<trk><name>a</name><desc>b</desc></trk></gpx>");
}

TEST(MarkupRepairTest, DeclaresPrefixes) {
    const std::string text = Repaired(kRoot + "<extensions><gpxtpx:hr/><my:a/></extensions></gpx>");
    EXPECT_THAT(text, HasSubstr(" xmlns:gpxtpx=\"http://www.garmin.com/xmlschemas/TrackPointExtension/v1\""));
    EXPECT_THAT(text, HasSubstr(" xmlns:my=\"urn:undeclared:my\""));
}

TEST(MarkupRepairTest, GivesARootWhatItMisses) {
    EXPECT_THAT(Repaired("\n<gpx><wpt lat='1' lon='2'/>"),
                testing::StartsWith("<gpx version=\"1.1\" xmlns=\"http://www.topografix.com/GPX/1/1\">"));
    EXPECT_THAT(Repaired("<trkpt lat='1' lon='2'/>"), HasSubstr("<trk><trkseg><trkpt lat='1' lon='2'/>"));
}

TEST(MarkupRepairTest, RefusesWhatItWouldLose) {
    EXPECT_THROW(Repaired("no XML at all"), std::runtime_error);
    EXPECT_THROW(Repaired("<html><wpt/></html>"), std::runtime_error);
    EXPECT_THROW(Repaired(kRoot + "</gpx><html/>"), std::runtime_error);
    EXPECT_THROW(Repaired(kRoot + "</gpx><gpx xmlns='http://www.topografix.com/GPX/1/0'/>"),
                 std::runtime_error);
}

TEST(MarkupRepairTest, PutsAnotherDocumentIntoTheFirst) {
    const std::string a = "<wpt lat='1' lon='1'/>";
    const std::string b = "<trk><name>b</name></trk>";
    const std::string head = "<metadata><name>n</name></metadata>";
    EXPECT_EQ(Repaired(kRoot + head + a + "</gpx>\n<?xml version='1.0'?>\n" + kRoot + head + b + "</gpx>\n"),
              kRoot + head + a + b + "</gpx>\n");
    EXPECT_EQ(Repaired(kRoot + a + "<trk><trkseg><trkpt lat='1' lon='1'><ele>1" + kRoot + b + "</gpx>"),
              kRoot + a + "<trk><trkseg></trkseg></trk>" + b + "</gpx>");
    EXPECT_EQ(Repaired(kRoot + "</gpx>" + a + "</gpx>"), kRoot + a + "</gpx>");
    const std::string second =
        "<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1' xmlns:y='urn:y'>";
    EXPECT_THAT(Repaired(kRoot + "</gpx>" + second + "<wpt lat='1' lon='1'><y:z/></wpt></gpx>"),
                HasSubstr(" xmlns:y=\"urn:y\""));
}

TEST(MarkupRepairTest, ManyDocumentsInOneTakeLinearTime) {
    std::string text;
    std::string points;
    for (int i = 0; i < 20000; ++i) {
        text += kRoot + "<wpt lat='1' lon='1'/></gpx>\n";
        points += "<wpt lat='1' lon='1'/>";
    }
    EXPECT_EQ(Repaired(text), kRoot + points + "</gpx>\n");
}

TEST(MarkupRepairTest, WhatHasNoEndTakesNoPointsAlong) {
    const std::string point = "<wpt lat='1' lon='1'/>";
    EXPECT_EQ(Repaired(kRoot + "<!-- no end\n" + point + "</gpx>"), kRoot + "\n" + point + "</gpx>");
    EXPECT_EQ(Repaired(kRoot + "<? no end " + point + "</gpx>"), kRoot + point + "</gpx>");
    EXPECT_EQ(Repaired(kRoot + "<name><![CDATA[a & b</name>" + point + "</gpx>"),
              kRoot + "<name>a &amp; b</name>" + point + "</gpx>");
    std::string many = kRoot;
    for (int i = 0; i < 100000; ++i)
        many += "<!-- ";
    EXPECT_EQ(Repaired(many + point + "</gpx>"), kRoot + point + "</gpx>");
}

TEST(MarkupRepairTest, LeavesADocumentTypeOut) {
    EXPECT_EQ(Repaired("<!DOCTYPE gpx [<!ENTITY a 'b'>]>" + kRoot + "<name>&a;</name></gpx>"),
              kRoot + "<name>&amp;a;</name></gpx>");
    EXPECT_EQ(Repaired("<!DOCTYPE gpx>" + kRoot + "</gpx>"), kRoot + "</gpx>");
}

TEST(MarkupRepairTest, DropsPointsWithoutAPlaceWhenThatIsWanted) {
    const std::string text =
        kRoot + "<wpt lat='91' lon='1'><name>a</name></wpt ><wpt lat='1' lon='1'/><wpt/></gpx>";
    ChangeList changes;
    const vexagpx::RepairedMarkup left = RepairMarkup(text, {}, changes);
    EXPECT_EQ(left.text, text);
    EXPECT_EQ(left.badPoints, 2U);
    EXPECT_EQ(changes.Count(), 0U);
    vexagpx::RepairRules rules;
    rules.dropsBadPoints = true;
    const vexagpx::RepairedMarkup dropped = RepairMarkup(text, rules, changes);
    EXPECT_EQ(dropped.text, kRoot + "<wpt lat='1' lon='1'/></gpx>");
    EXPECT_EQ(dropped.badPoints, 0U);
    EXPECT_EQ(changes.Count(), 2U);
}

TEST(MarkupRepairTest, GivesTimesAZoneWhenOneIsKnown) {
    const std::string text = kRoot + "<wpt lat='1' lon='1'><time> 2024-07-01T08:00:00\n</time></wpt>"
                                     "<wpt lat='1' lon='1'><time>2024-07-01T08:00:00Z</time></wpt></gpx>";
    ChangeList changes;
    const vexagpx::RepairedMarkup left = RepairMarkup(text, {}, changes);
    EXPECT_EQ(left.text, text);
    EXPECT_EQ(left.timesWithoutZone, 1U);
    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone("Europe/Zurich"));
    vexagpx::RepairRules rules;
    rules.zone = zone.get();
    EXPECT_THAT(RepairMarkup(text, rules, changes).text,
                HasSubstr("<time> 2024-07-01T08:00:00+02:00\n</time>"));
    EXPECT_EQ(changes.Count(), 1U);
}

TEST(MarkupRepairTest, KeepsAByteOrderMark) {
    EXPECT_EQ(Repaired("\xEF\xBB\xBF" + kRoot), "\xEF\xBB\xBF" + kRoot + "</gpx>");
}

TEST(MarkupRepairTest, TellsTheLine) {
    std::string text;
    vexagpx::Output out([&text](std::string_view piece) { text += piece; });
    ChangeList changes;
    RepairMarkup(kRoot + "\n<name>a & b</name></gpx>", {}, changes);
    changes.WriteText(out);
    out.Flush();
    EXPECT_EQ(text, "  Line 2: & became &amp;\n");
}

TEST(MarkupRepairTest, EveryTruncationIsWellFormedAndKeepsWholePoints) {
    const std::string whole =
        "<?xml version='1.0'?>\n" + kRoot +
        "<metadata><name>n</name></metadata><wpt lat='1' lon='2'><name>a &amp; b</name></wpt><!-- c -->"
        "<trk><name>t</name><trkseg><trkpt lat='1' lon='2'><ele>1</ele></trkpt>\n"
        "<trkpt lat='3' lon='4'><name><![CDATA[x]]></name></trkpt></trkseg></trk></gpx>\n";
    for (std::size_t size = whole.find(kRoot) + 5; size < whole.size(); ++size) {
        const std::string cut = whole.substr(0, size);
        const std::string text = Repaired(cut);
        ASSERT_TRUE(IsWellFormed(text)) << text;
        ASSERT_EQ(Count(text, "</trkpt>"), Count(cut, "</trkpt>")) << text;
        ASSERT_EQ(Count(text, "</wpt>"), Count(cut, "</wpt>")) << text;
    }
}

TEST(MarkupRepairTest, TakesDeepElementsAndManyMistakes) {
    constexpr std::size_t kMany = 200'000;
    std::string deep = kRoot;
    for (std::size_t i = 0; i < kMany; ++i)
        deep += "<a>\x01";
    EXPECT_EQ(Repaired(deep), kRoot + "</gpx>");
}

} // namespace
