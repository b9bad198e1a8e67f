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

/// Reports to a host's observer the elements that the node readers skip. Without an observer its functions
/// return at once.
class SkipReporter {
public:
    explicit SkipReporter(GpxReadObserver* observer) : observer_(observer) {}

    bool IsWanted() const { return observer_ != nullptr; }

    void Skip(const NodeView& element, GpxSkipReason reason, const char* message, bool isLoss) {
        if (IsWanted())
            Notify(Describe(element, reason, message, isLoss));
    }
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
};

/// Calls SkipForeign for an element that must be in the namespace of the file's version.
void SkipForeignToGpx(SkipReporter& reporter, const GpxVersion& version, const NodeView& element,
                      bool isKnown);

} // namespace vexaTransferLib::reader
