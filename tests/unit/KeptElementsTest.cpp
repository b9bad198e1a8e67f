// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/KeptElements.h>

#include "support/NotingObserver.h"
#include "support/OneNode.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace vexaTransferLib::reader {
namespace {

using namespace testing_support;
using Elements = KeptElements::Elements;

/// Elements with these texts, told by their number when they are lost.
std::vector<OneNode> NodesWith(const std::vector<const char16_t*>& contents) {
    std::vector<OneNode> nodes(contents.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        nodes[i].content = contents[i];
        nodes[i].path = std::to_string(i);
    }
    return nodes;
}

std::string Lost(const NotingObserver& observer) {
    std::string lost;
    for (const GpxPassedOver& thing : observer.things)
        lost += thing.element + (thing.reason == kGpxReplaced ? " " : "? ");
    return lost;
}

int MostBuilt(const std::vector<OneNode>& nodes) {
    int most = 0;
    for (const OneNode& node : nodes)
        most = std::max(most, node.built);
    return most;
}

class KeptElementsTest : public testing::TestWithParam<Elements> {
protected:
    NotingObserver observer_;
    Receipt receipt_{&observer_};
    KeptElements kept_{receipt_, GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Elements, KeptElementsTest, testing::Values(Elements::kStay, Elements::kGo));

TEST_P(KeptElementsTest, TheOneBeforeIsLostUnlessItSaysTheSame) {
    const std::vector<OneNode> nodes = NodesWith({u"a", u"b", u"b", u"a", u"", u""});
    for (const OneNode& node : nodes)
        kept_.Keep(u"field", node.View());
    EXPECT_EQ(Lost(observer_), "0 2 3 ");
}

TEST_P(KeptElementsTest, WhatIsRefusedIsLostUnlessItSaysTheSame) {
    const std::vector<OneNode> nodes = NodesWith({u"a", u"b", u"a", u"b"});
    kept_.Keep(u"field", nodes[0].View());
    for (std::size_t i = 1; i < nodes.size(); ++i)
        kept_.Refuse(u"field", nodes[i].View());
    EXPECT_EQ(Lost(observer_), "1 3 ");
}

TEST_P(KeptElementsTest, FieldsAreKeptApart) {
    const std::vector<OneNode> nodes = NodesWith({u"a", u"b", u"c"});
    kept_.Keep(u"field", nodes[0].View());
    kept_.Keep(u"other", nodes[1].View());
    kept_.Drop(u"field");
    kept_.Drop(u"field");
    kept_.Refuse(u"field", nodes[2].View());
    EXPECT_EQ(Lost(observer_), "0 2 ");
}

TEST_P(KeptElementsTest, TheTextOfEachElementIsBuiltOnceHoweverManyFollow) {
    const std::vector<OneNode> refused = NodesWith(std::vector<const char16_t*>(100, u"short"));
    OneNode longOne;
    longOne.content = icu::UnicodeString(1000, u'x', 1000);
    kept_.Keep(u"field", longOne.View());
    for (const OneNode& node : refused)
        kept_.Refuse(u"field", node.View());
    EXPECT_EQ(longOne.built, 1);
    EXPECT_EQ(MostBuilt(refused), 1);
    EXPECT_EQ(observer_.things.size(), 100U);
}

TEST_P(KeptElementsTest, TheTextsOfElementsThatReplaceEachOtherAreBuiltOnce) {
    const std::vector<OneNode> nodes = NodesWith({u"a", u"b", u"a", u"b", u"b", u"a"});
    for (const OneNode& node : nodes)
        kept_.Keep(u"field", node.View());
    EXPECT_EQ(MostBuilt(nodes), 1);
}

TEST(KeptElementsSilentTest, WithoutAnObserverNothingIsLookedAt) {
    Receipt receipt(nullptr);
    KeptElements kept(receipt, Elements::kGo);
    const std::vector<OneNode> nodes = NodesWith({u"a", u"b"});
    kept.Keep(u"field", nodes[0].View());
    kept.Keep(u"field", nodes[1].View());
    kept.Refuse(u"field", nodes[0].View());
    kept.Drop(u"field");
    EXPECT_EQ(MostBuilt(nodes), 0);
}

TEST(KeptElementsSilentTest, AnElementThatStaysAndIsAloneIsNotBuilt) {
    NotingObserver observer;
    Receipt receipt(&observer);
    KeptElements kept(receipt, Elements::kStay);
    const std::vector<OneNode> nodes = NodesWith({u"a"});
    kept.Keep(u"field", nodes[0].View());
    EXPECT_EQ(nodes[0].built, 0);
}

} // namespace
} // namespace vexaTransferLib::reader
