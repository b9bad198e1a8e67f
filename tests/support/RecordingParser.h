// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxParser.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vexaTransferLib::testing_support {

/// Records the calls of its error handler, and does with them what the library's parser does.
class RecordingParser : public GpxParser {
public:
    void warning(const xercesc::SAXParseException& exception) override;
    void error(const xercesc::SAXParseException& exception) override;
    void fatalError(const xercesc::SAXParseException& exception) override;
    void resetErrors() override;

    struct Call {
        std::string kind; ///< "warning", "error", "fatal error" or "reset"; a reset has nothing else
        std::uint64_t line = 0;
        std::uint64_t column = 0;
        std::string file;
        std::string message;
    };
    std::vector<Call> calls;

    /// The calls but the resets, a line each: "error 3:7 walk.gpx: no such element".
    std::string Messages() const;
    std::size_t Resets() const { return calls.size() - MessageCount(); }
    std::size_t MessageCount() const;

private:
    void Record(const char* kind, const xercesc::SAXParseException& exception);
};

} // namespace vexaTransferLib::testing_support
