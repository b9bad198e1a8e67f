// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/NodeView.h>
#include <vexaTransferLib/reader/ReadContext.h>
#include <vexaTransferLib/text/CheckSites.h>

#include <exception>
#include <memory>

namespace vexaTransferLib::reader {

// Functions that read the children of an element. The failure of a child is swallowed nowhere else.

/// Calls `action`. When failures are isolated, an exception that derives from std::exception is swallowed,
/// and `refuse` is called with its message. The XML parser's own exceptions (including its lack of memory)
/// and ReadAborted do not derive from it and are passed on.
template <class Action, class Refuse>
void IsolateFailure(bool isIsolated, Action action, Refuse refuse) {
    try {
        action();
    } catch (const std::exception& failure) {
        if (!isIsolated)
            throw;
        refuse(failure.what());
    }
}

/// The same; reports to the observer that the element was refused.
template <class Action>
void IsolateFailure(ReadContext& context, const NodeView& element, bool isIsolated, Action action) {
    IsolateFailure(isIsolated, action,
                   [&](const char* message) { context.reporter.Skip(element, kGpxRefused, message, true); });
}

/// The messages for a node without a child list and for a missing entry of one, and the places that the contract
/// reports name.
struct ChildMessages {
    const char* noChildren;
    const char* noChild;
    const text::CheckSite& noChildrenSite;
    const text::CheckSite& noChildSite;
};

/// Calls `read` for every child that has a local name. The failure of a child is isolated: it never makes the
/// reading of the parent fail.
/// \throws dbc::postcondition_error when the node has no child list
template <class Read>
void ForEachIsolatedChild(ReadContext& context, const NodeView& node, const ChildMessages& messages,
                          Read read) {
    text::Ensure(node.HasChildList(), messages.noChildrenSite, messages.noChildren);
    ChildWalk children(node);
    bool hasText = false;
    for (NodeView child; children.Next(child);) {
        context.Work();
        IsolateFailure(context, child.IsNull() ? node : child, true, [&] {
            text::Ensure(!child.IsNull(), messages.noChildSite, messages.noChild);
            if (child.LocalName() != nullptr)
                read(child);
            else
                context.reporter.ReportTextBeside(node, child, hasText);
        });
    }
}

/// Calls `read` for every child that has a local name. The failure of a child makes the reading of the parent
/// fail; missing entries are skipped.
template <class Read>
void ForEachNamedChild(ReadContext& context, const NodeView& node, Read read) {
    ChildWalk children(node);
    bool hasText = false;
    for (NodeView child; children.Next(child);) {
        context.Work();
        if (child.LocalName() != nullptr)
            read(child);
        else
            context.reporter.ReportTextBeside(node, child, hasText);
    }
}

/// Reads the children of one of the elements that grow long (the root, routes, tracks, segments), one child
/// at a time: a source of events then holds no more than one child at once. A tree is walked in the same way.
class ChildReader {
public:
    enum class Visit {
        kSkip,
        kAsTree, ///< ReadTree needs the child with all its descendants
        kDescend ///< Descend returns the reader of the child's children
    };

    virtual ~ChildReader() = default;

    /// True when the failure of a child never makes the reading of the parent fail: see IsolateFailure.
    virtual bool IsolatesFailures() const = 0;
    /// The message of the check that a child exists.
    virtual const char* MissingChildMessage() const = 0;
    /// The place that the contract report of that check names.
    virtual const text::CheckSite& MissingChildSite() const = 0;

    // The child that is passed to these functions is never null.

    /// Called once for each child, in their order. It may look at name, namespace and attributes.
    virtual Visit Classify(const NodeView& child) = 0;
    virtual void ReadTree(const NodeView& child) = 0;
    virtual std::unique_ptr<ChildReader> Descend(const NodeView& child);
    /// Called after the last child.
    virtual void Finish() = 0;
};

/// Walks a whole tree: all children of the node, then Finish.
void ReadChildren(ReadContext& context, ChildReader& reader, const NodeView& node);

} // namespace vexaTransferLib::reader
