// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/report/Occurrences.h>

#include <vexaTransferLib/GpxReadObserver.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>

namespace vexagpx {

struct SkippedElement {
    std::string element;
    vexaTransferLib::GpxSkipReason reason;
    std::string message;
    bool isLoss;

    bool operator<(const SkippedElement& other) const {
        return std::tie(element, reason, message, isLoss) <
               std::tie(other.element, other.reason, other.message, other.isLoss);
    }
};

struct XmlMessage {
    vexaTransferLib::GpxMessageSeverity severity;
    std::string text;
    std::string file;

    bool operator<(const XmlMessage& other) const {
        return std::tie(severity, text, file) < std::tie(other.severity, other.text, other.file);
    }
};

/// The same word for a person and for a machine: "unknown-element".
std::string_view Word(vexaTransferLib::GpxSkipReason reason);
/// "error".
std::string_view Word(vexaTransferLib::GpxMessageSeverity severity);

/// What the reading of one document tells. Everything is counted, but the file chooses how many different things there
/// are, and how long they are: what goes beyond the limits is listed as "more" instead of by its own text.
class LossReport final : public vexaTransferLib::GpxReadObserver {
public:
    /// Different elements and reasons that are listed, and messages of each of these.
    static constexpr std::size_t kMostKinds = 1000;
    static constexpr std::size_t kMostMessages = 10;
    /// Different things that are listed when each is listed by itself.
    static constexpr std::size_t kMostListed = 100000;
    /// Of an element, a message, or a file's name, in bytes of UTF-8; the rest is an ellipsis.
    static constexpr std::size_t kLongestText = 1000;

    /// \param each keeps every thing by itself instead of counting equal ones
    explicit LossReport(bool each) : each_(each), messages_(each), skipped_(each) {}

    void ParserMessage(const vexaTransferLib::GpxParserMessage& message) override;
    void Skipped(const vexaTransferLib::GpxSkippedElement& what) override;

    const Occurrences<XmlMessage>& Messages() const { return messages_; }
    const Occurrences<SkippedElement>& SkippedElements() const { return skipped_; }
    /// How many of them a document could have held.
    std::uint64_t LostCount() const { return lost_; }

private:
    /// Element, reason, and whether a document could have held it.
    using Kind = std::tuple<std::string, vexaTransferLib::GpxSkipReason, bool>;

    SkippedElement Listed(const vexaTransferLib::GpxSkippedElement& what);
    std::string More(const std::string& what) const;

    bool each_;
    /// How many different messages of each kind are listed.
    std::map<Kind, std::size_t> kinds_;
    Occurrences<XmlMessage> messages_;
    Occurrences<SkippedElement> skipped_;
    std::uint64_t lost_ = 0;
};

} // namespace vexagpx
