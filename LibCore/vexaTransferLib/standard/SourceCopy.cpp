// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/Writing.h>

#include <vexaTransferLib/model/ElementText.h>
#include <vexaTransferLib/text/DecimalDigits.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::standard {

namespace {

constexpr std::string_view kDefaultDeclaration = "xmlns";

bool IsInName(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || text::IsDecimalDigit(byte) ||
           byte == '-' || byte == '_' || byte == '.' || static_cast<unsigned char>(byte) >= 0x80;
}

// What is before a colon somewhere in the text of an element. It may be in a value: one declaration too many does no
// harm.
std::set<std::string_view> PrefixesIn(std::string_view xml) {
    std::set<std::string_view> prefixes;
    for (std::size_t colon = xml.find(':'); colon != std::string_view::npos;
         colon = xml.find(':', colon + 1)) {
        std::size_t begin = colon;
        while (begin != 0 && IsInName(xml[begin - 1]))
            --begin;
        prefixes.insert(xml.substr(begin, colon - begin));
    }
    return prefixes;
}

bool HasAttribute(const ScannedTag& tag, std::string_view name) {
    std::string_view rest = tag.attributes;
    for (ScannedAttribute attribute; ScanAttribute(rest, attribute);)
        if (attribute.name == name)
            return true;
    return false;
}

bool DeclaresDefault(const ScannedTag& tag) {
    return HasAttribute(tag, kDefaultDeclaration);
}

// True when an element has no prefix. One in a comment counts: one declaration too many does no harm.
bool UsesDefault(std::string_view xml) {
    for (std::size_t at = xml.find('<'); at != std::string_view::npos; at = xml.find('<', at + 1))
        if (IsStartTag(xml.data() + at) && PrefixOf(ScanTag(xml.data() + at).name).empty())
            return true;
    return false;
}

// The default namespace of the output is GPX's.
std::string MissingDefault(Writing& writing, const SourceElement& element) {
    if (DeclaresDefault(element.child.tag) || !UsesDefault(element.Xml()))
        return {};
    const std::uint64_t place = element.source->PlaceOf(element.child.begin);
    const std::string_view uri = writing.NamesOf(*element.source).UriOf({}, place);
    return writing.IsDeclared({}, uri) ? std::string() : Declaration({}, uri);
}

bool IsInGpx(Writing& writing, const SourceElement& element) {
    const std::uint64_t place = element.source->PlaceOf(element.child.begin);
    return writing.NamesOf(*element.source).KindOf({}, place) == NamespaceKind::kGpx;
}

/// The declarations of prefixes that an element needs in the output, as attributes.
std::string MissingPrefixes(const Writing& writing, const SourceElement& element) {
    std::string missing;
    const std::uint64_t place = element.source->PlaceOf(element.child.begin);
    if (!writing.DeclaresAll() && element.source == writing.MainSource() &&
        element.source->IsInRootScope(place))
        return missing;
    std::set<std::string_view> prefixes = PrefixesIn(element.Xml());
    std::string_view rest = element.child.tag.attributes;
    for (ScannedAttribute attribute; ScanAttribute(rest, attribute);)
        if (IsDeclaration(attribute.name))
            prefixes.erase(LocalNameOf(attribute.name));
    for (const std::string_view prefix : prefixes) {
        const auto uri = prefix.empty() ? std::nullopt : element.source->FindNamespace(prefix, place);
        if (uri && !writing.IsDeclared(prefix, *uri))
            missing += Declaration(prefix, *uri);
    }
    return missing;
}

// The declarations come after the name of the element.
void CopyWith(Writing& writing, const SourceElement& element, std::string_view declarations) {
    const std::string_view xml = element.Xml();
    const std::size_t nameEnd = 1 + element.child.tag.name.size();
    writing.Out().AppendAll(xml.substr(0, nameEnd), declarations, xml.substr(nameEnd));
}

void CopyVerbatim(Writing& writing, const SourceElement& element, const std::string& declarations) {
    CopyWith(writing, element, declarations + MissingPrefixes(writing, element));
}

// The default namespace of foreign elements, where it is not GPX's.
std::string MissingForeignDefault(Writing& writing, const SourceElement& element) {
    return IsInGpx(writing, element) ? std::string() : MissingDefault(writing, element);
}

/// Writes an element of GPX anew: its prefix and those of the GPX elements in it are left out.
class GpxRewriter {
public:
    explicit GpxRewriter(Writing& writing) : writing_(writing) {}

