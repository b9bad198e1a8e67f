// SPDX-License-Identifier: MIT
#include <vexagpx/repair/MarkupRepair.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <libxml/parser.h>

#include <stdexcept>
#include <string>

namespace {

using testing::HasSubstr;
using vexagpx::ChangeList;
using vexagpx::RepairMarkup;

const std::string kRoot = "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1'>";

std::string Repaired(const std::string& text) {
    ChangeList changes;
    return RepairMarkup(text, changes);
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
    EXPECT_EQ(RepairMarkup(good, changes), good);
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
    EXPECT_THROW(Repaired(kRoot + "</gpx>" + kRoot + "<wpt lat='1' lon='2'/></gpx>"), std::runtime_error);
}

TEST(MarkupRepairTest, TellsTheLine) {
    std::string text;
    vexagpx::Output out([&text](std::string_view piece) { text += piece; });
    ChangeList changes;
    RepairMarkup(kRoot + "\n<name>a & b</name></gpx>", changes);
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
