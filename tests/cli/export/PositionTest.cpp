// SPDX-License-Identifier: MIT
#include <vexagpx/export/Position.h>

#include "export/Reading.h"

#include <limits>

namespace {

using cli::PointText;
using vexagpx::Position;
using vexagpx::PositionOf;
using vexaTransferLib::GpxDocument;
using vexaTransferLib::GpxPoint;
using vexaTransferLib::kGpxWaypoint;

TEST(PositionTest, HasWhatThePointHas) {
    const GpxDocument document =
        cli::DocumentOf(PointText("wpt", "47.5", "-122.25", "<ele>0</ele><time>1970-01-01T00:00:00Z</time>") +
                        PointText("wpt", "1", "2"));
    const Position first = PositionOf(*document.GetWaypointIter());
    EXPECT_EQ(first.latitude, 47.5);
    EXPECT_EQ(first.longitude, -122.25);
    EXPECT_EQ(first.height, 0.0);
    EXPECT_EQ(first.time, 0.0);
    const Position second = PositionOf(*(document.GetWaypointIter() + 1));
    EXPECT_EQ(second.height, std::nullopt);
    EXPECT_EQ(second.time, std::nullopt);
}

TEST(PositionTest, ALongitudeOf180IsThatOfTheFile) {
    const GpxDocument document =
        cli::DocumentOf(PointText("wpt", "1", "180") + PointText("wpt", "1", "179.9999998807907"));
    EXPECT_EQ(PositionOf(*document.GetWaypointIter()).longitude, 180.0);
    EXPECT_EQ(PositionOf(*(document.GetWaypointIter() + 1)).longitude, 179.9999998807907);
}

TEST(PositionTest, WhatNoFormatHasAPlaceForIsLeftOut) {
    for (const double value :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity()}) {
        GpxPoint point(kGpxWaypoint, 1, 2);
        point.SetElevation(value);
        point.SetTime(value);
        EXPECT_EQ(PositionOf(point).height, std::nullopt);
        EXPECT_EQ(PositionOf(point).time, std::nullopt);
    }
    GpxPoint late(kGpxWaypoint, 1, 2);
    late.SetTime(253402300800000.0);
    EXPECT_EQ(PositionOf(late).time, std::nullopt);
}

} // namespace
