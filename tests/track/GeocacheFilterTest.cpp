// SPDX-License-Identifier: MIT
#include <vexaTrackLib/GeocacheFilter.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace vexaTrackLib {
namespace {

// 2024-05-31T12:00:00Z
constexpr double kNoon = 1717156800000.0;

Geocache Sample() {
    Geocache cache;
    cache.code = u"GC1ABCD";
    cache.name = u"Bridge and Mill";
    cache.owner = u"M\u00FCller";
    cache.type = u"Unknown Cache";
    cache.size = u"Small";
    cache.difficulty = 4.5;
    cache.terrain = 1.0;
    cache.metres = 1500.0;
    cache.foundTime = kNoon;
    cache.logCount = 7;
    cache.travelBugs = {u"Bug"};
    cache.isAvailable = true;
    cache.isArchived = false;
    return cache;
}

bool Accepts(const std::string& text) {
    return GeocacheFilter::Parse(text).Accepts(Sample());
}

std::string Refusal(const std::string& text) {
    try {
        GeocacheFilter::Parse(text);
        return "";
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
}

TEST(GeocacheFilterTest, NumbersAreCompared) {
    EXPECT_TRUE(Accepts("difficulty=4.5"));
    EXPECT_FALSE(Accepts("difficulty!=4.5"));
    EXPECT_TRUE(Accepts("difficulty >= 4.5"));
    EXPECT_TRUE(Accepts("difficulty<=4.5"));
    EXPECT_FALSE(Accepts("difficulty>4.5"));
    EXPECT_FALSE(Accepts("difficulty<4.5"));
    EXPECT_TRUE(Accepts("terrain<1.5"));
    EXPECT_TRUE(Accepts("logs=7 and bugs=1"));
}

TEST(GeocacheFilterTest, TextsAreComparedWithoutRegardToCase) {
    EXPECT_TRUE(Accepts("size=small"));
    EXPECT_FALSE(Accepts("size!=SMALL"));
    EXPECT_TRUE(Accepts("type~UNKNOWN"));
    EXPECT_FALSE(Accepts("type~traditional"));
    EXPECT_TRUE(Accepts("owner=M\xC3\x9CLLER"));
    EXPECT_TRUE(Accepts("code<gc2"));
    EXPECT_TRUE(Accepts("NAME ~ mill"));
}

TEST(GeocacheFilterTest, LengthsHaveUnits) {
    EXPECT_TRUE(Accepts("distance<2km"));
    EXPECT_FALSE(Accepts("distance<1 km"));
    EXPECT_TRUE(Accepts("distance=1500"));
    EXPECT_TRUE(Accepts("distance<1MI"));
    EXPECT_FALSE(Accepts("distance<1000ft"));
    EXPECT_TRUE(Accepts("distance = 1.5km"));
}

TEST(GeocacheFilterTest, DatesAreComparedByDays) {
    EXPECT_TRUE(Accepts("found=2024-05-31"));
    EXPECT_TRUE(Accepts("found<2024-06-01"));
    EXPECT_FALSE(Accepts("found<2024-05-31"));
    EXPECT_TRUE(Accepts("found>=2024-05-31"));
    EXPECT_TRUE(Accepts("found>2024-05-30"));
    EXPECT_TRUE(Accepts("found>2024-02-29"));
    EXPECT_TRUE(Accepts("found>0001-01-01"));
}

TEST(GeocacheFilterTest, TruthValuesStandAlone) {
    EXPECT_TRUE(Accepts("available"));
    EXPECT_FALSE(Accepts("not available"));
    EXPECT_TRUE(Accepts("NOT archived and Available"));
    EXPECT_FALSE(Accepts("available and archived"));
    EXPECT_TRUE(Accepts("available=true and archived = false"));
    EXPECT_TRUE(Accepts("available!=FALSE"));
    EXPECT_FALSE(Accepts("archived=true"));
    EXPECT_TRUE(Accepts("not archived=true"));
}

TEST(GeocacheFilterTest, WithoutASayingACacheIsAvailable) {
    const Geocache silent;
    EXPECT_TRUE(GeocacheFilter::Parse("available and not archived").Accepts(silent));
    Geocache archived;
    archived.isAvailable = true;
    archived.isArchived = true;
    EXPECT_FALSE(GeocacheFilter::Parse("available").Accepts(archived));
}

TEST(GeocacheFilterTest, AMissingValueMeetsNoComparison) {
    EXPECT_FALSE(Accepts("placed<2030-01-01"));
    EXPECT_FALSE(Accepts("placed!=2030-01-01"));
    EXPECT_FALSE(Accepts("country~a"));
    EXPECT_FALSE(Accepts("country!=a"));
}

TEST(GeocacheFilterTest, AValueEndsWithTheNextAnd) {
    EXPECT_TRUE(Accepts("name=\"bridge and mill\" and size=small"));
    EXPECT_TRUE(Accepts("name='Bridge and Mill'"));
    EXPECT_FALSE(Accepts("name=bridge and size=small"));
    EXPECT_EQ(Refusal("name=bridge and mill"),
              "Column 17: There is no key \"mill\"; the keys are code, name, owner, "
              "type, size, country, state, hint, difficulty, terrain, bugs, logs, "
              "distance, placed, found, available, archived.");
}

TEST(GeocacheFilterTest, FiltersAreJoined) {
    GeocacheFilter filter;
    EXPECT_TRUE(filter.Accepts(Sample()));
    filter.Add(GeocacheFilter::Parse("size=small"));
    EXPECT_TRUE(filter.Accepts(Sample()));
    filter.Add(GeocacheFilter::Parse("terrain>2"));
    EXPECT_FALSE(filter.Accepts(Sample()));
}

TEST(GeocacheFilterTest, RefusalsSayWhatIsWrongAndWhere) {
    EXPECT_EQ(Refusal(""), "Column 1: a key is expected, such as \"difficulty\".");
    EXPECT_EQ(Refusal("  >4"), "Column 3: a key is expected, such as \"difficulty\".");
    EXPECT_EQ(Refusal("dificulty>4"),
              "Column 1: There is no key \"dificulty\"; did you mean \"difficulty\"? The keys are code, "
              "name, owner, type, size, country, state, hint, difficulty, terrain, bugs, logs, distance, "
              "placed, found, available, archived.");
    EXPECT_EQ(Refusal("difficulty 4"), "Column 12: one of = != < <= > >= ~ is expected.");
    EXPECT_EQ(Refusal("difficulty"), "Column 11: one of = != < <= > >= ~ is expected.");
    EXPECT_EQ(Refusal("difficulty~4"), "Column 11: \"~\" is for texts only.");
    EXPECT_EQ(Refusal("difficulty>=four"), "Column 13: \"four\" is not a number.");
    EXPECT_EQ(Refusal("difficulty>=4x"), "Column 13: \"4x\" is not a number.");
    EXPECT_EQ(Refusal("difficulty>=inf"), "Column 13: \"inf\" is not a number.");
    EXPECT_EQ(Refusal("distance<far"), "Column 10: \"far\" is not a length, such as 500m, 2km or 1mi.");
    EXPECT_EQ(Refusal("found<2024-2-1"), "Column 7: \"2024-2-1\" is not a date, such as 2024-05-31.");
    EXPECT_EQ(Refusal("found<2023-02-29"), "Column 7: \"2023-02-29\" is not a date, such as 2024-05-31.");
    EXPECT_EQ(Refusal("found<2024-01-01T00"),
              "Column 7: \"2024-01-01T00\" is not a date, such as 2024-05-31.");
    EXPECT_EQ(Refusal("name="), "Column 6: a value is expected.");
    EXPECT_EQ(Refusal("name=\"a"), "Column 6: the quotation mark has no partner.");
    EXPECT_EQ(Refusal("name=\"a\" b"), "Column 10: \"and\" is expected between conditions.");
    EXPECT_EQ(Refusal("not difficulty=1"), "Column 5: \"not\" is for available and archived only.");
    EXPECT_EQ(Refusal("available=yes"), "Column 11: true or false is expected.");
    EXPECT_EQ(Refusal("available or archived"), "Column 11: \"and\" is expected between conditions.");
    EXPECT_EQ(Refusal(std::string(10'001, 'a')), "The condition is too long.");
}

TEST(GeocacheFilterTest, LengthsThatAreNoneAreRefused) {
    for (const char* const text : {"m", "-1", "1 mile", "1e3", "nan", "1,5km"})
        EXPECT_EQ(Refusal(std::string("distance<") + text),
                  "Column 10: \"" + std::string(text) + "\" is not a length, such as 500m, 2km or 1mi.");
}

} // namespace
} // namespace vexaTrackLib
