// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/ObservedErrorHandler.h>

#include <vexaTransferLib/reader/SkipReporter.h>
#include <vexaTransferLib/text/IcuText.h>

#include <string>

namespace vexaTransferLib::reader {

namespace {

std::string ToUtf8(const XMLCh* units) {
    std::string narrow;
    if (units != nullptr)
        text::Alias(units).toUTF8String(narrow);
    return narrow;
}

} // namespace

void ObservedErrorHandler::Tell(GpxMessageSeverity severity, const xercesc::SAXParseException& exception) {
    if (observer_ == nullptr)
        return;
    GpxParserMessage message;
    message.severity = severity;
    message.line = exception.getLineNumber();
    message.column = exception.getColumnNumber();
    message.text = ToUtf8(exception.getMessage());
    message.file = ToUtf8(exception.getSystemId());
    CallObserver([&] { observer_->ParserMessage(message); });
}

void ObservedErrorHandler::warning(const xercesc::SAXParseException& exception) {
    Tell(kGpxMessageWarning, exception);
    receiver_.warning(exception);
}

void ObservedErrorHandler::error(const xercesc::SAXParseException& exception) {
    Tell(kGpxMessageError, exception);
    receiver_.error(exception);
}

void ObservedErrorHandler::fatalError(const xercesc::SAXParseException& exception) {
    Tell(kGpxMessageFatalError, exception);
    receiver_.fatalError(exception);
}

} // namespace vexaTransferLib::reader
