// SPDX-License-Identifier: MIT
#include "support/comparison/GpxPlaces.h"

#include "support/comparison/GpxContent.h"

#include <array>

namespace vexaTransferLib::testing_support {
namespace {

// What the schema of GPX 1.1 declares and that of GPX 1.0 does not, with everything in it. "link+" is any link
// but the first one. A final "." is the element alone, which GPX 1.0 has no counterpart of when it is empty.
constexpr std::array<std::string_view, 20> kPlacesOfGpx11 = {
    "gpx/metadata/.",
    "gpx/metadata/author/.",
    "gpx/metadata/author/link",
    "gpx/metadata/copyright",
    "gpx/metadata/link+",
    "gpx/metadata/link/type",
    "gpx/metadata/extensions",
    "gpx/wpt/link+",
    "gpx/wpt/link/type",
    "gpx/rte/link+",
    "gpx/rte/link/type",
    "gpx/rte/type",
    "gpx/rte/rtept/link+",
    "gpx/rte/rtept/link/type",
    "gpx/trk/link+",
    "gpx/trk/link/type",
    "gpx/trk/type",
    "gpx/trk/trkseg/extensions",
    "gpx/trk/trkseg/trkpt/link+",
    "gpx/trk/trkseg/trkpt/link/type",
};

// Takes the first step. A namespace with slashes becomes several steps, none of which is one of GPX.
std::string_view TakeStep(std::string_view& path) {
    const std::size_t end = path.find('/');
    const std::string_view step = path.substr(0, end);
    path.remove_prefix(end == std::string_view::npos ? path.size() : end + 1);
    return step;
}

bool StepMatches(std::string_view step, std::string_view wanted) {
    const std::size_t bracket = step.find('[');
    const std::string_view name = step.substr(0, bracket);
    if (wanted == "link+")
        return name == "link" && bracket != std::string_view::npos;
    return name == wanted;
}

bool IsAtOrBelow(std::string_view path, std::string_view place) {
    while (!place.empty()) {
        const std::string_view wanted = TakeStep(place);
        if (wanted == ".")
            return path.empty();
        if (path.empty() || !StepMatches(TakeStep(path), wanted))
            return false;
    }
    return true;
}

} // namespace

bool HasPlaceInGpx10(std::string_view path) {
    if (path.starts_with(kOrderOf))
        path.remove_prefix(kOrderOf.size());
    for (const std::string_view place : kPlacesOfGpx11) {
        if (IsAtOrBelow(path, place))
            return false;
    }
    return true;
}

} // namespace vexaTransferLib::testing_support
