// SPDX-License-Identifier: MIT
#include <vexaTransferLib/model/ElementText.h>

#include <vexaTransferLib/model/ElementScan.h>
#include <vexaTransferLib/text/RawText.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <new>

namespace vexaTransferLib {

namespace {

using text::RawText;
using text::TextPlace;

// Twice the capacity, or what is needed.
std::int32_t Enlarged(std::int64_t capacity, std::int32_t needed) {
    const std::int64_t twice = std::min<std::int64_t>(2 * capacity, std::numeric_limits<std::int32_t>::max());
    return std::max(needed, static_cast<std::int32_t>(twice));
}

// Appends a part of the source as a reader of XML gets it.
void AppendDecoded(icu::UnicodeString& out, std::string_view raw, RawText::Form form, TextPlace place) {
    const std::int32_t before = out.length();
    // ICU counts the units of a text with 32 bits.
    if (raw.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max() - before))
        throw std::bad_alloc();
    const std::int32_t needed = before + static_cast<std::int32_t>(raw.size());
    // A text of many pieces must not be copied for each of them.
    const std::int64_t capacity = out.getCapacity();
    char16_t* const units = out.getBuffer(needed > capacity ? Enlarged(capacity, needed) : needed);
    if (units == nullptr)
        throw std::bad_alloc();
    const char16_t* const end = text::Decode(raw, form, place, units + before);
    out.releaseBuffer(static_cast<std::int32_t>(end - units));
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

std::string_view PrefixOf(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
}

std::string_view LocalNameOf(std::string_view name) {
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

bool IsDeclaration(std::string_view name) {
    return name == "xmlns" || PrefixOf(name) == "xmlns";
}

icu::UnicodeString DecodedValue(std::string_view raw) {
    icu::UnicodeString value;
    AppendDecoded(value, raw, RawText::Form::kEncoded, TextPlace::kAttribute);
    return value;
}

icu::UnicodeString ContentText(const char* tag) {
    icu::UnicodeString text;
    const ScannedTag start = ScanTag(tag);
    if (!start.isEmpty)
        AppendTexts(text, start.end);
    return text;
}

} // namespace vexaTransferLib
