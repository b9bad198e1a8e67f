// SPDX-License-Identifier: MIT

// The reports to an observer about elements that the reader skips.

#include "support/ContractChecks.h"
#include "support/GpxDom.h"
#include "support/GpxText.h"
#include "support/RecordingObserver.h"

#include <vexaTransferLib/GpxParser.h>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

// Without the reports that nearly every file would have: of its creator, and of a name that it lacks. The path gives
// the document none.
void ReadQuietly(std::string bytes, RecordingObserver& observer) {
    const std::string creator = " creator=\"test\"";
    if (const std::size_t at = bytes.find(creator); at != std::string::npos)
        bytes.erase(at, creator.size());
    GpxParser parser;
    GpxDocument document;
    parser.SetObserver(&observer);
    parser.Parse(bytes, u".gpx", document);
}

std::string Skipped(const std::string& bytes) {
    RecordingObserver observer;
    ReadQuietly(bytes, observer);
    return observer.skipped;
}

struct Case {
    std::string bytes;
    std::string skipped;
};

void PrintTo(const Case& given, std::ostream* out) {
    *out << given.bytes.substr(given.bytes.find('>') + 1);
}

class GpxSkippedElementTest : public testing::TestWithParam<Case> {};

TEST_P(GpxSkippedElementTest, ReportsSkippedElements) {
    EXPECT_EQ(Skipped(GetParam().bytes), GetParam().skipped);
}

std::string Wpt(const std::string& children) {
    return Gpx11("<wpt lat='1' lon='2'>" + children + "</wpt>");
}

std::string Wpt10(const std::string& children) {
    return "<gpx version='1.0' xmlns='http://www.topografix.com/GPX/1/0'><wpt lat='1' lon='2'>" + children +
           "</wpt></gpx>";
}

std::string Route(const std::string& children) {
    return Gpx11("<rte>" + children + "</rte>");
}

std::string Track(const std::string& children) {
    return Gpx11("<trk>" + children + "</trk>");
}

// In each child that has none of its own.
std::string WithVendorNamespace(std::string children) {
    const std::string space = std::string(" xmlns='") + kVendorUri + "'";
    for (const char* name : {"formdata", "tovasymbol", "objectid", "routeType", "routePointType", "color"})
        for (std::size_t at = 0; (at = children.find(std::string("<") + name, at)) != std::string::npos; ++at)
            children.insert(at + 1 + std::string_view(name).size(), space);
    return children;
}

std::string Vendor(const std::string& children) {
    return "<extensions>" + WithVendorNamespace(children) + "</extensions>";
}

std::string Cache(const std::string& children) {
    return Wpt("<extensions><cache xmlns='http://www.groundspeak.com/cache/1/0/1'>" + children +
               "</cache></extensions>");
}

std::string CacheExtensions(const std::string& name) {
    return "<extensions><cache xmlns='http://www.groundspeak.com/cache/1/0/1'><name>" + name +
           "</name></cache></extensions>";
}

const std::string kLog = "<log id='1'><date>d</date><finder>f</finder><text>t</text></log>";
const std::string kReplaced = "Another element was kept in its place.\n";
const std::string kComment = "gpx/wpt/cmt changed: The comment is kept as the description.\n";
const std::string kUnknown = "The library does not keep this element.\n";

