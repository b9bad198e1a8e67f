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
#include <string>

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
    /// Reports an attribute of an element that is kept, or that a value of it is kept in another way.
    /// \param attribute empty when the whole element is meant
    void Report(const NodeView& element, GpxSkipReason reason, std::string message, bool isLoss,
                std::string attribute = {});
    /// \param mustBe the namespace that would be read, such as "that of GPX 1.1"
    /// \param isKnown true when the reader knows an element of this name in another namespace
    void SkipForeign(const NodeView& element, const char* mustBe, bool isKnown) {
        if (IsWanted())
            NotifyForeign(element, mustBe, isKnown);
    }
    void SkipUnknown(const NodeView& element) {
        Skip(element, kGpxUnknownElement, "The library does not keep this element.", false);
    }
    /// Reports an element that exists only in the other version of GPX.
    void SkipOtherVersion(const NodeView& element, const GpxVersion& version) {
        Skip(element, kGpxOtherVersion,
             version.IsGpx10() ? "GPX 1.0 has no such element." : "GPX 1.1 has no such element.", true);
    }
    /// \param what the expected value, such as "a number"
    void ReportUnreadable(const NodeView& element, const char* what) {
        if (IsWanted())
            NotifyUnreadable(element, what);
    }
    /// Reports the element if it has more text than its first child, which is the only one that is read.
    void ReportUnreadText(const NodeView& element) {
        if (IsWanted() && !element.IsKnownToBeOneText())
            NotifyUnreadText(element);
    }

    /// The functions below say whether the reading of an element ended with a report that the whole element is skipped.
    void StartElement() { lastSkipped_ = NodeView(); }
    bool HasSkipped(const NodeView& element) const { return lastSkipped_.IsSameAs(element); }

    static GpxSkippedElement Describe(const NodeView& element, GpxSkipReason reason, std::string message,
                                      bool isLoss);
    void Notify(const GpxSkippedElement& what) {
        if (IsWanted())
            CallObserver([&] { observer_->Skipped(what); });
    }

private:
    void NotifyForeign(const NodeView& element, const char* mustBe, bool isKnown);
    void NotifyUnreadable(const NodeView& element, const char* what);
    void NotifyUnreadText(const NodeView& element);

    GpxReadObserver* observer_;
    NodeView lastSkipped_;
};

/// Calls SkipForeign for an element that must be in the namespace of the file's version.
void SkipForeignToGpx(SkipReporter& reporter, const GpxVersion& version, const NodeView& element,
                      bool isKnown);

} // namespace vexaTransferLib::reader
