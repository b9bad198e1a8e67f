// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/DocumentReader.h>

#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/reader/VendorReader.h>

#include "support/ContractChecks.h"
#include "support/FakeNode.h"
#include "support/GpxDom.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <xercesc/dom/DOMException.hpp>

#include <cstdint>
#include <stdexcept>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

GpxDocument Read(const std::string& gpx) {
    const DomTree tree(gpx);
    GpxDocument document;
    GpxModelAccess::SetName(document, u"before");
    GpxParser().ParseGpxNode(tree.Root(), document);
    return document;
}

std::string Wpt() {
    return "<wpt lat='1' lon='2'/>";
}

// W, R and T between tags stand for a waypoint, a route and a track.
std::string Expanded(const std::string& pattern) {
    std::string children;
    bool inTag = false;
    for (const char c : pattern) {
        inTag = inTag ? c != '>' : c == '<';
        if (!inTag && c == 'W')
            children += Wpt();
        else if (!inTag && c == 'R')
            children += "<rte/>";
        else if (!inTag && c == 'T')
            children += "<trk/>";
        else
            children += c;
    }
    return children;
}

TEST(DocumentReaderTest, TheOrderOfElementsIsEnforced) {
    struct Row {
        const char* pattern;
        const char* counts;
    };
    constexpr Row kRows[] = {
        {"", "0 waypoints, 0 routes, 0 tracks"},
        {"WWRRTT", "2 waypoints, 2 routes, 2 tracks"},
        {"TWR", "0 waypoints, 0 routes, 1 tracks"},
        {"TWRT", "0 waypoints, 0 routes, 2 tracks"},
        {"RWR", "0 waypoints, 2 routes, 0 tracks"},
        {"WRWTWRT", "1 waypoints, 1 routes, 2 tracks"},
        {"RTR", "0 waypoints, 1 routes, 1 tracks"},
        {"RTW", "0 waypoints, 1 routes, 1 tracks"},
        {"W<other:trk/>W<other:rte/>W<trk xmlns=''/>W", "4 waypoints, 0 routes, 0 tracks"},
        {"<gpx10:wpt lat='1' lon='2'/><gpx11:wpt lat='1' lon='2'/>", "1 waypoints, 0 routes, 0 tracks"},
        {"text<!-- c --><?p i?>W", "1 waypoints, 0 routes, 0 tracks"},
        {"<Wpt lat='1' lon='2'/><WPT/><trkseg/><trkpt lat='1' lon='2'/>", "0 waypoints, 0 routes, 0 tracks"},
        {"<other:x>W</other:x><extensions>T</extensions><metadata>R</metadata>",
         "0 waypoints, 0 routes, 0 tracks"},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(CountsOf(Read(Gpx11(Expanded(row.pattern)))), row.counts) << row.pattern;
        EXPECT_EQ(CountsOf(Read(Gpx10(Expanded(row.pattern)))), row.counts) << row.pattern;
    }
}

TEST(DocumentReaderTest, AWaypointOutOfOrderIsNotEvenLookedAt) {
    EXPECT_EQ(CaptureStandardError([] { Read(Gpx11("<trk/><wpt lat='x'/><rte><rtept/></rte>")); }), "");
}

TEST(DocumentReaderTest, ElementsWantTheNamespaceOfTheVersion) {
    const std::string children =
        "<metadata><name>N</name><extensions><layerkey>K</layerkey></extensions></metadata>"
        "<name>M</name><time>1970-01-01T00:00:01Z</time>" +
        Wpt() + "<rte/><trk/>";
    for (const auto& [version, uri] : {std::pair("1.0", kGpx11Uri), std::pair("1.1", kGpx10Uri),
                                       std::pair("1.0", "urn:other"), std::pair("1.1", "")}) {
        const GpxDocument document = Read(Gpx(version, uri, children));
        EXPECT_EQ(CountsOf(document), "0 waypoints, 0 routes, 0 tracks") << version << uri;
        EXPECT_EQ(NameOf(document), "before");
        EXPECT_EQ(GpxModelAccess::GetTime(document), 0.0);
        EXPECT_FALSE(document.HasExtensionData());
    }
}

