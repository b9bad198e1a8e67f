// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/reader/Children.h>
#include <vexaTransferLib/reader/EventTree.h>
#include <vexaTransferLib/reader/ReadContext.h>

#include <exception>
#include <memory>
#include <string_view>
#include <vector>

namespace vexaTransferLib::reader {

/// Reads a document from the events of one parse: the long elements child by child, every other child as a small
/// tree when it has ended. A failure of the reading is kept, for the file may still prove ill-formed, which comes
/// first; what is left of the file is then skipped.
class EventWalk {
public:
    EventWalk(ReadContext& context, GpxDocument& document) : context_(context), document_(document) {}

    // The events. An element's attributes come between its start and its Begin.

    /// True when its attributes are wanted.
    bool StartElement(const char16_t* namespaceUri, const char16_t* localName, SourceLocation location);
    void AddAttribute(const char16_t* qualifiedName, const char16_t* value) {
        tree_.AddAttribute(qualifiedName, value);
    }
    void BeginContent();
    void EndElement();
    void AddText(std::u16string_view text) {
        if (state_ == State::kInTree)
            tree_.AddText(text);
    }
    void AddCData(std::u16string_view text) {
        if (state_ == State::kInTree)
            tree_.AddCData(text);
    }
    void AddOther() {
        if (state_ == State::kInTree)
            tree_.AddOther();
    }

    /// After the parse: ends the elements that it has left open, as those of a file whose host does not mind its
    /// errors.
    void Finish();
    /// Throws what the reading failed with.
    void RethrowFailure() const;

private:
    enum class State {
        kBetween,  ///< the children of the innermost reader come next
        kInTree,   ///< within a child that is read whole
        kSkipping, ///< within a child that is skipped
        kFailed
    };

    void BeginRoot(const NodeView& root);
    void BeginChild(const NodeView& child);
    void EndTree();
    void EndReader();
    template <class Make>
    void Descend(const NodeView& node, Make makeReader);
    template <class Read, class Refuse>
    void Try(Read read, Refuse refuse);
    template <class Read>
    void TryChild(const NodeView& child, Read read);

    struct Open {
        std::unique_ptr<ChildReader> reader;
        GpxSkippedElement ifRefused; ///< for its end, where its node is gone; empty when nobody watches
    };

    ReadContext& context_;
    GpxDocument& document_;
    /// The names of the elements that have a reader.
    std::vector<const char16_t*> names_;
    std::vector<Open> readers_;
    EventTree tree_{names_};
    State state_ = State::kBetween;
    bool rootSeen_ = false;
    std::size_t skippedDepth_ = 0;
    std::exception_ptr failure_;
};

} // namespace vexaTransferLib::reader
