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

/// Calls an observer; what it throws leaves as ReadAborted.
template <class Call>
auto CallObserver(Call call) {
    try {
        return call();
    } catch (...) {
        throw ReadAborted{std::current_exception()};
    }
}

/// Tells a host's observer what the node readers skip. Without an observer nothing is done, and nothing
/// is looked at.
class SkipReporter {
public:
    explicit SkipReporter(GpxReadObserver* observer) : observer_(observer) {}

    bool IsWanted() const { return observer_ != nullptr; }

    void Skip(const NodeView& element, GpxSkipReason reason, const char* message, bool isLoss) {
        if (IsWanted())
            Notify(Describe(element, reason, message, isLoss));
    }
    /// \param mustBe "that of GPX 1.1"
    /// \param isKnown the reader knows the name, if in another namespace
    void SkipForeign(const NodeView& element, const char* mustBe, bool isKnown) {
        if (IsWanted())
            NotifyForeign(element, mustBe, isKnown);
    }
    void SkipUnknown(const NodeView& element) {
        Skip(element, kGpxUnknownElement, "The library does not keep this element.", false);
    }
    /// For an element that only the other version has.
    void SkipOtherVersion(const NodeView& element, const GpxVersion& version) {
        Skip(element, kGpxOtherVersion,
             version.IsGpx10() ? "GPX 1.0 has no such element." : "GPX 1.1 has no such element.", true);
    }
    /// \param what "a number"
    void ReportUnreadable(const NodeView& element, const char* what) {
        if (IsWanted())
            NotifyUnreadable(element, what);
    }
    /// Looks whether the element has more text than its first child, the only one that is read.
    void ReportUnreadText(const NodeView& element) {
        if (IsWanted())
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

/// The same for an element by the version of its file.
void SkipForeignToGpx(SkipReporter& reporter, const GpxVersion& version, const NodeView& element,
                      bool isKnown);

} // namespace vexaTransferLib::reader
