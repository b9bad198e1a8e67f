// SPDX-License-Identifier: MIT
#include "support/comparison/GpxComparison.h"

#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>
#include <string>

using namespace vexaTransferLib::testing_support;

namespace {

using Findings = std::vector<MissingContent>;

std::string Gpx10(const std::string& content) {
    return R"(<gpx xmlns="http://www.topografix.com/GPX/1/0" version="1.0" creator="a">)" + content +
           "</gpx>";
}
std::string Gpx11(const std::string& content) {
    return R"(<gpx xmlns="http://www.topografix.com/GPX/1/1" version="1.1" creator="b">)" + content +
           "</gpx>";
}
std::string Point(const std::string& content) {
    return R"(<wpt lat="1" lon="2">)" + content + "</wpt>";
}
std::string Foreign(const std::string& content) {
    return R"(<x:a xmlns:x="urn:x">)" + content + "</x:a>";
}
std::string Foreign11(const std::string& content) {
    return Gpx11(Point("<extensions>" + Foreign(content) + "</extensions>"));
}

Findings Missing(const std::string& before, const std::string& after) {
    return FindMissing(before, after, GpxTarget::k11);
}

struct Pair {
    std::string name;
    std::string one;
    std::string other;
};

void PrintTo(const Pair& pair, std::ostream* out) {
    *out << pair.name;
}

const std::string kTrack = R"(<trk><trkseg><trkpt lat="1" lon="2"><ele>1</ele></trkpt></trkseg></trk>)";

} // namespace

class SameGpxTest : public testing::TestWithParam<Pair> {};

TEST_P(SameGpxTest, LacksNothingInEitherDirection) {
    EXPECT_EQ(Missing(GetParam().one, GetParam().other), Findings());
    EXPECT_EQ(Missing(GetParam().other, GetParam().one), Findings());
    EXPECT_EQ(FindInvented(GetParam().one, GetParam().other), Findings());
    EXPECT_EQ(FindWithoutPlace(GetParam().one, GetParam().other), Findings());
}

