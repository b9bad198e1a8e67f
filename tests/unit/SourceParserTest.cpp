// SPDX-License-Identifier: MIT

// The source of a file that is not plain: what the XML parser reads, written as XML 1.0 in UTF-8.

#include "support/CompleteRead.h"
#include "support/ElementWalk.h"
#include "support/GpxFiles.h"
#include "support/GpxText.h"
#include "support/TestFiles.h"

#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

constexpr char kLatin1[] = "<?xml version='1.0' encoding='ISO-8859-1'?>";
constexpr char kGrammar[] = "<!DOCTYPE gpx [<!ELEMENT gpx ANY><!ELEMENT a ANY><!ELEMENT b ANY>";

std::string SourceOfLatin1(const std::string& text) {
    return std::string(DocumentOf(kLatin1 + text).GetElement().GetXml());
}

TEST(SourceParserTest, WritesTextsAndAttributesSoThatTheyAreReadTheSame) {
    EXPECT_EQ(SourceOfLatin1("<gpx a='&lt;\"&#9;&#10;&#13;\t\n\xE9'>&amp;]]&gt;\xE9&#13;\r\n&#x20AC;</gpx>"),
              "<gpx a=\"&lt;&quot;&#9;&#10;&#13;  \xC3\xA9\"\n>&amp;]]&gt;\xC3\xA9&#13;\n\xE2\x82\xAC</gpx>");
    EXPECT_EQ(SourceOfLatin1("<gpx><![CDATA[<a>&amp;]]></gpx>"), "<gpx>&lt;a&gt;&amp;amp;</gpx>");
    EXPECT_EQ(SourceOfLatin1("<gpx  ><a /><b\t></b ></gpx>"), "<gpx><a></a><b></b></gpx>");
}

TEST(SourceParserTest, KeepsCommentsAndInstructions) {
    EXPECT_EQ(SourceOfLatin1("<gpx><!-- <a> \xE9--><?p  x?y ?><?q?></gpx>"),
              "<gpx><!-- <a> \xC3\xA9--><?p x?y ?><?q?></gpx>");
}

TEST(SourceParserTest, EndsEachElementWithItsOwnName) {
    EXPECT_EQ(SourceOfLatin1("<gpx><p:a xmlns:p='u'><bb><c/></bb></p:a><d/></gpx>"),
              "<gpx><p:a xmlns:p=\"u\"><bb><c></c></bb></p:a><d></d></gpx>");
}

TEST(SourceParserTest, RemembersWhereLongElementsEnd) {
    const std::string longText(SourceText::kLongSpan, 'x');
    const GpxDocument document = DocumentOf(kLatin1 + ("<gpx><a>" + longText + "</a><b/></gpx>"));
    const GpxElement root = document.GetElement();
    const SourceText& source = *GpxModelAccess::GetSource(root);
    ASSERT_EQ(source.LongSpans().size(), 2u);
    EXPECT_EQ(source.LongSpans()[0].begin, source.RootPlace());
    EXPECT_EQ(source.LongSpans()[1].begin, GpxModelAccess::GetPlace(root.GetFirstChild()));
    EXPECT_EQ(source.LongSpans()[1].end, GpxModelAccess::GetPlace(root.FindChild("", "b")));
}

TEST(SourceParserTest, ReplacesCharactersThatOnlyXml11Has) {
    const GpxElement root =
        DocumentOf("<?xml version='1.1'?><gpx a='&#1;'>&#x1F;&#x85;\xE2\x80\xA8x</gpx>").GetElement();
    EXPECT_EQ(Utf8(root.GetText()), "\xEF\xBF\xBD\xC2\x85\nx");
    EXPECT_EQ(root.GetAttribute("a"), std::optional<icu::UnicodeString>(u"\uFFFD"));
}

TEST(SourceParserTest, ElementsHaveTheLinesOfTheFile) {
    const GpxElement root =
        DocumentOf(std::string(kLatin1) +
                   "\n<!-- \n -->\n<gpx\n\n a='1'\n>\n<a/>\n\n<!--\n--><?p a\n?><b c='\n\n'/><b/></gpx>")
            .GetElement();
    // The lines of a tag come before its end, wherever they were in it.
    const GpxElement a = root.FindChild("", "a");
    EXPECT_EQ(a.GetLine(), 8U);
    EXPECT_EQ(a.GetNextSibling().GetLine(), 12U);
    EXPECT_EQ(a.GetNextSibling().GetNextSibling().GetLine(), 14U);
}

TEST(SourceParserTest, ExpandsEntities) {
    const GpxElement root =
        DocumentOf(std::string(kGrammar) +
                   "<!ENTITY e '<a>x&#38;lt;</a>'><!ENTITY f '&e;&e;'>]><gpx>&f;\n<b/></gpx>")
            .GetElement();
    EXPECT_EQ(root.GetXml(), "<gpx><a>x&lt;</a><a>x&lt;</a>\n<b></b></gpx>");
    EXPECT_EQ(root.FindChild("", "b").GetLine(), 2U);
}

TEST(SourceParserTest, ReadsOtherFilesThatAreNamed) {
    const TemporaryFolder folder;
    WriteBytes(folder / "part.xml", "\n\n<a>\n\n</a>\n\n\n");
    WriteBytes(folder / "walk.gpx",
               std::string(kGrammar) + "<!ENTITY e SYSTEM 'part.xml'>]>\n<gpx>\n&e;\n<b/></gpx>");
    const CompleteRead read = ReadCompletelyBy([&](GpxParser& parser, GpxDocument& document) {
        parser.ParseFile((folder / "walk.gpx").string(), document);
    });
    ASSERT_EQ(read.error, "");
    const GpxElement root = read.document.GetElement();
    EXPECT_EQ(root.GetXml(), "<gpx\n>\n\n\n<a>\n\n</a>\n\n\n\n<b></b></gpx>");
    EXPECT_GE(root.FindChild("", "b").GetLine(), 4U);
}

TEST(SourceParserTest, DeclarationsAreThoseOfTheFileAndOfItsGrammar) {
    const GpxElement root = DocumentOf(std::string(kGrammar) +
                                       "<!ATTLIST a xmlns CDATA #FIXED 'u' xmlns:p CDATA 'v' p:x CDATA 'y'>]>"
                                       "<gpx><a><b/></a><b/></gpx>")
                                .GetElement();
    const GpxElement a = root.GetFirstChild();
    EXPECT_EQ(a.GetNamespace(), "u");
    EXPECT_EQ(a.GetFirstChild().GetNamespace(), "u");
    EXPECT_EQ(a.GetNextSibling().GetNamespace(), "");
    EXPECT_EQ(a.GetAttribute("x", "v"), std::optional<icu::UnicodeString>(u"y"));
}

TEST(SourceParserTest, ElementsAreThoseOfAnEqualPlainFile) {
    const std::string file = ReadTestData("writer/everything-1.1.gpx");
    const std::string body = file.substr(file.find("?>") + 2);
    const std::string plain = ContentOf(DocumentOf(body).GetElement());
    EXPECT_EQ(ContentOf(DocumentOf("<?xml version='1.1'?>" + body).GetElement()), plain);
    EXPECT_EQ(ContentOf(DocumentOf("<!DOCTYPE gpx>" + body).GetElement()), plain);
    EXPECT_GT(plain.size(), 1000U);
}

} // namespace
} // namespace vexaTransferLib
