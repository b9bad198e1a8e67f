// SPDX-License-Identifier: MIT
#include <vexagpx/export/GeocacheProperties.h>

#include "export/Features.h"
#include "export/Reading.h"

#include <vexaTransferLib/GpxCacheDetails.h>

namespace {

using vexagpx::LeftOut;
using vexagpx::Properties;
using vexaTransferLib::GpxCacheDetails;
using vexaTransferLib::GpxDocument;

std::string Take(const std::string& cache, LeftOut& missing) {
    const GpxDocument document = cli::DocumentOf(cli::PointText("wpt", "1", "2", cache));
    Properties properties;
    TakeGeocache(GpxCacheDetails::FindCache(document.GetWaypointIter()->GetElement()), properties, missing);
    properties.Sort();
    return cli::TextOf(properties);
}

TEST(GeocachePropertiesTest, HasWhatAListOfGeocachesHas) {
    LeftOut missing;
    EXPECT_EQ(
        Take(
            "<g:cache id='7' available='True' archived='False'><g:name>N</g:name><g:placed_by>P</g:placed_by>"
            "<g:owner>O</g:owner><g:type>T</g:type><g:container>C</g:container>"
            "<g:difficulty>1.5</g:difficulty><g:terrain>2</g:terrain><g:country>L</g:country><g:state>S</"
            "g:state>"
            "<g:short_description>a &lt;b&gt;</g:short_description><g:long_description>l</g:long_description>"
            "<g:encoded_hints>h</g:encoded_hints><g:personal_note>p</g:personal_note>"
            "<g:favorite_points>12</g:favorite_points><g:travelbugs><g:travelbug><g:name>x</g:name></"
            "g:travelbug>"
            "<g:travelbug/><g:travelbug><g:name>y</g:name></g:travelbug></g:travelbugs></g:cache>",
            missing),
        "cacheId=7 cacheName=N cachePlacedBy=P cacheOwner=O cacheType=T cacheContainer=C cacheDifficulty=1.5 "
        "cacheTerrain=2 cacheCountry=L cacheState=S cacheAvailable=true cacheArchived=false "
        "cacheShortDescription=a <b> cacheLongDescription=l cacheHints=h cachePersonalNote=p "
        "cacheFavoritePoints=12 cacheTravelBugs=x|y");
    EXPECT_EQ(missing.logs, 0U);
    EXPECT_EQ(missing.extensions, 0U);
}

TEST(GeocachePropertiesTest, LogsAreOnlyCounted) {
    LeftOut missing;
    EXPECT_EQ(Take("<g:cache><g:logs><g:log id='1'/><g:log id='2'/></g:logs></g:cache>", missing),
              "cacheLogs=2");
    EXPECT_EQ(missing.logs, 2U);
}

TEST(GeocachePropertiesTest, OtherElementsAreCounted) {
    LeftOut missing;
    EXPECT_EQ(
        Take("<g:cache><g:attributes><g:attribute id='1' inc='1'>Dogs</g:attribute></g:attributes></g:cache>",
             missing),
        "");
    EXPECT_EQ(missing.extensions, 3U);
}

} // namespace
