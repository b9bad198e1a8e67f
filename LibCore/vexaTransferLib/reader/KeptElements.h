// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/Receipt.h>

#include <unicode/unistr.h>

#include <optional>
#include <vector>

namespace vexaTransferLib::reader {

/// Remembers from which element each field of one object was read, so that a host that watches is told of every
/// element that lost its field to another. Elements of the same text lose nothing.
class KeptElements {
public:
    /// What becomes of an element after its reading: it stays as long as this, or goes at once.
    enum class Elements { kStay, kGo };

    KeptElements(Receipt& receipt, Elements elements) : receipt_(receipt), elements_(elements) {}

    /// The element's value is now that of the field.
    void Keep(const char16_t* field, const NodeView& element) {
        if (receipt_.IsWanted())
            Replace(field, element);
    }
    /// The field has lost its value, and to no element.
    void Drop(const char16_t* field);
    /// The field has a value already, which stays.
    void Refuse(const char16_t* field, const NodeView& element) {
        if (receipt_.IsWanted())
            TellRefused(field, element);
    }

private:
    struct Kept {
        const char16_t* field;
        NodeView element;
        /// Of an element that goes.
        GpxPassedOver description;
        /// What ContentOf gives, when an element that goes was described or another one was compared with it.
        std::optional<icu::UnicodeString> content;
    };

    Kept Describe(const char16_t* field, const NodeView& element) const;
    static const icu::UnicodeString& ContentOf(Kept& kept);
    Kept* Find(const char16_t* field);
    void Replace(const char16_t* field, const NodeView& element);
    void TellRefused(const char16_t* field, const NodeView& element);

    Receipt& receipt_;
    Elements elements_;
    std::vector<Kept> kept_;
};

} // namespace vexaTransferLib::reader
