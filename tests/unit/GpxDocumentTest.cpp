// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include "support/ContractChecks.h"
#include "support/SampleDocument.h"
#include "support/TestFiles.h"

#include <common/dbc.h>

#include <boost/make_shared.hpp>

#include <cmath>
#include <functional>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

using namespace vexaTransferLib;
using testing_support::FullDocument;
using testing_support::FullWaypoint;
using testing_support::Utf8;
using testing_support::Written;

namespace {

constexpr char kSource[] = "LibCore/vexaTransferLib/GpxDocument.cpp";
constexpr char kNotAWaypoint[] = "Only waypoints can be added the GPX waypoint list.";

static_assert(std::has_virtual_destructor_v<GpxDocument>);
static_assert(std::is_nothrow_move_constructible_v<GpxDocument>);
static_assert(std::is_nothrow_move_assignable_v<GpxDocument>);

std::string WrittenDocument(const GpxDocument& document) {
    std::string text;
    document.WriteToString(GpxVersion(1, 1), u"App", u"x", text);
    return text;
}

void ExpectNew(const GpxDocument& document) {
    EXPECT_EQ(document.GetWaypointCount(), 0U);
    EXPECT_EQ(document.GetRouteCount(), 0U);
    EXPECT_EQ(document.GetTrackCount(), 0U);
    EXPECT_EQ(document.GetWaypointIter(), document.GetWaypointEndIter());
    EXPECT_EQ(document.GetRouteIter(), document.GetRouteEndIter());
    EXPECT_EQ(document.GetTrackIter(), document.GetTrackEndIter());
    double time = 77.0;
    EXPECT_FALSE(document.GetDocumentTime(time));
    EXPECT_EQ(time, 77.0);
    EXPECT_FALSE(document.HasMetaData());
    EXPECT_FALSE(document.HasExtensionData());
    EXPECT_TRUE(GpxModelAccess::GetName(document).isEmpty());
    EXPECT_FALSE(GpxModelAccess::GetGISMetaData(document));
    EXPECT_FALSE(GpxModelAccess::GetAnnotateMetaData(document));
    EXPECT_FALSE(GpxModelAccess::GetStats(document));
}

void ExpectSharedRecords(const GpxDocument& first, const GpxDocument& second) {
    EXPECT_TRUE(GpxModelAccess::GetGISMetaData(first));
    EXPECT_EQ(GpxModelAccess::GetGISMetaData(first), GpxModelAccess::GetGISMetaData(second));
    EXPECT_EQ(GpxModelAccess::GetAnnotateMetaData(first), GpxModelAccess::GetAnnotateMetaData(second));
    EXPECT_EQ(GpxModelAccess::GetStats(first), GpxModelAccess::GetStats(second));
}

GpxRoute NamedRoute(const char16_t* name) {
    GpxRoute route(kTarvikRouteStandard);
    route.SetName(name);
    return route;
}

GpxTrack NamedTrack(const char16_t* name) {
    GpxTrack track;
    track.SetName(name);
    return track;
}

} // namespace

TEST(GpxDocumentTest, StartsEmpty) {
    ExpectNew(GpxDocument());
}

TEST(GpxDocumentTest, RecordsStartWithTheirDefaults) {
    const GISMetaData gis;
    EXPECT_TRUE(gis.layerKey.isEmpty());
    EXPECT_TRUE(gis.layerName.isEmpty());
    EXPECT_TRUE(gis.form.isEmpty());
    EXPECT_EQ(gis.defaultSymbol, 1);
    const AnnotateMetaData annotate;
    EXPECT_TRUE(annotate.trackGUID.isEmpty());
    EXPECT_TRUE(annotate.waypointGUID.isEmpty());
    const GPXStats stats;
    EXPECT_EQ(stats.wptcount, 0);
    EXPECT_EQ(stats.trkcount, 0);
    EXPECT_EQ(stats.trksegcount, 0);
    EXPECT_EQ(stats.trktotalkm, 0.0);
    EXPECT_EQ(stats.geocachecount, -1);
}

TEST(GpxDocumentTest, WaypointsAreAppendedInOrder) {
    GpxDocument document;
    const GpxPoint first = FullWaypoint();
    document.AddWaypoint(first);
    EXPECT_EQ(document.GetWaypointCount(), 1U);
    document.AddWaypoint(GpxPoint(kGpxWaypoint, 3.0, 4.0));
    EXPECT_EQ(document.GetWaypointCount(), 2U);
    EXPECT_EQ(document.GetWaypointEndIter() - document.GetWaypointIter(), 2);
    EXPECT_EQ(Written(*document.GetWaypointIter()), Written(first));
    EXPECT_EQ(Written(*(document.GetWaypointIter() + 1)), Written(GpxPoint(kGpxWaypoint, 3.0, 4.0)));
}

