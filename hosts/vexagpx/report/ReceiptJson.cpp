// SPDX-License-Identifier: MIT
#include <vexagpx/report/ReceiptJson.h>

#include <vexagpx/output/JsonWriter.h>

#include <cstdint>
#include <string_view>

namespace vexagpx {

namespace {

class ReceiptJson {
public:
    explicit ReceiptJson(Output& out) : json_(out) {}

    void Begin(const Origin& origin) {
        json_.BeginObject();
        if (origin.entry != nullptr)
            Member("entry", *origin.entry);
        Member("file", origin.file);
    }
    void End() { json_.EndObject(); }

    void Member(std::string_view key, const std::string& text) {
        json_.Key(key);
        // Bytes of a file name need not be UTF-8.
        json_.String(icu::UnicodeString::fromUTF8(text));
    }

    void Write(const Contents& contents);
    void WriteMessages(const Receipt& receipt);
    void WritePassed(const Receipt& receipt);

private:
    void Member(std::string_view key, std::uint64_t number) {
        json_.Key(key);
        json_.Number(number);
    }

    template <class Entry>
    void WritePlaces(const Entry& entry);

    JsonWriter json_;
};

void ReceiptJson::Write(const Contents& contents) {
    json_.Key("contents");
    json_.BeginObject();
    Member("waypoints", contents.waypoints);
    Member("routes", contents.routes);
    Member("routePoints", contents.routePoints);
    Member("tracks", contents.tracks);
    Member("segments", contents.segments);
    Member("trackPoints", contents.trackPoints);
    Member("geocaches", contents.geocaches);
    Member("logs", contents.logs);
    Member("travelBugs", contents.travelBugs);
    json_.EndObject();
}

void ReceiptJson::WriteMessages(const Receipt& receipt) {
    json_.Key("messages");
    json_.BeginArray();
    receipt.Complaints().ForEach([&](const auto& entry) {
        json_.BeginObject();
        Member("severity", std::string(Word(entry.thing.severity)));
        Member("text", entry.thing.text);
        if (!entry.thing.file.empty())
            Member("file", entry.thing.file);
        WritePlaces(entry);
        json_.EndObject();
    });
    json_.EndArray();
}

void ReceiptJson::WritePassed(const Receipt& receipt) {
    Member("passedOverCount", receipt.Passed().Count());
    Member("lostCount", receipt.LostCount());
    json_.Key("passedOver");
    json_.BeginArray();
    receipt.Passed().ForEach([&](const auto& entry) {
        json_.BeginObject();
        Member("element", entry.thing.element);
        Member("reason", std::string(Word(entry.thing.reason)));
        Member("message", entry.thing.message);
        json_.Key("isLoss");
        json_.Bool(entry.thing.isLoss);
        WritePlaces(entry);
        json_.EndObject();
    });
    json_.EndArray();
}

/// Places that are not known are left out.
template <class Entry>
void ReceiptJson::WritePlaces(const Entry& entry) {
    Member("count", entry.count);
    json_.Key("places");
    json_.BeginArray();
    for (const Place& place : entry.places) {
        if (place.line == 0)
            continue;
        json_.BeginObject();
        Member("line", place.line);
        if (place.column != 0)
            Member("column", place.column);
        json_.EndObject();
    }
    json_.EndArray();
}

} // namespace

void WriteReceiptJson(const Origin& origin, const Contents& contents, const Receipt& receipt, Output& out) {
    ReceiptJson json(out);
    json.Begin(origin);
    json.Write(contents);
    json.WriteMessages(receipt);
    json.WritePassed(receipt);
    json.End();
    out.Write("\n");
}

void WriteFailureJson(const Origin& origin, const std::string& error, const Receipt& receipt, Output& out) {
    ReceiptJson json(out);
    json.Begin(origin);
    json.Member("error", error);
    json.WriteMessages(receipt);
    json.End();
    out.Write("\n");
}

} // namespace vexagpx
