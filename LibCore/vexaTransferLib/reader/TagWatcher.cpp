// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/TagWatcher.h>

#include <vexaTransferLib/reader/ReadAborted.h>
#include <vexaTransferLib/text/XmlBlank.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

// Represents every character that is not ASCII and so is not a part of markup.
constexpr char kOtherCharacter = '\x80';
// The XML parser asks for more bytes before it has used up those that it has.
constexpr std::uint64_t kLookahead = 1024;
// The limit of a document type declaration up to its internal subset, where the parser reports it.
constexpr std::uint64_t kDocumentTypeBytes = 65536;
constexpr std::uint64_t kEndless = std::numeric_limits<std::uint64_t>::max();

/// True for the characters that end a name, or the white space around one, in a start tag.
constexpr std::array<bool, 256> kEndsNames = [] {
    std::array<bool, 256> ends{};
    for (const char character : {'=', '"', '\'', '>'})
        ends[static_cast<unsigned char>(character)] = true;
    return ends;
}();

const unsigned char* Find(char wanted, const unsigned char* at, const unsigned char* end) {
    const void* const found = std::memchr(at, wanted, static_cast<std::size_t>(end - at));
    return found != nullptr ? static_cast<const unsigned char*>(found) : end;
}

/// The value of `encoding` in the text between "<?" and "?>"; empty when there is none.
std::string DeclaredEncoding(const std::string& declaration) {
    constexpr char kName[] = "encoding";
    std::size_t at = 0;
    while (at < declaration.size()) {
        const std::size_t open = declaration.find_first_of("\"'", at);
        if (open == std::string::npos)
            return "";
        const std::size_t close = declaration.find(declaration[open], open + 1);
        if (close == std::string::npos)
            return "";
        if (declaration.substr(at, open - at).find(kName) != std::string::npos)
            return declaration.substr(open + 1, close - open - 1);
        at = close + 1;
    }
    return "";
}

std::string Narrow(const std::u16string& text) {
    std::string narrow;
    for (const char16_t unit : text)
        narrow += unit < 0x80 ? static_cast<char>(unit) : '?';
    return narrow;
}

} // namespace

TagWatcher::TagWatcher(const GpxInputLimits& limits, const InputName& name, Extent extent,
                       const std::u16string& encoding)
    : limits_(limits), limiter_(limits, name, extent), extent_(extent), isForced_(!encoding.empty()) {
    try {
        TakeEncoding(encoding);
    } catch (const ReadAborted& stop) {
        refusal_ = stop.reason;
    }
}

void TagWatcher::ThrowIfRefused() const {
    if (refusal_)
        throw ReadAborted{refusal_};
}

std::size_t TagWatcher::Watch(const unsigned char* bytes, std::size_t size) {
    const unsigned char* next = bytes;
    const unsigned char* const end = bytes + size;
    try {
        while (next != end && !refusal_) {
            if (isPlain_)
                TakePlain(next, end);
            next += Skip(next, static_cast<std::size_t>(end - next));
            if (next != end) {
                TakeByte(*next);
                ++next;
            }
        }
    } catch (const ReadAborted& stop) {
        refusal_ = stop.reason;
    }
    auto at = static_cast<std::size_t>(next - bytes);
    if (bytesSeen_ == 0)
        at = std::max<std::size_t>(at, std::min<std::size_t>(size, 1));
    at = WithinHead(at);
    bytesSeen_ += at;
    return at;
}

std::size_t TagWatcher::WithinHead(std::size_t size) {
    if (extent_ != Extent::kHead || limits_.headBytes > kEndless - kLookahead)
        return size;
    const std::uint64_t left = limits_.headBytes + kLookahead - bytesSeen_;
    if (size <= left)
        return size;
    try {
        limiter_.RefuseHeadBytes();
    } catch (const ReadAborted& stop) {
        refusal_ = stop.reason;
    }
    return static_cast<std::size_t>(left);
}

void TagWatcher::TakeEncoding(const std::u16string& encoding) {
    if (encoding.empty())
        return;
    const EncodingShape shape = ShapeOf(encoding);
    if (shape.markup == EncodingShape::Markup::kOther)
        limiter_.RefuseEncoding(Narrow(encoding));
    leads_ = shape.leads;
    isAfterLead_ = false;
}

