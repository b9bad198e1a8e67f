// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxReadObserver.h>
#include <vexaTransferLib/GpxVersion.h>
#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/ReadAborted.h>

#include <unicode/unistr.h>

#include <exception>
#include <optional>
#include <string>
#include <utility>

namespace vexaTransferLib::reader {

/// Calls an observer. An exception of the observer is rethrown as ReadAborted.
template <class Call>
auto CallObserver(Call call) {
    try {
        return call();
    } catch (...) {
        throw ReadAborted{std::current_exception()};
    }
}

/// The message about a character that only XML 1.1 has.
extern const char kReplacedMessage[];

/// A text in quotation marks, in UTF-8; only the start of a long one.
std::string Quoted(const char16_t* units);
/// True for the namespaces of what a document has a place for: GPX, geocaches, the vendor's extension.
bool IsNamespaceOfDocuments(const char16_t* uri);

/// Reports to a host's observer what the node readers skip or change. Without an observer its functions
/// return at once.
class SkipReporter {
public:
    explicit SkipReporter(GpxReadObserver* observer) : observer_(observer) {}

    bool IsWanted() const { return observer_ != nullptr; }

    void Skip(const NodeView& element, GpxSkipReason reason, const char* message, bool isLoss) {
        if (!IsWanted())
            return;
        lastSkipped_ = element;
        Notify(Describe(element, reason, message, isLoss));
    }
    /// Reports an element of which the document has nothing. This is a loss if the element has content.
    void SkipContent(const NodeView& element, GpxSkipReason reason, std::string message) {
        if (IsWanted())
            NotifyContent(element, reason, std::move(message));
    }
    /// Reports an attribute of an element that is kept, or that a value of it is kept in another way.
    /// \param attribute empty when the whole element is meant
    void Report(const NodeView& element, GpxSkipReason reason, std::string message, bool isLoss,
                std::string attribute = {});
    /// \param mustBe the namespace that would be read, such as "that of GPX 1.1"
    void SkipForeign(const NodeView& element, const char* mustBe) {
        if (IsWanted())
            NotifyForeign(element, mustBe);
    }
    void SkipUnknown(const NodeView& element) {
        if (IsWanted())
            NotifyContent(element, kGpxUnknownElement, "The library does not keep this element.");
    }
    /// Reports an element that exists only in the other version of GPX.
    void SkipOtherVersion(const NodeView& element, const GpxVersion& version) {
        if (IsWanted())
            NotifyContent(element, kGpxOtherVersion,
                          version.IsGpx10() ? "GPX 1.0 has no such element."
                                            : "GPX 1.1 has no such element.");
    }
    /// \param what the expected value, such as "a number"
    void ReportUnreadable(const NodeView& element, const char* what) {
        if (IsWanted())
            NotifyUnreadable(element, what);
    }
    /// Reports the element if it has more content than its first text, which is all that is read.
    void ReportUnreadText(const NodeView& element) {
        if (IsWanted() && !element.IsKnownToBeOneText())
            NotifyUnreadText(element);
    }

    /// Reports the attributes of elements in an element of which all text is read.
    void ReportUnreadChildren(const NodeView& element) {
        if (IsWanted() && !element.IsKnownToBeOneText())
            NotifyUnreadChildren(element);
    }
    /// Reports text of an element whose children are read. The report is made once for an element.
    /// \param child one that is not an element
    void ReportTextBeside(const NodeView& element, const NodeView& child, bool& isReported) {
        if (IsWanted() && !isReported && child.IsTextWithContent()) {
            isReported = true;
            Notify(DescribeText(element));
        }
    }
    /// Reports characters that only XML 1.1 has.
    /// \param attribute the name of the attribute that has the text; null when it is the element's own
    void ReportReplaced(const NodeView& element, const icu::UnicodeString& text,
                        const char16_t* attribute = nullptr) {
        if (IsWanted() && HasCharacterOfXml11(text))
            NotifyReplaced(element, attribute);
    }

    /// \{
    /// Around the reports of an element of which only the start tag is known. EndStartTag returns true when a report
    /// of SkipContent is left open until Settle, because the element may still prove to have content.
    void BeginStartTag() { isStartTag_ = true; }
    bool EndStartTag() {
        isStartTag_ = false;
        return unsettled_.has_value();
    }
    void Settle(bool isLoss);
    /// \}

    /// The functions below say whether the reading of an element ended with a report that the whole element is skipped.
    void StartElement() { lastSkipped_ = NodeView(); }
    bool HasSkipped(const NodeView& element) const { return lastSkipped_.IsSameAs(element); }

    static GpxSkippedElement Describe(const NodeView& element, GpxSkipReason reason, std::string message,
                                      bool isLoss);
    /// For ReportTextBeside.
    static GpxSkippedElement DescribeText(const NodeView& element);
    void Notify(const GpxSkippedElement& what) {
        if (IsWanted())
            CallObserver([&] { observer_->Skipped(what); });
    }

private:
    static bool HasCharacterOfXml11(const icu::UnicodeString& text);
    void NotifyContent(const NodeView& element, GpxSkipReason reason, std::string message);
    void NotifyForeign(const NodeView& element, const char* mustBe);
    void NotifyUnreadable(const NodeView& element, const char* what);
    void NotifyUnreadText(const NodeView& element);
    void NotifyUnreadChildren(const NodeView& element);
    void NotifyReplaced(const NodeView& element, const char16_t* attribute);

    GpxReadObserver* observer_;
    NodeView lastSkipped_;
    bool isStartTag_ = false;
    std::optional<GpxSkippedElement> unsettled_;
};

/// Calls SkipForeign for an element that must be in the namespace of the file's version.
void SkipForeignToGpx(SkipReporter& reporter, const GpxVersion& version, const NodeView& element);

} // namespace vexaTransferLib::reader
