// SPDX-License-Identifier: MIT
#include <vexagpx/export/TableWriter.h>

#include "export/Reading.h"

namespace {

using vexagpx::ColumnFinder;
using vexagpx::Field;
using vexagpx::Layer;
using vexagpx::Output;
using vexagpx::Position;
using vexagpx::Properties;
using vexagpx::TableWriter;

std::string TableOf(const std::vector<std::pair<Position, Properties>>& points) {
    ColumnFinder columns;
    for (const auto& [position, properties] : points)
        columns.WritePoint(position, properties);
    std::string bytes;
    Output out([&bytes](std::string_view piece) { bytes += piece; });
    TableWriter writer(out, columns);
    writer.StartLayer(Layer::kPoints);
    for (const auto& [position, properties] : points)
        writer.WritePoint(position, properties);
    out.Flush();
    return bytes;
}

TEST(TableWriterTest, OnlyFieldsThatOccurAreColumns) {
    Properties first;
    first.Add(Field::kTrack, std::uint64_t{1});
    first.Add(Field::kHeartRate, 120.0);
    Properties second;
    second.Add(Field::kTrack, std::uint64_t{2});
    second.Add(Field::kName, icu::UnicodeString(u"a,b"));
    second.Add(Field::kCacheArchived, true);
    EXPECT_EQ(TableOf({{{2, 1, {}, {}}, first}, {{4, 3, 5.5, 1000.0}, second}}),
              "track,lat,lon,ele,time,name,heartRate,cacheArchived\r\n"
              "1,1,2,,,,120,\r\n"
              "2,3,4,5.5,1970-01-01T00:00:01Z,\"a,b\",,true\r\n");
}

TEST(TableWriterTest, ARowOfATrackHasNoPoints) {
    const vexaTransferLib::GpxDocument document = cli::DocumentOf(
        "<trk><trkseg>" + cli::PointText("trkpt", "1", "2", "<time>1970-01-01T00:00:01Z</time>") +
        cli::PointText("trkpt", "1", "3") + "</trkseg><trkseg/></trk>");
    std::string bytes;
    Output out([&bytes](std::string_view piece) { bytes += piece; });
    const ColumnFinder columns;
    TableWriter writer(out, columns);
    writer.StartLayer(Layer::kTracks);
    writer.WritePath(vexagpx::PathGeometry(*document.GetTrackIter()), Properties());
    out.Flush();
    EXPECT_EQ(bytes, "segments,points,start,end\r\n2,2,1970-01-01T00:00:01Z,1970-01-01T00:00:01Z\r\n");
    EXPECT_EQ(writer.Missing().pathPoints, 2U);
}

TEST(TableWriterTest, WhatADocumentSaysAboutItselfIsCounted) {
    Output out([](std::string_view) {});
    const ColumnFinder columns;
    TableWriter writer(out, columns);
    writer.Start({u"name", {}, 1.0});
    EXPECT_EQ(writer.Missing().metadata, 2U);
}

} // namespace
