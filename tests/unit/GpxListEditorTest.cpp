// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxListEditor.h>

#include "support/ContractChecks.h"
#include "support/TestFiles.h"

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>

using namespace vexaTransferLib;
using testing_support::Utf8;

namespace {

constexpr char kSource[] = "LibCore/vexaTransferLib/GpxListEditor.cpp";
constexpr char kNoPlace[] = "There is no such place in the list.";

GpxPoint Named(char16_t name, GpxPointType type = kGpxWaypoint) {
    GpxPoint point(type, 1.0, 2.0);
    point.SetName(icu::UnicodeString(name));
    return point;
}

GpxDocument DocumentOf(const std::u16string& names) {
    GpxDocument document;
    for (const char16_t name : names)
        document.AddWaypoint(Named(name));
    return document;
}

icu::UnicodeString NameOf(const GpxPoint& point) {
    icu::UnicodeString name;
    point.GetName(name);
    return name;
}

std::string NamesOf(const GpxDocument& document) {
    icu::UnicodeString names;
    for (const GpxPoint& point : document.GetWaypoints())
        names += NameOf(point);
    return Utf8(names);
}

} // namespace

TEST(GpxListEditorTest, ObjectsAreChangedInPlace) {
    GpxDocument document = DocumentOf(u"abc");
    for (GpxPoint& point : document.EditWaypoints())
        point.SetName(NameOf(point) + u"!");
    document.EditWaypoints()[1].SetName(u"-");
    EXPECT_EQ(NamesOf(document), "a!-c!");
    EXPECT_EQ(document.EditWaypoints().GetCount(), 3u);
}

TEST(GpxListEditorTest, ObjectsAreInsertedReplacedAndRemoved) {
    GpxDocument document = DocumentOf(u"abc");
    document.EditWaypoints().Insert(0, Named(u'0'));
    document.EditWaypoints().Insert(4, Named(u'4'));
    document.EditWaypoints().Insert(2, Named(u'2'));
    document.EditWaypoints().Append(Named(u'5'));
    EXPECT_EQ(NamesOf(document), "0a2bc45");
    document.EditWaypoints().Replace(6, Named(u'x'));
    document.EditWaypoints().Replace(0, Named(u'y'));
    EXPECT_EQ(NamesOf(document), "ya2bc4x");
    document.EditWaypoints().Remove(2);
    document.EditWaypoints().Remove(4, 2);
    document.EditWaypoints().Remove(4, 0);
    EXPECT_EQ(NamesOf(document), "yabc");
}

TEST(GpxListEditorTest, AnObjectOfTheListCanBeInsertedAgain) {
    GpxDocument document = DocumentOf(u"abc");
    document.EditWaypoints().Insert(0, document.EditWaypoints()[2]);
    EXPECT_EQ(NamesOf(document), "cabc");
}

TEST(GpxListEditorTest, ObjectsAreMovedReversedAndSorted) {
    GpxDocument document = DocumentOf(u"abcde");
    document.EditWaypoints().Move(1, 3);
    EXPECT_EQ(NamesOf(document), "acdbe");
    document.EditWaypoints().Move(4, 0);
    EXPECT_EQ(NamesOf(document), "eacdb");
    document.EditWaypoints().Move(2, 2);
    document.EditWaypoints().Reverse();
    EXPECT_EQ(NamesOf(document), "bdcae");
    document.EditWaypoints().Sort(
        [](const GpxPoint& left, const GpxPoint& right) { return NameOf(left) < NameOf(right); });
    EXPECT_EQ(NamesOf(document), "abcde");
}

TEST(GpxListEditorTest, RemovesWhatAConditionHoldsForInOrder) {
    GpxDocument document = DocumentOf(u"abcabc");
    std::string asked;
    const std::size_t count = document.EditWaypoints().RemoveIf([&](const GpxPoint& point) {
        asked += Utf8(NameOf(point));
        return NameOf(point) == u"b";
    });
    EXPECT_EQ(count, 2u);
    EXPECT_EQ(asked, "abcabc");
    EXPECT_EQ(NamesOf(document), "acac");
    EXPECT_EQ(document.EditWaypoints().RemoveIf([](const GpxPoint&) { return true; }), 4u);
    EXPECT_EQ(document.EditWaypoints().RemoveIf([](const GpxPoint&) { return true; }), 0u);
}

