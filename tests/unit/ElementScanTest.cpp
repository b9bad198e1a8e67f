// SPDX-License-Identifier: MIT
#include <vexaTransferLib/model/ElementScan.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace vexaTransferLib {
namespace {

TEST(ElementScanTest, ATagEndsWhereNoValueHidesItsEnd) {
    struct Case {
        const char* tag;
        const char* name;
        const char* attributes;
        bool isEmpty;
    };
    for (const Case& one :
         {Case{"<a>", "a", "", false}, Case{"<a/>", "a", "", true}, Case{"<a />", "a", " ", true},
          Case{"<a b='x/'>", "a", " b='x/'", false}, Case{"<a b=\"x/\"/>", "a", " b=\"x/\"", true},
          Case{"<a b='/>'>", "a", " b='/>'", false},
          Case{"<a b='\"' c=\"'>\">", "a", " b='\"' c=\"'>\"", false}, Case{"<p:a\n>", "p:a", "\n", false},
          Case{"<a\tb='1'\n/>", "a", "\tb='1'\n", true}}) {
        const std::string text = std::string(one.tag) + ">x/>";
        const ScannedTag tag = ScanTag(text.c_str());
        EXPECT_EQ(tag.name, one.name) << one.tag;
        EXPECT_EQ(tag.attributes, one.attributes) << one.tag;
        EXPECT_EQ(tag.end, text.c_str() + std::strlen(one.tag)) << one.tag;
        EXPECT_EQ(tag.isEmpty, one.isEmpty) << one.tag;
    }
}

TEST(ElementScanTest, AttributesAreTakenOffInTheirOrder) {
    std::string_view attributes = " a='1'\n p:b = \"'>\" c\t=\n'' ";
    std::string found;
    for (ScannedAttribute attribute; ScanAttribute(attributes, attribute);)
        found.append(attribute.name).append("[").append(attribute.value).append("]");
    EXPECT_EQ(found, "a[1]p:b['>]c[]");
}

TEST(ElementScanTest, PartsEndWhereTheNextStarts) {
    using Kind = ScannedPart::Kind;
    struct Case {
        const char* part;
        Kind kind;
        const char* content;
    };
    for (const Case& one :
         {Case{"a]]&gt;", Kind::kText, "a]]&gt;"}, Case{"<![CDATA[a]]]>", Kind::kSection, "a]"},
          Case{"<![CDATA[]]>", Kind::kSection, ""}, Case{"<!-- <a> - -->", Kind::kOther, ""},
          Case{"<!---->", Kind::kOther, ""}, Case{"<?p > ?\?>", Kind::kOther, ""},
          Case{"</a\n>", Kind::kEnd, ""},
          Case{"<a><a/>x<b c='>'></b></a>", Kind::kElement, "<a><a/>x<b c='>'></b></a>"},
          Case{"<a><!-- </a> --><![CDATA[</a>]]><?p </a>?></a>", Kind::kElement,
               "<a><!-- </a> --><![CDATA[</a>]]><?p </a>?></a>"}}) {
        const std::string text = std::string(one.part) + "</x>";
        const ScannedPart part = ScanPart(text.c_str());
        EXPECT_EQ(part.kind, one.kind) << one.part;
        EXPECT_EQ(part.content, one.content) << one.part;
        EXPECT_EQ(part.end, text.c_str() + std::strlen(one.part)) << one.part;
    }
}

} // namespace
} // namespace vexaTransferLib