INSTANTIATE_TEST_SUITE_P(
    Texts, SameGpxTest,
    testing::Values(
        Pair{"version", Gpx10(Point("")), Gpx11(Point(""))},
        Pair{"no namespace", R"(<gpx><wpt lat="1" lon="2"/></gpx>)", Gpx11(Point(""))},
        Pair{"other spelling", R"(<gpx xmlns="https://topografix.com/gpx/1/1/"><wpt lat="1" lon="2"/></gpx>)",
             Gpx11(Point(""))},
        Pair{"prefix",
             R"(<g:gpx xmlns:g="http://www.topografix.com/GPX/1/1"><g:wpt lat="1" lon="2"/></g:gpx>)",
             Gpx11(Point(""))},
        Pair{"foreign prefix", Foreign11(""),
             Gpx11(Point("<extensions><a xmlns='urn:x' xmlns:unused='urn:u'/></extensions>"))},
        Pair{"schema location",
             R"(<gpx xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance" xsi:schemaLocation="a b"/>)",
             Gpx11("")},
        Pair{"layout", Gpx11(Point("<ele>1</ele>")), Gpx11("\r\n  " + Point("\t<ele>1</ele>\n") + "\n")},
        Pair{"layout in foreign elements", Foreign11("<x:b/><x:c/>"), Foreign11("\n <x:b/>\n <x:c/>\n")},
        Pair{"comments", Gpx11(Point("<name>ab</name>")),
             "<?pi x?>" + Gpx11("<!-- c -->" + Point("<name>a<!-- c -->b<?pi y?></name>"))},
        Pair{"CDATA and references", Gpx11(Point("<name>a&amp;b</name>")),
             Gpx11(Point("<name>a<![CDATA[&]]>&#98;</name>"))},
        Pair{"entities", "<!DOCTYPE gpx [<!ENTITY e 'x&#38;#38;y'>]>" + Gpx11(Point("<name>a&e;</name>")),
             Gpx11(Point("<name>ax&amp;y</name>"))},
        Pair{"line ends", Gpx11(Point("<name>a\r\nb\rc</name>")), Gpx11(Point("<name>a\nb\nc</name>"))},
        Pair{"encoding", Gpx11(Point("<name>\xC3\xA4</name>")),
             "<?xml version='1.0' encoding='windows-1252'?>" + Gpx11(Point("<name>\xE4</name>"))},
        Pair{"extensions", Gpx10(Point(Foreign("1"))), Foreign11("1")},
        Pair{"extensions of document and track", Gpx10("<trk>" + Foreign("2") + "</trk>" + Foreign("1")),
             Gpx11("<trk><extensions>" + Foreign("2") + "</extensions></trk><extensions>" + Foreign("1") +
                   "</extensions>")},
        Pair{"unknown GPX element", Gpx10(Point("<unknown>1</unknown>")),
             Gpx11(Point(
                 "<extensions><unknown xmlns='http://www.topografix.com/GPX/1/0'>1</unknown></extensions>"))},
        Pair{"empty extensions", Gpx11(Point("")),
             Gpx11(Point("<extensions/>") + "<extensions>\n</extensions>")},
        Pair{"several extensions",
             Gpx11(Point("<extensions>" + Foreign("1") + Foreign("2") + "</extensions>")),
             Gpx11(Point("<extensions>" + Foreign("1") + "</extensions><extensions>" + Foreign("2") +
                         "</extensions>"))},
        Pair{"document fields",
             Gpx10("<name>n</name><desc>d</desc><author>a</author><email>e@f.g</email><url>u</url>"
                   "<urlname>v</urlname><time>2020-01-01T00:00:00Z</time><keywords>k</keywords>"
                   "<bounds minlat='1' minlon='2' maxlat='3' maxlon='4'/>"),
             Gpx11(
                 "<metadata><name>n</name><desc>d</desc><author><name>a</name><email id='e' "
                 "domain='f.g'/></author>"
                 "<link href='u'><text>v</text></link><time>2020-01-01T00:00:00Z</time><keywords>k</keywords>"
                 "<bounds minlat='1.0' minlon='2.0' maxlat='3.0' maxlon='4.0'></bounds></metadata>")},
        Pair{"link", Gpx10(Point("<url>u</url><urlname>v</urlname>")),
             Gpx11(Point("<link href='u'><text>v</text></link>"))},
        Pair{"link in other order", Gpx10("<trk><urlname>v</urlname><name>n</name><url>u</url></trk>"),
             Gpx11("<trk><name>n</name><link href='u'><text>v</text></link></trk>")},
        Pair{"link without text", Gpx10("<rte><url>u</url></rte>"), Gpx11("<rte><link href='u'/></rte>")},
        Pair{"two links", Gpx10(Point("<url>u</url><urlname>v</urlname><url>w</url>")),
             Gpx11(Point("<link href='u'><text>v</text></link><link href='w'/>"))},
        Pair{
            "speed and course",
            Gpx10("<trk><trkseg><trkpt lat='1' "
                  "lon='2'><course>5.0</course><speed>3</speed></trkpt></trkseg></trk>"),
            Gpx11(
                "<trk><trkseg><trkpt lat='1' lon='2'><extensions xmlns:o='http://www.topografix.com/GPX/1/0'>"
                "<o:speed>3.0</o:speed><o:course>5</o:course></extensions></trkpt></trkseg></trk>")},
        Pair{
            "numbers",
            Gpx11("<wpt lat='1.50' lon='-2'><ele>1e1</ele><sat>07</sat></wpt><trk><number>3</number></trk>"),
            Gpx11(
                "<wpt lat='1.5' lon='-2.0'><ele> 10 </ele><sat>7</sat></wpt><trk><number>03</number></trk>")},
        Pair{"times", Gpx11(Point("<time>2020-01-01T00:00:00Z</time>")),
             Gpx11(Point("<time>2020-01-01T01:00:00.000+01:00</time>"))},
        Pair{"order of different elements", Gpx11(Point("<name>n</name><ele>1</ele>") + kTrack),
             Gpx11(kTrack + Point("<ele>1</ele><name>n</name>"))}));

class OtherGpxTest : public testing::TestWithParam<Pair> {};

TEST_P(OtherGpxTest, LacksSomething) {
    EXPECT_NE(Missing(GetParam().one, GetParam().other), Findings());
    EXPECT_NE(FindInvented(GetParam().other, GetParam().one), Findings());
}

