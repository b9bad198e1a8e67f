// SPDX-License-Identifier: MIT
#include <vexagpx/repair/TextRepair.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using vexagpx::AppendRepairedText;
using vexagpx::AppendWithoutBadCharacters;
using vexagpx::ChangeList;
using vexagpx::RepairLog;
using vexagpx::TextKind;

std::string Repaired(const std::string& text, TextKind kind = TextKind::kContent) {
    ChangeList changes;
    RepairLog log(text, changes);
    std::string out;
    AppendRepairedText(text, 0, out, log, kind);
    EXPECT_EQ(changes.Count() == 0, out == text);
    return out;
}

TEST(TextRepairTest, RightTextIsCopied) {
    for (const char* text : {"", "a > b ]] \u00E4\t\r\n", "&amp;&lt;&gt;&quot;&apos;&#65;&#x41;&#x10FFFF;"})
        EXPECT_EQ(Repaired(text), text);
    EXPECT_EQ(Repaired("]]>", TextKind::kAttribute), "]]>");
}

TEST(TextRepairTest, MarkupIsEscaped) {
    EXPECT_EQ(Repaired("a & b &x; &#0; &#xFFFE; &#x; &"),
              "a &amp; b &amp;x; &amp;#0; &amp;#xFFFE; &amp;#x; &amp;");
    EXPECT_EQ(Repaired("<"), "&lt;");
    EXPECT_EQ(Repaired("a]]>b"), "a]]&gt;b");
}

TEST(TextRepairTest, EntitiesOfHtmlBecomeTheirCharacters) {
    EXPECT_EQ(Repaired("&nbsp;&euro;"), "\u00A0\u20AC");
}

TEST(TextRepairTest, CharactersThatXmlCannotHoldAreRemoved) {
    EXPECT_EQ(Repaired("a\x01\x1F"
                       "b\uFFFE\uFFFF"),
              "ab");
    const std::string text = "<&]]>\x02";
    ChangeList changes;
    RepairLog log(text, changes);
    std::string out;
    AppendWithoutBadCharacters(text, 0, out, log);
    EXPECT_EQ(out, "<&]]>");
    EXPECT_EQ(changes.Count(), 1U);
}

} // namespace
