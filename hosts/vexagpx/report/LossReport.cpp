// SPDX-License-Identifier: MIT
#include <vexagpx/report/LossReport.h>

#include <cstddef>

namespace vexagpx {

using namespace vexaTransferLib;

std::string_view Word(GpxSkipReason reason) {
    switch (reason) {
    case kGpxForeignNamespace:
        return "foreign-namespace";
    case kGpxUnknownElement:
        return "unknown-element";
    case kGpxOtherVersion:
        return "other-version";
    case kGpxOutOfOrder:
        return "out-of-order";
    case kGpxUnreadable:
        return "unreadable";
    case kGpxRefused:
        return "refused";
    case kGpxIncomplete:
        return "incomplete";
    case kGpxReplaced:
        return "replaced";
    case kGpxUnreadAttribute:
        return "unread-attribute";
    case kGpxRounded:
        return "rounded";
    case kGpxCleaned:
        return "cleaned";
    case kGpxInvented:
        return "invented";
    case kGpxChanged:
        return "changed";
    case kGpxTolerated:
        return "tolerated";
    }
    return "unknown-reason";
}

std::string_view Word(GpxMessageSeverity severity) {
    switch (severity) {
    case kGpxMessageWarning:
        return "warning";
    case kGpxMessageError:
        return "error";
    case kGpxMessageFatalError:
        return "fatal-error";
    }
    return "unknown-severity";
}

namespace {

std::string Start(const std::string& text) {
    if (text.size() <= LossReport::kLongestText)
        return text;
    std::size_t end = LossReport::kLongestText;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) // within a character
        --end;
    return text.substr(0, end) + "...";
}

} // namespace

void LossReport::ParserMessage(const GpxParserMessage& message) {
    XmlMessage xmlMessage{message.severity, Start(message.text), Start(message.file)};
    const bool isFull = messages_.DifferentCount() >= (each_ ? kMostListed : kMostKinds);
    if (isFull && !messages_.Contains(xmlMessage))
        xmlMessage = {message.severity, More("More messages"), {}};
    messages_.Add(xmlMessage, {message.line, message.column});
}

void LossReport::Skipped(const GpxSkippedElement& what) {
    skipped_.Add(Listed(what), {what.line, what.column});
    lost_ += what.isLoss ? 1 : 0;
}

/// The element, or the one that represents all that are beyond the limits: names and messages come from the file and
/// may be different each time.
SkippedElement LossReport::Listed(const GpxSkippedElement& what) {
    SkippedElement element{Start(what.element), Start(what.attribute), what.reason, Start(what.message),
                           what.isLoss};
    if (skipped_.Contains(element))
        return element;
    const bool isFull = each_ ? skipped_.DifferentCount() >= kMostListed : kinds_.size() >= kMostKinds;
    const Kind kind{element.element, element.attribute, element.reason, element.isLoss};
    if (isFull && kinds_.find(kind) == kinds_.end())
        return {"...", {}, what.reason, More("More elements"), what.isLoss};
    std::size_t& messages = kinds_[kind];
    if (each_ ? isFull : messages == kMostMessages)
        element.message = More("More of this kind");
    else
        ++messages;
    return element;
}

std::string LossReport::More(const std::string& what) const {
    return what + (each_ ? " than are listed." : ", which --all lists.");
}

} // namespace vexagpx
