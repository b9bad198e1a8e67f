// SPDX-License-Identifier: MIT
#include <vexagpx/export/TableWriter.h>

#include <type_traits>
#include <variant>

namespace vexagpx {

namespace {

/// The position follows the fields that say where an object is from.
constexpr Field kFirstAfterPosition = Field::kNumber;

Field Next(Field field) {
    return static_cast<Field>(static_cast<std::size_t>(field) + 1);
}

void WriteCell(const Value& value, CsvWriter& csv) {
    std::visit(
        [&csv](const auto& it) {
            using Type = std::decay_t<decltype(it)>;
            if constexpr (std::is_same_v<Type, Links>)
                csv.Text(TextOf(it));
            else if constexpr (std::is_same_v<Type, icu::UnicodeString>)
                csv.Text(it);
            else if constexpr (std::is_same_v<Type, bool>)
                csv.Bool(it);
            else
                csv.Number(it);
        },
        value);
}

} // namespace

void ColumnFinder::Take(const Properties& properties) {
    for (const Property& property : properties)
        fields_.set(static_cast<std::size_t>(property.field));
}

void TableWriter::Start(const ExportHead& head) {
    missing_.metadata += CountValues(head);
}

void TableWriter::StartLayer(Layer layer) {
    const auto names = [this](Field from, Field to) {
        for (Field field = from; field != to; field = Next(field))
            if (columns_.Has(field))
                csv_.Text(NameOf(field));
    };
    const bool isPath = layer == Layer::kRoutes || layer == Layer::kTracks;
    names(Field{}, kFirstAfterPosition);
    for (const char* const name : {isPath ? "segments" : "lat", isPath ? "points" : "lon",
                                   isPath ? "start" : "ele", isPath ? "end" : "time"})
        csv_.Text(name);
    names(kFirstAfterPosition, Field::kCount);
    csv_.EndRow();
}

void TableWriter::WritePoint(const Position& position, const Properties& properties) {
    WriteProperties(properties, Field{}, kFirstAfterPosition);
    csv_.Number(position.latitude);
    csv_.Number(position.longitude);
    if (position.height)
        csv_.Number(*position.height);
    else
        csv_.Empty();
    WriteTime(position.time);
    WriteProperties(properties, kFirstAfterPosition, Field::kCount);
    csv_.EndRow();
}

void TableWriter::WritePath(const PathGeometry& geometry, const Properties& properties) {
    WriteProperties(properties, Field{}, kFirstAfterPosition);
    csv_.Number(geometry.SegmentCount());
    csv_.Number(geometry.PointCount());
    WriteTime(geometry.FirstTime());
    WriteTime(geometry.LastTime());
    WriteProperties(properties, kFirstAfterPosition, Field::kCount);
    csv_.EndRow();
    missing_.pathPoints += geometry.PointCount();
}

void TableWriter::WriteTime(const std::optional<double>& time) {
    if (time)
        csv_.Time(*time);
    else
        csv_.Empty();
}

/// \param properties in the order of Field
void TableWriter::WriteProperties(const Properties& properties, Field from, Field to) {
    auto property = properties.begin();
    for (Field field = from; field != to; field = Next(field)) {
        if (!columns_.Has(field))
            continue;
        while (property != properties.end() && property->field < field)
            ++property;
        if (property != properties.end() && property->field == field)
            WriteCell(property->value, csv_);
        else
            csv_.Empty();
    }
}

} // namespace vexagpx
