// SPDX-License-Identifier: MIT
#include <vexagpx/export/KmlWriter.h>

#include <vexagpx/output/ValueText.h>

#include <type_traits>
#include <variant>

namespace vexagpx {

namespace {

constexpr std::string_view kStart = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                    "<kml xmlns=\"http://www.opengis.net/kml/2.2\">\n"
                                    "<Document>\n";
// Colours are alpha, blue, green and red.
constexpr std::string_view kStyles =
    "<Style id=\"waypoints\"><IconStyle><scale>1</scale></IconStyle></Style>\n"
    "<Style id=\"routes\"><LineStyle><color>ffb06020</color><width>3</width></LineStyle></Style>\n"
    "<Style id=\"tracks\"><LineStyle><color>ff2020d0</color><width>3</width></LineStyle></Style>\n"
    "<Style id=\"points\"><IconStyle><scale>0.5</scale></IconStyle>"
    "<LabelStyle><scale>0</scale></LabelStyle></Style>\n";

// What XML has no place for is written as this.
constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

std::string_view TitleOf(Layer layer) {
    switch (layer) {
    case Layer::kWaypoints:
        return "Waypoints";
    case Layer::kRoutes:
        return "Routes";
    case Layer::kTracks:
        return "Tracks";
    case Layer::kPoints:
        return "Points";
    }
    return {};
}

/// What is written for the character at a place of a text in UTF-8; empty for the bytes as they are.
/// \param size set to the bytes of the character when they are replaced
std::string_view EscapeOf(std::string_view rest, std::size_t& size) {
    size = 1;
    switch (rest.front()) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '\r':
        return "&#13;";
    case '\t':
    case '\n':
        return {};
    default:
        break;
    }
    if (static_cast<unsigned char>(rest.front()) < 0x20)
        return kReplacement;
    size = 3;
    return rest.starts_with("\xEF\xBF\xBE") || rest.starts_with("\xEF\xBF\xBF") ? kReplacement
                                                                                : std::string_view();
}

/// The fields that are elements of their own.
bool IsElement(Field field) {
    return field == Field::kName || field == Field::kDescription;
}

const icu::UnicodeString* TextOf(const Properties& properties, Field field) {
    for (const Property& property : properties)
        if (property.field == field)
            return std::get_if<icu::UnicodeString>(&property.value);
    return nullptr;
}

} // namespace

void KmlWriter::Start(const ExportHead& head) {
    out_.Write(kStart);
    if (!head.name.isEmpty())
        WriteElement("name", head.name);
    if (!head.description.isEmpty())
        WriteElement("description", head.description);
    WriteTimeStamp(head.time);
    out_.Write(kStyles);
}

void KmlWriter::StartLayer(Layer layer) {
    layer_ = layer;
    out_.Write("<Folder><name>");
    out_.Write(TitleOf(layer));
    out_.Write("</name>\n");
}

void KmlWriter::EndLayer() {
    out_.Write("</Folder>\n");
}

void KmlWriter::End() {
    out_.Write("</Document>\n</kml>\n");
}

void KmlWriter::WritePoint(const Position& position, const Properties& properties) {
    StartPlacemark(properties);
    WriteTimeStamp(position.time);
    WriteStyleAndData(properties);
    out_.Write("<Point><coordinates>");
    WriteCoordinates(position);
    out_.Write("</coordinates></Point>\n</Placemark>\n");
}

void KmlWriter::WritePath(const PathGeometry& geometry, const Properties& properties) {
    StartPlacemark(properties);
    WriteTimeSpan(geometry);
    WriteStyleAndData(properties);
    const bool isMany = geometry.Lines().size() > 1;
    if (isMany)
        out_.Write("<MultiGeometry>\n");
    for (const PathLine& line : geometry.Lines())
        WriteLine(line, geometry.IsPoints());
    if (isMany)
        out_.Write("</MultiGeometry>\n");
    out_.Write("</Placemark>\n");
    missing_.pointTimes += geometry.TimeCount();
}

