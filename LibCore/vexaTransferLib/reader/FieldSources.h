// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/SkipReporter.h>

#include <unicode/unistr.h>

#include <optional>
#include <vector>

namespace vexaTransferLib::reader {

/// Remembers from which element each field of one object was read, so that a host that watches is told of every
/// element that lost its field to another. Elements of the same text lose nothing.
class FieldSources {
public:
    /// What becomes of an element after its reading: it stays as long as this, or goes at once.
    enum class Lifetime { kLong, kShort };

    FieldSources(SkipReporter& reporter, Lifetime lifetime) : reporter_(reporter), lifetime_(lifetime) {}

    /// The element's value is now that of the field.
    void Set(const char16_t* field, const NodeView& element) {
        if (reporter_.IsWanted())
            Replace(field, element);
    }
    /// The field has lost its value, and to no element.
    void Clear(const char16_t* field);
    /// The field has a value already, which stays.
    void ReportIgnored(const char16_t* field, const NodeView& element) {
        if (reporter_.IsWanted())
            NotifyIgnored(field, element);
    }

private:
    struct Source {
        const char16_t* field;
        NodeView element;
        /// Of an element that goes.
        GpxSkippedElement description;
        /// What ContentOf gives, when an element that goes was described or another one was compared with it.
        std::optional<icu::UnicodeString> content;
    };

    Source Describe(const char16_t* field, const NodeView& element) const;
    static const icu::UnicodeString& ContentOf(Source& source);
    Source* Find(const char16_t* field);
    void Replace(const char16_t* field, const NodeView& element);
    void NotifyIgnored(const char16_t* field, const NodeView& element);

    SkipReporter& reporter_;
    Lifetime lifetime_;
    std::vector<Source> sources_;
};

} // namespace vexaTransferLib::reader
