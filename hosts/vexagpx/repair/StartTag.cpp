// SPDX-License-Identifier: MIT
#include <vexagpx/repair/StartTag.h>

#include <vexagpx/repair/TextRepair.h>

#include <unordered_set>

namespace vexagpx {

namespace {

constexpr std::string_view kSpace = " \t\r\n";

bool IsNameStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

std::size_t SkipSpace(std::string_view text, std::size_t at) {
    return std::min(text.find_first_not_of(kSpace, at), text.size());
}

class TagParser {
public:
    TagParser(std::string_view text, std::size_t at, RepairLog& log) : text_(text), at_(at + 1), log_(log) {}

    StartTag Parse();

private:
    bool IsAtEnd() const { return at_ >= text_.size(); }
    bool TakeEnd();
    void TakeAttribute(std::size_t space);
    void TakeUnclosed(std::string_view name, char quote, std::size_t space);
    void Add(std::string_view name, std::string_view value, char quote, std::size_t space);

    std::string_view text_;
    std::size_t at_;
    RepairLog& log_;
    StartTag tag_;
    std::unordered_set<std::string_view> names_;
};

/// True when the tag ends here.
bool TagParser::TakeEnd() {
    if (IsAtEnd()) {
        tag_.isCut = true;
        return true;
    }
    if (text_[at_] == '<') {
        log_.Add(at_, "tag", "the tag <" + std::string(tag_.name) + "> is ended");
        return true;
    }
    if (text_.substr(at_, 2) == "/>") {
        tag_.isEmpty = true;
        at_ += 2;
        return true;
    }
    if (text_[at_] != '>')
        return false;
    ++at_;
    return true;
}

void TagParser::Add(std::string_view name, std::string_view value, char quote, std::size_t space) {
    if (!names_.insert(name).second) {
        log_.Add(space, "attribute", "the second attribute " + std::string(name) + " is removed");
        return;
    }
    tag_.attributes.push_back({name, value});
    const std::size_t start = static_cast<std::size_t>(name.data() - text_.data());
    if (space == start)
        tag_.bytes += ' ';
    tag_.bytes += text_.substr(space, start - space);
    const auto valueStart = static_cast<std::size_t>(value.data() - text_.data());
    if (text_[valueStart - 1] == quote)
        tag_.bytes += text_.substr(start, valueStart - start);
    else
        tag_.bytes += std::string(name) + '=' + quote;
    AppendRepairedText(value, valueStart, tag_.bytes, log_, TextKind::kAttribute);
    tag_.bytes += quote;
}

void TagParser::TakeAttribute(std::size_t space) {
    const std::size_t size = NameSize(text_.substr(at_));
    if (size == 0) {
        log_.Add(at_, "attribute", "a character between attributes is removed");
        ++at_;
        return;
    }
    const std::string_view name = text_.substr(at_, size);
    at_ = SkipSpace(text_, at_ + size);
    if (IsAtEnd())
        return;
    if (text_[at_] != '=') {
        log_.Add(space, "attribute", "the attribute " + std::string(name) + " without a value is removed");
        return;
    }
    at_ = SkipSpace(text_, at_ + 1);
    if (IsAtEnd())
        return;
    const char quote = text_[at_];
    if (quote == '"' || quote == '\'') {
        const char ends[] = {quote, '<', 0};
        std::size_t close = text_.find_first_of(ends, at_ + 1);
        if (close == std::string_view::npos) {
            at_ = text_.size();
            return;
        }
        if (text_[close] == '<') {
            TakeUnclosed(name, quote, space);
            return;
        }
        const std::string_view value = text_.substr(at_ + 1, close - at_ - 1);
        at_ = close + 1;
        Add(name, value, quote, space);
        return;
    }
    const std::size_t end = std::min(text_.find_first_of(" \t\r\n<>\"'/", at_), text_.size());
    const std::string_view value = text_.substr(at_, end - at_);
    at_ = end;
    if (IsAtEnd())
        return;
    log_.Add(space, "attribute", "the value of " + std::string(name) + " is put into quotes");
    Add(name, value, '"', space);
}

// A value has no "<": its end was forgotten.
void TagParser::TakeUnclosed(std::string_view name, char quote, std::size_t space) {
    const std::size_t start = at_ + 1;
    const std::size_t end = std::min(text_.find_first_of(" \t\r\n<>/", start), text_.size());
    log_.Add(space, "attribute", "the value of " + std::string(name) + " gets its second quote");
    at_ = end;
    Add(name, text_.substr(start, end - start), quote, space);
}

StartTag TagParser::Parse() {
    tag_.name = text_.substr(at_, NameSize(text_.substr(at_)));
    tag_.bytes = "<" + std::string(tag_.name);
    at_ += tag_.name.size();
    for (;;) {
        const std::size_t space = at_;
        at_ = SkipSpace(text_, at_);
        const std::size_t before = at_;
        if (TakeEnd()) {
            tag_.bytes += text_.substr(space, before - space);
            break;
        }
        TakeAttribute(space);
    }
    tag_.end = at_;
    return std::move(tag_);
}

} // namespace

std::optional<std::string_view> StartTag::Find(std::string_view attribute) const {
    for (const TagAttribute& one : attributes)
        if (one.name == attribute)
            return one.value;
    return std::nullopt;
}

// The attributes of the bytes have values in quotes.
void SetTagAttribute(StartTag& tag, std::string_view name, std::string_view value) {
    std::string& bytes = tag.bytes;
    for (std::size_t at = tag.name.size() + 1;
         (at = bytes.find_first_not_of(kSpace, at)) != std::string::npos;) {
        const std::size_t open = bytes.find_first_of("'\"", at);
        const std::size_t close = open == std::string::npos ? open : bytes.find(bytes[open], open + 1);
        if (close == std::string::npos)
            break;
        if (bytes.substr(at, bytes.find_first_of("= \t\r\n", at) - at) == name) {
            bytes.replace(open + 1, close - open - 1, value);
            return;
        }
        at = close + 1;
    }
    std::string added = " ";
    added.append(name).append("=\"").append(value).append("\"");
    bytes.insert(tag.name.size() + 1, added);
}

std::size_t NameSize(std::string_view text) {
    if (text.empty() || !IsNameStart(text[0]))
        return 0;
    std::size_t size = 1;
    while (size < text.size() && (IsNameStart(text[size]) || (text[size] >= '0' && text[size] <= '9') ||
                                  text[size] == '-' || text[size] == '.' || text[size] == ':'))
        ++size;
    return size;
}

StartTag ParseStartTag(std::string_view text, std::size_t start, RepairLog& log) {
    return TagParser(text, start, log).Parse();
}

} // namespace vexagpx