// Handles texts and tags, which are most of a file, without a call for each byte. Stops at other markup.
void TagWatcher::TakePlain(const unsigned char*& at, const unsigned char* const end) {
    while (at != end) {
        switch (state_) {
        case State::kText: {
            const unsigned char* const found = Find('<', at, end);
            isAtStart_ = isAtStart_ && found == at;
            at = found;
            if (at == end)
                return;
            ++at;
            Begin(State::kOpened);
            length_ = 1;
            break;
        }
        case State::kOpened:
            if (*at == '!' || *at == '?')
                return;
            TakeOpened(static_cast<char>(*at));
            ++at;
            ++length_;
            break;
        case State::kTag:
        case State::kQuoted:
            TakePlainTag(at, end);
            break;
        case State::kEndTag:
            at = Find('>', at, end);
            if (at == end)
                return;
            ++at;
            state_ = State::kText;
            break;
        default:
            return;
        }
    }
}

// Handles a tag up to the next byte that changes the state.
void TagWatcher::TakePlainTag(const unsigned char*& at, const unsigned char* const end) {
    const unsigned char* next = at;
    if (state_ == State::kQuoted)
        next = Find(quote_, at, end);
    else
        while (next != end && !kEndsNames[*next])
            ++next;
    const bool isAtEnd = next == end;
    length_ += static_cast<std::size_t>(next - at) + (isAtEnd ? 0 : 1);
    limiter_.CheckTagBytes(length_);
    at = next;
    if (isAtEnd)
        return;
    TakeInTag(static_cast<char>(*at));
    ++at;
}

// Handles the content of comments and CDATA sections without a call for each byte. Returns how many bytes it
// handled.
std::size_t TagWatcher::Skip(const unsigned char* bytes, std::size_t size) {
    const bool isComment = state_ == State::kComment;
    if (!isPlain_ || run_ != 0 || !(isComment || state_ == State::kCData))
        return 0;
    const auto count = static_cast<std::size_t>(Find(isComment ? '-' : ']', bytes, bytes + size) - bytes);
    AddLength(count);
    return count;
}

void TagWatcher::TakeByte(unsigned char byte) {
    if (state_ == State::kStart)
        TakeStart(byte);
    else if (isPlain_) {
        AddLength(1);
        Take(static_cast<char>(byte));
    } else if (width_ != 1)
        TakeUnitByte(byte);
    else if (isAfterLead_ && byte >= '@') {
        isAfterLead_ = false;
        AddLength(1);
        Take(kOtherCharacter);
    } else {
        isAfterLead_ = leads_[byte];
        AddLength(1);
        Take(byte < 0x80 ? static_cast<char>(byte) : kOtherCharacter);
    }
}

// The first four bytes show how wide the characters are: the first character of a well-formed file, and the first after
// its XML declaration, is "<" or white space, after a byte order mark if there is one.
void TagWatcher::TakeStart(unsigned char byte) {
    start_[startSize_++] = byte;
    if (startSize_ == start_.size())
        TakeStartBytes();
}

void TagWatcher::TakeStartBytes() {
    const auto isStart = [&](const std::array<int, 4>& expected) {
        for (std::size_t i = 0; i < expected.size(); ++i)
            if (expected[i] >= 0 && start_[i] != expected[i])
                return false;
        return true;
    };
    constexpr int kAny = -1;
    width_ = 1;
    isBigEndian_ = false;
    std::size_t mark = 0;
    if (!isForced_ && isStart({0x4C, 0x6F, 0xA7, 0x94}))
        limiter_.RefuseEncoding("EBCDIC");
    if (isStart({0, 0, 0xFE, 0xFF}) || isStart({0, 0, 0, kAny})) {
        width_ = 4;
        isBigEndian_ = true;
    } else if (isStart({kAny, 0, 0, 0}) || isStart({0xFF, 0xFE, 0, 0})) {
        width_ = 4;
    } else if (isStart({0xFE, 0xFF, kAny, kAny}) || isStart({0, kAny, kAny, kAny})) {
        width_ = 2;
        isBigEndian_ = true;
    } else if (isStart({0xFF, 0xFE, kAny, kAny}) || isStart({kAny, 0, kAny, kAny})) {
        width_ = 2;
    } else if (isStart({0xEF, 0xBB, 0xBF, kAny})) {
        mark = 3;
    }
    state_ = State::kText;
    unitBytes_ = 0;
    isPlain_ = width_ == 1 && leads_.none();
    for (std::size_t i = mark; i < start_.size(); ++i)
        TakeByte(start_[i]);
}