TEST(DocumentReaderTest, NameAndTimeAreReadBelowTheRootAndInTheMetadataOfBothVersions) {
    const std::string data = "<name>N</name><time>1970-01-01T00:00:01Z</time>";
    for (const std::string& children : {data, "<metadata>" + data + "</metadata>"}) {
        for (const std::string& gpx : {Gpx10(children), Gpx11(children)}) {
            const GpxDocument document = Read(gpx);
            EXPECT_EQ(NameOf(document), "N") << gpx;
            EXPECT_EQ(GpxModelAccess::GetTime(document), 1000.0) << gpx;
        }
    }
}

TEST(DocumentReaderTest, TheNameIsTheWholeTextContent) {
    struct Row {
        const char* children;
        const char* name;
    };
    constexpr Row kRows[] = {
        {"<name>A</name><name>B</name>", "B"},
        {"<metadata><name>A</name></metadata><name>B</name>", "B"},
        {"<name>B</name><metadata><name>A</name></metadata>", "A"},
        {"<metadata><name>A</name></metadata><metadata><name>B</name></metadata>", "B"},
        {"<name/>", ""},
        {"<name>A</name><name/>", ""},
        {"<metadata><name/></metadata>", ""},
        {"<name><!-- c --></name>", ""},
        {"<name>a<b>c<d>d</d></b><![CDATA[<e>]]><?p i?><!-- c -->&amp;f</name>", "acd<e>&f"},
        {"<name> a\r\n b </name>", " a\n b "},
        {"<name xmlns=''>none</name><other:name>other</other:name><Name>upper</Name>", "before"},
        {"<metadata><name xmlns=''>none</name></metadata>", "none"},
        {"<metadata><other:name>other</other:name></metadata>", "other"},
        {"<metadata><Name>upper</Name><author><name>author</name></author></metadata>", "before"},
        {"<other:metadata><name>A</name></other:metadata>", "before"},
        {"<metadata/>", "before"},
        {"<trk><name>track</name></trk>", "before"},
    };
    for (const Row& row : kRows)
        EXPECT_EQ(NameOf(Read(Gpx11(row.children))), row.name) << row.children;
}

TEST(DocumentReaderTest, OnlyAValidTimeIsRead) {
    struct Row {
        const char* children;
        double time;
    };
    constexpr Row kRows[] = {
        {"<time>2009-01-15T10:20:30.5Z</time>", 1232014830500.0},
        {"<time>1970-01-01T00:00:01Z</time><time>yesterday</time><time/>", 1000.0},
        {"<time>1970-01-01T00:00:01Z</time><time>1970-01-01T00:00:02Z</time>", 2000.0},
        {"<metadata><time>1970-01-01T00:00:01Z</time></metadata><time>1970-01-01T00:00:02Z</time>", 2000.0},
        {"<metadata><other:time>1970-01-01T00:00:01Z</other:time></metadata>", 1000.0},
        {"<other:time>1970-01-01T00:00:01Z</other:time>", 0.0},
        {"<time><b>1970-01-01T00:00:01Z</b></time>", 0.0},
        {"<time>1969-12-31T23:59:59Z</time>", 0.0},
    };
    for (const Row& row : kRows)
        EXPECT_EQ(GpxModelAccess::GetTime(Read(Gpx11(row.children))), row.time) << row.children;
}

TEST(DocumentReaderTest, TheEpochItselfIsNoDocumentTime) {
    double time = -1.0;
    EXPECT_FALSE(Read(Gpx11("<time>1970-01-01T00:00:00Z</time>")).GetDocumentTime(time));
    EXPECT_EQ(time, -1.0);
}

TEST(DocumentReaderTest, TheDocumentIsNotCleared) {
    const DomTree tree(Gpx11("<trk/>"));
    GpxDocument document;
    document.AddRoute(GpxRoute(kTarvikRouteStandard));
    GpxParser parser;
    parser.ParseGpxNode(tree.Root(), document);
    parser.ParseGpxNode(tree.Root(), document);
    EXPECT_EQ(CountsOf(document), "0 waypoints, 1 routes, 2 tracks");
}

