// SPDX-License-Identifier: MIT
#include "support/EventsOnly.h"

#include "support/RecordingObserver.h"
#include "support/RecordingParser.h"

#include <vexaTransferLib/CleanText.h>
#include <vexaTransferLib/reader/EventReading.h>
#include <vexaTransferLib/reader/ReadAborted.h>
#include <vexaTransferLib/reader/ReadContext.h>
#include <vexaTransferLib/reader/ReadErrors.h>
#include <vexaTransferLib/reader/XmlInput.h>

#include <common/dbc.h>

#include <exception>
#include <functional>
#include <memory>
#include <utility>

namespace vexaTransferLib::testing_support {

namespace {

class Context final : public reader::ReadContext {
public:
    Context(reader::XmlInput& input, const reader::ReadSettings& settings) : ReadContext(settings.observer) {
        progress = input.GetProgress();
        if (settings.limits)
            limiter = std::make_unique<reader::ModelLimiter>(*settings.limits, input.Name());
    }

    void CleanText(icu::UnicodeString& text) override {
        try {
            cleaner_.CleanWebTextForTova(text);
        } catch (const std::exception&) { // as GpxParser does
        }
    }

private:
    vexaTransferLib::CleanText cleaner_;
};

/// Keeps the contract reports while it exists.
class Reports {
public:
    explicit Reports(std::string& lines) : before_(dbc::SetReportHandler(Add, &lines)) {}
    ~Reports() { dbc::SetReportHandler(before_.handler, before_.context); }
    Reports(const Reports&) = delete;
    Reports& operator=(const Reports&) = delete;

private:
    static void Add(const char* source, int line, void* lines) noexcept {
        *static_cast<std::string*>(lines) += std::string(source) + ":" + std::to_string(line) + "\n";
    }

    dbc::ReportReceiver before_;
};

void CheckErrors(const RecordingParser& parser, const reader::InputName& name, bool isOpened) {
    for (const RecordingParser::Call& call : parser.calls) {
        if (call.kind != "error" && call.kind != "fatal error")
            continue;
        GpxParserMessage message;
        message.line = call.line;
        message.column = call.column;
        message.text = call.message;
        reader::FailWithErrors(name, isOpened, message);
    }
}

// False for a file that needs a DOM.
bool ReadEvents(RecordingParser& parser, reader::XmlInput& input, const reader::ReadSettings& settings,
                GpxDocument& document) {
    if (settings.limits)
        input.Limit(*settings.limits, reader::InputLimiter::Extent::kFile);
    Context context(input, settings);
    reader::EventReading reading(context, input, settings);
    if (!reading.Parse())
        return false;
    CheckErrors(parser, input.Name(), reading.HasDocument());
    reading.MoveTo(document);
    return true;
}

Heard Listen(const HowRead& how,
             const std::function<void(RecordingParser&, RecordingObserver*, GpxDocument&)>& read) {
    Heard heard;
    RecordingParser parser;
    RecordingObserver observer;
    try {
        const Reports reports(heard.reports);
        read(parser, how.isObserved ? &observer : nullptr, heard.document);
    } catch (const std::exception& exception) {
        heard.error = exception.what();
    }
    heard.calls = parser.Messages() + std::to_string(parser.Resets()) + " resets\n" + observer.messages;
    for (const GpxSkippedElement& what : observer.things)
        heard.skipped += std::to_string(what.line) + ":" + std::to_string(what.column) + " " + what.element +
                         "@" + what.attribute + " " + std::to_string(what.reason) +
                         (what.isLoss ? " loss: " : ": ") + what.message + "\n";
    return heard;
}

} // namespace

Heard ReadByParse(const std::string& path, const HowRead& how) {
    return Listen(how, [&](RecordingParser& parser, RecordingObserver* observer, GpxDocument& document) {
        parser.SetObserver(observer);
        if (how.limits)
            parser.SetUntrusted(*how.limits);
        parser.Parse(icu::UnicodeString::fromUTF8(path), document);
    });
}

std::optional<Heard> ReadByEvents(const std::string& path, const HowRead& how) {
    bool isRead = false;
    Heard heard =
        Listen(how, [&](RecordingParser& parser, RecordingObserver* observer, GpxDocument& document) {
            isRead = true;
            reader::XmlInput input(icu::UnicodeString::fromUTF8(path),
                                   reader::XmlInput::AddressPolicy::kFilesOnly, observer);
            try {
                isRead = ReadEvents(parser, input, {parser, observer, how.limits}, document);
            } catch (const reader::ReadAborted& stop) {
                std::rethrow_exception(stop.reason);
            }
        });
    return isRead ? std::optional<Heard>(std::move(heard)) : std::nullopt;
}

} // namespace vexaTransferLib::testing_support
