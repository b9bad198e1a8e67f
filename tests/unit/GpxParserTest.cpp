// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxParser.h>

#include "support/ContractChecks.h"
#include "support/GpxDom.h"
#include "support/GpxFiles.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"
#include "support/ModelDoors.h"

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <filesystem>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

const std::string kGoodFile = Gpx11("<wpt lat='1' lon='2'><name>W</name></wpt>");

GpxDocument DocumentWithOneTrack() {
    GpxDocument document;
    GpxModelAccess::SetName(document, u"before");
    document.AddTrack(GpxTrack());
    return document;
}

TEST(GpxParserTest, ParseFillsTheDocument) {
    const GpxDocument document =
        ReadGpx(Gpx11("<metadata><name>N</name><time>1970-01-01T00:00:01Z</time></metadata>"
                      "<wpt lat='1' lon='2'/><rte/><trk/><trk/>"));
    EXPECT_EQ(CountsOf(document), "1 waypoints, 1 routes, 2 tracks");
    EXPECT_EQ(NameOf(document), "N");
    EXPECT_EQ(GpxModelAccess::GetTime(document), 1000.0);
}

TEST(GpxParserTest, ParseReplacesWhatTheDocumentHeld) {
    const GpxFile file(kGoodFile);
    GpxDocument document = DocumentWithOneTrack();
    GpxModelAccess::SetTime(document, 5.0);
    GpxParser().Parse(file.Path(), document);
    EXPECT_EQ(CountsOf(document), "1 waypoints, 0 routes, 0 tracks");
    EXPECT_EQ(NameOf(document), "walk");
    EXPECT_EQ(GpxModelAccess::GetTime(document), 0.0);
}

TEST(GpxParserTest, AnEmptyPathIsRefusedAndTheDocumentLeftUntouched) {
    GpxParser parser;
    GpxDocument document = DocumentWithOneTrack();
    EXPECT_FAILURE(parser.Parse(u"", document), dbc::precondition_error,
                   "The GPX file path was empty or invalid.", kParserSource);
    EXPECT_FAILURE(parser.GetParser(u""), dbc::precondition_error, "The GPX file path was empty or invalid.",
                   kParserSource);
    EXPECT_EQ(CountsOf(document), "0 waypoints, 0 routes, 1 tracks");
    EXPECT_EQ(NameOf(document), "before");
}

TEST(GpxParserTest, GetParserHandsOutAParserThatOwnsTheTree) {
    std::unique_ptr<xercesc::XercesDOMParser> tree;
    {
        const GpxFile file(kGoodFile);
        GpxParser parser;
        tree = parser.GetParser(file.Path());
        EXPECT_EQ(tree->getErrorHandler(), &parser);
        tree->setErrorHandler(nullptr);
    }
    ASSERT_NE(tree->getDocument(), nullptr);
    EXPECT_EQ(icu::UnicodeString(tree->getDocument()->getDocumentElement()->getLocalName()), u"gpx");
}

TEST(GpxParserTest, GetParserIsSetUpForNamespacesWithoutSchemas) {
    const GpxFile file(kGoodFile);
    GpxParser parser;
    const std::unique_ptr<xercesc::XercesDOMParser> tree = parser.GetParser(file.Path());
    EXPECT_EQ(tree->getValidationScheme(), xercesc::XercesDOMParser::Val_Auto);
    EXPECT_TRUE(tree->getDoNamespaces());
    EXPECT_FALSE(tree->getDoSchema());
    EXPECT_FALSE(tree->getValidationSchemaFullChecking());
    EXPECT_TRUE(tree->getCreateEntityReferenceNodes());
    EXPECT_TRUE(tree->getCreateCommentNodes());
}

TEST(GpxParserTest, GetParserDoesNotLookAtTheRoot) {
    const GpxFile file("<anything/>");
    EXPECT_NE(GpxParser().GetParser(file.Path())->getDocument(), nullptr);
}

struct BadRoot {
    const char* reason;
    std::string xml;
    bool precondition;
    const char* message;
    const char* source;
};

class GpxParserRootTest : public testing::TestWithParam<BadRoot> {};

