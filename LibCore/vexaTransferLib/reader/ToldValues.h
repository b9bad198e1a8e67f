// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/ReadContext.h>
#include <vexaTransferLib/reader/ValueReaders.h>

namespace vexaTransferLib::reader {

// The value readers, for those who tell what of the element they could not read.

inline bool ReadText(ReadContext& context, const NodeView& node, icu::UnicodeString& out) {
    const bool isRead = ReadText(node, out);
    context.reporter.ReportUnreadText(node);
    return isRead;
}

/// \param what said of a text that is none: "a number"
template <class Value>
bool ReadValue(ReadContext& context, const NodeView& node, bool (*read)(const NodeView&, Value&),
               const char* what, Value& out) {
    const bool isRead = read(node, out);
    if (!isRead)
        context.reporter.ReportUnreadable(node, what);
    context.reporter.ReportUnreadText(node);
    return isRead;
}

inline bool ReadDouble(ReadContext& context, const NodeView& node, double& out) {
    return ReadValue(context, node, ReadDouble, "a number", out);
}
inline bool ReadTime(ReadContext& context, const NodeView& node, double& out) {
    return ReadValue(context, node, ReadTime, "a time", out);
}
inline bool ReadFix(ReadContext& context, const NodeView& node, GpxFix& out) {
    return ReadValue(context, node, ReadFix, "a kind of fix", out);
}

} // namespace vexaTransferLib::reader
