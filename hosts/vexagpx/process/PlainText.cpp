// SPDX-License-Identifier: MIT
#include <vexagpx/process/PlainText.h>

#include <cstdlib>
#include <string_view>

#include <langinfo.h>
#include <locale.h>
#include <unistd.h>

namespace vexagpx {

namespace {

/// The name of the environment's locale, which may be one that is not installed.
std::string_view LocaleName() {
    for (const char* const name : {"LC_ALL", "LC_CTYPE", "LANG"})
        if (const char* const value = std::getenv(name); value != nullptr && *value != '\0')
            return value;
    return "C";
}

bool IsUtf8Locale() {
    const locale_t locale = ::newlocale(LC_CTYPE_MASK, "", nullptr);
    if (locale == nullptr) {
        const std::string_view name = LocaleName();
        return name.find("UTF-8") != std::string_view::npos || name.find("utf8") != std::string_view::npos;
    }
    const bool isUtf8 = std::string_view(::nl_langinfo_l(CODESET, locale)) == "UTF-8";
    ::freelocale(locale);
    return isUtf8;
}

} // namespace

bool ShowsOnlyAscii(int fd) {
    static const bool isUtf8 = IsUtf8Locale();
    return !isUtf8 && ::isatty(fd) != 0;
}

} // namespace vexagpx