INSTANTIATE_TEST_SUITE_P(
    Texts, OtherGpxTest,
    testing::Values(
        Pair{"namespace that is not GPX", Gpx11(Point("")),
             "<gpx xmlns='urn:g'><wpt lat='1' lon='2'/></gpx>"},
        Pair{"private namespace of GPX", Gpx11("<extensions><a/></extensions>"),
             Gpx11("<extensions><a "
                   "xmlns='http://www.topografix.com/GPX/Private/TopoGrafix/0/2'/></extensions>")},
        Pair{"namespace below that of GPX", Gpx11("<extensions><a/></extensions>"),
             Gpx11("<extensions><a xmlns='http://www.topografix.com/GPX/1/1/more'/></extensions>")},
        Pair{"namespace of a foreign attribute", Foreign11("<x:b x:c='1'/>"), Foreign11("<x:b c='1'/>")},
        Pair{"position that a track has not", Gpx11("<trk lat='1.0'/>"), Gpx11("<trk lat='1'/>")},
        Pair{"attribute of an email",
             Gpx11("<metadata><author><email id='e' domain='f' a='1'/></author></metadata>"),
             Gpx11("<metadata><author><email id='e' domain='f'/></author></metadata>")},
        Pair{"attribute and text of a url", Gpx10(Point("<url href='u'>v</url>")),
             Gpx10(Point("<url href='v'>u</url>"))},
        Pair{"other root", Gpx11(""), "<kml/>"},
        Pair{"foreign namespace", Foreign11("1"),
             Gpx11(Point("<extensions><a xmlns='urn:y'>1</a></extensions>"))},
        Pair{"no namespace in a foreign element", Foreign11("<b xmlns=''/>"), Foreign11("<b/>")},
        Pair{"name in other case", Gpx11(Point("<ELE>1</ELE>")), Gpx11(Point("<ele>1</ele>"))},
        Pair{"other attribute of the root", "<gpx a='1'/>", Gpx11("")},
        Pair{"attribute of a waypoint", "<gpx><wpt lat='1' lon='2' a='1'/></gpx>", Gpx11(Point(""))},
        Pair{"attribute in a namespace", "<gpx xmlns:x='urn:x'><wpt lat='1' lon='2' x:lat='1'/></gpx>",
             Gpx11(Point(""))},
        Pair{"attribute of extensions", Gpx11("<extensions a='1'/>"), Gpx11("<extensions/>")},
        Pair{"foreign attribute", Foreign11("<x:b c='1.0'/>"), Foreign11("<x:b c='1'/>")},
        Pair{"schema location in an extension",
             Foreign11(
                 "<x:b xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:schemaLocation='a b'/>"),
             Foreign11("<x:b/>")},
        Pair{"text between elements", Gpx11(Point("text<ele>1</ele>")), Gpx11(Point("<ele>1</ele>"))},
        Pair{"text of extensions", Gpx11("<extensions>t</extensions>"), Gpx11("<extensions/>")},
        Pair{"blanks of a text", Gpx11(Point("<name> a</name>")), Gpx11(Point("<name>a</name>"))},
        Pair{"text of blanks", Gpx11(Point("<name> </name>")), Gpx11(Point("<name/>"))},
        Pair{"foreign blanks", Foreign11(" "), Foreign11("")},
        Pair{"foreign number", Foreign11("1.0"), Foreign11("1")},
        Pair{"GPX number in an extension", Gpx11(Point("<extensions><ele>1.0</ele></extensions>")),
             Gpx11(Point("<extensions><ele>1</ele></extensions>"))},
        Pair{"empty text", Gpx11(Point("<name/>")), Gpx11(Point(""))},
        Pair{"empty object", Gpx11("<trk><trkseg/></trk>"), Gpx11("<trk/>")},
        Pair{"empty foreign element", Foreign11(""), Gpx11(Point(""))},
        Pair{"empty metadata", Gpx11("<metadata/>"), Gpx11("")},
        Pair{"empty author", Gpx11("<metadata><author/><name/></metadata>"),
             Gpx11("<metadata><name/></metadata>")},
        Pair{"empty link", Gpx11(Point("<link/>")), Gpx11(Point(""))},
        Pair{"name of the file and name in metadata",
             Gpx11("<name>n</name><metadata><name>n</name></metadata>"),
             Gpx11("<metadata><name>n</name></metadata>")},
        Pair{"email", Gpx10("<email>e@f.g</email>"),
             Gpx11("<metadata><author><email id='e' domain='f.h'/></author></metadata>")},
        Pair{"half an email", Gpx11("<metadata><author><email id='e'/></author></metadata>"),
             Gpx11("<metadata><author><email id='e' domain=''/></author></metadata>")},
        Pair{"link type", Gpx11(Point("<link href='u'><type>t</type></link>")), Gpx10(Point("<url>u</url>"))},
        Pair{"second link", Gpx11(Point("<link href='u'/><link href='u'/>")), Gpx10(Point("<url>u</url>"))},
        Pair{"texts of two links", Gpx11(Point("<link href='u'><text>1</text></link><link href='v'/>")),
             Gpx11(Point("<link href='u'/><link href='v'><text>1</text></link>"))},
        Pair{"attribute of a url", Gpx10(Point("<url a='1'>u</url>")), Gpx10(Point("<url>u</url>"))},
        Pair{"address as an attribute of a url", Gpx10(Point("<url href='u'/>")),
             Gpx10(Point("<url>u</url>"))},
        Pair{"number", Gpx11(Point("<ele>1.0000000000000000000000001</ele>")), Gpx11(Point("<ele>1</ele>"))},
        Pair{"latitude", "<gpx><wpt lat='1.1' lon='2'/></gpx>", Gpx11(Point(""))},
        Pair{"bounds", Gpx10("<bounds minlat='1'/>"), Gpx10("<bounds minlat='2'/>")},
        Pair{"attribute that looks like bounds", Gpx10("<bounds min_lat='1'/>"),
             Gpx10("<bounds min_lat='1.0'/>")},
        Pair{"time", Gpx11(Point("<time>2020-01-01T00:00:00Z</time>")),
             Gpx11(Point("<time>2020-01-01T00:00:00.0000000001Z</time>"))},
        Pair{"year of the copyright",
             Gpx11("<metadata><copyright author='a'><year>2020</year></copyright></metadata>"),
             Gpx11("<metadata><copyright author='a'><year> 2020</year></copyright></metadata>")},
        Pair{"repeated value", Gpx11(Point("<name>n</name><name>n</name>")), Gpx11(Point("<name>n</name>"))},
        Pair{"place of mixed text", Foreign11("t<x:b/>"), Foreign11("<x:b/>t")},
        Pair{"blanks of mixed text", Foreign11("t <x:b/>"), Foreign11("t<x:b/>")},
        Pair{"order of foreign elements", Foreign11("<x:b/><x:c/>"), Foreign11("<x:c/><x:b/>")},
        Pair{"order of repeated foreign elements", Foreign11("<x:b>1</x:b><x:b>2</x:b>"),
             Foreign11("<x:b>2</x:b><x:b>1</x:b>")},
        Pair{"parent of an extension", Gpx11(Point("<extensions>" + Foreign("") + "</extensions>")),
             Gpx11(Point("") + "<extensions>" + Foreign("") + "</extensions>")},
        Pair{"extensions of metadata",
             Gpx11("<metadata><extensions>" + Foreign("") + "</extensions></metadata>"),
             Gpx11("<extensions>" + Foreign("") + "</extensions>")},
        Pair{"kind of point", Gpx11(Point("")), Gpx11("<rte><rtept lat='1' lon='2'/></rte>")},
        Pair{"default of the document type", "<!DOCTYPE gpx [<!ATTLIST wpt a CDATA 'd'>]>" + Gpx11(Point("")),
             Gpx11(Point(""))}));

