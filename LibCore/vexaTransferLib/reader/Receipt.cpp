// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/Receipt.h>

#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/HeldText.h>

#include <utility>

namespace vexaTransferLib::reader {

namespace {

constexpr std::int32_t kQuotedUnits = 60;

// Names and values come from the file, and may be of any length.
std::string Quoted(const char16_t* units) {
    const icu::UnicodeString start = text::AliasOfStart(units, kQuotedUnits + 1);
    const bool isCut = start.length() > kQuotedUnits;
    std::string quoted = "\"";
    start.tempSubString(0, isCut ? start.getChar32Start(kQuotedUnits) : start.length()).toUTF8String(quoted);
    return quoted + (isCut ? "...\"" : "\"");
}

bool HasOnlyOneChild(const NodeView& element) {
    ChildWalk children(element);
    NodeView child;
    return children.Next(child) && !children.Next(child);
}

bool IsGroundspeakNamespace(const char16_t* uri) {
    const icu::UnicodeString wanted = text::Alias(text::kGroundspeakNamespaceStart);
    return text::AliasOfStart(uri, wanted.length()) == wanted;
}

bool IsGpxNamespace(const char16_t* uri) {
    return uri == nullptr || Equals(uri, text::kGpx10Namespace) || Equals(uri, text::kGpx11Namespace) ||
           IsGroundspeakNamespace(uri);
}

} // namespace

GpxPassedOver Receipt::Describe(const NodeView& element, GpxPassOverReason reason, std::string message,
                                bool couldBeHeld) {
    const NodePlace place = element.Place();
    GpxPassedOver what;
    what.element = element.Path();
    what.line = place.line;
    what.column = place.column;
    what.reason = reason;
    what.message = std::move(message);
    what.couldBeHeld = couldBeHeld;
    return what;
}

// What another program keeps under a name of ours in a namespace of its own is not ours.
void Receipt::TellForeign(const NodeView& element, const char* mustBe, bool isKnown) {
    const char16_t* const uri = element.NamespaceUri();
    const std::string is = uri == nullptr ? "It is in no namespace" : "Its namespace is " + Quoted(uri);
    Tell(Describe(element, kGpxForeignNamespace, is + ", not " + mustBe + ".",
                  isKnown && IsGpxNamespace(uri)));
}

void Receipt::TellNoSuchValue(const NodeView& element, const char* what) {
    const char16_t* const text = element.FirstChildText();
    if (text != nullptr && *text != u'\0')
        Tell(Describe(element, kGpxUnreadable, Quoted(text) + " is not " + what + ".", true));
}

void Receipt::TellUnreadText(const NodeView& element) {
    if (HasOnlyOneChild(element) && element.FirstChildText() != nullptr)
        return;
    icu::UnicodeString whole;
    if (!element.TextContent(whole) || whole.isEmpty())
        return;
    const char16_t* const first = element.FirstChildText();
    if (first == nullptr || *first == u'\0')
        Tell(Describe(element, kGpxUnreadable, "Its text stands behind something else and is not read.",
                      true));
    else if (whole != text::Alias(first))
        Tell(Describe(element, kGpxUnreadable, "Only the first piece of its text is read.", true));
}

void TellForeignToGpx(Receipt& receipt, const GpxVersion& version, const NodeView& element, bool isKnown) {
    receipt.Foreign(element, version.IsGpx10() ? "that of GPX 1.0" : "that of GPX 1.1", isKnown);
}

} // namespace vexaTransferLib::reader
