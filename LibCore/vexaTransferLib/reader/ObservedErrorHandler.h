// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxReadObserver.h>

#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>

namespace vexaTransferLib::reader {

/// Makes the message for an observer from an error that an XML parser reports.
GpxParserMessage MessageOf(GpxMessageSeverity severity, const xercesc::SAXParseException& exception);

/// Reports the errors of an XML parser to an observer first, and then to another error handler.
class ObservedErrorHandler final : public xercesc::ErrorHandler {
public:
    /// \param observer may be null
    ObservedErrorHandler(xercesc::ErrorHandler& receiver, GpxReadObserver* observer)
        : receiver_(receiver), observer_(observer) {}

    void warning(const xercesc::SAXParseException& exception) override;
    void error(const xercesc::SAXParseException& exception) override;
    void fatalError(const xercesc::SAXParseException& exception) override;
    void resetErrors() override { receiver_.resetErrors(); }

private:
    void Notify(GpxMessageSeverity severity, const xercesc::SAXParseException& exception);

    xercesc::ErrorHandler& receiver_;
    GpxReadObserver* observer_;
};

} // namespace vexaTransferLib::reader
