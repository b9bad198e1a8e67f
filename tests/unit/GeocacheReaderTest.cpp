// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/GeocacheReader.h>

#include <vexaTransferLib/GpxParser.h>

#include "support/ContractChecks.h"
#include "support/FakeNode.h"
#include "support/GpxDom.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"
#include "support/IcuMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

// A cache element in the namespace of Groundspeak cache 1.0, as the root of its document.
std::string Cache(const std::string& children) {
    return "<cache xmlns='http://www.groundspeak.com/cache/1/0' xmlns:other='urn:other'>" + children +
           "</cache>";
}

// "name|owner|type|container|difficulty|terrain|short|long|hints"
std::string Texts(const GpxGroundspeakCache& cache) {
    std::string text;
    for (const icu::UnicodeString* field :
         {&cache.name, &cache.owner, &cache.type, &cache.container, &cache.difficulty, &cache.terrain,
          &cache.short_description, &cache.long_description, &cache.encoded_hints})
        text += Utf8(*field) + (field != &cache.encoded_hints ? "|" : "");
    return text;
}

// "id date finder type text;" for each log.
std::string Logs(const GpxGroundspeakCache& cache) {
    std::string text;
    for (const GpxGroundspeakCacheLog& log : cache.logs)
        text += std::to_string(log.id) + " " + Utf8(log.date) + " " + Utf8(log.finder) + " " +
                Utf8(log.type) + " " + Utf8(log.text) + ";";
    return text;
}

std::string TravelBugs(const GpxGroundspeakCache& cache) {
    std::string text;
    for (const icu::UnicodeString& name : cache.travelbugs)
        text += Utf8(name) + ";";
    return text;
}

GpxGroundspeakCache FilledCache() {
    GpxGroundspeakCache cache;
    cache.name = u"before";
    cache.logs.resize(1);
    cache.travelbugs.resize(1);
    return cache;
}

struct Result {
    bool found = false;
    GpxGroundspeakCache cache;
};

Result Read(const std::string& children) {
    const DomTree tree(Cache(children));
    Result result{false, FilledCache()};
    result.found = GpxParser().GetGroundspeakCacheElement(tree.Root(), result.cache);
    return result;
}

std::string Element(const std::string& name, const std::string& text) {
    return "<" + name + ">" + text + "</" + name + ">";
}

constexpr const char* kTextNames[] = {"name",
                                      "owner",
                                      "type",
                                      "container",
                                      "difficulty",
                                      "terrain",
                                      "short_description",
                                      "long_description",
                                      "encoded_hints"};

TEST(GeocacheReaderTest, ReadsTheNineTexts) {
    std::string children;
    for (const char* name : kTextNames)
        children += Element(name, std::string("my ") + name);
    const Result result = Read(children + "<placed_by>p</placed_by><country>c</country><attributes/>");
    EXPECT_TRUE(result.found);
    EXPECT_EQ(Texts(result.cache),
              "my name|my owner|my type|my container|my difficulty|my terrain|my short_description|"
              "my long_description|my encoded_hints");
    EXPECT_TRUE(result.cache.logs.empty());
    EXPECT_TRUE(result.cache.travelbugs.empty());
}

TEST(GeocacheReaderTest, AnySingleTextMakesACache) {
    for (const char* name : kTextNames)
        EXPECT_TRUE(Read(Element(name, "x")).found) << name;
}

TEST(GeocacheReaderTest, WithoutAnyTextTheRecordIsLeftCleared) {
    for (const char* children :
         {"", "<name/><owner></owner>", "<name><b>x</b></name>", "<other:name>x</other:name>",
          "<Name>x</Name>", "text", "<placed_by>p</placed_by>"}) {
        const Result result = Read(children);
        EXPECT_FALSE(result.found) << children;
        EXPECT_EQ(Texts(result.cache), "||||||||") << children;
        EXPECT_TRUE(result.cache.logs.empty() && result.cache.travelbugs.empty()) << children;
    }
}

constexpr char kLog[] = "<log id='5'><date>D</date><finder>F</finder><type>T</type><text>X</text></log>";

TEST(GeocacheReaderTest, LogsAndTravelBugsAloneAreReadButMakeNoCache) {
    const Result result =
        Read(Element("logs", kLog) + "<travelbugs><travelbug><name>B</name></travelbug></travelbugs>");
    EXPECT_FALSE(result.found);
    EXPECT_EQ(Logs(result.cache), "5 D F T X;");
    EXPECT_EQ(TravelBugs(result.cache), "B;");
}

