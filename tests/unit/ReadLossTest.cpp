// SPDX-License-Identifier: MIT

// Puts every element of GPX, of geocaches and of the vendor's extension in every place, in every namespace, once and
// twice, before and after the other elements. What of it is not written again, an observer must have heard of.

#include "support/GpxText.h"
#include "support/ObservedReading.h"
#include "support/RecordingObserver.h"

#include <vexaTransferLib/GpxParser.h>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

/// An element with a value that nothing else in the file has.
struct Sample {
    std::string name;
    std::string before; ///< after the element's name: attributes, the end of the tag, other elements
    std::string value[2];
    std::string after;

    std::string In(std::string_view uri, std::size_t number) const {
        return "<" + name + " xmlns='" + std::string(uri) + "'" + before + value[number] + after + "</" +
               name + ">";
    }
};

Sample Text(const std::string& name) {
    return {name, ">", {"first", "second"}, ""};
}
Sample Number(const std::string& name) {
    return {name, ">", {"11.25", "12.25"}, ""};
}
Sample Around(const std::string& name, const std::string& before, const std::string& after) {
    return {name, before, {"first", "second"}, after};
}

std::vector<Sample> Samples() {
    std::vector<Sample> samples;
    for (const char* name : {"name",
                             "cmt",
                             "desc",
                             "src",
                             "url",
                             "urlname",
                             "email",
                             "keywords",
                             "sym",
                             "type",
                             "text",
                             "year",
                             "license",
                             "owner",
                             "container",
                             "difficulty",
                             "terrain",
                             "short_description",
                             "long_description",
                             "encoded_hints",
                             "country",
                             "state",
                             "finder",
                             "date",
                             "layerkey",
                             "layername",
                             "form",
                             "objectid",
                             "waypointGUID",
                             "trackGUID",
                             "routeType",
                             "routePointType",
                             "unknown"})
        samples.push_back(Text(name));
    for (const char* name :
         {"ele", "magvar", "geoidheight", "hdop", "vdop", "pdop", "ageofdgpsdata", "course", "speed"})
        samples.push_back(Number(name));
    for (const char* name : {"number", "sat", "dgpsid", "color", "tovasymbol", "defaultsymbol"})
        samples.push_back({name, ">", {"687", "787"}, ""});
    samples.push_back({"fix", ">", {"2d", "dgps"}, ""});
    samples.push_back({"time", ">", {"2011-01-15T10:20:30Z", "2012-01-15T10:20:30Z"}, ""});
    samples.push_back(Around("link", " href='", "'>"));
    samples.push_back(Around("copyright", " author='", "'>"));
    samples.push_back(Around("bounds", " minlat='", "'>"));
    for (const char* name : {"wpt", "rtept", "trkpt"})
        samples.push_back(Around(name, " lat='3' lon='4'><name>", "</name>"));
    for (const char* name : {"rte", "trk", "metadata", "author", "cache", "travelbug"})
        samples.push_back(Around(name, "><name>", "</name>"));
    samples.push_back(Around("trkseg", "><trkpt lat='3' lon='4'><name>", "</name></trkpt>"));
    const std::string log = "<date>d</date><finder>f</finder><text>";
    samples.push_back(Around("log", ">" + log, "</text>"));
    samples.push_back(Around("logs", "><log>" + log, "</text></log>"));
    samples.push_back(Around("travelbugs", "><travelbug><name>", "</name></travelbug>"));
    samples.push_back(Around("formdata", "><formstring key='key'>", "</formstring>"));
    samples.push_back(Around("formstring", " key='key'>", ""));
    for (const char* name : {"objectid", "layerkey", "unknown"})
        samples.push_back(
            Around("extensions", std::string("><") + name + ">", std::string("</") + name + ">"));
    samples.push_back({"extensions", "><color>", {"687", "787"}, "</color>"});
    samples.push_back(Around("extensions", std::string("><cache xmlns='") + kGeocache101Uri + "'><name>",
                             "</name></cache>"));
    return samples;
}

/// What is around the place in a file, and what is in it already.
struct Place {
    const char* name;
    const char* path;
    std::string before;
    std::string content;
    std::string after;
};

void PrintTo(const Place& place, std::ostream* out) {
    *out << place.name;
}

