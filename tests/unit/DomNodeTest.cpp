// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/DomNode.h>

#include "support/GpxDom.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <xercesc/dom/DOMAttr.hpp>
#include <xercesc/dom/DOMDocumentType.hpp>
#include <xercesc/dom/DOMNamedNodeMap.hpp>

#include <random>
#include <string>
#include <vector>

namespace vexaTransferLib::reader {
namespace {

using namespace testing_support;

std::string OrNull(const char16_t* text) {
    return text != nullptr ? Utf8(text) : "(null)";
}

TEST(DomNodeTest, NamesAndNamespacesOfElements) {
    const DomTree tree("<r xmlns:p='urn:p'><none/><p:prefixed/><own xmlns='urn:own'><inner/></own>"
                       "<n\u00E4me\U00010400/></r>");
    struct Row {
        const char* localName;
        const char* namespaceUri;
    };
    constexpr Row kRows[] = {{"r", "(null)"},    {"none", "(null)"},   {"prefixed", "urn:p"},
                             {"own", "urn:own"}, {"inner", "urn:own"}, {"n\u00E4me\U00010400", "(null)"}};
    for (const Row& row : kRows) {
        const NodeView view = ViewOf(tree.Find(row.localName));
        EXPECT_TRUE(view.IsElement());
        EXPECT_FALSE(view.IsNull());
        EXPECT_EQ(OrNull(view.LocalName()), row.localName);
        EXPECT_EQ(OrNull(view.NamespaceUri()), row.namespaceUri) << row.localName;
    }
}

TEST(DomNodeTest, OtherNodesHaveNeitherNameNorNamespace) {
    const DomTree tree("<!DOCTYPE r [<!ENTITY e 'x'>]><r>text<![CDATA[c]]><!-- c --><?p i?>&e;</r>");
    int kinds = 0;
    for (const xercesc::DOMNode* node = tree.Root()->getFirstChild(); node != nullptr;
         node = node->getNextSibling()) {
        ++kinds;
        EXPECT_FALSE(ViewOf(node).IsElement());
        EXPECT_EQ(ViewOf(node).LocalName(), nullptr);
        EXPECT_EQ(ViewOf(node).NamespaceUri(), nullptr);
        EXPECT_EQ(ViewOf(node).Attribute(u"a"), nullptr);
    }
    EXPECT_EQ(kinds, 5);
    EXPECT_FALSE(ViewOf(tree.Document()).IsElement());
}

TEST(DomNodeTest, AttributesAreFoundByTheirQualifiedName) {
    const DomTree tree("<r xmlns:p='urn:p' a='1' p:b='2' empty='' p='3'/>");
    const NodeView view = ViewOf(tree.Root());
    EXPECT_EQ(OrNull(view.Attribute(u"a")), "1");
    EXPECT_EQ(OrNull(view.Attribute(u"p:b")), "2");
    EXPECT_EQ(OrNull(view.Attribute(u"b")), "(null)");
    EXPECT_EQ(OrNull(view.Attribute(u"A")), "(null)");
    EXPECT_EQ(OrNull(view.Attribute(u"empty")), "");
    EXPECT_EQ(OrNull(view.Attribute(u"p")), "3");
    EXPECT_EQ(OrNull(view.Attribute(u"xmlns:p")), "urn:p");
}

TEST(DomNodeTest, FirstChildTextIsATextOrCDataOnly) {
    const DomTree tree("<!DOCTYPE r [<!ENTITY e 'x'>]><r><a>t&amp;u<!-- c -->v</a><b><![CDATA[c]]>t</b>"
                       "<c><!-- c -->t</c><d><?p i?>t</d><e><x/>t</e><f>&e;</f><g/></r>");
    const std::vector<std::pair<const char*, const char*>> rows = {
        {"a", "t&u"},    {"b", "c"},      {"c", "(null)"}, {"d", "(null)"},
        {"e", "(null)"}, {"f", "(null)"}, {"g", "(null)"}};
    for (const auto& [name, text] : rows)
        EXPECT_EQ(OrNull(ViewOf(tree.Find(name)).FirstChildText()), text) << name;
}

TEST(DomNodeTest, ChildrenComeInDocumentOrderOfEveryKind) {
    const DomTree tree("<!DOCTYPE r [<!ENTITY e 'x'>]><r>t<a/><!-- c --><?p i?><![CDATA[d]]>&e;<b/></r>");
    std::vector<const xercesc::DOMNode*> expected;
    for (const xercesc::DOMNode* node = tree.Root()->getFirstChild(); node != nullptr;
         node = node->getNextSibling())
        expected.push_back(node);
    ASSERT_EQ(expected.size(), 7u);
    const NodeView root = ViewOf(tree.Root());
    EXPECT_TRUE(root.HasChildList());
    ChildWalk children(root);
    NodeView child;
    for (const xercesc::DOMNode* node : expected) {
        ASSERT_TRUE(children.Next(child));
        EXPECT_EQ(OrNull(child.LocalName()), OrNull(node->getLocalName()));
        EXPECT_EQ(child.IsElement(), node->getNodeType() == xercesc::DOMNode::ELEMENT_NODE);
    }
    EXPECT_FALSE(children.Next(child));
    EXPECT_FALSE(children.Next(child));
}

TEST(DomNodeTest, EveryKindOfNodeHasAChildListThatMayBeEmpty) {
    const DomTree tree("<r a='1'>text<!-- c --></r>");
    NodeView child;
    for (const xercesc::DOMNode* node = tree.Root()->getFirstChild(); node != nullptr;
         node = node->getNextSibling()) {
        EXPECT_TRUE(ViewOf(node).HasChildList());
        EXPECT_FALSE(ChildWalk(ViewOf(node)).Next(child));
    }
}

// Small documents with every kind of content that an element can have, some of it in nested entities.
class RandomXml {
public:
    explicit RandomXml(unsigned seed) : random_(seed) {}

