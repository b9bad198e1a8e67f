// SPDX-License-Identifier: MIT
#include <vexaTransferLib/model/CommentScan.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vexaTransferLib::CommentScan;

std::vector<std::string> Contents(std::string_view text) {
    std::vector<std::string> contents;
    for (CommentScan scan(text); scan.Next();)
        contents.emplace_back(scan.Content());
    return contents;
}

TEST(CommentScanTest, FindsCommentsAndProcessingInstructions) {
    EXPECT_THAT(Contents("<!--1--><a><!-- 2 > --><?p 3?></a>\n<!---->"),
                ElementsAre("1", " 2 > ", "p 3", ""));
    EXPECT_THAT(Contents("<a b='c'>d</a>"), IsEmpty());
    EXPECT_THAT(Contents(""), IsEmpty());
}

TEST(CommentScanTest, TellsWhereTheyStand) {
    const std::string_view text = "<a><!--1--></a><?p?>";
    CommentScan scan(text);
    ASSERT_TRUE(scan.Next());
    EXPECT_EQ(text.substr(scan.Begin(), scan.End() - scan.Begin()), "<!--1-->");
    ASSERT_TRUE(scan.Next());
    EXPECT_EQ(text.substr(scan.Begin(), scan.End() - scan.Begin()), "<?p?>");
    EXPECT_FALSE(scan.Next());
}

TEST(CommentScanTest, TheDeclarationIsNone) {
    EXPECT_THAT(Contents("<?xml version='1.0'?><a/>"), IsEmpty());
    EXPECT_THAT(Contents("<?xml\tversion='1.0'?><?xml-stylesheet b?><a/>"), ElementsAre("xml-stylesheet b"));
    EXPECT_THAT(Contents("<?xml?>"), ElementsAre("xml"));
}

TEST(CommentScanTest, LiteralTextsAndAttributesHoldNone) {
    EXPECT_THAT(Contents("<a><![CDATA[<!--1-->]]><!--2--></a>"), ElementsAre("2"));
    EXPECT_THAT(Contents("<a><![CDATA[<?p?>]]></a>"), IsEmpty());
    EXPECT_THAT(Contents("<a b='?> --> ]]>'><!--1--></a>"), ElementsAre("1"));
}

TEST(CommentScanTest, NothingIsReadBeyondTheEnd) {
    for (const std::string_view text :
         {"<", "<!", "<!--", "<!--1", "<!--1--", "<?", "<?p", "<![CDATA[", "<a"})
        EXPECT_LE(Contents(text).size(), 1U) << text;
}

} // namespace
