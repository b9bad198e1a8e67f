// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/Namespaces.h>

#include <gtest/gtest.h>

namespace vexaTransferLib::text {
namespace {

TEST(NamespacesTest, EveryVersionOfGpxAndNoNamespaceIsGpx) {
    EXPECT_TRUE(IsGpxNamespace(""));
    EXPECT_TRUE(IsGpxNamespace("http://www.topografix.com/GPX/1/0"));
    EXPECT_TRUE(IsGpxNamespace("http://www.topografix.com/GPX/1/1"));
    EXPECT_TRUE(IsGpxNamespace("http://www.topografix.com/GPX/1/2"));
    EXPECT_TRUE(IsGpxNamespace("https://www.topografix.com/GPX/1/1"));
}

TEST(NamespacesTest, OtherProgramsNamespacesAreNotGpx) {
    EXPECT_FALSE(IsGpxNamespace("http://www.topografix.com/GPX/gpx_overlay/0/3"));
    EXPECT_FALSE(IsGpxNamespace("http://www.garmin.com/xmlschemas/TrackPointExtension/v1"));
    EXPECT_FALSE(IsGpxNamespace("http:"));
    EXPECT_FALSE(IsGpxNamespace("https:"));
}

TEST(NamespacesTest, EveryVersionOfGroundspeakIsGroundspeak) {
    EXPECT_TRUE(IsGroundspeakNamespace("http://www.groundspeak.com/cache/1/0"));
    EXPECT_TRUE(IsGroundspeakNamespace("http://www.groundspeak.com/cache/1/0/1"));
    EXPECT_TRUE(IsGroundspeakNamespace("http://www.groundspeak.com/cache/1/0/2"));
    EXPECT_FALSE(IsGroundspeakNamespace("http://www.groundspeak.com/"));
    EXPECT_FALSE(IsGroundspeakNamespace(""));
}

TEST(NamespacesTest, TheVendorsIsItsOwnAndThatOfFilesThatDeclareNone) {
    EXPECT_TRUE(IsTarvikNamespace("https://tarvik.example/xmlschemas/gpx-extensions/1/0"));
    EXPECT_TRUE(IsTarvikNamespace(""));
    EXPECT_TRUE(IsTarvikNamespace("http://www.topografix.com/GPX/1/1"));
    EXPECT_FALSE(IsTarvikNamespace("https://osmand.net/docs/technical/osmand-file-formats/osmand-gpx"));
}

} // namespace
} // namespace vexaTransferLib::text
