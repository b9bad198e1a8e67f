// SPDX-License-Identifier: MIT
#include <vexagpx/page/PageJson.h>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <string>

namespace {

using nlohmann::json;
using vexagpx::kNoValue;
using vexagpx::Output;
using vexagpx::PageDocument;

std::string Written(const std::vector<PageDocument>& documents) {
    std::string text;
    Output out([&text](std::string_view piece) { text += piece; });
    vexagpx::WritePageJson(documents, out);
    out.Flush();
    return text;
}

TEST(PageJsonTest, NumbersAreDifferences) {
    PageDocument document;
    document.extent = 100.0;
    document.paths.resize(1);
    document.paths[0].segments = {{{1.0, -2.0, 0.0, 100.0, 5000.0},
                                   {2.5, -2.0, 1.5, kNoValue, 6500.0},
                                   {2.0, 0.0, 3.0, 99.9, kNoValue}}};
    const json path = json::parse(Written({document}))["documents"][0]["paths"][0];
    const json segment = path["segments"][0];
    EXPECT_EQ(path["epoch"], 5.0);
    EXPECT_EQ(segment["x"], json({10, 15, -5}));
    EXPECT_EQ(segment["y"], json({-20, 0, 20}));
    EXPECT_EQ(segment["d"], json({0, 15, 15}));
    EXPECT_EQ(segment["h"], json({1000, nullptr, -1}));
    EXPECT_EQ(segment["t"], json({0, 15, nullptr}));
}

TEST(PageJsonTest, PausesStartAfterTheFirstTime) {
    PageDocument document;
    document.paths.resize(1);
    document.paths[0].segments = {{{0.0, 0.0, 0.0, kNoValue, 60000.0}}};
    document.paths[0].pauses = {{90000.0, 120.0}};
    const json pause = json::parse(Written({document}))["documents"][0]["paths"][0]["pauses"][0];
    EXPECT_EQ(pause["start"], 30.0);
    EXPECT_EQ(pause["seconds"], 120.0);
}

TEST(PageJsonTest, ALargeMapHasACoarserUnit) {
    PageDocument document;
    document.extent = 1e8;
    document.waypoints.resize(1);
    document.waypoints[0].x = 50000.0;
    document.waypoints[0].y = -20.0;
    const json written = json::parse(Written({document}))["documents"][0];
    EXPECT_EQ(written["unit"], 10.0);
    EXPECT_EQ(written["waypoints"][0]["x"], 5000);
    EXPECT_EQ(written["waypoints"][0]["y"], -2);
}

TEST(PageJsonTest, NoTextEndsTheElementThatContainsTheData) {
    const std::string hostile = "</script><!-- \" \\ <script>";
    PageDocument document;
    document.name = hostile;
    document.paths.resize(1);
    document.paths[0].name = hostile;
    document.waypoints.resize(1);
    document.waypoints[0].name = hostile;
    const std::string text = Written({document});
    EXPECT_EQ(text.find('<'), std::string::npos);
    const json written = json::parse(text)["documents"][0];
    EXPECT_EQ(written["name"], hostile);
    EXPECT_EQ(written["paths"][0]["name"], hostile);
    EXPECT_EQ(written["waypoints"][0]["name"], hostile);
}

} // namespace
