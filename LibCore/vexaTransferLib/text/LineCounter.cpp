// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/LineCounter.h>

#include <algorithm>
#include <cstring>

namespace vexaTransferLib::text {

namespace {

constexpr std::uint64_t kMarkDistance = 1024;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// How many UTF-16 code units the UTF-8 text has: each byte that starts a character counts, that of a long one twice.
std::uint64_t CountUnits(const char* at, const char* end) {
    std::uint64_t units = 0;
    for (; at != end; ++at) {
        const auto byte = static_cast<unsigned char>(*at);
        units += static_cast<unsigned>((byte & 0xC0) != 0x80) + static_cast<unsigned>(byte >= 0xF0);
    }
    return units;
}

const char* Find(char wanted, const char* at, const char* end) {
    return static_cast<const char*>(std::memchr(at, wanted, static_cast<std::size_t>(end - at)));
}

// A CR that comes before an LF ends no line of its own. The byte after the text may be looked at.
std::uint64_t CountLines(const char* begin, const char* end) {
    std::uint64_t lines = 0;
    for (const char* at = begin; (at = Find('\n', at, end)) != nullptr; ++at)
        ++lines;
    for (const char* at = begin; (at = Find('\r', at, end)) != nullptr; ++at)
        lines += static_cast<unsigned>(at[1] != '\n');
    return lines;
}

} // namespace

// Columns count from the last line end.
LineCounter::Mark LineCounter::Count(std::string_view bytes, std::uint64_t start, Mark from,
                                     std::uint64_t place) {
    const char* begin = bytes.data() + (from.place - start);
    const char* const end = bytes.data() + (place - start);
    if (from.place == 0 && bytes.starts_with(kByteOrderMark))
        begin = std::min(begin + kByteOrderMark.size(), end);
    const std::uint64_t lines = CountLines(begin, end);
    from.place = place;
    if (lines != 0) {
        const char* lineStart = end;
        while (lineStart[-1] != '\n' && lineStart[-1] != '\r')
            --lineStart;
        from.location.line += lines;
        from.location.column = 1;
        begin = lineStart;
    }
    from.location.column += CountUnits(begin, end);
    return from;
}

// The last known place that is not after the given one.
LineCounter::Mark LineCounter::Nearest(std::uint64_t place) const {
    const auto after =
        std::upper_bound(marks_.begin(), marks_.end(), place,
                         [](std::uint64_t wanted, const Mark& mark) { return wanted < mark.place; });
    const Mark& mark = *(after - 1);
    return last_.place <= place && last_.place > mark.place ? last_ : mark;
}

SourceLocation LineCounter::Locate(std::string_view bytes, std::uint64_t start, std::uint64_t place) {
    while (place > marks_.back().place + kMarkDistance)
        marks_.push_back(Count(bytes, start, Nearest(marks_.back().place + kMarkDistance),
                               marks_.back().place + kMarkDistance));
    last_ = Count(bytes, start, Nearest(place), place);
    return last_.location;
}

void LineCounter::Forget(std::string_view bytes, std::uint64_t start, std::uint64_t place) {
    const Mark first = Count(bytes, start, Nearest(place), place);
    const auto kept =
        std::find_if(marks_.begin(), marks_.end(), [&](const Mark& mark) { return mark.place > place; });
    marks_.erase(marks_.begin(), kept);
    marks_.insert(marks_.begin(), first);
}

} // namespace vexaTransferLib::text
