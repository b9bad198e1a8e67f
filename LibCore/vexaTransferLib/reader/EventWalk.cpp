// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/EventWalk.h>

#include <vexaTransferLib/reader/DocumentReader.h>

namespace vexaTransferLib::reader {

// A failure behind a guard costs the child; any other ends the reading.
template <class Read>
bool EventWalk::Try(Read read) {
    try {
        if (readers_.empty()) {
            read();
            return true;
        }
        return Guarded(*readers_.back(), read);
    } catch (...) {
        failure_ = std::current_exception();
        state_ = State::kFailed;
        return false;
    }
}

bool EventWalk::StartElement(const char16_t* namespaceUri, const char16_t* localName,
                             EventTree::Place place) {
    switch (state_) {
    case State::kBetween:
        tree_.Clear();
        break;
    case State::kInTree:
        break;
    case State::kPassing:
        ++passedDepth_;
        return false;
    case State::kFailed:
        return false;
    }
    tree_.StartElement(namespaceUri, localName, place);
    return true;
}

void EventWalk::BeginContent() {
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
    Try([&] {
        RequireGpxRoot(root);
        readers_.push_back(EnterDocument(context_, root, document_));
    });
}

void EventWalk::BeginChild(const NodeView& child) {
    state_ = State::kPassing;
    passedDepth_ = 1;
    Try([&] {
        ChildReader& reader = *readers_.back();
        switch (reader.WayOf(child)) {
        case ChildReader::Way::kPassOver:
            break;
        case ChildReader::Way::kWhole:
            state_ = State::kInTree;
            break;
        case ChildReader::Way::kChildByChild:
            readers_.push_back(reader.Enter(child));
            state_ = State::kBetween;
            break;
        }
    });
}

void EventWalk::EndElement() {
    switch (state_) {
    case State::kBetween: {
        const std::unique_ptr<ChildReader> ended = std::move(readers_.back());
        readers_.pop_back();
        Try([&] { ended->Finish(); });
        break;
    }
    case State::kInTree:
        if (tree_.EndElement())
            EndWhole();
        break;
    case State::kPassing:
        if (--passedDepth_ == 0)
            state_ = State::kBetween;
        break;
    case State::kFailed:
        break;
    }
}

void EventWalk::EndWhole() {
    state_ = State::kBetween;
    Try([&] { readers_.back()->ReadWhole(tree_.Root()); });
}

void EventWalk::Finish() {
    if (!rootSeen_)
        Try([] { RequireGpxRoot(NodeView()); });
    while (state_ != State::kFailed && !readers_.empty())
        EndElement();
}

void EventWalk::RethrowFailure() const {
    if (failure_)
        std::rethrow_exception(failure_);
}

} // namespace vexaTransferLib::reader
