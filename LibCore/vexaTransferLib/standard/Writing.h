// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxStandardWriter.h>
#include <vexaTransferLib/complete/CompleteContext.h>
#include <vexaTransferLib/model/ChildScan.h>
#include <vexaTransferLib/reader/ReadContext.h>
#include <vexaTransferLib/standard/PieceOutput.h>

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vexaTransferLib::standard {

/// An element of a source that is to be written.
struct SourceElement {
    const SourceText* source = nullptr;
    ScannedChild child;
    const char* end = nullptr; ///< the place after it

    std::string_view Xml() const { return {child.begin, static_cast<std::size_t>(end - child.begin)}; }
};
using SourceElements = std::vector<SourceElement>;

/// What the functions share that write one document.
class Writing {
public:
    Writing(const GpxDocument& document, const GpxStandardOptions& options, PieceOutput& output);
    Writing(const Writing&) = delete;
    Writing& operator=(const Writing&) = delete;

    PieceOutput& Out() { return output_; }
    const GpxStandardOptions& Options() const { return options_; }
    bool Is10() const { return is10_; }

    /// The source whose declarations of namespaces the root of the output repeats; null when there is none.
    const SourceText* MainSource() const { return main_.get(); }
    /// The declarations of the root of the main source that have a prefix.
    const std::vector<SourceText::Declaration>& RootDeclarations() const { return declarations_; }
    /// Whether a prefix, or none, has this namespace in the element that is being written.
    bool IsDeclared(std::string_view prefix, std::string_view uri) const;
    /// \{
    /// Sets and forgets a declaration of an element that is being written.
    void SetDeclared(std::string_view prefix, std::string_view uri) {
        inner_ = {std::string(prefix), std::string(uri)};
        hasInner_ = true;
    }
    void ForgetDeclared() { hasInner_ = false; }
    /// \}

    /// For what is read from this source again. Valid until it is called for another one.
    complete::CompleteContext& ContextOf(const SourceText& source);
    NamespaceCursor& NamesOf(const SourceText& source) { return ContextOf(source).Names(); }
    SourceElement ElementAt(const SourceText& source, const char* begin);
    SourceElement ElementOf(const GpxElement& element);
    SourceElements ElementsOf(const std::vector<GpxElement>& elements);
    SourceElements ChildrenOf(const SourceElement& parent);

    /// Starts a line of the output.
    void StartLine(int depth);
    /// From now on, lines start with a separator at this depth, and with an indent more for each depth beyond it.
    /// Without a separator there are no lines.
    void SetLayout(std::string_view separator, std::string_view indent, int depth) {
        layout_ = {std::string(separator), std::string(indent), depth};
    }
    /// From now on, each element that is copied declares all prefixes that it needs, or again only those that the root
    /// does not declare.
    void SetDeclaresAll(bool isSet) { declaresAll_ = isSet; }
    bool DeclaresAll() const { return declaresAll_; }

    // Which object is being written, for reports.

    void SetObject(std::string_view kind, std::size_t index) {
        object_ = kind;
        index_ = index;
        segment_ = 0;
        point_ = 0;
    }
    void SetSegment(std::size_t segment) {
        segment_ = segment;
        point_ = 0;
    }
    void SetPoint(std::size_t point) { point_ = point; }
    void ReportUnwritten(std::string_view element, std::string message);

private:
    struct Layout {
        std::string separator;
        std::string indent;
        int depth;
    };

    std::string ObjectName() const;

    const GpxStandardOptions& options_;
    PieceOutput& output_;
    bool is10_;
    SourceText::Pointer main_;
    std::vector<SourceText::Declaration> declarations_;
    SourceText::Declaration inner_;
    bool hasInner_ = false;
    bool declaresAll_ = false;
    Layout layout_{"\n", "  ", 0};
    std::unique_ptr<reader::ReadContext> host_;
    std::vector<reader::LongElement> noLongElements_;
    std::unique_ptr<complete::CompleteContext> context_;
    const SourceText* contextSource_ = nullptr;
    std::string_view object_ = "document";
    std::size_t index_ = 0;
    std::size_t segment_ = 0;
    std::size_t point_ = 0;
};

/// Writes an element as it stands in its source: GPX elements without a prefix, others verbatim, and with the
/// declarations that the output's root lacks.
void CopyElement(Writing& writing, const SourceElement& element);
/// The same for what is in `extensions` or beside the elements of GPX: verbatim, also when it is in a namespace of GPX.
void CopyForeign(Writing& writing, const SourceElement& element);
/// The same for an element of GPX 1.0 in the `extensions` of GPX 1.1: it keeps its namespace.
void CopyIn10(Writing& writing, const SourceElement& element);

/// True when the elements of GPX from here on, up to the end, mean the same without what is around them: they have no
/// prefixes and declare no default namespace. What is in `extensions` may do both.
bool IsPlainGpx(NamespaceCursor& names, const SourceText& source, const char* begin, const char* end);

/// The declaration of a namespace as an attribute, with a blank before it.
std::string Declaration(std::string_view prefix, std::string_view uri);

/// Declares the prefixes of attributes that the output's root lacks, each once.
class AttributePrefixes {
public:
    /// \param declared a prefix that is declared already
    AttributePrefixes(Writing& writing, const SourceElement& element, std::string_view declared)
        : writing_(writing), element_(element), declared_(declared) {}

    void Declare(std::string_view attributeName);

private:
    Writing& writing_;
    const SourceElement& element_;
    std::string_view declared_;
    std::set<std::string_view> done_;
};

/// Writes the attributes of an element as they stand, except declarations of namespaces, and those for which
/// `isLeftOut(name)` is true.
/// \param declared a prefix that is declared already
template <class IsLeftOut>
void CopyAttributes(Writing& writing, const SourceElement& element, IsLeftOut isLeftOut,
                    std::string_view declared = {}) {
    AttributePrefixes prefixes(writing, element, declared);
    std::string_view rest = element.child.tag.attributes;
    for (ScannedAttribute attribute; ScanAttribute(rest, attribute);) {
        if (IsDeclaration(attribute.name) || isLeftOut(attribute.name))
            continue;
        if (attribute.name.find(':') != std::string_view::npos)
            prefixes.Declare(attribute.name);
        const std::string_view quote(attribute.value.data() - 1, 1);
        writing.Out().AppendAll(" ", attribute.name, "=", quote, attribute.value, quote);
    }
}

} // namespace vexaTransferLib::standard
