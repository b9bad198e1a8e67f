// SPDX-License-Identifier: MIT

// Reads the input completely, as trusted and as untrusted, and asks all elements for everything that they can say.
// Stops when the default way accepts a file that is refused completely, or has another error about a file that both
// refuse, and when the two trusts give different models.

#include "DocumentType.h"
#include "Stop.h"
#include "support/ElementWalk.h"
#include "support/ModelCompare.h"

#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/GpxReadObserver.h>

#include <common/dbc.h>

#include <xercesc/util/PlatformUtils.hpp>

#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <string_view>

namespace {

using namespace vexaTransferLib;

constexpr GpxInputLimits kLowLimits{8, 400, 6, 12, 40, 12, 60, 10, 500, 30, 3000};

void StopAtReport(const char* source, int line, void*) noexcept {
    StopBecause("A contract report: " + std::string(source) + ":" + std::to_string(line));
}

/// Notices of a complete reading are no losses, but for those of characters that only XML 1.1 has.
class LossObserver : public GpxReadObserver {
    void Skipped(const GpxSkippedElement& what) override {
        if (what.isLoss != (what.reason == kGpxChanged) || what.line == 0)
            StopBecause("A loss, or a notice without a line: " + what.element + ": " + what.message);
    }
};

struct Read {
    std::string error;
    GpxDocument document;
};

Read ReadInput(std::string_view bytes, bool isComplete, const std::optional<GpxInputLimits>& limits) {
    GpxParser parser;
    LossObserver observer;
    if (isComplete) {
        parser.SetComplete();
        parser.SetObserver(&observer);
    }
    if (limits)
        parser.SetUntrusted(*limits);
    Read read;
    try {
        parser.Parse(bytes, "input", read.document);
    } catch (const std::exception& exception) {
        read.error = exception.what();
    }
    return read;
}

Read ReadCompletely(std::string_view bytes, const std::optional<GpxInputLimits>& limits) {
    const dbc::ReportReceiver former = dbc::SetReportHandler(StopAtReport, nullptr);
    Read read = ReadInput(bytes, true, limits);
    dbc::SetReportHandler(former.handler, former.context);
    if (read.error.empty() && testing_support::AskAll(read.document.GetElement()) == 0)
        StopBecause("There is no element.");
    testing_support::ContentOf(read.document.GetElement());
    return read;
}

// The default way may refuse content that is read completely, and only that.
void Compare(const Read& compatible, const Read& complete) {
    if (!complete.error.empty() && complete.error != compatible.error)
        StopBecause("by default: " + compatible.error + "\ncompletely: " + complete.error);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    xercesc::XMLPlatformUtils::Initialize();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(bytes), size);
    if (HasDocumentType(input))
        return -1;
    const Read complete = ReadCompletely(input, std::nullopt);
    Compare(ReadInput(input, false, std::nullopt), complete);
    const Read untrusted = ReadCompletely(input, GpxInputLimits());
    const testing::AssertionResult isSame =
        testing_support::IsSameModel(complete.document, untrusted.document);
    if (untrusted.error.empty() && (!complete.error.empty() || !isSame))
        StopBecause("trusted: " + complete.error + "\n" + isSame.message());
    ReadCompletely(input, kLowLimits);
    return 0;
}