std::vector<Place> Places() {
    const std::string point = " lat='1' lon='2'>";
    const std::string wpt = "<wpt" + point;
    const std::string vendor = std::string("<extensions xmlns:v='") + kVendorUri + "'>";
    const std::string cache = wpt + "<extensions><cache xmlns='" + kGeocache101Uri + "'>";
    const std::string endCache = "</cache></extensions></wpt>";
    const std::string log = "<date>d</date><finder>f</finder><text>t</text>";
    return {
        {"Root", "gpx", "", wpt + "</wpt><rte><rtept" + point + "</rtept></rte><trk/>", ""},
        {"Metadata", "gpx/metadata", "<metadata>", "<name>n</name>", "</metadata>"},
        {"MetadataExtensions", "gpx/metadata/extensions", "<metadata>" + vendor, "<v:form>f</v:form>",
         "</extensions></metadata>"},
        {"Waypoint", "gpx/wpt", wpt, "<src>s</src>", "</wpt>"},
        {"WaypointExtensions", "gpx/wpt/extensions", wpt + vendor, "<v:form>f</v:form>",
         "</extensions></wpt>"},
        {"FormData", "gpx/wpt/extensions/formdata", wpt + vendor + "<v:formdata>",
         "<v:formstring key='k'>v</v:formstring>", "</v:formdata></extensions></wpt>"},
        {"Link", "gpx/wpt/link", wpt + "<link href='h'>", "<type>t</type>", "</link></wpt>"},
        {"Cache", "gpx/wpt/extensions/cache", cache, "<owner>o</owner>", endCache},
        {"Logs", "gpx/wpt/extensions/cache/logs", cache + "<name>n</name><logs>", "<log>" + log + "</log>",
         "</logs>" + endCache},
        {"Log", "gpx/wpt/extensions/cache/logs/log", cache + "<name>n</name><logs><log>", log,
         "</log></logs>" + endCache},
        {"TravelBug", "gpx/wpt/extensions/cache/travelbugs/travelbug",
         cache + "<name>n</name><travelbugs><travelbug>", "<name>b</name>",
         "</travelbug></travelbugs>" + endCache},
        {"Route", "gpx/rte", "<rte>", "<rtept" + point + "</rtept>", "</rte>"},
        {"RouteExtensions", "gpx/rte/extensions", "<rte>" + vendor, "<v:routeType>points</v:routeType>",
         "</extensions></rte>"},
        {"RoutePoint", "gpx/rte/rtept", "<rte><rtept" + point, "<src>s</src>", "</rtept></rte>"},
        {"Track", "gpx/trk", "<trk>", "<trkseg/>", "</trk>"},
        {"TrackExtensions", "gpx/trk/extensions", "<trk>" + vendor, "<v:unknown/>", "</extensions></trk>"},
        {"Segment", "gpx/trk/trkseg", "<trk><trkseg>", "<trkpt" + point + "</trkpt>", "</trkseg></trk>"},
        {"TrackPoint", "gpx/trk/trkseg/trkpt", "<trk><trkseg><trkpt" + point, "<ele>1</ele>",
         "</trkpt></trkseg></trk>"},
    };
}

/// What is written of a file, and what was heard of the rest.
struct Reading {
    explicit Reading(const std::string& bytes) {
        GpxParser parser;
        parser.SetObserver(&observer);
        GpxDocument document;
        parser.Parse(bytes, u".gpx", document);
        document.WriteToString(GpxVersion::GetLatestVersion(), u"application", u"address", written);
    }

    /// How many elements in a place the losses are about, or all when the place itself is lost.
    std::size_t LossesIn(std::string_view place) const {
        std::size_t losses = 0;
        for (const GpxSkippedElement& thing : observer.things) {
            if (thing.isLoss && place.starts_with(thing.element))
                return kAll;
            losses += thing.isLoss ? 1 : 0;
        }
        return losses;
    }

    static constexpr std::size_t kAll = 1000;
    RecordingObserver observer;
    std::string written;
};

class ReadLossPlacesTest : public testing::TestWithParam<Place> {
protected:
    void Expect(const std::string& version, const std::string& children, const Sample& sample, bool isTwice);
};

