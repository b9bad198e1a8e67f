// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/Input.h>
#include <vexagpx/input/InputRules.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/GpxReadObserver.h>

#include <functional>
#include <string>
#include <string_view>

namespace vexagpx {

/// The location and the text of an error of the XML parser: "line 3, column 7: expected end of tag 'wpt'".
std::string Describe(const xercesc::SAXParseException& exception);

/// Reads files with the library's reader, shows the progress, and can be interrupted. Its messages contain the first
/// error of the XML parser.
class FileParser {
public:
    explicit FileParser(const InputRules& rules);

    /// Sets who is notified, from now on, of what the reader skips and of the XML parser's messages; null for nobody.
    void Watch(vexaTransferLib::GpxReadObserver* watcher) { watcher_ = watcher; }

    /// Both stop at SIGINT and SIGTERM, with a message.
    /// \throws std::runtime_error when the document could not be read; Interruption
    void ReadFile(const InputFile& file, vexaTransferLib::GpxDocument& document);
    /// \param name used in messages instead of the path of a file; also the document is named after it
    void ReadBytes(std::string_view bytes, const std::string& name, vexaTransferLib::GpxDocument& document);

private:
    void Read(const std::string& name, const icu::UnicodeString& path, const std::function<void()>& parse);
    void Try(const std::string& name, const icu::UnicodeString& path, const std::function<void()>& parse);

    vexaTransferLib::GpxParser parser_;
    vexaTransferLib::GpxReadObserver* watcher_ = nullptr;
};

} // namespace vexagpx
