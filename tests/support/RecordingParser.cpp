// SPDX-License-Identifier: MIT
#include "support/RecordingParser.h"

#include "support/TestFiles.h"

#include <xercesc/sax/SAXParseException.hpp>

#include <algorithm>

namespace vexaTransferLib::testing_support {

namespace {

bool IsMessage(const RecordingParser::Call& call) {
    return call.kind != "reset";
}

} // namespace

void RecordingParser::warning(const xercesc::SAXParseException& exception) {
    Record("warning", exception);
    GpxParser::warning(exception);
}

void RecordingParser::error(const xercesc::SAXParseException& exception) {
    Record("error", exception);
    GpxParser::error(exception);
}

void RecordingParser::fatalError(const xercesc::SAXParseException& exception) {
    Record("fatal error", exception);
    GpxParser::fatalError(exception);
}

void RecordingParser::resetErrors() {
    calls.push_back({"reset", 0, 0, {}, {}});
    GpxParser::resetErrors();
}

std::string RecordingParser::Messages() const {
    std::string lines;
    for (const Call& call : calls)
        if (IsMessage(call))
            lines += call.kind + " " + std::to_string(call.line) + ":" + std::to_string(call.column) + " " +
                     call.file + ": " + call.message + "\n";
    return lines;
}

std::size_t RecordingParser::MessageCount() const {
    return static_cast<std::size_t>(std::count_if(calls.begin(), calls.end(), IsMessage));
}

void RecordingParser::Record(const char* kind, const xercesc::SAXParseException& exception) {
    calls.push_back({kind, exception.getLineNumber(), exception.getColumnNumber(),
                     Utf8(icu::UnicodeString(exception.getSystemId())),
                     Utf8(icu::UnicodeString(exception.getMessage()))});
}

} // namespace vexaTransferLib::testing_support
