// SPDX-License-Identifier: MIT
#include <vexaTransferLib/cleaner/Steps.h>

#include <vexaTransferLib/cleaner/CaseFolding.h>
#include <vexaTransferLib/cleaner/Replacements.h>
#include <vexaTransferLib/cleaner/Scanning.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <string_view>

namespace vexaTransferLib::cleaner {

namespace {

using Names = std::span<const std::u16string_view>;

constexpr std::u16string_view kBlockNames[] = {u"blockquote", u"div", u"hr", u"p"};
constexpr std::u16string_view kBreakNames[] = {
    u"/blockquote", u"br", u"dd",  u"dl",   u"dt",  u"/div", u"h1",  u"/h1", u"h2",
    u"/h2",         u"h3", u"/h3", u"h4",   u"/h4", u"h5",   u"/h5", u"h6",  u"/h6",
    u"li",          u"ol", u"/ol", u"/pre", u"tr",  u"ul",   u"/ul"};

bool BeginsWithAName(std::u16string_view text, std::size_t begin, Names names) {
    return std::any_of(names.begin(), names.end(),
                       [&](std::u16string_view name) { return EndOfName(text, begin, name) != kNpos; });
}

// No name has a bracket in it, so that the tag ends at the first, whichever name it was.
bool ReplaceTags(icu::UnicodeString& text, Names names, std::u16string_view with) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    std::size_t from = 0;
    for (std::size_t begin = 0; (begin = units.find(u'<', from)) != kNpos;) {
        from = begin + 1;
        if (!BeginsWithAName(units, from, names))
            continue;
        const std::size_t bracket = units.find(u'>', from);
        // Nor is there one for the tags behind this.
        if (bracket == kNpos)
            break;
        from = bracket + 1;
        replacements.Replace(begin, from, with);
    }
    return replacements.Finish();
}

} // namespace

bool ReplaceBlockTags(icu::UnicodeString& text) {
    return ReplaceTags(text, kBlockNames, kParagraphBreak);
}

bool ReplaceBreakTags(icu::UnicodeString& text) {
    return ReplaceTags(text, kBreakNames, kLineBreak);
}

bool RemoveTags(icu::UnicodeString& text) {
    constexpr std::u16string_view kBrackets = u"<>";
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    std::size_t begin = units.find(u'<');
    while (begin != kNpos) {
        const std::size_t bracket = units.find_first_of(kBrackets, begin + 1);
        if (bracket == kNpos)
            break;
        if (units[bracket] == u'>')
            replacements.Replace(begin, bracket + 1, {});
        begin = units.find(u'<', bracket);
    }
    return replacements.Finish();
}

} // namespace vexaTransferLib::cleaner
