// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/export/FeatureWriter.h>
#include <vexagpx/output/CsvWriter.h>

#include <bitset>

namespace vexagpx {

/// The fields that occur among features: the columns of a table.
class ColumnFinder final : public FeatureWriter {
public:
    void Start(const ExportHead&) override {}
    void StartLayer(Layer) override {}
    void WritePoint(const Position&, const Properties& properties) override { Take(properties); }
    void WritePath(const PathGeometry&, const Properties& properties) override { Take(properties); }
    void EndLayer() override {}
    void End() override {}

    bool Has(Field field) const { return fields_[static_cast<std::size_t>(field)]; }

private:
    void Take(const Properties& properties);

    std::bitset<kFieldCount> fields_;
};

/// Writes one layer as a table of comma-separated values: a row for each feature below a row with the names of the
/// columns. Points have the columns "lat", "lon", "ele" and "time". Routes and tracks, whose points a row has no place
/// for, have "segments", "points", "start" and "end".
class TableWriter final : public FeatureWriter {
public:
    /// \param columns the fields that get a column
    TableWriter(Output& out, const ColumnFinder& columns) : csv_(out), columns_(columns) {}

    void Start(const ExportHead& head) override;
    void StartLayer(Layer layer) override;
    void WritePoint(const Position& position, const Properties& properties) override;
    void WritePath(const PathGeometry& geometry, const Properties& properties) override;
    void EndLayer() override {}
    void End() override {}

private:
    void WriteTime(const std::optional<double>& time);
    void WriteProperties(const Properties& properties, Field from, Field to);

    CsvWriter csv_;
    const ColumnFinder& columns_;
};

} // namespace vexagpx
