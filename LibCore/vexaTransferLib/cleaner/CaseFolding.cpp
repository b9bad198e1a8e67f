// SPDX-License-Identifier: MIT
#include <vexaTransferLib/cleaner/CaseFolding.h>

#include <vexaTransferLib/cleaner/Scanning.h>

namespace vexaTransferLib::cleaner {

namespace {

constexpr char16_t kLongS = u'\u017F';
constexpr char16_t kKelvinSign = u'\u212A';
constexpr char16_t kLongStLigature = u'\uFB05';
constexpr char16_t kStLigature = u'\uFB06';

// No other character folds to one ASCII letter.
char16_t Folded(char16_t unit) {
    if (unit >= u'A' && unit <= u'Z')
        return static_cast<char16_t>(unit - u'A' + u'a');
    if (unit == kLongS)
        return u's';
    return unit == kKelvinSign ? u'k' : unit;
}

// What else folds to several ASCII letters makes "ff", "fi", "fl" or "ss", which are in no name.
bool FoldsToSt(char16_t unit) {
    return unit == kLongStLigature || unit == kStLigature;
}

} // namespace

std::size_t EndOfName(std::u16string_view text, std::size_t begin, std::u16string_view name) {
    while (!name.empty()) {
        if (begin == text.size())
            return kNpos;
        const char16_t unit = text[begin++];
        std::size_t matched = 0;
        if (Folded(unit) == name.front())
            matched = 1;
        else if (FoldsToSt(unit) && name.starts_with(u"st"))
            matched = 2;
        else
            return kNpos;
        name.remove_prefix(matched);
    }
    return begin;
}

} // namespace vexaTransferLib::cleaner
