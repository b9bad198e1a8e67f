// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Stats.h>

#include <vexagpx/commands/PathFigures.h>
#include <vexagpx/commands/StatsJson.h>
#include <vexagpx/commands/StatsText.h>
#include <vexagpx/input/DocumentReading.h>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

DocumentFigures FiguresOf(const GpxDocument& document, const vexaTrackLib::StatisticsOptions& options) {
    DocumentFigures figures;
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track) {
        figures.tracks.push_back({{}, track->GetSegmentCount(), vexaTrackLib::StatisticsOf(*track, options)});
        track->GetName(figures.tracks.back().name);
        figures.allTracks.Add(figures.tracks.back());
    }
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route) {
        figures.routes.push_back({{}, 1, vexaTrackLib::StatisticsOf(*route, options)});
        route->GetName(figures.routes.back().name);
        figures.allRoutes.Add(figures.routes.back());
    }
    return figures;
}

} // namespace

bool Stats(const StatsOptions& options, Output& out) {
    TotalFigures total;
    const auto write = [&](const DocumentSource& source, const GpxDocument& document) {
        const DocumentFigures figures = FiguresOf(document, options.figures);
        if (options.json) {
            WriteStatsJson(figures, source, out);
        } else {
            if (total.files > 0)
                out.Write("\n");
            WriteStatsText(figures, source.Text(), options.units, out);
        }
        out.Flush();
        ++total.files;
        total.allTracks.Add(figures.allTracks);
        total.allRoutes.Add(figures.allRoutes);
    };
    const bool succeeded = ReadDocuments(options.files, options.rules, write);
    if (options.total && options.json) {
        WriteStatsJson(total, out);
    } else if (options.total) {
        if (total.files > 0)
            out.Write("\n");
        WriteStatsText(total, options.units, out);
    }
    out.Flush();
    return succeeded;
}

} // namespace vexagpx
