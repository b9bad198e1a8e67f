// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxRoute.h>

#include "support/ContractChecks.h"
#include "support/IcuMemory.h"
#include "support/ModelDoors.h"
#include "support/TestFiles.h"

#include <common/dbc.h>

#include <string>
#include <utility>

using namespace vexaTransferLib;
using testing_support::ModelDoors;
using testing_support::RefusedIcuMemory;
using testing_support::Utf8;

namespace {

constexpr char kSource[] = "LibCore/vexaTransferLib/GpxRoute.cpp";
constexpr char kPointSource[] = "LibCore/vexaTransferLib/GpxPoint.cpp";

std::string Written(const GpxRoute& route, unsigned long minor) {
    icu::UnicodeString out;
    route.AppendToString(GpxVersion(1, minor), out);
    return Utf8(out);
}

GpxRoute FullRoute(TarvikRouteType routeType) {
    GpxRoute route(routeType);
    route.SetName(u"name & <more>");
    route.SetSource(u"source's");
    route.SetType(u"\"type\"");
    GpxPoint point(kGpxRoutePoint, 1.0, 2.0);
    point.SetTarvikRoutePointType(kTarvikRoutePointStart);
    point.SetURL(GpxUrl(u"a"));
    route.AddPoint(point);
    GpxPoint second(kGpxRoutePoint, 3.0, 4.0);
    second.SetTarvikRoutePointType(kTarvikRoutePointFinish);
    route.AddPoint(second);
    return route;
}

constexpr char kTexts[] = "<name>name &amp; &lt;more&gt;</name>\r\n<src>source&apos;s</src>\r\n";
constexpr char kType[] = "<type>&quot;type&quot;</type>\r\n";
constexpr char kPoints10[] = "<rtept lat=\"1.000000000\" lon=\"2.000000000\">\r\n<url>a</url>\r\n</rtept>\r\n"
                             "<rtept lat=\"3.000000000\" lon=\"4.000000000\">\r\n</rtept>\r\n";
constexpr char kPoints11[] =
    "<rtept lat=\"1.000000000\" lon=\"2.000000000\">\r\n<link href=\"a\">\r\n</link>\r\n<extensions>\r\n"
    "<tarvik:routePointType>start</tarvik:routePointType>\r\n</extensions>\r\n</rtept>\r\n"
    "<rtept lat=\"3.000000000\" lon=\"4.000000000\">\r\n<extensions>\r\n"
    "<tarvik:routePointType>finish</tarvik:routePointType>\r\n</extensions>\r\n</rtept>\r\n";

std::string InRoute(const std::string& lines) {
    return "<rte>\r\n" + lines + "</rte>\r\n";
}

std::string RouteTypeBlock(const std::string& text) {
    return "<extensions>\r\n<tarvik:routeType>" + text + "</tarvik:routeType>\r\n</extensions>\r\n";
}

} // namespace

TEST(GpxRouteWriterTest, AnEmptyRouteIsTwoLines) {
    const GpxRoute route(kTarvikRouteStandard);
    EXPECT_EQ(Written(route, 0), InRoute(""));
    EXPECT_EQ(Written(route, 1), InRoute(""));
}

TEST(GpxRouteWriterTest, ANameAloneHasNoExtensionIn10) {
    GpxRoute route(kTarvikRouteDirections);
    route.SetName(u"n");
    EXPECT_EQ(Written(route, 0), InRoute("<name>n</name>\r\n"));
    EXPECT_EQ(Written(route, 1), InRoute("<name>n</name>\r\n" + RouteTypeBlock("directions")));
}

TEST(GpxRouteWriterTest, EverythingInOrder) {
    const struct {
        TarvikRouteType routeType;
        std::string extension;
    } rows[] = {
        {kTarvikRouteStandard, ""},
        {kTarvikRoutePoints, RouteTypeBlock("points")},
        {kTarvikRouteDirections, RouteTypeBlock("directions")},
    };
    for (const auto& row : rows) {
        const GpxRoute route = FullRoute(row.routeType);
        EXPECT_EQ(Written(route, 0), InRoute(std::string(kTexts) + kPoints10));
        EXPECT_EQ(Written(route, 1), InRoute(std::string(kTexts) + kType + row.extension + kPoints11));
    }
}

