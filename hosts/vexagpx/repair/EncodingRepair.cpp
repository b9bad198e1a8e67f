// SPDX-License-Identifier: MIT
#include <vexagpx/repair/EncodingRepair.h>

#include <unicode/ucnv.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

#include <algorithm>
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

bool IsUtf8(const std::string& bytes) {
    const auto* const units = reinterpret_cast<const uint8_t*>(bytes.data());
    std::size_t at = 0;
    while (at < bytes.size()) {
        // ICU wants a signed length; one character has at most 4 bytes.
        const auto length = static_cast<int32_t>(std::min<std::size_t>(bytes.size() - at, 4));
        int32_t taken = 0;
        UChar32 c = 0;
        U8_NEXT(units + at, taken, length, c);
        if (c < 0)
            return false;
        at += static_cast<std::size_t>(taken);
    }
    return true;
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

void Tell(ChangeList& changes, std::string what) {
    changes.Add({"encoding", "document", 0, {}, std::move(what), {}});
}

} // namespace

std::string RepairEncoding(std::string bytes, ChangeList& changes) {
    if (const char* const wide = WideEncoding(bytes)) {
        bytes = Converted(bytes, wide);
        Tell(changes, std::string("written in UTF-8 instead of ") + wide);
    } else if (!IsUtf8(bytes)) {
        bytes = Converted(bytes, "windows-1252");
        Tell(changes, "bytes that are no UTF-8 are read as windows-1252");
    }
    const auto declared = FindDeclared(bytes);
    if (!declared)
        return bytes;
    const std::string name = bytes.substr(declared->start, declared->size);
    if (ucnv_compareNames(name.c_str(), "UTF-8") == 0)
        return bytes;
    bytes.replace(declared->start, declared->size, "UTF-8");
    Tell(changes, "the declared encoding " + name + " became UTF-8");
    return bytes;
}

} // namespace vexagpx