    std::string Document() {
        std::string declarations;
        for (int i = 0; i < 4; ++i)
            declarations += "<!ENTITY e" + std::to_string(i) + " '" + Content(2, i) + "'>";
        return "<!DOCTYPE r [" + declarations + "]><r a=\"" + Attribute() + "\">" + Content(4, 4) + "</r>";
    }

private:
    int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }

    // `entities` are declared so far.
    std::string Content(int depth, int entities) {
        std::string text;
        for (int count = Below(5); count > 0; --count)
            text += Piece(depth, entities);
        return text;
    }

    std::string Piece(int depth, int entities) {
        switch (Below(10)) {
        case 0:
            return "<!-- c" + std::to_string(Below(9)) + " -->";
        case 1:
            return "<?p i" + std::to_string(Below(9)) + "?>";
        case 2:
            return "<![CDATA[" + std::string(Below(2) == 0 ? "" : "<d>&amp;") + "]]>";
        case 3:
            return entities > 0 ? "&e" + std::to_string(Below(entities)) + ";" : "t";
        case 4:
            return " \n ";
        case 5:
            return "x&amp;&#x1F30D;";
        case 6:
            return "\u00E9";
        default:
            return depth > 0 ? "<n b=\"" + Attribute() + "\">" + Content(depth - 1, entities) + "</n>"
                             : "<n/>";
        }
    }

    std::string Attribute() { return Below(2) == 0 ? "" : "v&lt;" + std::to_string(Below(9)); }

    std::mt19937 random_;
};

void ExpectSameTextContent(const xercesc::DOMNode* node, int& compared) {
    const XMLCh* const expected = node->getTextContent();
    icu::UnicodeString content(u"before");
    ASSERT_EQ(ViewOf(node).TextContent(content), expected != nullptr) << "node type " << node->getNodeType();
    ASSERT_EQ(Utf8(content), expected != nullptr ? Utf8(expected) : "before")
        << "node type " << node->getNodeType();
    ++compared;
}

void ExpectSameTextContents(const DomTree& tree, int& compared) {
    ExpectSameTextContent(tree.Document(), compared);
    for (const xercesc::DOMNode* node = tree.Document()->getFirstChild(); node != nullptr;
         node = NextInDocument(node)) {
        ExpectSameTextContent(node, compared);
        const xercesc::DOMNamedNodeMap* const attributes = node->getAttributes();
        for (XMLSize_t i = 0; attributes != nullptr && i < attributes->getLength(); ++i)
            ExpectSameTextContent(attributes->item(i), compared);
    }
    const xercesc::DOMNamedNodeMap* const entities = tree.Document()->getDoctype()->getEntities();
    for (XMLSize_t i = 0; i < entities->getLength(); ++i)
        ExpectSameTextContent(entities->item(i), compared);
}

TEST(DomNodeTest, TextContentIsThatOfXercesForEveryNodeOfRandomDocuments) {
    constexpr unsigned kDocuments = 5000;
    int compared = 0;
    for (unsigned seed = 0; seed < kDocuments; ++seed) {
        const std::string xml = RandomXml(seed).Document();
        const DomTree tree(xml);
        ExpectSameTextContents(tree, compared);
        if (HasFatalFailure())
            FAIL() << "document " << seed << ": " << xml;
    }
    EXPECT_GT(compared, 50000);
}

TEST(DomNodeTest, TheRandomDocumentsHoldEveryKindOfNode) {
    bool seen[13] = {};
    for (unsigned seed = 0; seed < 100; ++seed) {
        const DomTree tree(RandomXml(seed).Document());
        for (const xercesc::DOMNode* node = tree.Root(); node != nullptr; node = NextInDocument(node))
            seen[node->getNodeType()] = true;
    }
    using xercesc::DOMNode;
    for (const DOMNode::NodeType type :
         {DOMNode::ELEMENT_NODE, DOMNode::TEXT_NODE, DOMNode::CDATA_SECTION_NODE,
          DOMNode::ENTITY_REFERENCE_NODE, DOMNode::PROCESSING_INSTRUCTION_NODE, DOMNode::COMMENT_NODE})
        EXPECT_TRUE(seen[type]) << type;
}

TEST(DomNodeTest, TextContentReplacesTheOutput) {
    const DomTree tree("<r><a/><b>x</b></r>");
    icu::UnicodeString content(u"before");
    EXPECT_TRUE(ViewOf(tree.Find("a")).TextContent(content));
    EXPECT_EQ(content, u"");
    EXPECT_TRUE(ViewOf(tree.Find("b")).TextContent(content));
    EXPECT_EQ(content, u"x");
}

// Content beside or above the node does not belong to it.
TEST(DomNodeTest, TextContentStaysWithinTheNode) {
    const DomTree tree("<r>a<x>b<y>c</y>d</x>e</r>");
    icu::UnicodeString content;
    EXPECT_TRUE(ViewOf(tree.Find("x")).TextContent(content));
    EXPECT_EQ(content, u"bcd");
    EXPECT_TRUE(ViewOf(tree.Find("y")).TextContent(content));
    EXPECT_EQ(content, u"c");
}

} // namespace
} // namespace vexaTransferLib::reader
