// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxElement.h>

#include <vexaTransferLib/model/ElementScan.h>
#include <vexaTransferLib/model/SourceText.h>
#include <vexaTransferLib/text/RawText.h>
#include <vexaTransferLib/text/ValueText.h>

#include <new>
#include <string>
#include <utility>

namespace vexaTransferLib {

namespace {

using text::RawText;
using text::TextPlace;

// Appends a part of the source as a reader of XML gets it.
void AppendDecoded(icu::UnicodeString& out, std::string_view raw, RawText::Form form, TextPlace place) {
    const std::int32_t before = out.length();
    char16_t* const units = out.getBuffer(before + static_cast<std::int32_t>(raw.size()));
    if (units == nullptr)
        throw std::bad_alloc();
    const char16_t* const end = text::Decode(raw, form, place, units + before);
    out.releaseBuffer(static_cast<std::int32_t>(end - units));
}

icu::UnicodeString DecodedValue(std::string_view raw) {
    icu::UnicodeString value;
    AppendDecoded(value, raw, RawText::Form::kEncoded, TextPlace::kAttribute);
    return value;
}

std::string_view PrefixOf(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
}

std::string_view LocalOf(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

bool IsDeclaration(std::string_view name) {
    return name == "xmlns" || PrefixOf(name) == "xmlns";
}

// Appends the texts of the content that starts here. Enters the elements in it without recursion.
void AppendTexts(icu::UnicodeString& out, const char* at) {
    using Kind = ScannedPart::Kind;
    for (std::size_t depth = 1; depth != 0;) {
        if (IsStartTag(at)) {
            const ScannedTag tag = ScanTag(at);
            depth += tag.isEmpty ? 0 : 1;
            at = tag.end;
            continue;
        }
        const ScannedPart part = ScanPart(at);
        if (part.kind == Kind::kText)
            AppendDecoded(out, part.content, RawText::Form::kEncoded, TextPlace::kContent);
        else if (part.kind == Kind::kSection)
            AppendDecoded(out, part.content, RawText::Form::kSection, TextPlace::kContent);
        else if (part.kind == Kind::kEnd)
            --depth;
        at = part.end;
    }
}

} // namespace

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
    return source_ ? LocalOf(ScanTag(Begin()).name) : std::string_view();
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
    return {begin, static_cast<std::size_t>(SkipElement(begin) - begin)};
}

std::uint64_t GpxElement::GetLine() const {
    return source_ ? source_->Locate(place_).line : 0;
}

std::uint64_t GpxElement::GetColumn() const {
    return source_ ? source_->Locate(place_).column : 0;
}

icu::UnicodeString GpxElement::GetText() const {
    icu::UnicodeString text;
    if (!source_)
        return text;
    const ScannedTag tag = ScanTag(Begin());
    if (!tag.isEmpty)
        AppendTexts(text, tag.end);
    return text;
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
        if (IsDeclaration(attribute.name) || LocalOf(attribute.name) != name)
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
        attributes.push_back({LocalOf(attribute.name),
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
    const char* const end = SkipElement(Begin());
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