TEST(GpxRouteWriterTest, Appends) {
    icu::UnicodeString out(u"before ");
    GpxRoute(kTarvikRouteStandard).AppendToString(GpxVersion(1, 1), out);
    EXPECT_EQ(Utf8(out), "before " + InRoute(""));
}

TEST(GpxRouteWriterTest, RefusesUnknownVersionsAndAppendsNothing) {
    for (const GpxVersion& version :
         {ModelDoors::MakeVersion(1, 2), ModelDoors::MakeVersion(2, 1), ModelDoors::MakeVersion(0, 0)}) {
        GpxRoute route = FullRoute(kTarvikRoutePoints);
        ModelDoors::SetRouteType(route, 3);
        icu::UnicodeString out(u"before");
        EXPECT_FAILURE(route.AppendToString(version, out), dbc::precondition_error,
                       "GPX routes can only be written to version 1.0 or 1.1 files.", kSource);
        EXPECT_EQ(Utf8(out), "before");
    }
}

TEST(GpxRouteWriterTest, RefusesAnUnknownRouteTypeInBothVersionsAndAppendsNothing) {
    for (const std::uint32_t type : {3U, 4294967295U}) {
        for (const unsigned long minor : {0UL, 1UL}) {
            GpxRoute route = FullRoute(kTarvikRoutePoints);
            ModelDoors::SetRouteType(route, type);
            icu::UnicodeString out(u"before");
            EXPECT_FAILURE(route.AppendToString(GpxVersion(1, minor), out), dbc::invariant_error,
                           "Unable to write an unknown GPX route type.", kSource);
            EXPECT_EQ(Utf8(out), "before");
        }
    }
}

TEST(GpxRouteWriterTest, AnExceptionOfAPointPassesAndTheTextBeforeIsKept) {
    GpxRoute route(kTarvikRouteStandard);
    route.SetName(u"n");
    route.AddPoint(GpxPoint(kGpxRoutePoint, 1.0, 2.0));
    GpxPoint bad(kGpxRoutePoint, 3.0, 4.0);
    ModelDoors::SetFix(bad, 6);
    route.AddPoint(bad);
    icu::UnicodeString out;
    EXPECT_FAILURE(route.AppendToString(GpxVersion(1, 1), out), dbc::invariant_error,
                   "Unable to write an unknown GPS fix type.", kPointSource);
    EXPECT_EQ(Utf8(out),
              "<rte>\r\n<name>n</name>\r\n<rtept lat=\"1.000000000\" lon=\"2.000000000\">\r\n</rtept>\r\n"
              "<rtept lat=\"3.000000000\" lon=\"4.000000000\">\r\n");
}

TEST(GpxRouteWriterTest, ReportsATextThatMemoryCannotHold) {
    GpxRoute route(kTarvikRouteStandard);
    route.SetName(icu::UnicodeString(20000, u'x', 20000));
    icu::UnicodeString out;
    {
        const RefusedIcuMemory refused = RefusedIcuMemory::Above(4096);
        EXPECT_FAILURE(route.AppendToString(GpxVersion(1, 1), out), dbc::postcondition_error,
                       "The GPX text is too large to be held in memory.", kSource);
    }
    EXPECT_TRUE(out.isBogus());
}

TEST(GpxRouteWriterTest, ReportsATextThatWasGivenUpBefore) {
    icu::UnicodeString out;
    out.setToBogus();
    EXPECT_FAILURE(GpxRoute(kTarvikRouteStandard).AppendToString(GpxVersion(1, 1), out),
                   dbc::postcondition_error, "The GPX text is too large to be held in memory.", kSource);
}
