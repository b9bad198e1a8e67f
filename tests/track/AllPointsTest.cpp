// SPDX-License-Identifier: MIT
#include <vexaTrackLib/paths/AllPoints.h>

#include "support/Reading.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace {

using testing::ElementsAre;
using vexaTransferLib::GpxDocument;
using vexaTransferLib::GpxPoint;

GpxDocument Document() {
    return track_tests::ReadCompletely(
        "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1'>"
        "<wpt lat='1' lon='0'/><wpt lat='2' lon='0'/>"
        "<rte><rtept lat='3' lon='0'/></rte><rte/><rte><rtept lat='4' lon='0'/></rte>"
        "<trk><trkseg><trkpt lat='5' lon='0'/></trkseg><trkseg/><trkseg><trkpt lat='6' "
        "lon='0'/></trkseg></trk>"
        "<trk><trkseg><trkpt lat='7' lon='0'/></trkseg></trk></gpx>");
}

std::vector<double> Latitudes(const GpxDocument& document) {
    std::vector<double> latitudes;
    vexaTrackLib::paths::ForEachPoint(document, [&](const GpxPoint& point) {
        double latitude = 0.0;
        double longitude = 0.0;
        point.GetPoint(latitude, longitude);
        latitudes.push_back(latitude);
    });
    return latitudes;
}

TEST(AllPointsTest, VisitsWaypointsThenRoutesThenTracks) {
    EXPECT_THAT(Latitudes(Document()), ElementsAre(1, 2, 3, 4, 5, 6, 7));
}

TEST(AllPointsTest, EditsThemInTheSameOrder) {
    GpxDocument document = Document();
    double next = 11.0;
    vexaTrackLib::paths::EditEachPoint(document, [&](GpxPoint& point) { point.SetPoint(next++, 0.0); });
    EXPECT_THAT(Latitudes(document), ElementsAre(11, 12, 13, 14, 15, 16, 17));
}

} // namespace
