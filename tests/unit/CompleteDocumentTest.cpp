// SPDX-License-Identifier: MIT

// The children of the root and of its metadata, read completely.

#include "support/CompleteRead.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"

#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

constexpr char kOneOfEach[] = "<wpt lat='1' lon='2'/><rte><rtept lat='1' lon='2'/></rte>"
                              "<trk><trkseg><trkpt lat='1' lon='2'/></trkseg></trk>";
constexpr char kEachCount[] = "1 waypoints, 1 routes, 1 tracks";

std::string Root(const std::string& attributes, const std::string& children = kOneOfEach) {
    return "<gpx" + attributes + ">" + children + "</gpx>";
}

std::string Xmlns(const std::string& uri) {
    return " xmlns='" + uri + "'";
}

std::optional<double> TimeOf(const GpxDocument& document) {
    double time = -1.5;
    return document.GetDocumentTime(time) ? std::optional(time) : std::nullopt;
}

TEST(CompleteDocumentTest, ObjectsAreReadInAnyOrder) {
    const CompleteRead read = ReadCompletely(
        Gpx11("<trk/>\n<wpt lat='1' lon='2'/>\n<rte/>\n<trk/>\n<wpt lat='3' lon='4'/><metadata/><rte/>"));
    EXPECT_EQ(CountsOf(read.document), "2 waypoints, 2 routes, 2 tracks");
    EXPECT_EQ(read.notices, "gpx/wpt 2 tolerated: It comes after a route or a track.\n"
                            "gpx/rte 3 tolerated: It comes after a track.\n"
                            "gpx/wpt 5 tolerated: It comes after a route or a track.\n"
                            "gpx/rte 5 tolerated: It comes after a track.\n");
    EXPECT_EQ(read.reports, "");
}

struct RootCase {
    std::string attributes;
    std::string notice;
};

TEST(CompleteDocumentTest, VersionAndNamespaceMayBeAnything) {
    const std::string uri10 = Xmlns(kGpx10Uri);
    const std::string uri11 = Xmlns(kGpx11Uri);
    const RootCase cases[] = {
        {" version='1.0'" + uri10, ""},
        {" version='1.1'" + uri11, ""},
        {uri11, "It has no version."},
        {" version='1.2'" + uri11, "Its version is not one of GPX."},
        {" version=' 1.1'" + uri11, "Its version is not one of GPX."},
        {" version='1.1'", "It is in no namespace."},
        {" version='1.0'" + uri11, "Its namespace is not that of its version."},
        {" version='1.1'" + uri10, "Its namespace is not that of its version."},
        {" version='1.1'" + Xmlns("urn:any"), "Its namespace is not one of GPX."},
        {" version='1.1'" + Xmlns("http://www.topografix.com/GPX/1/2"),
         "Its namespace is not that of its version."},
    };
    for (const RootCase& one : cases) {
        SCOPED_TRACE(one.attributes);
        const CompleteRead read = ReadCompletely(Root(one.attributes));
        EXPECT_EQ(read.error + read.reports, "");
        EXPECT_EQ(CountsOf(read.document), kEachCount);
        EXPECT_EQ(read.notices, one.notice.empty() ? "" : "gpx 1 tolerated: " + one.notice + "\n");
    }
}

TEST(CompleteDocumentTest, ARootWithoutVersionAndNamespaceGetsBothNotices) {
    EXPECT_EQ(ReadCompletely("<gpx/>").notices,
              "gpx 1 tolerated: It has no version.\ngpx 1 tolerated: It is in no namespace.\n");
}

TEST(CompleteDocumentTest, ThePrefixOfTheRootIsThatOfGpx) {
    const CompleteRead read = ReadCompletely(
        "<p:gpx version='1.1' xmlns:p='urn:any'><p:wpt lat='1' lon='2'><p:name>a</p:name></p:wpt>"
        "<q:wpt xmlns:q='urn:other' lat='1' lon='2'/><q:wpt xmlns:q='urn:any' lat='1' lon='2'/></p:gpx>");
    EXPECT_EQ(CountsOf(read.document), "2 waypoints, 0 routes, 0 tracks");
    EXPECT_EQ(TextOf(*read.document.GetWaypointIter(), &GpxPoint::GetName), "a");
}

TEST(CompleteDocumentTest, ElementsOfOtherNamespacesAreLeftInTheSource) {
    const CompleteRead read =
        ReadCompletely(Gpx11("<other:wpt lat='1' lon='2'/><wpt xmlns='urn:other' lat='1' lon='2'/>"
                             "<x xmlns='urn:other'><wpt lat='1' lon='2'/></x><wpt lat='5' lon='6'/>"));
    EXPECT_EQ(CountsOf(read.document), "1 waypoints, 0 routes, 0 tracks");
    EXPECT_TRUE(read.document.GetUnreadElements().empty());
    EXPECT_TRUE(read.document.GetElement().FindChild("urn:other", "wpt"));
}

TEST(CompleteDocumentTest, ElementsWithoutANamespaceInAFileOfGpxAreThoseOfGpx) {
    const CompleteRead read =
        ReadCompletely(Gpx11("<wpt xmlns='' lat='1' lon='2'><name>a</name></wpt><gpx10:wpt lat='3' lon='4'/>"
                             "<gpx11:wpt lat='3' lon='4'/>"));
    EXPECT_EQ(CountsOf(read.document), "3 waypoints, 0 routes, 0 tracks");
    EXPECT_EQ(TextOf(*read.document.GetWaypointIter(), &GpxPoint::GetName), "a");
}

