// SPDX-License-Identifier: MIT
#include <vexagpx/input/FileParser.h>

#include <vexagpx/input/FailureCause.h>
#include <vexagpx/process/Messages.h>
#include <vexagpx/process/Signals.h>
#include <vexagpx/terminal/ProgressBar.h>

#include <vexaTransferLib/GpxError.h>

#include <cstdint>
#include <exception>
#include <filesystem>
#include <new>
#include <stdexcept>

namespace vexagpx {

using vexaTransferLib::GpxParserMessage;
using vexaTransferLib::GpxReadErrorDetails;
using vexaTransferLib::GpxReadErrorKind;
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

/// "line 3, column 7: expected end of tag 'wpt'", as far as it is known.
std::string Describe(std::uint64_t line, std::uint64_t column, const std::string& message) {
    if (line == 0)
        return message;
    const std::string location = "line " + std::to_string(line) + ", column " + std::to_string(column);
    return message.empty() ? location : location + ": " + message;
}

/// The message for the user about a file that could not be read.
/// \param name of the file, as the user knows it
std::string MessageOf(const std::exception& failure, const std::string& name) {
    const GpxReadErrorDetails* const details = vexaTransferLib::FindReadErrorDetails(failure);
    std::string message = failure.what();
    std::string more = name;
    if (details != nullptr) {
        message = details->MessageFor(name);
        const std::string description = Describe(details->line, details->column, details->parserMessage);
        if (details->namesFile)
            more = description;
        else if (!description.empty())
            more += ", " + description;
    }
    return more.empty() ? message : message + " (" + more + ")";
}

/// What the user can do; empty when it is not known.
std::string AdviceFor(const std::exception& failure) {
    const GpxReadErrorDetails* const details = vexaTransferLib::FindReadErrorDetails(failure);
    if (details == nullptr)
        return {};
    if (details->kind == GpxReadErrorKind::kUntrusted || details->kind == GpxReadErrorKind::kOverLimit)
        return kTrustAdvice;
    return FailureAdvice(details->MessageFor({}) + ' ' + details->parserMessage);
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
    std::string message;
    if (exception.getMessage() != nullptr)
        icu::UnicodeString(exception.getMessage()).toUTF8String(message);
    return Describe(exception.getLineNumber(), exception.getColumnNumber(), message);
}

FileParser::FileParser(const InputRules& rules) {
    if (!rules.isTrusted)
        parser_.SetUntrusted();
    if (!rules.asHost)
        parser_.SetComplete();
}

void FileParser::ReadFile(const InputFile& file, vexaTransferLib::GpxDocument& document) {
    Read(file.Argument(), file.Path(), [&] { parser_.ParseFile(file.FilePath(), document); });
}

void FileParser::ReadBytes(std::string_view bytes, const std::string& name,
                           vexaTransferLib::GpxDocument& document) {
    const icu::UnicodeString path = icu::UnicodeString::fromUTF8(name);
    Read(name, path, [&] { parser_.Parse(bytes, path, document); });
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
    const Observed observed(parser_, observer);
    try {
        parse();
    } catch (const std::bad_alloc&) {
        throw std::runtime_error("Out of memory. (" + name + ")");
    } catch (const std::exception& failure) {
        throw std::runtime_error(MessageOf(failure, name) + AdviceFor(failure));
    }
}

} // namespace vexagpx
