// SPDX-License-Identifier: MIT
#include <vexagpx/report/IndexJson.h>

#include "export/Reading.h"

#include <string>
#include <string_view>

namespace {

using vexagpx::IndexEntry;
using vexagpx::Output;

std::string JsonOf(const IndexEntry& entry) {
    std::string text;
    Output out([&text](std::string_view piece) { text += piece; });
    vexagpx::WriteIndexJson(entry, out);
    out.Flush();
    return text;
}

TEST(IndexJsonTest, AnEntryHasKindsCountsTimesAndBounds) {
    IndexEntry entry = vexagpx::IndexEntryOf(
        cli::DocumentOf(cli::PointText("wpt", "1.5", "2", "<time>2024-05-01T10:00:00Z</time>")));
    entry.file = "a.zip";
    entry.entry = "b.gpx";
    entry.content = "c0ffee";
    EXPECT_EQ(
        JsonOf(entry),
        R"({"file":"a.zip","entry":"b.gpx","kinds":["waypoints"],"waypoints":1,"geocaches":0,"routes":0,)"
        R"("routePoints":0,"tracks":0,"segments":0,"trackPoints":0,"firstTime":"2024-05-01T10:00:00Z",)"
        R"("lastTime":"2024-05-01T10:00:00Z","bounds":{"minLatitude":1.5,"minLongitude":2,"maxLatitude":1.5,)"
        R"("maxLongitude":2},"content":"c0ffee"})"
        "\n");
}

TEST(IndexJsonTest, WhatThereIsNotIsLeftOut) {
    IndexEntry entry;
    entry.file = "a.gpx";
    EXPECT_EQ(JsonOf(entry),
              R"({"file":"a.gpx","kinds":[],"waypoints":0,"geocaches":0,"routes":0,"routePoints":0,)"
              R"("tracks":0,"segments":0,"trackPoints":0})"
              "\n");
}

TEST(IndexJsonTest, AnUnreadableFileHasItsError) {
    IndexEntry entry;
    entry.file = "a\"b.gpx";
    entry.error = "It has no end.";
    EXPECT_EQ(JsonOf(entry), R"({"file":"a\"b.gpx","error":"It has no end."})"
                             "\n");
}

} // namespace
