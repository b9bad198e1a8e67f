// SPDX-License-Identifier: MIT
#include <vexagpx/repair/ValueRepair.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

using vexagpx::ChangeList;
using vexagpx::HasPlace;
using vexagpx::LacksZone;
using vexagpx::ParseStartTag;
using vexagpx::RepairLog;
using vexagpx::ZoneText;

bool HasPlaceIn(const std::string& tag) {
    ChangeList changes;
    RepairLog log(tag, changes);
    return HasPlace(ParseStartTag(tag, 0, log));
}

std::string Zone(const std::string& time, const char* name) {
    const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(name));
    return ZoneText(time, *zone);
}

TEST(ValueRepairTest, APlaceIsALatitudeAndALongitude) {
    for (const char* tag : {"<wpt lat='46.5' lon='-180'>", "<wpt lon='+7' lat=' -90 '/>"})
        EXPECT_TRUE(HasPlaceIn(tag)) << tag;
    for (const char* tag : {"<wpt>", "<wpt lat='1'>", "<wpt lon='1'>", "<wpt lat='90.1' lon='1'>",
                            "<wpt lat='1' lon='181'>", "<wpt lat='x' lon='1'>", "<wpt lat='' lon='1'>",
                            "<wpt lat='1,5' lon='1'>", "<wpt lat='NaN' lon='1'>", "<wpt lat='1' lon='inf'>"})
        EXPECT_FALSE(HasPlaceIn(tag)) << tag;
}

TEST(ValueRepairTest, ATimeOfDayLacksAZone) {
    for (const char* time : {"2024-05-01T08:00:00", "2024-05-01T08:00:00.5"})
        EXPECT_TRUE(LacksZone(time)) << time;
    for (const char* time : {"", "2024-05-01", "2024-05-01T08:00:00Z", "2024-05-01T08:00:00+02:00",
                             "2024-05-01T08:00:00-02:00", "yesterday T", "2024-13-01T08:00:00"})
        EXPECT_FALSE(LacksZone(time)) << time;
}

TEST(ValueRepairTest, AZoneHasItsSummer) {
    EXPECT_EQ(Zone("2024-01-01T08:00:00", "Europe/Zurich"), "+01:00");
    EXPECT_EQ(Zone("2024-07-01T08:00:00", "Europe/Zurich"), "+02:00");
    EXPECT_EQ(Zone("2024-07-01T08:00:00", "America/St_Johns"), "-02:30");
    EXPECT_EQ(Zone("2024-07-01T08:00:00", "UTC"), "Z");
    // The hour after which the clocks go on.
    EXPECT_EQ(Zone("2024-03-31T01:59:59", "Europe/Zurich"), "+01:00");
    EXPECT_EQ(Zone("2024-03-31T03:00:00", "Europe/Zurich"), "+02:00");
}

} // namespace
