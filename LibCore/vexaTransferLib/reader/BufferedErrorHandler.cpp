// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/BufferedErrorHandler.h>

#include <utility>

namespace vexaTransferLib::reader {

using xercesc::SAXParseException;

void BufferedErrorHandler::Release() {
    if (isReleased_)
        return;
    isReleased_ = true;
    receiver_.resetErrors();
    for (const Call& call : std::exchange(calls_, {}))
        PassOn(call.severity, call.exception);
}

void BufferedErrorHandler::Take(GpxMessageSeverity severity, const SAXParseException& exception) {
    if (isReleased_)
        PassOn(severity, exception);
    else
        calls_.push_back({severity, exception});
}

void BufferedErrorHandler::PassOn(GpxMessageSeverity severity, const SAXParseException& exception) {
    switch (severity) {
    case kGpxMessageWarning:
        receiver_.warning(exception);
        break;
    case kGpxMessageError:
        receiver_.error(exception);
        break;
    case kGpxMessageFatalError:
        receiver_.fatalError(exception);
        break;
    }
}

void BufferedErrorHandler::warning(const SAXParseException& exception) {
    Take(kGpxMessageWarning, exception);
}

void BufferedErrorHandler::error(const SAXParseException& exception) {
    Take(kGpxMessageError, exception);
}

void BufferedErrorHandler::fatalError(const SAXParseException& exception) {
    Take(kGpxMessageFatalError, exception);
}

} // namespace vexaTransferLib::reader
