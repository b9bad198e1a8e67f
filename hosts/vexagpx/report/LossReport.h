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

/// What was skipped or changed: an element, an attribute, or its value.
struct SkippedElement {
    std::string element;
    std::string attribute; ///< empty for the element
    vexaTransferLib::GpxSkipReason reason;
    std::string message;
    bool isLoss;

    bool operator<(const SkippedElement& other) const {
        return std::tie(element, attribute, reason, message, isLoss) <
               std::tie(other.element, other.attribute, other.reason, other.message, other.isLoss);
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

/// The same word for people and programs: "unknown-element".
std::string_view Word(vexaTransferLib::GpxSkipReason reason);
/// "error".
std::string_view Word(vexaTransferLib::GpxMessageSeverity severity);

/// Collects what the reader skips or changes in one document, and the XML parser's messages. Everything is counted. How
/// many different elements and messages there are, and how long they are, depends on the file: those beyond the limits
/// are listed as "more" instead of by their own text.
class LossReport final : public vexaTransferLib::GpxReadObserver {
public:
    /// How many different elements and reasons are listed, and how many messages of each.
    static constexpr std::size_t kMostKinds = 1000;
    static constexpr std::size_t kMostMessages = 10;
    /// How many different elements or messages are listed when each occurrence is listed by itself.
    static constexpr std::size_t kMostListed = 100000;
    /// The bytes of an element, a message or a file name in UTF-8; an ellipsis replaces the rest.
    static constexpr std::size_t kLongestText = 1000;

    /// \param each keeps every occurrence by itself instead of counting equal ones
    explicit LossReport(bool each) : each_(each), messages_(each), skipped_(each) {}

    void ParserMessage(const vexaTransferLib::GpxParserMessage& message) override;
    void Skipped(const vexaTransferLib::GpxSkippedElement& what) override;

    const Occurrences<XmlMessage>& Messages() const { return messages_; }
    const Occurrences<SkippedElement>& SkippedElements() const { return skipped_; }
    /// How many of them are losses.
    std::uint64_t LostCount() const { return lost_; }

private:
    /// Element, attribute, reason, and whether it is a loss.
    using Kind = std::tuple<std::string, std::string, vexaTransferLib::GpxSkipReason, bool>;

    SkippedElement Listed(const vexaTransferLib::GpxSkippedElement& what);
    std::string More(const std::string& what) const;

    bool each_;
    /// How many different messages of each kind are listed already.
    std::map<Kind, std::size_t> kinds_;
    Occurrences<XmlMessage> messages_;
    Occurrences<SkippedElement> skipped_;
    std::uint64_t lost_ = 0;
};

} // namespace vexagpx
