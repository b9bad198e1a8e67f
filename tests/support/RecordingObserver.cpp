// SPDX-License-Identifier: MIT
#include "support/RecordingObserver.h"

#include <array>

namespace vexaTransferLib::testing_support {

namespace {

constexpr std::array<const char*, 14> kReasons = {"?",          "foreign", "unknown",    "version",  "order",
                                                  "unreadable", "refused", "incomplete", "replaced", "unread",
                                                  "rounded",    "cleaned", "invented",   "changed"};
constexpr std::array<const char*, 3> kSeverities = {"warning", "error", "fatal"};

} // namespace

const char* NameOfReason(GpxSkipReason reason) {
    return reason == kGpxTolerated ? "tolerated" : kReasons.at(reason);
}

bool RecordingObserver::Progress(std::uint64_t bytesRead, std::uint64_t bytesInAll) {
    progress.emplace_back(bytesRead, bytesInAll);
    return goesOn();
}

void RecordingObserver::ParserMessage(const GpxParserMessage& message) {
    messages += std::string(kSeverities.at(message.severity)) + " " + std::to_string(message.line) + ":" +
                std::to_string(message.column) + " " + message.text + "\n";
}

void RecordingObserver::Skipped(const GpxSkippedElement& what) {
    skipped += what.element + (what.attribute.empty() ? "" : "@" + what.attribute) + " " +
               NameOfReason(what.reason) + (what.isLoss ? " loss" : "") + ": " + what.message + "\n";
    things.push_back(what);
}

} // namespace vexaTransferLib::testing_support
