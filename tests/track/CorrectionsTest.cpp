// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Corrections.h>

#include "support/Reading.h"

#include <common/dbc.h>
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxSaver.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

using namespace vexaTransferLib;
using vexaTrackLib::ShiftTimes;
using vexaTrackLib::StripSensors;

const std::string kHead =
    "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1' xmlns:x='urn:x'>";

std::string Stripped(const std::string& point, const std::vector<GpxSensor>& sensors, std::size_t count) {
    const std::string head = kHead + "<trk><trkseg><trkpt lat='1' lon='2'>";
    const std::string tail = "</trkpt></trkseg></trk></gpx>";
    GpxDocument document = track_tests::ReadCompletely(head + point + tail);
    EXPECT_EQ(StripSensors(document, sensors), count);
    const std::string saved = GpxSaver().GetText(document);
    EXPECT_TRUE(saved.starts_with(head) && saved.ends_with(tail)) << saved;
    return saved.substr(head.size(), saved.size() - head.size() - tail.size());
}

TEST(CorrectionsTest, ShiftsTheTimesOfAllPoints) {
    const auto file = [](const std::string& time, const std::string& other) {
        const std::string inside = "<time>" + time + "</time>";
        return kHead + "<metadata><time>2024-05-01T00:00:00Z</time></metadata><wpt lat='1' lon='1'>" +
               inside + "</wpt><wpt lat='2' lon='2'/><rte><rtept lat='1' lon='1'>" + inside +
               "</rtept></rte><trk><trkseg><trkpt lat='1' lon='1'>" + inside +
               "</trkpt></trkseg><trkseg><trkpt lat='1' lon='1'><time>" + other +
               "</time></trkpt></trkseg></trk></gpx>";
    };
    GpxDocument document =
        track_tests::ReadCompletely(file("2024-05-01T00:00:00Z", "1970-01-01T00:00:00.25Z"));
    EXPECT_EQ(ShiftTimes(document, -3600000.0), 4U);
    EXPECT_EQ(GpxSaver().GetText(document), file("2024-04-30T23:00:00Z", "1969-12-31T23:00:00.250Z"));
}

TEST(CorrectionsTest, BoundsBecomeThoseOfAllPoints) {
    const auto corrected = [](const std::string& bounds, const std::string& points) {
        GpxDocument document =
            track_tests::ReadCompletely(kHead + "<metadata>" + bounds + "</metadata>" + points + "</gpx>");
        vexaTrackLib::CorrectBounds(document);
        const std::string saved = GpxSaver().GetText(document);
        const std::size_t begin = kHead.size() + std::string("<metadata>").size();
        return saved.substr(begin, saved.find("</metadata>") - begin);
    };
    const std::string bounds = "<bounds minlat='0' minlon='0' maxlat='0' maxlon='0'/>";
    EXPECT_EQ(corrected(bounds, "<wpt lat='1' lon='170'/><rte><rtept lat='2' lon='-170'/></rte>"),
              "<bounds minlat=\"1\" minlon=\"170\" maxlat=\"2\" maxlon=\"-170\"/>");
    EXPECT_EQ(corrected(bounds, ""), "");
    EXPECT_EQ(corrected("<bounds minlat='x'/>", "<wpt lat='1' lon='1'/>"), "");
    EXPECT_EQ(corrected("", "<wpt lat='1' lon='1'/>"), "");
    GpxDocument made;
    vexaTrackLib::CorrectBounds(made);
}

TEST(CorrectionsTest, AShiftIsANumber) {
    GpxDocument document;
    EXPECT_THROW(ShiftTimes(document, std::numeric_limits<double>::infinity()), dbc::precondition_error);
    EXPECT_EQ(ShiftTimes(document, 1.0), 0U);
}

TEST(CorrectionsTest, StripsTheSensorsThatAreNamed) {
    EXPECT_EQ(Stripped("<ele>1</ele><extensions><x:t><x:hr>1</x:hr><x:cad>2</x:cad></x:t></extensions>",
                       {GpxSensor::kHeartRate}, 1),
              "<ele>1</ele><extensions><x:t><x:cad>2</x:cad></x:t></extensions>");
    EXPECT_EQ(Stripped("<x:HeartRate>1</x:HeartRate><x:power>3</x:power>",
                       {GpxSensor::kHeartRate, GpxSensor::kCadence}, 1),
              "<x:power>3</x:power>");
    const std::string other = "<extensions><x:t/><x:cad>2</x:cad></extensions>";
    EXPECT_EQ(Stripped(other, {GpxSensor::kHeartRate}, 0), other);
}

TEST(CorrectionsTest, WhatIsEmptyThenGoesToo) {
    EXPECT_EQ(Stripped("<ele>1</ele><extensions><x:t><x:hr>1</x:hr><x:hr>x</x:hr></x:t></extensions>",
                       {GpxSensor::kHeartRate}, 2),
              "<ele>1</ele>");
    EXPECT_EQ(
        Stripped("<extensions><x:t/><x:u><x:hr>1</x:hr></x:u></extensions>", {GpxSensor::kHeartRate}, 1),
        "<extensions><x:t/></extensions>");
}

TEST(CorrectionsTest, PointsOfOtherDocumentsAndNewOnesStay) {
    GpxDocument document = track_tests::ReadCompletely(kHead + "</gpx>");
    const GpxDocument other =
        track_tests::ReadCompletely(kHead + "<wpt lat='1' lon='1'><x:hr>1</x:hr></wpt></gpx>");
    document.AddWaypoint(other.GetWaypoints()[0]);
    document.AddWaypoint(GpxPoint(kGpxWaypoint, 1.0, 2.0));
    EXPECT_EQ(StripSensors(document, {GpxSensor::kHeartRate}), 0U);
    GpxDocument made;
    EXPECT_EQ(StripSensors(made, {GpxSensor::kHeartRate}), 0U);
}

} // namespace
