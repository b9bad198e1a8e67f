// SPDX-License-Identifier: MIT

// Cleans the input, as UTF-8, by the library's scans and by regular expressions, and stops when the results differ.

#include "Stop.h"
#include "support/RegexCleaner.h"

#include <vexaTransferLib/CleanText.h>

#include <cstdint>
#include <string>

namespace {

using vexaTransferLib::CleanText;
using vexaTransferLib::testing_support::RegexCleaner;

struct Pipeline {
    const char* name;
    void (CleanText::*scanned)(icu::UnicodeString&);
    void (RegexCleaner::*plain)(icu::UnicodeString&);
};

// In the first pipeline most steps receive the result of the steps before; in the others they receive the
// input itself.
constexpr Pipeline kPipelines[] = {
    {"CleanWebTextForTova", &CleanText::CleanWebTextForTova, &RegexCleaner::CleanWebTextForTova},
    {"StripBBCode", &CleanText::StripBBCode, &RegexCleaner::StripBBCode},
    {"CleanPlainTextForTova", &CleanText::CleanPlainTextForTova, &RegexCleaner::CleanPlainTextForTova},
    {"ConvertToDosLineBreaks", &CleanText::ConvertToDosLineBreaks, &RegexCleaner::ConvertToDosLineBreaks},
    {"ReplaceHTMLSymbols", &CleanText::ReplaceHTMLSymbols, &RegexCleaner::ReplaceHTMLSymbols},
};

std::string Utf8(const icu::UnicodeString& text) {
    std::string bytes;
    return text.toUTF8String(bytes);
}

void Compare(const Pipeline& pipeline, const icu::UnicodeString& text) {
    static CleanText cleaner;
    static RegexCleaner plainCleaner;
    icu::UnicodeString scanned(text);
    icu::UnicodeString plain(text);
    (cleaner.*pipeline.scanned)(scanned);
    (plainCleaner.*pipeline.plain)(plain);
    if (scanned == plain)
        return;
    StopBecause(std::string(pipeline.name) + " of\n" + Utf8(text) + "\nmakes\n" + Utf8(scanned) +
                "\nand not\n" + Utf8(plain));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const icu::StringPiece utf8(reinterpret_cast<const char*>(bytes), static_cast<std::int32_t>(size));
    const icu::UnicodeString text = icu::UnicodeString::fromUTF8(utf8);
    for (const Pipeline& pipeline : kPipelines)
        Compare(pipeline, text);
    return 0;
}