TEST(DocumentReaderTest, ABadWaypointEndsTheReading) {
    struct Row {
        const char* attributes;
        const char* message;
    };
    GpxParser parser;
    constexpr Row kRows[] = {{"lon='2'", "Unable to read a GPX point's latitude."},
                             {"lat='1' lon='x'", "Unable to read a GPX point's longitude."}};
    for (const Row& row : kRows) {
        const DomTree tree(Gpx11(Wpt() + "<wpt " + row.attributes + "/>" + Wpt() + "<trk/>"));
        GpxDocument document;
        EXPECT_FAILURE(parser.ParseGpxNode(tree.Root(), document), dbc::postcondition_error, row.message,
                       kParserSource);
        EXPECT_EQ(CountsOf(document), "1 waypoints, 0 routes, 0 tracks");
    }
    const DomTree tree(Gpx11(Wpt() + "<wpt lat='91' lon='2'/>"));
    GpxDocument document;
    EXPECT_FAILURE(parser.ParseGpxNode(tree.Root(), document), dbc::precondition_error,
                   "The GPX point's latitude is invalid.", "LibCore/vexaTransferLib/GpxPoint.cpp");
    EXPECT_EQ(CountsOf(document), "1 waypoints, 0 routes, 0 tracks");
}

// Nodes in forms that a Xerces tree never has.

FakeNodePtr Root(std::vector<FakeNodePtr> children) {
    const FakeNodePtr root = Gpx11Node(u"gpx", std::move(children));
    root->attributes = {{u"version", u"1.1"}};
    return root;
}

void ReadView(const FakeNodePtr& root, GpxDocument& document) {
    MarkingContext context;
    reader::ReadDocument(context, root->View(), document);
}

TEST(DocumentReaderTest, WithoutAChildListTheFileIsRefused) {
    GpxDocument document;
    EXPECT_FAILURE(ReadView(WithoutChildList(*Root({})), document), dbc::postcondition_error,
                   "Unable to read the GPX file nodes.", kParserSource);
}

TEST(DocumentReaderTest, TheVersionIsReadBeforeTheChildren) {
    GpxDocument document;
    const FakeNodePtr root = WithoutChildList(*Root({}));
    root->attributes = {{u"version", u"1.2"}};
    EXPECT_FAILURE(ReadView(root, document), dbc::precondition_error, "Unsupported GPX version string.",
                   "LibCore/vexaTransferLib/GpxVersion.cpp");
    root->attributes.clear();
    EXPECT_FAILURE(ReadView(root, document), dbc::postcondition_error, "Unable to read the GPX version.",
                   kParserSource);
}

TEST(DocumentReaderTest, AMissingChildEndsTheReading) {
    GpxDocument document;
    EXPECT_FAILURE(ReadView(Root({Gpx11Node(u"trk"), nullptr, Gpx11Node(u"trk")}), document),
                   dbc::postcondition_error, "Unable to read a GPX child node.", kParserSource);
    EXPECT_EQ(CountsOf(document), "0 waypoints, 0 routes, 1 tracks");
}

TEST(DocumentReaderTest, AChildWithoutALocalNameIsSkipped) {
    const FakeNodePtr nameless = Gpx11Text(u"name", u"N");
    nameless->localName.reset();
    GpxDocument document;
    ReadView(Root({nameless, Gpx11Node(u"metadata", {nameless}), Gpx11Node(u"trk")}), document);
    EXPECT_EQ(NameOf(document), "");
    EXPECT_EQ(CountsOf(document), "0 waypoints, 0 routes, 1 tracks");
}

TEST(DocumentReaderTest, ANameWithoutTextContentLeavesTheNameAsItWas) {
    GpxDocument document;
    GpxModelAccess::SetName(document, u"before");
    ReadView(Root({Gpx11Node(u"name"), Gpx11Node(u"metadata", {Gpx11Node(u"name")})}), document);
    EXPECT_EQ(NameOf(document), "before");
}

TEST(DocumentReaderTest, MetadataWithoutChildListOrWithMissingChildrenIsReadOn) {
    GpxDocument document;
    EXPECT_EQ(CaptureStandardError([&] {
                  ReadView(Root({WithoutChildList(*Gpx11Node(u"metadata")),
                                 Gpx11Node(u"metadata", {nullptr, Gpx11Text(u"name", u"N")}),
                                 Gpx11Node(u"metadata", {WithoutChildList(*Gpx11Node(u"extensions"))})}),
                           document);
              }),
              "");
    EXPECT_EQ(NameOf(document), "N");
    EXPECT_TRUE(document.HasExtensionData());
}