void ReadLossPlacesTest::Expect(const std::string& version, const std::string& children, const Sample& sample,
                                bool isTwice) {
    const std::string bytes = GpxFileText(version, "", GetParam().before + children + GetParam().after);
    const Reading reading(bytes);
    std::size_t missing = 0;
    for (std::size_t i = 0; i < (isTwice ? 2U : 1U); ++i)
        missing += reading.written.find(sample.value[i]) == std::string::npos ? 1 : 0;
    EXPECT_LE(missing, reading.LossesIn(GetParam().path)) << bytes << "\n" << reading.observer.skipped;
}

TEST_P(ReadLossPlacesTest, AnElementThatIsNotWrittenAgainIsALoss) {
    const std::string& content = GetParam().content;
    for (const std::string version : {"1.0", "1.1"})
        for (const char* uri : {kGpx10Uri, kGpx11Uri, "", "urn:other", kGeocache10Uri, kGeocache101Uri,
                                "http://www.groundspeak.com/cache/1/0/2", kVendorUri})
            for (const Sample& sample : Samples()) {
                const std::string first = sample.In(uri, 0);
                Expect(version, first + content, sample, false);
                Expect(version, content + first, sample, false);
                Expect(version, first + content + sample.In(uri, 1), sample, true);
            }
}

INSTANTIATE_TEST_SUITE_P(All, ReadLossPlacesTest, testing::ValuesIn(Places()),
                         [](const testing::TestParamInfo<Place>& place) { return place.param.name; });

// The three sources of a file report the same of what is not an element that is read.

const std::string kUnknown = ": The library does not keep this element.\n";
const std::string kBeside = " unreadable loss: Its text beside its elements is not read.\n";
const std::string kReplaced = " replaced loss: Another element was kept in its place.\n";

TEST(ReadLossTest, ASkippedElementWithoutContentIsNoLoss) {
    for (const std::string nothing : {"<x/>", "<x> &#10;<!-- c --><?p i?><![CDATA[ ]]></x>",
                                      "<x><y/><y><z xmlns='urn:z' a=''/></y></x>"}) {
        EXPECT_EQ(ReportsOfChildren(nothing + "<trk>" + nothing + "<trkseg>" + nothing + "</trkseg></trk>"),
                  "gpx/x unknown" + kUnknown + "gpx/trk/x unknown" + kUnknown + "gpx/trk/trkseg/x unknown" +
                      kUnknown)
            << nothing;
    }
}

TEST(ReadLossTest, ASkippedElementWithContentAtAnyDepthIsALoss) {
    for (const std::string something :
         {"<x>t</x>", "<x a='1'/>", "<x><y/><y> </y><y a='1'/></x>", "<x><y><z/></y>t</x>", "<x>&amp;</x>",
          "<x><![CDATA[&]]></x>", "<x><y><z> t</z></y></x>", "<x>\xC2\xA0</x>"}) {
        EXPECT_EQ(ReportsOfChildren(something + "<trk>" + something + "<trkseg>" + something +
                                    "</trkseg></trk>" + "<x/>"),
                  "gpx/x unknown loss" + kUnknown + "gpx/trk/x unknown loss" + kUnknown +
                      "gpx/trk/trkseg/x unknown loss" + kUnknown + "gpx/x unknown" + kUnknown)
            << something;
    }
}

TEST(ReadLossTest, TextBesideElementsIsReportedOnceForEachElement) {
    EXPECT_EQ(
        ReportsOfChildren("a<wpt lat='1' lon='2'>b<name>n</name>c</wpt>d<rte>e<rtept lat='1' lon='2'/></rte>"
                          "<trk><![CDATA[f]]><trkseg> <trkpt lat='1' lon='2'> <ele>1</ele>g</trkpt>h"
                          "</trkseg></trk>"),
        "gpx" + kBeside + "gpx/wpt" + kBeside + "gpx/rte" + kBeside + "gpx/trk" + kBeside +
            "gpx/trk/trkseg/trkpt" + kBeside + "gpx/trk/trkseg" + kBeside);
}

TEST(ReadLossTest, AnElementInATextIsALossIfItHasAnAttribute) {
    const std::string message = " unreadable loss: The attributes of elements in its text are not read.\n";
    EXPECT_EQ(ReportsOfChildren("<name>a<b>c</b></name><metadata><name>a<b d='1'>c</b></name></metadata>"
                                "<wpt lat='1' lon='2'><name>a<b c='1'/></name><sym>a<b/></sym>"
                                "<src><b c='1'/></src></wpt>"),
              "gpx/metadata/name" + message + "gpx/wpt/name" + message + "gpx/wpt/src" + message);
}

