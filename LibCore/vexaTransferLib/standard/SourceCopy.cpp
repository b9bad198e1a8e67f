// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/Writing.h>

#include <vexaTransferLib/text/Namespaces.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::standard {

namespace {

// True when the element has a prefix of this name somewhere in its text. It may be in a value: one declaration too many
// does no harm.
bool Uses(std::string_view xml, std::string_view prefix) {
    const std::string wanted = std::string(prefix) + ':';
    return xml.find(wanted) != std::string_view::npos;
}

bool HasAttribute(const ScannedTag& tag, std::string_view name) {
    std::string_view rest = tag.attributes;
    for (ScannedAttribute attribute; ScanAttribute(rest, attribute);)
        if (attribute.name == name)
            return true;
    return false;
}

bool DeclaresDefault(const ScannedTag& tag) {
    return HasAttribute(tag, "xmlns");
}

/// The declarations that an element needs in the output, as attributes.
std::string MissingDeclarations(const Writing& writing, const SourceElement& element) {
    std::string missing;
    const std::uint64_t place = element.source->PlaceOf(element.child.begin);
    if (element.source == writing.MainSource() && element.source->IsInRootScope(place))
        return missing;
    const bool hasDefault = DeclaresDefault(element.child.tag);
    element.source->ForEachDeclarationAround(place, [&](std::string_view prefix, std::string_view uri) {
        if (prefix.empty()) {
            if (!hasDefault && !text::IsGpxNamespace(uri))
                missing.append(" xmlns=\"").append(uri).append(1, '"');
        } else if (!writing.IsDeclared(prefix, uri) && Uses(element.Xml(), prefix) &&
                   !HasAttribute(element.child.tag, "xmlns:" + std::string(prefix))) {
            missing.append(" xmlns:").append(prefix).append("=\"").append(uri).append(1, '"');
        }
    });
    return missing;
}

// True when the bytes of an element of GPX mean the same in the output.
bool IsPlainGpx(Writing& writing, const SourceElement& element) {
    NamespaceCursor& names = writing.NamesOf(*element.source);
    for (const char* at = element.child.begin; at != element.end;) {
        if (!IsStartTag(at)) {
            at = ScanPart(at).end;
            continue;
        }
        const ScannedChild child = ScanChild(names, *element.source, at);
        const bool isGpx = child.kind == NamespaceKind::kGpx;
        if (isGpx && (!child.prefix.empty() || DeclaresDefault(child.tag)))
            return false;
        at = isGpx ? child.tag.end : SkipElement(at);
    }
    return true;
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
        if (child.kind != NamespaceKind::kGpx) {
            const SourceElement foreign{top.source, child, SkipElement(child.begin)};
            CopyElement(writing_, foreign);
            return foreign.end;
        }
        PieceOutput& out = writing_.Out();
        out.AppendAll("<", child.name);
        CopyAttributes(writing_, {top.source, child, nullptr}, [](std::string_view) { return false; });
        CopyPrefixes(child.tag);
        out.AppendAll(declarations, child.tag.isEmpty ? "/>" : ">");
        if (!child.tag.isEmpty)
            open_.push_back(child.name);
        return child.tag.end;
    }

    void CopyPrefixes(const ScannedTag& tag) {
        std::string_view rest = tag.attributes;
        for (ScannedAttribute attribute; ScanAttribute(rest, attribute);) {
            if (!IsDeclaration(attribute.name) || attribute.name.find(':') == std::string_view::npos)
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

void CopyElement(Writing& writing, const SourceElement& element) {
    const std::string declarations = MissingDeclarations(writing, element);
    const bool isGpx = element.child.kind == NamespaceKind::kGpx;
    if (isGpx && (!declarations.empty() || !IsPlainGpx(writing, element))) {
        GpxRewriter(writing).Write(element, declarations);
        return;
    }
    if (declarations.empty()) {
        writing.Out().Append(element.Xml());
        return;
    }
    const std::string_view name = element.child.tag.name;
    const std::string_view xml = element.Xml();
    const std::size_t nameEnd = 1 + name.size();
    writing.Out().AppendAll(xml.substr(0, nameEnd), declarations, xml.substr(nameEnd));
}

} // namespace vexaTransferLib::standard
