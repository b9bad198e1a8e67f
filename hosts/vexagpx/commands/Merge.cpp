// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Merge.h>

#include <vexagpx/editing/EditInput.h>
#include <vexagpx/editing/EditRun.h>
#include <vexagpx/input/Input.h>
#include <vexagpx/output/Destination.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/terminal/DisplayText.h>

#include <vexaTrackLib/Merge.h>
#include <vexaTransferLib/GpxStandardWriter.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <stdexcept>
#include <utility>
#include <vector>

namespace vexagpx {

using namespace vexaTransferLib;
using vexaTrackLib::MergeResult;

namespace {

/// Tells what came into the document.
class MergeReport {
public:
    explicit MergeReport(ChangeList& changes) : changes_(changes) {}

    void Tell(const MergeResult& result) {
        Add("waypoints", result.addedWaypoints, "waypoint", " added");
        Add("replaced", result.replacedWaypoints, "waypoint", " replaced by newer versions");
        Add("logs", result.addedLogs, "log", " added to geocaches");
        Add("replaced logs", result.replacedLogs, "log", " replaced by newer versions");
        Add("routes", result.addedRoutes, "route", " added");
        if (result.addedTracks != 0)
            Add("tracks", result.addedTracks, "track",
                result.addedPoints == 0 ? " added" : " added, with " + Counted(result.addedPoints, "point"));
        if (result.isReordered)
            changes_.Add({"order", "document", 0, {}, "tracks brought into the order of their times", {}});
    }

private:
    void Add(const char* kind, std::size_t count, const std::string& noun, const std::string& what) {
        if (count != 0)
            changes_.Add({kind,
                          "document",
                          0,
                          {},
                          Counted(count, noun) + what,
                          {{"count", static_cast<double>(count)}}});
    }

    ChangeList& changes_;
};

// Not among the changes: they are not in the document.
void WriteConflicts(const MergeOptions& options, std::vector<GpxPoint> losers, Output& standardOutput) {
    GpxDocument document;
    for (GpxPoint& loser : losers)
        document.AddWaypoint(std::move(loser));
    GpxStandardOptions standard;
    standard.creator = u"vexagpx";
    standard.replacesCharacters = true;
    Destination(options.conflicts).Commit(GpxStandardWriter(standard).GetText(document), standardOutput);
}

bool IsFile(const std::string& path) {
    return !path.empty() && path != kStandardOutput;
}

void RefuseInputs(const MergeOptions& options) {
    for (const std::string& file : options.files)
        for (const std::string& out : {options.edit.out, options.conflicts})
            if (IsFile(out) && file != kStandardInput && IsSameFile(file, out))
                throw std::runtime_error("A merge does not replace what it reads; write another file. (" +
                                         out + ")");
}

} // namespace

bool Merge(const MergeOptions& options, Output& standardOutput) {
    std::vector<GpxPoint> losers;
    const auto edit = [&](GpxDocument& document, ChangeList& changes) {
        RefuseInputs(options);
        std::vector<GpxDocument> others;
        for (auto file = std::next(options.files.begin()); file != options.files.end(); ++file)
            others.push_back(ReadForEditing(*file, options.edit.rules));
        std::vector<const GpxDocument*> pointers;
        pointers.reserve(others.size());
        for (const GpxDocument& other : others)
            pointers.push_back(&other);
        MergeResult result = vexaTrackLib::Merge(document, pointers,
                                                 options.byTime ? vexaTrackLib::MergeTracks::kByTime
                                                                : vexaTrackLib::MergeTracks::kWhole);
        MergeReport(changes).Tell(result);
        losers = std::move(result.losers);
    };
    if (!RunEdit(options.edit, edit, standardOutput))
        return false;
    if (!losers.empty())
        PrintError("Note: " + Counted(losers.size(), "waypoint") +
                   " had another version, which was left out" +
                   (options.conflicts.empty() ? "; --conflicts FILE keeps such." : "."));
    if (options.conflicts.empty() || options.edit.dryRun)
        return true;
    return RunReportingErrors(options.conflicts, [&] {
        WriteConflicts(options, std::move(losers), standardOutput);
        return true;
    });
}

} // namespace vexagpx
