// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>

#include <string>

namespace vexagpx {

/// Place and text of what an XML parser complained about: "line 3, column 7: expected end of tag 'wpt'".
std::string Describe(const xercesc::SAXParseException& exception);

/// The library's reader, which remembers the first complaint of the XML parser.
class FileParser final : public vexaTransferLib::GpxParser {
public:
    void error(const xercesc::SAXParseException& exception) override;
    void fatalError(const xercesc::SAXParseException& exception) override;

    /// Reads a file named on the command line. False after a failure, which has been told on standard error;
    /// the document is then no result.
    bool ReadFile(const std::string& argument, vexaTransferLib::GpxDocument& document);

private:
    void Note(const xercesc::SAXParseException& exception);
    std::string WithDetails(const std::string& message, const std::string& argument) const;

    std::string complaint_;
};

} // namespace vexagpx
