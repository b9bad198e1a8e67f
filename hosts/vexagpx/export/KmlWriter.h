// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/export/FeatureWriter.h>
#include <vexagpx/process/Output.h>

#include <string>
#include <string_view>

namespace vexagpx {

/// Writes a document of KML 2.2: a folder for each layer, and a placemark for each feature. Waypoints and points have a
/// time stamp, routes and tracks the span of their times. What KML has no element for is extended data. Lines follow
/// the ground.
class KmlWriter final : public FeatureWriter {
public:
    explicit KmlWriter(Output& out) : out_(out) {}

    void Start(const ExportHead& head) override;
    void StartLayer(Layer layer) override;
    void WritePoint(const Position& position, const Properties& properties) override;
    void WritePath(const PathGeometry& geometry, const Properties& properties) override;
    void EndLayer() override;
    void End() override;

private:
    void WriteElement(std::string_view name, const icu::UnicodeString& text);
    void WriteText(std::string_view utf8);
    void StartPlacemark(const Properties& properties);
    void WriteTimeStamp(const std::optional<double>& time);
    void WriteTimeSpan(const PathGeometry& geometry);
    void WriteStyleAndData(const Properties& properties);
    void WriteData(const Property& property);
    void WriteCoordinates(const Position& position);
    void WriteLine(const PathLine& line, bool isPoints);

    Output& out_;
    std::string utf8_;
    Layer layer_ = Layer::kWaypoints;
};

} // namespace vexagpx
