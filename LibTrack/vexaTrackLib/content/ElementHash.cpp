// SPDX-License-Identifier: MIT
#include <vexaTrackLib/content/ElementHash.h>

#include <vexaTransferLib/GpxObjectDetails.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string>

namespace vexaTrackLib::content {

namespace {

// What precedes a part of an element, so that none can be taken for another.
enum class Mark : std::uint64_t { kStart = 101, kAttribute, kText, kEnd };

bool IsBlank(char byte) {
    return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
}

bool IsNameEnd(char byte) {
    return IsBlank(byte) || byte == '=' || byte == '>' || byte == '/';
}

std::string_view LocalName(std::string_view name) {
    return name.substr(name.find(':') + 1);
}

void AppendUtf8(std::uint32_t character, std::string& out) {
    const auto append = [&out](std::uint32_t byte) { out += static_cast<char>(byte); };
    if (character < 0x80)
        return append(character);
    if (character < 0x800) {
        append(0xC0 | (character >> 6));
    } else if (character < 0x10000) {
        append(0xE0 | (character >> 12));
        append(0x80 | ((character >> 6) & 0x3F));
    } else {
        append(0xF0 | (character >> 18));
        append(0x80 | ((character >> 12) & 0x3F));
        append(0x80 | ((character >> 6) & 0x3F));
    }
    append(0x80 | (character & 0x3F));
}

/// \param name what is between "&" and ";"
void AppendReference(std::string_view name, std::string& out) {
    if (name.starts_with('#')) {
        const bool isHexadecimal = name.starts_with("#x");
        name.remove_prefix(isHexadecimal ? 2 : 1);
        std::uint32_t character = 0;
        std::from_chars(name.data(), name.data() + name.size(), character, isHexadecimal ? 16 : 10);
        return AppendUtf8(character, out);
    }
    if (name == "lt")
        out += '<';
    else if (name == "gt")
        out += '>';
    else if (name == "amp")
        out += '&';
    else if (name == "quot")
        out += '"';
    else if (name == "apos")
        out += '\'';
    else
        out.append("&").append(name).append(";");
}

/// Appends a text with its references replaced.
void AppendDecoded(std::string_view text, std::string& out) {
    while (!text.empty()) {
        const std::size_t start = std::min(text.find('&'), text.size());
        out += text.substr(0, start);
        text.remove_prefix(start);
        const std::size_t end = text.find(';');
        if (text.empty() || end == std::string_view::npos)
            break;
        AppendReference(text.substr(1, end - 1), out);
        text.remove_prefix(end + 1);
    }
    out += text;
}

/// Each run of white space becomes a space, and none remains at the ends.
void Normalize(std::string& text) {
    std::size_t size = 0;
    for (const char byte : text) {
        if (!IsBlank(byte))
            text[size++] = byte;
        else if (size != 0 && text[size - 1] != ' ')
            text[size++] = ' ';
    }
    if (size != 0 && text[size - 1] == ' ')
        --size;
    text.resize(size);
}

/// Walks through an element without a tree, so that no depth exhausts the stack.
class ElementWalk {
public:
    ElementWalk(std::string_view xml, Hasher& hasher) : rest_(xml), hasher_(hasher) {}

    bool Run();

private:
    void TakeMarkup();
    void TakeStartTag();
    void TakeAttribute();
    void EndText();
    void SkipBlanks();
    std::string_view TakeName();
    std::string_view TakeUntil(std::string_view end);

