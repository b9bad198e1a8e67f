// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Reverse.h>

#include <vexagpx/editing/EditRun.h>
#include <vexagpx/terminal/DisplayText.h>

#include <string>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

/// What became of a path.
struct Reversed {
    std::size_t points = 0;
    std::size_t times = 0; ///< that were removed
};

void TakePoints(const GpxListEditor<GpxPoint>& points, bool keepsTimes, Reversed& result) {
    for (GpxPoint& point : points) {
        ++result.points;
        double time;
        if (keepsTimes || !point.GetTime(time))
            continue;
        point.ClearTime();
        ++result.times;
    }
}

template <class Path>
void AddChange(ChangeList& changes, std::string_view object, std::size_t number, const Path& path,
               const Reversed& result) {
    Change change{"reversed", object, number, {}, {}, {}};
    path.GetName(change.name);
    change.text = Counted(result.points, "point") + " reversed";
    if (result.times != 0)
        change.text += ", " + Counted(result.times, "time") + " removed";
    change.figures = {{"points", static_cast<double>(result.points)},
                      {"timesRemoved", static_cast<double>(result.times)}};
    changes.Add(std::move(change));
}

} // namespace

bool Reverse(const ReverseOptions& options, Output& standardOutput) {
    const auto edit = [&options](GpxDocument& document, ChangeList& changes) {
        ForEachPath(
            document, options.paths,
            [&](GpxTrack& track, std::size_t number) {
                Reversed result;
                track.Reverse();
                for (std::size_t i = 0; i < track.GetSegmentCount(); ++i)
                    TakePoints(track.EditPoints(i), options.keepsTimes, result);
                if (result.points > 1)
                    AddChange(changes, "track", number, track, result);
            },
            [&](GpxRoute& route, std::size_t number) {
                Reversed result;
                route.EditPoints().Reverse();
                TakePoints(route.EditPoints(), options.keepsTimes, result);
                if (result.points > 1)
                    AddChange(changes, "route", number, route, result);
            });
    };
    return RunEdit(options.edit, edit, standardOutput);
}

} // namespace vexagpx
