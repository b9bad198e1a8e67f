// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxElementEditor.h>

#include <vexaTransferLib/model/CommentScan.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/standard/TextCheck.h>
#include <vexaTransferLib/text/ContractSources.h>

#include <common/dbc.h>

#include <unicode/utf8.h>

#include <cmath>

namespace vexaTransferLib {

namespace {

using Access = GpxModelAccess;

void Require(bool holds, const char* message, int line = __builtin_LINE()) {
    dbc::Require(holds, text::kGpxElementEditorSource, message, line);
}

void RequireText(const icu::UnicodeString& text) {
    Require(!standard::FirstUnwritable(text), "XML cannot hold this text.");
}

// The characters of names in XML 1.0, without the colon.
bool IsNameStart(UChar32 character) {
    if (character < 0x80)
        return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
               character == '_';
    return (character >= 0xC0 && character <= 0x2FF && character != 0xD7 && character != 0xF7) ||
           (character >= 0x370 && character <= 0x1FFF && character != 0x37E) || character == 0x200C ||
           character == 0x200D || (character >= 0x2070 && character <= 0x218F) ||
           (character >= 0x2C00 && character <= 0x2FEF) || (character >= 0x3001 && character <= 0xD7FF) ||
           (character >= 0xF900 && character <= 0xFDCF) || (character >= 0xFDF0 && character <= 0xFFFD) ||
           (character >= 0x10000 && character <= 0xEFFFF);
}

bool IsNamePart(UChar32 character) {
    return IsNameStart(character) || (character >= '0' && character <= '9') || character == '-' ||
           character == '.' || character == 0xB7 || (character >= 0x300 && character <= 0x36F) ||
           character == 0x203F || character == 0x2040;
}

void RequireName(std::string_view name) {
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(name.data());
    const auto length = static_cast<std::int32_t>(name.size());
    bool isName = length > 0;
    for (std::int32_t at = 0; at < length && isName;) {
        const bool isFirst = at == 0;
        UChar32 character = 0;
        U8_NEXT(bytes, at, length, character);
        isName = isFirst ? IsNameStart(character) : IsNamePart(character);
    }
    Require(isName, "This is no name of XML.");
}

bool IsMailAddress(const icu::UnicodeString& text) {
    const std::int32_t at = text.lastIndexOf(u'@');
    return at > 0 && at < text.length() - 1;
}

void RequireTexts(const GpxLink& link) {
    RequireText(link.href);
    RequireText(link.text);
    RequireText(link.type);
}

} // namespace

void GpxElementEditor::RequireOwn(const GpxElement& element) const {
    const SourceText* const source = Access::GetSource(document_->GetElement());
    Require(element && Access::GetSource(element) == source,
            "Only an element of the document can be changed.");
}

GpxElementChanges::Change& GpxElementEditor::ChangeOf(const GpxElement& element) const {
    return Access::MakeChanges(*document_).elements_[Access::GetPlace(element)];
}

void GpxElementEditor::SetText(const GpxElement& element, const icu::UnicodeString& text) const {
    RequireOwn(element);
    RequireText(text);
    std::optional<icu::UnicodeString> copy(text);
    GpxElementChanges::Change& change = ChangeOf(element);
    change.text.swap(copy);
    change.children.clear();
}

void GpxElementEditor::SetAttribute(const GpxElement& element, std::string_view name,
                                    const icu::UnicodeString& value) const {
    RequireOwn(element);
    RequireName(name);
    RequireText(value);
    ChangeOf(element).attributes.insert_or_assign(std::string(name), value);
}

void GpxElementEditor::RemoveAttribute(const GpxElement& element, std::string_view name) const {
    RequireOwn(element);
    ChangeOf(element).attributes.insert_or_assign(std::string(name), std::nullopt);
}

void GpxElementEditor::AddChild(const GpxElement& parent, std::string_view nameSpace, std::string_view name,
                                const icu::UnicodeString& text) const {
    RequireOwn(parent);
    RequireName(name);
    RequireText(text);
    RequireText(icu::UnicodeString::fromUTF8(std::string(nameSpace)));
    ChangeOf(parent).children.push_back({std::string(nameSpace), std::string(name), text});
}

void GpxElementEditor::Remove(const GpxElement& element) const {
    RequireOwn(element);
    Require(element != document_->GetElement(), "The root of a document cannot be removed.");
    ChangeOf(element).isRemoved = true;
}

std::size_t
GpxElementEditor::RemoveComments(const std::function<bool(std::string_view content)>& isRemoved) const {
    const SourceText* const source = Access::GetSource(document_->GetElement());
    Require(source != nullptr, "Only comments of a document that was read completely can be removed.");
    const GpxElementChanges* const changes = Access::GetChanges(*document_);
    std::map<std::uint64_t, std::uint64_t> removed;
    for (CommentScan scan(source->Text()); scan.Next();)
        if ((changes == nullptr || !changes->comments_.contains(scan.Begin())) && isRemoved(scan.Content()))
            removed.emplace_hint(removed.end(), scan.Begin(), scan.End());
    const std::size_t count = removed.size();
    if (count > 0)
        Access::MakeChanges(*document_).comments_.merge(removed);
    return count;
}

void GpxElementEditor::Restore(const GpxElement& element) const {
    RequireOwn(element);
    if (Access::GetChanges(*document_) != nullptr)
        Access::MakeChanges(*document_).elements_.erase(Access::GetPlace(element));
}

std::size_t GpxElementEditor::GetCount() const {
    const GpxElementChanges* const changes = Access::GetChanges(*document_);
    return changes != nullptr ? changes->elements_.size() : 0;
}

GpxElementChanges::Head& GpxMetadataEditor::Head() const {
    Require(static_cast<bool>(document_->GetElement()),
            "Only the metadata of a document that was read completely can be changed.");
    return Access::MakeChanges(*document_).head_;
}

void GpxMetadataEditor::SetDescription(const icu::UnicodeString& text) const {
    RequireText(text);
    Head().description = text.isEmpty() ? std::nullopt : std::optional(text);
}

void GpxMetadataEditor::SetKeywords(const icu::UnicodeString& text) const {
    RequireText(text);
    Head().keywords = text.isEmpty() ? std::nullopt : std::optional(text);
}

void GpxMetadataEditor::SetAuthor(const GpxPerson& author) const {
    if (author.name)
        RequireText(*author.name);
    if (author.email) {
        RequireText(*author.email);
        Require(IsMailAddress(*author.email),
                "An address of mail has an @ with something before and after it.");
    }
    if (author.link)
        RequireTexts(*author.link);
    GpxPerson copy(author);
    Head().author.emplace(std::move(copy));
}

void GpxMetadataEditor::SetBounds(const GpxBounds& bounds) const {
    Require(std::isfinite(bounds.minLatitude) && std::isfinite(bounds.minLongitude) &&
                std::isfinite(bounds.maxLatitude) && std::isfinite(bounds.maxLongitude),
            "Bounds must be finite.");
    Head().bounds.emplace(bounds);
}

void GpxMetadataEditor::ClearDescription() const {
    Head().description.emplace(std::nullopt);
}

void GpxMetadataEditor::ClearKeywords() const {
    Head().keywords.emplace(std::nullopt);
}

void GpxMetadataEditor::ClearAuthor() const {
    Head().author.emplace(std::nullopt);
}

void GpxMetadataEditor::ClearBounds() const {
    Head().bounds.emplace(std::nullopt);
}

} // namespace vexaTransferLib
