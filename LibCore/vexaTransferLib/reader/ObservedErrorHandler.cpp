// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/ObservedErrorHandler.h>

#include <vexaTransferLib/reader/ReadErrors.h>
#include <vexaTransferLib/reader/SkipReporter.h>

namespace vexaTransferLib::reader {

GpxParserMessage MessageOf(GpxMessageSeverity severity, const xercesc::SAXParseException& exception) {
    GpxParserMessage message;
    message.severity = severity;
    message.line = exception.getLineNumber();
    message.column = exception.getColumnNumber();
    message.text = ToUtf8(exception.getMessage());
    message.file = ToUtf8(exception.getSystemId());
    return message;
}

void ObservedErrorHandler::Notify(GpxMessageSeverity severity, const xercesc::SAXParseException& exception) {
    if (observer_ == nullptr)
        return;
    const GpxParserMessage message = MessageOf(severity, exception);
    CallObserver([&] { observer_->ParserMessage(message); });
}

void ObservedErrorHandler::warning(const xercesc::SAXParseException& exception) {
    Notify(kGpxMessageWarning, exception);
    receiver_.warning(exception);
}

void ObservedErrorHandler::error(const xercesc::SAXParseException& exception) {
    Notify(kGpxMessageError, exception);
    receiver_.error(exception);
}

void ObservedErrorHandler::fatalError(const xercesc::SAXParseException& exception) {
    Notify(kGpxMessageFatalError, exception);
    receiver_.fatalError(exception);
}

} // namespace vexaTransferLib::reader
