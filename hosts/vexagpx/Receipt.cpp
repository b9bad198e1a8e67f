// SPDX-License-Identifier: MIT
#include <vexagpx/Receipt.h>

#include <cstddef>

namespace vexagpx {

using namespace vexaTransferLib;

std::string_view Word(GpxPassOverReason reason) {
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

void Receipt::ParserMessage(const GpxParserMessage& message) {
    complaints_.Add({message.severity, message.text, message.file}, {message.line, message.column});
}

void Receipt::PassedOver(const GpxPassedOver& what) {
    passed_.Add({what.element, what.reason, each_ ? what.message : Collapse(what), what.couldBeHeld},
                {what.line, what.column});
    lost_ += what.couldBeHeld ? 1 : 0;
}

/// The message, or one that stands for all messages behind the first few of a kind: they may quote the file, a
/// different text each time.
std::string Receipt::Collapse(const GpxPassedOver& what) {
    constexpr std::size_t kMostMessages = 10;
    Messages& known = messages_[{what.element, what.reason, what.couldBeHeld}];
    if (known.size() < kMostMessages)
        known.insert(what.message);
    return known.count(what.message) > 0 ? what.message : "More of this kind, which --all lists.";
}

} // namespace vexagpx
