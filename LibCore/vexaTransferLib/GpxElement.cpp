// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxElement.h>

#include <vexaTransferLib/model/ElementScan.h>
#include <vexaTransferLib/model/ElementText.h>
#include <vexaTransferLib/model/SourceText.h>
#include <vexaTransferLib/text/ValueText.h>

#include <string>
#include <utility>

namespace vexaTransferLib {

GpxElement::GpxElement() noexcept = default;
GpxElement::GpxElement(const GpxElement&) noexcept = default;
GpxElement::GpxElement(GpxElement&&) noexcept = default;
GpxElement& GpxElement::operator=(const GpxElement&) noexcept = default;
GpxElement& GpxElement::operator=(GpxElement&&) noexcept = default;
GpxElement::~GpxElement() = default;

GpxElement::GpxElement(boost::intrusive_ptr<const SourceText> source, std::uint64_t place) noexcept
    : source_(std::move(source)), place_(place) {}

const char* GpxElement::Begin() const {
    return source_->At(place_);
}

std::string_view GpxElement::GetName() const {
    return source_ ? LocalNameOf(ScanTag(Begin()).name) : std::string_view();
}

std::string_view GpxElement::GetPrefix() const {
    return source_ ? PrefixOf(ScanTag(Begin()).name) : std::string_view();
}

std::string_view GpxElement::GetNamespace() const {
    return source_ ? NamespaceOf(GetPrefix()) : std::string_view();
}

std::string_view GpxElement::NamespaceOf(std::string_view prefix) const {
    return source_->FindNamespace(prefix, place_).value_or(std::string_view());
}

bool GpxElement::Is(std::string_view nameSpace, std::string_view name) const {
    return source_ && GetName() == name && GetNamespace() == nameSpace;
}

std::string_view GpxElement::GetXml() const {
    if (!source_)
        return {};
    const char* const begin = Begin();
    return {begin, static_cast<std::size_t>(source_->EndOf(begin) - begin)};
}

std::uint64_t GpxElement::GetLine() const {
    return source_ ? source_->Locate(place_).line : 0;
}

std::uint64_t GpxElement::GetColumn() const {
    return source_ ? source_->Locate(place_).column : 0;
}

icu::UnicodeString GpxElement::GetText() const {
    return source_ ? ContentText(Begin()) : icu::UnicodeString();
}

std::optional<double> GpxElement::GetNumber() const {
    std::string text;
    return text::ReadSchemaNumber(GetText().toUTF8String(text));
}

std::optional<double> GpxElement::GetTime() const {
    std::string text;
    return text::ReadSchemaTime(GetText().toUTF8String(text));
}

std::optional<icu::UnicodeString> GpxElement::GetAttribute(std::string_view name,
                                                           std::string_view nameSpace) const {
    if (!source_)
        return std::nullopt;
    std::string_view rest = ScanTag(Begin()).attributes;
    for (ScannedAttribute attribute; ScanAttribute(rest, attribute);) {
        if (IsDeclaration(attribute.name) || LocalNameOf(attribute.name) != name)
            continue;
        const std::string_view prefix = PrefixOf(attribute.name);
        if ((prefix.empty() ? std::string_view() : NamespaceOf(prefix)) == nameSpace)
            return DecodedValue(attribute.value);
    }
    return std::nullopt;
}

std::vector<GpxAttribute> GpxElement::GetAttributes() const {
    std::vector<GpxAttribute> attributes;
    if (!source_)
        return attributes;
    std::string_view rest = ScanTag(Begin()).attributes;
    for (ScannedAttribute attribute; ScanAttribute(rest, attribute);) {
        if (IsDeclaration(attribute.name))
            continue;
        const std::string_view prefix = PrefixOf(attribute.name);
        attributes.push_back({LocalNameOf(attribute.name),
                              prefix.empty() ? std::string_view() : NamespaceOf(prefix),
                              DecodedValue(attribute.value)});
    }
    return attributes;
}

// The next element in the content of the parent, whose parts go on here.
GpxElement GpxElement::FirstElementFrom(const char* at) const {
    for (;;) {
        if (IsStartTag(at))
            return GpxElement(source_, source_->PlaceOf(at));
        const ScannedPart part = ScanPart(at);
        if (part.kind == ScannedPart::Kind::kEnd)
            return {};
        at = part.end;
    }
}

GpxElement GpxElement::GetFirstChild() const {
    if (!source_)
        return {};
    const ScannedTag tag = ScanTag(Begin());
    return tag.isEmpty ? GpxElement() : FirstElementFrom(tag.end);
}

GpxElement GpxElement::GetNextSibling() const {
    if (!source_)
        return {};
    const char* const end = source_->EndOf(Begin());
    // What comes after the root is no element.
    return place_ == source_->RootPlace() ? GpxElement() : FirstElementFrom(end);
}

GpxElement::Children GpxElement::GetChildren() const {
    return Children(*this);
}

GpxElement GpxElement::FindChild(std::string_view nameSpace, std::string_view name) const {
    for (GpxElement child = GetFirstChild(); child; child = child.GetNextSibling())
        if (child.Is(nameSpace, name))
            return child;
    return {};
}

} // namespace vexaTransferLib