TEST(GeocacheReaderTest, ARepeatedTextOverwrites) {
    EXPECT_EQ(Texts(Read("<name>A</name><name>B</name><name/>").cache), "B||||||||");
}

// A text that is empty after cleaning counts as read.
TEST(GeocacheReaderTest, ATextThatCleansToNothingStillMakesACache) {
    const Result result = Read("<name>A</name><name>&lt;b&gt;</name>");
    EXPECT_TRUE(result.found);
    EXPECT_EQ(Texts(result.cache), "||||||||");
    EXPECT_TRUE(Read("<owner>  </owner>").found);
}

TEST(GeocacheReaderTest, EveryTextIsCleaned) {
    const std::string dirty = "&lt;p&gt;Hello&amp;nbsp;&amp;amp; [b]welcome[/b]&lt;/p&gt;";
    const std::string clean = "\r\n\r\nHello & welcome";
    for (const char* name : kTextNames) {
        const GpxGroundspeakCache cache = Read(Element(name, dirty)).cache;
        std::string all = Texts(cache);
        all.erase(std::remove(all.begin(), all.end(), '|'), all.end());
        EXPECT_EQ(all, clean) << name;
    }
    const GpxGroundspeakCache cache =
        Read("<logs><log>" + Element("date", dirty) + Element("finder", dirty) + Element("type", dirty) +
             Element("text", dirty) + "</log></logs><travelbugs><travelbug>" + Element("name", dirty) +
             "</travelbug></travelbugs>")
            .cache;
    EXPECT_EQ(Logs(cache), "0 " + clean + " " + clean + " " + clean + " " + clean + ";");
    EXPECT_EQ(TravelBugs(cache), clean + ";");
}

TEST(GeocacheReaderTest, HtmlInCDataIsCleanedToo) {
    EXPECT_EQ(
        Read("<long_description html='True'><![CDATA[<p>Hello&nbsp;&amp; welcome</p>]]></long_description>")
            .cache.long_description,
        u"\r\n\r\nHello & welcome");
}

TEST(GeocacheReaderTest, LineEndsOfTextsBecomeCarriageReturnAndLineFeed) {
    EXPECT_EQ(Read("<long_description>a\r\nb\nc\rd&#13;e</long_description>").cache.long_description,
              u"a\r\nb\r\nc\r\nde");
}

TEST(GeocacheReaderTest, LogIdsAreReadAsA32BitNumber) {
    struct Row {
        const char* attribute;
        std::int32_t id;
    };
    constexpr Row kRows[] = {
        {"id='123456'", 123456},
        {"id='12ab'", 12},
        {"id=' 7'", 7},
        {"id='-5'", -5},
        {"id='+8'", 8},
        {"id='x'", 0},
        {"id=''", 0},
        {"", 0},
        {"id='0x10'", 0},
        {"id='123,456'", 123},
        {"id='7.9'", 7},
        {"id='2147483647'", INT32_MAX},
        {"id='2147483648'", INT32_MAX},
        {"id='3000000000'", INT32_MAX},
        {"id='4294967296'", INT32_MAX},
        {"id='-2147483649'", INT32_MIN},
        {"id='99999999999999999999'", INT32_MAX},
        {"id='-99999999999999999999'", INT32_MIN},
        {"Id='5'", 0},
        {"other:id='5'", 0},
        {"id='\u0665'", 0},
    };
    for (const Row& row : kRows) {
        const Result result = Read("<logs><log " + std::string(row.attribute) +
                                   "><date>D</date><finder>F</finder><text>X</text></log></logs>");
        ASSERT_EQ(result.cache.logs.size(), 1u) << row.attribute;
        EXPECT_EQ(result.cache.logs.front().id, row.id) << row.attribute;
    }
}

