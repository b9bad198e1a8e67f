// SPDX-License-Identifier: MIT
#include <vexagpx/input/EntryName.h>

#include <vexagpx/process/TerminalControl.h>
#include <vexagpx/process/Utf8.h>

#include <unicode/localpointer.h>
#include <unicode/uchar.h>
#include <unicode/ucnv.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <stdexcept>

namespace vexagpx {

namespace {

icu::UnicodeString FromUtf8(std::string_view bytes) {
    return icu::UnicodeString::fromUTF8({bytes.data(), static_cast<std::int32_t>(bytes.size())});
}

std::string FromCodePage437(std::string_view bytes) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::LocalUConverterPointer converter(ucnv_open("ibm-437", &status));
    const icu::UnicodeString text(bytes.data(), static_cast<std::int32_t>(bytes.size()), converter.getAlias(),
                                  status);
    if (U_FAILURE(status))
        throw std::runtime_error("Unable to convert the name of an entry.");
    return Utf8(text);
}

std::string Decoded(std::string_view bytes) {
    // Bytes that are not UTF-8 change when they are converted to text and back.
    return Utf8(FromUtf8(bytes)) == bytes ? std::string(bytes) : FromCodePage437(bytes);
}

void AppendEscaped(std::string_view bytes, std::string& out) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        out.append("\\x").append(1, kDigits[value >> 4]).append(1, kDigits[value & 15]);
    }
}

/// A backslash, an "x" and two hexadecimal digits.
bool LooksLikeEscape(const icu::UnicodeString& text, std::int32_t at) {
    return text[at] == u'\\' && text.charAt(at + 1) == u'x' && u_isxdigit(text.charAt(at + 2)) &&
           u_isxdigit(text.charAt(at + 3));
}

std::string Escaped(std::string_view utf8) {
    const icu::UnicodeString text = FromUtf8(utf8);
    std::string result;
    for (std::int32_t i = 0; i < text.length(); i = text.moveIndex32(i, 1)) {
        const UChar32 character = text.char32At(i);
        const std::string bytes = Utf8(icu::UnicodeString(character));
        if (IsTerminalControl(character) || LooksLikeEscape(text, i))
            AppendEscaped(bytes, result);
        else
            result += bytes;
    }
    return result;
}

bool IsSeparator(char byte) {
    return byte == '/' || byte == '\\';
}

bool NamesDrive(std::string_view name) {
    return name.size() >= 2 && std::isalpha(static_cast<unsigned char>(name[0])) != 0 && name[1] == ':';
}

/// \param suffix in lower case, which no case of the name matters to
bool EndsWith(std::string_view name, std::string_view suffix) {
    return name.size() >= suffix.size() &&
           std::equal(suffix.begin(), suffix.end(), name.end() - suffix.size(), [](char wanted, char byte) {
               return wanted == std::tolower(static_cast<unsigned char>(byte));
           });
}

} // namespace

std::string StoredBytes(const icu::UnicodeString& name) {
    std::string bytes;
    for (std::int32_t i = 0; i < name.length(); ++i)
        bytes.push_back(static_cast<char>(name[i]));
    return bytes;
}

std::string PrintedName(std::string_view bytes) {
    return Escaped(Decoded(bytes));
}

std::vector<std::string> SplitEntryName(std::string_view bytes) {
    const std::string name = Decoded(bytes);
    if (name.empty())
        throw std::runtime_error("the name is empty");
    if (IsSeparator(name.front()))
        throw std::runtime_error("the name is absolute");
    if (NamesDrive(name))
        throw std::runtime_error("the name names a drive");
    std::vector<std::string> path;
    for (auto begin = name.begin();;) {
        const auto end = std::find_if(begin, name.end(), IsSeparator);
        const std::string part(begin, end);
        if (part == "..")
            throw std::runtime_error("the name leads out of the folder");
        const bool isLast = end == name.end();
        const bool isHere = part.empty() || part == ".";
        if (!isHere)
            path.push_back(Escaped(part));
        else if (isLast)
            path.emplace_back();
        if (isLast)
            return path;
        begin = end + 1;
    }
}

bool IsGpxName(std::string_view bytes) {
    return EndsWith(bytes, ".gpx") || EndsWith(bytes, ".gpx.gz");
}

bool IsArchiveName(std::string_view bytes) {
    return EndsWith(bytes, ".zip");
}

bool IsGzipName(std::string_view bytes) {
    return EndsWith(bytes, ".gz");
}

bool IsKmlName(std::string_view bytes) {
    return EndsWith(bytes, ".kml");
}

} // namespace vexagpx
