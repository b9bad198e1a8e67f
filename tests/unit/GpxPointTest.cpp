// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxPoint.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include "support/ContractChecks.h"
#include "support/IcuMemory.h"
#include "support/ModelDoors.h"
#include "support/SampleDocument.h"
#include "support/TestFiles.h"

#include <common/dbc.h>

#include <cmath>
#include <limits>
#include <new>
#include <set>
#include <string>
#include <type_traits>
#include <utility>

using namespace vexaTransferLib;
using testing_support::FullWaypoint;
using testing_support::ModelDoors;
using testing_support::RefusedIcuMemory;
using testing_support::Utf8;
using testing_support::Written;

namespace {

constexpr char kSource[] = "LibCore/vexaTransferLib/GpxPoint.cpp";
constexpr char kUtilsSource[] = "LibCore/vexaTransferLib/GpxUtils.cpp";
constexpr char kBadType[] = "The GPX point type is invalid.";
constexpr char kBadLatitude[] = "The GPX point's latitude is invalid.";
constexpr char kBadLongitude[] = "The GPX point's longitude is invalid.";
constexpr char kBadVariation[] =
    "The GPX point's magnetic variation must be greater than or equal to zero and less than 360.";
constexpr char kBadFix[] = "The GPX point's fix type was unknown.";
constexpr char kNotARoutePoint[] = "The route point type is only available for route points.";
constexpr char kBadRoutePointType[] = "The GPX point's route point type was unknown.";

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

static_assert(std::has_virtual_destructor_v<GpxPoint>);
static_assert(!std::is_default_constructible_v<GpxPoint>);
static_assert(std::is_nothrow_move_constructible_v<GpxPoint>);
static_assert(std::is_nothrow_move_assignable_v<GpxPoint>);
static_assert(kGpxWaypoint == 1 && kGpxRoutePoint == 2 && kGpxTrackPoint == 3);
static_assert(kGpxFixNone == 1 && kGpxFix2D == 2 && kGpxFix3D == 3 && kGpxFixDGPS == 4 && kGpxFixPPS == 5);
static_assert(kTarvikRoutePointStart == 1 && kTarvikRoutePointStop == 2 && kTarvikRoutePointVia == 3 &&
              kTarvikRoutePointFinish == 4 && kTarvikRoutePointTurn == 5);

GpxPoint Waypoint() {
    return GpxPoint(kGpxWaypoint, 1.0, 2.0);
}
GpxPoint RoutePoint() {
    return GpxPoint(kGpxRoutePoint, 1.0, 2.0);
}
GpxPoint TrackPoint() {
    return GpxPoint(kGpxTrackPoint, 1.0, 2.0);
}

struct TextField {
    const char* name;
    bool (GpxPoint::*get)(icu::UnicodeString&) const;
    void (GpxPoint::*set)(const icu::UnicodeString&);
    const char* message;
};

constexpr TextField kTextFields[] = {
    {"name", &GpxPoint::GetName, &GpxPoint::SetName, "The GPX point name cannot be empty."},
    {"comment", &GpxPoint::GetComment, &GpxPoint::SetComment, "The GPX point comment cannot be empty."},
    {"description", &GpxPoint::GetDescription, &GpxPoint::SetDescription,
     "The GPX point description cannot be empty."},
    {"source", &GpxPoint::GetSource, &GpxPoint::SetSource, "The GPX point source cannot be empty."},
    {"symbol", &GpxPoint::GetSymbol, &GpxPoint::SetSymbol, "The GPX point symbol cannot be empty."},
    {"type", &GpxPoint::GetType, &GpxPoint::SetType, "The GPX point type cannot be empty."},
};

void SetElevation(GpxPoint& point, double value) {
    point.SetElevation(value);
}
void SetTime(GpxPoint& point, double value) {
    point.SetTime(value);
}
void SetVariation(GpxPoint& point, double value) {
    point.SetMagneticVariation(value);
}
void SetGeoidHeight(GpxPoint& point, double value) {
    point.SetGeoidHeight(value);
}

struct NumberField {
    const char* name;
    bool (GpxPoint::*get)(double&) const;
    void (*set)(GpxPoint&, double);
};

constexpr NumberField kNumberFields[] = {
    {"elevation", &GpxPoint::GetElevation, SetElevation},
    {"time", &GpxPoint::GetTime, SetTime},
    {"magnetic variation", &GpxPoint::GetMagneticVariation, SetVariation},
    {"geoid height", &GpxPoint::GetGeoidHeight, SetGeoidHeight},
};

} // namespace

