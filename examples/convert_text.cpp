// SPDX-License-Identifier: MIT
// Converts Unicode text to bytes and finds texts whatever their case: convert_text
#include <common/UnicodeStrUtils.h>
#include <cstdio>
#include <set>
#include <stdexcept>
#include <string>

void PrintBytes(const char* label, const char* bytes, unsigned long length) {
    std::printf("%-14s", label);
    for (unsigned long i = 0; i < length; ++i)
        std::printf(" %02X", static_cast<unsigned>(static_cast<unsigned char>(bytes[i])));
    std::printf("\n");
}

int main() {
    const icu::UnicodeString text(u"5 \u20AC");
    try {
        boost::shared_array<char> utf8;
        const std::int32_t length = UnicodeStrUtils::UnicodeStringToUTF8(text, utf8);
        PrintBytes("UTF-8", utf8.get(), static_cast<unsigned long>(length));

        const UnicodeStrUtils::ByteString western(text, "windows-1252");
        PrintBytes("windows-1252", western.buffer.get(), western.length);

        // Latin-1 has no euro sign: the converter writes its substitution character.
        const std::string latin1 = UnicodeStrUtils::UnicodeStringToStlString(text, "ISO-8859-1");
        PrintBytes("ISO-8859-1", latin1.data(), latin1.size());
    } catch (const std::runtime_error& error) { // no such code page
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }

    std::set<icu::UnicodeString, UnicodeStrUtils::UnicodeStringCaseInsensitiveComp> names{u"Hut", u"HUT"};
    std::printf("%zu name\n", names.size());
}
