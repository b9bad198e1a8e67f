// SPDX-License-Identifier: MIT
#include <vexagpx/editing/PathChoice.h>

#include <vexagpx/terminal/DisplayText.h>

#include <algorithm>
#include <stdexcept>
#include <string>

namespace vexagpx {

namespace {

void RequireNumbers(const std::vector<std::uint64_t>& numbers, std::size_t count, const std::string& noun) {
    for (const std::uint64_t number : numbers)
        if (number > count)
            throw std::runtime_error("There is no " + noun + " " + std::to_string(number) +
                                     "; the document has " + Counted(count, noun) + ".");
}

bool IsChosen(const PathChoice& choice, const std::vector<std::uint64_t>& numbers, std::size_t number) {
    return choice.IsAll() || std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

} // namespace

void ForEachPath(vexaTransferLib::GpxDocument& document, const PathChoice& choice, const TakeTrack& takeTrack,
                 const TakeRoute& takeRoute) {
    RequireNumbers(choice.tracks, document.GetTrackCount(), "track");
    RequireNumbers(choice.routes, document.GetRouteCount(), "route");
    std::size_t number = 0;
    for (vexaTransferLib::GpxRoute& route : document.EditRoutes())
        if (IsChosen(choice, choice.routes, ++number))
            takeRoute(route, number);
    number = 0;
    for (vexaTransferLib::GpxTrack& track : document.EditTracks())
        if (IsChosen(choice, choice.tracks, ++number))
            takeTrack(track, number);
}

} // namespace vexagpx