TEST(GpxListEditorTest, AConditionThatThrowsLeavesTheListUnchanged) {
    GpxDocument document = DocumentOf(u"abc");
    EXPECT_THROW(document.EditWaypoints().RemoveIf([](const GpxPoint& point) {
        if (NameOf(point) == u"c")
            throw std::runtime_error("stop");
        return true;
    }),
                 std::runtime_error);
    EXPECT_EQ(NamesOf(document), "abc");
}

TEST(GpxListEditorTest, RefusesPlacesThatAreNotInTheList) {
    GpxDocument document = DocumentOf(u"ab");
    const GpxListEditor<GpxPoint> list = document.EditWaypoints();
    EXPECT_FAILURE(list[2], dbc::precondition_error, kNoPlace, kSource);
    EXPECT_FAILURE(list.Insert(3, Named(u'x')), dbc::precondition_error, kNoPlace, kSource);
    EXPECT_FAILURE(list.Replace(2, Named(u'x')), dbc::precondition_error, kNoPlace, kSource);
    EXPECT_FAILURE(list.Remove(2), dbc::precondition_error, kNoPlace, kSource);
    EXPECT_FAILURE(list.Remove(3, 0), dbc::precondition_error, kNoPlace, kSource);
    EXPECT_FAILURE(list.Remove(1, static_cast<std::size_t>(-1)), dbc::precondition_error, kNoPlace, kSource);
    EXPECT_FAILURE(list.Move(2, 0), dbc::precondition_error, kNoPlace, kSource);
    EXPECT_FAILURE(list.Move(0, 2), dbc::precondition_error, kNoPlace, kSource);
    EXPECT_EQ(NamesOf(document), "ab");
}

TEST(GpxListEditorTest, RefusesPointsThatTheOwnerRefuses) {
    GpxDocument document = DocumentOf(u"a");
    const GpxPoint trackPoint = Named(u't', kGpxTrackPoint);
    constexpr char kNotAWaypoint[] = "Only waypoints can be added the GPX waypoint list.";
    EXPECT_FAILURE(document.EditWaypoints().Append(trackPoint), dbc::precondition_error, kNotAWaypoint,
                   kSource);
    EXPECT_FAILURE(document.EditWaypoints().Insert(9, trackPoint), dbc::precondition_error, kNotAWaypoint,
                   kSource);
    EXPECT_FAILURE(document.EditWaypoints().Replace(0, trackPoint), dbc::precondition_error, kNotAWaypoint,
                   kSource);
    GpxRoute route(kTarvikRoutePoints);
    EXPECT_FAILURE(route.EditPoints().Append(trackPoint), dbc::precondition_error,
                   "Only route points can be added to GPX routes.", "LibCore/vexaTransferLib/GpxRoute.cpp");
    EXPECT_FAILURE(route.EditPoints().Append(Named(u'r', kGpxRoutePoint)), dbc::precondition_error,
                   "The route point type cannot be used with this route type.",
                   "LibCore/vexaTransferLib/GpxRoute.cpp");
    GpxTrack track;
    track.AddSegment();
    EXPECT_FAILURE(track.EditPoints(0).Append(Named(u'w')), dbc::precondition_error,
                   "Only track points can be added to GPX tracks.", kSource);
}

TEST(GpxListEditorTest, RoutesAndTracksAreEditedTheSameWay) {
    GpxDocument document;
    document.EditRoutes().Append(GpxRoute(kTarvikRouteStandard));
    document.EditRoutes()[0].EditPoints().Append(Named(u'r', kGpxRoutePoint));
    document.EditTracks().Append(GpxTrack());
    document.EditTracks()[0].AddSegment();
    document.EditTracks()[0].EditPoints(0).Append(Named(u't', kGpxTrackPoint));
    EXPECT_EQ(document.GetRoutes()[0].GetPoints().size(), 1u);
    EXPECT_EQ(document.GetTracks()[0].GetSegments()[0].size(), 1u);
    document.EditRoutes().Remove(0);
    document.EditTracks().Remove(0);
    EXPECT_TRUE(document.GetRoutes().empty());
    EXPECT_TRUE(document.GetTracks().empty());
}

TEST(GpxListEditorTest, AMillionObjectsAreRemovedInOnePass) {
    GpxTrack track;
    track.AddSegment();
    for (int i = 0; i < 1'000'000; ++i)
        track.AddPoint(GpxPoint(kGpxTrackPoint, 1.0, i % 2 == 0 ? 1.0 : 2.0));
    EXPECT_EQ(track.EditPoints(0).RemoveIf([](const GpxPoint& point) {
        double latitude = 0.0;
        double longitude = 0.0;
        point.GetPoint(latitude, longitude);
        return longitude == 2.0;
    }),
              500'000u);
}
