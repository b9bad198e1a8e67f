// SPDX-License-Identifier: MIT
#include <vexagpx/export/Properties.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <set>
#include <string>
#include <vector>

namespace {

using vexagpx::Field;
using vexagpx::Links;
using vexagpx::NameOf;
using vexagpx::Properties;

std::vector<std::string_view> NamesOf(const Properties& properties) {
    std::vector<std::string_view> names;
    for (const vexagpx::Property& property : properties)
        names.push_back(NameOf(property.field));
    return names;
}

TEST(PropertiesTest, EveryFieldHasANameOfItsOwn) {
    std::set<std::string_view> names;
    for (std::size_t i = 0; i < vexagpx::kFieldCount; ++i)
        names.insert(NameOf(static_cast<Field>(i)));
    EXPECT_EQ(names.size(), vexagpx::kFieldCount);
    EXPECT_EQ(names.count(""), 0U);
    EXPECT_EQ(NameOf(Field::kName), "name");
    EXPECT_EQ(NameOf(Field::kHeartRate), "heartRate");
    EXPECT_EQ(NameOf(Field::kDgpsStation), "dgpsid");
    EXPECT_EQ(NameOf(Field::kCacheTravelBugs), "cacheTravelBugs");
}

TEST(PropertiesTest, TheFirstValueCounts) {
    Properties properties;
    properties.Add(Field::kName, icu::UnicodeString(u"a"));
    properties.Add(Field::kName, icu::UnicodeString(u"b"));
    ASSERT_EQ(properties.Size(), 1U);
    EXPECT_EQ(std::get<icu::UnicodeString>(properties.begin()->value), u"a");
}

TEST(PropertiesTest, WhatSaysNothingIsNotAdded) {
    Properties properties;
    properties.Add(Field::kName, icu::UnicodeString());
    properties.Add(Field::kSpeed, std::numeric_limits<double>::quiet_NaN());
    properties.Add(Field::kDepth, std::numeric_limits<double>::infinity());
    properties.Add(Field::kLinks, Links());
    EXPECT_EQ(properties.Size(), 0U);
    properties.Add(Field::kSpeed, 0.0);
    properties.Add(Field::kCacheArchived, false);
    properties.Add(Field::kNumber, std::uint64_t{0});
    EXPECT_EQ(properties.Size(), 3U);
}

TEST(PropertiesTest, SortingBringsThemIntoTheOrderOfTheFields) {
    Properties properties;
    properties.Add(Field::kDepth, 1.0);
    properties.Add(Field::kFile, icu::UnicodeString(u"f"));
    properties.Add(Field::kName, icu::UnicodeString(u"n"));
    properties.Sort();
    EXPECT_THAT(NamesOf(properties), testing::ElementsAre("file", "name", "depth"));
}

TEST(PropertiesTest, LinksAsTextAreALineEach) {
    EXPECT_EQ(vexagpx::TextOf({{u"https://example.org/a", u"Home page", u"text/html"}, {u"b", u"", u""}}),
              u"https://example.org/a Home page\nb");
}

} // namespace
