// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxPoint.h>
#include <vexaTransferLib/GpxVersion.h>
#include <vexaTransferLib/reader/ChangedValues.h>
#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/ReadContext.h>
#include <vexaTransferLib/text/GpxNames.h>

#include <unicode/unistr.h>

#include <string>

namespace vexaTransferLib::reader {

// Readers of one value. Each returns false (or null) and leaves its output unchanged when there is no value.
// The exception is a number followed by other characters: it is stored although false is returned.

/// The element's non-empty first-child text. A null node writes the contract report.
const char16_t* ElementText(const NodeView& node);
/// The non-empty value of the attribute with this qualified name. A null node writes the contract report.
const char16_t* AttributeText(const NodeView& node, const char16_t* name);

/// Converts to the local code page of the XML parser; false for null.
bool ToNarrow(const char16_t* text, std::string& out);

bool ReadText(const NodeView& node, icu::UnicodeString& out);
bool ReadText(const NodeView& node, std::string& out);
bool ReadTextAttribute(const NodeView& node, const char16_t* name, icu::UnicodeString& out);
bool ReadDouble(const NodeView& node, Number& out);
bool ReadDouble(const NodeView& node, double& out);
bool ReadDoubleAttribute(const NodeView& node, const char16_t* name, Number& out);
bool ReadDoubleAttribute(const NodeView& node, const char16_t* name, double& out);
bool ReadTime(const NodeView& node, double& out, text::TimeLosses& losses);
bool ReadTime(const NodeView& node, double& out);
bool ReadFix(const NodeView& node, GpxFix& out);

/// A number as `strtod` of the classic locale reads it; false when empty or when something follows it.
bool ReadNumber(const char* text, double& out);

// The readers of an element that have a context report the content that they could not read.

/// \param what the expected value, for the report of a text that is not one: "a number"
template <class Value>
bool ReadValue(ReadContext& context, const NodeView& node, bool (*read)(const NodeView&, Value&),
               const char* what, Value& out) {
    const bool isRead = read(node, out);
    if (!isRead)
        context.reporter.ReportUnreadable(node, what);
    context.reporter.ReportUnreadText(node);
    return isRead;
}

/// Every text can be read. Text after the first piece is not read and is reported.
inline bool ReadText(ReadContext& context, const NodeView& node, icu::UnicodeString& out) {
    const bool isRead = ReadText(node, out);
    context.reporter.ReportUnreadText(node);
    if (isRead)
        context.reporter.ReportReplaced(node, out);
    return isRead;
}
inline bool ReadDouble(ReadContext& context, const NodeView& node, Number& out) {
    return ReadValue<Number>(context, node, ReadDouble, "a number", out);
}
inline bool ReadFix(ReadContext& context, const NodeView& node, GpxFix& out) {
    return ReadValue<GpxFix>(context, node, ReadFix, "a kind of fix", out);
}
/// Also reports what of the time is not written.
inline bool ReadTime(ReadContext& context, const NodeView& node, double& out) {
    text::TimeLosses losses;
    const bool isRead = ReadTime(node, out, losses);
    if (isRead)
        ReportTimeLosses(context.reporter, node, nullptr, out, losses);
    else
        context.reporter.ReportUnreadable(node, "a time");
    context.reporter.ReportUnreadText(node);
    return isRead;
}

/// \throws dbc::precondition_error
[[noreturn]] void FailWithoutNamespace(const GpxVersion& version);
/// True when the node is in the standard namespace of the version.
/// \throws dbc::precondition_error for a version that has none
inline bool IsStandard(const GpxVersion& version, const NodeView& node) {
    if (version.IsGpx11())
        return Equals(node.NamespaceUri(), text::kGpx11Namespace);
    if (version.IsGpx10())
        return Equals(node.NamespaceUri(), text::kGpx10Namespace);
    FailWithoutNamespace(version);
}
/// True when the node is in one of the namespaces of geocaches. A null node writes the contract report.
bool IsGroundspeak(const NodeView& node);

} // namespace vexaTransferLib::reader