void KmlWriter::WriteLine(const PathLine& line, bool isPoints) {
    out_.Write(isPoints ? "<Point><coordinates>" : "<LineString><tessellate>1</tessellate><coordinates>");
    bool isFirst = true;
    line.ForEachPosition(!isPoints, [&](const Position& position) {
        if (!isFirst)
            out_.Write("\n");
        isFirst = false;
        WriteCoordinates(position);
    });
    out_.Write(isPoints ? "</coordinates></Point>\n" : "</coordinates></LineString>\n");
}

void KmlWriter::WriteCoordinates(const Position& position) {
    out_.Write(NumberDigits(position.longitude).Text());
    out_.Write(",");
    out_.Write(NumberDigits(position.latitude).Text());
    if (position.height) {
        out_.Write(",");
        out_.Write(NumberDigits(*position.height).Text());
    }
}

void KmlWriter::StartPlacemark(const Properties& properties) {
    out_.Write("<Placemark>\n");
    if (const icu::UnicodeString* const name = TextOf(properties, Field::kName))
        WriteElement("name", *name);
    if (const icu::UnicodeString* const description = TextOf(properties, Field::kDescription))
        WriteElement("description", *description);
}

void KmlWriter::WriteTimeStamp(const std::optional<double>& time) {
    if (!time)
        return;
    out_.Write("<TimeStamp><when>");
    out_.Write(TimeDigits(*time).Text());
    out_.Write("</when></TimeStamp>\n");
}

void KmlWriter::WriteTimeSpan(const PathGeometry& geometry) {
    if (!geometry.FirstTime() || !geometry.LastTime())
        return;
    out_.Write("<TimeSpan><begin>");
    out_.Write(TimeDigits(*geometry.FirstTime()).Text());
    out_.Write("</begin><end>");
    out_.Write(TimeDigits(*geometry.LastTime()).Text());
    out_.Write("</end></TimeSpan>\n");
}

void KmlWriter::WriteStyleAndData(const Properties& properties) {
    out_.Write("<styleUrl>#");
    out_.Write(NameOf(layer_));
    out_.Write("</styleUrl>\n");
    bool hasData = false;
    for (const Property& property : properties) {
        if (IsElement(property.field))
            continue;
        if (!hasData)
            out_.Write("<ExtendedData>\n");
        hasData = true;
        WriteData(property);
    }
    if (hasData)
        out_.Write("</ExtendedData>\n");
}

void KmlWriter::WriteData(const Property& property) {
    out_.Write("<Data name=\"");
    out_.Write(NameOf(property.field));
    out_.Write("\"><value>");
    std::visit(
        [this](const auto& value) {
            using Type = std::decay_t<decltype(value)>;
            utf8_.clear();
            if constexpr (std::is_same_v<Type, Links>)
                TextOf(value).toUTF8String(utf8_);
            else if constexpr (std::is_same_v<Type, icu::UnicodeString>)
                value.toUTF8String(utf8_);
            else if constexpr (std::is_same_v<Type, bool>)
                utf8_ = value ? "true" : "false";
            else if constexpr (std::is_same_v<Type, double>)
                utf8_ = NumberDigits(value).Text();
            else
                utf8_ = std::to_string(value);
        },
        property.value);
    WriteText(utf8_);
    out_.Write("</value></Data>\n");
}

void KmlWriter::WriteElement(std::string_view name, const icu::UnicodeString& text) {
    out_.Write("<");
    out_.Write(name);
    out_.Write(">");
    utf8_.clear();
    text.toUTF8String(utf8_);
    WriteText(utf8_);
    out_.Write("</");
    out_.Write(name);
    out_.Write(">\n");
}

void KmlWriter::WriteText(std::string_view utf8) {
    std::size_t start = 0;
    for (std::size_t at = 0; at < utf8.size(); ++at) {
        std::size_t size = 1;
        const std::string_view escape = EscapeOf(utf8.substr(at), size);
        if (escape.empty())
            continue;
        out_.Write(utf8.substr(start, at - start));
        out_.Write(escape);
        at += size - 1;
        start = at + 1;
    }
    out_.Write(utf8.substr(start));
}

} // namespace vexagpx
