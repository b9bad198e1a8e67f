// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Diff.h>

#include <vexagpx/editing/ChangeList.h>
#include <vexagpx/editing/EditInput.h>
#include <vexagpx/output/JsonWriter.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/process/Utf8.h>
#include <vexagpx/terminal/DisplayText.h>
#include <vexagpx/terminal/Lines.h>

#include <vexaTrackLib/Comparison.h>

#include <cmath>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

namespace vexagpx {

using namespace vexaTransferLib;
using vexaTrackLib::Difference;

namespace {

std::string_view ObjectWord(Difference::Object object) {
    switch (object) {
    case Difference::Object::kDocument:
        return "document";
    case Difference::Object::kWaypoint:
        return "waypoint";
    case Difference::Object::kRoute:
        return "route";
    case Difference::Object::kTrack:
        return "track";
    }
    return "";
}

// What few people know by its element.
constexpr std::pair<std::string_view, std::string_view> kFieldWords[] = {
    {"ele", "height"},     {"cmt", "comment"},     {"desc", "description"},
    {"src", "source"},     {"sym", "symbol"},      {"link", "links"},
    {"cache", "geocache"}, {"trkseg", "segments"}, {"order", "order of points"},
    {"hr", "heart rate"},  {"cad", "cadence"},     {"magvar", "magnetic variation"}};

std::string FieldWord(const std::string& name) {
    for (const auto& [element, word] : kFieldWords)
        if (name == element)
            return std::string(word);
    return name;
}

/// What a person reads of one difference: parts with commas between them.
class DifferenceText {
public:
    explicit DifferenceText(const Difference& difference) : difference_(difference) {}

    std::string Make() {
        if (difference_.IsAdded())
            return "added";
        if (difference_.IsRemoved())
            return "removed";
        AddName();
        AddPlaceAndTime();
        AddPoints("added", difference_.addedPoints);
        AddPoints("removed", difference_.removedPoints);
        AddPoints("with other values", difference_.changedPoints);
        AddCache();
        AddValues();
        return text_;
    }

private:
    void Add(const std::string& part) { text_ += (text_.empty() ? "" : ", ") + part; }

    void AddName() {
        if (!difference_.oldName)
            return;
        if (difference_.name.isEmpty())
            Add("has no name any more; it was " + Utf8(*difference_.oldName));
        else
            Add(difference_.oldName->isEmpty() ? "has a name now" : "was " + Utf8(*difference_.oldName));
    }
    void AddPlaceAndTime() {
        const bool hasPoints = difference_.object == Difference::Object::kRoute ||
                               difference_.object == Difference::Object::kTrack;
        if (difference_.moved)
            Add((hasPoints ? Counted(difference_.movedPoints, "point") + " moved by up to " : "moved by ") +
                Utf8(LengthText(*difference_.moved)));
        if (difference_.retimed)
            Add((hasPoints ? Counted(difference_.retimedPoints, "time") + " changed by up to "
                           : "time changed by ") +
                (*difference_.retimed < 0.0 ? "-" : "+") +
                Utf8(DurationText(std::abs(*difference_.retimed))));
    }
    void AddPoints(const std::string& what, std::size_t count) {
        if (count != 0)
            Add(Counted(count, "point") + " " + what);
    }
    void AddCache() {
        if (difference_.addedLogs != 0)
            Add(Counted(difference_.addedLogs, "new log"));
        if (difference_.removedLogs != 0)
            Add(Counted(difference_.removedLogs, "log") + " gone");
        if (difference_.isArchived)
            Add(*difference_.isArchived ? "archived" : "no more archived");
        if (difference_.isAvailable)
            Add(*difference_.isAvailable ? "available again" : "not available");
    }
    void AddValues() {
        if (difference_.values.empty())
            return;
        std::string names;
        for (const std::string& name : difference_.values)
            names += (names.empty() ? "" : ", ") + FieldWord(name);
        text_ += (text_.empty() ? "changed: " : "; changed: ") + names;
    }

    const Difference& difference_;
    std::string text_;
};

Change ChangeOf(const Difference& difference) {
    Change change;
    change.kind = difference.IsAdded() ? "added" : difference.IsRemoved() ? "removed" : "changed";
    change.object = ObjectWord(difference.object);
    change.number = difference.newNumber != 0 ? difference.newNumber : difference.oldNumber;
    change.name = difference.name;
    change.text = DifferenceText(difference).Make();
    const auto add = [&change](std::string_view name, double figure) {
        if (figure != 0.0)
            change.figures.emplace_back(name, figure);
    };
    if (change.kind == "changed")
        add("oldNumber", static_cast<double>(difference.oldNumber));
    add("metres", std::round(difference.moved.value_or(0.0) * 100.0) / 100.0);
    add("seconds", difference.retimed.value_or(0.0) / 1000.0);
    add("pointsAdded", static_cast<double>(difference.addedPoints));
    add("pointsRemoved", static_cast<double>(difference.removedPoints));
    add("pointsMoved", static_cast<double>(difference.movedPoints));
    add("pointsRetimed", static_cast<double>(difference.retimedPoints));
    add("pointsChanged", static_cast<double>(difference.changedPoints));
    add("logsAdded", static_cast<double>(difference.addedLogs));
    add("logsRemoved", static_cast<double>(difference.removedLogs));
    if (difference.oldName)
        difference.oldName->toUTF8String(change.texts.emplace_back("oldName", "").second);
    if (difference.isArchived)
        change.flags.emplace_back("isArchived", *difference.isArchived);
    if (difference.isAvailable)
        change.flags.emplace_back("isAvailable", *difference.isAvailable);
    change.values = difference.values;
    return change;
}

void ReportJson(const DiffOptions& options, const ChangeList& changes, Output& out) {
    JsonWriter json(out);
    json.BeginObject();
    json.Member("old", options.oldFile);
    json.Member("new", options.newFile);
    changes.WriteJson(json);
    json.EndObject();
    out.Write("\n");
}

void ReportText(const DiffOptions& options, const ChangeList& changes, Output& out) {
    WriteHeading(out, ShownName(options.newFile) + ", compared with " + ShownName(options.oldFile));
    changes.WriteText(out);
    const std::string end =
        changes.Count() == 0 ? "No differences." : Counted(changes.Count(), "difference") + ".";
    WriteWhole(out, icu::UnicodeString::fromUTF8(end), 0);
}

} // namespace

int Diff(const DiffOptions& options, Output& standardOutput) {
    ChangeList changes;
    GpxDocument before;
    GpxDocument after;
    if (!RunReportingErrors(options.oldFile,
                            [&] {
                                before = ReadForEditing(options.oldFile, options.rules);
                                return true;
                            }) ||
        !RunReportingErrors(options.newFile, [&] {
            after = ReadForEditing(options.newFile, options.rules);
            return true;
        }))
        return kCannotCompare;
    for (const Difference& difference : vexaTrackLib::Compare(before, after))
        changes.Add(ChangeOf(difference));
    if (options.json)
        ReportJson(options, changes, standardOutput);
    else
        ReportText(options, changes, standardOutput);
    standardOutput.Flush();
    return changes.Count() == 0 ? 0 : 1;
}

} // namespace vexagpx
