// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/ReadContext.h>
#include <vexaTransferLib/text/CheckSites.h>

#include <exception>
#include <utility>

namespace vexaTransferLib::reader {

/// The messages for a node without a child list and for a missing entry of one, and the places that the contract
/// reports name.
struct ChildMessages {
    const char* noChildren;
    const char* noChild;
    const text::CheckSite& noChildrenSite;
    const text::CheckSite& noChildSite;
};

/// Calls `read` for every child that has a local name, each behind a guard: one bad child never costs its
/// parent. Only what derives from std::exception is swallowed; the XML parser's own exceptions (out of memory
/// among them) do not and pass through.
/// \throws dbc::postcondition_error when the node has no child list
template <class Read>
void ForEachIsolatedChild(ReadContext& context, const NodeView& node, const ChildMessages& messages,
                          Read read) {
    text::Ensure(node.HasChildList(), messages.noChildrenSite, messages.noChildren);
    ChildWalk children(node);
    for (NodeView child; children.Next(child);) {
        context.Work();
        try {
            text::Ensure(!child.IsNull(), messages.noChildSite, messages.noChild);
            if (child.LocalName() != nullptr)
                read(child);
        } catch (const std::exception& failure) {
            context.reporter.Skip(child.IsNull() ? node : child, kGpxRefused, failure.what(), true);
        }
    }
}

/// The same without guard and messages, for the readers that skip missing entries.
template <class Read>
void ForEachNamedChild(ReadContext& context, const NodeView& node, Read read) {
    ChildWalk children(node);
    for (NodeView child; children.Next(child);) {
        context.Work();
        if (child.LocalName() != nullptr)
            read(child);
    }
}

} // namespace vexaTransferLib::reader
