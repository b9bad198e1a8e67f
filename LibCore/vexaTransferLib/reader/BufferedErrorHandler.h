// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxReadObserver.h>

#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>

#include <vector>

namespace vexaTransferLib::reader {

/// Keeps the errors that an XML parser reports until it is clear that the file need not be parsed a second
/// time. The errors of a file that is parsed twice are thus reported once.
class BufferedErrorHandler final : public xercesc::ErrorHandler {
public:
    explicit BufferedErrorHandler(xercesc::ErrorHandler& receiver) : receiver_(receiver) {}

    /// Resets the receiver's errors and passes on the kept ones. Later errors are passed on at once.
    void Release();

    void warning(const xercesc::SAXParseException& exception) override;
    void error(const xercesc::SAXParseException& exception) override;
    void fatalError(const xercesc::SAXParseException& exception) override;
    /// Is not passed on, because a DOM parser does not pass it on either.
    void resetErrors() override {}

private:
    struct Call {
        GpxMessageSeverity severity;
        xercesc::SAXParseException exception;
    };

    void Take(GpxMessageSeverity severity, const xercesc::SAXParseException& exception);
    void PassOn(GpxMessageSeverity severity, const xercesc::SAXParseException& exception);

    xercesc::ErrorHandler& receiver_;
    std::vector<Call> calls_;
    bool isReleased_ = false;
};

} // namespace vexaTransferLib::reader
