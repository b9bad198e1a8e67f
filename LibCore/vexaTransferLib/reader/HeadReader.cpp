// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/HeadReader.h>

#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/IcuText.h>
#include <vexaTransferLib/text/Namespaces.h>
#include <vexaTransferLib/text/ValueText.h>

#include <algorithm>
#include <iterator>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace vexaTransferLib::reader {

using xercesc::Attributes;

/// A place where the head has values, or a value.
struct HeadElement {
    unsigned parents; ///< the places that may contain it
    const text::ElementName* name;
    unsigned place = 0; ///< for a place: its bit
    /// \{
    /// For a value: takes it from the start tag, or from the text of the whole element; null for none.
    void (*takeAttributes)(GpxHead&, const Attributes&) = nullptr;
    void (*takeText)(GpxHead&, icu::UnicodeString&) = nullptr;
    /// \}
};

namespace {

std::optional<icu::UnicodeString> TextOf(const Attributes& attributes, const text::ElementName& name) {
    // Attributes of GPX have no namespace, so that the name as it is written is the local name.
    const XMLCh* const value = attributes.getValue(static_cast<const char16_t*>(name));
    return value != nullptr ? std::optional(text::CopyOf(value)) : std::nullopt;
}

std::string Utf8(const icu::UnicodeString& text) {
    std::string utf8;
    text.toUTF8String(utf8);
    return utf8;
}

bool ReadNumber(const Attributes& attributes, const text::ElementName& name, double& number) {
    const std::optional<icu::UnicodeString> text = TextOf(attributes, name);
    const std::optional<double> read = text ? text::ReadSchemaNumber(Utf8(*text)) : std::nullopt;
    if (read)
        number = *read;
    return read.has_value();
}

GpxHead::Author& AuthorOf(GpxHead& head) {
    return head.author ? *head.author : head.author.emplace();
}

void TakeName(GpxHead& head, icu::UnicodeString& text) {
    head.name = std::move(text);
}

void TakeDescription(GpxHead& head, icu::UnicodeString& text) {
    head.description = std::move(text);
}

void TakeTime(GpxHead& head, icu::UnicodeString& text) {
    if (const std::optional<double> time = text::ReadSchemaTime(Utf8(text)))
        head.time = time;
}

void TakeAuthorName(GpxHead& head, icu::UnicodeString& text) {
    AuthorOf(head).name = std::move(text);
}

void TakeEmail(GpxHead& head, icu::UnicodeString& text) {
    AuthorOf(head).email = std::move(text);
}

void TakeEmailParts(GpxHead& head, const Attributes& attributes) {
    const std::optional<icu::UnicodeString> domain = TextOf(attributes, gpx::kDomain);
    std::optional<icu::UnicodeString> email = TextOf(attributes, gpx::kId);
    if (!email || !domain)
        return;
    email->append(u'@').append(*domain);
    text::ThrowIfBogus(*email);
    AuthorOf(head).email = std::move(*email);
}

void TakeBounds(GpxHead& head, const Attributes& attributes) {
    GpxHead::Bounds bounds;
    if (ReadNumber(attributes, gpx::kMinlat, bounds.minLatitude) &&
        ReadNumber(attributes, gpx::kMinlon, bounds.minLongitude) &&
        ReadNumber(attributes, gpx::kMaxlat, bounds.maxLatitude) &&
        ReadNumber(attributes, gpx::kMaxlon, bounds.maxLongitude))
        head.bounds = bounds;
}

constexpr unsigned kInRoot = 1;
constexpr unsigned kInMetadata = 2;
constexpr unsigned kInAuthor = 4;

constexpr HeadElement kRootElement = {0, &gpx::kGpx, kInRoot};
constexpr HeadElement kElements[] = {
    {kInRoot, &gpx::kMetadata, kInMetadata},
    {kInMetadata, &gpx::kAuthor, kInAuthor},
    {kInRoot | kInMetadata, &gpx::kName, 0, nullptr, TakeName},
    {kInRoot | kInMetadata, &gpx::kDesc, 0, nullptr, TakeDescription},
    {kInRoot | kInMetadata, &gpx::kTime, 0, nullptr, TakeTime},
    {kInRoot | kInMetadata, &gpx::kBounds, 0, TakeBounds, nullptr},
    {kInRoot, &gpx::kAuthor, 0, nullptr, TakeAuthorName},
    {kInRoot, &gpx::kEmail, 0, nullptr, TakeEmail},
    {kInAuthor, &gpx::kName, 0, nullptr, TakeAuthorName},
    {kInAuthor, &gpx::kEmail, 0, TakeEmailParts, nullptr},
};

bool Equals(std::u16string_view text, const text::ElementName& name) {
    return text == static_cast<const char16_t*>(name);
}

// A namespace may be of any length and counts for each of its elements: what is longer than those of GPX that are
// known in advance need not be looked at, because the others are known by what they begin with.
bool IsGpx(const char16_t* uri) {
    char start[std::size(text::kGpx11Namespace) + 2];
    const icu::UnicodeString alias = text::AliasOfStart(uri, std::size(start));
    const char16_t* const units = alias.getBuffer();
    std::transform(units, units + alias.length(), start,
                   [](char16_t unit) { return unit < 0x80 ? static_cast<char>(unit) : '?'; });
    return text::IsGpxNamespace({start, static_cast<std::size_t>(alias.length())});
}

bool IsObject(std::u16string_view name) {
    return Equals(name, gpx::kWpt) || Equals(name, gpx::kRte) || Equals(name, gpx::kTrk);
}

} // namespace