TEST(DocumentReaderTest, AFailingChildOfTheRootEndsTheReading) {
    GpxDocument document;
    const FakeNodePtr time = Gpx11Text(u"time", u"T");
    EXPECT_THROW(ReadView(Root({Throwing(*time, std::runtime_error("any"))}), document), std::runtime_error);
    EXPECT_THROW(ReadView(Root({Throwing(*time, 5)}), document), int);
    EXPECT_THROW(
        ReadView(Root({Gpx11Node(u"metadata", {Throwing(*time, xercesc::DOMException())})}), document),
        xercesc::DOMException);
}

TEST(DocumentReaderTest, ATrackOrRouteWithoutAChildListEndsTheReading) {
    GpxDocument document;
    EXPECT_FAILURE(ReadView(Root({WithoutChildList(*Gpx11Node(u"trk"))}), document), dbc::postcondition_error,
                   "Unable to read GPX track child elements.", kParserSource);
    EXPECT_FAILURE(ReadView(Root({WithoutChildList(*Gpx11Node(u"rte"))}), document), dbc::postcondition_error,
                   "Unable to read GPX route child elements.", kParserSource);
    EXPECT_FAILURE(ReadView(Root({WithoutChildList(*Gpx11Point(u"wpt"))}), document),
                   dbc::postcondition_error, "Unable to read GPX point child elements.", kParserSource);
}

// "layerkey|layername|form|defaultsymbol|trackGUID|waypointGUID", or "none".
std::string MetaData(const GpxDocument& document) {
    const boost::shared_ptr<GISMetaData>& layer = GpxModelAccess::GetGISMetaData(document);
    const boost::shared_ptr<AnnotateMetaData>& annotation = GpxModelAccess::GetAnnotateMetaData(document);
    if (!layer || !annotation)
        return layer || annotation ? "one of two" : "none";
    return Utf8(layer->layerKey) + "|" + Utf8(layer->layerName) + "|" + Utf8(layer->form) + "|" +
           std::to_string(layer->defaultSymbol) + "|" + Utf8(annotation->trackGUID) + "|" +
           Utf8(annotation->waypointGUID);
}

std::string ParsedMetaData(const std::string& children) {
    const DomTree tree(Gpx11("<extensions>" + children + "</extensions>"));
    GpxDocument document;
    GpxParser().ParseExtensionsElement(tree.Find("extensions"), document);
    return MetaData(document);
}

constexpr char kAllMetaData[] =
    "<tarvik:layername>N</tarvik:layername><tarvik:layerkey>K</tarvik:layerkey>"
    "<tarvik:form>F</tarvik:form><tarvik:defaultsymbol>12</tarvik:defaultsymbol>"
    "<tarvik:trackGUID>T</tarvik:trackGUID><tarvik:waypointGUID>W</tarvik:waypointGUID>";
constexpr char kNoMetaData[] = "|||1||";

TEST(MetaDataReaderTest, ReadsTheSixElements) {
    EXPECT_EQ(ParsedMetaData(kAllMetaData), "K|N|F|12|T|W");
    EXPECT_EQ(ParsedMetaData(""), kNoMetaData);
    EXPECT_EQ(ParsedMetaData("<tarvik:filestats><tarvik:wptcount>5</tarvik:wptcount></tarvik:filestats>text"),
              kNoMetaData);
}

TEST(MetaDataReaderTest, MatchesByLocalNameInAnyNamespaceAndTheLastCounts) {
    EXPECT_EQ(ParsedMetaData("<layerkey xmlns=''>A</layerkey><other:layerkey>B</other:layerkey><layerkey/>"
                             "<LayerKey>C</LayerKey><trackGUID>{G}</trackGUID><waypointguid>x</waypointguid>"
                             "<form><b>x</b></form><form> F </form>"),
              "B|| F |1|{G}|");
}

TEST(MetaDataReaderTest, TheDefaultSymbolIsReadAsStrToInt) {
    struct Row {
        const char* text;
        std::int32_t number;
    };
    constexpr Row kRows[] = {{"12", 12},
                             {"abc", 0},
                             {"", 1},
                             {"1,234", 1234},
                             {"-5", -5},
                             {"7.9", 7},
                             {" 5", 0},
                             {"12abc", 12},
                             {"0", 0},
                             {"4294967297", INT32_MAX},
                             {"NaN", INT32_MIN},
                             {"-4294967297", INT32_MIN}};
    for (const Row& row : kRows)
        EXPECT_EQ(ParsedMetaData("<defaultsymbol>" + std::string(row.text) + "</defaultsymbol>"),
                  "|||" + std::to_string(row.number) + "||")
            << row.text;
}

