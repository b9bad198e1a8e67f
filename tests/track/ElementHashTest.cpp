// SPDX-License-Identifier: MIT
#include <vexaTrackLib/content/ElementHash.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace {

using vexaTrackLib::content::AddElement;
using vexaTrackLib::content::AddTextElement;
using vexaTrackLib::content::Hasher;

std::pair<std::uint64_t, std::uint64_t> Hash(std::string_view xml) {
    Hasher hasher;
    AddElement(xml, hasher);
    return {hasher.High(), hasher.Low()};
}

bool HasValues(std::string_view xml) {
    Hasher hasher;
    return AddElement(xml, hasher);
}

TEST(ElementHashTest, TheSpellingDoesNotCount) {
    const std::pair<std::string, std::string> rows[] = {
        {"<a>b</a>", "<x:a xmlns:x='urn:x'\n> b\r\n</x:a >"},
        {"<a/>", "<a ></a>"},
        {"<a b='c&gt;' d=\"e\"/>", "<a\tx:b = \"c>\"\n d='e' />"},
        {"<a>b c</a>", "<a>\n<!-- <d> -->b<?e f?>\n\n c</a>"},
        {"<a>&lt;&amp;&#65;&#x20AC;&quot;&apos;&gt;</a>", "<a><![CDATA[<&A]]>\xE2\x82\xAC\"'></a>"},
        {"<a>\xF0\x9F\x98\x80\xC3\xA9</a>", "<a>&#128512;&#233;</a>"},
    };
    for (const auto& [first, second] : rows)
        EXPECT_EQ(Hash(first), Hash(second)) << first << " " << second;
}

TEST(ElementHashTest, WhatAnElementSaysCounts) {
    const std::pair<std::string, std::string> rows[] = {
        {"<a>b</a>", "<b>b</b>"},
        {"<a>b</a>", "<a b='b'/>"},
        {"<a>b</a>", "<a>B</a>"},
        {"<a>bc</a>", "<a>b c</a>"},
        {"<a><b/><c/></a>", "<a><b><c/></b></a>"},
        {"<a><b>1</b><b>2</b></a>", "<a><b>2</b><b>1</b></a>"},
        {"<a b='1' c='2'/>", "<a b='2' c='1'/>"},
        {"<a>&amp;lt;</a>", "<a>&lt;</a>"},
        {"<a>&unknown;</a>", "<a>&other;</a>"},
    };
    for (const auto& [first, second] : rows)
        EXPECT_NE(Hash(first), Hash(second)) << first << " " << second;
}

TEST(ElementHashTest, AnElementWithoutTextsAndAttributesSaysNothing) {
    for (const char* xml : {"<a/>", "<a> \n</a>", "<a xmlns='urn:x'><b/><c>\t</c></a>", "<a><!-- b --></a>"})
        EXPECT_FALSE(HasValues(xml)) << xml;
    for (const char* xml : {"<a>b</a>", "<a><b c=''/></a>", "<a><b><![CDATA[c]]></b></a>"})
        EXPECT_TRUE(HasValues(xml)) << xml;
}

TEST(ElementHashTest, ATextByItselfIsAsInAnElement) {
    Hasher hasher;
    EXPECT_TRUE(AddTextElement("a", " b \n <c>", hasher));
    EXPECT_EQ(std::make_pair(hasher.High(), hasher.Low()), Hash("<a>b &lt;c&gt;</a>"));
    Hasher empty;
    EXPECT_FALSE(AddTextElement("a", " ", empty));
    EXPECT_EQ(std::make_pair(empty.High(), empty.Low()), Hash("<a/>"));
}

TEST(ElementHashTest, NoPrefixOfAnElementIsReadBeyondItsEnd) {
    const std::string xml = "<a b='c'>&lt;<!-- d --><![CDATA[e]]><?f g?><h/></a>";
    for (std::size_t size = 0; size < xml.size(); ++size)
        Hash(std::string(xml, 0, size));
}

} // namespace
