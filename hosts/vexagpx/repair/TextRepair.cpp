// SPDX-License-Identifier: MIT
#include <vexagpx/repair/TextRepair.h>

#include <array>
#include <charconv>
#include <utility>

namespace vexagpx {

namespace {

using Entity = std::pair<std::string_view, std::string_view>;
constexpr std::array<Entity, 24> kHtml{{
    {"nbsp", "\u00A0"},   {"copy", "\u00A9"},   {"reg", "\u00AE"},    {"deg", "\u00B0"},
    {"auml", "\u00E4"},   {"ouml", "\u00F6"},   {"uuml", "\u00FC"},   {"Auml", "\u00C4"},
    {"Ouml", "\u00D6"},   {"Uuml", "\u00DC"},   {"szlig", "\u00DF"},  {"eacute", "\u00E9"},
    {"egrave", "\u00E8"}, {"agrave", "\u00E0"}, {"ccedil", "\u00E7"}, {"ecirc", "\u00EA"},
    {"ndash", "\u2013"},  {"mdash", "\u2014"},  {"lsquo", "\u2018"},  {"rsquo", "\u2019"},
    {"ldquo", "\u201C"},  {"rdquo", "\u201D"},  {"hellip", "\u2026"}, {"euro", "\u20AC"},
}};

/// The size of the character at this place when XML cannot hold it; 0 for a good one.
std::size_t BadSize(std::string_view text, std::size_t at) {
    const auto c = static_cast<unsigned char>(text[at]);
    if (c < 0x20)
        return c == '\t' || c == '\n' || c == '\r' ? 0 : 1;
    const std::string_view three = text.substr(at, 3);
    return three == "\xEF\xBF\xBE" || three == "\xEF\xBF\xBF" ? 3 : 0;
}

bool IsGoodNumber(std::string_view digits) {
    int base = 10;
    if (!digits.empty() && digits[0] == 'x') {
        base = 16;
        digits.remove_prefix(1);
    }
    unsigned value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    if (error != std::errc() || end != digits.data() + digits.size())
        return false;
    return value == 9 || value == 10 || value == 13 || (value >= 0x20 && value < 0xD800) ||
           (value >= 0xE000 && value < 0xFFFE) || (value >= 0x10000 && value <= 0x10FFFF);
}

/// Appends the reference at this place, or an escaped "&". Returns the size of what was taken.
std::size_t AppendReference(std::string_view text, std::size_t at, std::size_t offset, std::string& out,
                            RepairLog& log) {
    const std::size_t length = text.substr(at, 12).find(';');
    const std::string_view name =
        length == std::string_view::npos ? std::string_view() : text.substr(at + 1, length - 1);
    const bool isNumber = !name.empty() && name[0] == '#';
    if (name == "amp" || name == "lt" || name == "gt" || name == "quot" || name == "apos" ||
        (isNumber && IsGoodNumber(name.substr(1)))) {
        out += text.substr(at, length + 1);
        return length + 1;
    }
    for (const auto& [html, character] : kHtml)
        if (name == html) {
            log.Add(offset + at, "entity", "&" + std::string(name) + "; became its character");
            out += character;
            return length + 1;
        }
    log.Add(offset + at, "ampersand", "& became &amp;");
    out += "&amp;";
    return 1;
}

} // namespace

void AppendWithoutBadCharacters(std::string_view text, std::size_t offset, std::string& out, RepairLog& log) {
    for (std::size_t at = 0; at < text.size();) {
        if (const std::size_t bad = BadSize(text, at)) {
            log.Add(offset + at, "character", "a character that XML cannot hold is removed");
            at += bad;
        } else {
            out += text[at++];
        }
    }
}

void AppendRepairedText(std::string_view text, std::size_t offset, std::string& out, RepairLog& log,
                        TextKind kind) {
    for (std::size_t at = 0; at < text.size();) {
        if (const std::size_t bad = BadSize(text, at)) {
            log.Add(offset + at, "character", "a character that XML cannot hold is removed");
            at += bad;
        } else if (text[at] == '&') {
            at += AppendReference(text, at, offset, out, log);
        } else if (text[at] == '<') {
            log.Add(offset + at, "less-than", "< became &lt;");
            out += "&lt;";
            ++at;
        } else if (kind == TextKind::kContent && text.substr(at, 3) == "]]>") {
            log.Add(offset + at, "cdata-end", "]]> became ]]&gt;");
            out += "]]&gt;";
            at += 3;
        } else {
            out += text[at++];
        }
    }
}

} // namespace vexagpx
