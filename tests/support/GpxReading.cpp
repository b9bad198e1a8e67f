// SPDX-License-Identifier: MIT
#include "support/GpxReading.h"

#include "support/CaughtAs.h"
#include "support/ContractChecks.h"

#include <vexaTransferLib/model/GpxModelAccess.h>

#include <exception>

namespace vexaTransferLib::testing_support {

GpxDocument UsedDocument() {
    GpxDocument document;
    GpxModelAccess::SetName(document, u"before");
    document.AddTrack(GpxTrack());
    return document;
}

Reading::Reading(const std::function<void(GpxParser&, GpxDocument&)>& read) {
    GpxParser parser;
    written = CaptureStandardError([&] {
        try {
            read(parser, document);
        } catch (const std::exception& exception) {
            error = std::string(CaughtAs(exception).name()) + ": " + exception.what();
        }
    });
}

Reading ReadingOfFile(const std::string& path) {
    return Reading([&](GpxParser& parser, GpxDocument& document) {
        parser.Parse(icu::UnicodeString::fromUTF8(path), document);
    });
}

Reading ReadingOfBytes(std::string_view bytes, const std::string& name) {
    return Reading([&](GpxParser& parser, GpxDocument& document) {
        parser.Parse(bytes, icu::UnicodeString::fromUTF8(name), document);
    });
}

} // namespace vexaTransferLib::testing_support
