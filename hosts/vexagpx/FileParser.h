// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/Input.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>

#include <functional>
#include <string>
#include <string_view>

namespace vexagpx {

/// Place and text of what an XML parser complained about: "line 3, column 7: expected end of tag 'wpt'".
std::string Describe(const xercesc::SAXParseException& exception);

/// The library's reader, which remembers the first complaint of the XML parser.
class FileParser final : public vexaTransferLib::GpxParser {
public:
    void error(const xercesc::SAXParseException& exception) override;
    void fatalError(const xercesc::SAXParseException& exception) override;

    /// Both are false after a failure, which has been told on standard error; the document is then no result.
    bool ReadFile(const InputFile& file, vexaTransferLib::GpxDocument& document);
    /// \param name stands in messages where the path of a file would, and the document is named after it
    bool ReadBytes(std::string_view bytes, const std::string& name, vexaTransferLib::GpxDocument& document);

private:
    bool Try(const std::string& name, const std::function<void()>& parse);
    void Note(const xercesc::SAXParseException& exception);
    std::string WithDetails(const std::string& message, const std::string& argument) const;

    std::string complaint_;
};

} // namespace vexagpx