TEST(GpxDocumentTest, RefusesOtherPointsAndDoesNotMoveFromThem) {
    GpxDocument document;
    for (const GpxPointType type : {kGpxRoutePoint, kGpxTrackPoint}) {
        GpxPoint point(type, 1.0, 2.0);
        point.SetName(u"name");
        const std::string before = Written(point);
        EXPECT_FAILURE(document.AddWaypoint(point), dbc::precondition_error, kNotAWaypoint, kSource);
        EXPECT_FAILURE(document.AddWaypoint(std::move(point)), dbc::precondition_error, kNotAWaypoint,
                       kSource);
        EXPECT_EQ(Written(point), before);
    }
    EXPECT_EQ(document.GetWaypointCount(), 0U);
}

TEST(GpxDocumentTest, RoutesAndTracksAreAppendedInOrder) {
    GpxDocument document;
    const GpxRoute route = NamedRoute(u"r1");
    const GpxTrack track = NamedTrack(u"t1");
    document.AddRoute(route);
    document.AddRoute(NamedRoute(u"r2"));
    document.AddTrack(track);
    document.AddTrack(NamedTrack(u"t2"));
    document.AddTrack(NamedTrack(u"t3"));
    ASSERT_EQ(document.GetRouteCount(), 2U);
    ASSERT_EQ(document.GetTrackCount(), 3U);
    EXPECT_EQ(document.GetRouteEndIter() - document.GetRouteIter(), 2);
    EXPECT_EQ(document.GetTrackEndIter() - document.GetTrackIter(), 3);
    EXPECT_EQ(Written(*document.GetRouteIter()), Written(route));
    EXPECT_EQ(Written(*(document.GetRouteIter() + 1)), Written(NamedRoute(u"r2")));
    EXPECT_EQ(Written(*document.GetTrackIter()), Written(track));
    EXPECT_EQ(Written(*(document.GetTrackIter() + 2)), Written(NamedTrack(u"t3")));
}

TEST(GpxDocumentTest, ObjectsOfItsOwnCanBeAddedAgain) {
    GpxDocument document;
    document.AddWaypoint(FullWaypoint());
    document.AddRoute(NamedRoute(u"r"));
    document.AddTrack(NamedTrack(u"t"));
    for (int i = 0; i < 5; ++i) {
        document.AddWaypoint(*document.GetWaypointIter());
        document.AddRoute(*document.GetRouteIter());
        document.AddTrack(*document.GetTrackIter());
    }
    EXPECT_EQ(Written(*(document.GetWaypointIter() + 5)), Written(FullWaypoint()));
    EXPECT_EQ(Written(*(document.GetRouteIter() + 5)), Written(NamedRoute(u"r")));
    EXPECT_EQ(Written(*(document.GetTrackIter() + 5)), Written(NamedTrack(u"t")));
}

