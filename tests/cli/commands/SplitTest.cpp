// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Split.h>

#include "support/Tool.h"

#include <nlohmann/json.hpp>

#include <filesystem>

namespace {

using cli::Folder;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

constexpr char kTour[] =
    "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1' xmlns:x='urn:x'>\n"
    "<metadata><bounds minlat='0' minlon='0' maxlat='9' maxlon='9'/></metadata>\n"
    "<wpt lat='1' lon='1'><name>Hut</name></wpt>\n"
    "<trk><name>Tour</name><x:a>kept</x:a><trkseg>\n"
    "<trkpt lat='1' lon='1'><time>2024-05-01T21:00:00Z</time></trkpt>\n"
    "<trkpt lat='2' lon='1'><time>2024-05-01T22:30:00Z</time></trkpt>\n"
    "<trkpt lat='3' lon='1'><time>2024-05-02T08:00:00Z</time></trkpt>\n"
    "</trkseg></trk></gpx>\n";

Result Split(const Folder& folder, const std::vector<std::string>& options) {
    folder.Write("tour.gpx", kTour);
    std::vector<std::string> arguments = {"split", "tour.gpx", "parts"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunTool(arguments, folder.Path());
}

TEST(SplitToolTest, WritesAFileForEachPart) {
    const Folder folder;
    const Result result = Split(folder, {"--pause", "4h"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, "tour.gpx\n"
                          "  parts/tour-01.gpx: 2 points, from 2024-05-01T21:00:00Z\n"
                          "  parts/tour-02.gpx: 1 point, from 2024-05-02T08:00:00Z\n"
                          "2 files were written.\n");
    const std::string first = ReadFile(folder.File("parts/tour-01.gpx"));
    EXPECT_THAT(first, HasSubstr("<bounds minlat=\"1\" minlon=\"1\" maxlat=\"2\" maxlon=\"1\"/>"));
    EXPECT_THAT(first, HasSubstr("<name>Hut</name>"));
    EXPECT_THAT(first, HasSubstr(">kept</x:a>"));
    const std::string second = ReadFile(folder.File("parts/tour-02.gpx"));
    EXPECT_THAT(second, HasSubstr("creator=\"c\""));
    EXPECT_THAT(second, HasSubstr("<name>Tour</name>"));
    EXPECT_THAT(second, HasSubstr("2024-05-02T08:00:00Z"));
    EXPECT_THAT(second, Not(HasSubstr("2024-05-01")));
    EXPECT_THAT(second, Not(HasSubstr("Hut")));
    EXPECT_EQ(ReadFile(folder.File("tour.gpx")), kTour);
}

TEST(SplitToolTest, AFolderThatCannotBeMadeIsNamed) {
    const Folder folder;
    folder.Write("parts", "a file");
    const Result result = Split(folder, {"--pause", "4h"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("vexagpx: Unable to make the folder: parts ("));
    EXPECT_EQ(ReadFile(folder.File("parts")), "a file");
}

TEST(SplitToolTest, NamesFilesAfterTheDaysOfAZone) {
    const Folder folder;
    EXPECT_THAT(Split(folder, {"--day", "--dry-run"}).out,
                HasSubstr("  parts/tour-2024-05-01.gpx: 2 points"));
    const Result result = Split(folder, {"--day", "--zone", "Europe/Zurich", "--dry-run"});
    EXPECT_THAT(result.out, HasSubstr("  parts/tour-2024-05-01.gpx: 1 point,"));
    EXPECT_THAT(result.out, HasSubstr("  parts/tour-2024-05-02.gpx: 2 points,"));
    EXPECT_THAT(result.out, HasSubstr("\n2 files would be written.\n"));
    EXPECT_FALSE(std::filesystem::exists(folder.File("parts")));
}

TEST(SplitToolTest, TellsItAsJson) {
    const Folder folder;
    const Result result = Split(folder, {"--every", "1000km", "--json"});
    EXPECT_EQ(json::parse(result.out),
              json::parse(R"({"file":"tour.gpx","isWritten":true,"parts":[)"
                          R"({"file":"parts/tour-01.gpx","points":3,"start":"2024-05-01T21:00:00Z"}]})"));
}

TEST(SplitToolTest, ReplacesNoFile) {
    const Folder folder;
    EXPECT_EQ(Split(folder, {"--pause", "4h"}).status, 0);
    std::filesystem::remove(folder.File("parts/tour-01.gpx"));
    const Result result = Split(folder, {"--pause", "4h"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("parts/tour-02.gpx exists already; an empty folder takes the parts."));
    EXPECT_FALSE(std::filesystem::exists(folder.File("parts/tour-01.gpx")));
}

TEST(SplitToolTest, SplitsStandardInput) {
    const Folder folder;
    const Result result =
        cli::Tool({"split", "-", "parts", "--every", "1000km"}).Stdin(kTour).In(folder.Path()).Run();
    EXPECT_THAT(result.out, HasSubstr("  parts/track-01.gpx: 3 points"));
    EXPECT_TRUE(std::filesystem::exists(folder.File("parts/track-01.gpx")));
}

TEST(SplitToolTest, AFolderThatCannotBeMadeIsAnError) {
    const Folder folder;
    folder.Write("parts", "a file");
    const Result result = Split(folder, {"--day"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("parts"));
}

TEST(SplitToolTest, KnowsTimeZones) {
    EXPECT_TRUE(vexagpx::IsTimeZone("Europe/Zurich"));
    EXPECT_TRUE(vexagpx::IsTimeZone("UTC"));
    EXPECT_FALSE(vexagpx::IsTimeZone("Nowhere/Town"));
    EXPECT_FALSE(vexagpx::IsTimeZone(""));
}

} // namespace