// The file itself is well-formed, so the document is cleared and named before the failure.
TEST_P(GpxParserRootTest, FailsAfterTheDocumentWasCleared) {
    const GpxFile file(GetParam().xml);
    GpxParser parser;
    GpxDocument document = DocumentWithOneTrack();
    if (GetParam().precondition)
        EXPECT_FAILURE(parser.Parse(file.Path(), document), dbc::precondition_error, GetParam().message,
                       GetParam().source);
    else
        EXPECT_FAILURE(parser.Parse(file.Path(), document), dbc::postcondition_error, GetParam().message,
                       GetParam().source);
    EXPECT_EQ(CountsOf(document), "0 waypoints, 0 routes, 0 tracks");
    EXPECT_EQ(NameOf(document), "walk");
}

constexpr char kNoVersion[] = "Unable to read the GPX version.";
constexpr char kBadVersion[] = "Unsupported GPX version string.";
constexpr char kNoRoot[] = "The GPX document element was not found.";
constexpr char kVersionSource[] = "LibCore/vexaTransferLib/GpxVersion.cpp";

INSTANTIATE_TEST_SUITE_P(
    Roots, GpxParserRootTest,
    testing::Values(BadRoot{"AnotherRoot", "<kml version='1.1'/>", false, kNoRoot, ""},
                    BadRoot{"UpperCaseRoot", "<GPX version='1.1'/>", false, kNoRoot, ""},
                    BadRoot{"LongerRoot", "<gpxx version='1.1'/>", false, kNoRoot, ""},
                    BadRoot{"NoVersion", "<gpx/>", false, kNoVersion, kParserSource},
                    BadRoot{"EmptyVersion", "<gpx version=''/>", false, kNoVersion, kParserSource},
                    BadRoot{"UpperCaseVersion", "<gpx Version='1.1'/>", false, kNoVersion, kParserSource},
                    BadRoot{"PrefixedVersion", "<gpx xmlns:p='urn:p' p:version='1.1'/>", false, kNoVersion,
                            kParserSource},
                    BadRoot{"Version12", "<gpx version='1.2'/>", true, kBadVersion, kVersionSource},
                    BadRoot{"Version1", "<gpx version='1'/>", true, kBadVersion, kVersionSource},
                    BadRoot{"Version110", "<gpx version='1.10'/>", true, kBadVersion, kVersionSource},
                    BadRoot{"BlankInFront", "<gpx version=' 1.1'/>", true, kBadVersion, kVersionSource},
                    BadRoot{"BlankVersion", "<gpx version=' '/>", true, kBadVersion, kVersionSource}),
    [](const auto& row) { return std::string(row.param.reason); });

TEST(GpxParserTest, TheRootsPrefixAndNamespaceDoNotMatter) {
    EXPECT_EQ(
        CountsOf(ReadGpx("<p:gpx version='1.1' xmlns:p='urn:p' xmlns='http://www.topografix.com/GPX/1/1'>"
                         "<trk/></p:gpx>")),
        "0 waypoints, 0 routes, 1 tracks");
}

TEST(GpxParserTest, ARootWithoutNamespaceGivesNothingButTheFilesName) {
    const GpxDocument document = ReadGpx("<gpx version='1.1'><metadata><name>N</name><extensions/></metadata>"
                                         "<name>M</name><wpt lat='1' lon='2'/><rte/><trk/></gpx>");
    EXPECT_EQ(CountsOf(document), "0 waypoints, 0 routes, 0 tracks");
    EXPECT_EQ(NameOf(document), "walk");
    EXPECT_FALSE(document.HasExtensionData());
}

TEST(GpxParserTest, AFailureAmongTheElementsKeepsWhatWasReadBefore) {
    const GpxFile file(Gpx11("<metadata><name>N</name></metadata><wpt lat='1' lon='2'/><wpt lat='x' lon='2'/>"
                             "<wpt lat='3' lon='4'/>"));
    GpxParser parser;
    GpxDocument document = DocumentWithOneTrack();
    EXPECT_FAILURE(parser.Parse(file.Path(), document), dbc::postcondition_error,
                   "Unable to read a GPX point's latitude.", kParserSource);
    EXPECT_EQ(CountsOf(document), "1 waypoints, 0 routes, 0 tracks");
    EXPECT_EQ(NameOf(document), "N");
}

