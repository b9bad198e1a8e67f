// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/export/FeatureWriter.h>
#include <vexagpx/output/JsonWriter.h>

namespace vexagpx {

/// Writes a FeatureCollection of GeoJSON (RFC 7946), each feature on a line of its own. Heights are the third number of
/// those positions that have one. The times of the points of a line are the property "coordTimes", whose arrays are
/// those of the coordinates.
class GeoJsonWriter final : public FeatureWriter {
public:
    explicit GeoJsonWriter(Output& out) : out_(out), json_(out) {}

    void Start(const ExportHead& head) override;
    void StartLayer(Layer) override {}
    void WritePoint(const Position& position, const Properties& properties) override;
    void WritePath(const PathGeometry& geometry, const Properties& properties) override;
    void EndLayer() override {}
    void End() override;

private:
    void StartFeature();
    void StartGeometry(const char* type);
    void EndFeature();
    void WriteGeometry(const PathGeometry& geometry);
    void WriteProperties(const Properties& properties);
    void WriteLinks(const Links& links);
    void WriteTime(const std::optional<double>& time);
    template <class Take>
    void WriteLines(const PathGeometry& geometry, Take take);

    Output& out_;
    JsonWriter json_;
};

} // namespace vexagpx
