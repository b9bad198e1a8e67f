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

    /// True when a child that fails costs no more than itself. Only what derives from std::exception is
    /// swallowed; the XML parser's own exceptions (out of memory among them) do not and pass through.
    virtual bool IsolatesFailures() const = 0;
    /// Said by the check that a child is there at all.
    virtual const char* MissingChildMessage() const = 0;
    /// Named by its contract report.
    virtual const text::CheckSite& MissingChildSite() const = 0;

    // What follows is given a child that is not null.

    /// Asked once for each child, in their order. Name, namespace and attributes may be looked at.
    virtual Visit Classify(const NodeView& child) = 0;
    virtual void ReadTree(const NodeView& child) = 0;
    virtual std::unique_ptr<ChildReader> Descend(const NodeView& child);
    /// After the last child.
    virtual void Finish() = 0;
};

/// Walks a whole tree: all children of the node, then Finish.
void ReadChildren(ReadContext& context, ChildReader& reader, const NodeView& node);

/// Calls `read`; when the reader is guarded, its failure is swallowed and `refuse` called with the message.
template <class Read, class Refuse>
void IsolateFailure(const ChildReader& reader, Read read, Refuse refuse) {
    if (!reader.IsolatesFailures()) {
        read();
        return;
    }
    try {
        read();
    } catch (const std::exception& failure) {
        refuse(failure.what());
    }
}

} // namespace vexaTransferLib::reader