TEST(GpxParserTest, OneParserReadsFileAfterFileWhateverFailedBetween) {
    const GpxFile good(kGoodFile);
    const GpxFile illFormed("<gpx");
    const GpxFile wrongVersion("<gpx version='2.0'/>");
    const GpxFile latest("<?xml version=\"1.2\"?><gpx version='1.1'/>");
    GpxParser parser;
    for (const GpxFile* bad : {&illFormed, &wrongVersion, &latest, &illFormed}) {
        GpxDocument document;
        CaptureStandardError([&] { EXPECT_THROW(parser.Parse(bad->Path(), document), std::logic_error); });
        parser.Parse(good.Path(), document);
        EXPECT_EQ(CountsOf(document), "1 waypoints, 0 routes, 0 tracks");
    }
}

TEST(GpxParserTest, EveryPrefixOfAFileIsRefusedUntilTheRootIsClosed) {
    const std::string whole =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"
        "<gpx version=\"1.1\" xmlns=\"http://www.topografix.com/GPX/1/1\">\r\n"
        "<!-- c --><wpt lat=\"1\" lon=\"2\"><name>a &amp; <![CDATA[b]]></name></wpt></gpx>";
    GpxParser parser;
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const GpxFile file(whole.substr(0, length));
        GpxDocument document;
        EXPECT_FAILURE(parser.Parse(file.Path(), document), dbc::postcondition_error,
                       ParseErrorsMessage(file.NarrowPath()), "")
            << length;
    }
    EXPECT_EQ(CountsOf(ReadGpx(whole)), "1 waypoints, 0 routes, 0 tracks");
}

TEST(GpxParserTest, IsStdGPXNodeWantsTheNamespaceOfTheVersion) {
    const DomTree tree(
        "<r xmlns:a='http://www.topografix.com/GPX/1/0' xmlns:b='http://www.topografix.com/GPX/1/1'"
        " xmlns:c='http://www.topografix.com/gpx/1/1' xmlns:d='http://www.topografix.com/GPX/1/1/'"
        " xmlns:e='http://www.topografix.com/GPX/1/'>text"
        "<a:ten/><b:eleven/><c:lower/><d:longer/><e:shorter/><none/></r>");
    struct Row {
        const char* name;
        bool in10;
        bool in11;
    };
    constexpr Row kRows[] = {{"ten", true, false},     {"eleven", false, true},   {"lower", false, false},
                             {"longer", false, false}, {"shorter", false, false}, {"none", false, false}};
    GpxParser parser;
    for (const Row& row : kRows) {
        EXPECT_EQ(parser.IsStdGPXNode(GpxVersion(1, 0), tree.Find(row.name)), row.in10) << row.name;
        EXPECT_EQ(parser.IsStdGPXNode(GpxVersion(1, 1), tree.Find(row.name)), row.in11) << row.name;
    }
    EXPECT_FALSE(parser.IsStdGPXNode(GpxVersion(1, 1), tree.Root()->getFirstChild())) << "a text";
    EXPECT_FALSE(parser.IsStdGPXNode(GpxVersion(1, 1), tree.Document())) << "the document";
    EXPECT_FALSE(parser.IsStdGPXNode(GpxVersion(1, 1), nullptr)) << "a null node";
}

TEST(GpxParserTest, IsStdGPXNodeRefusesAnUnknownVersion) {
    const DomTree tree("<r xmlns='http://www.topografix.com/GPX/1/1'/>");
    GpxParser parser;
    EXPECT_FAILURE(parser.IsStdGPXNode(ModelDoors::MakeVersion(2, 0), tree.Root()), dbc::precondition_error,
                   "The standard namespace URI is unknown for GPX version \"2.0\".", "");
    EXPECT_FAILURE(parser.IsStdGPXNode(ModelDoors::MakeVersion(1, 12), nullptr), dbc::precondition_error,
                   "The standard namespace URI is unknown for GPX version \"1.12\".", "");
}

TEST(GpxParserTest, ParserOutlivesItsFiles) {
    GpxDocument document;
    GpxParser parser;
    {
        const GpxFile file(kGoodFile);
        parser.Parse(file.Path(), document);
    }
    EXPECT_EQ(TextOf(*document.GetWaypointIter(), &GpxPoint::GetName), "W");
}

} // namespace
} // namespace vexaTransferLib
