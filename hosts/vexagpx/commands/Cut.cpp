// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Cut.h>

#include <vexagpx/editing/EditRun.h>
#include <vexagpx/terminal/DisplayText.h>
#include <vexagpx/terminal/TimeValue.h>
#include <vexagpx/terminal/Units.h>

#include <vexaTrackLib/Cut.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace vexagpx {

using namespace vexaTransferLib;
using vexaTrackLib::CutArea;
using vexaTrackLib::CutResult;

namespace {

std::vector<std::string_view> SplitAtCommas(std::string_view text) {
    std::vector<std::string_view> parts;
    for (std::size_t comma = text.find(','); comma != std::string_view::npos; comma = text.find(',')) {
        parts.push_back(text.substr(0, comma));
        text.remove_prefix(comma + 1);
    }
    parts.push_back(text);
    return parts;
}

CutArea AreaOf(const CutOptions& options) {
    CutArea area;
    if (!options.around.empty())
        area = ParseCircle(options.around).value();
    else if (!options.box.empty())
        area = ParseBox(options.box).value();
    if (!options.from.empty() || !options.to.empty())
        area.SetSpan({options.from.empty() ? std::nullopt : ParseTime(options.from),
                      options.to.empty() ? std::nullopt : ParseTime(options.to, TimePart::kEnd)});
    return area;
}

/// Tells what was cut of a document.
class CutReport {
public:
    explicit CutReport(ChangeList& changes) : changes_(changes) {}

    void Tell(const CutResult& result, bool keeps) {
        AddRemoved("waypoint", result.waypoints, "", 0);
        AddRemoved("route point", result.routePoints, "route", result.routes);
        AddRemoved("track point", result.trackPoints, "track", result.tracks);
        if (result.holes != 0)
            Add("divided", Counted(result.holes, "line") + " divided", "holes", result.holes);
        if (result.traces != 0)
            Add("traces",
                Counted(result.traces, "element or comment", "elements or comments") +
                    (result.traces == 1 ? " removed that names a place there"
                                        : " removed that name a place there"),
                "elements", result.traces);
        if (result.withoutTime != 0 && changes_.Count() != 0)
            Add("without time",
                Counted(result.withoutTime, "point") + (result.withoutTime == 1 ? " has" : " have") +
                    " no time, and " + (result.withoutTime == 1 ? "was " : "were ") +
                    (keeps ? "removed" : "kept"),
                "points", result.withoutTime);
    }

private:
    void AddRemoved(const std::string& noun, std::size_t count, const std::string& object,
                    std::size_t objects) {
        if (count == 0)
            return;
        std::string text = Counted(count, noun) + " removed";
        if (objects != 0)
            text += ", and " + Counted(objects, object) + (count == 1 ? " with it" : " with them");
        Add("removed " + noun + "s", text, "count", count);
    }
    void Add(const std::string& kind, const std::string& text, const char* figure, std::size_t count) {
        Change change{"", "document", 0, {}, text, {{figure, static_cast<double>(count)}}};
        change.kind = kind;
        changes_.Add(std::move(change));
    }

    ChangeList& changes_;
};

} // namespace

std::optional<CutArea> ParseCircle(const std::string& text) {
    const std::vector<std::string_view> parts = SplitAtCommas(text);
    if (parts.size() != 3)
        return std::nullopt;
    const std::optional<double> latitude = ParseDegrees(parts[0], 90.0);
    const std::optional<double> longitude = ParseDegrees(parts[1], 180.0);
    const std::optional<double> radius = ParseLength(parts[2]);
    if (!latitude || !longitude || radius.value_or(0.0) <= 0.0)
        return std::nullopt;
    return CutArea::Around(*latitude, *longitude, *radius);
}

std::optional<CutArea> ParseBox(const std::string& text) {
    const std::vector<std::string_view> parts = SplitAtCommas(text);
    if (parts.size() != 4)
        return std::nullopt;
    const std::optional<double> south = ParseDegrees(parts[0], 90.0);
    const std::optional<double> west = ParseDegrees(parts[1], 180.0);
    const std::optional<double> north = ParseDegrees(parts[2], 90.0);
    const std::optional<double> east = ParseDegrees(parts[3], 180.0);
    if (!south || !west || !north || !east || *south > *north)
        return std::nullopt;
    return CutArea::Box({*south, *west, *north, *east});
}

bool Cut(const CutOptions& options, Output& standardOutput) {
    const auto edit = [&options](GpxDocument& document, ChangeList& changes) {
        const CutArea area = AreaOf(options);
        const CutResult result =
            options.keeps ? vexaTrackLib::CutTo(document, area) : vexaTrackLib::CutOut(document, area);
        CutReport(changes).Tell(result, options.keeps);
    };
    return RunEdit(options.edit, edit, standardOutput);
}

} // namespace vexagpx
