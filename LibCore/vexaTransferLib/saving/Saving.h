// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxSaver.h>
#include <vexaTransferLib/GpxStandardWriter.h>
#include <vexaTransferLib/model/ChildScan.h>
#include <vexaTransferLib/model/SourceText.h>
#include <vexaTransferLib/saving/LineLayout.h>
#include <vexaTransferLib/saving/TextEdits.h>
#include <vexaTransferLib/standard/PieceOutput.h>
#include <vexaTransferLib/standard/Writing.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace vexaTransferLib::saving {

/// An element of the source that is saved.
struct SavedElement {
    ScannedChild child;
    const char* end = nullptr; ///< the place after it
};

/// What the functions share that save one document.
class Saving {
public:
    /// \param document was read completely
    Saving(const GpxDocument& document, const GpxSaveOptions& options);
    Saving(const Saving&) = delete;
    Saving& operator=(const Saving&) = delete;

    const SourceText& Source() const { return source_; }
    std::string_view Text() const { return source_.Text(); }
    /// True for a file in the namespace of GPX 1.0.
    bool Is10() const { return writing_.Is10(); }
    NamespaceCursor& Names() { return writing_.NamesOf(source_); }
    /// For what is read from the source again.
    complete::CompleteContext& Context() { return writing_.ContextOf(source_); }
    /// What is written through it goes into the text of Rendered.
    standard::Writing& Writing() { return writing_; }

    SavedElement ElementAt(std::uint64_t place);
    TextPart PartOf(const SavedElement& element) const {
        return {source_.PlaceOf(element.child.begin), source_.PlaceOf(element.end)};
    }
    standard::SourceElement ForWriting(const SavedElement& element) const {
        return {&source_, element.child, element.end};
    }

    /// True when the element at a place means the same below a parent. It may say no for one with declarations of its
    /// own.
    bool MeansTheSameBelow(const SavedElement& parent, std::uint64_t place) const {
        const std::uint64_t inner = source_.PlaceOf(parent.child.begin) + 1;
        return source_.HaveSameScope(place, inner) || source_.HaveSameScope(place - 1, inner);
    }
    /// True when only the root declares namespaces around the children of an element.
    bool HasRootScope(const SavedElement& parent) const {
        return source_.IsInRootScope(source_.PlaceOf(parent.child.begin) + 1);
    }
    /// The text of an element of GPX without a prefix, so that it means the same below a parent.
    std::string InNamespaceOf(const SavedElement& parent, const ElementLayout& layout, std::string text);

    /// What was changed in elements that the model has no member for, sorted.
    const TextEdits& ElementChanges() const { return elementChanges_; }
    void SetElementChanges(TextEdits changes) { elementChanges_ = std::move(changes); }

    /// What inner elements are indented by.
    const std::string& Indent() const { return indent_; }

    /// What `write()` writes through Writing.
    /// \param depth of the lines that start with the layout's separator
    template <class Write>
    std::string Rendered(const ElementLayout& layout, int depth, Write write) {
        writing_.SetLayout(layout.separator, layout.indent, depth);
        write();
        return TakeOutput();
    }
    /// A text with markup escaped.
    std::string Escaped(const icu::UnicodeString& text, standard::PieceOutput::Place place);

private:
    std::string TakeOutput();

    std::string FindIndent() const;

    const SourceText& source_;
    GpxStandardOptions options_;
    std::string buffer_;
    std::function<void(std::string_view)> receive_;
    standard::PieceOutput output_;
    standard::Writing writing_;
    std::string indent_;
    TextEdits elementChanges_;
};

} // namespace vexaTransferLib::saving
