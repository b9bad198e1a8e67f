// SPDX-License-Identifier: MIT
#include <vexagpx/report/LossReportJson.h>

#include <vexagpx/output/JsonWriter.h>

#include <cstdint>
#include <string_view>

namespace vexagpx {

namespace {

class LossReportJson {
public:
    explicit LossReportJson(Output& out) : json_(out) {}

    void Begin(const DocumentSource& source) {
        json_.BeginObject();
        if (source.entry != nullptr)
            Member("entry", *source.entry);
        Member("file", source.file);
    }
    void End() { json_.EndObject(); }

    void Member(std::string_view key, const std::string& text) {
        json_.Key(key);
        // Bytes of a file name need not be UTF-8.
        json_.String(icu::UnicodeString::fromUTF8(text));
    }

    void Write(const DocumentCounts& counts);
    void WriteMessages(const LossReport& report);
    void WriteSkipped(const LossReport& report);

private:
    void Member(std::string_view key, std::uint64_t number) {
        json_.Key(key);
        json_.Number(number);
    }

    template <class Entry>
    void WriteLocations(const Entry& entry);

    JsonWriter json_;
};

void LossReportJson::Write(const DocumentCounts& counts) {
    json_.Key("contents");
    json_.BeginObject();
    Member("waypoints", counts.waypoints);
    Member("routes", counts.routes);
    Member("routePoints", counts.routePoints);
    Member("tracks", counts.tracks);
    Member("segments", counts.segments);
    Member("trackPoints", counts.trackPoints);
    Member("geocaches", counts.geocaches);
    Member("logs", counts.logs);
    Member("travelBugs", counts.travelBugs);
    json_.EndObject();
}

void LossReportJson::WriteMessages(const LossReport& report) {
    json_.Key("messages");
    json_.BeginArray();
    report.Messages().ForEach([&](const auto& entry) {
        json_.BeginObject();
        Member("severity", std::string(Word(entry.value.severity)));
        Member("text", entry.value.text);
        if (!entry.value.file.empty())
            Member("file", entry.value.file);
        WriteLocations(entry);
        json_.EndObject();
    });
    json_.EndArray();
}

void LossReportJson::WriteSkipped(const LossReport& report) {
    Member("skippedCount", report.SkippedElements().Count());
    Member("lostCount", report.LostCount());
    json_.Key("skipped");
    json_.BeginArray();
    report.SkippedElements().ForEach([&](const auto& entry) {
        json_.BeginObject();
        Member("element", entry.value.element);
        Member("reason", std::string(Word(entry.value.reason)));
        Member("message", entry.value.message);
        json_.Key("isLoss");
        json_.Bool(entry.value.isLoss);
        WriteLocations(entry);
        json_.EndObject();
    });
    json_.EndArray();
}

/// Places that are not known are left out.
template <class Entry>
void LossReportJson::WriteLocations(const Entry& entry) {
    Member("count", entry.count);
    json_.Key("places");
    json_.BeginArray();
    for (const Location& location : entry.locations) {
        if (location.line == 0)
            continue;
        json_.BeginObject();
        Member("line", location.line);
        if (location.column != 0)
            Member("column", location.column);
        json_.EndObject();
    }
    json_.EndArray();
}

} // namespace

void WriteLossReportJson(const DocumentSource& source, const DocumentCounts& counts, const LossReport& report,
                         Output& out) {
    LossReportJson json(out);
    json.Begin(source);
    json.Write(counts);
    json.WriteMessages(report);
    json.WriteSkipped(report);
    json.End();
    out.Write("\n");
}

void WriteFailureJson(const DocumentSource& source, const std::string& error, const LossReport& report,
                      Output& out) {
    LossReportJson json(out);
    json.Begin(source);
    json.Member("error", error);
    json.WriteMessages(report);
    json.End();
    out.Write("\n");
}

} // namespace vexagpx
