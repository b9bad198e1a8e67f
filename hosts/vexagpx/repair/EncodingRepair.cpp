// SPDX-License-Identifier: MIT
#include <vexagpx/repair/EncodingRepair.h>

#include <unicode/ucnv.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string_view>

namespace vexagpx {

namespace {

bool StartsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

/// The encoding that the first bytes show, whatever is declared.
const char* WideEncoding(std::string_view bytes) {
    using namespace std::string_view_literals;
    if (StartsWith(bytes, "\xFE\xFF"sv) || StartsWith(bytes, "\0<"sv))
        return "UTF-16BE";
    if (StartsWith(bytes, "\xFF\xFE"sv) || StartsWith(bytes, "<\0"sv))
        return "UTF-16LE";
    return nullptr;
}

/// The size of the character in UTF-8 at this place; 0 when there is none.
std::size_t CharacterSize(std::string_view bytes, std::size_t at) {
    const auto* const units = reinterpret_cast<const std::uint8_t*>(bytes.data()) + at;
    // ICU wants a signed length; one character has at most 4 bytes.
    const auto length = static_cast<std::int32_t>(std::min<std::size_t>(bytes.size() - at, 4));
    std::int32_t taken = 0;
    UChar32 character = 0;
    U8_NEXT(units, taken, length, character);
    return character < 0 ? 0 : static_cast<std::size_t>(taken);
}

enum class Utf8 { kAscii, kYes, kNo };

Utf8 KindOf(std::string_view bytes) {
    Utf8 kind = Utf8::kAscii;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t size = CharacterSize(bytes, at);
        if (size == 0)
            return Utf8::kNo;
        if (size > 1)
            kind = Utf8::kYes;
        at += size;
    }
    return kind;
}

std::string Converted(const std::string& bytes, const char* encoding) {
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(ucnv_open(encoding, &error),
                                                                       &ucnv_close);
    if (U_FAILURE(error) || bytes.size() > INT32_MAX)
        throw std::runtime_error(std::string("The encoding ") + encoding + " cannot be converted.");
    const icu::UnicodeString text(bytes.data(), static_cast<int32_t>(bytes.size()), converter.get(), error);
    if (U_FAILURE(error))
        throw std::runtime_error(std::string("The text cannot be converted from ") + encoding + '.');
    std::string utf8;
    text.toUTF8String(utf8);
    return utf8;
}

/// Where the value of the encoding stands in the XML declaration.
struct Declared {
    std::size_t start = 0;
    std::size_t size = 0;
};

std::optional<Declared> FindDeclared(const std::string& text) {
    const std::size_t start = text.find("<?xml");
    const std::size_t end = text.find("?>");
    if (start > 1024 || end == std::string::npos || end < start)
        return std::nullopt;
    const std::size_t at = text.find("encoding", start);
    const std::size_t open = at < end ? text.find_first_of("'\"", at) : std::string::npos;
    if (open >= end)
        return std::nullopt;
    const std::size_t close = text.find(text[open], open + 1);
    return close < end ? std::optional(Declared{open + 1, close - open - 1}) : std::nullopt;
}

/// The characters of the bytes from 0x80 on in windows-1252, in UTF-8.
std::array<std::string, 128> HighCharacters() {
    std::array<std::string, 128> characters;
    for (std::size_t i = 0; i < characters.size(); ++i)
        characters[i] = Converted(std::string(1, static_cast<char>(0x80 + i)), "windows-1252");
    return characters;
}

/// What is UTF-8 stays; each other byte becomes its character in windows-1252.
std::string MixedToUtf8(std::string_view bytes) {
    const std::array<std::string, 128> characters = HighCharacters();
    std::string text;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t size = CharacterSize(bytes, at);
        if (size == 0) {
            text += characters[static_cast<unsigned char>(bytes[at++]) - 0x80U];
        } else {
            text += bytes.substr(at, size);
            at += size;
        }
    }
    return text;
}

/// Whether ICU reads the encoding, and none of the bytes is wrong in it.
std::optional<std::string> TryConverted(const std::string& bytes, const std::string& encoding) {
    UErrorCode error = U_ZERO_ERROR;
    const std::unique_ptr<UConverter, decltype(&ucnv_close)> converter(ucnv_open(encoding.c_str(), &error),
                                                                       &ucnv_close);
    if (U_FAILURE(error) || bytes.size() > INT32_MAX)
        return std::nullopt;
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    const icu::UnicodeString text(bytes.data(), static_cast<std::int32_t>(bytes.size()), converter.get(),
                                  error);
    if (U_FAILURE(error) || text.isBogus())
        return std::nullopt;
    std::string utf8;
    return text.toUTF8String(utf8);
}

bool IsUtf8Name(const std::string& name) {
    return ucnv_compareNames(name.c_str(), "UTF-8") == 0;
}

} // namespace

RepairedEncoding RepairEncoding(std::string bytes) {
    RepairedEncoding result;
    const auto told = FindDeclared(bytes);
    const std::string name = told ? bytes.substr(told->start, told->size) : "UTF-8";
    const Utf8 kind = KindOf(bytes);
    if (const char* const wide = WideEncoding(bytes)) {
        result.text = Converted(bytes, wide);
        result.told.push_back(std::string("it is written in UTF-8, not in ") + wide);
    } else if (kind != Utf8::kNo) {
        result.text = std::move(bytes);
    } else if (auto text = IsUtf8Name(name) ? std::nullopt : TryConverted(bytes, name)) {
        result.text = std::move(*text);
        result.told.push_back("it is written in UTF-8, not in " + name);
    } else {
        result.text = MixedToUtf8(bytes);
        result.told.emplace_back("bytes that are no UTF-8 are read as windows-1252");
        result.wasWrong = true;
    }
    const auto declared = FindDeclared(result.text);
    if (!declared)
        return result;
    const std::string declaredName = result.text.substr(declared->start, declared->size);
    const bool isWide = ucnv_compareNames(declaredName.substr(0, 6).c_str(), "UTF-16") == 0;
    if (IsUtf8Name(declaredName) || (kind == Utf8::kAscii && result.told.empty() && !isWide))
        return result;
    // Bytes that are valid UTF-8 beyond ASCII are hardly ever meant as anything else.
    result.wasWrong = result.wasWrong || result.told.empty();
    result.text.replace(declared->start, declared->size, "UTF-8");
    result.told.push_back("the declared encoding " + declaredName + " became UTF-8");
    return result;
}

} // namespace vexagpx
