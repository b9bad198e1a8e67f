// SPDX-License-Identifier: MIT
#include <vexagpx/caches/CacheDetails.h>

#include <vexagpx/terminal/DisplayText.h>

#include <vexaTransferLib/CleanText.h>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace vexagpx {

using vexaTrackLib::Geocache;
using vexaTransferLib::GpxCacheLogDetails;

namespace {

char16_t Rotated(char16_t c, char16_t first) {
    constexpr int kLetters = 26;
    return static_cast<char16_t>(first + (c - first + kLetters / 2) % kLetters);
}

// ROT13: letters of ASCII alone.
icu::UnicodeString Decoded(icu::UnicodeString text) {
    for (std::int32_t i = 0; i < text.length(); ++i) {
        const char16_t c = text.charAt(i);
        if (c >= u'a' && c <= u'z')
            text.setCharAt(i, Rotated(c, u'a'));
        else if (c >= u'A' && c <= u'Z')
            text.setCharAt(i, Rotated(c, u'A'));
    }
    return text;
}

icu::UnicodeString Unified(icu::UnicodeString text) {
    return text.findAndReplace(u"\r\n", u"\n").trim();
}

} // namespace

icu::UnicodeString Cleaned(icu::UnicodeString text) {
    vexaTransferLib::CleanText().CleanWebTextForTova(text);
    return Unified(std::move(text));
}

icu::UnicodeString CleanDescription(const Geocache& cache) {
    icu::UnicodeString all;
    for (vexaTrackLib::GeocacheDescription& description : cache.GetDescriptions()) {
        const icu::UnicodeString text =
            description.isHtml ? Cleaned(description.text) : Unified(description.text);
        if (!all.isEmpty() && !text.isEmpty())
            all += u'\n';
        all += text;
    }
    return all;
}

std::vector<GpxCacheLogDetails> NewestLogs(const Geocache& cache, std::uint64_t count) {
    if (count == 0)
        return {};
    std::vector<GpxCacheLogDetails> logs = cache.GetLogs();
    logs.resize(static_cast<std::size_t>(std::min<std::uint64_t>(count, logs.size())));
    return logs;
}

icu::UnicodeString LogText(const GpxCacheLogDetails& log) {
    icu::UnicodeString text = log.text.value_or(icu::UnicodeString());
    return Cleaned(log.isEncoded.value_or(false) ? Decoded(text) : text);
}

icu::UnicodeString DayText(const std::optional<double>& millis) {
    if (!millis)
        return {};
    const icu::UnicodeString time = TimeText(*millis);
    return icu::UnicodeString(time, 0, std::max(time.indexOf(u'T'), 0));
}

} // namespace vexagpx
