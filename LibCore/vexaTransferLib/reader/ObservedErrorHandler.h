// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxReadObserver.h>

#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>

namespace vexaTransferLib::reader {

/// What an XML parser tells its error handler, in the words of an observer.
GpxParserMessage MessageOf(GpxMessageSeverity severity, const xercesc::SAXParseException& exception);

/// Passes on what an XML parser tells its error handler, after telling it to an observer.
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
