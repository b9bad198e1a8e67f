// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxPathDetails.h>

#include "support/SourceOf.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace vexaTransferLib {
namespace {

using testing_support::RootOf;

using Text = std::optional<icu::UnicodeString>;

GpxPathDetails Path(const std::string& content) {
    return GpxPathDetails(RootOf("<trk xmlns='http://www.topografix.com/GPX/1/1' xmlns:f='urn:f' "
                                 "xmlns:t='https://tarvik.example/xmlschemas/gpx-extensions/1/0'>" +
                                 content + "</trk>"));
}

TEST(GpxPathDetailsTest, HasWhatAllObjectsHave) {
    EXPECT_EQ(Path("<name>n</name>").GetName(), Text(u"n"));
}

TEST(GpxPathDetailsTest, GivesItsNumber) {
    const struct {
        const char* content;
        std::optional<std::uint64_t> expected;
    } kNumbers[] = {{"<number>7</number>", 7},
                    {"<number> 0\n</number>", 0},
                    {"<number>18446744073709551615</number>", UINT64_MAX},
                    {"<number>18446744073709551616</number>", std::nullopt},
                    {"<number>-1</number>", std::nullopt},
                    {"<number>1.5</number>", std::nullopt},
                    {"<number/>", std::nullopt},
                    {"<number>x</number><number>2</number>", std::nullopt},
                    {"<f:number>1</f:number><number>2</number>", 2},
                    {"", std::nullopt}};
    for (const auto& number : kNumbers)
        EXPECT_EQ(Path(number.content).GetNumber(), number.expected) << number.content;
}

TEST(GpxPathDetailsTest, GivesTheVendorsColorAsItStands) {
    const struct {
        const char* content;
        std::optional<std::int32_t> expected;
    } kColors[] = {{"<extensions><t:color>255</t:color></extensions>", 255},
                   {"<extensions><t:color> 16,711,680 </t:color></extensions>", 16711680},
                   {"<extensions><color>-16744448</color></extensions>", -16744448},
                   {"<extensions><t:color>1</t:color><t:color>2</t:color></extensions>", 2},
                   {"<extensions><f:color>1</f:color></extensions>", std::nullopt},
                   {"<extensions><f:a><t:color>1</t:color></f:a></extensions>", std::nullopt},
                   {"<extensions><t:color>#ff0000</t:color></extensions>", std::nullopt},
                   {"<extensions><t:color>2147483648</t:color></extensions>", std::nullopt},
                   {"<extensions><t:color/></extensions>", std::nullopt},
                   {"<t:color>3</t:color>", 3},
                   {"<color>3</color>", std::nullopt},
                   {"", std::nullopt}};
    for (const auto& color : kColors)
        EXPECT_EQ(Path(color.content).GetColor(), color.expected) << color.content;
}

TEST(GpxPathDetailsTest, GivesTheVendorsRouteTypeAsItStands) {
    const struct {
        const char* content;
        Text expected;
    } kTypes[] = {{"<extensions><t:routeType>points</t:routeType></extensions>", u"points"},
                  {"<extensions><t:routeType> Other </t:routeType></extensions>", u" Other "},
                  {"<extensions><t:routeType>a</t:routeType><t:routeType/></extensions>", u""},
                  {"<extensions><f:routeType>points</f:routeType></extensions>", std::nullopt},
                  {"", std::nullopt}};
    for (const auto& type : kTypes)
        EXPECT_EQ(Path(type.content).GetRouteType(), type.expected) << type.content;
}

TEST(GpxPathDetailsTest, OfNothingIsEmpty) {
    const GpxPathDetails none{GpxElement()};
    EXPECT_EQ(none.GetNumber(), std::nullopt);
    EXPECT_EQ(none.GetColor(), std::nullopt);
    EXPECT_EQ(none.GetRouteType(), std::nullopt);
}

} // namespace
} // namespace vexaTransferLib
