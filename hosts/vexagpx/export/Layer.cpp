// SPDX-License-Identifier: MIT
#include <vexagpx/export/Layer.h>

#include <vexagpx/terminal/DisplayText.h>

namespace vexagpx {

using vexaTransferLib::GpxDocument;

namespace {

constexpr std::array<std::string_view, kLayers.size()> kNames = {"waypoints", "routes", "tracks", "points"};
constexpr std::array<const char*, kLayers.size()> kNouns = {"waypoint", "route", "track", "point"};

std::size_t PointsOf(const GpxDocument& document) {
    std::size_t points = 0;
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route)
        points += route->GetPointCount();
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track)
        for (auto segment = track->GetSegmentIter(); segment != track->GetSegmentEndIter(); ++segment)
            points += segment->size();
    return points;
}

} // namespace

std::string_view NameOf(Layer layer) {
    return kNames.at(static_cast<std::size_t>(layer));
}

std::optional<Layer> LayerOf(std::string_view name) {
    for (const Layer layer : kLayers)
        if (NameOf(layer) == name)
            return layer;
    return std::nullopt;
}

void LayerCounts::Add(const GpxDocument& document) {
    const std::array<std::size_t, kLayers.size()> more = {
        document.GetWaypointCount(), document.GetRouteCount(), document.GetTrackCount(), PointsOf(document)};
    for (std::size_t i = 0; i < counts_.size(); ++i)
        counts_.at(i) += more.at(i);
}

std::string LayerCounts::Text() const {
    std::vector<std::string> parts;
    for (const Layer layer : kLayers)
        if (Has(layer))
            parts.push_back(Counted(Count(layer), kNouns.at(static_cast<std::size_t>(layer))));
    if (parts.empty())
        return "nothing";
    std::string text = parts.front();
    for (std::size_t i = 1; i < parts.size(); ++i)
        text.append(i + 1 == parts.size() ? " and " : ", ").append(parts[i]);
    return text;
}

} // namespace vexagpx
