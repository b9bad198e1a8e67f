// SPDX-License-Identifier: MIT
#include <vexaTransferLib/cleaner/Steps.h>

#include <vexaTransferLib/cleaner/CaseFolding.h>
#include <vexaTransferLib/cleaner/Replacements.h>
#include <vexaTransferLib/cleaner/Scanning.h>

#include <cstddef>
#include <string_view>

namespace vexaTransferLib::cleaner {

namespace {

constexpr std::u16string_view kNames[] = {u"b",     u"i",   u"u",    u"*",     u"code", u"color",
                                          u"email", u"img", u"list", u"quote", u"size", u"url"};

bool HasUnit(std::u16string_view text, std::size_t at, char16_t unit) {
    return at < text.size() && text[at] == unit;
}

// Where the bracket is that closes the tag whose name ended at `nameEnd`. "=" must be followed by at least
// one character that is no bracket.
std::size_t ClosingBracket(std::u16string_view text, std::size_t nameEnd) {
    if (HasUnit(text, nameEnd, u']'))
        return nameEnd;
    if (!HasUnit(text, nameEnd, u'=') || HasUnit(text, nameEnd + 1, u']'))
        return kNpos;
    return text.find(u']', nameEnd + 1);
}

std::size_t EndOfTagAt(std::u16string_view text, std::size_t begin) {
    const std::size_t nameBegin = begin + (HasUnit(text, begin + 1, u'/') ? 2 : 1);
    for (const std::u16string_view name : kNames) {
        const std::size_t nameEnd = EndOfName(text, nameBegin, name);
        // A name may be the begin of another, as "i" is of "img".
        const std::size_t bracket = nameEnd == kNpos ? kNpos : ClosingBracket(text, nameEnd);
        if (bracket != kNpos)
            return bracket + 1;
    }
    return kNpos;
}

} // namespace

bool RemoveBBCodeTags(icu::UnicodeString& text) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    // Behind the last closing bracket no tag ends: only as far as there is the text searched.
    const std::size_t last = units.rfind(u']');
    const std::u16string_view closed = units.substr(0, last == kNpos ? 0 : last + 1);
    std::size_t from = 0;
    for (std::size_t begin = 0; (begin = closed.find(u'[', from)) != kNpos;) {
        const std::size_t end = EndOfTagAt(closed, begin);
        if (end != kNpos)
            replacements.Replace(begin, end, {});
        from = end == kNpos ? begin + 1 : end;
    }
    return replacements.Finish();
}

} // namespace vexaTransferLib::cleaner