INSTANTIATE_TEST_SUITE_P(
    Complete, GpxSkippedElementTest,
    testing::Values(
        Case{Gpx11(""), ""},
        Case{Gpx11("<metadata><name>n</name><time>2009-01-15T10:20:30Z</time></metadata>"), ""},
        Case{Wpt("<ele>1</ele><time>2009-01-15T10:20:30Z</time><name>n</name><desc>d</desc><fix>2d</fix>"
                 "<link href='u'><text>t</text><type>y</type></link><!-- c --><?p i?> <sym>s</sym>"),
             ""},
        Case{Cache("<name>n</name><logs>" + kLog +
                   "</logs><travelbugs><travelbug><name>b</name></travelbug>"
                   "</travelbugs>"),
             ""},
        Case{
            Wpt(Vendor("<formdata><formstring key='k'>v</formstring></formdata><tovasymbol>1,234</tovasymbol>"
                       "<objectid>G</objectid>")),
            ""},
        Case{Route("<name>n</name><src>s</src><type>t</type>" + Vendor("<routeType>points</routeType>") +
                   "<rtept lat='1' lon='2'>" + Vendor("<routePointType>start</routePointType>") + "</rtept>"),
             ""},
        Case{Track("<name>n</name>" + Vendor("<color>5</color>") +
                   "<trkseg><trkpt lat='1' lon='2'><ele>1</ele></trkpt></trkseg>"),
             ""}));

INSTANTIATE_TEST_SUITE_P(
    Root, GpxSkippedElementTest,
    testing::Values(
        Case{Gpx11("<extensions/>"), "gpx/extensions unknown: " + kUnknown},
        Case{Gpx11("<wpt xmlns='http://www.topografix.com/GPX/1/0' lat='1' lon='2'/>"),
             "gpx/wpt foreign loss: Its namespace is \"http://www.topografix.com/GPX/1/0\", not that of GPX "
             "1.1.\n"},
        Case{"<gpx version='1.0'><wpt lat='1' lon='2'/></gpx>",
             "gpx/wpt foreign loss: It is in no namespace, not that of GPX 1.0.\n"},
        Case{Gpx11("<x:wpt xmlns:x='urn:x' lat='1' lon='2'/>"),
             "gpx/wpt foreign loss: Its namespace is \"urn:x\", not that of GPX 1.1.\n"},
        Case{Gpx11("<trk/><wpt lat='1' lon='2'/><rte/>"),
             "gpx/wpt order loss: It comes after a route or a track.\n"
             "gpx/rte order loss: It comes after a track.\n"},
        Case{Gpx11("<rte/><wpt lat='1' lon='2'/>"),
             "gpx/wpt order loss: It comes after a route or a track.\n"},
        Case{Gpx11("<metadata><name>a</name><name>b</name><author>x</author><time>soon</time></metadata>"),
             "gpx/metadata/name replaced loss: " + kReplaced + "gpx/metadata/author unknown loss: " +
                 kUnknown + "gpx/metadata/time unreadable loss: \"soon\" is not a time.\n"},
        Case{Gpx11("<name>a</name><metadata><name>a</name></metadata>"), ""},
        Case{Gpx11("<metadata>" + Vendor("<form>f</form><x/><defaultsymbol>7a</defaultsymbol>") + Vendor("") +
                   "</metadata>"),
             "gpx/metadata/extensions/x unknown: " + kUnknown +
                 "gpx/metadata/extensions/defaultsymbol unreadable loss: \"7a\" is not a whole number.\n"
                 "gpx/metadata/extensions replaced loss: " +
                 kReplaced}));

