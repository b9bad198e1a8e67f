// SPDX-License-Identifier: MIT
#include <vexaTransferLib/model/ElementScan.h>

#include <vexaTransferLib/text/XmlBlank.h>

#include <cstddef>
#include <cstring>

namespace vexaTransferLib {

namespace {

using text::IsBlank;

constexpr std::string_view kComment = "<!--";
constexpr std::string_view kSection = "<![CDATA[";
constexpr std::string_view kSectionEnd = "]]>";

bool StartsWith(const char* at, std::string_view text) {
    return std::strncmp(at, text.data(), text.size()) == 0;
}

const char* Find(const char* at, char wanted) {
    return static_cast<const char*>(std::strchr(at, wanted));
}

// The next mark, which ends with ">".
const char* FindEnd(const char* at, std::string_view mark) {
    for (const char* end = Find(at, '>');; end = Find(end + 1, '>')) {
        const char* const start = end + 1 - mark.size();
        if (start >= at && std::string_view(start, mark.size()) == mark)
            return start;
    }
}

std::string_view Between(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

// For what is mostly a few bytes away, which costs less than the call of a search.
const char* FindNear(const char* at, char wanted) {
    while (*at != wanted)
        ++at;
    return at;
}

// The ">" of a tag; one may also be in a value.
const char* TagEnd(const char* at) {
    for (;; ++at) {
        if (*at == '>')
            return at;
        if (*at == '"' || *at == '\'')
            at = FindNear(at + 1, *at);
    }
}

ScannedPart ScanMarkup(const char* at) {
    using Kind = ScannedPart::Kind;
    if (at[1] == '/')
        return {Kind::kEnd, {}, FindNear(at, '>') + 1};
    if (StartsWith(at, kComment))
        return {Kind::kOther, {}, FindEnd(at + kComment.size(), "-->") + 3};
    if (at[1] == '?')
        return {Kind::kOther, {}, FindEnd(at, "?>") + 2};
    const char* const begin = at + kSection.size();
    const char* const end = FindEnd(begin, kSectionEnd);
    return {Kind::kSection, Between(begin, end), end + kSectionEnd.size()};
}

} // namespace

ScannedTag ScanTag(const char* tag) {
    const char* const name = tag + 1;
    const char* at = name;
    while (!IsBlank(*at) && *at != '/' && *at != '>')
        ++at;
    const char* const end = TagEnd(at);
    const bool isEmpty = end[-1] == '/';
    return {Between(name, at), Between(at, isEmpty ? end - 1 : end), end + 1, isEmpty};
}

bool ScanAttribute(std::string_view& attributes, ScannedAttribute& attribute) {
    const char* at = attributes.data();
    const char* const end = at + attributes.size();
    while (at != end && IsBlank(*at))
        ++at;
    if (at == end)
        return false;
    const char* const name = at;
    while (!IsBlank(*at) && *at != '=')
        ++at;
    attribute.name = Between(name, at);
    while (*at != '"' && *at != '\'')
        ++at;
    const char* const value = at + 1;
    const char* const valueEnd = FindNear(value, *at);
    attribute.value = Between(value, valueEnd);
    attributes = Between(valueEnd + 1, end);
    return true;
}

ScannedPart ScanPart(const char* at) {
    if (*at != '<') {
        const char* const end = Find(at, '<');
        return {ScannedPart::Kind::kText, Between(at, end), end};
    }
    if (!IsStartTag(at))
        return ScanMarkup(at);
    const char* const end = SkipElement(at);
    return {ScannedPart::Kind::kElement, Between(at, end), end};
}

const char* SkipElement(const char* tag) {
    std::size_t depth = 0;
    for (const char* at = tag;; at = Find(at, '<')) {
        if (IsStartTag(at)) {
            const ScannedTag start = ScanTag(at);
            at = start.end;
            depth += start.isEmpty ? 0 : 1;
        } else {
            const ScannedPart part = ScanMarkup(at);
            at = part.end;
            depth -= part.kind == ScannedPart::Kind::kEnd ? 1 : 0;
        }
        if (depth == 0)
            return at;
    }
}

} // namespace vexaTransferLib
