// SPDX-License-Identifier: MIT
#include <vexaTransferLib/saving/LineLayout.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace vexaTransferLib::saving {
namespace {

/// The text without an element and what goes with it.
std::string Without(std::string_view text, std::string_view element) {
    const std::uint64_t begin = text.find(element);
    const TextPart part = LinesOf(text, {begin, begin + element.size()});
    return std::string(text.substr(0, static_cast<std::size_t>(part.begin))) +
           std::string(text.substr(static_cast<std::size_t>(part.end)));
}

TEST(LineLayoutTest, AnElementAloneInItsLineGoesWithTheLine) {
    EXPECT_EQ(Without("<a>\n  <b/>\n  <c/>\n</a>", "<b/>"), "<a>\n  <c/>\n</a>");
    EXPECT_EQ(Without("<a>\r\n\t<b/> \t\r\n\t<c/>\r\n</a>", "<b/>"), "<a>\r\n\t<c/>\r\n</a>");
    EXPECT_EQ(Without("<a>\r<b/>\r</a>", "<b/>"), "<a>\r</a>");
    EXPECT_EQ(Without("<a>\n <b>\n  1\n </b>\n</a>", "<b>\n  1\n </b>"), "<a>\n</a>");
    EXPECT_EQ(Without("<b/>\n", "<b/>"), "\n");
}

TEST(LineLayoutTest, AnElementBesideOthersGoesAlone) {
    EXPECT_EQ(Without("<a>\n  <b/> <c/>\n</a>", "<b/>"), "<a>\n   <c/>\n</a>");
    EXPECT_EQ(Without("<a>\n  <c/> <b/>\n</a>", "<b/>"), "<a>\n  <c/> \n</a>");
    EXPECT_EQ(Without("<a><b/></a>", "<b/>"), "<a></a>");
    EXPECT_EQ(Without("<a>\n<b/>", "<b/>"), "<a>\n");
    EXPECT_EQ(Without("<b/>", "<b/>"), "");
}

TEST(LineLayoutTest, ASeparatorIsALineEndWithTheBlanksAfterIt) {
    const auto before = [](std::string_view text) { return SeparatorBefore(text, text.find('<')); };
    EXPECT_EQ(before("x\n  <a/>"), "\n  ");
    EXPECT_EQ(before("x\r\n\t<a/>"), "\r\n\t");
    EXPECT_EQ(before("x\r<a/>"), "\r");
    EXPECT_EQ(before("\n\n <a/>"), "\n ");
    EXPECT_EQ(before("x <a/>"), "");
    EXPECT_EQ(before("  <a/>"), "");
    EXPECT_EQ(before("<a/>"), "");
}

TEST(LineLayoutTest, WhatIsAddedComesBehindCommentsThatEndTheLine) {
    const auto after = [](std::string_view text) {
        const std::uint64_t end = text.find("/>") + 2;
        return std::string(text.substr(static_cast<std::size_t>(PlaceAfter(text, end))));
    };
    EXPECT_EQ(after("<a/>\n"), "\n");
    EXPECT_EQ(after("<a/> <!-- b -->\t<!--c--> \r\n<d>"), " \r\n<d>");
    EXPECT_EQ(after("<a/><!-- b -->"), "");
    EXPECT_EQ(after("<a/> <!-- b --> c\n"), " <!-- b --> c\n");
    EXPECT_EQ(after("<a/> <!-- b\n-->\n"), " <!-- b\n-->\n");
    EXPECT_EQ(after("<a/> <!-- b > c -->\n"), " <!-- b > c -->\n");
    EXPECT_EQ(after("<a/> <b/>\n"), " <b/>\n");
    EXPECT_EQ(after("<a/> "), " ");
}

TEST(LineLayoutTest, AnIndentIsWhatInnerElementsHaveMore) {
    EXPECT_EQ(IndentBetween("\n", "\n   "), "   ");
    EXPECT_EQ(IndentBetween("\r\n\t", "\r\n\t\t"), "\t");
    EXPECT_EQ(IndentBetween("\n  ", "\n  "), "  ");
    EXPECT_EQ(IndentBetween("\n  ", "\n"), "  ");
    EXPECT_EQ(IndentBetween("", "\n    "), "  ");
    EXPECT_EQ(IndentBetween("\n\t", "\n    "), "  ");
}

TEST(LineLayoutTest, ChildrenAreIndentedOnlyWhereThereAreLines) {
    const ElementLayout inner = ElementLayout{"\n  ", "\t"}.Inner();
    EXPECT_EQ(inner.separator, "\n  \t");
    EXPECT_EQ(inner.indent, "\t");
    EXPECT_EQ((ElementLayout{"", "\t"}.Inner().separator), "");
}

} // namespace
} // namespace vexaTransferLib::saving