INSTANTIATE_TEST_SUITE_P(
    Points, GpxSkippedElementTest,
    testing::Values(
        Case{Wpt("<ele>high</ele><magvar>400</magvar><fix>4d</fix><time/><hdop>1</hdop>"),
             "gpx/wpt/ele unreadable loss: \"high\" is not a number.\n"
             "gpx/wpt/magvar refused loss: The GPX point's magnetic variation must be greater than or equal "
             "to "
             "zero and less than 360.\n"
             "gpx/wpt/fix unreadable loss: \"4d\" is not a kind of fix.\n"
             "gpx/wpt/hdop unknown loss: " +
                 kUnknown},
        Case{Wpt("<name><!-- c -->n</name><desc>a<b>c</b></desc>"),
             "gpx/wpt/name unreadable loss: Its text comes after something else and is not read.\n"
             "gpx/wpt/desc unreadable loss: Only the first piece of its text is read.\n"},
        Case{Wpt("<desc>a</desc><cmt>b</cmt><desc>c</desc><desc>b</desc>"),
             kComment + "gpx/wpt/desc replaced loss: " + kReplaced +
                 "gpx/wpt/desc replaced loss: " + kReplaced},
        Case{Wpt("<ele>1</ele><ele>2</ele><ele>2</ele>"), "gpx/wpt/ele replaced loss: " + kReplaced},
        Case{Wpt("<time>2009-01-15T10:20:30Z</time><time>2010-01-15T10:20:30Z</time>"),
             "gpx/wpt/time replaced loss: " + kReplaced},
        Case{Wpt("<fix>2d</fix><fix>3d</fix>"), "gpx/wpt/fix replaced loss: " + kReplaced},
        Case{Wpt("<cmt>a</cmt><cmt>b</cmt>"),
             kComment + kComment + "gpx/wpt/cmt replaced loss: " + kReplaced},
        Case{Wpt("<link/><url>u</url>"),
             "gpx/wpt/link refused loss: A link element was missing the href attribute.\n"
             "gpx/wpt/url version loss: GPX 1.1 has no such element.\n"},
        Case{Wpt10("<url>a</url><url/>"), ""},
        Case{Wpt("<link href='a'/><link href='b'/><link/>"),
             "gpx/wpt/link replaced loss: " + kReplaced +
                 "gpx/wpt/link refused loss: A link element was missing the href attribute.\n"},
        Case{Wpt("<link href='a'><x/><text>t</text><text>u</text></link>"),
             "gpx/wpt/link/x unknown: " + kUnknown + "gpx/wpt/link/text replaced loss: " + kReplaced},
        Case{Wpt("<url>u</url><urlname>n</urlname>"),
             "gpx/wpt/url version loss: GPX 1.1 has no such element.\n"
             "gpx/wpt/urlname version loss: GPX 1.1 has no such element.\n"},
        Case{Wpt10("<urlname>n</urlname><url>u</url><link href='l'/><extensions/>"),
             "gpx/wpt/urlname incomplete loss: No url comes before it.\n"
             "gpx/wpt/link version loss: GPX 1.0 has no such element.\n"
             "gpx/wpt/extensions version: GPX 1.0 has no such element.\n"},
        Case{Wpt("<name xmlns=''>n</name><x xmlns='urn:" + std::string(70, 'y') + "'/>"),
             "gpx/wpt/name foreign loss: It is in no namespace, not that of GPX 1.1.\n"
             "gpx/wpt/x foreign: Its namespace is \"urn:" +
                 std::string(56, 'y') + "...\", not that of GPX 1.1.\n"}));