TEST(CompleteDocumentTest, AWaypointWithoutAPositionCostsItselfOnly) {
    const CompleteRead read =
        ReadCompletely(Gpx11("<wpt lat='1' lon='2'/>\n<wpt lat='91' lon='2'><name>bad</name></wpt>"
                             "<wpt lon='2'/><wpt lat='3' lon='4'/>"));
    EXPECT_EQ(CountsOf(read.document), "2 waypoints, 0 routes, 0 tracks");
    ASSERT_EQ(read.document.GetUnreadElements().size(), 2U);
    EXPECT_EQ(read.document.GetUnreadElements()[0].GetXml(), "<wpt lat='91' lon='2'><name>bad</name></wpt>");
    EXPECT_EQ(read.document.GetUnreadElements()[1].GetXml(), "<wpt lon='2'/>");
    EXPECT_EQ(read.notices, "gpx/wpt 2 unreadable: It has no position that a point can have.\n"
                            "gpx/wpt 2 unreadable: It has no position that a point can have.\n");
    EXPECT_EQ(read.reports, "");
}

TEST(CompleteDocumentTest, HasANameOnlyIfTheFileHasOne) {
    EXPECT_EQ(NameOf(DocumentOf(Gpx11(""))), "");
    EXPECT_EQ(NameOf(DocumentOf(Gpx11("<metadata><name>n</name></metadata>"))), "n");
    EXPECT_EQ(NameOf(DocumentOf(Gpx10("<name>n</name>"))), "n");
    EXPECT_EQ(NameOf(DocumentOf(Gpx11("<metadata><name><!-- c -->n</name></metadata>"))), "n");
}

TEST(CompleteDocumentTest, TheFirstNameAndTimeAreRead) {
    const CompleteRead read =
        ReadCompletely(Gpx11("<metadata><name>a</name><time>1970-01-01T00:00:01Z</time>\n<name>b</name>"
                             "<time>1970-01-01T00:00:02Z</time></metadata>"));
    EXPECT_EQ(NameOf(read.document), "a");
    EXPECT_EQ(TimeOf(read.document), std::optional(1000.0));
    EXPECT_EQ(read.notices,
              "gpx/metadata/name 2 replaced: The first element of this name is the one that is read.\n"
              "gpx/metadata/time 2 replaced: The first element of this name is the one that is read.\n");
}

TEST(CompleteDocumentTest, ATimeOf0AndOneBeforeItAreTimes) {
    EXPECT_EQ(TimeOf(DocumentOf(Gpx10("<time>1970-01-01T00:00:00Z</time>"))), std::optional(0.0));
    EXPECT_EQ(TimeOf(DocumentOf(Gpx10("<time>1969-12-31T23:59:59Z</time>"))), std::optional(-1000.0));
    EXPECT_EQ(TimeOf(DocumentOf(Gpx10(""))), std::nullopt);
}

TEST(CompleteDocumentTest, ATimeThatIsNoneIsReported) {
    const CompleteRead read =
        ReadCompletely(Gpx10("<time>yesterday</time><time></time><time> </time><time/>"));
    EXPECT_EQ(TimeOf(read.document), std::nullopt);
    EXPECT_EQ(read.notices, "gpx/time 1 unreadable: \"yesterday\" is not a time.\n");
    EXPECT_EQ(read.reports, "");
}

TEST(CompleteDocumentTest, ReadsTheRecordsOfTheVendor) {
    const GpxDocument document = DocumentOf(Gpx11(
        "<metadata><extensions><tarvik:layerkey>k</tarvik:layerkey><tarvik:layername>n</tarvik:layername>"
        "<tarvik:form>f</tarvik:form><tarvik:defaultsymbol> 1,234 </tarvik:defaultsymbol>"
        "<tarvik:trackGUID>t</tarvik:trackGUID><tarvik:waypointGUID>w</tarvik:waypointGUID>"
        "<other:form>x</other:form></extensions></metadata>"));
    const auto& layer = GpxModelAccess::GetGISMetaData(document);
    const auto& annotation = GpxModelAccess::GetAnnotateMetaData(document);
    ASSERT_TRUE(layer && annotation);
    EXPECT_EQ(layer->layerKey, u"k");
    EXPECT_EQ(layer->layerName, u"n");
    EXPECT_EQ(layer->form, u"f");
    EXPECT_EQ(layer->defaultSymbol, 1234);
    EXPECT_EQ(annotation->trackGUID, u"t");
    EXPECT_EQ(annotation->waypointGUID, u"w");
    EXPECT_FALSE(DocumentOf(Gpx11("<metadata><extensions/></metadata>")).HasMetaData());
}

TEST(CompleteDocumentTest, TheElementOfTheDocumentIsTheRoot) {
    const GpxDocument document = DocumentOf("<!-- <gpx> --><gpx version='1.1'><x/></gpx>");
    EXPECT_EQ(document.GetElement().GetXml(), "<gpx version='1.1'><x/></gpx>");
    EXPECT_EQ(document.GetElement().GetAttribute("version"), std::optional<icu::UnicodeString>(u"1.1"));
}

} // namespace
} // namespace vexaTransferLib