TEST(GeocacheReaderTest, LogsWithoutDateFinderOrTextAreDropped) {
    struct Row {
        const char* children;
        const char* logs;
    };
    constexpr Row kRows[] = {
        {"<date>D</date><finder>F</finder><type>T</type><text>X</text>", "0 D F T X;"},
        {"<text>X</text><type>T</type><finder>F</finder><date>D</date>", "0 D F T X;"},
        {"<date>D</date><finder>F</finder><text>X</text>", "0 D F  X;"},
        {"<finder>F</finder><type>T</type><text>X</text>", ""},
        {"<date>D</date><type>T</type><text>X</text>", ""},
        {"<date>D</date><finder/><type>T</type><text>X</text>", ""},
        {"<date>D</date><finder>F</finder><type>T</type>", ""},
        {"<date>D</date><finder>F</finder><text>&lt;br&gt;</text>", "0 D F  \r\n;"},
        {"<date>D</date><finder>F</finder><text>&lt;b&gt;</text>", ""},
        {"<date>D</date><finder>  </finder><text>X</text>", ""},
        {"<date>D</date><finder>F</finder><text>A</text><text>B</text>", "0 D F  B;"},
        {"<date>D</date><finder>F</finder><text>A</text><text/>", "0 D F  A;"},
        {"<date>D</date><finder>F</finder><text>A</text><text>&lt;b&gt;</text>", ""},
        {"<date>D</date><finder>F</finder><other:text>X</other:text>", ""},
        {"<date>D</date><finder>F</finder><Text>X</Text>", ""},
        {"<date>D</date><finder id='3'>F</finder><text encoded='True'>X</text><log_wpt/>", "0 D F  X;"},
        {"", ""},
    };
    for (const Row& row : kRows)
        EXPECT_EQ(Logs(Read("<logs><log>" + std::string(row.children) + "</log></logs>").cache), row.logs)
            << row.children;
}

TEST(GeocacheReaderTest, OnlyGroundspeakLogsCountAndAllListsAddUp) {
    EXPECT_EQ(Logs(Read("<logs>text<other:log><date>D</date><finder>F</finder><text>X</text></other:log>" +
                        std::string(kLog) + "<Log/></logs><other:logs>" + kLog + "</other:logs><logs>" +
                        kLog + "</logs>")
                       .cache),
              "5 D F T X;5 D F T X;");
}

TEST(GeocacheReaderTest, GetGroundspeakCacheLogsAppendsAndReturnsWhetherItKeptOne) {
    struct Row {
        std::string logs;
        bool found;
    };
    const Row rows[] = {{kLog, true},
                        {std::string(kLog) + "<log/>", true},
                        {std::string("<log/>") + kLog, true},
                        {"<log/>", false},
                        {"", false}};
    GpxParser parser;
    for (const Row& row : rows) {
        const DomTree tree(Cache(Element("logs", row.logs)));
        GpxGroundspeakCache cache = FilledCache();
        EXPECT_EQ(parser.GetGroundspeakCacheLogs(tree.Find("logs"), cache), row.found) << row.logs;
        EXPECT_EQ(cache.logs.size(), row.found ? 2u : 1u) << row.logs;
        EXPECT_EQ(cache.name, u"before");
    }
}

TEST(GeocacheReaderTest, EveryNameOfATravelBugIsTaken) {
    struct Row {
        const char* bugs;
        const char* names;
    };
    constexpr Row kRows[] = {
        {"<travelbug id='1' ref='TB1'><name>A</name></travelbug>", "A;"},
        {"<travelbug><name>A</name><name>B</name></travelbug><travelbug><name>C</name></travelbug>",
         "A;B;C;"},
        {"<travelbug><name/></travelbug>", ""},
        {"<travelbug><name>&lt;b&gt;</name></travelbug>", ";"},
        {"<travelbug><Name>A</Name><other:name>B</other:name></travelbug>", ""},
        {"<other:travelbug><name>A</name></other:travelbug><name>B</name>text", ""},
        {"<travelbug/>", ""},
        {"", ""},
    };
    GpxParser parser;
    for (const Row& row : kRows) {
        const DomTree tree(Cache("<travelbugs>" + std::string(row.bugs) + "</travelbugs>"));
        GpxGroundspeakCache cache;
        EXPECT_EQ(parser.GetGroundspeakTravelBugs(tree.Find("travelbugs"), cache), *row.names != '\0')
            << row.bugs;
        EXPECT_EQ(TravelBugs(cache), row.names) << row.bugs;
    }
}

