// SPDX-License-Identifier: MIT
#include <vexagpx/FileParser.h>

#include <vexagpx/Messages.h>

#include <exception>
#include <new>
#include <stdexcept>

namespace vexagpx {

std::string Describe(const xercesc::SAXParseException& exception) {
    std::string text;
    // A file that could not be opened has no line.
    if (exception.getLineNumber() > 0)
        text = "line " + std::to_string(exception.getLineNumber()) + ", column " +
               std::to_string(exception.getColumnNumber()) + ": ";
    if (exception.getMessage() != nullptr)
        icu::UnicodeString(exception.getMessage()).toUTF8String(text);
    return text;
}

void FileParser::error(const xercesc::SAXParseException& exception) {
    Note(exception);
    GpxParser::error(exception);
}

void FileParser::fatalError(const xercesc::SAXParseException& exception) {
    Note(exception);
    GpxParser::fatalError(exception);
}

void FileParser::Note(const xercesc::SAXParseException& exception) {
    if (complaint_.empty())
        complaint_ = Describe(exception);
}

bool FileParser::ReadFile(const InputFile& file, vexaTransferLib::GpxDocument& document) {
    return Try(file.Argument(), [&] {
        try {
            Parse(file.Path(), document);
        } catch (const std::logic_error& failure) {
            complaint_ = file.Presented(complaint_);
            throw std::runtime_error(file.Presented(failure.what()));
        }
    });
}

bool FileParser::ReadBytes(std::string_view bytes, const std::string& name,
                           vexaTransferLib::GpxDocument& document) {
    return Try(name, [&] { Parse(bytes, icu::UnicodeString::fromUTF8(name), document); });
}

bool FileParser::Try(const std::string& name, const std::function<void()>& parse) {
    complaint_.clear();
    try {
        parse();
        return true;
    } catch (const std::bad_alloc&) {
        Complain("Out of memory. (" + name + ")");
    } catch (const std::exception& failure) {
        Complain(WithDetails(failure.what(), name));
    }
    return false;
}

std::string FileParser::WithDetails(const std::string& message, const std::string& argument) const {
    std::string details = complaint_;
    // Some messages do not say which file they are about. A path stands behind a colon.
    const std::size_t slash = argument.rfind('/');
    const std::string name = argument.substr(slash + 1);
    const bool named = message.find(": ") != std::string::npos && message.find(name) != std::string::npos;
    if (!named)
        details = details.empty() ? argument : argument + ", " + details;
    return details.empty() ? message : message + " (" + details + ")";
}

} // namespace vexagpx