TEST(GpxDocumentTest, ATimeOfExactlyZeroCountsAsAbsent) {
    GpxDocument document;
    double time = 77.0;
    for (const double none : {0.0, -0.0}) {
        GpxModelAccess::SetTime(document, none);
        EXPECT_FALSE(document.GetDocumentTime(time));
        EXPECT_EQ(time, 77.0);
    }
    for (const double some : {5e-324, -1.0, 1232014830000.0}) {
        GpxModelAccess::SetTime(document, some);
        EXPECT_TRUE(document.GetDocumentTime(time));
        EXPECT_EQ(time, some);
    }
    GpxModelAccess::SetTime(document, std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE(document.GetDocumentTime(time));
    EXPECT_TRUE(std::isnan(time));
}

TEST(GpxDocumentTest, NameIsMetaDataButTimeIsNot) {
    GpxDocument document;
    GpxModelAccess::SetTime(document, 1.0);
    EXPECT_FALSE(document.HasMetaData());
    GpxModelAccess::SetName(document, u"name");
    EXPECT_TRUE(document.HasMetaData());
    EXPECT_FALSE(document.HasExtensionData());
}

TEST(GpxDocumentTest, AnyRecordIsMetaDataAndExtensionData) {
    GpxDocument gis;
    GpxModelAccess::SetGISMetaData(gis, boost::make_shared<GISMetaData>());
    GpxDocument annotate;
    GpxModelAccess::SetAnnotateMetaData(annotate, boost::make_shared<AnnotateMetaData>());
    GpxDocument stats;
    GpxModelAccess::SetStats(stats, boost::make_shared<GPXStats>());
    for (const GpxDocument* document : {&gis, &annotate, &stats}) {
        EXPECT_TRUE(document->HasExtensionData());
        EXPECT_TRUE(document->HasMetaData());
    }
}

TEST(GpxDocumentTest, ClearGivesANewDocumentAndLeavesCopiesAlone) {
    GpxDocument document = FullDocument();
    const std::string before = WrittenDocument(document);
    const GpxDocument copy(document);
    const boost::shared_ptr<GISMetaData> record = GpxModelAccess::GetGISMetaData(document);
    document.Clear();
    ExpectNew(document);
    EXPECT_EQ(WrittenDocument(copy), before);
    EXPECT_EQ(GpxModelAccess::GetGISMetaData(copy), record);
    document.Clear();
    ExpectNew(document);
}

TEST(GpxDocumentTest, CopiesAreDeepExceptForTheSharedRecords) {
    GpxDocument document = FullDocument();
    const GpxDocument copy(document);
    GpxDocument assigned;
    assigned.AddTrack(NamedTrack(u"gone"));
    EXPECT_EQ(&(assigned = document), &assigned);
    const std::string before = WrittenDocument(document);
    EXPECT_EQ(WrittenDocument(copy), before);
    EXPECT_EQ(WrittenDocument(assigned), before);
    ExpectSharedRecords(copy, document);
    ExpectSharedRecords(assigned, document);

    GpxModelAccess::SetName(document, u"changed");
    GpxModelAccess::SetTime(document, 1.0);
    document.AddWaypoint(FullWaypoint());
    document.AddRoute(NamedRoute(u"r"));
    document.AddTrack(NamedTrack(u"t"));
    EXPECT_EQ(WrittenDocument(copy), before);

    GpxModelAccess::GetGISMetaData(document)->layerName = u"seen by all";
    EXPECT_EQ(Utf8(GpxModelAccess::GetGISMetaData(copy)->layerName), "seen by all");
}

TEST(GpxDocumentTest, AssignmentToItselfDoesNothing) {
    GpxDocument document = FullDocument();
    const std::string before = WrittenDocument(document);
    const GpxDocument& same = document;
    EXPECT_EQ(&(document = same), &document);
    EXPECT_EQ(WrittenDocument(document), before);
}

TEST(GpxDocumentTest, MovesCarryEverything) {
    const std::string before = WrittenDocument(FullDocument());
    GpxDocument document = FullDocument();
    GpxDocument moved(std::move(document));
    EXPECT_EQ(WrittenDocument(moved), before);
    GpxDocument assigned;
    assigned = std::move(moved);
    EXPECT_EQ(WrittenDocument(assigned), before);
}

TEST(GpxDocumentTest, NameAndTimeAreSetAndCleared) {
    GpxDocument document;
    icu::UnicodeString name(u"before");
    EXPECT_FALSE(document.GetName(name));
    EXPECT_EQ(Utf8(name), "before");
    EXPECT_FAILURE(document.SetName(u""), dbc::precondition_error, "The GPX document name cannot be empty.",
                   "LibCore/vexaTransferLib/GpxUtils.cpp");
    document.SetName(u"Walk");
    EXPECT_TRUE(document.GetName(name));
    EXPECT_EQ(Utf8(name), "Walk");
    EXPECT_TRUE(document.HasMetaData());
    document.SetDocumentTime(0.0);
    double time = 77.0;
    EXPECT_TRUE(document.GetDocumentTime(time));
    EXPECT_EQ(time, 0.0);
    document.ClearName();
    document.ClearDocumentTime();
    ExpectNew(document);
}

TEST(GpxDocumentTest, DocumentsAreEqualWhenAllTheirValuesAre) {
    const GpxDocument document = FullDocument();
    EXPECT_EQ(document, FullDocument());
    const std::function<void(GpxDocument&)> kChanges[] = {
        [](GpxDocument& d) { d.SetName(u"another"); },
        [](GpxDocument& d) { d.SetDocumentTime(12345.0); },
        [](GpxDocument& d) { d.EditWaypoints()[0].SetPoint(3.0, 4.0); },
        [](GpxDocument& d) { d.EditRoutes().Remove(0); },
        [](GpxDocument& d) { d.EditTracks()[0].AddSegment(); },
        [](GpxDocument& d) {
            GpxModelAccess::SetGISMetaData(d, boost::make_shared<GISMetaData>());
            GpxModelAccess::GetGISMetaData(d)->form = u"another";
        },
        [](GpxDocument& d) { GpxModelAccess::SetAnnotateMetaData(d, {}); },
        [](GpxDocument& d) {
            GpxModelAccess::SetStats(d, boost::make_shared<GPXStats>());
            GpxModelAccess::GetStats(d)->wptcount = 99;
        },
    };
    for (const auto& change : kChanges) {
        GpxDocument other = document;
        change(other);
        EXPECT_NE(document, other) << &change - kChanges;
    }
}