TEST(GeocacheReaderTest, BothCacheNamespacesReadTheSame) {
    const std::string children =
        "<p:name>N</p:name><p:logs><p:log id='5'><p:date>D</p:date><p:finder>F</p:finder>"
        "<p:type>T</p:type><p:text>X</p:text></p:log></p:logs>"
        "<p:travelbugs><p:travelbug><p:name>B</p:name></p:travelbug></p:travelbugs>";
    struct Row {
        const char* uri;
        bool found;
    };
    constexpr Row kRows[] = {{"http://www.groundspeak.com/cache/1/0", true},
                             {"http://www.groundspeak.com/cache/1/0/1", true},
                             {"http://www.groundspeak.com/cache/1/0/2", false},
                             {"http://www.groundspeak.com/cache/1/0/", false},
                             {"http://www.groundspeak.com/cache/1/1", false},
                             {"HTTP://www.groundspeak.com/cache/1/0", false},
                             {"urn:other", false}};
    for (const Row& row : kRows) {
        const DomTree tree("<p:cache xmlns:p='" + std::string(row.uri) + "'>" + children + "</p:cache>");
        GpxGroundspeakCache cache;
        GpxParser parser;
        EXPECT_EQ(parser.IsGroundspeakNode(tree.Root()), row.found) << row.uri;
        EXPECT_EQ(parser.GetGroundspeakCacheElement(tree.Root(), cache), row.found) << row.uri;
        EXPECT_EQ(Texts(cache), row.found ? "N||||||||" : "||||||||");
        EXPECT_EQ(Logs(cache), row.found ? "5 D F T X;" : "");
        EXPECT_EQ(TravelBugs(cache), row.found ? "B;" : "");
    }
}

TEST(GeocacheReaderTest, TheTwoNamespacesMayBeMixed) {
    EXPECT_EQ(
        Texts(Read("<x:name xmlns:x='http://www.groundspeak.com/cache/1/0/1'>N</x:name><owner>O</owner>")
                  .cache),
        "N|O|||||||");
}

TEST(GeocacheReaderTest, NodesWithoutANamespaceAreNotGroundspeak) {
    const DomTree tree("<cache>text</cache>");
    GpxParser parser;
    EXPECT_FALSE(parser.IsGroundspeakNode(tree.Root()));
    EXPECT_FALSE(parser.IsGroundspeakNode(tree.Root()->getFirstChild()));
    EXPECT_FALSE(parser.IsGroundspeakNode(tree.Document()));
}

TEST(GeocacheReaderTest, ANullNodeIsReportedByIsGroundspeakNodeOnly) {
    GpxParser parser;
    EXPECT_REPORT(EXPECT_FALSE(parser.IsGroundspeakNode(nullptr)), kParserSource);
    GpxGroundspeakCache cache = FilledCache();
    EXPECT_EQ(CaptureStandardError([&] {
                  EXPECT_FALSE(parser.GetGroundspeakCacheElementFromExtensions(nullptr, cache));
                  EXPECT_FALSE(parser.GetGroundspeakCacheLogs(nullptr, cache));
                  EXPECT_FALSE(parser.GetGroundspeakTravelBugs(nullptr, cache));
                  EXPECT_EQ(cache.name, u"before");
                  EXPECT_FALSE(parser.GetGroundspeakCacheElement(nullptr, cache));
              }),
              "");
    EXPECT_EQ(Texts(cache), "||||||||");
}

TEST(GeocacheReaderTest, OfTheExtensionsOnlyTheFirstCacheIsRead) {
    const auto read = [](const std::string& children) {
        const DomTree tree(Gpx11("<extensions>" + children + "</extensions>"));
        GpxGroundspeakCache cache;
        const bool found =
            GpxParser().GetGroundspeakCacheElementFromExtensions(tree.Find("extensions"), cache);
        return (found ? "found " : "none ") + Texts(cache);
    };
    const std::string first = "<groundspeak:cache><groundspeak:name>A</groundspeak:name></groundspeak:cache>";
    const std::string second =
        "<groundspeak101:cache><groundspeak101:name>B</groundspeak101:name></groundspeak101:cache>";
    EXPECT_EQ(read(first + second), "found A||||||||");
    EXPECT_EQ(read(second + first), "found B||||||||");
    EXPECT_EQ(
        read("text<other:cache/><cache/><groundspeak:Cache/><groundspeak:name>N</groundspeak:name>" + first),
        "found A||||||||");
    EXPECT_EQ(read("<groundspeak:cache/>" + first), "none ||||||||") << "the first one has no texts";
    EXPECT_EQ(read("<other:x>" + first + "</other:x>"), "none ||||||||");
    EXPECT_EQ(read(""), "none ||||||||");
}

TEST(GeocacheReaderTest, CleanGroundspeakTextCleansInPlace) {
    icu::UnicodeString text(u"<p>Hello&nbsp;&amp; [b]welcome[/b]</p>");
    EXPECT_TRUE(GpxParser().CleanGroundspeakText(text));
    EXPECT_EQ(text, u"\r\n\r\nHello & welcome");
    text.remove();
    EXPECT_TRUE(GpxParser().CleanGroundspeakText(text));
    EXPECT_TRUE(text.isEmpty());
}

