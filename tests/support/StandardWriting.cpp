// SPDX-License-Identifier: MIT
#include "support/StandardWriting.h"

#include <vexaTransferLib/GpxParser.h>

namespace vexaTransferLib::testing_support {

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

} // namespace vexaTransferLib::testing_support
