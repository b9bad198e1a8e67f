// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/SkipReporter.h>

#include <boost/container/small_vector.hpp>
#include <unicode/unistr.h>

#include <memory>
#include <optional>

namespace vexaTransferLib::reader {

/// Remembers from which element each field of one object was read, so that every element whose value another
/// element replaces is reported to the observer. An element with the same text is not reported: nothing is
/// lost.
class FieldSources {
public:
    /// How long a node is valid: at least as long as this object, or only while it is read.
    enum class Lifetime { kLong, kShort };

    FieldSources(SkipReporter& reporter, Lifetime lifetime) : reporter_(reporter), lifetime_(lifetime) {}

    /// Records that the field now has the element's value.
    void Set(const char16_t* field, const NodeView& element) {
        if (reporter_.IsWanted())
            Replace(field, element);
    }
    /// Records that the field no longer has a value, although no other element has replaced it.
    void Clear(const char16_t* field);
    /// True when the field has a value from an element. Known only while there is an observer.
    bool Contains(const char16_t* field) const { return Find(field) != nullptr; }
    /// Reports an element whose value is not used because the field keeps its earlier one.
    void ReportIgnored(const char16_t* field, const NodeView& element) {
        if (reporter_.IsWanted())
            NotifyIgnored(field, element);
    }

private:
    /// What is known of an element beside its node.
    struct Details {
        /// The description of an element that is valid only while it is read.
        GpxSkippedElement description;
        /// The result of ContentOf; empty until it is needed.
        std::optional<icu::UnicodeString> content;
    };

    struct Source {
        const char16_t* field;
        NodeView element;
        /// Null until they are needed.
        std::unique_ptr<Details> details;
    };

    /// For an element that is valid only while it is read.
    static Source Describe(const char16_t* field, const NodeView& element);
    static const icu::UnicodeString& ContentOf(Source& source);
    static GpxSkippedElement AsReplaced(const Source& source);
    const Source* Find(const char16_t* field) const;
    Source* Find(const char16_t* field);
    void Replace(const char16_t* field, const NodeView& element);
    void NotifyIgnored(const char16_t* field, const NodeView& element);

    SkipReporter& reporter_;
    Lifetime lifetime_;
    /// Most objects have so few fields that nothing is allocated.
    boost::container::small_vector<Source, 4> sources_;
};

} // namespace vexaTransferLib::reader
