// SPDX-License-Identifier: MIT
#include <vexaTransferLib/cleaner/Steps.h>

#include <vexaTransferLib/cleaner/Replacements.h>

#include <cstddef>
#include <string_view>

namespace vexaTransferLib::cleaner {

namespace {

struct Substitution {
    char16_t character;
    std::u16string_view with;
};

// One pass for two characters: neither is made of the other.
bool Substitute(icu::UnicodeString& text, Substitution first, Substitution second) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    for (std::size_t at = 0; at < units.size(); ++at) {
        if (units[at] == first.character)
            replacements.Replace(at, at + 1, first.with);
        else if (units[at] == second.character)
            replacements.Replace(at, at + 1, second.with);
    }
    return replacements.Finish();
}

} // namespace

bool ReplaceEllipses(icu::UnicodeString& text) {
    constexpr Substitution kEllipsis{u'\u2026', u"..."};
    return Substitute(text, kEllipsis, kEllipsis);
}

bool StraightenSingleQuotes(icu::UnicodeString& text) {
    return Substitute(text, {u'\u2018', u"'"}, {u'\u2019', u"'"});
}

bool StraightenDoubleQuotes(icu::UnicodeString& text) {
    return Substitute(text, {u'\u201C', u"\""}, {u'\u201D', u"\""});
}

bool ReplaceDashes(icu::UnicodeString& text) {
    return Substitute(text, {u'\u2013', u"-"}, {u'\u2014', u"--"});
}

} // namespace vexaTransferLib::cleaner
