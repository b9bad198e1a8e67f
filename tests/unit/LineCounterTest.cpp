// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/LineCounter.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace vexaTransferLib::text {
namespace {

using LineAndColumn = std::pair<std::uint64_t, std::uint64_t>;

LineAndColumn Located(LineCounter& counter, std::string_view bytes, std::uint64_t start,
                      std::uint64_t place) {
    const SourceLocation location = counter.Locate(bytes, start, place);
    return {location.line, location.column};
}

LineAndColumn Located(std::string_view bytes, std::uint64_t place) {
    LineCounter counter;
    return Located(counter, bytes, 0, place);
}

/// Counts from the start of the text, byte by byte.
LineAndColumn Counted(std::string_view bytes, std::size_t place) {
    LineAndColumn at{1, 1};
    for (std::size_t i = bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0; i < place; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        const bool isCrOfTwo = byte == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n';
        if (byte == '\n' || (byte == '\r' && !isCrOfTwo))
            at = {at.first + 1, 1};
        else if ((byte & 0xC0) != 0x80)
            at.second += byte >= 0xF0 ? 2 : 1;
    }
    return at;
}

// A place between CR and LF, or within a character, is no place of a tag.
bool IsPlaceOfTag(std::string_view bytes, std::size_t place) {
    const bool isWithinLineEnd =
        place > 0 && place < bytes.size() && bytes[place - 1] == '\r' && bytes[place] == '\n';
    const bool isWithinCharacter =
        place < bytes.size() && (static_cast<unsigned char>(bytes[place]) & 0xC0) == 0x80;
    return !isWithinLineEnd && !isWithinCharacter;
}

std::string RandomText(std::uint32_t seed, std::size_t pieces) {
    constexpr std::array<std::string_view, 9> kPieces = {
        "a", "<b>", "\n", "\r\n", "\r", "\t", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x97\xBB"};
    std::mt19937 random(seed);
    std::string text;
    // Some texts have long lines.
    const std::size_t kinds = seed % 2 == 0 ? kPieces.size() : 2;
    for (std::size_t i = 0; i < pieces; ++i)
        text += kPieces[random() % (random() % 50 == 0 ? kPieces.size() : kinds)];
    return text + "end";
}

TEST(LineCounterTest, CountsFromOne) {
    EXPECT_EQ(Located("abc", 0), LineAndColumn(1, 1));
    EXPECT_EQ(Located("abc", 3), LineAndColumn(1, 4));
    EXPECT_EQ(Located("a\nbc", 2), LineAndColumn(2, 1));
    EXPECT_EQ(Located("a\nbc", 4), LineAndColumn(2, 3));
}

TEST(LineCounterTest, CountsEveryKindOfLineEndOnce) {
    EXPECT_EQ(Located("a\r\nb\rc\n\nd", 10), LineAndColumn(5, 3));
    EXPECT_EQ(Located("\r", 1), LineAndColumn(2, 1));
    EXPECT_EQ(Located("\r\r\n", 3), LineAndColumn(3, 1));
}

TEST(LineCounterTest, CountsUtf16UnitsAndNoByteOrderMark) {
    EXPECT_EQ(Located("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x97\xBB.", 10), LineAndColumn(1, 6));
    EXPECT_EQ(Located("\xEF\xBB\xBF<a>", 6), LineAndColumn(1, 4));
    EXPECT_EQ(Located("\n\xEF\xBB\xBF<a>", 7), LineAndColumn(2, 5));
}

TEST(LineCounterTest, FindsPlacesInAnyOrder) {
    for (std::uint32_t seed = 1; seed <= 6; ++seed) {
        const std::string text = RandomText(seed, 3000);
        LineCounter counter;
        std::mt19937 random(seed);
        for (int i = 0; i < 2000; ++i) {
            const std::size_t place = random() % (text.size() + 1);
            if (IsPlaceOfTag(text, place)) {
                ASSERT_EQ(Located(counter, text, 0, place), Counted(text, place)) << seed << ' ' << place;
            }
        }
    }
}

TEST(LineCounterTest, ContinuesWhereTheTextWasForgotten) {
    for (std::uint32_t seed = 1; seed <= 6; ++seed) {
        const std::string text = RandomText(seed, 5000);
        LineCounter counter;
        std::mt19937 random(seed);
        std::size_t start = 0;
        while (start + 500 < text.size()) {
            const std::string_view bytes = std::string_view(text).substr(start);
            for (int i = 0; i < 5; ++i) {
                const std::size_t place = start + random() % 500;
                if (IsPlaceOfTag(text, place)) {
                    ASSERT_EQ(Located(counter, bytes, start, place), Counted(text, place))
                        << seed << ' ' << place;
                }
            }
            const std::size_t next = start + random() % 500;
            counter.Forget(bytes, start, next);
            start = next;
        }
    }
}

} // namespace
} // namespace vexaTransferLib::text
