// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/report/Collapsed.h>

#include <vexaTransferLib/GpxReadObserver.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>

namespace vexagpx {

struct PassedThing {
    std::string element;
    vexaTransferLib::GpxSkipReason reason;
    std::string message;
    bool isLoss;

    bool operator<(const PassedThing& other) const {
        return std::tie(element, reason, message, isLoss) <
               std::tie(other.element, other.reason, other.message, other.isLoss);
    }
};

struct ParserComplaint {
    vexaTransferLib::GpxMessageSeverity severity;
    std::string text;
    std::string file;

    bool operator<(const ParserComplaint& other) const {
        return std::tie(severity, text, file) < std::tie(other.severity, other.text, other.file);
    }
};

/// The same word for a person and for a machine: "unknown-element".
std::string_view Word(vexaTransferLib::GpxSkipReason reason);
/// "error".
std::string_view Word(vexaTransferLib::GpxMessageSeverity severity);

/// What the reading of one document tells. Everything is counted, but the file chooses how many different things there
/// are, and how long they are: what goes beyond the limits is listed as "more" instead of by its own text.
class Receipt final : public vexaTransferLib::GpxReadObserver {
public:
    /// Different elements and reasons that are listed, and messages of each of these.
    static constexpr std::size_t kMostKinds = 1000;
    static constexpr std::size_t kMostMessages = 10;
    /// Different things that are listed when each is listed by itself.
    static constexpr std::size_t kMostListed = 100000;
    /// Of an element, a message, or a file's name, in bytes of UTF-8; the rest is an ellipsis.
    static constexpr std::size_t kLongestText = 1000;

    /// \param each keeps every thing by itself instead of counting equal ones
    explicit Receipt(bool each) : each_(each), complaints_(each), passed_(each) {}

    void ParserMessage(const vexaTransferLib::GpxParserMessage& message) override;
    void Skipped(const vexaTransferLib::GpxSkippedElement& what) override;

    const Collapsed<ParserComplaint>& Complaints() const { return complaints_; }
    const Collapsed<PassedThing>& Passed() const { return passed_; }
    /// How many of them a document could have held.
    std::uint64_t LostCount() const { return lost_; }

private:
    /// Element, reason, and whether a document could have held it.
    using Kind = std::tuple<std::string, vexaTransferLib::GpxSkipReason, bool>;

    PassedThing Listed(const vexaTransferLib::GpxSkippedElement& what);
    std::string More(const std::string& what) const;

    bool each_;
    /// How many different messages of each kind are listed.
    std::map<Kind, std::size_t> kinds_;
    Collapsed<ParserComplaint> complaints_;
    Collapsed<PassedThing> passed_;
    std::uint64_t lost_ = 0;
};

} // namespace vexagpx