void TagWatcher::TakeUnitByte(unsigned char byte) {
    unit_ = isBigEndian_ ? unit_ << 8 | byte : unit_ | std::uint32_t{byte} << 8 * unitBytes_;
    if (++unitBytes_ < width_)
        return;
    const std::uint32_t unit = std::exchange(unit_, 0);
    unitBytes_ = 0;
    AddLength(width_);
    const bool isMark = isAtStart_ && state_ == State::kText && (unit == 0xFEFF);
    if (!isMark)
        Take(unit < 0x80 ? static_cast<char>(unit) : kOtherCharacter);
}

void TagWatcher::Take(char character) {
    switch (state_) {
    case State::kStart:
    case State::kLeft:
    case State::kDocumentType:
        return;
    case State::kText:
        return TakeText(character);
    case State::kOpened:
        return TakeOpened(character);
    case State::kTag:
    case State::kQuoted:
        return TakeInTag(character);
    case State::kEndTag:
        return EndAfter(character, '>', 0);
    case State::kInstruction:
        return TakeInstruction(character);
    case State::kMarkup:
    case State::kCommentOpen:
        return TakeMarkup(character);
    case State::kComment:
        return EndAfter(character, '-', 2);
    case State::kCData:
        return EndAfter(character, ']', 2);
    }
}

void TagWatcher::TakeText(char character) {
    if (character == '<') {
        Begin(State::kOpened);
        length_ = 1;
    } else {
        isAtStart_ = false;
    }
}

void TagWatcher::TakeOpened(char character) {
    isDeclaration_ = std::exchange(isAtStart_, false) && character == '?';
    attributes_ = 0;
    if (character == '!')
        Begin(State::kMarkup);
    else if (character == '?')
        Begin(State::kInstruction);
    else
        Begin(character == '/' ? State::kEndTag : State::kTag);
}

void TagWatcher::TakeInTag(char character) {
    if (state_ == State::kQuoted) {
        if (character == quote_)
            state_ = State::kTag;
    } else if (character == '"' || character == '\'') {
        state_ = State::kQuoted;
        quote_ = character;
    } else if (character == '=') {
        limiter_.CheckAttributes(++attributes_);
    } else if (character == '>') {
        Begin(State::kText);
    }
}

void TagWatcher::TakeMarkup(char character) {
    if (state_ == State::kCommentOpen)
        Begin(character == '-' ? State::kComment : State::kLeft);
    else if (character == '-')
        Begin(State::kCommentOpen);
    else if (character == '[')
        Begin(State::kCData);
    else
        Begin(character == 'D' ? State::kDocumentType : State::kLeft);
}

void TagWatcher::TakeInstruction(char character) {
    if (isDeclaration_) {
        const bool isSpace = text::IsBlank(character);
        if (!isSpace || declaration_.empty() || declaration_.back() != ' ')
            declaration_ += isSpace ? ' ' : character;
    }
    EndAfter(character, '?', 1);
    if (isDeclaration_ && state_ == State::kText)
        EndDeclaration();
}

void TagWatcher::EndAfter(char character, char repeated, unsigned times) {
    if (character == '>' && run_ >= times)
        Begin(State::kText);
    else
        run_ = character == repeated ? run_ + 1 : 0;
}

// From here on the XML parser uses the encoding that the declaration names.
void TagWatcher::EndDeclaration() {
    isDeclaration_ = false;
    if (isForced_ || !declaration_.starts_with("xml "))
        return;
    const std::string encoding = DeclaredEncoding(declaration_);
    TakeEncoding(std::u16string(encoding.begin(), encoding.end()));
    state_ = State::kStart;
    startSize_ = 0;
}

// A character takes at most this many bytes for each of its UTF-16 code units; a line end of two characters is read as
// one.
std::uint64_t TagWatcher::TextBytes() const {
    const std::uint64_t most = width_ == 4 ? 8 : 4;
    return limits_.textLength > kEndless / 16 ? kEndless : (limits_.textLength + 16) * most;
}

void TagWatcher::AddLength(std::size_t bytes) {
    length_ += bytes;
    switch (state_) {
    case State::kTag:
    case State::kQuoted:
        limiter_.CheckTagBytes(length_);
        break;
    case State::kInstruction:
    case State::kComment:
    case State::kCData:
        if (length_ > TextBytes())
            limiter_.CheckText(kEndless);
        break;
    case State::kDocumentType:
        if (length_ > kDocumentTypeBytes)
            limiter_.RefuseDocumentType();
        break;
    default:
        break;
    }
}

} // namespace vexaTransferLib::reader
