// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/FieldSources.h>

#include "support/OneNode.h"
#include "support/RecordingObserver.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace vexaTransferLib::reader {
namespace {

using namespace testing_support;
using Lifetime = FieldSources::Lifetime;

/// Elements with these texts, whose numbers are reported when they are lost.
std::vector<OneNode> NodesWith(const std::vector<const char16_t*>& contents) {
    std::vector<OneNode> nodes(contents.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        nodes[i].content = contents[i];
        nodes[i].path = std::to_string(i);
    }
    return nodes;
}

std::string Lost(const RecordingObserver& observer) {
    std::string lost;
    for (const GpxSkippedElement& thing : observer.things)
        lost += thing.element + (thing.reason == kGpxReplaced ? " " : "? ");
    return lost;
}

int MostBuilt(const std::vector<OneNode>& nodes) {
    int most = 0;
    for (const OneNode& node : nodes)
        most = std::max(most, node.built);
    return most;
}

class FieldSourcesTest : public testing::TestWithParam<Lifetime> {
protected:
    RecordingObserver observer_;
    SkipReporter reporter_{&observer_};
    FieldSources sources_{reporter_, GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Lifetime, FieldSourcesTest, testing::Values(Lifetime::kLong, Lifetime::kShort));

TEST_P(FieldSourcesTest, TheEarlierElementIsLostUnlessItHasTheSameText) {
    const std::vector<OneNode> nodes = NodesWith({u"a", u"b", u"b", u"a", u"", u""});
    for (const OneNode& node : nodes)
        sources_.Set(u"field", node.View());
    EXPECT_EQ(Lost(observer_), "0 2 3 ");
}

TEST_P(FieldSourcesTest, AnIgnoredElementIsLostUnlessItHasTheSameText) {
    const std::vector<OneNode> nodes = NodesWith({u"a", u"b", u"a", u"b"});
    sources_.Set(u"field", nodes[0].View());
    for (std::size_t i = 1; i < nodes.size(); ++i)
        sources_.ReportIgnored(u"field", nodes[i].View());
    EXPECT_EQ(Lost(observer_), "1 3 ");
}

TEST_P(FieldSourcesTest, FieldsAreKeptApart) {
    const std::vector<OneNode> nodes = NodesWith({u"a", u"b", u"c"});
    sources_.Set(u"field", nodes[0].View());
    sources_.Set(u"other", nodes[1].View());
    sources_.Clear(u"field");
    sources_.Clear(u"field");
    sources_.ReportIgnored(u"field", nodes[2].View());
    EXPECT_EQ(Lost(observer_), "0 2 ");
}

TEST_P(FieldSourcesTest, TheTextOfEachElementIsBuiltOnceHoweverManyFollow) {
    const std::vector<OneNode> refused = NodesWith(std::vector<const char16_t*>(100, u"short"));
    OneNode longOne;
    longOne.content = icu::UnicodeString(1000, u'x', 1000);
    sources_.Set(u"field", longOne.View());
    for (const OneNode& node : refused)
        sources_.ReportIgnored(u"field", node.View());
    EXPECT_EQ(longOne.built, 1);
    EXPECT_EQ(MostBuilt(refused), 1);
    EXPECT_EQ(observer_.things.size(), 100U);
}

TEST_P(FieldSourcesTest, TheTextsOfElementsThatReplaceEachOtherAreBuiltOnce) {
    const std::vector<OneNode> nodes = NodesWith({u"a", u"b", u"a", u"b", u"b", u"a"});
    for (const OneNode& node : nodes)
        sources_.Set(u"field", node.View());
    EXPECT_EQ(MostBuilt(nodes), 1);
}

TEST(FieldSourcesSilentTest, WithoutAnObserverNothingIsLookedAt) {
    SkipReporter reporter(nullptr);
    FieldSources sources(reporter, Lifetime::kShort);
    const std::vector<OneNode> nodes = NodesWith({u"a", u"b"});
    sources.Set(u"field", nodes[0].View());
    sources.Set(u"field", nodes[1].View());
    sources.ReportIgnored(u"field", nodes[0].View());
    sources.Clear(u"field");
    EXPECT_EQ(MostBuilt(nodes), 0);
}

TEST(FieldSourcesSilentTest, AnElementThatStaysAndIsAloneIsNotBuilt) {
    RecordingObserver observer;
    SkipReporter reporter(&observer);
    FieldSources sources(reporter, Lifetime::kLong);
    const std::vector<OneNode> nodes = NodesWith({u"a"});
    sources.Set(u"field", nodes[0].View());
    EXPECT_EQ(nodes[0].built, 0);
}

} // namespace
} // namespace vexaTransferLib::reader
