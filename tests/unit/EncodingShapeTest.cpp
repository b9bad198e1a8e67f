// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/EncodingShape.h>

#include <gtest/gtest.h>

#include <string>

namespace vexaTransferLib::reader {
namespace {

using Markup = EncodingShape::Markup;

TEST(EncodingShapeTest, FindsHowEncodingsWriteMarkup) {
    for (const char16_t* name :
         {u"UTF-8", u"utf-8", u"US-ASCII", u"ISO-8859-1", u"ISO-8859-15", u"windows-1252", u"windows-1251",
          u"KOI8-R", u"macintosh", u"IBM437", u"Shift_JIS", u"EUC-JP", u"EUC-KR", u"GB2312", u"GBK",
          u"GB18030", u"Big5", u"CESU-8", u"ibm-949"})
        EXPECT_EQ(ShapeOf(name).markup, Markup::kBytes) << std::string(name, name + 4);
    for (const char16_t* name :
         {u"UTF-16", u"UTF-16LE", u"UTF-16BE", u"UCS-4", u"ISO-10646-UCS-4", u"UTF-32LE"})
        EXPECT_EQ(ShapeOf(name).markup, Markup::kWide) << std::string(name, name + 4);
    for (const char16_t* name :
         {u"IBM037", u"IBM1047", u"IBM1140", u"UTF-7", u"IMAP-mailbox-name", u"ISO-2022-JP", u"ISO-2022-KR",
          u"ISO-2022-CN", u"HZ-GB-2312", u"SCSU", u"x11-compound-text"})
        EXPECT_EQ(ShapeOf(name).markup, Markup::kOther) << std::string(name, name + 4);
    for (const char16_t* name : {u"", u"no-such-encoding"})
        EXPECT_EQ(ShapeOf(name).markup, Markup::kUnknown);
}

TEST(EncodingShapeTest, FindsTheBytesThatFormOneCharacterWithABracketAfterThem) {
    for (const char16_t* name : {u"UTF-8", u"windows-1252", u"EUC-JP"})
        EXPECT_TRUE(ShapeOf(name).leads.none());
    const EncodingShape shiftJis = ShapeOf(u"Shift_JIS");
    EXPECT_TRUE(shiftJis.leads[0x83]);  // 83 5D is a katakana
    EXPECT_FALSE(shiftJis.leads[0xB1]); // a katakana of one byte
    EXPECT_FALSE(shiftJis.leads['a']);
    for (const char16_t* name : {u"GBK", u"GB18030"})
        EXPECT_TRUE(ShapeOf(name).leads[0x81]);
    EXPECT_TRUE(ShapeOf(u"Big5").leads[0xA5]);
}

TEST(EncodingShapeTest, NamesBeyondAsciiAreUnknownHoweverLongTheyAre) {
    for (const std::size_t length : {1U, 20U, 59U, 60U, 1000U})
        EXPECT_EQ(ShapeOf(std::u16string(length, u'\u20AC')).markup, Markup::kUnknown) << length;
}

} // namespace
} // namespace vexaTransferLib::reader
