// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include <nlohmann/json.hpp>

namespace {

using cli::Failed;
using cli::Folder;
using cli::Gpx;
using cli::kWaypoint;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// The page of a file.
std::string PageOf(const std::string& document) {
    const Folder folder;
    folder.Write("t.gpx", document);
    const Result result = RunTool({"plot", "t.gpx", "-o", "t.html"}, folder.Path());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "");
    return ReadFile(folder.File("t.html"));
}

/// The headings and tables of a page.
std::string TablesOf(const std::string& page) {
    const std::size_t from = page.find("<section");
    return page.substr(from, page.find("</main>") - from);
}

/// What the script of the page draws.
json DataOf(const std::string& page) {
    const std::string start = "<script type=\"application/json\" id=\"data\">";
    const std::size_t from = page.find(start) + start.size();
    return json::parse(page.substr(from, page.find("</script>", from) - from))["documents"];
}

const std::string kTrack =
    "<trk><name>up</name><trkseg>"
    "<trkpt lat='47' lon='8'><ele>400</ele><time>2020-01-01T10:00:00Z</time></trkpt>"
    "<trkpt lat='47.001' lon='8'><ele>450</ele><time>2020-01-01T10:01:00Z</time></trkpt>"
    "<trkpt lat='47.002' lon='8.001'><ele>420</ele><time>2020-01-01T10:02:00Z</time></trkpt>"
    "</trkseg></trk>";

TEST(PlotTest, ThePageHasFiguresAndData) {
    const std::string page = PageOf(Gpx(kTrack + kWaypoint));
    EXPECT_THAT(page, HasSubstr("<title>t.gpx</title>"));
    EXPECT_THAT(page, HasSubstr("1 track or route, 1 waypoint<"));
    EXPECT_THAT(TablesOf(page), HasSubstr("<h3>Track 1: up</h3>"));
    for (const char* row : {"Highest</th><td>450 m<", "Lowest</th><td>400 m<", "Ascent</th><td>50 m<",
                            "Descent</th><td>30 m<", "Start</th><td>2020-01-01T10:00:00Z<",
                            "Elapsed</th><td>2 min<", "Mean speed</th><td>7.4 km/h<", "Points</th><td>3<"})
        EXPECT_THAT(TablesOf(page), HasSubstr(row));
    const json data = DataOf(page);
    EXPECT_EQ(data[0]["paths"][0]["segments"][0]["h"], json({4000, 500, -300}));
    EXPECT_EQ(data[0]["waypoints"][0]["name"], "w");
    EXPECT_THAT(page, Not(HasSubstr("{{")));
}

TEST(PlotTest, PausesAreListedAndMarked) {
    std::string points;
    for (int i = 0; i < 40; ++i)
        points += "<trkpt lat='47.00" + std::to_string(10 + i) +
                  "' lon='8'><time>2020-01-01T10:" + std::to_string(10 + i / 6 + (i < 20 ? 0 : 30)) + ":" +
                  std::to_string(i % 6) + "0Z</time></trkpt>";
    const std::string page = PageOf(Gpx("<trk><trkseg>" + points + "</trkseg></trk>"));
    EXPECT_THAT(TablesOf(page), HasSubstr("Pauses</th><td>1, 30 min 20 s in all<"));
    EXPECT_THAT(TablesOf(page), HasSubstr("Pause 1</th><td>30 min 20 s from 2020-01-01T10:13:00Z<"));
    EXPECT_THAT(TablesOf(page), Not(HasSubstr("Highest")));
    const json pauses = DataOf(page)[0]["paths"][0]["pauses"];
    EXPECT_EQ(pauses, json::parse(R"([{"start": 180.0, "seconds": 1820.0}])"));
}

TEST(PlotTest, APageDoesNotReplaceAFileThatIsRead) {
    const Folder folder;
    folder.Write("a.html", Gpx(kTrack));
    EXPECT_TRUE(
        Failed(RunTool({"plot", "a.html", "-o", "./a.html"}, folder.Path()), "is one of the files to read"));
    EXPECT_EQ(ReadFile(folder.File("a.html")), Gpx(kTrack));
}

TEST(PlotTest, ThePolicyOfThePageForbidsTheNetwork) {
    const std::string page = PageOf(Gpx(kTrack));
    EXPECT_THAT(page, HasSubstr("content=\"default-src 'none'; script-src 'sha256-"));
    EXPECT_THAT(page, Not(HasSubstr("unsafe-inline")));
}

TEST(PlotTest, HostileNamesStayText) {
    const std::string name = "&lt;/script&gt;&lt;script&gt;alert(1)&lt;/script&gt;&lt;!--";
    const std::string page = PageOf(
        Gpx("<wpt lat='1' lon='2'><name>" + name + "</name></wpt><trk><name>" + name + "</name></trk>"));
    EXPECT_THAT(page, Not(HasSubstr("<script>alert")));
    EXPECT_THAT(page, Not(HasSubstr("<!--")));
    EXPECT_EQ(DataOf(page)[0]["waypoints"][0]["name"], "</script><script>alert(1)</script><!--");
}