TEST(GpxComparisonTest, EachValueHasThePathOfItsObject) {
    const std::string points = R"(<trkpt lat="1" lon="2"/><trkpt lat="3" lon="4"><ele>5.0</ele></trkpt>)";
    const std::string before = Gpx11("<trk/><trk><trkseg/><trkseg>" + points + "</trkseg></trk>");
    std::string after = before;
    after.replace(after.find("<ele>5.0</ele>"), 14, "");
    EXPECT_EQ(Missing(before, after), (Findings{{"gpx/trk[1]/trkseg[1]/trkpt[1]/ele", "5", 1}}));
    EXPECT_EQ(Missing(after, before), Findings());
    EXPECT_EQ(FindInvented(after, before), (Findings{{"gpx/trk[1]/trkseg[1]/trkpt[1]/ele", "5", 1}}));
}

TEST(GpxComparisonTest, RepeatedElementsAreNumbered) {
    EXPECT_EQ(Missing(Foreign11("<x:b>1</x:b><x:b><x:c d='2'/></x:b>"), Foreign11("<x:b>1</x:b>")),
              (Findings{{"gpx/wpt[0]/extensions/{urn:x}a/{urn:x}b[1]/{urn:x}c/@d", "2", 1},
                        {"gpx/wpt[0]/extensions/{urn:x}a/{urn:x}b[1]/{urn:x}c", "", 1}}));
    EXPECT_EQ(Missing(Gpx11(Point("<link href='u'/><link href='v'/>")), Gpx11(Point("<link href='u'/>"))),
              (Findings{{"gpx/wpt[0]/link[1]", "", 1}, {"gpx/wpt[0]/link[1]/@href", "v", 1}}));
}

