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

bool StartsWithName(std::u16string_view text, std::size_t start, Names names) {
    return std::any_of(names.begin(), names.end(),
                       [&](std::u16string_view name) { return EndOfName(text, start, name) != kNpos; });
}

// A tag ends at the first ">" after its start, whichever name matched, because no name contains one.
bool ReplaceTags(icu::UnicodeString& text, Names names, std::u16string_view with) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    std::size_t from = 0;
    for (std::size_t start = 0; (start = units.find(u'<', from)) != kNpos;) {
        from = start + 1;
        if (!StartsWithName(units, from, names))
            continue;
        const std::size_t bracket = units.find(u'>', from);
        // If no ">" follows this tag, none follows a later one.
        if (bracket == kNpos)
            break;
        from = bracket + 1;
        replacements.Replace(start, from, with);
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
    std::size_t start = units.find(u'<');
    while (start != kNpos) {
        const std::size_t bracket = units.find_first_of(kBrackets, start + 1);
        if (bracket == kNpos)
            break;
        if (units[bracket] == u'>')
            replacements.Replace(start, bracket + 1, {});
        start = units.find(u'<', bracket);
    }
    return replacements.Finish();
}

} // namespace vexaTransferLib::cleaner
