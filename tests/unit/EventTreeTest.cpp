// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/EventTree.h>

#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vexaTransferLib::reader {
namespace {

using testing_support::Utf8;

constexpr char16_t kNamespace[] = u"urn:x";

NodeView FirstElement(const NodeView& parent) {
    ChildWalk children(parent);
    for (NodeView child; children.Next(child);)
        if (child.IsElement())
            return child;
    return {};
}

/// A tree of one element with the content that `build` adds.
template <class Build>
void BuildTree(EventTree& tree, Build build) {
    tree.Clear();
    tree.StartElement(kNamespace, u"root", {});
    build();
    EXPECT_TRUE(tree.EndElement());
}

std::vector<std::string> TextsOf(const NodeView& node) {
    std::vector<std::string> texts;
    ChildWalk children(node);
    for (NodeView child; children.Next(child);) {
        icu::UnicodeString text;
        texts.push_back(child.TextContent(text) ? Utf8(text) : "(none)");
    }
    return texts;
}

std::string ContentOf(const NodeView& node) {
    icu::UnicodeString text;
    EXPECT_TRUE(node.TextContent(text));
    return Utf8(text);
}

TEST(EventTreeTest, NodesHangWhereTheyWereOpened) {
    const std::vector<const char16_t*> noNames;
    EventTree tree(noNames);
    BuildTree(tree, [&] {
        tree.StartElement(kNamespace, u"a", {});
        tree.StartElement(nullptr, u"b", {});
        tree.AddText(u"1");
        EXPECT_FALSE(tree.EndElement());
        tree.AddText(u"2");
        EXPECT_FALSE(tree.EndElement());
        tree.AddText(u"3");
        tree.StartElement(kNamespace, u"c", {});
        EXPECT_FALSE(tree.EndElement());
        tree.AddText(u"4");
    });
    EXPECT_EQ(TextsOf(tree.Root()), (std::vector<std::string>{"12", "3", "", "4"}));
    const NodeView a = FirstElement(tree.Root());
    EXPECT_TRUE(Equals(a.LocalName(), u"a"));
    EXPECT_EQ(a.NamespaceUri(), kNamespace);
    EXPECT_EQ(TextsOf(a), (std::vector<std::string>{"1", "2"}));
    const NodeView b = FirstElement(a);
    EXPECT_TRUE(Equals(b.LocalName(), u"b"));
    EXPECT_EQ(b.NamespaceUri(), nullptr);
    EXPECT_EQ(ContentOf(tree.Root()), "1234");
}

TEST(EventTreeTest, AdjacentTextsAreOne) {
    const std::vector<std::vector<std::u16string>> rows = {
        {u"a"},    {u"a", u"b"}, {u"a", u"b", u"c"}, {u"", u"a"}, {u"", u"", u"a", u""}, {u"a", u"", u"b"},
        {u"", u""}};
    const std::vector<const char16_t*> noNames;
    EventTree tree(noNames);
    for (const std::vector<std::u16string>& pieces : rows) {
        std::u16string whole;
        BuildTree(tree, [&] {
            for (const std::u16string& piece : pieces) {
                tree.AddText(piece);
                whole += piece;
            }
        });
        EXPECT_EQ(tree.Root().FirstChildText(), whole);
        EXPECT_EQ(TextsOf(tree.Root()).size(), 1U);
    }
}

TEST(EventTreeTest, OtherNodesKeepTextsApart) {
    const std::vector<const char16_t*> noNames;
    EventTree tree(noNames);
    BuildTree(tree, [&] {
        tree.AddText(u"a");
        tree.AddText(u"b");
        tree.AddOther();
        tree.AddText(u"c");
        tree.AddCData(u"d");
        tree.AddCData(u"e");
        tree.AddText(u"f");
    });
    EXPECT_EQ(TextsOf(tree.Root()), (std::vector<std::string>{"ab", "(none)", "c", "d", "e", "f"}));
    EXPECT_EQ(ContentOf(tree.Root()), "abcdef");
}

TEST(EventTreeTest, AnUnfinishedTextDoesNotReachTheNextTree) {
    const std::vector<const char16_t*> noNames;
    EventTree tree(noNames);
    tree.StartElement(kNamespace, u"root", {});
    tree.AddText(u"a");
    tree.AddText(u"b");
    BuildTree(tree, [&] { tree.AddText(u"c"); });
    EXPECT_EQ(TextsOf(tree.Root()), (std::vector<std::string>{"c"}));
}

TEST(EventTreeTest, AttributesAreCopiedAndFoundByTheirQualifiedName) {
    const std::vector<const char16_t*> noNames;
    EventTree tree(noNames);
    std::u16string name = u"lat";
    std::u16string value = u"1.5";
    BuildTree(tree, [&] {
        tree.AddAttribute(name.c_str(), value.c_str());
        tree.AddAttribute(u"x:lat", u"");
        tree.AddAttribute(u"l", u"2");
        name = u"???";
        value = u"???";
        tree.StartElement(kNamespace, u"a", {});
        tree.AddAttribute(u"lat", u"3");
        tree.EndElement();
    });
    EXPECT_TRUE(Equals(tree.Root().Attribute(u"lat"), u"1.5"));
    EXPECT_TRUE(Equals(tree.Root().Attribute(u"x:lat"), u""));
    EXPECT_TRUE(Equals(tree.Root().Attribute(u"l"), u"2"));
    EXPECT_EQ(tree.Root().Attribute(u"la"), nullptr);
    EXPECT_EQ(tree.Root().Attribute(u"latt"), nullptr);
    EXPECT_TRUE(Equals(FirstElement(tree.Root()).Attribute(u"lat"), u"3"));
    EXPECT_EQ(FirstElement(tree.Root()).Attribute(u"l"), nullptr);
}

TEST(EventTreeTest, TreesOfAnySizeFollowEachOther) {
    const std::vector<const char16_t*> noNames;
    EventTree tree(noNames);
    for (const std::size_t size : {1U, 40000U, 3U, 2000000U, 5U, 32768U, 1U, 100U, 40000U}) {
        const std::u16string text(size, u'x');
        BuildTree(tree, [&] {
            tree.AddAttribute(u"a", text.c_str());
            for (int i = 0; i < 30; ++i) {
                tree.StartElement(kNamespace, u"a", {});
                tree.AddText(text);
                tree.EndElement();
            }
        });
        EXPECT_EQ(tree.Root().Attribute(u"a"), text);
        const std::vector<std::string> texts = TextsOf(tree.Root());
        EXPECT_EQ(texts, std::vector<std::string>(30, std::string(size, 'x')));
    }
}

} // namespace
} // namespace vexaTransferLib::reader
