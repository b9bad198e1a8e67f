// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/SkipReporter.h>

#include <vexaTransferLib/reader/ElementContent.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/IcuText.h>

#include <algorithm>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

constexpr std::int32_t kQuotedUnits = 60;

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

const char kReplacedMessage[] = "A character that XML 1.0 cannot hold becomes U+FFFD.";

// Quotes only the start of a long text, because names and values of a file may have any length.
std::string Quoted(const char16_t* units) {
    const icu::UnicodeString start = text::AliasOfStart(units, kQuotedUnits + 1);
    const bool isCut = start.length() > kQuotedUnits;
    std::string quoted = "\"";
    start.tempSubString(0, isCut ? start.getChar32Start(kQuotedUnits) : start.length()).toUTF8String(quoted);
    return quoted + (isCut ? "...\"" : "\"");
}

bool IsNamespaceOfDocuments(const char16_t* uri) {
    return IsGpxNamespace(uri) || Equals(uri, text::kTarvikNamespace);
}

GpxSkippedElement SkipReporter::Describe(const NodeView& element, GpxSkipReason reason, std::string message,
                                         bool isLoss) {
    const SourceLocation location = element.Location();
    GpxSkippedElement what;
    what.element = element.Path();
    what.line = location.line;
    what.column = location.column;
    what.reason = reason;
    what.message = std::move(message);
    what.isLoss = isLoss;
    return what;
}

void SkipReporter::Report(const NodeView& element, GpxSkipReason reason, std::string message, bool isLoss,
                          std::string attribute) {
    if (!IsWanted())
        return;
    GpxSkippedElement what = Describe(element, reason, std::move(message), isLoss);
    what.attribute = std::move(attribute);
    Notify(what);
}

GpxSkippedElement SkipReporter::DescribeText(const NodeView& element) {
    return Describe(element, kGpxUnreadable, "Its text beside its elements is not read.", true);
}

// Of an element of which only the start tag is known, no child can be looked at.
void SkipReporter::NotifyContent(const NodeView& element, GpxSkipReason reason, std::string message) {
    lastSkipped_ = element;
    GpxSkippedElement what = Describe(element, reason, std::move(message), HasContent(element));
    if (isStartTag_ && !what.isLoss)
        unsettled_ = std::move(what);
    else
        Notify(what);
}

void SkipReporter::Settle(bool isLoss) {
    if (!unsettled_)
        return;
    GpxSkippedElement what = std::move(*unsettled_);
    unsettled_.reset();
    what.isLoss = isLoss;
    Notify(what);
}

void SkipReporter::NotifyForeign(const NodeView& element, const char* mustBe) {
    const char16_t* const uri = element.NamespaceUri();
    const std::string is = uri == nullptr ? "It is in no namespace" : "Its namespace is " + Quoted(uri);
    NotifyContent(element, kGpxForeignNamespace, is + ", not " + mustBe + ".");
}

void SkipReporter::NotifyUnreadable(const NodeView& element, const char* what) {
    const char16_t* const text = element.FirstChildText();
    if (text == nullptr || *text == u'\0')
        return;
    lastSkipped_ = element;
    Notify(Describe(element, kGpxUnreadable, Quoted(text) + " is not " + what + ".", true));
}

void SkipReporter::NotifyUnreadText(const NodeView& element) {
    if (HasOnlyOneChild(element) && element.FirstChildText() != nullptr)
        return;
    icu::UnicodeString whole;
    if (!element.TextContent(whole) || whole.isEmpty()) {
        NotifyUnreadChildren(element);
        return;
    }
    const char16_t* const first = element.FirstChildText();
    if (first == nullptr || *first == u'\0')
        Notify(
            Describe(element, kGpxUnreadable, "Its text comes after something else and is not read.", true));
    else if (whole != text::Alias(first))
        Notify(Describe(element, kGpxUnreadable, "Only the first piece of its text is read.", true));
    else
        NotifyUnreadChildren(element);
}

void SkipReporter::NotifyUnreadChildren(const NodeView& element) {
    if (HasAttributesBelow(element))
        Notify(
            Describe(element, kGpxUnreadable, "The attributes of elements in its text are not read.", true));
}

bool SkipReporter::HasCharacterOfXml11(const icu::UnicodeString& text) {
    const char16_t* const units = text.getBuffer();
    return std::any_of(units, units + text.length(),
                       [](char16_t unit) { return unit < u' ' && !IsXmlBlank(unit); });
}

// Everything that is written is XML 1.0.
void SkipReporter::NotifyReplaced(const NodeView& element, const char16_t* attribute) {
    std::string name;
    if (attribute != nullptr)
        text::CopyOf(attribute).toUTF8String(name);
    Report(element, kGpxChanged, kReplacedMessage, true, std::move(name));
}

void SkipForeignToGpx(SkipReporter& reporter, const GpxVersion& version, const NodeView& element) {
    reporter.SkipForeign(element, version.IsGpx10() ? "that of GPX 1.0" : "that of GPX 1.1");
}

} // namespace vexaTransferLib::reader
