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
    for (const std::function<void()>& call : std::exchange(held_, {}))
        call();
}

void BufferedErrorHandler::Pass(std::function<void()> call) {
    if (isReleased_)
        call();
    else
        held_.push_back(std::move(call));
}

void BufferedErrorHandler::warning(const SAXParseException& exception) {
    Pass([this, exception] { receiver_.warning(exception); });
}

void BufferedErrorHandler::error(const SAXParseException& exception) {
    Pass([this, exception] { receiver_.error(exception); });
}

void BufferedErrorHandler::fatalError(const SAXParseException& exception) {
    Pass([this, exception] { receiver_.fatalError(exception); });
}

} // namespace vexaTransferLib::reader
