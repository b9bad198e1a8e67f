// SPDX-License-Identifier: MIT
#include "support/StandardWriting.h"

#include <vexaTransferLib/GpxParser.h>

#include <cstddef>

namespace vexaTransferLib::testing_support {

std::string Gpx10(const std::string& content, const std::string& attributes) {
    return std::string("<gpx xmlns=\"") + kGpx10Uri + "\" version=\"1.0\" creator=\"c\"" + attributes + ">" +
           content + "</gpx>";
}

std::string Gpx11(const std::string& content, const std::string& attributes) {
    return std::string("<gpx xmlns=\"") + kGpx11Uri + "\" version=\"1.1\" creator=\"c\"" + attributes + ">" +
           content + "</gpx>";
}

std::string Waypoint(const std::string& content) {
    return "<wpt lat=\"1\" lon=\"2\">" + content + "</wpt>";
}

std::string TrackPoint(const std::string& content) {
    return "<trk><trkseg><trkpt lat=\"1\" lon=\"2\">" + content + "</trkpt></trkseg></trk>";
}

GpxDocument ReadCompletely(std::string_view bytes) {
    GpxParser parser;
    parser.SetComplete();
    GpxDocument document;
    parser.Parse(bytes, u"walk.gpx", document);
    return document;
}

StandardText::StandardText(const GpxDocument& document, const GpxVersion& version) {
    GpxStandardOptions options;
    options.version = version;
    options.unwritten = [this](const GpxUnwritten& report) { unwritten.push_back(report); };
    text = GpxStandardWriter(options).GetText(document);
}

std::string StandardText::Reports() const {
    std::string lines;
    for (const GpxUnwritten& report : unwritten)
        lines += report.object + ": " + report.element + ": " + report.message + '\n';
    return lines;
}

std::string JoinedContent(const std::string& text) {
    const std::size_t start = text.find('>', text.find("<gpx")) + 1;
    const std::size_t end = text.rfind("</gpx>");
    std::string joined;
    bool isIndent = false;
    for (std::size_t i = start; i < end; ++i) {
        isIndent = text[i] == '\n' || (isIndent && text[i] == ' ');
        if (!isIndent)
            joined += text[i];
    }
    return joined;
}

} // namespace vexaTransferLib::testing_support
