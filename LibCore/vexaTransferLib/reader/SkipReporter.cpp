// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/SkipReporter.h>

#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/IcuText.h>

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

// An element of another program is no loss, even if its name is one that the reader knows in another
// namespace.
void SkipReporter::NotifyForeign(const NodeView& element, const char* mustBe, bool isKnown) {
    const char16_t* const uri = element.NamespaceUri();
    const std::string is = uri == nullptr ? "It is in no namespace" : "Its namespace is " + Quoted(uri);
    Notify(Describe(element, kGpxForeignNamespace, is + ", not " + mustBe + ".",
                    isKnown && IsGpxNamespace(uri)));
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
    if (!element.TextContent(whole) || whole.isEmpty())
        return;
    const char16_t* const first = element.FirstChildText();
    if (first == nullptr || *first == u'\0')
        Notify(
            Describe(element, kGpxUnreadable, "Its text comes after something else and is not read.", true));
    else if (whole != text::Alias(first))
        Notify(Describe(element, kGpxUnreadable, "Only the first piece of its text is read.", true));
}

void SkipForeignToGpx(SkipReporter& reporter, const GpxVersion& version, const NodeView& element,
                      bool isKnown) {
    reporter.SkipForeign(element, version.IsGpx10() ? "that of GPX 1.0" : "that of GPX 1.1", isKnown);
}

} // namespace vexaTransferLib::reader
