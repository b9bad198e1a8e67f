// SPDX-License-Identifier: MIT
#include <vexagpx/export/Layer.h>

#include "export/Reading.h"

namespace {

using cli::PointText;
using vexagpx::Layer;
using vexagpx::LayerCounts;

TEST(LayerTest, NamesReadBackTheSame) {
    for (const Layer layer : vexagpx::kLayers)
        EXPECT_EQ(vexagpx::LayerOf(NameOf(layer)), layer);
    EXPECT_EQ(vexagpx::LayerOf("caches"), std::nullopt);
    EXPECT_EQ(vexagpx::LayerOf(""), std::nullopt);
}

TEST(LayerTest, CountsAreThoseOfAllDocuments) {
    const std::string route = "<rte>" + PointText("rtept", "1", "2") + "</rte>";
    const std::string track = "<trk><trkseg>" + PointText("trkpt", "1", "2") + PointText("trkpt", "1", "3") +
                              "</trkseg><trkseg>" + PointText("trkpt", "1", "4") + "</trkseg></trk>";
    LayerCounts counts;
    EXPECT_EQ(counts.Text(), "nothing");
    counts.Add(cli::DocumentOf(route));
    EXPECT_EQ(counts.Text(), "1 route and 1 point");
    counts.Add(cli::DocumentOf(PointText("wpt", "1", "2") + route + track));
    EXPECT_EQ(counts.Text(), "1 waypoint, 2 routes, 1 track and 5 points");
    EXPECT_EQ(counts.Count(Layer::kPoints), 5U);
    EXPECT_TRUE(counts.Has(Layer::kWaypoints));
}

} // namespace
