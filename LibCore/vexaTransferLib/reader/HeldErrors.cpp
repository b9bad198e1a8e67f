// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/HeldErrors.h>

#include <utility>

namespace vexaTransferLib::reader {

using xercesc::SAXParseException;

void HeldErrors::Release() {
    if (isReleased_)
        return;
    isReleased_ = true;
    receiver_.resetErrors();
    for (const std::function<void()>& call : std::exchange(held_, {}))
        call();
}

void HeldErrors::Pass(std::function<void()> call) {
    if (isReleased_)
        call();
    else
        held_.push_back(std::move(call));
}

void HeldErrors::warning(const SAXParseException& exception) {
    Pass([this, exception] { receiver_.warning(exception); });
}

void HeldErrors::error(const SAXParseException& exception) {
    Pass([this, exception] { receiver_.error(exception); });
}

void HeldErrors::fatalError(const SAXParseException& exception) {
    Pass([this, exception] { receiver_.fatalError(exception); });
}

} // namespace vexaTransferLib::reader
