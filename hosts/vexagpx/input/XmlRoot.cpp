// SPDX-License-Identifier: MIT
#include <vexagpx/input/XmlRoot.h>

#include <algorithm>
#include <cctype>

namespace vexagpx {

namespace {

/// The code units of UTF-16 as bytes, those outside ASCII as underscores; the text itself in any other encoding.
std::string AsciiOf(std::string_view head) {
    const bool isBig = head.starts_with("\xFE\xFF") || head.starts_with(std::string_view("\0<", 2));
    const bool isLittle = head.starts_with("\xFF\xFE") || head.starts_with(std::string_view("<\0", 2));
    if (!isBig && !isLittle)
        return std::string(head.starts_with("\xEF\xBB\xBF") ? head.substr(3) : head);
    std::string text;
    const std::size_t start = head.starts_with("<") || head.starts_with('\0') ? 0 : 2;
    for (std::size_t i = start; i + 1 < head.size(); i += 2) {
        const char high = head[isBig ? i : i + 1];
        const char low = head[isBig ? i + 1 : i];
        text.push_back(high == '\0' ? low : '_');
    }
    return text;
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char byte) { return static_cast<char>(std::tolower(byte)); });
    return lower;
}

/// After the declaration, comment or processing instruction at a place; npos when it does not end.
std::size_t EndOfMarkup(std::string_view text, std::size_t at) {
    const std::string_view rest = text.substr(at);
    const std::string_view mark = rest.starts_with("<!--") ? "-->" : rest.starts_with("<?") ? "?>" : ">";
    const std::size_t end = text.find(mark, at);
    return end == std::string_view::npos ? end : end + mark.size();
}

XmlRoot At(std::string_view text, std::size_t at, std::string name) {
    const std::string_view before = text.substr(0, at);
    const std::size_t lineStart = before.rfind('\n') + 1; // npos + 1 is 0
    return {std::move(name), 1 + static_cast<std::uint64_t>(std::count(before.begin(), before.end(), '\n')),
            at - lineStart + 1};
}

/// The local name of the start tag at a place.
std::string NameAt(std::string_view text, std::size_t at) {
    const std::size_t end = text.find_first_of(" \t\r\n/>", at + 1);
    const std::string_view name = text.substr(at + 1, end == std::string_view::npos ? end : end - at - 1);
    const std::string local(name.substr(name.find(':') + 1)); // npos + 1 is 0
    return Lower(local) == "html" ? "html" : local;
}

} // namespace

std::optional<XmlRoot> FindXmlRoot(std::string_view head) {
    const std::string text = AsciiOf(head);
    std::size_t at = 0;
    while ((at = text.find_first_not_of(" \t\r\n", at)) != std::string::npos) {
        const std::string_view rest = std::string_view(text).substr(at);
        if (rest[0] != '<')
            return std::nullopt;
        if (Lower(rest.substr(0, 14)) == "<!doctype html")
            return At(text, at, "html");
        if (!rest.starts_with("<!") && !rest.starts_with("<?"))
            return At(text, at, NameAt(text, at));
        at = EndOfMarkup(text, at);
        if (at == std::string::npos)
            return std::nullopt;
    }
    return std::nullopt;
}

} // namespace vexagpx
