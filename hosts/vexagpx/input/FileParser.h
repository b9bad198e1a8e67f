// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/Input.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/GpxReadObserver.h>

#include <functional>
#include <string>
#include <string_view>

namespace vexagpx {

/// Place and text of what an XML parser complained about: "line 3, column 7: expected end of tag 'wpt'".
std::string Describe(const xercesc::SAXParseException& exception);

/// The library's reader, which remembers the first error of the XML parser.
class FileParser final : public vexaTransferLib::GpxParser {
public:
    explicit FileParser(bool isTrusted);

    void error(const xercesc::SAXParseException& exception) override;
    void fatalError(const xercesc::SAXParseException& exception) override;

    /// Told, from now on, what the readings pass over and what the XML parser says; null takes it away.
    void Watch(vexaTransferLib::GpxReadObserver* watcher) { watcher_ = watcher; }

    /// Both show their progress and stop at SIGINT and SIGTERM, which is told.
    /// \throws std::runtime_error when the document is no result; Interruption
    void ReadFile(const InputFile& file, vexaTransferLib::GpxDocument& document);
    /// \param name stands in messages where the path of a file would, and the document is named after it
    void ReadBytes(std::string_view bytes, const std::string& name, vexaTransferLib::GpxDocument& document);

private:
    void Read(const std::string& name, const icu::UnicodeString& path, const std::function<void()>& parse);
    void Try(const std::string& name, const icu::UnicodeString& path, const std::function<void()>& parse);
    void Note(const xercesc::SAXParseException& exception);
    std::string WithDetails(const std::string& message, const std::string& argument) const;

    std::string firstError_;
    vexaTransferLib::GpxReadObserver* watcher_ = nullptr;
};

} // namespace vexagpx