INSTANTIATE_TEST_SUITE_P(
    Extensions, GpxSkippedElementTest,
    testing::Values(
        Case{
            Wpt(Vendor(
                "<formdata><formstring key='a'>1</formstring></formdata><formdata><formstring>v"
                "</formstring><formstring key='k' modtime='x'>v</formstring><formstring key='k'/><y/>"
                "</formdata><tovasymbol>x</tovasymbol><objectid>a</objectid><objectid>b</objectid><z/>")),
            "gpx/wpt/extensions/formdata replaced loss: The last form is the one that is read.\n"
            "gpx/wpt/extensions/tovasymbol unreadable loss: \"x\" is not a whole number.\n"
            "gpx/wpt/extensions/objectid replaced loss: " +
                kReplaced + "gpx/wpt/extensions/z unknown: " + kUnknown +
                "gpx/wpt/extensions/formdata/formstring incomplete loss: A form field without a key is not "
                "kept.\n"
                "gpx/wpt/extensions/formdata/formstring@modtime unreadable loss: Its modtime is not a time.\n"
                "gpx/wpt/extensions/formdata/formstring replaced loss: It replaces an earlier form field "
                "with "
                "the same key.\n"
                "gpx/wpt/extensions/formdata/y unknown: " +
                kUnknown},
        Case{Cache("<name>a</name><name>b</name><country>c</country><x:owner xmlns:x='urn:x'>o</x:owner>"
                   "<logs>" +
                   kLog +
                   "<log id='x1'><date>d</date><type>t</type></log><y/></logs>"
                   "<travelbugs><travelbug><ref/></travelbug></travelbugs>"),
             "gpx/wpt/extensions/cache/name replaced loss: " + kReplaced +
                 "gpx/wpt/extensions/cache/country unknown loss: " + kUnknown +
                 "gpx/wpt/extensions/cache/owner foreign loss: Its namespace is \"urn:x\", not that of "
                 "geocaches.\n"
                 "gpx/wpt/extensions/cache/logs/log@id unreadable loss: Its id is not a number.\n"
                 "gpx/wpt/extensions/cache/logs/log incomplete loss: A log without date, finder or text is "
                 "not "
                 "kept.\n"
                 "gpx/wpt/extensions/cache/logs/y unknown: " +
                 kUnknown + "gpx/wpt/extensions/cache/travelbugs/travelbug/ref unknown: " + kUnknown +
                 "gpx/wpt/extensions/cache/travelbugs/travelbug incomplete loss: A travel bug without a name "
                 "is "
                 "not kept.\n"},
        Case{Wpt(CacheExtensions("a") + CacheExtensions("b")),
             "gpx/wpt/extensions/cache replaced loss: " + kReplaced},
        Case{Wpt(CacheExtensions("a") + CacheExtensions("a")), ""},
        Case{Cache("<logs>" + kLog + "</logs>"), "gpx/wpt/extensions/cache incomplete loss: A geocache with "
                                                 "nothing but logs and travel bugs is not kept.\n"},
        Case{Wpt("<extensions "
                 "xmlns:g='http://www.groundspeak.com/cache/1/0'><g:cache><g:name>a</g:name></g:cache>"
                 "<g:cache/><cache/><cache xmlns='http://www.groundspeak.com/cache/1/0/2'/></extensions>"),
             "gpx/wpt/extensions/cache replaced: The geocache before it is the one that is read.\n"
             "gpx/wpt/extensions/cache foreign: Its namespace is \"http://www.topografix.com/GPX/1/1\", "
             "not that of geocaches.\n"
             "gpx/wpt/extensions/cache foreign: Its namespace is "
             "\"http://www.groundspeak.com/cache/1/0/2\","
             " not that of geocaches.\n"}));

