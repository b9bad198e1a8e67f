// SPDX-License-Identifier: MIT
#include <vexaTransferLib/cleaner/Steps.h>

#include <vexaTransferLib/cleaner/Replacements.h>
#include <vexaTransferLib/cleaner/Scanning.h>

#include <unicode/uchar.h>
#include <unicode/utf16.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

namespace vexaTransferLib::cleaner {

namespace {

struct Substitute {
    int codePoint;
    const char16_t* text;
};

constexpr Substitute kSubstitutes[] = {
    {0x2013, u"-"},  {0x2014, u"--"}, {0x2018, u"'"},   {0x2019, u"'"},
    {0x201C, u"\""}, {0x201D, u"\""}, {0x2026, u"..."},
};

struct NamedReference {
    std::u16string_view reference;
    std::u16string_view character;
};

constexpr NamedReference kNamedReferences[] = {
    {u"&trade;", u"\u2122"}, {u"&reg;", u"\u00AE"}, {u"&copy;", u"\u00A9"}, {u"&deg;", u"\u00B0"},
    {u"&nbsp;", u" "},       {u"&lt;", u"<"},       {u"&gt;", u">"},        {u"&amp;", u"&"},
};

constexpr int kNoCodePoint = -1;

// How the number of a reference is written: what it counts by, and the most digits that it may have.
struct Notation {
    int base;
    int longest;
};

constexpr Notation kDecimal{10, 10};
constexpr Notation kHexadecimal{16, 8};

bool IsShownAsIs(int codePoint) {
    const bool printableAscii = codePoint >= 0x20 && codePoint <= 0x7E;
    const bool printableLatin1 = codePoint >= 0xA0 && codePoint <= 0xFF;
    return printableAscii || printableLatin1;
}

// -1 for everything that is no ASCII digit of the notation.
int DigitValue(UChar32 character, Notation notation) {
    if (character >= u'0' && character <= u'9')
        return character - u'0';
    if (notation.base == kDecimal.base)
        return -1;
    if (character >= u'a' && character <= u'f')
        return character - u'a' + 10;
    if (character >= u'A' && character <= u'F')
        return character - u'A' + 10;
    return -1;
}

// The number that the ASCII digits make up to the first digit of another script.
class Number {
public:
    void Add(int digit, Notation notation) {
        ended_ = ended_ || digit < 0;
        if (ended_)
            return;
        empty_ = false;
        value_ = value_ * notation.base + digit;
    }

    int CodePoint() const {
        return empty_ || value_ > std::numeric_limits<int>::max() ? kNoCodePoint : static_cast<int>(value_);
    }

private:
    std::int64_t value_ = 0;
    bool empty_ = true;
    bool ended_ = false;
};

struct NumericReference {
    std::size_t end;
    int codePoint;
};

constexpr NumericReference kNoReference{kNpos, kNoCodePoint};

NumericReference DigitsAt(std::u16string_view text, std::size_t begin, Notation notation) {
    Number number;
    std::size_t at = begin;
    for (int count = 0; count <= notation.longest && at < text.size(); ++count) {
        UChar32 character = 0;
        U16_NEXT(text.data(), at, text.size(), character);
        if (character == u';' && count > 0)
            return {at, number.CodePoint()};
        const int digit = DigitValue(character, notation);
        if (digit < 0 && u_isdigit(character) == 0)
            return kNoReference;
        number.Add(digit, notation);
    }
    return kNoReference;
}

NumericReference NumericReferenceAt(std::u16string_view text, std::size_t begin) {
    if (!text.substr(begin).starts_with(u"&#"))
        return kNoReference;
    const std::size_t number = begin + 2;
    if (number < text.size() && (text[number] == u'x' || text[number] == u'X'))
        return DigitsAt(text, number + 1, kHexadecimal);
    return DigitsAt(text, number, kDecimal);
}

const NamedReference* NamedReferenceAt(std::u16string_view text, std::size_t begin) {
    for (const NamedReference& named : kNamedReferences) {
        if (text.substr(begin).starts_with(named.reference))
            return &named;
    }
    return nullptr;
}

} // namespace

icu::UnicodeString CharacterFor(int codePoint) {
    if (IsShownAsIs(codePoint))
        return icu::UnicodeString(static_cast<char16_t>(codePoint));
    for (const Substitute& substitute : kSubstitutes) {
        if (substitute.codePoint == codePoint)
            return icu::UnicodeString(substitute.text);
    }
    return icu::UnicodeString();
}

bool ReplaceNumericReferences(icu::UnicodeString& text) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    std::size_t from = 0;
    for (std::size_t begin = 0; (begin = units.find(u'&', from)) != kNpos;) {
        from = begin + 1;
        const NumericReference reference = NumericReferenceAt(units, begin);
        if (reference.end == kNpos)
            continue;
        const icu::UnicodeString character = CharacterFor(reference.codePoint);
        from = reference.end;
        replacements.Replace(begin, from,
                             {character.getBuffer(), static_cast<std::size_t>(character.length())});
    }
    return replacements.Finish();
}

// One pass does what one after the other for each name would: no reference begins inside another, and what
// stands for one is no part of another. Only "&amp;" makes the begin of references; they stay.
bool ReplaceNamedReferences(icu::UnicodeString& text) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    std::size_t from = 0;
    for (std::size_t begin = 0; (begin = units.find(u'&', from)) != kNpos;) {
        from = begin + 1;
        const NamedReference* const named = NamedReferenceAt(units, begin);
        if (named == nullptr)
            continue;
        from = begin + named->reference.size();
        replacements.Replace(begin, from, named->character);
    }
    return replacements.Finish();
}

} // namespace vexaTransferLib::cleaner
