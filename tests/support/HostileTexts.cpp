// SPDX-License-Identifier: MIT
#include "support/HostileTexts.h"

#include <iterator>
#include <random>
#include <string_view>

namespace vexaTransferLib::testing_support {

namespace {

constexpr HostileText kTexts[] = {
    {.name = "letters", .unit = u"x"},
    {.name = "comment_begins", .unit = u"<!--"},
    {.name = "comment_dashes", .unit = u"<!---", .tail = u"--"},
    {.name = "comment_almost_ends", .unit = u"<!--x --    x", .tail = u"<!-- --    "},
    {.name = "spaces_behind_dashes", .head = u"<!--x", .unit = u"--          "},
    {.name = "comments", .unit = u"<!--x-->"},
    {.name = "dashes", .unit = u"-", .tail = u"<!--"},
    {.name = "style_begins", .unit = u"<style"},
    {.name = "style_begins_and_spaces", .unit = u"<style    ", .tail = u"></style"},
    {.name = "styles_without_end", .unit = u"<style>"},
    {.name = "scripts_without_end", .unit = u"<script></", .tail = u"script"},
    {.name = "styles_ended_by_scripts", .unit = u"<style></script", .tail = u">"},
    {.name = "styles_then_half_ends", .unit = u"<style>", .then = u"</style"},
    {.name = "spaces_in_a_style_tag", .head = u"<style", .unit = u" ", .tail = u"></style"},
    {.name = "spaces_in_half_an_end", .head = u"<style></style", .unit = u" ", .tail = u"a"},
    {.name = "styles_with_half_an_end", .unit = u"<style></style"},
    {.name = "styles", .unit = u"<style>x</style>"},
    {.name = "brackets", .unit = u"<"},
    {.name = "closing_brackets", .unit = u">"},
    {.name = "both_brackets", .unit = u"<>"},
    {.name = "bracket_pairs", .unit = u"< ", .tail = u">"},
    {.name = "tag_begins", .unit = u"<a "},
    {.name = "block_begins", .unit = u"<p"},
    {.name = "break_begins", .unit = u"</blockquot", .tail = u"<br"},
    {.name = "blocks", .unit = u"<p>"},
    {.name = "breaks", .unit = u"<br>x"},
    {.name = "bbcode_begins", .unit = u"[url="},
    {.name = "bbcode_with_one_end", .unit = u"[url=", .tail = u"]"},
    {.name = "bbcode_without_parameter", .unit = u"[b=]"},
    {.name = "bbcode_brackets", .unit = u"[", .tail = u"]"},
    {.name = "bbcode", .unit = u"[b]x"},
    {.name = "spaces", .unit = u" "},
    {.name = "spaces_in_a_line", .head = u"x", .unit = u" ", .tail = u"x"},
    {.name = "spaces_between_letters", .unit = u"x               "},
    {.name = "tabs", .unit = u"\t"},
    {.name = "tabs_and_spaces", .unit = u"\t ", .tail = u"x"},
    {.name = "crlf", .unit = u"\r\n"},
    {.name = "lf", .unit = u"\n"},
    {.name = "cr", .unit = u"\r", .tail = u"\n"},
    {.name = "spaces_and_lf", .unit = u" \n", .tail = u" "},
    {.name = "numbers", .unit = u"&#65;"},
    {.name = "numbers_too_long", .unit = u"&#11111111111", .tail = u";"},
    {.name = "number_begins", .unit = u"&#x"},
    {.name = "ampersands", .unit = u"&", .tail = u";"},
    {.name = "names", .unit = u"&amp;"},
    {.name = "spaces_by_name", .unit = u"&nbsp;"},
    {.name = "quotes", .unit = u"\u201C\u2019"},
    {.name = "dashes_and_ellipses", .unit = u"\u2013\u2014\u2026"},
};

bool TakesMuchAway(std::u16string_view piece) {
    return piece.find(u'-') != std::u16string_view::npos || piece.find(u"</s") != std::u16string_view::npos;
}

void AppendUpTo(icu::UnicodeString& text, std::int32_t length, const icu::UnicodeString& piece) {
    while (text.length() + piece.length() <= length)
        text.append(piece);
}

} // namespace

icu::UnicodeString HostileText::OfLength(std::int32_t length) const {
    icu::UnicodeString text(length, 0, 0);
    text.append(head, -1);
    AppendUpTo(text, *then == 0 ? length : length / 2, unit);
    if (*then != 0)
        AppendUpTo(text, length, then);
    return text.append(tail, -1);
}

std::span<const HostileText> HostileTexts() {
    return kTexts;
}

icu::UnicodeString HostileMixture(std::int32_t length) {
    std::mt19937 random(20240229);
    icu::UnicodeString text(length, 0, 0);
    while (text.length() < length) {
        const HostileText& hostile = kTexts[random() % std::size(kTexts)];
        const char16_t* const piece = random() % 8 == 0 ? hostile.tail : hostile.unit;
        if (!TakesMuchAway(piece))
            text.append(piece, -1);
    }
    return text;
}

} // namespace vexaTransferLib::testing_support
