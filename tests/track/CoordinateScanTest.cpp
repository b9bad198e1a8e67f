// SPDX-License-Identifier: MIT
#include <vexaTrackLib/cutting/CoordinateScan.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace {

using testing::Contains;
using testing::IsEmpty;
using vexaTrackLib::cutting::FindPlace;

using Places = std::vector<std::pair<double, double>>;

// Rounded to five decimals, which is about a metre.
Places PlacesIn(const std::string& text) {
    Places places;
    const auto round = [](double degrees) { return std::round(degrees * 1e5) / 1e5; };
    EXPECT_FALSE(FindPlace(text, [&](double latitude, double longitude) {
        places.emplace_back(round(latitude), round(longitude));
        return false;
    }));
    return places;
}

TEST(CoordinateScanTest, FindsDecimalsInEitherOrder) {
    for (const char* text :
         {"46.95123, 7.45123", "46.95123 7.45123", "https://example.org/?q=46.95123,7.45123&z=9",
          "geo:46.95123,7.45123", "lat=46.95123&lon=7.45123", "at 7.45123/46.95123.", "@46.95123,7.45123,17z",
          "46.95123\xc2\xb0 N, 7.45123\xc2\xb0 E"})
        EXPECT_THAT(PlacesIn(text), Contains(std::pair(46.95123, 7.45123))) << text;
    EXPECT_THAT(PlacesIn("-46.951, -7.451"), Contains(std::pair(-46.951, -7.451)));
}

TEST(CoordinateScanTest, FindsDegreesWithMinutesAndSeconds) {
    for (const char* text : {"N 46\xc2\xb0 57.074 E 007\xc2\xb0 27.074", "N46 57.074, E7 27.074",
                             "46\xc2\xb0"
                             "57.074'N 7\xc2\xb0"
                             "27.074'E",
                             "Parking: N 46\xc2\xb0 57.074' / E 7\xc2\xb0 27.074' here"})
        EXPECT_THAT(PlacesIn(text), Contains(std::pair(46.95123, 7.45123))) << text;
    EXPECT_THAT(PlacesIn("46\xc2\xb0 57' 4.44\" N 7\xc2\xb0 27' 4.44\" E"),
                Contains(std::pair(46.95123, 7.45123)));
    EXPECT_THAT(PlacesIn("S 46 57.074 W 7 27.074"), Contains(std::pair(-46.95123, -7.45123)));
    EXPECT_THAT(PlacesIn("N 46.5 E 7.25"), Contains(std::pair(46.5, 7.25)));
}

TEST(CoordinateScanTest, OtherNumbersAreNoPlace) {
    for (const char* text :
         {"", "1", "46.95 7.45", "from 1.234 km to the hut, and from there 46.951 m", "v1.2.3",
          "2024-05-01T08:00:00.000Z", "N", "N E", "N 46 only", "E 7 27.074",
          "Nine 46 times 57.07 Ever 7 27.07", "99.999999999999999999999999999999999999999999 1e5"})
        EXPECT_THAT(PlacesIn(text), IsEmpty()) << text;
}

TEST(CoordinateScanTest, StopsAtThePlaceThatIsWanted) {
    int calls = 0;
    EXPECT_TRUE(FindPlace("46.951, 7.451 and 46.952, 7.452", [&](double latitude, double) {
        ++calls;
        return latitude == 46.951;
    }));
    EXPECT_EQ(calls, 1);
}

TEST(CoordinateScanTest, ReadsALongTextOnce) {
    std::string text;
    for (int i = 0; i < 200000; ++i)
        text += "N 46 1.25 ";
    EXPECT_THAT(PlacesIn(text), IsEmpty());
}

} // namespace
