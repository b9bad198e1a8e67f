// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxRoute.h>

#include "support/ContractChecks.h"
#include "support/ModelDoors.h"
#include "support/SampleDocument.h"
#include "support/TestFiles.h"

#include <common/dbc.h>

#include <string>
#include <type_traits>
#include <utility>

using namespace vexaTransferLib;
using testing_support::ModelDoors;
using testing_support::Utf8;
using testing_support::Written;

namespace {

constexpr char kSource[] = "LibCore/vexaTransferLib/GpxRoute.cpp";
constexpr char kUtilsSource[] = "LibCore/vexaTransferLib/GpxUtils.cpp";
constexpr char kNotARoutePoint[] = "Only route points can be added to GPX routes.";
constexpr char kNotAccepted[] = "The route point type cannot be used with this route type.";

static_assert(std::has_virtual_destructor_v<GpxRoute>);
static_assert(!std::is_default_constructible_v<GpxRoute>);
static_assert(!std::is_convertible_v<TarvikRouteType, GpxRoute>);
static_assert(std::is_nothrow_move_constructible_v<GpxRoute>);
static_assert(std::is_nothrow_move_assignable_v<GpxRoute>);
static_assert(kTarvikRouteStandard == 0 && kTarvikRoutePoints == 1 && kTarvikRouteDirections == 2);

struct TextField {
    const char* name;
    bool (GpxRoute::*get)(icu::UnicodeString&) const;
    void (GpxRoute::*set)(const icu::UnicodeString&);
    const char* message;
};

constexpr TextField kTextFields[] = {
    {"name", &GpxRoute::GetName, &GpxRoute::SetName, "The GPX route name cannot be empty."},
    {"source", &GpxRoute::GetSource, &GpxRoute::SetSource, "The GPX route source cannot be empty."},
    {"type", &GpxRoute::GetType, &GpxRoute::SetType, "The GPX route type cannot be empty."},
};

// 0 makes a point without a type.
GpxPoint RoutePoint(std::uint32_t type, const char16_t* name = u"point") {
    GpxPoint point(kGpxRoutePoint, 1.0, 2.0);
    point.SetName(name);
    if (type != 0)
        point.SetTarvikRoutePointType(static_cast<TarvikRoutePointType>(type));
    return point;
}

std::string Names(const GpxRoute& route) {
    icu::UnicodeString names;
    for (GpxRoute::PointIterator point = route.GetPointIter(); point != route.GetPointEndIter(); ++point) {
        icu::UnicodeString name(u"?");
        point->GetName(name);
        names += name + u" ";
    }
    return Utf8(names);
}

GpxRoute FullRoute() {
    GpxRoute route(kTarvikRouteDirections);
    for (const TextField& field : kTextFields)
        (route.*field.set)(u"text");
    route.AddPoint(RoutePoint(1, u"a"));
    route.AddPoint(RoutePoint(5, u"b"));
    return route;
}

} // namespace

TEST(GpxRouteTest, TakesTheThreeRouteTypes) {
    TarvikRouteType type = static_cast<TarvikRouteType>(99);
    EXPECT_FALSE(GpxRoute(kTarvikRouteStandard).GetTarvikRouteType(type));
    EXPECT_EQ(static_cast<std::uint32_t>(type), 99U);
    EXPECT_TRUE(GpxRoute(kTarvikRoutePoints).GetTarvikRouteType(type));
    EXPECT_EQ(type, kTarvikRoutePoints);
    EXPECT_TRUE(GpxRoute(kTarvikRouteDirections).GetTarvikRouteType(type));
    EXPECT_EQ(type, kTarvikRouteDirections);
}

TEST(GpxRouteTest, RefusesAnUnknownRouteType) {
    for (const std::uint32_t value : {3U, 256U, 4294967295U}) {
        SCOPED_TRACE(value);
        EXPECT_FAILURE(GpxRoute(static_cast<TarvikRouteType>(value)), dbc::precondition_error,
                       "The GPX route type is invalid.", kSource);
    }
}

TEST(GpxRouteTest, StartsEmpty) {
    const GpxRoute route(kTarvikRoutePoints);
    for (const TextField& field : kTextFields) {
        SCOPED_TRACE(field.name);
        icu::UnicodeString out(u"before");
        EXPECT_FALSE((route.*field.get)(out));
        EXPECT_EQ(Utf8(out), "before");
    }
    EXPECT_EQ(route.GetPointCount(), 0U);
    EXPECT_EQ(route.GetPointIter(), route.GetPointEndIter());
}