TEST(GpxComparisonTest, ElevationsOfTwoPointsThatAreSwappedAreFound) {
    const auto track = [](const std::string& first, const std::string& second) {
        return Gpx11("<trk><trkseg><trkpt lat='1' lon='2'><ele>" + first +
                     "</ele></trkpt><trkpt lat='1' lon='2'><ele>" + second + "</ele></trkpt></trkseg></trk>");
    };
    EXPECT_EQ(Missing(track("10", "20"), track("20", "10")),
              (Findings{{"gpx/trk[0]/trkseg[0]/trkpt[0]/ele", "10", 1},
                        {"gpx/trk[0]/trkseg[0]/trkpt[1]/ele", "20", 1}}));
}

TEST(GpxComparisonTest, ObjectsInAnotherOrderAreFound) {
    const std::string first = "<wpt lat='1' lon='2'><name>a</name></wpt>";
    const std::string second = "<wpt lat='3' lon='2'><name>a</name></wpt>";
    EXPECT_EQ(Missing(Gpx11(first + second), Gpx11(second + first)),
              (Findings{{"gpx/wpt[0]/@lat", "1", 1},
                        {"gpx/wpt[1]/@lat", "3", 1},
                        {"order of gpx/wpt", "@lat=1 @lon=2 name=a ", 1}}));
}

TEST(GpxComparisonTest, ForeignElementsInAnotherOrderAreFoundOnlyIfAllAreThere) {
    EXPECT_EQ(Missing(Foreign11("<x:b/><x:c/>"), Foreign11("<x:d/><x:c/><x:b/>")),
              (Findings{{"order of gpx/wpt[0]/extensions/{urn:x}a", "{urn:x}b {urn:x}c", 1}}));
    EXPECT_EQ(Missing(Foreign11("<x:b/><x:c/>"), Foreign11("<x:b/><x:d/><x:c/>")), Findings());
    EXPECT_EQ(Missing(Foreign11("<x:b/><x:c/>"), Foreign11("<x:c/><x:d/>")),
              (Findings{{"gpx/wpt[0]/extensions/{urn:x}a/{urn:x}b", "", 1}}));
}

TEST(GpxComparisonTest, AnObjectIsMissingWithAllItsContent) {
    EXPECT_EQ(Missing(Gpx11(kTrack), Gpx11("")), (Findings{{"gpx/trk[0]", "", 1},
                                                           {"gpx/trk[0]/trkseg[0]", "", 1},
                                                           {"gpx/trk[0]/trkseg[0]/trkpt[0]", "", 1},
                                                           {"gpx/trk[0]/trkseg[0]/trkpt[0]/@lat", "1", 1},
                                                           {"gpx/trk[0]/trkseg[0]/trkpt[0]/@lon", "2", 1},
                                                           {"gpx/trk[0]/trkseg[0]/trkpt[0]/ele", "1", 1}}));
}

TEST(GpxComparisonTest, AValueThatIsMissingTwiceIsOneFinding) {
    EXPECT_EQ(Missing(Gpx11("<trk/>t<trk/>t<trk/>t"), Gpx11("<trk/><trk/>t<trk/>")),
              (Findings{{"gpx/text()", "t", 2}}));
}

TEST(GpxComparisonTest, WhatGpx10HasNoPlaceForIsApart) {
    const std::string before = Gpx11(Point("<name>n</name><link href='u'><type>t</type></link>"));
    const std::string after = Gpx10(Point("<url>u</url>"));
    EXPECT_EQ(FindMissing(before, after, GpxTarget::k10), (Findings{{"gpx/wpt[0]/name", "n", 1}}));
    EXPECT_EQ(FindWithoutPlace(before, after), (Findings{{"gpx/wpt[0]/link/type", "t", 1}}));
    EXPECT_EQ(FindInvented(before, after), Findings());
}

