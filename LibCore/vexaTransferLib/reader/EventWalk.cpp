// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/EventWalk.h>

#include <vexaTransferLib/reader/DocumentReader.h>
#include <vexaTransferLib/reader/ElementContent.h>

#include <utility>

namespace vexaTransferLib::reader {

// An isolated failure skips the child; any other ends the reading.
template <class Read, class Refuse>
void EventWalk::Try(Read read, Refuse refuse) {
    const bool isIsolated = !readers_.empty() && readers_.back().isolatesFailures;
    try {
        IsolateFailure(isIsolated, read, refuse);
    } catch (const ReadAborted&) {
        throw;
    } catch (...) {
        failure_ = std::current_exception();
        state_ = State::kFailed;
    }
}

template <class Read>
void EventWalk::TryChild(const NodeView& child, Read read) {
    Try(read, [&](const char* message) { context_.reporter.Skip(child, kGpxRefused, message, true); });
}

// Either completes or has no effect: when memory runs out, the element is skipped, and the reader of its
// parent continues.
template <class Make>
void EventWalk::Descend(const NodeView& node, Make makeReader) {
    Open open = {};
    if (context_.reporter.IsWanted()) {
        open.ifRefused = SkipReporter::Describe(node, kGpxRefused, {}, true);
        open.ifText = SkipReporter::DescribeText(node);
    }
    names_.reserve(names_.size() + 1);
    readers_.reserve(readers_.size() + 1);
    open.reader = makeReader();
    open.isolatesFailures = open.reader->IsolatesFailures();
    readers_.push_back(std::move(open));
    names_.push_back(node.LocalName());
}

// False for an element that is in no tree. Each element in one that is skipped is a tree of its own, for its
// attributes.
bool EventWalk::BeginTree(const TagPlace& place) {
    if (state_ == State::kSkipping)
        ++skippedDepth_;
    if (state_ != State::kBetween && !isUnsettled_)
        return false;
    tree_.Clear();
    if (state_ == State::kBetween)
        location_ = place.location;
    return true;
}

void EventWalk::BeginContent() {
    if (isUnsettled_ && HasContent(tree_.Root()))
        Settle(true);
    if (state_ != State::kBetween)
        return;
    const NodeView start = tree_.Root();
    if (rootSeen_)
        BeginChild(start);
    else
        BeginRoot(start);
}

void EventWalk::BeginRoot(const NodeView& root) {
    rootSeen_ = true;
    TryChild(root, [&] {
        RequireGpxRoot(root);
        isGpx_ = true;
        Descend(root, [&] { return EnterDocument(context_, root, document_); });
    });
}

void EventWalk::BeginChild(const NodeView& child) {
    state_ = State::kSkipping;
    skippedDepth_ = 1;
    TryChild(child, [&] {
        ChildReader& reader = *readers_.back().reader;
        switch (Classify(reader, child)) {
        case ChildReader::Visit::kSkip:
            break;
        case ChildReader::Visit::kAsTree:
            state_ = State::kInTree;
            break;
        case ChildReader::Visit::kDescend:
            Descend(child, [&] { return reader.Descend(child); });
            state_ = State::kBetween;
            break;
        }
    });
    context_.expectedChildren = 0;
}

ChildReader::Visit EventWalk::Classify(ChildReader& reader, const NodeView& child) {
    context_.reporter.BeginStartTag();
    const ChildReader::Visit visit = reader.Classify(child);
    isUnsettled_ = context_.reporter.EndStartTag();
    return visit;
}

void EventWalk::Settle(bool isLoss) {
    isUnsettled_ = false;
    context_.reporter.Settle(isLoss);
}

// Text that has content, in no tree.
void EventWalk::ReportText() {
    if (isUnsettled_)
        Settle(true);
    else if (state_ == State::kBetween && !readers_.empty() && !std::exchange(readers_.back().hasText, true))
        context_.reporter.Notify(readers_.back().ifText);
}

void EventWalk::EndElement() {
    switch (state_) {
    case State::kBetween:
        EndReader();
        break;
    case State::kInTree:
        if (tree_.EndElement())
            EndTree();
        break;
    case State::kSkipping:
        if (--skippedDepth_ == 0) {
            state_ = State::kBetween;
            Settle(false);
        }
        break;
    case State::kFailed:
        break;
    }
}

void EventWalk::EndTree() {
    state_ = State::kBetween;
    TryChild(tree_.Root(), [&] { readers_.back().reader->ReadTree(tree_.Root()); });
}

void EventWalk::EndReader() {
    Open ended = std::move(readers_.back());
    readers_.pop_back();
    names_.pop_back();
    Try([&] { ended.reader->Finish(); },
        [&](const char* message) {
            ended.ifRefused.message = message;
            context_.reporter.Notify(ended.ifRefused);
        });
}

void EventWalk::Finish() {
    if (!rootSeen_)
        TryChild(NodeView(), [] { RequireGpxRoot(NodeView()); });
    while (state_ != State::kFailed && !readers_.empty())
        EndElement();
}

void EventWalk::RethrowFailure() const {
    if (failure_)
        std::rethrow_exception(failure_);
}

} // namespace vexaTransferLib::reader
