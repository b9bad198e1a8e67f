// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/SkipReporter.h>

#include "support/OneNode.h"
#include "support/PageEndText.h"
#include "support/RecordingObserver.h"

#include <gtest/gtest.h>

#include <string>

namespace vexaTransferLib::reader {
namespace {

using namespace testing_support;

std::string ForeignTold(const char16_t* namespaceUri) {
    RecordingObserver observer;
    OneNode node;
    node.namespaceUri = namespaceUri;
    SkipReporter(&observer).SkipForeign(node.View(), "that of GPX 1.1");
    return observer.skipped;
}

// A file can declare a long namespace once and use it for a million elements.
TEST(SkipReporterTest, NoMoreOfALongNamespaceIsLookedAtThanIsQuoted) {
    const PageEndText shortest(std::u16string(61, u'u'));
    EXPECT_EQ(ForeignTold(shortest.Get()),
              "x foreign: Its namespace is \"" + std::string(60, 'u') + "...\", not that of GPX 1.1.\n");
    const PageEndText geocache(u"http://www.groundspeak.com/cache/" + std::u16string(28, u'u'));
    EXPECT_TRUE(IsNamespaceOfDocuments(geocache.Get()));
}

TEST(SkipReporterTest, NothingAfterTheEndOfAShortNamespaceIsLookedAt) {
    for (const char16_t* name : {u"u", u"", u"http://www.groundspeak.com/cache"}) {
        const PageEndText shortName(std::u16string(name) + u'\0');
        EXPECT_EQ(ForeignTold(shortName.Get()).find("x foreign: Its namespace is \""), 0U);
        EXPECT_FALSE(IsNamespaceOfDocuments(shortName.Get()));
    }
}

TEST(SkipReporterTest, ANamespaceOfSixtyUnitsIsQuotedWhole) {
    EXPECT_EQ(ForeignTold(std::u16string(60, u'u').c_str()),
              "x foreign: Its namespace is \"" + std::string(60, 'u') + "\", not that of GPX 1.1.\n");
    EXPECT_EQ(ForeignTold((std::u16string(59, u'u') + u"\U0001F30Dz").c_str()),
              "x foreign: Its namespace is \"" + std::string(59, 'u') + "...\", not that of GPX 1.1.\n");
}

TEST(SkipReporterTest, NoMoreOfALongValueIsLookedAtThanIsQuoted) {
    const PageEndText text(std::u16string(61, u'v'));
    RecordingObserver observer;
    OneNode node;
    node.firstChildText = text.Get();
    SkipReporter(&observer).ReportUnreadable(node.View(), "a number");
    EXPECT_EQ(observer.skipped, "x unreadable loss: \"" + std::string(60, 'v') + "...\" is not a number.\n");
}

} // namespace
} // namespace vexaTransferLib::reader