TEST(GpxComparisonTest, TextsThatAreNotWellFormedAreNotCompared) {
    const auto messageOf = [](const std::string& before, const std::string& after) -> std::string {
        try {
            FindMissing(before, after, GpxTarget::k11);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "nothing was thrown";
    };
    const std::string good = Gpx11("");
    EXPECT_EQ(messageOf("", good), "the text before: line 1: Document is empty");
    EXPECT_EQ(messageOf(good, "<gpx>\n</gpz>"),
              "the text after: line 2: Opening and ending tag mismatch: gpx line 1 and gpz");
    EXPECT_EQ(messageOf(good, "<gpx><x:a/></gpx>"),
              "the text after: line 1: Namespace prefix x on a is not defined");
    EXPECT_EQ(messageOf("<gpx>&e;</gpx>", good), "the text before: line 1: Entity 'e' not defined");
    EXPECT_EQ(messageOf("<!DOCTYPE gpx [<!ENTITY e SYSTEM 'file:///etc/hostname'>]><gpx>&e;</gpx>", good),
              "the text before: line 1: Entity 'e' not defined");
}

TEST(GpxComparisonTest, EntitiesThatGrowWithoutEndAreRefused) {
    std::string type = "<!ENTITY e0 'aaaaaaaaaa'>";
    for (int i = 1; i < 12; ++i) {
        const std::string inner = "&e" + std::to_string(i - 1) + ";";
        std::string value;
        for (int j = 0; j < 10; ++j)
            value += inner;
        type += "<!ENTITY e" + std::to_string(i) + " '" + value + "'>";
    }
    EXPECT_THROW(Missing("<!DOCTYPE gpx [" + type + "]><gpx><name>&e11;</name></gpx>", Gpx11("")),
                 std::runtime_error);
}

TEST(GpxComparisonTest, ADifferenceAtAnyDepthIsFound) {
    const auto nested = [](std::size_t depth, const std::string& inner) {
        std::string text;
        for (std::size_t i = 0; i < depth; ++i)
            text += "<x:b>t";
        text += inner;
        for (std::size_t i = 0; i < depth; ++i)
            text += "</x:b>";
        return Foreign11(text);
    };
    for (const std::size_t depth : {62U, 63U, 64U, 65U, 127U, 128U, 129U, 30000U}) {
        EXPECT_EQ(Missing(nested(depth, "1"), nested(depth, "1")), Findings());
        EXPECT_EQ(Missing(nested(depth, "1"), nested(depth, "2")).size(), 1U) << depth;
        EXPECT_NE(Missing(nested(depth + 1, ""), nested(depth, "")), Findings()) << depth;
    }
    const auto twice = [&](const std::string& first, const std::string& second) {
        const std::string start = "<x:b>";
        const std::string end = "</x:b>";
        std::string starts;
        std::string ends;
        for (int i = 0; i < 70; ++i) {
            starts += start;
            ends += end;
        }
        return Foreign11(starts + first + ends + starts + second + ends);
    };
    EXPECT_EQ(Missing(twice("1", "2"), twice("2", "1")).size(), 2U);
    const auto inMetadata = [&](const std::string& inner) {
        std::string text = nested(100, inner);
        text.replace(text.find(Point("").substr(0, 21)), 21, "<metadata>");
        text.replace(text.find("</wpt>"), 6, "</metadata>");
        return text;
    };
    EXPECT_EQ(FindMissing(inMetadata("1"), inMetadata("2"), GpxTarget::k10), Findings());
    EXPECT_EQ(FindWithoutPlace(inMetadata("1"), inMetadata("2")).size(), 1U);
}

// A quadratic step would take hours.
TEST(GpxComparisonTest, AMillionPointsAreComparedInSeconds) {
    std::string points;
    for (int i = 0; i < 1'000'000; ++i) {
        const std::string number = std::to_string(i);
        points += "<trkpt lat=\"1." + number + "\" lon=\"2\"><ele>" + number + "</ele></trkpt>\n";
    }
    const std::string before = Gpx11("<trk><trkseg>" + points + "</trkseg></trk>");
    std::string after = before;
    const std::string last = "<ele>999998</ele>";
    after.replace(after.find(last), last.size(), "<ele>1</ele>");
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(Missing(before, after), (Findings{{"gpx/trk[0]/trkseg[0]/trkpt[999998]/ele", "999998", 1}}));
    RecordProperty(
        "seconds",
        std::to_string(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count()));
}

TEST(GpxComparisonTest, AMillionElementsInOneParentAreComparedInSeconds) {
    std::string one;
    std::string other;
    for (int i = 0; i < 500'000; ++i) {
        one += "<x:b/>";
        other += "<x:c" + std::to_string(i % 10'000) + "/>";
    }
    EXPECT_EQ(Missing(Foreign11(one + other), Foreign11(one + other)), Findings());
    EXPECT_EQ(Missing(Foreign11(one + other), Foreign11(other + one)).size(), 1U);
}