// Cleaning makes this text longer. It cannot be cleaned when there is no memory for a longer text.
const std::string kGrowingText = Repeat("x&lt;p>", 110);
constexpr std::size_t kEnoughToReadIt = 1000;
constexpr char kCleanerSource[] = "LibCore/vexaTransferLib/CleanText.h";

TEST(GeocacheReaderTest, AFailedCleaningIsSwallowedAndTheCleanerStaysUsable) {
    const icu::UnicodeString before = icu::UnicodeString::fromUTF8(Repeat("x<p>", 110));
    icu::UnicodeString text(before);
    GpxParser parser;
    {
        const RefusedIcuMemory refused = RefusedIcuMemory::Above(kEnoughToReadIt);
        EXPECT_REPORT(EXPECT_FALSE(parser.CleanGroundspeakText(text)), kCleanerSource);
        EXPECT_GT(refused.Refused(), 0u);
    }
    EXPECT_FALSE(text.isBogus());
    text = before;
    EXPECT_TRUE(parser.CleanGroundspeakText(text));
    EXPECT_EQ(text.length(), 550);
}

TEST(GeocacheReaderTest, ACacheWhoseTextCannotBeCleanedIsReadOn) {
    const DomTree tree(
        Cache("<owner>O</owner>" + Element("long_description", kGrowingText) + "<name>N</name>"));
    GpxParser parser;
    GpxGroundspeakCache cache;
    {
        const RefusedIcuMemory refused = RefusedIcuMemory::Above(kEnoughToReadIt);
        EXPECT_REPORT(EXPECT_TRUE(parser.GetGroundspeakCacheElement(tree.Root(), cache)), kCleanerSource);
    }
    EXPECT_EQ(cache.owner, u"O");
    EXPECT_EQ(cache.name, u"N");
    EXPECT_FALSE(cache.long_description.isEmpty());
}

// Nodes in forms that a Xerces tree never has.

TEST(GeocacheReaderTest, MissingChildrenAndListsAreSkipped) {
    const FakeNodePtr nameless = GeocacheText(u"owner", u"X");
    nameless->localName.reset();
    const FakeNodePtr log =
        GeocacheNode(u"log", {nullptr, nameless, GeocacheText(u"date", u"D"), GeocacheText(u"finder", u"F"),
                              GeocacheText(u"text", u"X")});
    const FakeNodePtr bug = GeocacheNode(u"travelbug", {nullptr, nameless, GeocacheText(u"name", u"B")});
    const FakeNodePtr cache = GeocacheNode(
        u"cache", {nullptr, nameless, GeocacheText(u"name", u"N"),
                   GeocacheNode(u"logs", {nullptr, nameless, WithoutChildList(*log), log}),
                   GeocacheNode(u"travelbugs", {nullptr, nameless, WithoutChildList(*bug), bug}),
                   WithoutChildList(*GeocacheNode(u"logs")), WithoutChildList(*GeocacheNode(u"travelbugs"))});
    MarkingContext context;
    GpxGroundspeakCache read;
    EXPECT_EQ(CaptureStandardError([&] {
                  EXPECT_TRUE(reader::ReadGeocacheFromExtensions(
                      context, Gpx11Node(u"extensions", {nullptr, nameless, cache})->View(), read));
              }),
              "");
    EXPECT_EQ(Texts(read), "<N>||||||||");
    EXPECT_EQ(Logs(read), "0 <D> <F>  <X>;");
    EXPECT_EQ(TravelBugs(read), "<B>;");
}

TEST(GeocacheReaderTest, WithoutAChildListThereIsNoCache) {
    MarkingContext context;
    GpxGroundspeakCache read = FilledCache();
    EXPECT_EQ(CaptureStandardError([&] {
                  EXPECT_FALSE(reader::ReadGeocacheFromExtensions(
                      context, WithoutChildList(*Gpx11Node(u"extensions"))->View(), read));
                  EXPECT_FALSE(reader::ReadGeocacheLogs(
                      context, WithoutChildList(*GeocacheNode(u"logs"))->View(), read));
                  EXPECT_FALSE(reader::ReadTravelBugs(
                      context, WithoutChildList(*GeocacheNode(u"travelbugs"))->View(), read));
                  EXPECT_EQ(read.name, u"before");
                  EXPECT_FALSE(
                      reader::ReadGeocache(context, WithoutChildList(*GeocacheNode(u"cache"))->View(), read));
              }),
              "");
    EXPECT_EQ(read.name, u"");
}

} // namespace
} // namespace vexaTransferLib
