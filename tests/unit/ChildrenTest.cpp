// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/Children.h>

#include "support/ContractChecks.h"
#include "support/FakeNode.h"
#include "support/GpxText.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace vexaTransferLib::reader {
namespace {

using namespace testing_support;

constexpr ChildMessages kMessages = {"no children", "no child", text::sites::kLinkChildren,
                                     text::sites::kLinkChild};

// The names of the children that are read. Those in `failing` throw after they were recorded.
std::string IsolatedNames(const FakeNodePtr& parent, const char16_t* failing = u"") {
    std::string names;
    ForEachIsolatedChild(AnyContext(), parent->View(), kMessages, [&](const NodeView& child) {
        names += Utf8(child.LocalName()) + " ";
        if (Equals(child.LocalName(), failing))
            throw std::runtime_error("any");
        if (Equals(child.LocalName(), u"int"))
            throw 5;
    });
    return names;
}

TEST(ChildrenTest, OneBadChildNeverCostsItsParent) {
    const FakeNodePtr parent = Gpx11Node(u"p", {Gpx11Node(u"a"), Gpx11Node(u"b"), Gpx11Node(u"c")});
    EXPECT_EQ(CaptureStandardError([&] { EXPECT_EQ(IsolatedNames(parent, u"b"), "a b c "); }), "");
}

TEST(ChildrenTest, OnlyStandardExceptionsAreSwallowed) {
    EXPECT_THROW(IsolatedNames(Gpx11Node(u"p", {Gpx11Node(u"int")})), int);
}

TEST(ChildrenTest, EachMissingChildWritesOneReport) {
    const std::string written = CaptureStandardError([] {
        EXPECT_EQ(IsolatedNames(Gpx11Node(u"p", {nullptr, Gpx11Node(u"a"), nullptr})), "a ");
    });
    const std::size_t half = written.find('\n') + 1;
    EXPECT_TRUE(IsOneReport(written.substr(0, half), kParserSource));
    EXPECT_TRUE(IsOneReport(written.substr(half), kParserSource));
}

TEST(ChildrenTest, ChildrenWithoutALocalNameAreSkipped) {
    const FakeNodePtr nameless = Gpx11Node(u"x");
    nameless->localName.reset();
    const FakeNodePtr parent = Gpx11Node(u"p", {nameless, Gpx11Node(u"a")});
    EXPECT_EQ(IsolatedNames(parent), "a ");
    std::string names;
    ForEachNamedChild(AnyContext(), parent->View(),
                      [&](const NodeView& child) { names += Utf8(child.LocalName()); });
    EXPECT_EQ(names, "a");
}

TEST(ChildrenTest, WithoutAChildListOnlyTheIsolatedWalkFails) {
    const FakeNodePtr parent = WithoutChildList(*Gpx11Node(u"p"));
    EXPECT_FAILURE(IsolatedNames(parent), dbc::postcondition_error, "no children", kParserSource);
    ForEachNamedChild(AnyContext(), parent->View(), [](const NodeView&) { FAIL(); });
    ForEachNamedChild(AnyContext(), NodeView(), [](const NodeView&) { FAIL(); });
}

} // namespace
} // namespace vexaTransferLib::reader