TEST(GpxPointTest, IsSmall) {
    RecordProperty("sizeof_GpxPoint", static_cast<int>(sizeof(GpxPoint)));
    EXPECT_LE(sizeof(GpxPoint), 64U);
}

TEST(GpxPointTest, KeepsKindAndPosition) {
    const struct {
        GpxPointType type;
        double latitude;
        double longitude;
        double expectedLongitude;
        const char* reason;
    } rows[] = {
        {kGpxWaypoint, 45.5, -122.25, -122.25, "ordinary"},
        {kGpxRoutePoint, 0.0, 0.0, 0.0, "origin"},
        {kGpxWaypoint, 90.0, 180.0, 179.9999998807907, "180 is kept just below"},
        {kGpxWaypoint, -90.0, 0.0, 0.0, "south pole"},
        {kGpxTrackPoint, 0.0, -180.0, -180.0, "-180 is kept"},
        {kGpxTrackPoint, 89.99999999999999, 179.99999999999997, 179.99999999999997, "the largest below"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        const GpxPoint point(row.type, row.latitude, row.longitude);
        double latitude = 0.0;
        double longitude = 0.0;
        point.GetPoint(latitude, longitude);
        EXPECT_EQ(point.GetPointType(), row.type);
        EXPECT_EQ(latitude, row.latitude);
        EXPECT_EQ(longitude, row.expectedLongitude);
    }
}

TEST(GpxPointTest, DateLineIsKeptExactlyAStepOf2ToTheMinus23Below180) {
    double latitude = 0.0;
    double longitude = 0.0;
    GpxPoint(kGpxWaypoint, 0.0, 180.0).GetPoint(latitude, longitude);
    EXPECT_EQ(longitude, 180.0 - std::ldexp(1.0, -23));
}

TEST(GpxPointTest, RefusesWhatNoPointCanBeInThisOrder) {
    const auto type = [](std::uint32_t value) { return static_cast<GpxPointType>(value); };
    const struct {
        GpxPointType type;
        double latitude;
        double longitude;
        const char* message;
        const char* reason;
    } rows[] = {
        {type(0), 0.0, 0.0, kBadType, "type 0"},
        {type(4), 0.0, 0.0, kBadType, "type 4"},
        {type(4294967295U), 0.0, 0.0, kBadType, "type -1"},
        {type(257), 0.0, 0.0, kBadType, "1 in its lowest byte"},
        {type(0), 91.0, 181.0, kBadType, "type before position"},
        {type(4), kNan, kNan, kBadType, "type before position"},
        {kGpxWaypoint, 90.0000001, 0.0, kBadLatitude, "just beyond the pole"},
        {kGpxWaypoint, 90.00000000000001, 0.0, kBadLatitude, "the next double beyond the pole"},
        {kGpxWaypoint, -90.00000000000001, 0.0, kBadLatitude, "the next double beyond the pole"},
        {kGpxWaypoint, kInfinity, 0.0, kBadLatitude, "infinite"},
        {kGpxWaypoint, -kInfinity, 0.0, kBadLatitude, "infinite"},
        {kGpxWaypoint, kNan, 0.0, kBadLatitude, "not a number"},
        {kGpxWaypoint, 91.0, 181.0, kBadLatitude, "latitude before longitude"},
        {kGpxWaypoint, kNan, kNan, kBadLatitude, "latitude before longitude"},
        {kGpxWaypoint, 0.0, 180.5, kBadLongitude, "beyond the date line"},
        {kGpxWaypoint, 0.0, -180.5, kBadLongitude, "beyond the date line"},
        {kGpxWaypoint, 0.0, 180.00000000000003, kBadLongitude, "the next double beyond the date line"},
        {kGpxWaypoint, 0.0, -180.00000000000003, kBadLongitude, "the next double beyond the date line"},
        {kGpxWaypoint, 0.0, kInfinity, kBadLongitude, "infinite"},
        {kGpxWaypoint, 0.0, -kInfinity, kBadLongitude, "infinite"},
        {kGpxWaypoint, 0.0, kNan, kBadLongitude, "not a number"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.reason);
        EXPECT_FAILURE(GpxPoint(row.type, row.latitude, row.longitude), dbc::precondition_error, row.message,
                       kSource);
    }
}

TEST(GpxPointTest, StartsWithNothingElse) {
    for (const GpxPoint& point : {Waypoint(), RoutePoint(), TrackPoint()}) {
        for (const TextField& field : kTextFields) {
            SCOPED_TRACE(field.name);
            icu::UnicodeString out(u"before");
            EXPECT_FALSE((point.*field.get)(out));
            EXPECT_EQ(Utf8(out), "before");
        }
        for (const NumberField& field : kNumberFields) {
            SCOPED_TRACE(field.name);
            double out = 77.0;
            EXPECT_FALSE((point.*field.get)(out));
            EXPECT_EQ(out, 77.0);
        }
        GpxUrl url(u"before");
        EXPECT_FALSE(point.GetURL(url));
        EXPECT_EQ(Utf8(url.GetUrl()), "before");
        GpxFix fix = kGpxFixPPS;
        EXPECT_FALSE(point.GetFix(fix));
        EXPECT_EQ(fix, kGpxFixPPS);
        EXPECT_FALSE(point.GetFormAttribute(u""));
        EXPECT_FALSE(point.ContainsExtensions());
        EXPECT_EQ(GpxModelAccess::GetSymbolNumber(point), 0);
        EXPECT_TRUE(GpxModelAccess::GetGUID(point).isEmpty());
        EXPECT_TRUE(GpxModelAccess::GetFormAttributes(point).empty());
    }
    TarvikRoutePointType type = kTarvikRoutePointTurn;
    EXPECT_FALSE(RoutePoint().GetTarvikRoutePointType(type));
    EXPECT_EQ(type, kTarvikRoutePointTurn);
    GpxGroundspeakCache cache;
    cache.name = u"before";
    EXPECT_FALSE(Waypoint().GetGroundspeakCache(cache));
    EXPECT_EQ(Utf8(cache.name), "before");
}

TEST(GpxPointTest, TextsAreSetOneByOneAndReplaced) {
    for (const TextField& field : kTextFields) {
        SCOPED_TRACE(field.name);
        GpxPoint point = Waypoint();
        (point.*field.set)(u"first");
        (point.*field.set)(u" ");
        for (const TextField& other : kTextFields) {
            icu::UnicodeString out(u"before");
            EXPECT_EQ((point.*other.get)(out), other.get == field.get);
            EXPECT_EQ(Utf8(out), other.get == field.get ? " " : "before");
        }
    }
}

TEST(GpxPointTest, TextSettersRefuseAnEmptyTextAndKeepTheOld) {
    for (const TextField& field : kTextFields) {
        SCOPED_TRACE(field.name);
        GpxPoint point = Waypoint();
        EXPECT_FAILURE((point.*field.set)(u""), dbc::precondition_error, field.message, kUtilsSource);
        icu::UnicodeString out(u"before");
        EXPECT_FALSE((point.*field.get)(out));
        (point.*field.set)(u"old");
        EXPECT_FAILURE((point.*field.set)(u""), dbc::precondition_error, field.message, kUtilsSource);
        EXPECT_TRUE((point.*field.get)(out));
        EXPECT_EQ(Utf8(out), "old");
    }
}

TEST(GpxPointTest, TextThatMemoryCannotHoldIsReportedAndTheOldKept) {
    const icu::UnicodeString storage(5000, u'x', 5000);
    const icu::UnicodeString alias(false, storage.getBuffer(), storage.length());
    for (const TextField& field : kTextFields) {
        SCOPED_TRACE(field.name);
        GpxPoint point = Waypoint();
        (point.*field.set)(u"old");
        const RefusedIcuMemory refused = RefusedIcuMemory::Above(1000);
        EXPECT_THROW((point.*field.set)(alias), std::bad_alloc);
        icu::UnicodeString out;
        EXPECT_TRUE((point.*field.get)(out));
        EXPECT_EQ(Utf8(out), "old");
    }
}

TEST(GpxPointTest, NumbersAreSetOneByOneAndReplaced) {
    for (const NumberField& field : kNumberFields) {
        SCOPED_TRACE(field.name);
        GpxPoint point = Waypoint();
        field.set(point, 12.5);
        field.set(point, 0.0);
        for (const NumberField& other : kNumberFields) {
            double out = 77.0;
            EXPECT_EQ((point.*other.get)(out), other.get == field.get);
            EXPECT_EQ(out, other.get == field.get ? 0.0 : 77.0);
        }
    }
}

TEST(GpxPointTest, UncheckedNumbersMayBeAnything) {
    for (const NumberField& field : kNumberFields) {
        if (field.set == SetVariation)
            continue;
        SCOPED_TRACE(field.name);
        GpxPoint point = Waypoint();
        double out = 0.0;
        for (const double value : {-kInfinity, kInfinity, -1.7976931348623157e308, 5e-324}) {
            field.set(point, value);
            EXPECT_TRUE((point.*field.get)(out));
            EXPECT_EQ(out, value);
        }
        field.set(point, kNan);
        EXPECT_TRUE((point.*field.get)(out));
        EXPECT_TRUE(std::isnan(out));
    }
}

TEST(GpxPointTest, VariationIsAnAngleBelow360) {
    for (const double value : {0.0, -0.0, 359.999, 359.99999999999994, 5e-324}) {
        GpxPoint point = Waypoint();
        point.SetMagneticVariation(value);
        double out = 77.0;
        EXPECT_TRUE(point.GetMagneticVariation(out));
        EXPECT_EQ(out, value);
    }
    for (const double value : {360.0, -5e-324, -1.0, 720.0, kInfinity, -kInfinity, kNan}) {
        SCOPED_TRACE(value);
        GpxPoint point = Waypoint();
        EXPECT_FAILURE(point.SetMagneticVariation(value), dbc::precondition_error, kBadVariation, kSource);
        double out = 77.0;
        EXPECT_FALSE(point.GetMagneticVariation(out));
        point.SetMagneticVariation(10.0);
        EXPECT_FAILURE(point.SetMagneticVariation(value), dbc::precondition_error, kBadVariation, kSource);
        EXPECT_TRUE(point.GetMagneticVariation(out));
        EXPECT_EQ(out, 10.0);
    }
}

TEST(GpxPointTest, LinkIsCopiedInAndOut) {
    GpxPoint point = Waypoint();
    GpxUrl url(u"http://a/");
    url.SetUrlText(u"text");
    point.SetURL(url);
    url.SetUrlText(u"changed");
    GpxUrl out(u"x");
    icu::UnicodeString text;
    EXPECT_TRUE(point.GetURL(out));
    EXPECT_EQ(Utf8(out.GetUrl()), "http://a/");
    EXPECT_TRUE(out.GetUrlText(text));
    EXPECT_EQ(Utf8(text), "text");

    point.SetURL(GpxUrl(u"http://b/"));
    EXPECT_TRUE(point.GetURL(out));
    EXPECT_EQ(Utf8(out.GetUrl()), "http://b/");
    EXPECT_FALSE(out.GetUrlText(text));
}

TEST(GpxPointTest, FixTakesOneToFive) {
    GpxPoint point = TrackPoint();
    for (std::uint32_t value = 1; value <= 5; ++value) {
        point.SetFix(static_cast<GpxFix>(value));
        GpxFix fix = static_cast<GpxFix>(0);
        EXPECT_TRUE(point.GetFix(fix));
        EXPECT_EQ(static_cast<std::uint32_t>(fix), value);
    }
    for (const std::uint32_t value : {0U, 6U, 257U, 4294967295U}) {
        SCOPED_TRACE(value);
        EXPECT_FAILURE(point.SetFix(static_cast<GpxFix>(value)), dbc::precondition_error, kBadFix, kSource);
        GpxFix fix = kGpxFixNone;
        EXPECT_TRUE(point.GetFix(fix));
        EXPECT_EQ(fix, kGpxFixPPS);
    }
}

TEST(GpxPointTest, RoutePointTypeTakesOneToFiveOnARoutePoint) {
    GpxPoint point = RoutePoint();
    for (std::uint32_t value = 1; value <= 5; ++value) {
        point.SetTarvikRoutePointType(static_cast<TarvikRoutePointType>(value));
        TarvikRoutePointType type = static_cast<TarvikRoutePointType>(0);
        EXPECT_TRUE(point.GetTarvikRoutePointType(type));
        EXPECT_EQ(static_cast<std::uint32_t>(type), value);
    }
    for (const std::uint32_t value : {0U, 6U, 257U, 4294967295U}) {
        SCOPED_TRACE(value);
        EXPECT_FAILURE(point.SetTarvikRoutePointType(static_cast<TarvikRoutePointType>(value)),
                       dbc::precondition_error, kBadRoutePointType, kSource);
        TarvikRoutePointType type = kTarvikRoutePointStart;
        EXPECT_TRUE(point.GetTarvikRoutePointType(type));
        EXPECT_EQ(type, kTarvikRoutePointTurn);
    }
}

TEST(GpxPointTest, RoutePointTypeIsRefusedByOtherPointsBeforeTheValueIsLookedAt) {
    for (GpxPoint point : {Waypoint(), TrackPoint()}) {
        TarvikRoutePointType type = kTarvikRoutePointVia;
        EXPECT_FAILURE(point.GetTarvikRoutePointType(type), dbc::invariant_error, kNotARoutePoint, kSource);
        EXPECT_EQ(type, kTarvikRoutePointVia);
        EXPECT_FAILURE(point.SetTarvikRoutePointType(kTarvikRoutePointStart), dbc::invariant_error,
                       kNotARoutePoint, kSource);
        EXPECT_FAILURE(point.SetTarvikRoutePointType(static_cast<TarvikRoutePointType>(6)),
                       dbc::invariant_error, kNotARoutePoint, kSource);
    }
}

TEST(GpxPointTest, GeocacheIsCopiedInAndOutOfAWaypoint) {
    GpxPoint point = Waypoint();
    GpxGroundspeakCache cache;
    cache.name = u"first";
    cache.logs.resize(2);
    point.SetGroundspeakCache(cache);
    EXPECT_TRUE(point.ContainsExtensions());
    cache.name = u"changed";
    GpxGroundspeakCache out;
    EXPECT_TRUE(point.GetGroundspeakCache(out));
    EXPECT_EQ(Utf8(out.name), "first");
    EXPECT_EQ(out.logs.size(), 2U);

    point.SetGroundspeakCache(GpxGroundspeakCache());
    EXPECT_TRUE(point.GetGroundspeakCache(out));
    EXPECT_TRUE(out.name.isEmpty());
    EXPECT_TRUE(out.logs.empty());
    EXPECT_TRUE(point.ContainsExtensions());
}

TEST(GpxPointTest, GeocacheIsRefusedByOtherPoints) {
    for (GpxPoint point : {RoutePoint(), TrackPoint()}) {
        GpxGroundspeakCache cache;
        cache.name = u"before";
        EXPECT_FAILURE(point.GetGroundspeakCache(cache), dbc::invariant_error,
                       "The GPX Groundspeak geocache information is only available for waypoints.", kSource);
        EXPECT_EQ(Utf8(cache.name), "before");
        EXPECT_FAILURE(point.SetGroundspeakCache(cache), dbc::invariant_error,
                       "The GPX Groundspeak geocache information can only be set on waypoints.", kSource);
        EXPECT_FALSE(point.ContainsExtensions());
    }
}

TEST(GpxPointTest, FormAttributesIgnoreCaseKeepTheFirstKeyAndTheLastRecord) {
    GpxPoint point = Waypoint();
    point.SetFormAttribute(u"Color", u"red", 1.0);
    const boost::shared_ptr<FormData> former = point.GetFormAttribute(u"Color");
    point.SetFormAttribute(u"COLOR", u"blue", 2.0);

    const GpxPoint::FormAttributes attributes = GpxModelAccess::GetFormAttributes(point);
    ASSERT_EQ(attributes.size(), 1U);
    EXPECT_EQ(Utf8(attributes.begin()->first), "Color");
    const boost::shared_ptr<FormData> record = point.GetFormAttribute(u"color");
    ASSERT_TRUE(record);
    EXPECT_EQ(Utf8(record->key), "COLOR");
    EXPECT_EQ(Utf8(record->value), "blue");
    EXPECT_EQ(record->modTime, 2.0);
    EXPECT_NE(record, former);
    EXPECT_EQ(Utf8(former->value), "red");
}

TEST(GpxPointTest, FormAttributesCheckNeitherKeyNorValue) {
    GpxPoint point = TrackPoint();
    EXPECT_FALSE(point.GetFormAttribute(u"key"));
    point.SetFormAttribute(u"", u"", 0.0);
    ASSERT_TRUE(point.GetFormAttribute(u""));
    EXPECT_FALSE(point.GetFormAttribute(u"key"));
    EXPECT_TRUE(point.ContainsExtensions());
}

TEST(GpxPointTest, FormDataStartsEmpty) {
    const FormData record;
    EXPECT_TRUE(record.key.isEmpty());
    EXPECT_TRUE(record.value.isEmpty());
    EXPECT_EQ(record.modTime, 0.0);
}

TEST(GpxPointTest, GuidLosesOneBraceAtEitherEnd) {
    const struct {
        const char16_t* text;
        const char* expected;
    } rows[] = {
        {u"{abc}", "abc"},   {u"{abc", "abc"}, {u"abc}", "abc"}, {u"{{a}}", "{a}"},
        {u"{}", ""},         {u"{", ""},       {u"}", ""},       {u"", ""},
        {u"a{b}c", "a{b}c"}, {u"}a{", "}a{"},  {u"abc", "abc"},  {u" {a} ", " {a} "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.expected);
        GpxPoint point = Waypoint();
        GpxModelAccess::SetGUID(point, row.text);
        EXPECT_EQ(Utf8(GpxModelAccess::GetGUID(point)), row.expected);
        EXPECT_EQ(point.ContainsExtensions(), row.expected[0] != '\0');
    }
}

TEST(GpxPointTest, GuidOfBracesOnlyReplacesTheFormerOne) {
    GpxPoint point = Waypoint();
    GpxModelAccess::SetGUID(point, u"old");
    GpxModelAccess::SetGUID(point, u"{}");
    EXPECT_FALSE(point.ContainsExtensions());
    point.SetFormAttribute(u"k", u"v", 0.0);
    EXPECT_TRUE(point.ContainsExtensions());
}

TEST(GpxPointTest, SymbolNumberCountsAboveZero) {
    for (const std::int32_t number : {1, 2147483647}) {
        GpxPoint point = TrackPoint();
        GpxModelAccess::SetSymbolNumber(point, number);
        EXPECT_TRUE(point.ContainsExtensions());
    }
    for (const std::int32_t number : {0, -1, -2147483647 - 1}) {
        GpxPoint point = TrackPoint();
        GpxModelAccess::SetSymbolNumber(point, number);
        EXPECT_FALSE(point.ContainsExtensions());
    }
}

TEST(GpxPointTest, RoutePointTypeCountsOnARoutePointOnly) {
    GpxPoint routePoint = RoutePoint();
    routePoint.SetTarvikRoutePointType(kTarvikRoutePointVia);
    EXPECT_TRUE(routePoint.ContainsExtensions());
    GpxPoint waypoint = Waypoint();
    ModelDoors::SetRoutePointType(waypoint, 3);
    EXPECT_FALSE(waypoint.ContainsExtensions());
}

TEST(GpxPointTest, StandardDataNeverCountsAsExtension) {
    GpxPoint point = Waypoint();
    for (const TextField& field : kTextFields)
        (point.*field.set)(u"x");
    for (const NumberField& field : kNumberFields)
        field.set(point, 1.0);
    point.SetURL(GpxUrl(u"x"));
    point.SetFix(kGpxFixPPS);
    EXPECT_FALSE(point.ContainsExtensions());
}

TEST(GpxPointTest, CopiesCarryEverything) {
    const GpxPoint point = FullWaypoint();
    const GpxPoint copy(point);
    GpxPoint assigned = TrackPoint();
    EXPECT_EQ(&(assigned = point), &assigned);
    EXPECT_EQ(Written(copy), Written(point));
    EXPECT_EQ(Written(assigned), Written(point));
    EXPECT_EQ(assigned.GetPointType(), kGpxWaypoint);
}

TEST(GpxPointTest, CopiesAreDeep) {
    GpxPoint point = FullWaypoint();
    const std::string before = Written(point);
    const GpxPoint copy(point);
    GpxPoint assigned = Waypoint();
    assigned = point;
    for (const TextField& field : kTextFields)
        (point.*field.set)(u"changed");
    for (const NumberField& field : kNumberFields)
        field.set(point, 1.0);
    point.SetURL(GpxUrl(u"changed"));
    point.SetFix(kGpxFixNone);
    point.SetGroundspeakCache(GpxGroundspeakCache());
    GpxModelAccess::SetGUID(point, u"changed");
    GpxModelAccess::SetSymbolNumber(point, 1);
    point.SetFormAttribute(u"Beta", u"changed", 5.0);
    point.SetFormAttribute(u"new", u"new", 5.0);
    EXPECT_EQ(Written(copy), before);
    EXPECT_EQ(Written(assigned), before);
}

TEST(GpxPointTest, CopiesShareTheFormRecords) {
    GpxPoint point = Waypoint();
    point.SetFormAttribute(u"key", u"old", 1.0);
    GpxPoint copy(point);
    GpxPoint assigned = Waypoint();
    assigned = point;
    EXPECT_EQ(copy.GetFormAttribute(u"key"), point.GetFormAttribute(u"key"));
    EXPECT_EQ(assigned.GetFormAttribute(u"key"), point.GetFormAttribute(u"key"));
    point.GetFormAttribute(u"key")->value = u"seen by all";
    EXPECT_EQ(Utf8(copy.GetFormAttribute(u"key")->value), "seen by all");

    copy.SetFormAttribute(u"KEY", u"new", 2.0);
    EXPECT_EQ(Utf8(copy.GetFormAttribute(u"key")->value), "new");
    EXPECT_EQ(Utf8(point.GetFormAttribute(u"key")->value), "seen by all");
    EXPECT_EQ(Utf8(assigned.GetFormAttribute(u"key")->value), "seen by all");
}

TEST(GpxPointTest, AssignmentMakesValuesAbsentAgain) {
    GpxPoint point = FullWaypoint();
    point = Waypoint();
    EXPECT_EQ(Written(point), Written(Waypoint()));
    EXPECT_FALSE(point.ContainsExtensions());
}

TEST(GpxPointTest, AssignmentToItselfDoesNothing) {
    GpxPoint point = FullWaypoint();
    const std::string before = Written(point);
    const boost::shared_ptr<FormData> record = point.GetFormAttribute(u"Beta");
    const GpxPoint& same = point;
    EXPECT_EQ(&(point = same), &point);
    EXPECT_EQ(Written(point), before);
    EXPECT_EQ(point.GetFormAttribute(u"Beta"), record);
}

TEST(GpxPointTest, MovesCarryEverythingAndTheSourceCanBeAssigned) {
    const std::string before = Written(FullWaypoint());
    GpxPoint point = FullWaypoint();
    GpxPoint moved(std::move(point));
    EXPECT_EQ(Written(moved), before);
    GpxPoint assigned = TrackPoint();
    assigned = std::move(moved);
    EXPECT_EQ(Written(assigned), before);
    moved = assigned;
    EXPECT_EQ(Written(moved), before);
}

TEST(GpxPointTest, AFormAttributeThatMemoryCannotHoldIsRefusedAndChangesNothing) {
    GpxPoint point = FullWaypoint();
    const std::string before = Written(point);
    const icu::UnicodeString storage(5000, u'x', 5000);
    const icu::UnicodeString alias(false, storage.getBuffer(), storage.length());
    {
        const RefusedIcuMemory refused = RefusedIcuMemory::Above(1000);
        EXPECT_THROW(point.SetFormAttribute(alias, u"value", 0.0), std::bad_alloc);
        EXPECT_THROW(point.SetFormAttribute(u"Beta", alias, 0.0), std::bad_alloc);
        EXPECT_GE(refused.Refused(), 2U);
    }
    EXPECT_EQ(Written(point), before);
}

TEST(GpxPointTest, MovesWithinTheLimitsOfTheConstructor) {
    GpxPoint point = FullWaypoint();
    const GpxPoint before = point;
    EXPECT_FAILURE(point.SetPoint(90.1, 0.0), dbc::precondition_error, kBadLatitude, kSource);
    EXPECT_FAILURE(point.SetPoint(kNan, kNan), dbc::precondition_error, kBadLatitude, kSource);
    EXPECT_FAILURE(point.SetPoint(0.0, 180.1), dbc::precondition_error, kBadLongitude, kSource);
    EXPECT_EQ(point, before);
    point.SetPoint(-90.0, 180.0);
    double latitude = 0.0;
    double longitude = 0.0;
    point.GetPoint(latitude, longitude);
    EXPECT_EQ(latitude, -90.0);
    EXPECT_EQ(longitude, 179.9999998807907);
    EXPECT_NE(point, before);
    before.GetPoint(latitude, longitude);
    point.SetPoint(latitude, longitude);
    EXPECT_EQ(point, before);
}

TEST(GpxPointTest, EachValueIsClearedAlone) {
    void (GpxPoint::*const kClears[])() noexcept = {&GpxPoint::ClearName,
                                                    &GpxPoint::ClearComment,
                                                    &GpxPoint::ClearDescription,
                                                    &GpxPoint::ClearSource,
                                                    &GpxPoint::ClearSymbol,
                                                    &GpxPoint::ClearType,
                                                    &GpxPoint::ClearElevation,
                                                    &GpxPoint::ClearTime,
                                                    &GpxPoint::ClearMagneticVariation,
                                                    &GpxPoint::ClearURL,
                                                    &GpxPoint::ClearGeoidHeight,
                                                    &GpxPoint::ClearFix,
                                                    &GpxPoint::ClearFormAttributes,
                                                    &GpxPoint::ClearGroundspeakCache};
    const GpxPoint full = FullWaypoint();
    std::set<std::string> results;
    GpxPoint all = full;
    for (const auto clear : kClears) {
        GpxPoint point = full;
        (point.*clear)();
        EXPECT_NE(point, full);
        results.insert(Written(point));
        (all.*clear)();
        (point.*clear)();
    }
    EXPECT_EQ(results.size(), std::size(kClears));
    double latitude = 0.0;
    double longitude = 0.0;
    full.GetPoint(latitude, longitude);
    GpxPoint bare(kGpxWaypoint, latitude, longitude);
    GpxModelAccess::SetSymbolNumber(bare, GpxModelAccess::GetSymbolNumber(full));
    GpxModelAccess::SetGUID(bare, GpxModelAccess::GetGUID(full));
    EXPECT_EQ(all, bare);
    EXPECT_EQ(Written(all), Written(bare));
}

TEST(GpxPointTest, ClearingWhatIsNotThereDoesNothing) {
    GpxPoint point = RoutePoint();
    point.ClearName();
    point.ClearURL();
    point.ClearGroundspeakCache();
    point.ClearTarvikRoutePointType();
    EXPECT_FALSE(point.ClearFormAttribute(u"a"));
    EXPECT_EQ(point, RoutePoint());
    EXPECT_EQ(GpxModelAccess::GetRareData(point), nullptr);
}

TEST(GpxPointTest, TheRoutePointTypeIsCleared) {
    GpxPoint point = RoutePoint();
    point.SetTarvikRoutePointType(kTarvikRoutePointVia);
    EXPECT_NE(point, RoutePoint());
    point.ClearTarvikRoutePointType();
    TarvikRoutePointType type = kTarvikRoutePointTurn;
    EXPECT_FALSE(point.GetTarvikRoutePointType(type));
    EXPECT_EQ(point, RoutePoint());
}

TEST(GpxPointTest, OneFormAttributeIsClearedWhateverTheCaseOfItsKey) {
    GpxPoint point = Waypoint();
    point.SetFormAttribute(u"Key", u"1", 0.0);
    point.SetFormAttribute(u"other", u"2", 0.0);
    EXPECT_TRUE(point.ClearFormAttribute(u"KEY"));
    EXPECT_FALSE(point.ClearFormAttribute(u"key"));
    EXPECT_FALSE(point.GetFormAttribute(u"Key"));
    EXPECT_TRUE(point.GetFormAttribute(u"other"));
}

TEST(GpxPointTest, PointsAreEqualWhenAllTheirValuesAre) {
    EXPECT_EQ(FullWaypoint(), FullWaypoint());
    EXPECT_NE(Waypoint(), RoutePoint());
    for (const TextField& field : kTextFields) {
        GpxPoint point = FullWaypoint();
        (point.*field.set)(u"another");
        EXPECT_NE(point, FullWaypoint()) << field.name;
    }
    GpxPoint point = Waypoint();
    point.SetElevation(kNan);
    GpxPoint other = Waypoint();
    EXPECT_NE(point, other);
    other.SetElevation(kNan);
    EXPECT_EQ(point, other);
    other.SetElevation(0.0);
    EXPECT_NE(point, other);
    point = Waypoint();
    other = Waypoint();
    point.SetFormAttribute(u"a", u"1", 2.0);
    other.SetFormAttribute(u"a", u"1", 3.0);
    EXPECT_NE(point, other);
    other.SetFormAttribute(u"a", u"1", 2.0);
    EXPECT_EQ(point, other);
    other.SetFormAttribute(u"a", u"2", 2.0);
    EXPECT_NE(point, other);
    GpxModelAccess::SetSymbolNumber(point, 3);
    other = point;
    EXPECT_EQ(point, other);
    GpxModelAccess::SetGUID(other, u"g");
    EXPECT_NE(point, other);
}

TEST(GpxPointTest, GeocachesAreEqualWhenAllButTheirElementsAre) {
    GpxGroundspeakCache cache;
    ASSERT_TRUE(FullWaypoint().GetGroundspeakCache(cache));
    GpxGroundspeakCache other = cache;
    EXPECT_EQ(cache, other);
    ASSERT_FALSE(other.logs.empty());
    other.logs[0].text += u"!";
    EXPECT_NE(cache, other);
    other = cache;
    other.travelbugs.clear();
    EXPECT_NE(cache, other);
    for (icu::UnicodeString GpxGroundspeakCache::*const text :
         {&GpxGroundspeakCache::name, &GpxGroundspeakCache::owner, &GpxGroundspeakCache::type,
          &GpxGroundspeakCache::container, &GpxGroundspeakCache::difficulty, &GpxGroundspeakCache::terrain,
          &GpxGroundspeakCache::short_description, &GpxGroundspeakCache::long_description,
          &GpxGroundspeakCache::encoded_hints}) {
        other = cache;
        other.*text += u"!";
        EXPECT_NE(cache, other);
    }
}
