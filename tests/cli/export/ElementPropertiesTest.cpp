// SPDX-License-Identifier: MIT
#include <vexagpx/export/ElementProperties.h>

#include "export/Features.h"
#include "export/Reading.h"

namespace {

using vexagpx::ElementField;
using vexagpx::Field;
using vexagpx::Properties;
using vexaTransferLib::GpxDocument;
using vexaTransferLib::GpxElement;

constexpr ElementField kFields[] = {{"name", Field::kName, ElementField::Kind::kText},
                                    {"sat", Field::kSatellites, ElementField::Kind::kCount},
                                    {"hdop", Field::kHorizontalDilution, ElementField::Kind::kNumber}};

std::string Take(const std::string& element) {
    const GpxDocument document = cli::DocumentOf(cli::PointText("wpt", "1", "2", element));
    Properties properties;
    const GpxElement child = document.GetWaypointIter()->GetElement().GetFirstChild();
    return vexagpx::TakeElement(child, kFields, properties) ? cli::TextOf(properties) : "unknown";
}

TEST(ElementPropertiesTest, ValuesAreOfTheKindOfTheirField) {
    EXPECT_EQ(Take("<name> a </name>"), "name= a ");
    EXPECT_EQ(Take("<name/>"), "");
    EXPECT_EQ(Take("<sat> 07 </sat>"), "sat=7");
    EXPECT_EQ(Take("<hdop>1.50</hdop>"), "hdop=1.5");
    EXPECT_EQ(Take("<pdop>1</pdop>"), "unknown");
}

TEST(ElementPropertiesTest, WhatIsNoNumberOfTheKindIsKept) {
    EXPECT_EQ(Take("<sat>3.5</sat>"), "sat=3.5");
    EXPECT_EQ(Take("<sat>-1</sat>"), "sat=-1");
    EXPECT_EQ(Take("<sat> some </sat>"), "sat=some");
    EXPECT_EQ(Take("<hdop>INF</hdop>"), "hdop=INF");
}

std::uint64_t Count(const std::string& element) {
    const GpxDocument document = cli::DocumentOf(cli::PointText("wpt", "1", "2", element));
    return vexagpx::CountValues(document.GetWaypointIter()->GetElement().GetFirstChild());
}

TEST(ElementPropertiesTest, TextsAndAttributesAreValues) {
    EXPECT_EQ(Count("<a/>"), 0U);
    EXPECT_EQ(Count("<a> </a>"), 0U);
    EXPECT_EQ(Count("<a>1</a>"), 1U);
    EXPECT_EQ(Count("<a b='1' c='2'>1</a>"), 3U);
    EXPECT_EQ(Count("<a><b>1</b><b><c>2</c><c/></b></a>"), 2U);
    EXPECT_EQ(Count("<a><b/> <b>\n</b></a>"), 0U);
    EXPECT_EQ(Count("<a xmlns='urn:a' xmlns:b = 'urn:b' b:c = '>' d=\"'\"/>"), 2U);
    EXPECT_EQ(Count("<a><!-- <b>1</b> --><?b 1?><![CDATA[<b>]]></a>"), 1U);
}

TEST(ElementPropertiesTest, ExtensionsAndOtherNamespacesAreForeign) {
    const GpxDocument document =
        cli::DocumentOf(cli::PointText("wpt", "1", "2", "<name>a</name><extensions/><x:y xmlns:x='urn:x'/>"));
    const GpxElement point = document.GetWaypointIter()->GetElement();
    std::vector<bool> foreign;
    for (const GpxElement& child : point.GetChildren())
        foreign.push_back(vexagpx::IsForeign(child, point.GetNamespace()));
    EXPECT_THAT(foreign, testing::ElementsAre(false, true, true));
}

} // namespace
