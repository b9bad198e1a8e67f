// SPDX-License-Identifier: MIT
#include <vexaTrackLib/CutArea.h>

#include <common/dbc.h>
#include <vexaTrackLib/Distance.h>
#include <vexaTransferLib/GpxPoint.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>

namespace {

using vexaTrackLib::CutArea;
using vexaTrackLib::Distance;
using vexaTransferLib::GpxBounds;
using vexaTransferLib::GpxPoint;

GpxPoint PointAt(double time) {
    GpxPoint point(vexaTransferLib::kGpxTrackPoint, 1.0, 2.0);
    point.SetTime(time);
    return point;
}

std::string Message(const std::function<void()>& call) {
    try {
        call();
    } catch (const dbc::precondition_error& error) {
        return error.what();
    }
    return "nothing was thrown";
}

TEST(CutAreaTest, ACircleHasTheRadiusOfTheEllipsoid) {
    for (const double latitude : {0.0, 46.95, -89.99}) {
        for (const double offset : {0.003, -0.003}) {
            const double distance = Distance(latitude, 7.45, latitude + offset, 7.45);
            EXPECT_TRUE(
                CutArea::Around(latitude, 7.45, distance + 0.001).ContainsPlace(latitude + offset, 7.45));
            EXPECT_FALSE(
                CutArea::Around(latitude, 7.45, distance - 0.001).ContainsPlace(latitude + offset, 7.45));
        }
    }
    EXPECT_TRUE(CutArea::Around(0.0, 179.999, 500.0).ContainsPlace(0.0, -179.999));
    EXPECT_FALSE(CutArea::Around(0.0, 179.999, 500.0).ContainsPlace(0.0, -179.99));
}

TEST(CutAreaTest, ABoxHasItsEdges) {
    const CutArea area = CutArea::Box({10, 20, 30, 40});
    for (const double latitude : {10.0, 20.0, 30.0})
        for (const double longitude : {20.0, 30.0, 40.0})
            EXPECT_TRUE(area.ContainsPlace(latitude, longitude));
    EXPECT_FALSE(area.ContainsPlace(9.99, 30));
    EXPECT_FALSE(area.ContainsPlace(30.01, 30));
    EXPECT_FALSE(area.ContainsPlace(20, 19.99));
    EXPECT_FALSE(area.ContainsPlace(20, 40.01));
    EXPECT_FALSE(area.ContainsPlace(std::numeric_limits<double>::quiet_NaN(), 30));
    EXPECT_FALSE(area.ContainsPlace(20, std::numeric_limits<double>::infinity()));
}

TEST(CutAreaTest, ABoxMayCrossThe180thMeridian) {
    const CutArea area = CutArea::Box({-10, 170, 10, -170});
    EXPECT_TRUE(area.ContainsPlace(0, 175));
    EXPECT_TRUE(area.ContainsPlace(0, -175));
    EXPECT_TRUE(area.ContainsPlace(0, 180));
    EXPECT_FALSE(area.ContainsPlace(0, 0));
    EXPECT_TRUE(area.Crosses(0, 165, 0, -165));
    EXPECT_FALSE(area.Crosses(0, 165, 0, 160));
    EXPECT_TRUE(CutArea::Box({-10, -180, 10, 180}).ContainsPlace(0, 12));
}

TEST(CutAreaTest, ALinePassesThroughACircleWithoutAPointInIt) {
    const CutArea area = CutArea::Around(46.0, 7.0, 500.0);
    EXPECT_TRUE(area.Crosses(46.0, 6.9, 46.0, 7.1));
    EXPECT_TRUE(area.Crosses(45.9, 7.0, 46.1, 7.0));
    EXPECT_TRUE(area.Crosses(46.004, 6.9, 46.004, 7.1));
    EXPECT_FALSE(area.Crosses(46.006, 6.9, 46.006, 7.1));
    EXPECT_FALSE(area.Crosses(46.0, 7.01, 46.0, 7.1));
    EXPECT_FALSE(area.Crosses(46.1, 7.1, 46.1, 7.1));
    EXPECT_TRUE(area.Crosses(46.0, 7.0, 46.1, 7.1));
}

TEST(CutAreaTest, ALinePassesThroughABoxWithoutAPointInIt) {
    const CutArea area = CutArea::Box({10, 20, 11, 21});
    EXPECT_TRUE(area.Crosses(10.5, 19, 10.5, 22));
    EXPECT_TRUE(area.Crosses(9, 20.5, 12, 20.5));
    EXPECT_TRUE(area.Crosses(9.9, 19.9, 11.1, 21.1));
    EXPECT_FALSE(area.Crosses(9, 19, 12, 19));
    EXPECT_FALSE(area.Crosses(11.5, 19, 11.5, 22));
    EXPECT_FALSE(area.Crosses(10.9, 19.9, 11.2, 20.05));
    EXPECT_FALSE(area.Crosses(10.5, 19, 10.5, 19.9));
}

TEST(CutAreaTest, ASpanHasItsEnds) {
    CutArea area;
    EXPECT_FALSE(area.HasSpan());
    EXPECT_TRUE(area.Contains(GpxPoint(vexaTransferLib::kGpxTrackPoint, 1, 2)));
    area.SetSpan({1000.0, 2000.0});
    EXPECT_TRUE(area.HasSpan());
    EXPECT_FALSE(area.HasPlaces());
    EXPECT_FALSE(area.Contains(PointAt(999.0)));
    EXPECT_TRUE(area.Contains(PointAt(1000.0)));
    EXPECT_TRUE(area.Contains(PointAt(2000.0)));
    EXPECT_FALSE(area.Contains(PointAt(2001.0)));
    EXPECT_FALSE(area.Contains(GpxPoint(vexaTransferLib::kGpxTrackPoint, 1, 2)));
    area.SetSpan({std::nullopt, 2000.0});
    EXPECT_TRUE(area.Contains(PointAt(-1e15)));
    area.SetSpan({1000.0, std::nullopt});
    EXPECT_TRUE(area.Contains(PointAt(1e15)));
}

TEST(CutAreaTest, ACircleWithASpanIsBoth) {
    CutArea area = CutArea::Around(1.0, 2.0, 10.0);
    area.SetSpan({1000.0, std::nullopt});
    EXPECT_TRUE(area.Contains(PointAt(1000.0)));
    EXPECT_FALSE(area.Contains(PointAt(0.0)));
    area = CutArea::Around(1.0, 3.0, 10.0);
    area.SetSpan({1000.0, std::nullopt});
    EXPECT_FALSE(area.Contains(PointAt(1000.0)));
}

TEST(CutAreaTest, RefusesWhatIsNoArea) {
    const double none = std::numeric_limits<double>::quiet_NaN();
    const std::string place = "The place must be a latitude from -90 to 90 and a longitude from -180 to 180.";
    const std::string radius = "The radius must be a number of metres above 0.";
    const std::string box =
        "The box must have latitudes from -90 to 90, the southern one first, and longitudes from "
        "-180 to 180.";
    EXPECT_EQ(Message([] { CutArea::Around(90.1, 0, 1); }), place);
    EXPECT_EQ(Message([] { CutArea::Around(0, -180.1, 1); }), place);
    EXPECT_EQ(Message([&] { CutArea::Around(none, 0, 1); }), place);
    for (const double wrong : {0.0, -1.0, none, std::numeric_limits<double>::infinity()})
        EXPECT_EQ(Message([&] { CutArea::Around(0, 0, wrong); }), radius);
    for (const GpxBounds& wrong : {GpxBounds{1, 0, 0, 0}, GpxBounds{-91, 0, 0, 0}, GpxBounds{0, 0, 91, 0},
                                   GpxBounds{0, 181, 0, 0}, GpxBounds{0, 0, 0, none}})
        EXPECT_EQ(Message([&] { CutArea::Box(wrong); }), box);
}

} // namespace
