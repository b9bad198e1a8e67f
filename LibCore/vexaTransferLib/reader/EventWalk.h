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

/// Reads a document from the events of one parse, whether they come from the XML parser or from the lexer of plain
/// files: the long elements child by child, every other child as a small tree when it has ended. A failure of the
/// reading is kept until the parse has ended, and the rest of the file is skipped: if the file proves ill-formed, that
/// is the error to report.
class EventWalk {
public:
    EventWalk(ReadContext& context, GpxDocument& document) : context_(context), document_(document) {}

    /// Before the events of a plain file, whose texts are raw.
    void ReadFrom(ByteWindow& window) { tree_.ReadFrom(window); }
    /// The place from which the window must keep its bytes: not after \p next, where the next event starts.
    std::uint64_t KeptFrom(std::uint64_t next) const {
        return state_ == State::kInTree ? tree_.RootBegin() : next;
    }

    /// How many children the next element has that may become objects of the model. Only a hint, and may be left out.
    void ExpectChildren(std::uint64_t count) { context_.expectedChildren = count; }

    // The events. An element's attributes come between StartElement and BeginContent.

    /// True when the next element may end the reading: the root or one of its children. Its location is then used, and
    /// otherwise only for an observer.
    bool WantsLocation() const { return state_ == State::kBetween && readers_.size() <= 1; }
    /// Returns true when the attributes of the element are needed.
    bool StartElement(const char16_t* namespaceUri, const char16_t* localName, const TagPlace& place) {
        if (state_ != State::kInTree && !BeginTree(place))
            return false;
        tree_.StartElement(namespaceUri, localName, place);
        return true;
    }
    /// \param value zero-terminated, or a RawText
    template <class Value>
    void AddAttribute(const char16_t* qualifiedName, const Value& value, const char16_t* namespaceUri) {
        tree_.AddAttribute(qualifiedName, value, namespaceUri);
    }
    void BeginContent();
    void EndElement();
    /// \param text a std::u16string_view or a RawText
    template <class Text>
    void AddText(const Text& text) {
        if (state_ == State::kInTree)
            tree_.AddText(text);
        else if (context_.reporter.IsWanted() && tree_.HasContent(text))
            ReportText();
    }
    template <class Text>
    void AddCData(const Text& text) {
        if (state_ == State::kInTree)
            tree_.AddCData(text);
        else if (context_.reporter.IsWanted() && tree_.HasContent(text))
            ReportText();
    }
    void AddOther() {
        if (state_ == State::kInTree)
            tree_.AddOther();
    }

    /// After the parse: ends the elements that are still open. There are such elements when the host ignores
    /// the errors of an ill-formed file.
    void Finish();
    /// Rethrows the failure of the reading, if there was one.
    void RethrowFailure() const;
    /// False when the root element is missing or is no `gpx`.
    bool IsGpx() const { return isGpx_; }
    /// The location of the element at which the reading failed; zeros when it is not known.
    SourceLocation FailureLocation() const { return location_; }

private:
    enum class State {
        kBetween,  ///< the children of the innermost reader come next
        kInTree,   ///< within a child that is read as a tree
        kSkipping, ///< within a child that is skipped
        kFailed
    };

    bool BeginTree(const TagPlace& place);
    void BeginRoot(const NodeView& root);
    void BeginChild(const NodeView& child);
    ChildReader::Visit Classify(ChildReader& reader, const NodeView& child);
    void EndTree();
    void EndReader();
    void ReportText();
    void Settle(bool isLoss);
    template <class Make>
    void Descend(const NodeView& node, Make makeReader);
    template <class Read, class Refuse>
    void Try(Read read, Refuse refuse);
    template <class Read>
    void TryChild(const NodeView& child, Read read);

    struct Open {
        std::unique_ptr<ChildReader> reader;
        bool isolatesFailures; ///< asked for once
        /// \{
        /// For later, when its node is gone: for a failure at its end, and for its own text. Empty when there is no
        /// observer.
        GpxSkippedElement ifRefused;
        GpxSkippedElement ifText;
        /// \}
        bool hasText;
    };

    ReadContext& context_;
    GpxDocument& document_;
    /// The names of the elements that have a reader.
    std::vector<const char16_t*> names_;
    std::vector<Open> readers_;
    EventTree tree_{names_};
    State state_ = State::kBetween;
    bool rootSeen_ = false;
    bool isGpx_ = false;
    /// The location of the last element that is the root or a child of a long element.
    SourceLocation location_;
    std::size_t skippedDepth_ = 0;
    /// True within a child that is skipped until something in it shows that it has content.
    bool isUnsettled_ = false;
    std::exception_ptr failure_;
};

} // namespace vexaTransferLib::reader
