// SPDX-License-Identifier: MIT
#include <vexagpx/input/FileParser.h>

#include <vexagpx/input/InputRules.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/process/Signals.h>
#include <vexagpx/terminal/ProgressBar.h>

#include <cstdint>
#include <exception>
#include <filesystem>
#include <new>
#include <stdexcept>

namespace vexagpx {

using vexaTransferLib::GpxParserMessage;
using vexaTransferLib::GpxReadObserver;
using vexaTransferLib::GpxSkippedElement;

namespace {

/// Shows the progress of one reading, ends it after a signal, and passes on all other notifications.
class ReadingObserver final : public GpxReadObserver {
public:
    /// \param path by which the XML parser knows the document
    ReadingObserver(const std::string& name, const icu::UnicodeString& path, GpxReadObserver* next)
        : bar_(ShownName(name)), next_(next) {
        path.toUTF8String(path_);
    }

    bool Progress(std::uint64_t bytesRead, std::uint64_t bytesInAll) override {
        bar_.Update({bytesRead, bytesInAll});
        return PendingSignal() == 0;
    }

    void ParserMessage(const GpxParserMessage& message) override {
        if (next_ == nullptr)
            return;
        GpxParserMessage passedOn = message;
        if (IsDocument(message.file))
            passedOn.file.clear();
        next_->ParserMessage(passedOn);
    }

    void Skipped(const GpxSkippedElement& what) override {
        if (next_ != nullptr)
            next_->Skipped(what);
    }

private:
    bool IsDocument(const std::string& file) const {
        // The XML parser turns a relative path into an absolute one.
        const std::filesystem::path path = file;
        return file == path_ ||
               path.lexically_normal() == std::filesystem::absolute(path_).lexically_normal();
    }

    ProgressBar bar_;
    std::string path_;
    GpxReadObserver* next_;
};

class Observed {
public:
    Observed(vexaTransferLib::GpxParser& parser, GpxReadObserver& observer) : parser_(parser) {
        parser.SetObserver(&observer);
    }
    ~Observed() { parser_.SetObserver(nullptr); }
    Observed(const Observed&) = delete;
    Observed& operator=(const Observed&) = delete;

private:
    vexaTransferLib::GpxParser& parser_;
};

/// Advice for the user about a message of the library.
std::string Advice(std::string_view message) {
    const bool isRefusal = message.starts_with("The untrusted GPX file was refused: ");
    return isRefusal ? kTrustAdvice : "";
}

void StopWhenInterrupted(const std::string& name) {
    const int signal = PendingSignal();
    if (signal == 0)
        return;
    PrintError(CancelledMessage(name));
    throw Interruption{signal};
}

} // namespace

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

FileParser::FileParser(bool isTrusted) {
    if (!isTrusted)
        SetUntrusted();
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
    if (firstError_.empty())
        firstError_ = Describe(exception);
}

void FileParser::ReadFile(const InputFile& file, vexaTransferLib::GpxDocument& document) {
    Read(file.Argument(), file.Path(), [&] {
        try {
            ParseFile(file.FilePath(), document);
        } catch (const std::logic_error& failure) {
            firstError_ = file.Presented(firstError_);
            throw std::runtime_error(file.Presented(failure.what()));
        }
    });
}

void FileParser::ReadBytes(std::string_view bytes, const std::string& name,
                           vexaTransferLib::GpxDocument& document) {
    const icu::UnicodeString path = icu::UnicodeString::fromUTF8(name);
    Read(name, path, [&] { Parse(bytes, path, document); });
}

void FileParser::Read(const std::string& name, const icu::UnicodeString& path,
                      const std::function<void()>& parse) {
    try {
        Try(name, path, parse);
    } catch (const std::runtime_error&) {
        StopWhenInterrupted(name);
        throw;
    }
    // The signal may have come after the last notification of progress.
    StopWhenInterrupted(name);
}

void FileParser::Try(const std::string& name, const icu::UnicodeString& path,
                     const std::function<void()>& parse) {
    const FatalSignalMessage message(CancelledMessage(name));
    const DeferredInterrupt deferred;
    ReadingObserver observer(name, path, watcher_);
    const Observed observed(*this, observer);
    firstError_.clear();
    try {
        parse();
    } catch (const std::bad_alloc&) {
        throw std::runtime_error("Out of memory. (" + name + ")");
    } catch (const std::exception& failure) {
        throw std::runtime_error(WithDetails(failure.what(), name) + Advice(failure.what()));
    }
}

std::string FileParser::WithDetails(const std::string& message, const std::string& argument) const {
    std::string details = firstError_;
    // Some messages do not name the file. Those that do have its path after a colon.
    const std::size_t slash = argument.rfind('/');
    const std::string name = argument.substr(slash + 1);
    const bool named = message.find(": ") != std::string::npos && message.find(name) != std::string::npos;
    if (!named)
        details = details.empty() ? argument : argument + ", " + details;
    return details.empty() ? message : message + " (" + details + ")";
}

} // namespace vexagpx