TEST(GpxRouteTest, TextsAreSetOneByOneAndReplaced) {
    for (const TextField& field : kTextFields) {
        SCOPED_TRACE(field.name);
        GpxRoute route(kTarvikRouteStandard);
        (route.*field.set)(u"first");
        (route.*field.set)(u" ");
        for (const TextField& other : kTextFields) {
            icu::UnicodeString out(u"before");
            EXPECT_EQ((route.*other.get)(out), other.get == field.get);
            EXPECT_EQ(Utf8(out), other.get == field.get ? " " : "before");
        }
    }
}

TEST(GpxRouteTest, TextSettersRefuseAnEmptyTextAndKeepTheOld) {
    GpxRoute route = FullRoute();
    const std::string before = Written(route);
    for (const TextField& field : kTextFields) {
        SCOPED_TRACE(field.name);
        EXPECT_FAILURE((route.*field.set)(u""), dbc::precondition_error, field.message, kUtilsSource);
    }
    EXPECT_EQ(Written(route), before);
}

TEST(GpxRouteTest, AcceptsPointTypesByRouteType) {
    const struct {
        TarvikRouteType routeType;
        bool accepted[6];
    } rows[] = {
        {kTarvikRouteStandard, {true, true, true, true, true, true}},
        {kTarvikRoutePoints, {false, true, true, true, true, false}},
        {kTarvikRouteDirections, {false, true, true, true, true, true}},
    };
    for (const auto& row : rows) {
        for (std::uint32_t pointType = 0; pointType < 6; ++pointType) {
            SCOPED_TRACE(testing::Message() << "route " << row.routeType << ", point " << pointType);
            GpxRoute route(row.routeType);
            const GpxPoint point = RoutePoint(pointType);
            if (row.accepted[pointType]) {
                route.AddPoint(point);
                route.AddPoint(GpxPoint(point));
                EXPECT_EQ(route.GetPointCount(), 2U);
            } else {
                EXPECT_FAILURE(route.AddPoint(point), dbc::precondition_error, kNotAccepted, kSource);
                EXPECT_FAILURE(route.AddPoint(GpxPoint(point)), dbc::precondition_error, kNotAccepted,
                               kSource);
                EXPECT_EQ(route.GetPointCount(), 0U);
            }
        }
    }
}

TEST(GpxRouteTest, AnUnknownRouteTypeAcceptsNoPoint) {
    GpxRoute route(kTarvikRouteStandard);
    ModelDoors::SetRouteType(route, 3);
    EXPECT_FAILURE(route.AddPoint(RoutePoint(1)), dbc::precondition_error, kNotAccepted, kSource);
    EXPECT_EQ(route.GetPointCount(), 0U);
}

TEST(GpxRouteTest, NeitherOrderNorNumberOfPointTypesIsChecked) {
    GpxRoute route(kTarvikRoutePoints);
    for (const std::uint32_t type : {4U, 4U, 1U, 3U, 1U})
        route.AddPoint(RoutePoint(type));
    EXPECT_EQ(route.GetPointCount(), 5U);
}

TEST(GpxRouteTest, RefusesOtherPointsBeforeThePointTypeIsLookedAt) {
    for (const TarvikRouteType routeType :
         {kTarvikRouteStandard, kTarvikRoutePoints, kTarvikRouteDirections}) {
        for (const GpxPointType pointType : {kGpxWaypoint, kGpxTrackPoint}) {
            GpxRoute route(routeType);
            const GpxPoint point(pointType, 1.0, 2.0);
            EXPECT_FAILURE(route.AddPoint(point), dbc::precondition_error, kNotARoutePoint, kSource);
            EXPECT_FAILURE(route.AddPoint(GpxPoint(point)), dbc::precondition_error, kNotARoutePoint,
                           kSource);
            EXPECT_EQ(route.GetPointCount(), 0U);
        }
    }
}

TEST(GpxRouteTest, RefusedPointIsNotMovedFrom) {
    GpxRoute route(kTarvikRoutePoints);
    GpxPoint point = RoutePoint(5);
    const std::string before = Written(point);
    EXPECT_FAILURE(route.AddPoint(std::move(point)), dbc::precondition_error, kNotAccepted, kSource);
    EXPECT_EQ(Written(point), before);
}