void HeadReader::Reset() {
    head_ = GpxHead();
    openCount_ = 0;
    ignoredDepth_ = 0;
    text_.remove();
}

void HeadReader::Finish(GpxHead::End end) {
    if (head_.end == GpxHead::End::kNone)
        head_.end = end;
}

void HeadReader::StartElement(const char16_t* uri, const char16_t* localName, const Attributes& attributes) {
    if (head_.end != GpxHead::End::kNone)
        return;
    if (localName == nullptr)
        localName = u"";
    const bool isGpx = IsGpx(uri);
    if (openCount_ == 0)
        StartRoot(localName, attributes);
    else if (isGpx && IsObject(localName))
        Finish(GpxHead::End::kObject);
    else
        StartChild(localName, isGpx, attributes);
}

void HeadReader::StartRoot(const char16_t* localName, const Attributes& attributes) {
    head_.rootName = text::CopyOf(localName);
    if (!Equals(localName, gpx::kGpx)) {
        Finish(GpxHead::End::kNotGpx);
        return;
    }
    open_[openCount_++] = &kRootElement;
    head_.version = TextOf(attributes, gpx::kVersion);
    head_.creator = TextOf(attributes, gpx::kCreator);
}

void HeadReader::StartChild(const char16_t* localName, bool isGpx, const Attributes& attributes) {
    const unsigned place = open_[openCount_ - 1]->place;
    const auto* const found =
        std::find_if(std::begin(kElements), std::end(kElements), [&](const HeadElement& element) {
            return isGpx && (element.parents & place) != 0 && Equals(localName, *element.name);
        });
    if (ignoredDepth_ != 0 || found == std::end(kElements)) {
        ++ignoredDepth_;
        return;
    }
    open_[openCount_++] = found;
    text_.remove();
    if (found->takeAttributes != nullptr)
        found->takeAttributes(head_, attributes);
}

void HeadReader::AddText(const char16_t* units, std::size_t length) {
    if (head_.end != GpxHead::End::kNone || openCount_ == 0 || open_[openCount_ - 1]->takeText == nullptr)
        return;
    text_.append(units, static_cast<std::int32_t>(length));
    text::ThrowIfBogus(text_);
}

void HeadReader::EndElement() {
    if (head_.end != GpxHead::End::kNone || openCount_ == 0)
        return;
    if (ignoredDepth_ != 0) {
        --ignoredDepth_;
        return;
    }
    const HeadElement& element = *open_[--openCount_];
    if (element.takeText != nullptr)
        element.takeText(head_, text_);
    if (element.place == kInMetadata)
        head_.hasMetadata = true;
}

} // namespace vexaTransferLib::reader
