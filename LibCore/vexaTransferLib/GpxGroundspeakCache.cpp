// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxGroundspeakCache.h>

#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/writer/TextSink.h>

#include <string_view>

namespace vexaTransferLib {

namespace {

// Unlike all other elements these are written when they are empty too, and their lines end in a bare line
// feed.
void AppendElement(writer::TextSink& sink, std::string_view indent, std::string_view name,
                   const icu::UnicodeString& value) {
    sink.Ascii(indent);
    sink.Ascii("<groundspeak:");
    sink.Ascii(name);
    sink.Ascii(">");
    sink.Escaped(value);
    sink.Ascii("</groundspeak:");
    sink.Ascii(name);
    sink.Ascii(">\n");
}

} // namespace

void GpxGroundspeakCacheLog::AppendTo(writer::TextSink& sink) const {
    sink.Ascii("\t\t\t<groundspeak:log");
    if (id != 0) {
        sink.Ascii(" id=\"");
        sink.Grouped(id);
        sink.Ascii("\"");
    }
    sink.Ascii(">\n");
    AppendElement(sink, "\t\t\t\t", "date", date);
    AppendElement(sink, "\t\t\t\t", "type", type);
    AppendElement(sink, "\t\t\t\t", "finder", finder);
    AppendElement(sink, "\t\t\t\t", "text", text);
    sink.Ascii("\t\t\t</groundspeak:log>\n");
}

void GpxGroundspeakCache::Clear() {
    *this = GpxGroundspeakCache();
}

void GpxGroundspeakCache::AppendTo(writer::TextSink& sink) const {
    sink.Ascii("\t<groundspeak:cache xmlns:groundspeak=\"");
    sink.Ascii(text::kGroundspeak10Uri);
    sink.Ascii("\">\n");
    AppendElement(sink, "\t\t", "name", name);
    AppendElement(sink, "\t\t", "owner", owner);
    AppendElement(sink, "\t\t", "type", type);
    AppendElement(sink, "\t\t", "container", container);
    AppendElement(sink, "\t\t", "difficulty", difficulty);
    AppendElement(sink, "\t\t", "terrain", terrain);
    AppendElement(sink, "\t\t", "short_description", short_description);
    AppendElement(sink, "\t\t", "long_description", long_description);
    AppendElement(sink, "\t\t", "encoded_hints", encoded_hints);
    if (!logs.empty()) {
        sink.Ascii("\t\t<groundspeak:logs>\n");
        for (const GpxGroundspeakCacheLog& log : logs)
            log.AppendTo(sink);
        sink.Ascii("\t\t</groundspeak:logs>\n");
    }
    if (!travelbugs.empty()) {
        sink.Ascii("\t\t<groundspeak:travelbugs>\n");
        for (const icu::UnicodeString& travelbug : travelbugs) {
            sink.Ascii("\t\t\t<groundspeak:travelbug><groundspeak:name>");
            sink.Escaped(travelbug);
            sink.Ascii("</groundspeak:name></groundspeak:travelbug>\n");
        }
        sink.Ascii("\t\t</groundspeak:travelbugs>\n");
    }
    sink.Ascii("\t</groundspeak:cache>\n");
}

} // namespace vexaTransferLib
