// SPDX-License-Identifier: MIT
#include <vexagpx/terminal/Clusters.h>

#include <unicode/uchar.h>
#include <unicode/utf16.h>

namespace vexagpx {

namespace {

constexpr UChar32 kJoiner = 0x200D;
constexpr UChar32 kNonJoiner = 0x200C;
constexpr UChar32 kEmojiSelector = 0xFE0F;
constexpr UChar32 kBlackFlag = 0x1F3F4;

bool IsPictograph(UChar32 character) {
    return u_hasBinaryProperty(character, UCHAR_EXTENDED_PICTOGRAPHIC);
}

bool IsRegion(UChar32 character) {
    return u_hasBinaryProperty(character, UCHAR_REGIONAL_INDICATOR);
}

bool IsTag(UChar32 character) {
    return character >= 0xE0020 && character <= 0xE007F;
}

/// What follows a pictograph within one emoji.
bool ContinuesEmoji(UChar32 character) {
    return character == kEmojiSelector || IsTag(character) || u_charType(character) == U_ENCLOSING_MARK ||
           u_hasBinaryProperty(character, UCHAR_EMOJI_MODIFIER);
}

bool IsMark(UChar32 character) {
    const int type = u_charType(character);
    return type == U_NON_SPACING_MARK || type == U_ENCLOSING_MARK || character == kJoiner ||
           character == kNonJoiner || u_hasBinaryProperty(character, UCHAR_VARIATION_SELECTOR) ||
           IsTag(character);
}

std::size_t CharacterWidth(UChar32 character) {
    if (IsMark(character))
        return 0;
    const int syllable = u_getIntPropertyValue(character, UCHAR_HANGUL_SYLLABLE_TYPE);
    if (syllable == U_HST_VOWEL_JAMO || syllable == U_HST_TRAILING_JAMO)
        return 0;
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_FULLWIDTH || width == U_EA_WIDE ? 2 : 1;
}

UChar32 CharacterAt(const icu::UnicodeString& text, std::int32_t at) {
    return at < text.length() ? text.char32At(at) : 0;
}

Cluster EmojiAt(const icu::UnicodeString& text, std::int32_t start) {
    std::size_t width = CharacterWidth(text.char32At(start));
    std::int32_t at = text.moveIndex32(start, 1);
    for (;;) {
        const UChar32 character = CharacterAt(text, at);
        if (character != 0 && ContinuesEmoji(character)) {
            width = 2;
            at = text.moveIndex32(at, 1);
        } else if (character == kJoiner && IsPictograph(CharacterAt(text, at + 1))) {
            width = 2;
            at = text.moveIndex32(at + 1, 1);
        } else {
            return {at, width};
        }
    }
}

} // namespace

Cluster ClusterAt(const icu::UnicodeString& text, std::int32_t start) {
    const UChar32 first = text.char32At(start);
    // Most texts are in letters that nothing is joined to.
    std::int32_t at = text.moveIndex32(start, 1);
    if (first < 0x7F && CharacterAt(text, at) < 0x7F)
        return {at, 1};
    if (IsRegion(first) && IsRegion(CharacterAt(text, at)))
        return {text.moveIndex32(at, 1), 2};
    if (IsPictograph(first))
        return EmojiAt(text, start);
    std::size_t width = CharacterWidth(first);
    for (; at < text.length() && CharacterWidth(text.char32At(at)) == 0; at = text.moveIndex32(at, 1))
        // A digit or a letter in a frame is an emoji.
        if (text.char32At(at) == kEmojiSelector)
            width = 2;
    return {at, width};
}

bool IsPartOfCluster(const icu::UnicodeString& before, UChar32 character, UChar32 after) {
    if (before.isEmpty())
        return false;
    const UChar32 last = before.char32At(before.length() - 1);
    if (character == kJoiner || character == kNonJoiner)
        return last > 0x7F && after > 0x7F && u_isgraph(after) && last != kJoiner && last != kNonJoiner;
    if (character == kEmojiSelector)
        return u_hasBinaryProperty(last, UCHAR_EMOJI);
    return IsTag(character) && (last == kBlackFlag || IsTag(last));
}

} // namespace vexagpx
