// SPDX-License-Identifier: MIT

// Links of both versions of GPX, read completely.

#include "support/CompleteRead.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"

#include <vexaTransferLib/GpxElement.h>

#include <gtest/gtest.h>

#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

std::string LinkWith(const std::string& children) {
    const CompleteRead read = ReadCompletely(Gpx11("<wpt lat='1' lon='2'>" + children + "</wpt>"));
    EXPECT_EQ(read.error + read.reports, "");
    return LinkOf(*read.document.GetWaypointIter());
}

TEST(CompleteLinkTest, ReadsTheLinkOfEitherVersion) {
    EXPECT_EQ(LinkWith("<link href='a&amp;b'><text>t</text><type>y</type></link>"), "a&b|t|y");
    EXPECT_EQ(LinkWith("<link href=\"a\"/>"), "a|-|-");
    EXPECT_EQ(LinkWith("<url>a</url><urlname>t</urlname>"), "a|t|-");
    EXPECT_EQ(LinkWith("<urlname>t</urlname><url>a</url>"), "a|t|-");
    EXPECT_EQ(LinkWith("<url><![CDATA[a&b]]></url>"), "a&b|-|-");
}

TEST(CompleteLinkTest, WithoutAnAddressThereIsNone) {
    EXPECT_EQ(LinkWith("<urlname>t</urlname>"), kAbsent);
    EXPECT_EQ(LinkWith("<url/>"), kAbsent);
    EXPECT_EQ(LinkWith("<link><text>t</text></link>"), kAbsent);
    EXPECT_EQ(LinkWith("<link other:href='a'/>"), kAbsent);
    EXPECT_EQ(ReadCompletely(Gpx11("<wpt lat='1' lon='2'>\n<link href=''/></wpt>")).notices,
              "gpx/wpt/link 2 unreadable: It has no address.\n");
}

TEST(CompleteLinkTest, TheFirstLinkWithAnAddressIsRead) {
    EXPECT_EQ(LinkWith("<link/><link href='a'><text>t</text></link><link href='b'><text>u</text></link>"),
              "a|t|-");
    EXPECT_EQ(LinkWith("<url>a</url><link href='b'><text>u</text></link><urlname>t</urlname>"), "a|t|-");
    EXPECT_EQ(LinkWith("<link href='b'/><url>a</url><urlname>t</urlname>"), "b|-|-");
}

TEST(CompleteLinkTest, ALinkHasNotTheTextOfAnAddressThatIsNotThere) {
    EXPECT_EQ(LinkWith("<urlname>t</urlname><link href='a'><text>u</text></link>"), "a|u|-");
    EXPECT_EQ(LinkWith("<urlname>t</urlname><link href='a'/>"), "a|-|-");
}

TEST(CompleteLinkTest, KnowsItsElement) {
    for (const char* const xml : {"<link href='a'><x/></link>", "<url>a</url>"}) {
        const GpxPoint point = WaypointWith("<name>n</name>" + std::string(xml) + "<urlname>t</urlname>");
        GpxUrl link(u"unset");
        ASSERT_TRUE(point.GetURL(link));
        EXPECT_EQ(link.GetElement().GetXml(), xml);
    }
}

} // namespace
} // namespace vexaTransferLib
