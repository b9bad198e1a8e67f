// SPDX-License-Identifier: MIT
#include <vexagpx/export/FeatureWalk.h>

#include "export/Features.h"
#include "export/Reading.h"

namespace {

using cli::PointText;
using vexagpx::ExportHead;
using vexagpx::ExportSources;
using vexagpx::Layer;
using vexagpx::LeftOut;
using vexagpx::PathGeometry;
using vexagpx::Position;
using vexagpx::Properties;

/// Writes down what it gets.
class Recorder final : public vexagpx::FeatureWriter {
public:
    void Start(const ExportHead& head) override { Add("start " + cli::Utf8(head.name)); }
    void StartLayer(Layer layer) override { Add(std::string(NameOf(layer))); }
    void WritePoint(const Position&, const Properties& properties) override {
        Add("point " + cli::TextOf(properties));
    }
    void WritePath(const PathGeometry&, const Properties& properties) override {
        Add("path " + cli::TextOf(properties));
    }
    void EndLayer() override {}
    void End() override { Add("end"); }

    const std::vector<std::string>& Lines() const { return lines_; }

private:
    void Add(std::string line) { lines_.push_back(std::move(line)); }

    std::vector<std::string> lines_;
};

const std::string kAll = PointText("wpt", "1", "2", "<name>w</name>") + "<rte><name>r</name>" +
                         PointText("rtept", "1", "2", "<name>p</name>") +
                         "</rte><trk/><trk><name>t</name><trkseg/><trkseg>" + PointText("trkpt", "1", "2") +
                         PointText("trkpt", "1", "2", "<sat>3</sat>") + "</trkseg></trk>";

ExportSources SourcesOf(const std::vector<std::pair<std::string, std::string>>& documents) {
    ExportSources sources;
    for (const auto& [name, elements] : documents)
        sources.push_back({name, cli::DocumentOf(elements)});
    return sources;
}

TEST(FeatureWalkTest, LayersComeInTheirOrder) {
    Recorder recorder;
    const ExportSources sources = SourcesOf({{"", "<metadata><name>d</name></metadata>" + kAll}});
    const LeftOut missing =
        WalkFeatures(sources, {Layer::kWaypoints, Layer::kRoutes, Layer::kTracks, Layer::kPoints}, recorder);
    EXPECT_THAT(recorder.Lines(),
                testing::ElementsAre("start d", "waypoints", "point name=w", "routes", "path name=r",
                                     "tracks", "path ", "path name=t", "points", "point route=1 name=p",
                                     "point track=2 segment=2", "point track=2 segment=2 sat=3", "end"));
    EXPECT_EQ(missing.pointDetails, 2U);
    EXPECT_EQ(missing.metadata, 0U);
}

TEST(FeatureWalkTest, FeaturesOfSeveralDocumentsSayWhereTheyAreFrom) {
    Recorder recorder;
    const std::string head = "<metadata><name>d</name></metadata>";
    const ExportSources sources = SourcesOf({{"a.gpx", head + kAll}, {"b.gpx", head + kAll}});
    const LeftOut missing = WalkFeatures(sources, {Layer::kWaypoints}, recorder);
    EXPECT_THAT(recorder.Lines(), testing::ElementsAre("start ", "waypoints", "point file=a.gpx name=w",
                                                       "point file=b.gpx name=w", "end"));
    EXPECT_EQ(missing.metadata, 2U);
}

} // namespace
