// SPDX-License-Identifier: MIT
#include "support/CompleteRead.h"

#include "support/CaughtAs.h"
#include "support/ContractChecks.h"
#include "support/GpxReading.h"
#include "support/GpxText.h"
#include "support/RecordingObserver.h"

#include <vexaTransferLib/GpxError.h>

#include <exception>
#include <stdexcept>

namespace vexaTransferLib::testing_support {

namespace {

std::string DetailsText(const GpxReadErrorDetails& details) {
    return " [kind " + std::to_string(static_cast<int>(details.kind)) + ", line " +
           std::to_string(details.line) + ", parser: " + details.parserMessage + "]";
}

std::string DetailsOf(const std::exception& exception) {
    if (const auto* const error = dynamic_cast<const GpxReadError*>(&exception))
        return DetailsText(error->Details());
    const auto* const valueError = dynamic_cast<const GpxReadValueError*>(&exception);
    return valueError != nullptr ? DetailsText(valueError->Details()) : "";
}

std::string NoticesOf(const RecordingObserver& observer) {
    std::string notices;
    for (const GpxSkippedElement& what : observer.things)
        notices += what.element + " " + std::to_string(what.line) + " " + NameOfReason(what.reason) +
                   (what.isLoss ? " loss" : "") + ": " + what.message + "\n";
    return notices;
}

} // namespace

std::string ErrorOf(const std::function<void()>& action) {
    try {
        action();
        return "";
    } catch (const std::exception& exception) {
        return std::string(CaughtAs(exception).name()) + ": " + exception.what() + DetailsOf(exception);
    }
}

CompleteRead ReadCompletelyBy(const std::function<void(GpxParser&, GpxDocument&)>& read) {
    GpxParser parser;
    RecordingObserver observer;
    parser.SetObserver(&observer);
    parser.SetComplete();
    CompleteRead result;
    result.document = UsedDocument();
    result.reports =
        CaptureStandardError([&] { result.error = ErrorOf([&] { read(parser, result.document); }); });
    result.notices = NoticesOf(observer);
    return result;
}

CompleteRead ReadCompletely(std::string_view bytes, const std::optional<GpxInputLimits>& limits) {
    return ReadCompletelyBy([&](GpxParser& parser, GpxDocument& document) {
        if (limits)
            parser.SetUntrusted(*limits);
        parser.Parse(bytes, u"walk.gpx", document);
    });
}

GpxDocument DocumentOf(std::string_view bytes) {
    CompleteRead read = ReadCompletely(bytes);
    if (!read.error.empty() || !read.reports.empty())
        throw std::runtime_error(read.error + read.reports);
    return std::move(read.document);
}

GpxPoint WaypointWith(std::string_view children) {
    return *DocumentOf(Gpx11("<wpt lat='1' lon='2'>" + std::string(children) + "</wpt>")).GetWaypointIter();
}

std::string CompatibleErrorOf(std::string_view bytes) {
    GpxParser parser;
    GpxDocument document;
    std::string error;
    CaptureStandardError([&] { error = ErrorOf([&] { parser.Parse(bytes, u"walk.gpx", document); }); });
    return error;
}

std::string ErrorToExpect(std::string_view bytes) {
    const std::string ofContent =
        "[kind " + std::to_string(static_cast<int>(GpxReadErrorKind::kInvalidContent)) + ",";
    const std::string error = CompatibleErrorOf(bytes);
    return error.find(ofContent) == std::string::npos ? error : "";
}

} // namespace vexaTransferLib::testing_support