TEST(MetaDataReaderTest, EveryExtensionsElementOfTheMetadataReplacesBothRecords) {
    const std::string full = "<extensions>" + std::string(kAllMetaData) + "</extensions>";
    EXPECT_EQ(MetaData(Read(Gpx11("<metadata>" + full + "</metadata>"))), "K|N|F|12|T|W");
    EXPECT_EQ(MetaData(Read(Gpx10("<metadata>" + full + "</metadata>"))), "K|N|F|12|T|W");
    EXPECT_EQ(MetaData(Read(Gpx11("<metadata>" + full + "<extensions/></metadata>"))), kNoMetaData);
    EXPECT_EQ(
        MetaData(Read(Gpx11("<metadata>" + full + "</metadata><metadata><other:extensions/></metadata>"))),
        kNoMetaData);
    EXPECT_EQ(MetaData(Read(Gpx11("<metadata>" + full + "</metadata><metadata/>"))), "K|N|F|12|T|W");
    EXPECT_EQ(MetaData(Read(Gpx11(full + "<metadata><name/></metadata>"))), "none") << "not below the root";
    EXPECT_EQ(MetaData(Read(Gpx11("<metadata><Extensions/></metadata>"))), "none");
}

TEST(MetaDataReaderTest, TheRecordsAreNewOnesAndStatisticsAreKept) {
    const DomTree tree(Gpx11("<extensions><layerkey>K</layerkey></extensions>"));
    GpxDocument document;
    GpxParser parser;
    parser.ParseExtensionsElement(tree.Find("extensions"), document);
    GpxModelAccess::GetGISMetaData(document)->layerName = u"kept by the copy";
    const boost::shared_ptr<GPXStats> stats(new GPXStats);
    GpxModelAccess::SetStats(document, stats);
    const GpxDocument copy = document;
    parser.ParseExtensionsElement(tree.Find("extensions"), document);
    EXPECT_EQ(MetaData(document), "K|||1||");
    EXPECT_EQ(MetaData(copy), "K|kept by the copy||1||");
    EXPECT_EQ(GpxModelAccess::GetStats(document), stats);
}

TEST(MetaDataReaderTest, StatisticsAreNeverAttached) {
    EXPECT_EQ(GpxModelAccess::GetStats(
                  Read(Gpx11("<metadata><extensions><tarvik:filestats><tarvik:wptcount>5"
                             "</tarvik:wptcount></tarvik:filestats></extensions></metadata>"))),
              nullptr);
}

TEST(MetaDataReaderTest, TheElementsOwnNameDoesNotMatter) {
    const DomTree tree("<x><layerkey>K</layerkey></x>");
    GpxDocument document;
    GpxParser().ParseExtensionsElement(tree.Root(), document);
    EXPECT_EQ(MetaData(document), "K|||1||");
}

TEST(MetaDataReaderTest, ANullNodeIsRefusedAndTheRecordsKept) {
    GpxDocument document;
    GpxModelAccess::SetGISMetaData(document, boost::shared_ptr<GISMetaData>(new GISMetaData));
    GpxModelAccess::SetAnnotateMetaData(document, boost::shared_ptr<AnnotateMetaData>(new AnnotateMetaData));
    GpxModelAccess::GetGISMetaData(document)->layerKey = u"K";
    EXPECT_FAILURE(GpxParser().ParseExtensionsElement(nullptr, document), dbc::precondition_error,
                   "Invalid node.", kParserSource);
    EXPECT_EQ(MetaData(document), "K|||1||");
}

TEST(MetaDataReaderTest, MissingChildrenAndListsAreSkipped) {
    const FakeNodePtr nameless = Gpx11Text(u"layerkey", u"X");
    nameless->localName.reset();
    MarkingContext context;
    GpxDocument document;
    EXPECT_EQ(CaptureStandardError([&] {
                  reader::ReadDocumentData(
                      context,
                      Gpx11Node(u"extensions", {nullptr, nameless, Gpx11Text(u"form", u"F")})->View(),
                      document);
              }),
              "");
    EXPECT_EQ(MetaData(document), "||F|1||");
    reader::ReadDocumentData(context, WithoutChildList(*Gpx11Node(u"extensions"))->View(), document);
    EXPECT_EQ(MetaData(document), kNoMetaData);
}

} // namespace
} // namespace vexaTransferLib