    std::string_view rest_;
    Hasher& hasher_;
    std::string text_; ///< since the last tag
    bool hasValues_ = false;
};

bool ElementWalk::Run() {
    while (!rest_.empty()) {
        const std::size_t markup = std::min(rest_.find('<'), rest_.size());
        AppendDecoded(rest_.substr(0, markup), text_);
        rest_.remove_prefix(markup);
        if (!rest_.empty())
            TakeMarkup();
    }
    return hasValues_;
}

void ElementWalk::TakeMarkup() {
    constexpr std::string_view kCData = "<![CDATA[";
    if (rest_.starts_with(kCData)) {
        text_ += TakeUntil("]]>").substr(kCData.size());
    } else if (rest_.starts_with("<!--")) {
        TakeUntil("-->");
    } else if (rest_.starts_with("<?")) {
        TakeUntil("?>");
    } else if (rest_.starts_with("</")) {
        EndText();
        TakeUntil(">");
        hasher_.Add(static_cast<std::uint64_t>(Mark::kEnd));
    } else {
        EndText();
        TakeStartTag();
    }
}

void ElementWalk::TakeStartTag() {
    rest_.remove_prefix(1);
    hasher_.Add(static_cast<std::uint64_t>(Mark::kStart));
    hasher_.Add(LocalName(TakeName()));
    for (SkipBlanks(); !rest_.empty() && !IsNameEnd(rest_.front()); SkipBlanks())
        TakeAttribute();
    if (rest_.starts_with('/'))
        hasher_.Add(static_cast<std::uint64_t>(Mark::kEnd));
    TakeUntil(">");
}

void ElementWalk::TakeAttribute() {
    const std::string_view name = TakeName();
    rest_.remove_prefix(std::min(rest_.find_first_of("\"'"), rest_.size()));
    if (rest_.empty())
        return;
    const std::string_view quote = rest_.substr(0, 1);
    rest_.remove_prefix(1);
    const std::string_view value = TakeUntil(quote);
    if (name.starts_with("xmlns"))
        return;
    std::string decoded;
    AppendDecoded(value, decoded);
    Normalize(decoded);
    hasher_.Add(static_cast<std::uint64_t>(Mark::kAttribute));
    hasher_.Add(LocalName(name));
    hasher_.Add(std::string_view(decoded));
    hasValues_ = true;
}

void ElementWalk::EndText() {
    Normalize(text_);
    if (text_.empty())
        return;
    hasher_.Add(static_cast<std::uint64_t>(Mark::kText));
    hasher_.Add(std::string_view(text_));
    text_.clear();
    hasValues_ = true;
}

void ElementWalk::SkipBlanks() {
    while (!rest_.empty() && IsBlank(rest_.front()))
        rest_.remove_prefix(1);
}

std::string_view ElementWalk::TakeName() {
    const auto end = std::find_if(rest_.begin(), rest_.end(), IsNameEnd);
    const std::string_view name = rest_.substr(0, static_cast<std::size_t>(end - rest_.begin()));
    rest_.remove_prefix(name.size());
    return name;
}

/// What precedes the next `end`, which is taken too.
std::string_view ElementWalk::TakeUntil(std::string_view end) {
    const std::size_t at = std::min(rest_.find(end), rest_.size());
    const std::string_view taken = rest_.substr(0, at);
    rest_.remove_prefix(std::min(at + end.size(), rest_.size()));
    return taken;
}

} // namespace

bool AddElement(std::string_view xml, Hasher& hasher) {
    return ElementWalk(xml, hasher).Run();
}

bool AddTextElement(std::string_view name, std::string_view utf8, Hasher& hasher) {
    std::string text(utf8);
    Normalize(text);
    hasher.Add(static_cast<std::uint64_t>(Mark::kStart));
    hasher.Add(name);
    if (!text.empty()) {
        hasher.Add(static_cast<std::uint64_t>(Mark::kText));
        hasher.Add(std::string_view(text));
    }
    hasher.Add(static_cast<std::uint64_t>(Mark::kEnd));
    return !text.empty();
}

void AddLinks(const vexaTransferLib::GpxElement& object, Hasher& hasher) {
    const auto addText = [&hasher](std::string_view name, const icu::UnicodeString& text) {
        std::string utf8;
        AddTextElement(name, text.toUTF8String(utf8), hasher);
    };
    for (const vexaTransferLib::GpxLink& link : vexaTransferLib::GpxObjectDetails(object).GetLinks()) {
        addText("href", link.href);
        addText("text", link.text);
        addText("type", link.type);
    }
}

} // namespace vexaTrackLib::content