TEST(GpxRouteTest, PointsComeInTheOrderAdded) {
    GpxRoute route(kTarvikRouteStandard);
    const GpxPoint copied = RoutePoint(0, u"c");
    route.AddPoint(RoutePoint(1, u"b"));
    route.AddPoint(copied);
    route.AddPoint(RoutePoint(5, u"a"));
    EXPECT_EQ(route.GetPointCount(), 3U);
    EXPECT_EQ(route.GetPointEndIter() - route.GetPointIter(), 3);
    EXPECT_EQ(Names(route), "b c a ");
    EXPECT_EQ(Written(copied), Written(*(route.GetPointIter() + 1)));
}

TEST(GpxRouteTest, APointOfItsOwnCanBeAddedAgain) {
    GpxRoute route(kTarvikRouteStandard);
    route.AddPoint(RoutePoint(1, u"x"));
    for (int i = 0; i < 9; ++i)
        route.AddPoint(*route.GetPointIter());
    EXPECT_EQ(Names(route), "x x x x x x x x x x ");
}

TEST(GpxRouteTest, CopiesAreDeep) {
    GpxRoute route = FullRoute();
    const std::string before = Written(route);
    const GpxRoute copy(route);
    GpxRoute assigned(kTarvikRouteStandard);
    EXPECT_EQ(&(assigned = route), &assigned);
    route.SetName(u"changed");
    route.AddPoint(RoutePoint(2));
    EXPECT_EQ(Written(copy), before);
    EXPECT_EQ(Written(assigned), before);
}

TEST(GpxRouteTest, AssignmentToItselfDoesNothing) {
    GpxRoute route = FullRoute();
    const std::string before = Written(route);
    const GpxRoute& same = route;
    EXPECT_EQ(&(route = same), &route);
    EXPECT_EQ(Written(route), before);
}

TEST(GpxRouteTest, MovesCarryEverything) {
    const std::string before = Written(FullRoute());
    GpxRoute route = FullRoute();
    GpxRoute moved(std::move(route));
    EXPECT_EQ(Written(moved), before);
    GpxRoute assigned(kTarvikRouteStandard);
    assigned = std::move(moved);
    EXPECT_EQ(Written(assigned), before);
}

TEST(GpxRouteTest, TextsAreCleared) {
    GpxRoute route = FullRoute();
    route.ClearName();
    route.ClearSource();
    route.ClearType();
    icu::UnicodeString out(u"before");
    EXPECT_FALSE(route.GetName(out));
    EXPECT_FALSE(route.GetSource(out));
    EXPECT_FALSE(route.GetType(out));
    EXPECT_EQ(Utf8(out), "before");
}

TEST(GpxRouteTest, TheRouteTypeChangesOnlyToOneThatAcceptsThePoints) {
    GpxRoute route(kTarvikRouteStandard);
    GpxPoint point(kGpxRoutePoint, 1.0, 2.0);
    point.SetTarvikRoutePointType(kTarvikRoutePointTurn);
    route.AddPoint(point);
    EXPECT_FAILURE(route.SetTarvikRouteType(kTarvikRoutePoints), dbc::precondition_error,
                   "The route point type cannot be used with this route type.", kSource);
    EXPECT_FAILURE(route.SetTarvikRouteType(static_cast<TarvikRouteType>(3)), dbc::precondition_error,
                   "The GPX route type is invalid.", kSource);
    TarvikRouteType type = kTarvikRoutePoints;
    EXPECT_FALSE(route.GetTarvikRouteType(type));
    route.SetTarvikRouteType(kTarvikRouteDirections);
    EXPECT_TRUE(route.GetTarvikRouteType(type));
    EXPECT_EQ(type, kTarvikRouteDirections);
    EXPECT_EQ(route.GetPointCount(), 1u);
}

TEST(GpxRouteTest, RoutesAreEqualWhenAllTheirValuesAre) {
    const GpxRoute route = FullRoute();
    EXPECT_EQ(route, FullRoute());
    GpxRoute other = route;
    other.SetName(u"other");
    EXPECT_NE(route, other);
    other = route;
    other.SetSource(u"other");
    EXPECT_NE(route, other);
    other = route;
    other.SetType(u"other");
    EXPECT_NE(route, other);
    other = route;
    other.EditPoints()[0].SetElevation(-1.0);
    EXPECT_NE(route, other);
    EXPECT_NE(GpxRoute(kTarvikRouteStandard), GpxRoute(kTarvikRoutePoints));
}
