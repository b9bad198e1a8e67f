// SPDX-License-Identifier: MIT
#include <vexagpx/repair/StartTag.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using vexagpx::ChangeList;
using vexagpx::NameSize;
using vexagpx::ParseStartTag;
using vexagpx::RepairLog;
using vexagpx::SetTagAttribute;
using vexagpx::StartTag;

struct Parsed {
    StartTag tag;
    std::uint64_t changes;
};

Parsed Parse(const std::string& text) {
    ChangeList changes;
    RepairLog log(text, changes);
    StartTag tag = ParseStartTag(text, 0, log);
    // What the tag views is gone when this returns.
    tag.attributes.clear();
    tag.name = {};
    return {std::move(tag), changes.Count()};
}

TEST(StartTagTest, ARightTagIsCopied) {
    for (const std::string tag : {"<a", "<a ", "<x:a\tb = 'c>]]>'\n d=\"&amp;'\" "}) {
        const Parsed parsed = Parse(tag + ">rest");
        EXPECT_EQ(parsed.tag.bytes, tag);
        EXPECT_EQ(parsed.tag.end, tag.size() + 1);
        EXPECT_FALSE(parsed.tag.isEmpty);
        EXPECT_FALSE(parsed.tag.isCut);
        EXPECT_EQ(parsed.changes, 0U);
        EXPECT_TRUE(Parse(tag + "/>").tag.isEmpty);
    }
}

TEST(StartTagTest, AttributesAreMended) {
    EXPECT_EQ(Parse("<a b=c d='e'>").tag.bytes, "<a b=\"c\" d='e'");
    EXPECT_EQ(Parse("<a b='1'c='2'>").tag.bytes, "<a b='1' c='2'");
    EXPECT_EQ(Parse("<a b='1' b='2'>").tag.bytes, "<a b='1'");
    EXPECT_EQ(Parse("<a b>").tag.bytes, "<a");
    EXPECT_EQ(Parse("<a b='&x'>").tag.bytes, "<a b='&amp;x'");
}

TEST(StartTagTest, AForgottenQuoteEndsTheValueWithItsWord) {
    const Parsed parsed = Parse("<a b='1 c=2><d e='1'/>");
    EXPECT_EQ(parsed.tag.bytes, "<a b='1' c=\"2\"");
    EXPECT_EQ(parsed.tag.end, std::string("<a b='1 c=2>").size());
}

TEST(StartTagTest, ATagEndsBeforeTheNextOne) {
    const Parsed parsed = Parse("<a b='1'<c>");
    EXPECT_EQ(parsed.tag.bytes, "<a b='1'");
    EXPECT_EQ(parsed.tag.end, 8U);
}

TEST(StartTagTest, ATextThatEndsInATagCutsIt) {
    for (const char* text : {"<a", "<a ", "<a b", "<a b=", "<a b='", "<a b='c", "<a b='c'", "<a b=c"})
        EXPECT_TRUE(Parse(text).tag.isCut) << text;
}

TEST(StartTagTest, FindsAttributesAndNames) {
    const std::string text = "<a b='1' c='2'>";
    ChangeList changes;
    RepairLog log(text, changes);
    const StartTag tag = ParseStartTag(text, 0, log);
    EXPECT_EQ(tag.name, "a");
    EXPECT_EQ(tag.Find("c"), "2");
    EXPECT_EQ(tag.Find("d"), std::nullopt);
    EXPECT_EQ(NameSize("x:a-1.b c"), 7U);
    EXPECT_EQ(NameSize("1a"), 0U);
    EXPECT_EQ(NameSize(""), 0U);
}

TEST(StartTagTest, SetsAttributes) {
    const std::string text = "<a bc = 'b' b='1'>";
    ChangeList changes;
    RepairLog log(text, changes);
    StartTag tag = ParseStartTag(text, 0, log);
    SetTagAttribute(tag, "b", "2");
    SetTagAttribute(tag, "n", "3");
    EXPECT_EQ(tag.bytes, "<a n=\"3\" bc = 'b' b='2'");
}

} // namespace
