// SPDX-License-Identifier: MIT
#include <vexaTrackLib/comparing/FieldNames.h>

#include "support/Reading.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vexaTrackLib::comparing::DifferentFields;
using vexaTransferLib::GpxDocument;

GpxDocument WithWaypoint(const std::string& content, const std::string& version = "1") {
    return track_tests::ReadCompletely(
        "<gpx version='1." + version + "' creator='c' xmlns:x='urn:x' xmlns='" +
        "http://www.topografix.com/GPX/1/" + version + "'><wpt lat='1' lon='2'>" + content + "</wpt></gpx>");
}

std::vector<std::string> Different(const GpxDocument& one, const GpxDocument& other) {
    return DifferentFields(one.GetWaypoints()[0].GetElement(), other.GetWaypoints()[0].GetElement(),
                           {"time"});
}

std::vector<std::string> Different(const std::string& one, const std::string& other) {
    return Different(WithWaypoint(one), WithWaypoint(other));
}

TEST(FieldNamesTest, NamesWhatDiffersInOrder) {
    EXPECT_THAT(Different("<name>a</name><cmt>c</cmt><sym>s</sym>", "<sym>t</sym><cmt>c</cmt><desc>d</desc>"),
                ElementsAre("desc", "name", "sym"));
    EXPECT_THAT(Different("<name>a</name>", "<name> a </name>"), IsEmpty());
    EXPECT_THAT(Different("", ""), IsEmpty());
}

TEST(FieldNamesTest, WhatIsLeftOutDoesNotCount) {
    EXPECT_THAT(Different("<time>2024-01-01T00:00:00Z</time>", "<name>n</name>"), ElementsAre("name"));
}

TEST(FieldNamesTest, ChildrenOfExtensionsCountAsChildren) {
    EXPECT_THAT(Different("<extensions><x:a>1</x:a><x:b>1</x:b></extensions>",
                          "<extensions><x:b>1</x:b><x:a>2</x:a></extensions>"),
                ElementsAre("a"));
    EXPECT_THAT(Different("<extensions><x:a b='1'/></extensions>", "<extensions><x:a b='2'/></extensions>"),
                ElementsAre("a"));
}

TEST(FieldNamesTest, LinksOfBothVersionsAreTheSame) {
    const GpxDocument one = WithWaypoint("<link href='h'><text>t</text></link>");
    EXPECT_THAT(Different(one, WithWaypoint("<url>h</url><urlname>t</urlname>", "0")), IsEmpty());
    EXPECT_THAT(Different(one, WithWaypoint("<url>h</url><urlname>u</urlname>", "0")), ElementsAre("link"));
    EXPECT_THAT(Different(one, WithWaypoint("")), ElementsAre("link"));
}

TEST(FieldNamesTest, RepeatedFieldsCountWithoutTheirOrder) {
    EXPECT_THAT(Different("<x:a>1</x:a><x:a>2</x:a>", "<x:a>2</x:a><x:a>1</x:a>"), IsEmpty());
    EXPECT_THAT(Different("<x:a>1</x:a><x:a>1</x:a>", "<x:a>1</x:a>"), ElementsAre("a"));
}

} // namespace