TEST(ReadLossTest, ALaterUrlReplacesTheNameOfTheEarlierOne) {
    EXPECT_EQ(ReportsOf(GpxFileText("1.0", "",
                                    "<wpt lat='1' lon='2'><url>u</url><urlname>n</urlname><url>u</url></wpt>"
                                    "<trk><url>u</url><urlname>n</urlname><url>v</url></trk>")),
              "gpx/wpt/urlname" + kReplaced + "gpx/trk/urlname" + kReplaced + "gpx/trk/url" + kReplaced);
}

TEST(ReadLossTest, WhatIsReplacedByTheSameOrSaysNothingIsNoLoss) {
    const std::string vendor = std::string("<extensions xmlns:v='") + kVendorUri + "'>";
    const std::string field = "<v:formdata><v:formstring key='k'>v</v:formstring></v:formdata></extensions>";
    EXPECT_EQ(
        ReportsOfChildren("<name/><name>n</name><wpt lat='1' lon='2'><desc>d</desc><desc/><desc>d</desc>" +
                          vendor + field + vendor + field + "</wpt>"),
        "");
}

TEST(ReadLossTest, TheSameTextInOtherElementsIsALoss) {
    const auto extensions = [](const std::string& children) {
        return std::string("<extensions xmlns='") + kVendorUri + "'>" + children + "</extensions>";
    };
    EXPECT_EQ(ReportsOfChildren("<metadata>" + extensions("<layerkey>a</layerkey><layername>b</layername>") +
                                extensions("<layerkey>ab</layerkey>") + "</metadata>"),
              "gpx/metadata/extensions" + kReplaced);
}

TEST(ReadLossTest, AVendorsNumberThatMeansNoneIsALossUnlessItIsTheUsualOne) {
    const auto children = [](const std::string& symbol, const std::string& color) {
        const std::string start = std::string("<extensions xmlns:v='") + kVendorUri + "'>";
        return "<wpt lat='1' lon='2'>" + start + "<v:tovasymbol>" + symbol +
               "</v:tovasymbol></extensions></wpt><trk>" + start + "<v:color>" + color +
               "</v:color></extensions></trk>";
    };
    EXPECT_EQ(ReportsOfChildren(children("0", "-1")), "");
    EXPECT_EQ(ReportsOfChildren(children("-1", "-2")),
              "gpx/wpt/extensions/tovasymbol changed loss: -1 counts as no symbol.\n"
              "gpx/trk/extensions/color changed loss: -2 counts as no colour.\n");
}

TEST(ReadLossTest, WhatComesTooLateAndSaysNothingIsNoLoss) {
    EXPECT_EQ(ReportsOfChildren("<rte><rtept lat='1' lon='2'/><extensions/><name>n</name></rte>"),
              "gpx/rte/extensions order: It comes after the first route point.\n"
              "gpx/rte/name order loss: It comes after the first route point.\n");
}

// Characters that XML 1.1 has and XML 1.0 has not.
const std::string kXml11 = "<?xml version='1.1'?>" +
                           GpxFileText("1.1", "",
                                       "<metadata><name>&#1;n&#x1F;</name></metadata><wpt lat='1' lon='2'>"
                                       "<name>a&#9;&#127;</name><link href='&#2;'/><desc>\n\t</desc></wpt>");

std::string ReportsOfXml11(bool isComplete) {
    RecordingObserver observer;
    GpxParser parser;
    parser.SetObserver(&observer);
    if (isComplete)
        parser.SetComplete();
    GpxDocument document;
    parser.Parse(kXml11, u".gpx", document);
    return observer.skipped;
}

TEST(ReadLossTest, ACharacterThatXml10CannotHoldIsALossInBothModes) {
    const std::string message = " changed loss: A character that XML 1.0 cannot hold becomes U+FFFD.\n";
    const std::string expected = "gpx/metadata/name" + message + "gpx/wpt/link@href" + message;
    EXPECT_EQ(ReportsOfXml11(false), expected);
    EXPECT_EQ(ReportsOfXml11(true), expected);
}

} // namespace
} // namespace vexaTransferLib
