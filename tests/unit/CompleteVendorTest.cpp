// SPDX-License-Identifier: MIT

// The vendor's elements in the extensions of points, read completely.

#include "support/CompleteRead.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"

#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include <gtest/gtest.h>

#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

constexpr char kSecond[] = "replaced: The first element of this name is the one that is read.\n";

CompleteRead ReadExtensions(const std::string& children) {
    return ReadCompletely(Gpx11("<wpt lat='1' lon='2'><extensions>" + children + "</extensions></wpt>"));
}

const GpxPoint& PointOf(const CompleteRead& read) {
    EXPECT_EQ(read.error + read.reports, "");
    return *read.document.GetWaypointIter();
}

TEST(CompleteVendorTest, ReadsTheExtensionsOfAWaypointWithTheirPrefixOrWithout) {
    for (const std::string prefix : {"tarvik:", ""}) {
        const CompleteRead read =
            ReadExtensions("<" + prefix + "formdata><" + prefix +
                           "formstring key='k&amp;' modtime='1970-01-01T00:00:01Z'>v</" + prefix +
                           "formstring></" + prefix + "formdata><" + prefix + "tovasymbol>1,234</" + prefix +
                           "tovasymbol><" + prefix + "objectid>{g}</" + prefix + "objectid>");
        const GpxPoint& point = PointOf(read);
        ASSERT_TRUE(point.GetFormAttribute(u"k&"));
        EXPECT_EQ(point.GetFormAttribute(u"k&")->value, u"v");
        EXPECT_EQ(point.GetFormAttribute(u"k&")->modTime, 1000.0);
        EXPECT_EQ(GpxModelAccess::GetSymbolNumber(point), 1234);
        EXPECT_EQ(GuidOf(point), "g");
        EXPECT_EQ(read.notices, "");
    }
}

TEST(CompleteVendorTest, ElementsOfOtherNamespacesAreLeftInTheSource) {
    const CompleteRead read =
        ReadExtensions("<other:tovasymbol>5</other:tovasymbol><other:objectid>g</other:objectid>");
    EXPECT_FALSE(PointOf(read).ContainsExtensions());
}

TEST(CompleteVendorTest, AFormStringNeedsAKeyWhichMayBeEmpty) {
    const CompleteRead read =
        ReadExtensions("<tarvik:formdata><tarvik:formstring>v</tarvik:formstring>\n"
                       "<tarvik:formstring key=''>w</tarvik:formstring></tarvik:formdata>");
    EXPECT_EQ(PointOf(read).GetFormAttribute(u"")->value, u"w");
    EXPECT_EQ(read.notices, "gpx/wpt/extensions/formdata/formstring 1 unreadable: It has no key.\n");
}

TEST(CompleteVendorTest, AModificationTimeThatIsNoneIsReported) {
    for (const std::string& time :
         {std::string("x"), std::string(), "2009-01-15T10." + std::string(40, '1')}) {
        const CompleteRead read = ReadExtensions("<tarvik:formdata>\n<tarvik:formstring key='k' modtime='" +
                                                 time + "'>v</tarvik:formstring></tarvik:formdata>");
        EXPECT_EQ(PointOf(read).GetFormAttribute(u"k")->modTime, 0.0);
        EXPECT_EQ(read.notices,
                  "gpx/wpt/extensions/formdata/formstring 2 unreadable: Its modtime is not a time.\n");
    }
}

TEST(CompleteVendorTest, OfTwoSymbolNumbersAndIdentifiersTheFirstIsRead) {
    const CompleteRead read =
        ReadExtensions("<tarvik:tovasymbol>x</tarvik:tovasymbol><tarvik:tovasymbol>5</tarvik:tovasymbol>\n"
                       "<tarvik:tovasymbol>6</tarvik:tovasymbol><tarvik:objectid/><tarvik:objectid>g"
                       "</tarvik:objectid><tarvik:objectid>h</tarvik:objectid>");
    EXPECT_EQ(GpxModelAccess::GetSymbolNumber(PointOf(read)), 5);
    EXPECT_EQ(GuidOf(PointOf(read)), "g");
    EXPECT_EQ(read.notices, "gpx/wpt/extensions/tovasymbol 1 unreadable: \"x\" is not a whole number.\n"
                            "gpx/wpt/extensions/tovasymbol 2 " +
                                std::string(kSecond) + "gpx/wpt/extensions/objectid 2 " + kSecond);
}

TEST(CompleteVendorTest, ReadsTheTypesOfRoutePoints) {
    const std::string start = "<rte><rtept lat='1' lon='2'><extensions>";
    const std::string end = "</extensions></rtept></rte>";
    const auto read = [&](const std::string& children) {
        return ReadCompletely(Gpx11(start + children + end));
    };
    const auto typeOf = [](const CompleteRead& result) {
        return RoutePointTypeOf(*result.document.GetRouteIter()->GetPointIter());
    };
    EXPECT_EQ(typeOf(read("<tarvik:routePointType> via </tarvik:routePointType>")), kTarvikRoutePointVia);
    EXPECT_EQ(typeOf(read("<routePointType>turn</routePointType>")), kTarvikRoutePointTurn);
    const CompleteRead unknown = read("<tarvik:routePointType>x</tarvik:routePointType>");
    EXPECT_EQ(typeOf(unknown), 0U);
    EXPECT_EQ(unknown.notices,
              "gpx/rte/rtept/extensions/routePointType 1 unreadable: \"x\" is not a value that "
              "the library knows.\n");
    const CompleteRead two = read("<tarvik:routePointType>via</tarvik:routePointType>\n"
                                  "<tarvik:routePointType>stop</tarvik:routePointType>");
    EXPECT_EQ(typeOf(two), kTarvikRoutePointVia);
    EXPECT_EQ(two.notices, std::string("gpx/rte/rtept/extensions/routePointType 2 ") + kSecond);
}

TEST(CompleteVendorTest, TheExtensionsOfTrackPointsStayInTheSource) {
    const GpxDocument document = DocumentOf(Gpx11(
        "<trk><trkseg><trkpt lat='1' lon='2'><extensions><tarvik:objectid>g</tarvik:objectid><hr>99</hr>"
        "</extensions></trkpt></trkseg></trk>"));
    const GpxPoint& point = document.GetTrackIter()->GetSegmentIter()->front();
    EXPECT_FALSE(point.ContainsExtensions());
    EXPECT_EQ(point.GetElement().GetFirstChild().FindChild(kGpx11Uri, "hr").GetNumber(), std::optional(99.0));
}

} // namespace
} // namespace vexaTransferLib