INSTANTIATE_TEST_SUITE_P(
    RoutesAndTracks, GpxSkippedElementTest,
    testing::Values(
        Case{Route("<desc>d</desc><name>a</name><name>b</name><rtept lat='1' lon='2'/><name>c</name>"
                   "<rtept lat='x' lon='2'/><rtept lat='91' lon='2'/>"),
             "gpx/rte/desc unknown loss: " + kUnknown + "gpx/rte/name replaced loss: " + kReplaced +
                 "gpx/rte/name order loss: It comes after the first route point.\n"
                 "gpx/rte/rtept refused loss: Unable to read a GPX point's latitude.\n"
                 "gpx/rte/rtept refused loss: The GPX point's latitude is invalid.\n"},
        Case{
            Route(Vendor("<routeType>circle</routeType><routeType>points</routeType><x/>") +
                  "<rtept lat='1' lon='2'><extensions/></rtept><rtept lat='1' lon='2'>" +
                  Vendor("<routePointType>start</routePointType>") + "</rtept>"),
            "gpx/rte/extensions/routeType unreadable loss: \"circle\" is not a type that the library knows.\n"
            "gpx/rte/extensions/x unknown: " +
                kUnknown +
                "gpx/rte/rtept refused loss: The route point type cannot be used with this route type.\n"},
        Case{Route("<x:number xmlns:x='urn:x'>1</x:number><name "
                   "xmlns='http://www.topografix.com/GPX/1/0'>n</name>"),
             "gpx/rte/number foreign loss: Its namespace is \"urn:x\", not that of GPX 1.1.\n"
             "gpx/rte/name foreign loss: Its namespace is \"http://www.topografix.com/GPX/1/0\", not that of "
             "GPX 1.1.\n"},
        Case{"<gpx version='1.0' "
             "xmlns='http://www.topografix.com/GPX/1/0'><rte><type>t</type></rte><trk><type>t"
             "</type></trk></gpx>",
             "gpx/rte/type version loss: GPX 1.0 has no such element.\n"
             "gpx/trk/type version loss: GPX 1.0 has no such element.\n"},
        Case{
            Track("<name>a</name><trkseg><trkpt lat='1' lon='2'><extensions><hr>1</hr></extensions></trkpt>"
                  "<trkpt lat='1'/><extensions/><x:trkpt xmlns:x='urn:x'/></trkseg><name>b</name><number>1"
                  "</number>" +
                  Vendor("<color>red</color><color>3</color><y/>") + "<trkseg xmlns=''/>"),
            "gpx/trk/trkseg/trkpt/extensions unknown loss: The library does not keep the extensions of track "
            "points.\n"
            "gpx/trk/trkseg/trkpt refused loss: Unable to read a GPX point's longitude.\n"
            "gpx/trk/trkseg/extensions unknown: " +
                kUnknown +
                "gpx/trk/trkseg/trkpt foreign: Its namespace is \"urn:x\", not that of GPX 1.1.\n"
                "gpx/trk/name replaced loss: " +
                kReplaced + "gpx/trk/number unknown loss: " + kUnknown +
                "gpx/trk/extensions/color unreadable loss: \"red\" is not a whole number.\n"
                "gpx/trk/extensions/color replaced loss: " +
                kReplaced + "gpx/trk/extensions/y unknown: " + kUnknown +
                "gpx/trk/trkseg foreign: It is in no namespace, not that of GPX 1.1.\n"}));

std::string PlacesOf(const std::string& bytes) {
    RecordingObserver observer;
    ReadQuietly(bytes, observer);
    std::string places;
    for (const GpxSkippedElement& thing : observer.things)
        places +=
            thing.element + " " + std::to_string(thing.line) + ":" + std::to_string(thing.column) + "\n";
    return places;
}

TEST(GpxSkippedElementPlacesTest, AreWhereTheStartTagEnds) {
    EXPECT_EQ(
        PlacesOf("<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'>\n"
                 "<extensions>\n</extensions>\n"
                 "  <trk><number>1</number>\n"
                 "    <name>a</name>\n<trkseg>\n\n<trkpt\nlat='1'\nlon='2'><ele>x</ele></trkpt></trkseg>\n"
                 "<name>b</name></trk></gpx>"),
        "gpx/extensions 2:13\n"
        "gpx/trk/number 4:16\n"
        "gpx/trk/trkseg/trkpt/ele 10:14\n"
        "gpx/trk/name 5:11\n");
}

TEST(GpxSkippedElementPlacesTest, AreUnknownOfAFileThatNeedsADom) {
    EXPECT_EQ(PlacesOf("<!DOCTYPE gpx>\n" + Gpx11("<extensions/>")), "gpx/extensions 0:0\n");
}

TEST(GpxSkippedElementPlacesTest, ElementsAreNamedByThePublicOperationsOnNodesToo) {
    const DomTree tree(Gpx11("<trk><trkseg><trkpt lat='x' lon='2'/></trkseg></trk>"));
    GpxParser parser;
    RecordingObserver observer;
    parser.SetObserver(&observer);
    GpxTrack track;
    CaptureStandardError(
        [&] { parser.ParseTrkSegNode(GpxVersion::GetLatestVersion(), tree.Find("trkseg"), track); });
    EXPECT_EQ(observer.skipped,
              "gpx/trk/trkseg/trkpt refused loss: Unable to read a GPX point's latitude.\n");
}

} // namespace
} // namespace vexaTransferLib
