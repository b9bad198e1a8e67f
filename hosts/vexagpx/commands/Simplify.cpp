// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Simplify.h>

#include <vexagpx/editing/EditRun.h>
#include <vexagpx/process/Utf8.h>
#include <vexagpx/terminal/DisplayText.h>

#include <vexaTrackLib/SimplifyPaths.h>

#include <cmath>
#include <string>

namespace vexagpx {

using namespace vexaTransferLib;
using vexaTrackLib::SimplifiedPath;

namespace {

/// "4.3 m", "0.02 m", "12.3 km", "0 m".
std::string FarText(double metres) {
    if (metres < 0.005)
        return "0 m";
    return Utf8(metres < 10.0 ? FixedText(metres, metres < 0.1 ? 2 : 1) + u" m" : LengthText(metres));
}

template <class Path>
void AddChange(ChangeList& changes, std::string_view object, std::size_t number, const Path& path,
               const SimplifiedPath& result) {
    if (result.before == result.after)
        return;
    Change change{"simplified", object, number, {}, {}, {}};
    path.GetName(change.name);
    change.text = std::to_string(result.after) + " of " + Counted(result.before, "point") +
                  (result.after == 1 ? " is" : " are") + " left, the others are at most " +
                  FarText(result.farthest) + " off";
    change.figures = {{"pointsBefore", static_cast<double>(result.before)},
                      {"pointsAfter", static_cast<double>(result.after)},
                      {"farthest", std::round(result.farthest * 100.0) / 100.0}};
    changes.Add(std::move(change));
}

} // namespace

bool Simplify(const SimplifyOptions& options, Output& standardOutput) {
    const auto edit = [&options](GpxDocument& document, ChangeList& changes) {
        const bool byError = options.error > 0.0;
        const auto points = static_cast<std::size_t>(options.points);
        ForEachPath(
            document, options.paths,
            [&](GpxTrack& track, std::size_t number) {
                AddChange(changes, "track", number, track,
                          byError ? vexaTrackLib::SimplifyTrack(track, options.error)
                                  : vexaTrackLib::SimplifyTrackTo(track, points));
            },
            [&](GpxRoute& route, std::size_t number) {
                AddChange(changes, "route", number, route,
                          byError ? vexaTrackLib::SimplifyRoute(route, options.error)
                                  : vexaTrackLib::SimplifyRouteTo(route, points));
            });
    };
    return RunEdit(options.edit, edit, standardOutput);
}

} // namespace vexagpx
