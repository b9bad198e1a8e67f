// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/NodeView.h>

#include <vexaTransferLib/reader/DomNode.h>

#include "support/FakeNode.h"
#include "support/GpxText.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vexaTransferLib::reader {
namespace {

using namespace testing_support;

TEST(NodeViewTest, ANullViewHasNothing) {
    const NodeView views[] = {NodeView(), ViewOf(nullptr)};
    for (const NodeView& view : views) {
        EXPECT_TRUE(view.IsNull());
        EXPECT_FALSE(view.IsElement());
        EXPECT_EQ(view.LocalName(), nullptr);
        EXPECT_EQ(view.NamespaceUri(), nullptr);
        EXPECT_EQ(view.Attribute(u"a"), nullptr);
        EXPECT_EQ(view.FirstChildText(), nullptr);
        EXPECT_FALSE(view.HasChildList());
        icu::UnicodeString text(u"before");
        EXPECT_FALSE(view.TextContent(text));
        EXPECT_EQ(text, u"before");
        NodeView child;
        EXPECT_FALSE(ChildWalk(view).Next(child));
    }
}

TEST(NodeViewTest, AViewAsksItsSource) {
    const FakeNodePtr node = Gpx11Text(u"name", u"text");
    node->attributes = {{u"a", u"1"}};
    const NodeView view = node->View();
    EXPECT_FALSE(view.IsNull());
    EXPECT_TRUE(view.IsElement());
    EXPECT_TRUE(Equals(view.LocalName(), u"name"));
    EXPECT_TRUE(Equals(view.NamespaceUri(), u"http://www.topografix.com/GPX/1/1"));
    EXPECT_TRUE(Equals(view.Attribute(u"a"), u"1"));
    EXPECT_EQ(view.Attribute(u"b"), nullptr);
    EXPECT_TRUE(Equals(view.FirstChildText(), u"text"));
    icu::UnicodeString content;
    EXPECT_TRUE(view.TextContent(content));
    EXPECT_EQ(content, u"text");
}

TEST(NodeViewTest, APathHasSlashesBetweenItsNames) {
    EXPECT_EQ(PathOf({}), "");
    EXPECT_EQ(PathOf({u"gpx"}), "gpx");
    EXPECT_EQ(PathOf({u"gpx", u"h\u00F6he", u"ele"}), "gpx/h\u00F6he/ele");
}

TEST(NodeViewTest, EqualsComparesExactly) {
    EXPECT_TRUE(Equals(u"name", u"name"));
    EXPECT_TRUE(Equals(u"", u""));
    EXPECT_FALSE(Equals(nullptr, u""));
    EXPECT_FALSE(Equals(u"name", u"Name"));
    EXPECT_FALSE(Equals(u"name", u"names"));
    EXPECT_FALSE(Equals(u"names", u"name"));
    EXPECT_FALSE(Equals(u"", u"a"));
    EXPECT_FALSE(Equals(u"a", u""));
    EXPECT_FALSE(Equals(u"n\u00E4me", u"na\u0308me"));
}

TEST(ChildWalkTest, GivesTheChildrenInOrderMissingEntriesIncluded) {
    const FakeNodePtr parent = Gpx11Node(u"p", {Gpx11Node(u"a"), nullptr, Gpx11Node(u"b"), nullptr});
    std::vector<std::string> names;
    ChildWalk children(parent->View());
    for (NodeView child; children.Next(child);)
        names.push_back(child.IsNull() ? "(missing)" : Utf8(child.LocalName()));
    EXPECT_EQ(names, (std::vector<std::string>{"a", "(missing)", "b", "(missing)"}));
    NodeView child = parent->View();
    EXPECT_FALSE(children.Next(child)) << "it stays at the end";
    EXPECT_TRUE(Equals(child.LocalName(), u"p")) << "the output is left alone";
}

TEST(ChildWalkTest, TwoWalksOfOneNodeAreIndependent) {
    const FakeNodePtr parent = Gpx11Node(u"p", {Gpx11Node(u"a"), Gpx11Node(u"b")});
    ChildWalk first(parent->View());
    ChildWalk second(parent->View());
    NodeView child;
    ASSERT_TRUE(first.Next(child));
    ASSERT_TRUE(first.Next(child));
    ASSERT_TRUE(second.Next(child));
    EXPECT_TRUE(Equals(child.LocalName(), u"a"));
}

TEST(ChildWalkTest, ANodeWithoutAChildListHasNoChildren) {
    NodeView child;
    EXPECT_FALSE(ChildWalk(WithoutChildList(*Gpx11Node(u"p", {Gpx11Node(u"a")}))->View()).Next(child));
}

} // namespace
} // namespace vexaTransferLib::reader
