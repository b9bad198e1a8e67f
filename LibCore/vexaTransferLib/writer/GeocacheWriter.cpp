// SPDX-License-Identifier: MIT
#include <vexaTransferLib/writer/GeocacheWriter.h>

#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>

#include <unicode/unistr.h>

#include <string_view>
#include <vector>

namespace vexaTransferLib::writer {

namespace {

// Unlike all other elements these are written when they are empty too, and their lines end in a bare line feed.
void WriteElement(TextSink& sink, std::string_view indent, std::string_view name,
                  const icu::UnicodeString& value) {
    // In single pieces, which the compiler inlines: together they would cost a call and the copies of unknown lengths.
    sink.Ascii(indent);
    sink.Ascii("<");
    sink.Ascii(name);
    sink.Ascii(">");
    sink.Escaped(value);
    sink.Ascii("</");
    sink.Ascii(name);
    sink.Ascii(">\n");
}

void WriteLog(TextSink& sink, const GpxGroundspeakCacheLog& log) {
    constexpr std::string_view kIndent = "\t\t\t\t";
    sink.Ascii("\t\t\t<", groundspeak::kLog);
    if (log.id != 0) {
        sink.Ascii(" ", groundspeak::kId, "=\"");
        sink.Grouped(log.id);
        sink.Ascii("\"");
    }
    sink.Ascii(">\n");
    WriteElement(sink, kIndent, groundspeak::kDate, log.date);
    WriteElement(sink, kIndent, groundspeak::kType, log.type);
    WriteElement(sink, kIndent, groundspeak::kFinder, log.finder);
    WriteElement(sink, kIndent, groundspeak::kText, log.text);
    sink.Ascii("\t\t\t</", groundspeak::kLog, ">\n");
}

void WriteLogs(TextSink& sink, const std::vector<GpxGroundspeakCacheLog>& logs) {
    if (logs.empty())
        return;
    sink.Ascii("\t\t<", groundspeak::kLogs, ">\n");
    for (const GpxGroundspeakCacheLog& log : logs)
        WriteLog(sink, log);
    sink.Ascii("\t\t</", groundspeak::kLogs, ">\n");
}

void WriteTravelBugs(TextSink& sink, const std::vector<icu::UnicodeString>& names) {
    if (names.empty())
        return;
    sink.Ascii("\t\t<", groundspeak::kTravelbugs, ">\n");
    for (const icu::UnicodeString& name : names) {
        sink.Ascii("\t\t\t<", groundspeak::kTravelbug, "><", groundspeak::kName, ">");
        sink.Escaped(name);
        sink.Ascii("</", groundspeak::kName, "></", groundspeak::kTravelbug, ">\n");
    }
    sink.Ascii("\t\t</", groundspeak::kTravelbugs, ">\n");
}

} // namespace

void WriteGeocache(TextSink& sink, const GpxGroundspeakCache& cache) {
    constexpr std::string_view kIndent = "\t\t";
    sink.Ascii("\t<", groundspeak::kCache, " xmlns:groundspeak=\"", text::kGroundspeak10Uri, "\">\n");
    WriteElement(sink, kIndent, groundspeak::kName, cache.name);
    WriteElement(sink, kIndent, groundspeak::kOwner, cache.owner);
    WriteElement(sink, kIndent, groundspeak::kType, cache.type);
    WriteElement(sink, kIndent, groundspeak::kContainer, cache.container);
    WriteElement(sink, kIndent, groundspeak::kDifficulty, cache.difficulty);
    WriteElement(sink, kIndent, groundspeak::kTerrain, cache.terrain);
    WriteElement(sink, kIndent, groundspeak::kShortDescription, cache.short_description);
    WriteElement(sink, kIndent, groundspeak::kLongDescription, cache.long_description);
    WriteElement(sink, kIndent, groundspeak::kEncodedHints, cache.encoded_hints);
    WriteLogs(sink, cache.logs);
    WriteTravelBugs(sink, cache.travelbugs);
    sink.Ascii("\t</", groundspeak::kCache, ">\n");
}

} // namespace vexaTransferLib::writer
