// SPDX-License-Identifier: MIT
#include <vexaTransferLib/saving/Saving.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <utility>

namespace vexaTransferLib::saving {

namespace {

constexpr std::string_view kGpx10Uri = "http://www.topografix.com/GPX/1/0";

const SourceText& SourceOf(const GpxDocument& document) {
    return *GpxModelAccess::GetSource(document.GetElement());
}

// In no namespace, the version that the root states counts.
GpxVersion VersionOf(const GpxElement& root) {
    const std::string_view uri = root.GetNamespace();
    const bool is10 = uri == kGpx10Uri || (uri.empty() && root.GetAttribute(gpx::kVersion) == u"1.0");
    return GpxVersion(1, is10 ? 0 : 1);
}

GpxStandardOptions StandardOptions(const GpxDocument& document, const GpxSaveOptions& options) {
    GpxStandardOptions standard;
    standard.version = VersionOf(document.GetElement());
    standard.replacesCharacters = options.replacesCharacters;
    standard.unwritten = options.unwritten;
    return standard;
}

} // namespace

Saving::Saving(const GpxDocument& document, const GpxSaveOptions& options)
    : source_(SourceOf(document)), options_(StandardOptions(document, options)),
      receive_([this](std::string_view piece) { buffer_.append(piece); }), output_(receive_),
      writing_(document, options_, output_), indent_(FindIndent()) {}

// As the first child of the root is indented.
std::string Saving::FindIndent() const {
    const GpxElement first = GpxModelAccess::MakeElement(&source_, source_.RootPlace()).GetFirstChild();
    if (!first)
        return IndentBetween({}, {});
    const std::string_view inner = SeparatorBefore(Text(), GpxModelAccess::GetPlace(first));
    return IndentBetween(inner.substr(0, inner.find_first_of(" \t")), inner);
}

SavedElement Saving::ElementAt(std::uint64_t place) {
    const char* const begin = source_.At(place);
    return {ScanChild(Names(), source_, begin), source_.EndOf(begin)};
}

std::string Saving::InNamespaceOf(const SavedElement& parent, const ElementLayout& layout, std::string text) {
    const std::uint64_t place = source_.PlaceOf(parent.child.begin);
    const std::string_view uri = Names().UriOf(parent.child.prefix, place);
    if (Names().UriOf({}, place) == uri)
        return text;
    const std::size_t nameEnd = text.find_first_of(" />", layout.separator.size());
    return text.insert(nameEnd, standard::Declaration({}, uri));
}

std::string Saving::Escaped(const icu::UnicodeString& text, standard::PieceOutput::Place place) {
    output_.AppendEscaped(text, place);
    return TakeOutput();
}

std::string Saving::TakeOutput() {
    output_.Flush();
    return std::exchange(buffer_, {});
}

} // namespace vexaTransferLib::saving
