// SPDX-License-Identifier: MIT
#include <vexaTransferLib/model/ElementFields.h>

#include "support/SourceOf.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace vexaTransferLib {
namespace {

using testing_support::RootOf;
using testing_support::Utf8;

using Text = std::optional<icu::UnicodeString>;

std::vector<std::string> LinksIn(const std::string& content) {
    std::vector<std::string> links;
    for (const GpxLink& link : LinksOf(RootOf("<wpt xmlns:f='urn:f'>" + content + "</wpt>")))
        links.push_back(Utf8(link.href) + "|" + Utf8(link.text) + "|" + Utf8(link.type));
    return links;
}

using Links = std::vector<std::string>;

TEST(ElementFieldsTest, AChildIsTheFirstWithItsNameInANamespaceOfItsKind) {
    const GpxElement root =
        RootOf("<r xmlns:f='urn:f' xmlns:a='http://www.topografix.com/GPX/1/0' "
               "xmlns:b='http://www.topografix.com/GPX/1/1' "
               "xmlns:g='http://www.groundspeak.com/cache/1/0/2'>"
               "<f:name>f</f:name><g:name>g</g:name><a:name>a</a:name><b:name>b</b:name></r>");
    EXPECT_EQ(FindGpxChild(root, gpx::kName).GetText(), u"a");
    EXPECT_EQ(FindGroundspeakChild(root, groundspeak::kName).GetText(), u"g");
    EXPECT_FALSE(FindGpxChild(root, gpx::kDesc));
    EXPECT_FALSE(FindGpxChild(GpxElement(), gpx::kName));
}

TEST(ElementFieldsTest, ATextIsEmptyWithoutAnElementOnly) {
    EXPECT_EQ(TextOf(RootOf("<a> x </a>")), Text(u" x "));
    EXPECT_EQ(TextOf(RootOf("<a/>")), Text(u""));
    EXPECT_EQ(TextOf(GpxElement()), std::nullopt);
}

TEST(ElementFieldsTest, AttributesAreReadAsWhatTheyAre) {
    const GpxElement element =
        RootOf("<a lat=' 1.5 ' id='-2' html='True' modtime='1970-01-01T00:00:01Z' ref=''/>");
    EXPECT_EQ(NumberOf(element, gpx::kLat), std::optional(1.5));
    EXPECT_EQ(IntegerOf(element, gpx::kId), std::optional<std::int64_t>(-2));
    EXPECT_EQ(BooleanOf(element, groundspeak::kHtml), std::optional(true));
    EXPECT_EQ(TimeOf(element, tarvik::kModtime), std::optional(1000.0));
    EXPECT_EQ(TextOf(element, groundspeak::kRef), Text(u""));
    EXPECT_EQ(NumberOf(element, gpx::kLon), std::nullopt);
    EXPECT_EQ(NumberOf(element, groundspeak::kHtml), std::nullopt);
    EXPECT_EQ(IntegerOf(element, gpx::kLat), std::nullopt);
    EXPECT_EQ(BooleanOf(element, gpx::kId), std::nullopt);
    EXPECT_EQ(TimeOf(element, gpx::kId), std::nullopt);
    EXPECT_EQ(TextOf(GpxElement(), gpx::kId), std::nullopt);
}

TEST(ElementFieldsTest, OfTheVendorsElementsTheLastOneCounts) {
    const GpxElement track =
        RootOf("<trk xmlns:t='https://tarvik.example/xmlschemas/gpx-extensions/1/0' xmlns:f='urn:f'>"
               "<extensions><t:color>1</t:color><t:color>2</t:color><f:color>3</f:color></extensions>"
               "<color>4</color></trk>");
    EXPECT_EQ(VendorIntegerOf(FindVendorElement(track, tarvik::kColor)), std::optional(2));
    EXPECT_FALSE(FindVendorElement(track, tarvik::kObjectid));
}

TEST(ElementFieldsTest, EachLinkIsOneOfGpx11) {
    EXPECT_EQ(LinksIn("<link href='a&amp;b'><text>t</text><type>text/html</type></link><name>n</name>"
                      "<link href='c'><type/><text> u </text></link><link href='d'/>"),
              (Links{"a&b|t|text/html", "c| u |", "d||"}));
    EXPECT_EQ(LinksIn("<link><text>t</text></link>"), Links{"|t|"});
    EXPECT_EQ(LinksIn("<f:link href='a'/>"), Links{});
}

TEST(ElementFieldsTest, AnUrlHasItsUrlnameWhereverThatIs) {
    EXPECT_EQ(LinksIn("<url>a</url><urlname>n</urlname>"), Links{"a|n|"});
    EXPECT_EQ(LinksIn("<urlname>n</urlname><url>a</url>"), Links{"a|n|"});
    EXPECT_EQ(LinksIn("<url>a</url>"), Links{"a||"});
    EXPECT_EQ(LinksIn("<urlname>n</urlname>"), Links{});
    EXPECT_EQ(LinksIn("<url>a</url><urlname>n</urlname><url>b</url><urlname>o</urlname>"),
              (Links{"a|n|", "b|o|"}));
}

TEST(ElementFieldsTest, LinksOfBothVersionsKeepTheirOrder) {
    EXPECT_EQ(LinksIn("<link href='a'/><url>b</url><link href='c'><text>t</text></link><urlname>n</urlname>"),
              (Links{"a||", "b|n|", "c|t|"}));
}

} // namespace
} // namespace vexaTransferLib
