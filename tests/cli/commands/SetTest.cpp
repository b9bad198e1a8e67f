// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Set.h>

#include "support/Tool.h"

#include <nlohmann/json.hpp>

namespace {

using cli::Folder;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using nlohmann::json;
using testing::HasSubstr;
using testing::Not;
using vexagpx::FindSensor;
using vexagpx::ParseShift;

constexpr char kWalk[] = "<?xml version='1.0'?>\n"
                         "<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1' xmlns:x='urn:x'>\n"
                         "  <metadata>\n"
                         "    <name>old</name> <!-- c -->\n"
                         "    <author><name>Ann</name><link href='l'/></author>\n"
                         "    <time>2024-05-01T00:00:00Z</time>\n"
                         "  </metadata>\n"
                         "  <wpt lat='1' lon='1'><name>A</name></wpt>\n"
                         "  <wpt lat='2' lon='2'><time>2024-05-01T08:00:00Z</time><name>B</name></wpt>\n"
                         "  <trk><name>A</name><trkseg>\n"
                         "    <trkpt lat='1' lon='1'><extensions><x:hr>90</x:hr></extensions></trkpt>\n"
                         "  </trkseg></trk></gpx>\n";

Result Set(const Folder& folder, const std::vector<std::string>& options) {
    folder.Write("walk.gpx", kWalk);
    std::vector<std::string> arguments = {"set", "walk.gpx", "out.gpx"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunTool(arguments, folder.Path());
}

// The file with some parts replaced by others.
std::string Walk(const std::vector<std::pair<std::string, std::string>>& changes) {
    std::string text = kWalk;
    for (const auto& [part, other] : changes) {
        const std::size_t place = text.find(part);
        EXPECT_NE(place, std::string::npos) << part;
        text.replace(place, part.size(), other);
    }
    return text;
}

TEST(SetToolTest, ChangesTheValuesOfTheDocumentAndNothingElse) {
    const Folder folder;
    const Result result = Set(folder, {"--name", "new & good", "--description", "d", "--keywords", "k",
                                       "--email", "ann@example.org", "--time", "2024-05-02T08:30+02:00"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "walk.gpx\n"
                          "  Document: the name is now new & good\n"
                          "  Document: the description is now d\n"
                          "  Document: the author is now Ann <ann@example.org>\n"
                          "  Document: the time is now 2024-05-02T08:30+02:00\n"
                          "  Document: the keywords are now k\n"
                          "out.gpx was written.\n");
    EXPECT_EQ(ReadFile(folder.File("out.gpx")),
              Walk({{"old", "new &amp; good"},
                    {" <!-- c -->", " <!-- c -->\n    <desc>d</desc>"},
                    {"<name>Ann</name><link href='l'/>",
                     "\n      <name>Ann</name>\n      <email id=\"ann\" domain=\"example.org\"/>\n"
                     "      <link href=\"l\"/>\n    "},
                    {"<time>2024-05-01T00:00:00Z</time>",
                     "<time>2024-05-02T06:30:00Z</time>\n    <keywords>k</keywords>"}}));
}

TEST(SetToolTest, JsonHasTheNewValues) {
    const Folder folder;
    const std::string out = Set(folder, {"--name", "new & \"good\"", "--time", "", "--json"}).out;
    EXPECT_THAT(out, HasSubstr(R"({"kind":"name","object":"document","value":"new & \"good\""})"));
    EXPECT_THAT(out, HasSubstr(R"({"kind":"time","object":"document","value":""})"));
}

TEST(SetToolTest, AnEmptyTextRemovesAValue) {
    const Folder folder;
    const Result result = Set(folder, {"--name", "", "--time", "", "--keywords", ""});
    EXPECT_EQ(
        result.out,
        "walk.gpx\n  Document: the name is removed\n  Document: the time is removed\nout.gpx was written.\n");
    EXPECT_EQ(ReadFile(folder.File("out.gpx")),
              Walk({{"<name>old</name>", ""}, {"    <time>2024-05-01T00:00:00Z</time>\n", ""}}));
}

TEST(SetToolTest, WhatIsThereAlreadyChangesNothing) {
    const Folder folder;
    const Result result = Set(folder, {"--name", "old", "--time", "2024-05-01", "--author", "Ann", "--rename",
                                       "A", "A", "--shift-time", "0s", "--strip", "power"});
    EXPECT_EQ(result.out, "walk.gpx\nout.gpx was written without a change.\n");
    EXPECT_EQ(ReadFile(folder.File("out.gpx")), kWalk);
}

TEST(SetToolTest, RenamesWaypointsRoutesAndTracks) {
    const Folder folder;
    const Result result = Set(folder, {"--rename", "A", "C", "--rename", "B", "D"});
    EXPECT_EQ(result.out, "walk.gpx\n"
                          "  Waypoint 1 (A): renamed to C\n"
                          "  Track 1 (A): renamed to C\n"
                          "  Waypoint 2 (B): renamed to D\n"
                          "out.gpx was written.\n");
    EXPECT_EQ(ReadFile(folder.File("out.gpx")), Walk({{"<name>A</name>", "<name>C</name>"},
                                                      {"<name>A</name>", "<name>C</name>"},
                                                      {"<name>B", "<name>D"}}));
}

TEST(SetToolTest, DropsWaypointsByTheirName) {
    const Folder folder;
    const Result result = Set(folder, {"--drop-waypoint", "A"});
    EXPECT_THAT(result.out, HasSubstr("  Document: 1 waypoint removed with the name A\n"));
    EXPECT_EQ(ReadFile(folder.File("out.gpx")),
              Walk({{"  <wpt lat='1' lon='1'><name>A</name></wpt>\n", ""}}));
}

TEST(SetToolTest, ANameThatThereIsNotIsAnErrorAndNothingIsWritten) {
    const Folder folder;
    for (const std::vector<std::string>& options :
         {std::vector<std::string>{"--rename", "Z", "Y"}, {"--name", "n", "--drop-waypoint", "Z"}}) {
        const Result result = Set(folder, options);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.err, HasSubstr("with the name Z."));
        EXPECT_THAT(folder.Names(), Not(testing::Contains("out.gpx")));
    }
}

TEST(SetToolTest, ShiftsTimesAndStripsSensors) {
    const Folder folder;
    const Result result = Set(folder, {"--shift-time", "-1.5h", "--strip", "heartrate,power", "--json"});
    EXPECT_EQ(json::parse(result.out),
              json::parse(R"({"file":"walk.gpx","written":"out.gpx","changeCount":2,"changes":[)"
                          R"({"kind":"shifted","object":"document","times":1,"seconds":-5400},)"
                          R"({"kind":"stripped","object":"document","values":1}]})"));
    EXPECT_EQ(ReadFile(folder.File("out.gpx")), Walk({{"2024-05-01T08:00:00Z", "2024-05-01T06:30:00Z"},
                                                      {"<extensions><x:hr>90</x:hr></extensions>", ""}}));
    EXPECT_THAT(Set(folder, {"--shift-time", "90s"}).out, HasSubstr("  Document: 1 time moved on by "));
}

TEST(SetToolTest, ReadsShiftsAndSensors) {
    EXPECT_EQ(ParseShift("-1h"), -3600.0);
    EXPECT_EQ(ParseShift("+2min"), 120.0);
    EXPECT_EQ(ParseShift("1s"), 1.0);
    for (const char* text : {"", "-", "+-1s", "1", "--1s"})
        EXPECT_EQ(ParseShift(text), std::nullopt) << text;
    EXPECT_EQ(FindSensor("depth"), vexaTransferLib::GpxSensor::kDepth);
    EXPECT_EQ(FindSensor("Depth"), std::nullopt);
}

} // namespace
