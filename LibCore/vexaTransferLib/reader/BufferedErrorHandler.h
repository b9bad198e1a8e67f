// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <xercesc/sax/ErrorHandler.hpp>
#include <xercesc/sax/SAXParseException.hpp>

#include <functional>
#include <vector>

namespace vexaTransferLib::reader {

/// Holds back what an XML parser tells its error handler until it is clear that this parse is the one that counts:
/// a file that is parsed a second time must not be complained about twice.
class BufferedErrorHandler final : public xercesc::ErrorHandler {
public:
    explicit BufferedErrorHandler(xercesc::ErrorHandler& receiver) : receiver_(receiver) {}

    /// Resets the receiver's errors and passes on what was held; from now on passes on everything at once.
    void Release();

    void warning(const xercesc::SAXParseException& exception) override;
    void error(const xercesc::SAXParseException& exception) override;
    void fatalError(const xercesc::SAXParseException& exception) override;
    /// Not passed on: a DOM parser does not either.
    void resetErrors() override {}

private:
    void Pass(std::function<void()> call);

    xercesc::ErrorHandler& receiver_;
    std::vector<std::function<void()>> held_;
    bool isReleased_ = false;
};

} // namespace vexaTransferLib::reader
