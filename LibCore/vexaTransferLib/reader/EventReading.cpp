// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/EventReading.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/reader/LimitedParser.h>
#include <vexaTransferLib/reader/ReadErrors.h>

#include <utility>

namespace vexaTransferLib::reader {

namespace {

std::unique_ptr<EventParser> MakeParser(EventWalk& walk, BufferedErrorHandler& errors, const InputName& name,
                                        const ReadSettings& settings) {
    const bool isWatched = settings.observer != nullptr;
    if (!settings.limits)
        return std::make_unique<EventParser>(walk, errors, isWatched);
    return std::make_unique<LimitedParser<EventParser>>(InputLimiter(*settings.limits, name), walk, errors,
                                                        isWatched);
}

} // namespace

EventReading::EventReading(ReadContext& context, XmlInput& input, const ReadSettings& settings)
    : input_(input), walk_(context, document_), observedErrors_(settings.receiver, settings.observer),
      errors_(observedErrors_), parser_(MakeParser(walk_, errors_, input.Name(), settings)) {
    GpxModelAccess::SetName(document_, DefaultDocumentName(input.Name()));
}

bool EventReading::Parse() {
    try {
        return Feed();
    } catch (...) {
        RethrowParserException(input_.Name(), HasDocument());
    }
}

bool EventReading::Feed() {
    try {
        input_.Feed(*parser_);
    } catch (const NeedsDom&) {
        return false;
    } catch (...) {
        errors_.Release();
        throw;
    }
    errors_.Release();
    return true;
}

void EventReading::MoveTo(GpxDocument& document) {
    walk_.Finish();
    document = std::move(document_);
    if (!HasDocument())
        FailWithoutDocument(input_.Name());
    try {
        walk_.RethrowFailure();
    } catch (...) {
        RethrowContentError(input_.Name(), walk_.IsGpx(), walk_.FailureLocation());
    }
}

} // namespace vexaTransferLib::reader
