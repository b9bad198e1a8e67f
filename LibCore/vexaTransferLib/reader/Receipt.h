// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxReadObserver.h>
#include <vexaTransferLib/GpxVersion.h>
#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/ReadingStop.h>

#include <unicode/unistr.h>

#include <exception>
#include <string>

namespace vexaTransferLib::reader {

/// Calls an observer; what it throws leaves as ReadingStop.
template <class Call>
auto CallObserver(Call call) {
    try {
        return call();
    } catch (...) {
        throw ReadingStop{std::current_exception()};
    }
}

/// Tells a host's observer what the node readers pass over. Without an observer nothing is done, and nothing
/// is looked at.
class Receipt {
public:
    explicit Receipt(GpxReadObserver* observer) : observer_(observer) {}

    bool IsWanted() const { return observer_ != nullptr; }

    void PassOver(const NodeView& element, GpxPassOverReason reason, const char* message, bool couldBeHeld) {
        if (IsWanted())
            Tell(Describe(element, reason, message, couldBeHeld));
    }
    /// \param mustBe "that of GPX 1.1"
    /// \param isKnown the reader knows the name, if in another namespace
    void Foreign(const NodeView& element, const char* mustBe, bool isKnown) {
        if (IsWanted())
            TellForeign(element, mustBe, isKnown);
    }
    void Unknown(const NodeView& element) {
        PassOver(element, kGpxUnknownElement, "The library does not keep this element.", false);
    }
    /// For an element that only the other version has.
    void OtherVersion(const NodeView& element, const GpxVersion& version) {
        PassOver(element, kGpxOtherVersion,
                 version.IsGpx10() ? "GPX 1.0 has no such element." : "GPX 1.1 has no such element.", true);
    }
    /// \param what "a number"
    void NoSuchValue(const NodeView& element, const char* what) {
        if (IsWanted())
            TellNoSuchValue(element, what);
    }
    /// Looks whether the element has more text than its first child, the only one that is read.
    void CheckText(const NodeView& element) {
        if (IsWanted())
            TellUnreadText(element);
    }

    static GpxPassedOver Describe(const NodeView& element, GpxPassOverReason reason, std::string message,
                                  bool couldBeHeld);
    void Tell(const GpxPassedOver& what) {
        if (IsWanted())
            CallObserver([&] { observer_->PassedOver(what); });
    }

private:
    void TellForeign(const NodeView& element, const char* mustBe, bool isKnown);
    void TellNoSuchValue(const NodeView& element, const char* what);
    void TellUnreadText(const NodeView& element);

    GpxReadObserver* observer_;
};

/// The same for an element by the version of its file.
void TellForeignToGpx(Receipt& receipt, const GpxVersion& version, const NodeView& element, bool isKnown);

} // namespace vexaTransferLib::reader
