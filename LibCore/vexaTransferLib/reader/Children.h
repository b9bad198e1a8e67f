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

// The ways to read the children of an element, and the one place where the failure of a child is swallowed.

/// Calls `action`. When failures are isolated, one is swallowed, and `refuse` is called with its message. Only what
/// derives from std::exception is swallowed: the XML parser's own exceptions (out of memory among them) do not, and
/// ReadAborted does not either.
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

/// The same, where the observer is told that the element was refused.
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

/// Calls `read` for every child that has a local name. The failure of a child is isolated, so that it never costs the
/// parent.
/// \throws dbc::postcondition_error when the node has no child list
template <class Read>
void ForEachIsolatedChild(ReadContext& context, const NodeView& node, const ChildMessages& messages,
                          Read read) {
    text::Ensure(node.HasChildList(), messages.noChildrenSite, messages.noChildren);
    ChildWalk children(node);
    for (NodeView child; children.Next(child);) {
        context.Work();
        IsolateFailure(context, child.IsNull() ? node : child, true, [&] {
            text::Ensure(!child.IsNull(), messages.noChildSite, messages.noChild);
            if (child.LocalName() != nullptr)
                read(child);
        });
    }
}

/// Calls `read` for every child that has a local name. The failure of a child is that of the parent; missing entries
/// are skipped.
template <class Read>
void ForEachNamedChild(ReadContext& context, const NodeView& node, Read read) {
    ChildWalk children(node);
    for (NodeView child; children.Next(child);) {
        context.Work();
        if (child.LocalName() != nullptr)
            read(child);
    }
}

/// Reads the children of one of the elements that grow long (the root, routes, tracks, segments), one child at
/// a time: a source of events need not hold more than one child, and a tree is walked the same way.
class ChildReader {
public:
    enum class Visit {
        kSkip,
        kAsTree, ///< ReadTree wants the child with all below it
        kDescend ///< Descend gives the reader of its children
    };

    virtual ~ChildReader() = default;

    /// True when the failure of a child never costs the parent: see IsolateFailure.
    virtual bool IsolatesFailures() const = 0;
    /// The message of the check that a child exists.
    virtual const char* MissingChildMessage() const = 0;
    /// The place that the contract report of that check names.
    virtual const text::CheckSite& MissingChildSite() const = 0;

    // The functions below are given a child that is not null.

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
