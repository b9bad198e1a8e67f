// SPDX-License-Identifier: MIT
#include <vexaTransferLib/writer/GeocacheWriter.h>

#include <vexaTransferLib/text/GpxNames.h>

#include <unicode/unistr.h>

#include <string_view>
#include <vector>

namespace vexaTransferLib::writer {

namespace {

// Unlike all other elements these are written when they are empty too, and their lines end in a bare line feed.
void WriteElement(TextSink& sink, std::string_view indent, std::string_view name,
                  const icu::UnicodeString& value) {
    sink.Ascii(indent, "<groundspeak:", name, ">");
    sink.Escaped(value);
    sink.Ascii("</groundspeak:", name, ">\n");
}

void WriteLog(TextSink& sink, const GpxGroundspeakCacheLog& log) {
    constexpr std::string_view kIndent = "\t\t\t\t";
    sink.Ascii("\t\t\t<groundspeak:log");
    if (log.id != 0) {
        sink.Ascii(" id=\"");
        sink.Grouped(log.id);
        sink.Ascii("\"");
    }
    sink.Ascii(">\n");
    WriteElement(sink, kIndent, "date", log.date);
    WriteElement(sink, kIndent, "type", log.type);
    WriteElement(sink, kIndent, "finder", log.finder);
    WriteElement(sink, kIndent, "text", log.text);
    sink.Ascii("\t\t\t</groundspeak:log>\n");
}

void WriteLogs(TextSink& sink, const std::vector<GpxGroundspeakCacheLog>& logs) {
    if (logs.empty())
        return;
    sink.Ascii("\t\t<groundspeak:logs>\n");
    for (const GpxGroundspeakCacheLog& log : logs)
        WriteLog(sink, log);
    sink.Ascii("\t\t</groundspeak:logs>\n");
}

void WriteTravelBugs(TextSink& sink, const std::vector<icu::UnicodeString>& names) {
    if (names.empty())
        return;
    sink.Ascii("\t\t<groundspeak:travelbugs>\n");
    for (const icu::UnicodeString& name : names) {
        sink.Ascii("\t\t\t<groundspeak:travelbug><groundspeak:name>");
        sink.Escaped(name);
        sink.Ascii("</groundspeak:name></groundspeak:travelbug>\n");
    }
    sink.Ascii("\t\t</groundspeak:travelbugs>\n");
}

} // namespace

void WriteGeocache(TextSink& sink, const GpxGroundspeakCache& cache) {
    constexpr std::string_view kIndent = "\t\t";
    sink.Ascii("\t<groundspeak:cache xmlns:groundspeak=\"", text::kGroundspeak10Uri, "\">\n");
    WriteElement(sink, kIndent, "name", cache.name);
    WriteElement(sink, kIndent, "owner", cache.owner);
    WriteElement(sink, kIndent, "type", cache.type);
    WriteElement(sink, kIndent, "container", cache.container);
    WriteElement(sink, kIndent, "difficulty", cache.difficulty);
    WriteElement(sink, kIndent, "terrain", cache.terrain);
    WriteElement(sink, kIndent, "short_description", cache.short_description);
    WriteElement(sink, kIndent, "long_description", cache.long_description);
    WriteElement(sink, kIndent, "encoded_hints", cache.encoded_hints);
    WriteLogs(sink, cache.logs);
    WriteTravelBugs(sink, cache.travelbugs);
    sink.Ascii("\t</groundspeak:cache>\n");
}

} // namespace vexaTransferLib::writer