    void Write(const SourceElement& element, const std::string& declarations) {
        const char* at = StartTag(element, element.child, declarations);
        while (!open_.empty())
            at = Next(element, at);
    }

private:
    // Returns the place after the tag, or after an element that is copied.
    const char* StartTag(const SourceElement& top, const ScannedChild& child,
                         const std::string& declarations) {
        const bool isInExtensions = !open_.empty() && open_.back() == gpx::kExtensions;
        if (child.kind != NamespaceKind::kGpx || isInExtensions) {
            // The element that is written declares the prefixes.
            const SourceElement foreign{top.source, child, top.source->EndOf(child.begin)};
            CopyWith(writing_, foreign, MissingForeignDefault(writing_, foreign));
            return foreign.end;
        }
        PieceOutput& out = writing_.Out();
        out.AppendAll("<", child.name);
        CopyAllAttributes(child.tag);
        out.AppendAll(declarations, child.tag.isEmpty ? "/>" : ">");
        if (!child.tag.isEmpty)
            open_.push_back(child.name);
        return child.tag.end;
    }

    // With the declarations of prefixes, but not with that of the default namespace.
    void CopyAllAttributes(const ScannedTag& tag) {
        std::string_view rest = tag.attributes;
        for (ScannedAttribute attribute; ScanAttribute(rest, attribute);) {
            if (attribute.name == kDefaultDeclaration)
                continue;
            const std::string_view quote(attribute.value.data() - 1, 1);
            writing_.Out().AppendAll(" ", attribute.name, "=", quote, attribute.value, quote);
        }
    }

    const char* Next(const SourceElement& top, const char* at) {
        if (IsStartTag(at))
            return StartTag(top, ScanChild(writing_.NamesOf(*top.source), *top.source, at), {});
        const ScannedPart part = ScanPart(at);
        if (part.kind == ScannedPart::Kind::kEnd) {
            writing_.Out().AppendAll("</", open_.back(), ">");
            open_.pop_back();
        } else {
            writing_.Out().Append({at, static_cast<std::size_t>(part.end - at)});
        }
        return part.end;
    }

    Writing& writing_;
    std::vector<std::string_view> open_;
};

} // namespace

void AttributePrefixes::Declare(std::string_view attributeName) {
    const std::string_view prefix = PrefixOf(attributeName);
    if (prefix == declared_ || !done_.insert(prefix).second)
        return;
    const std::uint64_t place = element_.source->PlaceOf(element_.child.begin);
    const std::string_view uri = element_.source->FindNamespace(prefix, place).value_or(std::string_view());
    if (!writing_.IsDeclared(prefix, uri))
        writing_.Out().Append(Declaration(prefix, uri));
}

std::string Declaration(std::string_view prefix, std::string_view uri) {
    std::string text(" ");
    text.append(kDefaultDeclaration).append(prefix.empty() ? "" : ":").append(prefix).append("=\"");
    for (const char c : uri) {
        if (c == '&' || c == '<' || c == '>' || c == '"' || (c >= '\0' && c < ' '))
            text.append("&#").append(std::to_string(static_cast<int>(c))).append(1, ';');
        else
            text.append(1, c);
    }
    return text.append(1, '"');
}

bool IsPlainGpx(NamespaceCursor& names, const SourceText& source, const char* begin, const char* end) {
    for (const char* at = begin; at != end;) {
        if (!IsStartTag(at)) {
            at = ScanPart(at).end;
            continue;
        }
        const ScannedChild child = ScanChild(names, source, at);
        const bool isGpx = child.kind == NamespaceKind::kGpx;
        if (isGpx && (!child.prefix.empty() || DeclaresDefault(child.tag)))
            return false;
        at = isGpx && child.name != gpx::kExtensions ? child.tag.end : SkipElement(at);
    }
    return true;
}

void CopyForeign(Writing& writing, const SourceElement& element) {
    CopyVerbatim(writing, element, MissingForeignDefault(writing, element));
}

void CopyIn10(Writing& writing, const SourceElement& element) {
    CopyVerbatim(writing, element, MissingDefault(writing, element));
}

void CopyElement(Writing& writing, const SourceElement& element) {
    if (element.child.kind != NamespaceKind::kGpx) {
        CopyForeign(writing, element);
        return;
    }
    const std::string declarations = MissingPrefixes(writing, element);
    if (declarations.empty() &&
        IsPlainGpx(writing.NamesOf(*element.source), *element.source, element.child.begin, element.end))
        writing.Out().Append(element.Xml());
    else
        GpxRewriter(writing).Write(element, declarations);
}

} // namespace vexaTransferLib::standard
