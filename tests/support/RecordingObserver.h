// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxReadObserver.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace vexaTransferLib::testing_support {

/// One word: "unreadable".
const char* NameOfReason(GpxSkipReason reason);

/// Keeps everything that is reported to it.
class RecordingObserver : public GpxReadObserver {
public:
    bool Progress(std::uint64_t bytesRead, std::uint64_t bytesInAll) override;
    void ParserMessage(const GpxParserMessage& message) override;
    void Skipped(const GpxSkippedElement& what) override;

    /// Decides whether to continue; called for every progress after that was recorded.
    std::function<bool()> goesOn = [] { return true; };

    std::vector<std::pair<std::uint64_t, std::uint64_t>> progress;
    std::string messages; ///< a line each: "error 3:7 text"
    std::string
        skipped; ///< a line each: "gpx/wpt/ele unreadable loss: message", "gpx/wpt@id unread loss: message"
    std::vector<GpxSkippedElement> things;
};

} // namespace vexaTransferLib::testing_support
