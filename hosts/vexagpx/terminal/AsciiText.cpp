// SPDX-License-Identifier: MIT
#include <vexagpx/terminal/AsciiText.h>

#include <vexagpx/terminal/Clusters.h>

#include <unicode/translit.h>

#include <algorithm>
#include <cstdint>
#include <memory>

namespace vexagpx {

namespace {

bool IsAscii(const icu::UnicodeString& text) {
    const char16_t* const begin = text.getBuffer();
    return std::all_of(begin, begin + text.length(), [](char16_t unit) { return unit < 0x80; });
}

const icu::Transliterator* LatinToAscii() {
    static const std::unique_ptr<icu::Transliterator> transliterator = [] {
        UErrorCode status = U_ZERO_ERROR;
        return std::unique_ptr<icu::Transliterator>(
            icu::Transliterator::createInstance("NFD; [:M:] Remove; Latin-ASCII", UTRANS_FORWARD, status));
    }();
    return transliterator.get();
}

/// Signs whose letters say less than another sign.
char16_t PlainSign(char16_t unit) {
    switch (unit) {
    case u'\u2026': // an ellipsis, of which there is one column
        return u'~';
    case u'\u00B0': // degrees
        return u' ';
    case u'\u00B7':
        return u'.';
    default:
        return 0;
    }
}

icu::UnicodeString AsciiOf(icu::UnicodeString cluster, std::int32_t width) {
    if (const char16_t sign = PlainSign(cluster[0]); sign != 0)
        return {sign};
    if (LatinToAscii() != nullptr)
        LatinToAscii()->transliterate(cluster);
    if (cluster.isEmpty() || !IsAscii(cluster))
        return icu::UnicodeString(width, u'?', width);
    cluster.truncate(width);
    cluster.padTrailing(width);
    return cluster;
}

} // namespace

icu::UnicodeString InAscii(const icu::UnicodeString& text) {
    if (IsAscii(text))
        return text;
    icu::UnicodeString ascii;
    for (std::int32_t at = 0; at < text.length();) {
        const Cluster cluster = ClusterAt(text, at);
        const icu::UnicodeString piece = text.tempSubString(at, cluster.end - at);
        ascii += IsAscii(piece) ? piece : AsciiOf(piece, static_cast<std::int32_t>(cluster.width));
        at = cluster.end;
    }
    return ascii;
}

} // namespace vexagpx
