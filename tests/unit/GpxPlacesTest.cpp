// SPDX-License-Identifier: MIT
#include "support/comparison/GpxPlaces.h"

#include <gtest/gtest.h>

using vexaTransferLib::testing_support::HasPlaceInGpx10;

TEST(GpxPlacesTest, Gpx10HasNoPlaceForWhatItsSchemaLacks) {
    for (const char* path : {
             "gpx/metadata",
             "gpx/metadata/author",
             "gpx/metadata/author/link",
             "gpx/metadata/author/link/@href",
             "gpx/metadata/copyright/@author",
             "gpx/metadata/copyright/year",
             "gpx/metadata/link/type",
             "gpx/metadata/link[1]/@href",
             "gpx/metadata/extensions/{urn:a/b}c/d",
             "order of gpx/metadata/extensions/{urn:a/b}c",
             "gpx/wpt[3]/link/type",
             "gpx/wpt[3]/link[2]/text",
             "gpx/rte[0]/link[1]",
             "gpx/rte[0]/type",
             "gpx/rte[0]/rtept[4]/link[1]",
             "gpx/rte[0]/rtept[4]/link/type",
             "gpx/trk[0]/type",
             "gpx/trk[0]/link/type",
             "gpx/trk[0]/trkseg[1]/extensions/{urn:x}a/@b",
             "gpx/trk[0]/trkseg[1]/trkpt[17]/link[1]",
             "gpx/trk[0]/trkseg[1]/trkpt[17]/link/type",
         })
        EXPECT_FALSE(HasPlaceInGpx10(path)) << path;
}

TEST(GpxPlacesTest, Gpx10HasAPlaceForEverythingElse) {
    for (const char* path : {
             "",
             "gpx",
             "gpx/@other",
             "gpx/metadata/name",
             "gpx/metadata/author/name",
             "gpx/metadata/author/email",
             "gpx/metadata/link",
             "gpx/metadata/link/@href",
             "gpx/metadata/link/text",
             "gpx/metadata/bounds/@minlat",
             "gpx/extensions/{urn:x}metadata",
             "gpx/extensions/{urn:x/gpx}type",
             "gpx/wpt[0]/type",
             "gpx/wpt[0]/link/text",
             "gpx/wpt[0]/extensions/{urn:x}link[1]",
             "gpx/rte[0]",
             "gpx/rte[0]/extensions/{urn:x}type",
             "gpx/rte[0]/rtept[0]/type",
             "gpx/trk[1]/number",
             "gpx/trk[0]/trkseg[0]",
             "gpx/trk[0]/trkseg[0]/trkpt[0]/type",
             "gpx/trk[0]/trkseg[0]/trkpt[0]/extensions/{urn:x}a",
             "order of gpx/trk[0]/trkseg[0]/trkpt",
         })
        EXPECT_TRUE(HasPlaceInGpx10(path)) << path;
}