TEST(PlotTest, PlacesAcrossTheDateLineAreNeighbours) {
    const std::string route = "<rte><rtept lat='0' lon='179.999'/><rtept lat='0' lon='-179.999'/></rte>";
    const json segment = DataOf(PageOf(Gpx(route)))[0]["paths"][0]["segments"][0];
    EXPECT_EQ(segment["d"][1], 2226);
    EXPECT_NEAR(segment["x"][1].get<double>(), 2226, 10);
    EXPECT_EQ(segment["h"], json({nullptr, nullptr}));
}

TEST(PlotTest, PlacesAroundTheWorldHaveAMapOfTheWorld) {
    const std::string route =
        "<rte><rtept lat='0' lon='-170'/><rtept lat='0' lon='-60'/><rtept lat='0' lon='60'/>"
        "<rtept lat='0' lon='170'/></rte>";
    EXPECT_TRUE(DataOf(PageOf(Gpx(route)))[0]["isOfWorld"]);
    EXPECT_FALSE(DataOf(PageOf(Gpx(kTrack)))[0]["isOfWorld"]);
}

TEST(PlotTest, AShortStretchWithoutHeightsIsFilledIn) {
    std::string points;
    for (int i = 0; i <= 200; ++i)
        points +=
            "<trkpt lat='47." + std::to_string(100 + i) + "' lon='8'>" +
            (i == 50 || (i > 120 && i < 160) ? "" : "<ele>" + std::to_string(100 * (i % 2)) + "</ele>") +
            "</trkpt>";
    const json data = DataOf(PageOf(Gpx("<trk><trkseg>" + points + "</trkseg></trk>")));
    const json heights = data[0]["paths"][0]["segments"][0]["h"];
    int gaps = 0;
    for (std::size_t i = 1; i < heights.size(); ++i)
        gaps += heights[i].is_null() && !heights[i - 1].is_null() ? 1 : 0;
    EXPECT_EQ(gaps, 1) << heights;
}

TEST(PlotTest, EmptyDocumentsAndSinglePointsHaveAPage) {
    EXPECT_THAT(PageOf(Gpx("")), HasSubstr("It contains no point."));
    EXPECT_THAT(PageOf(Gpx("<trk/><trk><trkseg/></trk><rte/>")), HasSubstr("It contains no point."));
    const json data = DataOf(PageOf(Gpx("<trk><trkseg><trkpt lat='90' lon='0'/></trkseg></trk>")));
    EXPECT_EQ(data[0]["paths"][0]["segments"][0]["x"], json::array({0}));
}

TEST(PlotTest, SeveralDocumentsShareAPage) {
    const Folder folder;
    folder.Write("a.gpx", Gpx(kTrack));
    folder.Write("b.gpx", Gpx(kWaypoint));
    EXPECT_EQ(RunTool({"plot", "a.gpx", "b.gpx", "-o", "all.html"}, folder.Path()).status, 0);
    const std::string page = ReadFile(folder.File("all.html"));
    EXPECT_THAT(page, HasSubstr("<title>2 GPX documents</title>"));
    EXPECT_THAT(TablesOf(page), HasSubstr("<h2>b.gpx</h2>"));
    EXPECT_EQ(DataOf(page).size(), 2U);
}

TEST(PlotTest, AFileThatCannotBeReadIsReportedAndLeftOut) {
    const Folder folder;
    folder.Write("a.gpx", Gpx(kTrack));
    EXPECT_TRUE(
        Failed(RunTool({"plot", "missing.gpx", "a.gpx", "-o", "a.html"}, folder.Path()), "missing.gpx"));
    EXPECT_THAT(folder.Names(), ElementsAre("a.gpx", "a.html"));
}

TEST(PlotTest, WithoutADocumentNothingIsWritten) {
    const Folder folder;
    folder.Write("old.html", "old");
    EXPECT_TRUE(Failed(RunTool({"plot", "missing.gpx", "-o", "old.html"}, folder.Path()), "missing.gpx"));
    EXPECT_EQ(ReadFile(folder.File("old.html")), "old");
}

TEST(PlotTest, ManyNoisyPointsMakeAPageBelowAMegabyte) {
    std::string points;
    for (int i = 0; i < 200000; ++i) {
        const double turn = i * 0.01;
        points += "<trkpt lat='" + std::to_string(47 + 0.0001 * turn * std::sin(turn)) + "' lon='" +
                  std::to_string(8 + 0.0001 * turn * std::cos(turn)) + "'><ele>" +
                  std::to_string(400 + i * 7919 % 100) + "</ele></trkpt>";
    }
    EXPECT_LT(PageOf(Gpx("<trk><trkseg>" + points + "</trkseg></trk>")).size(), 1000000U);
}

} // namespace
