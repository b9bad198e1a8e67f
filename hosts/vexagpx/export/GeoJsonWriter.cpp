// SPDX-License-Identifier: MIT
#include <vexagpx/export/GeoJsonWriter.h>

#include <vexagpx/output/OptionalMembers.h>
#include <vexagpx/output/ValueText.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>
#include <type_traits>
#include <variant>

namespace vexagpx {

namespace {

/// "[7.5,47.25,512]".
class PositionText {
public:
    explicit PositionText(const Position& position) {
        Append("[");
        Append(NumberDigits(position.longitude).Text());
        Append(",");
        Append(NumberDigits(position.latitude).Text());
        if (position.height) {
            Append(",");
            Append(NumberDigits(*position.height).Text());
        }
        Append("]");
    }

    std::string_view Text() const { return {text_.data(), size_}; }

private:
    void Append(std::string_view text) {
        std::memcpy(text_.data() + size_, text.data(), text.size());
        size_ += text.size();
    }

    std::array<char, 128> text_;
    std::size_t size_ = 0;
};

} // namespace

void GeoJsonWriter::Start(const ExportHead& head) {
    json_.BeginObject();
    json_.Member("type", "FeatureCollection");
    MemberIfAny(json_, "name", head.name);
    MemberIfAny(json_, "description", head.description);
    if (head.time)
        json_.Member("time", TimeDigits(*head.time).Text());
    json_.Key("features");
    json_.BeginArray();
}

void GeoJsonWriter::End() {
    out_.Write("\n");
    json_.EndArray();
    json_.EndObject();
    out_.Write("\n");
}

void GeoJsonWriter::WritePoint(const Position& position, const Properties& properties) {
    StartFeature();
    StartGeometry("Point");
    json_.Literal(PositionText(position).Text());
    json_.EndObject();
    json_.Key("properties");
    json_.BeginObject();
    if (position.time)
        json_.Member("time", TimeDigits(*position.time).Text());
    WriteProperties(properties);
    EndFeature();
}

void GeoJsonWriter::WritePath(const PathGeometry& geometry, const Properties& properties) {
    StartFeature();
    WriteGeometry(geometry);
    json_.Key("properties");
    json_.BeginObject();
    WriteProperties(properties);
    if (geometry.TimeCount() != 0) {
        json_.Key("coordTimes");
        WriteLines(geometry, [this](const Position& position) { WriteTime(position.time); });
    }
    EndFeature();
}

void GeoJsonWriter::StartFeature() {
    json_.BreakLine();
    json_.BeginObject();
    json_.Member("type", "Feature");
    json_.Key("geometry");
}

void GeoJsonWriter::StartGeometry(const char* type) {
    json_.BeginObject();
    json_.Member("type", type);
    json_.Key("coordinates");
}

/// Ends the properties and the feature.
void GeoJsonWriter::EndFeature() {
    json_.EndObject();
    json_.EndObject();
}

void GeoJsonWriter::WriteGeometry(const PathGeometry& geometry) {
    if (geometry.Lines().empty())
        return json_.Literal("null");
    const bool isOne = geometry.Lines().size() == 1;
    if (geometry.IsPoints())
        StartGeometry(isOne ? "Point" : "MultiPoint");
    else
        StartGeometry(isOne ? "LineString" : "MultiLineString");
    WriteLines(geometry, [this](const Position& position) { json_.Literal(PositionText(position).Text()); });
    json_.EndObject();
}

/// Writes what `take` writes for each position, in the arrays of the coordinates.
template <class Take>
void GeoJsonWriter::WriteLines(const PathGeometry& geometry, Take take) {
    const bool isMany = geometry.Lines().size() > 1;
    const bool areLines = !geometry.IsPoints();
    if (isMany)
        json_.BeginArray();
    for (const PathLine& line : geometry.Lines()) {
        if (areLines)
            json_.BeginArray();
        line.ForEachPosition(areLines, take);
        if (areLines)
            json_.EndArray();
    }
    if (isMany)
        json_.EndArray();
}

void GeoJsonWriter::WriteTime(const std::optional<double>& time) {
    if (!time)
        return json_.Literal("null");
    std::array<char, 40> text;
    const TimeDigits digits(*time);
    char* at = text.data();
    *at++ = '"';
    at = std::copy(digits.Text().begin(), digits.Text().end(), at);
    *at++ = '"';
    json_.Literal({text.data(), static_cast<std::size_t>(at - text.data())});
}

void GeoJsonWriter::WriteProperties(const Properties& properties) {
    for (const Property& property : properties) {
        json_.Key(NameOf(property.field));
        std::visit(
            [this](const auto& value) {
                using Type = std::decay_t<decltype(value)>;
                if constexpr (std::is_same_v<Type, Links>)
                    WriteLinks(value);
                else if constexpr (std::is_same_v<Type, double>)
                    json_.Literal(NumberDigits(value).Text());
                else if constexpr (std::is_same_v<Type, bool>)
                    json_.Bool(value);
                else if constexpr (std::is_same_v<Type, std::uint64_t>)
                    json_.Number(value);
                else
                    json_.String(value);
            },
            property.value);
    }
}

void GeoJsonWriter::WriteLinks(const Links& links) {
    json_.BeginArray();
    for (const vexaTransferLib::GpxLink& link : links) {
        json_.BeginObject();
        MemberIfAny(json_, "href", link.href);
        MemberIfAny(json_, "text", link.text);
        MemberIfAny(json_, "type", link.type);
        json_.EndObject();
    }
    json_.EndArray();
}

} // namespace vexagpx
