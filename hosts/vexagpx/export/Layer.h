// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexagpx {

/// What an export writes of documents. Points are those of routes and tracks.
enum class Layer { kWaypoints, kRoutes, kTracks, kPoints };

inline constexpr std::array kLayers = {Layer::kWaypoints, Layer::kRoutes, Layer::kTracks, Layer::kPoints};

/// "waypoints", "routes" ...
std::string_view NameOf(Layer layer);
/// Nothing for another text.
std::optional<Layer> LayerOf(std::string_view name);

/// How many objects documents have for each layer.
class LayerCounts {
public:
    void Add(const vexaTransferLib::GpxDocument& document);

    std::size_t Count(Layer layer) const { return counts_.at(static_cast<std::size_t>(layer)); }
    bool Has(Layer layer) const { return Count(layer) != 0; }
    /// The layers that have something, for a message: "2 waypoints, 1 track and 40 points"; "nothing" when none has.
    std::string Text() const;

private:
    std::array<std::size_t, kLayers.size()> counts_{};
};

} // namespace vexagpx
