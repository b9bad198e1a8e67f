// SPDX-License-Identifier: MIT
#include <vexagpx/input/EntryName.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <stdexcept>

namespace {

using namespace vexagpx;

using Row = std::pair<std::string, std::string>;

TEST(EntryNameTest, StoredBytesAreTheCodeUnits) {
    icu::UnicodeString units;
    std::string bytes;
    for (char16_t unit = 1; unit <= 0xFF; ++unit) {
        units.append(unit);
        bytes.push_back(static_cast<char>(unit));
    }
    EXPECT_EQ(StoredBytes(units), bytes);
    EXPECT_EQ(StoredBytes(u""), "");
}

TEST(EntryNameTest, Utf8IsPrintedAsItIs) {
    for (const std::string name :
         {"", "walk.gpx", "a/b/", "Größe", "Čapljina – Žabljak", "日本/富士山🗻", "a b", "\\", "a\\b", "\\x",
          "\\x4", "\\xg0", "\\X41", "50%", "\xEF\xBF\xBD", "👩\xE2\x80\x8D🚀", "e\xCC\x81"})
        EXPECT_EQ(PrintedName(name), name);
}

TEST(EntryNameTest, OtherBytesArePrintedAsCodePage437) {
    const std::vector<Row> rows = {
        {"Gr\x94\xE1"
         "er",
         "Größer"},
        {"\xA5"
         "and\xA3 \xAB \xF8.gpx",
         "Ñandú ½ °.gpx"},
        {"\x80\x81\x82", "Çüé"},
        // Neither overlong forms nor halves of surrogate pairs are UTF-8.
        {"\xC0\xAF", "└»"},
        {"\xED\xA0\xBD", "φá╜"},
        {"\xC3", "├"},
        // One wrong byte decides for the whole name.
        {"\xC3\xA9\xFF", "├⌐\xC2\xA0"},
    };
    for (const auto& [stored, printed] : rows)
        EXPECT_EQ(PrintedName(stored), printed);
}

TEST(EntryNameTest, TerminalControlsAreEscapedByteByByte) {
    const std::vector<Row> rows = {
        {"a\nb", "a\\x0Ab"},
        {"\x1B[31m", "\\x1B[31m"},
        {"\x7F", "\\x7F"},
        {"\xC2\x9B", "\\xC2\\x9B"},                   // a control sequence introducer in one character
        {"\xE2\x80\xAE", "\\xE2\\x80\\xAE"},          // right-to-left override
        {"\xE2\x81\xA6", "\\xE2\\x81\\xA6"},          // left-to-right isolate
        {"\xE2\x80\xA8", "\\xE2\\x80\\xA8"},          // line separator
        {"\xE2\x80\xA9", "\\xE2\\x80\\xA9"},          // paragraph separator
        {"\xEF\xBB\xBF", "\\xEF\\xBB\\xBF"},          // zero-width no-break space
        {"\xF3\xA0\x81\x81", "\\xF3\\xA0\\x81\\x81"}, // a tag character
        {"\\x41", "\\x5Cx41"},
        {"\\xfF", "\\x5CxfF"},
        {"\\x0A", "\\x5Cx0A"},
        {"\\\\x41", "\\\\x5Cx41"},
    };
    for (const auto& [stored, printed] : rows)
        EXPECT_EQ(PrintedName(stored), printed);
}

TEST(EntryNameTest, NoTwoNamesOfThreeOddCharactersPrintAlike) {
    const std::vector<std::string> characters = {"\\", "x", "0", "A", "5", "C", "\n", "\x0C"};
    std::set<std::string> printed;
    std::size_t count = 0;
    const std::function<void(const std::string&, int)> add = [&](const std::string& name, int left) {
        if (left == 0) {
            ++count;
            printed.insert(PrintedName(name));
            return;
        }
        for (const std::string& character : characters)
            add(name + character, left - 1);
    };
    for (int length = 1; length <= 5; ++length)
        add("", length);
    EXPECT_EQ(printed.size(), count);
}

TEST(EntryNameTest, ThePathOfANameIsItsParts) {
    const std::vector<std::pair<std::string, std::vector<std::string>>> rows = {
        {"a.gpx", {"a.gpx"}},
        {"a/b/c.gpx", {"a", "b", "c.gpx"}},
        {"a\\b/c", {"a", "b", "c"}},
        {"a/", {"a", ""}},
        {"a\\", {"a", ""}},
        {"./a//./b", {"a", "b"}},
        {".", {""}},
        {"a/.", {"a", ""}},
        {"...", {"..."}},
        {"..a/b..", {"..a", "b.."}},
        {".hidden", {".hidden"}},
        {"ab:c", {"ab:c"}},
        {"1:b", {"1:b"}},
        {"-rf", {"-rf"}},
        {"a\nb/c", {"a\\x0Ab", "c"}},
        {"Gr\x94\xE1"
         "e/x",
         {"Größe", "x"}},
    };
    for (const auto& [stored, parts] : rows)
        EXPECT_EQ(SplitEntryName(stored), parts) << stored;
}

TEST(EntryNameTest, NamesThatCouldLeadElsewhereAreRefused) {
    for (const std::string name : {"",
                                   "/",
                                   "/etc/passwd",
                                   "\\etc",
                                   "//server/share",
                                   "\\\\server\\share",
                                   "..",
                                   "../a",
                                   "..\\a",
                                   "a/..",
                                   "a/../b",
                                   "a\\..\\b",
                                   "a/b/../../..",
                                   "./..",
                                   "a/..\\b",
                                   "C:",
                                   "C:a",
                                   "c:\\a",
                                   "Z:/a",
                                   "../\x94"})
        EXPECT_THROW(SplitEntryName(name), std::runtime_error) << name;
}

TEST(EntryNameTest, GpxIsTheEndOfTheName) {
    for (const std::string name : {"a.gpx", "A.GPX", "a.gPx", ".gpx", "f/a.gpx", "a.gpx.gpx", "\x94.gpx"})
        EXPECT_TRUE(IsGpxName(name)) << name;
    for (const std::string name :
         {"", "gpx", "agpx", "a.gpx/", "a.gpx\\", "a.gpx ", "a.gpxx", "a.gp", "a.gpx.txt"})
        EXPECT_FALSE(IsGpxName(name)) << name;
}

} // namespace
