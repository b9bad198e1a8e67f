// SPDX-License-Identifier: MIT

// The objects of a document that was read completely keep their elements, wherever they go.

#include "support/CompleteRead.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"

#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxParser.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

constexpr char kWaypoint[] =
    "<wpt lat='1' lon='2'><link href='a'/><extensions><groundspeak:cache>"
    "<groundspeak:logs><groundspeak:log id='1'/></groundspeak:logs></groundspeak:cache>"
    "</extensions></wpt>";
constexpr char kRoute[] = "<rte><rtept lat='1' lon='2'/><rtept/></rte>";
constexpr char kTrack[] = "<trk><link href='b'/><trkseg><trkpt lat='1' lon='2'/><trkpt/></trkseg></trk>";

std::string File() {
    return Gpx11(std::string(kWaypoint) + kRoute + kTrack + "<wpt/>");
}

std::string XmlOf(const GpxElement& element) {
    return std::string(element.GetXml());
}

// The XML of the elements of all objects in a document but of the document itself.
std::vector<std::string> AllXml(const GpxDocument& document) {
    const GpxPoint& waypoint = *document.GetWaypointIter();
    const GpxRoute& route = *document.GetRouteIter();
    const GpxTrack& track = *document.GetTrackIter();
    const GpxGroundspeakCache cache = GeocacheOf(waypoint).value();
    GpxUrl link(u"unset");
    GpxUrl trackLink(u"unset");
    EXPECT_TRUE(waypoint.GetURL(link) && track.GetURL(trackLink));
    return {XmlOf(waypoint.GetElement()),
            XmlOf(link.GetElement()),
            XmlOf(cache.element),
            XmlOf(cache.logs.at(0).element),
            XmlOf(route.GetElement()),
            XmlOf(route.GetPointIter()->GetElement()),
            XmlOf(route.GetUnreadElements().at(0)),
            XmlOf(track.GetElement()),
            XmlOf(trackLink.GetElement()),
            XmlOf(track.GetSegmentElement(track.GetSegmentIter())),
            XmlOf(track.GetSegmentIter()->front().GetElement()),
            XmlOf(track.GetUnreadElements().at(0))};
}

const std::vector<std::string>& ExpectedXml() {
    static const std::vector<std::string> xml = AllXml(DocumentOf(File()));
    return xml;
}

TEST(GpxElementOwnersTest, EachObjectKnowsItsElement) {
    EXPECT_EQ(ExpectedXml()[0], kWaypoint);
    EXPECT_EQ(ExpectedXml()[1], "<link href='a'/>");
    EXPECT_EQ(ExpectedXml()[3], "<groundspeak:log id='1'/>");
    EXPECT_EQ(ExpectedXml()[4], kRoute);
    EXPECT_EQ(ExpectedXml()[6], "<rtept/>");
    EXPECT_EQ(ExpectedXml()[7], kTrack);
    EXPECT_EQ(ExpectedXml()[11], "<trkpt/>");
}

TEST(GpxElementOwnersTest, CopiesKeepTheElementsWhenTheFirstDocumentAndTheParserAreGone) {
    std::optional<GpxDocument> first = DocumentOf(File());
    const GpxDocument copy = *first;
    GpxDocument assigned;
    assigned = *first;
    EXPECT_EQ(copy.GetElement(), first->GetElement());
    first.reset();
    for (const GpxDocument& document : {copy, assigned}) {
        EXPECT_EQ(AllXml(document), ExpectedXml());
        EXPECT_EQ(XmlOf(document.GetElement()), File());
        EXPECT_EQ(XmlOf(document.GetUnreadElements().at(0)), "<wpt/>");
    }
}

TEST(GpxElementOwnersTest, AMovedDocumentKeepsTheElements) {
    GpxDocument first = DocumentOf(File());
    GpxDocument second = std::move(first);
    GpxDocument third;
    third = std::move(second);
    EXPECT_EQ(AllXml(third), ExpectedXml());
    EXPECT_EQ(XmlOf(third.GetElement()), File());
}

TEST(GpxElementOwnersTest, ObjectsInAnotherDocumentKeepTheirElements) {
    GpxDocument other;
    {
        const GpxDocument first = DocumentOf(File());
        other.AddWaypoint(*first.GetWaypointIter());
        other.AddRoute(*first.GetRouteIter());
        other.AddTrack(*first.GetTrackIter());
    }
    EXPECT_EQ(AllXml(other), ExpectedXml());
    EXPECT_FALSE(other.GetElement());
}

TEST(GpxElementOwnersTest, TheElementShowsWhatWasReadAfterTheObjectHasChanged) {
    GpxDocument document = DocumentOf(File());
    GpxPoint point = *document.GetWaypointIter();
    point.SetName(u"new");
    point.SetElevation(5.0);
    EXPECT_EQ(XmlOf(point.GetElement()), kWaypoint);
    point = GpxPoint(kGpxWaypoint, 1.0, 2.0);
    EXPECT_FALSE(point.GetElement());
}

TEST(GpxElementOwnersTest, AClearedDocumentAndOneThatIsReadAgainHaveOtherElements) {
    GpxDocument document = DocumentOf(File());
    const GpxElement root = document.GetElement();
    document.Clear();
    EXPECT_FALSE(document.GetElement());
    EXPECT_TRUE(document.GetUnreadElements().empty());
    double time = 0.0;
    EXPECT_FALSE(document.GetDocumentTime(time));
    EXPECT_EQ(XmlOf(root), File());
}

TEST(GpxElementOwnersTest, ObjectsThatWereNotReadCompletelyHaveNone) {
    GpxDocument document;
    GpxParser().Parse(Gpx11(std::string(kWaypoint) + kRoute + kTrack), u"walk.gpx", document);
    EXPECT_FALSE(document.GetElement());
    EXPECT_FALSE(document.GetWaypointIter()->GetElement());
    EXPECT_FALSE(document.GetRouteIter()->GetElement());
    EXPECT_FALSE(document.GetTrackIter()->GetElement());
    EXPECT_FALSE(document.GetTrackIter()->GetSegmentElement(document.GetTrackIter()->GetSegmentIter()));
    GpxTrack track = *DocumentOf(File()).GetTrackIter();
    track.AddSegment();
    EXPECT_TRUE(track.GetSegmentElement(track.GetSegmentIter()));
    EXPECT_FALSE(track.GetSegmentElement(track.GetSegmentIter() + 1));
}

} // namespace
} // namespace vexaTransferLib
