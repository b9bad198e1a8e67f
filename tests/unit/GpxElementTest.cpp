// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxElement.h>

#include "support/SourceOf.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace vexaTransferLib {
namespace {

using testing_support::RootOf;

GpxElement First(const std::string& content) {
    return RootOf("<r>" + content + "</r>").GetFirstChild();
}

std::vector<std::string> NamesOf(const GpxElement& parent) {
    std::vector<std::string> names;
    for (const GpxElement& child : parent.GetChildren())
        names.emplace_back(child.GetName());
    return names;
}

TEST(GpxElementTest, HasANameAPrefixAndANamespace) {
    const GpxElement element = First("<p:a xmlns:p='u' xmlns='v'/>");
    EXPECT_EQ(element.GetName(), "a");
    EXPECT_EQ(element.GetPrefix(), "p");
    EXPECT_EQ(element.GetNamespace(), "u");
    EXPECT_TRUE(element.Is("u", "a"));
    EXPECT_FALSE(element.Is("u", "b"));
    EXPECT_FALSE(element.Is("v", "a"));
    EXPECT_EQ(First("<a/>").GetNamespace(), "");
    EXPECT_EQ(First("<a></a>").GetPrefix(), "");
}

TEST(GpxElementTest, IsInTheNamespaceThatIsInScope) {
    const GpxElement root =
        RootOf("<r xmlns='u'><a xmlns='v'><b/><c xmlns=''/></a><d/><e xmlns='w'/><f/></r>");
    const GpxElement a = root.GetFirstChild();
    EXPECT_EQ(root.GetNamespace(), "u");
    EXPECT_EQ(a.GetNamespace(), "v");
    EXPECT_EQ(a.GetFirstChild().GetNamespace(), "v");
    EXPECT_EQ(a.GetFirstChild().GetNextSibling().GetNamespace(), "");
    EXPECT_EQ(root.FindChild("u", "d").GetName(), "d");
    EXPECT_EQ(root.FindChild("w", "e").GetName(), "e");
    EXPECT_EQ(root.FindChild("u", "f").GetName(), "f");
    EXPECT_FALSE(root.FindChild("u", "e"));
}

TEST(GpxElementTest, HasTheElementsInItAsChildren) {
    const GpxElement root =
        RootOf("<r>t<!-- <x/> --><a><b/></a><![CDATA[<y/>]]><?p <z/>?><c d='>'/>t<e/></r>");
    EXPECT_EQ(NamesOf(root), (std::vector<std::string>{"a", "c", "e"}));
    EXPECT_EQ(NamesOf(root.GetFirstChild()), std::vector<std::string>{"b"});
    EXPECT_TRUE(First("<a/>").GetChildren().empty());
    EXPECT_TRUE(First("<a></a>").GetChildren().empty());
    EXPECT_TRUE(First("<a>text</a>").GetChildren().empty());
}

TEST(GpxElementTest, HasNoSiblingAfterTheRoot) {
    EXPECT_FALSE(RootOf("<r/><!-- c -->").GetNextSibling());
    EXPECT_FALSE(RootOf("<r><a/></r>\n").GetFirstChild().GetNextSibling());
}

TEST(GpxElementTest, GivesAllTextInItInOrder) {
    EXPECT_EQ(First("<a> x <b>y<c/></b><!-- n --><![CDATA[&lt;]]>&lt;&#65;\r\n</a>").GetText(),
              u" x y&lt;<A\n");
    EXPECT_EQ(First("<a>\xC3\xA9\xF0\x9F\x97\xBB</a>").GetText(), u"\u00E9\U0001F5FB");
    EXPECT_EQ(First("<a/>").GetText(), u"");
}

TEST(GpxElementTest, ReadsItsTextAsNumberAndTime) {
    EXPECT_EQ(First("<a>\n 12.5 </a>").GetNumber(), std::optional(12.5));
    EXPECT_EQ(First("<a><!-- c -->1&#50;</a>").GetNumber(), std::optional(12.0));
    EXPECT_EQ(First("<a>x</a>").GetNumber(), std::nullopt);
    EXPECT_EQ(First("<a> 1969-12-31T23:59:59.5Z </a>").GetTime(), std::optional(-500.0));
    EXPECT_EQ(First("<a>12</a>").GetTime(), std::nullopt);
}

TEST(GpxElementTest, GivesAttributesByNameAndNamespace) {
    const GpxElement element = First("<a b='1' p:b=\"2&quot;\t'\" xmlns:p='u' c = '3'/>");
    EXPECT_EQ(element.GetAttribute("b"), std::optional<icu::UnicodeString>(u"1"));
    EXPECT_EQ(element.GetAttribute("b", "u"), std::optional<icu::UnicodeString>(u"2\" '"));
    EXPECT_EQ(element.GetAttribute("c"), std::optional<icu::UnicodeString>(u"3"));
    EXPECT_FALSE(element.GetAttribute("c", "u"));
    EXPECT_FALSE(element.GetAttribute("p"));
    EXPECT_FALSE(element.GetAttribute("p:b"));
}

TEST(GpxElementTest, GivesAllAttributesButDeclarations) {
    const GpxElement element = First("<a xmlns='v' b='1' p:c='' xmlns:p='u'/>");
    const std::vector<GpxAttribute> attributes = element.GetAttributes();
    ASSERT_EQ(attributes.size(), 2u);
    EXPECT_EQ(attributes[0].name, "b");
    EXPECT_EQ(attributes[0].nameSpace, "");
    EXPECT_EQ(attributes[0].value, u"1");
    EXPECT_EQ(attributes[1].name, "c");
    EXPECT_EQ(attributes[1].nameSpace, "u");
}

TEST(GpxElementTest, ShowsItsXmlAsItStands) {
    EXPECT_EQ(First(" <a  b='>'><c/><c></c ></a >\n").GetXml(), "<a  b='>'><c/><c></c ></a >");
    EXPECT_EQ(First("<a />x").GetXml(), "<a />");
}

TEST(GpxElementTest, KnowsItsLineAndColumn) {
    const GpxElement root = RootOf("<r>\n  <a/>\r\n\xC3\xA9<b/></r>");
    EXPECT_EQ(root.GetLine(), 1u);
    EXPECT_EQ(root.GetColumn(), 1u);
    EXPECT_EQ(root.GetFirstChild().GetLine(), 2u);
    EXPECT_EQ(root.GetFirstChild().GetColumn(), 3u);
    EXPECT_EQ(root.GetFirstChild().GetNextSibling().GetLine(), 3u);
    EXPECT_EQ(root.GetFirstChild().GetNextSibling().GetColumn(), 2u);
}

TEST(GpxElementTest, KeepsItsSource) {
    GpxElement child;
    {
        const GpxElement root = RootOf("<r><a>text</a></r>");
        child = root.GetFirstChild();
    }
    EXPECT_EQ(child.GetText(), u"text");
}

TEST(GpxElementTest, IsEqualToAViewOfTheSameElementOnly) {
    const GpxElement root = RootOf("<r><a/><a/></r>");
    EXPECT_EQ(root.GetFirstChild(), root.GetFirstChild());
    EXPECT_NE(root.GetFirstChild(), root.GetFirstChild().GetNextSibling());
    EXPECT_NE(root, RootOf("<r><a/><a/></r>"));
    EXPECT_EQ(GpxElement(), GpxElement());
}

TEST(GpxElementTest, OfNothingHasNothing) {
    const GpxElement none;
    EXPECT_FALSE(none);
    EXPECT_EQ(none.GetName(), "");
    EXPECT_EQ(none.GetNamespace(), "");
    EXPECT_EQ(none.GetXml(), "");
    EXPECT_EQ(none.GetText(), u"");
    EXPECT_EQ(none.GetLine(), 0u);
    EXPECT_FALSE(none.GetNumber());
    EXPECT_FALSE(none.GetAttribute("a"));
    EXPECT_TRUE(none.GetAttributes().empty());
    EXPECT_FALSE(none.GetFirstChild());
    EXPECT_FALSE(none.GetNextSibling());
    EXPECT_FALSE(none.FindChild("", "a"));
}

// Neither the stack nor the time may grow faster than the depth.
TEST(GpxElementTest, MayBeAsDeepAsAPlainFileIs) {
    std::string start;
    std::string end;
    for (int i = 0; i < 250; ++i) {
        start += "<a>";
        end += "</a>";
    }
    const GpxElement element = First(start + "x" + end + "<b/>");
    EXPECT_EQ(element.GetText(), u"x");
    EXPECT_EQ(element.GetNextSibling().GetName(), "b");
}

} // namespace
} // namespace vexaTransferLib
