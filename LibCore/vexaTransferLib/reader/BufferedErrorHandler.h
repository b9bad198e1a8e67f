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

/// Keeps what an XML parser tells its error handler until it is clear that this parse is the one that counts: the
/// errors of a file that is parsed a second time must not be reported twice.
class BufferedErrorHandler final : public xercesc::ErrorHandler {
public:
    explicit BufferedErrorHandler(xercesc::ErrorHandler& receiver) : receiver_(receiver) {}

    /// Resets the receiver's errors and passes on what it has kept; from now on passes on everything at once.
    void Release();

    void warning(const xercesc::SAXParseException& exception) override;
    void error(const xercesc::SAXParseException& exception) override;
    void fatalError(const xercesc::SAXParseException& exception) override;
    /// Not passed on: a DOM parser does not either.
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
