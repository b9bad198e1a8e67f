// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxMetadata.h>

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

GpxMetadata Gpx10(const std::string& content) {
    return GpxMetadata(
        RootOf("<gpx version='1.0' xmlns='http://www.topografix.com/GPX/1/0' xmlns:f='urn:f'>" + content +
               "<wpt lat='1' lon='2'><name>w</name></wpt></gpx>"));
}

GpxMetadata Gpx11(const std::string& metadata, const std::string& after = {}) {
    return GpxMetadata(RootOf("<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1' xmlns:f='urn:f' "
                              "xmlns:t='https://tarvik.example/xmlschemas/gpx-extensions/1/0'><metadata>" +
                              metadata + "</metadata><wpt lat='1' lon='2'><name>w</name></wpt>" + after +
                              "</gpx>"));
}

GpxMetadata Vendor(const std::string& extensions) {
    return Gpx11("<extensions>" + extensions + "</extensions>");
}

struct TextField {
    const char* element;
    Text (GpxMetadata::*get)() const;
};

constexpr TextField kTexts[] = {{"name", &GpxMetadata::GetName},
                                {"desc", &GpxMetadata::GetDescription},
                                {"keywords", &GpxMetadata::GetKeywords}};

constexpr TextField kVendorTexts[] = {{"layername", &GpxMetadata::GetLayerName},
                                      {"layerkey", &GpxMetadata::GetLayerKey},
                                      {"form", &GpxMetadata::GetForm},
                                      {"trackGUID", &GpxMetadata::GetTrackIdentifier},
                                      {"waypointGUID", &GpxMetadata::GetWaypointIdentifier}};

std::string Element(const std::string& name, const std::string& text) {
    return "<" + name + ">" + text + "</" + name + ">";
}

TEST(GpxMetadataTest, GivesTheAttributesOfTheRoot) {
    const GpxMetadata metadata(RootOf("<gpx version=' 1.10 ' creator='A &amp; B'/>"));
    EXPECT_EQ(metadata.GetVersion(), Text(u" 1.10 "));
    EXPECT_EQ(metadata.GetCreator(), Text(u"A & B"));
    const GpxMetadata none(RootOf("<gpx/>"));
    EXPECT_EQ(none.GetVersion(), std::nullopt);
    EXPECT_EQ(none.GetCreator(), std::nullopt);
}

TEST(GpxMetadataTest, GivesTextsOfBothVersions) {
    for (const TextField& field : kTexts) {
        const std::string name = field.element;
        EXPECT_EQ((Gpx10(Element(name, " a ") + Element(name, "b")).*field.get)(), Text(u" a ")) << name;
        EXPECT_EQ((Gpx11(Element("f:" + name, "f") + Element(name, "a")).*field.get)(), Text(u"a")) << name;
        EXPECT_EQ((Gpx11(Element(name, "")).*field.get)(), Text(u"")) << name;
        EXPECT_EQ((Gpx10("").*field.get)(), std::nullopt) << name;
        EXPECT_EQ((Gpx11("").*field.get)(), std::nullopt) << name;
    }
}

TEST(GpxMetadataTest, PrefersMetadataToTheRoot) {
    EXPECT_EQ(Gpx11("<name>m</name>", "<name>r</name>").GetName(), Text(u"m"));
    EXPECT_EQ(Gpx11("<desc>m</desc>", "<name>r</name>").GetName(), Text(u"r"));
}

TEST(GpxMetadataTest, GivesTheAuthorOfGpx11) {
    const std::optional<GpxPerson> author = Gpx11("<author><name>N</name><email id='i' domain='d.example'/>"
                                                  "<link href='h'><text>t</text></link></author>",
                                                  "<author>R</author><email>r@r.example</email>")
                                                .GetAuthor();
    ASSERT_TRUE(author);
    EXPECT_EQ(author->name, Text(u"N"));
    EXPECT_EQ(author->email, Text(u"i@d.example"));
    ASSERT_TRUE(author->link);
    EXPECT_EQ(author->link->href, u"h");
    EXPECT_EQ(author->link->text, u"t");
}

TEST(GpxMetadataTest, GivesTheAuthorOfGpx10) {
    const std::optional<GpxPerson> author = Gpx10("<author>N</author><email>i@d.example</email>").GetAuthor();
    ASSERT_TRUE(author);
    EXPECT_EQ(author->name, Text(u"N"));
    EXPECT_EQ(author->email, Text(u"i@d.example"));
    EXPECT_FALSE(author->link);
    const std::optional<GpxPerson> unnamed = Gpx10("<email>i@d.example</email>").GetAuthor();
    ASSERT_TRUE(unnamed);
    EXPECT_EQ(unnamed->name, std::nullopt);
    EXPECT_EQ(unnamed->email, Text(u"i@d.example"));
}

TEST(GpxMetadataTest, TakesAnAuthorOfGpx11InPlaceOfOneOfGpx10) {
    const GpxMetadata both =
        Gpx10("<author><name>N</name><email id='i' domain='d'/></author><email>r</email>");
    EXPECT_EQ(both.GetAuthor().value().name, Text(u"N"));
    EXPECT_EQ(both.GetAuthor().value().email, Text(u"i@d"));
}

TEST(GpxMetadataTest, GivesWhatThereIsOfAnAuthor) {
    EXPECT_FALSE(Gpx10("").GetAuthor());
    EXPECT_FALSE(Gpx11("<name>n</name>").GetAuthor());
    EXPECT_EQ(Gpx11("<author>N</author>").GetAuthor().value().name, Text(u"N"));
    EXPECT_EQ(Gpx11("<author/>").GetAuthor().value().name, Text(u""));
    EXPECT_EQ(Gpx11("<author><email id='i'/></author>").GetAuthor().value().name, std::nullopt);
    EXPECT_EQ(Gpx11("<author><email id='i'/></author>").GetAuthor().value().email, std::nullopt);
    EXPECT_EQ(Gpx11("<author><email domain='d'/></author>").GetAuthor().value().email, std::nullopt);
    EXPECT_EQ(Gpx11("<author><email>i@d</email></author>").GetAuthor().value().email, Text(u"i@d"));
    EXPECT_EQ(Gpx11("<author><name>n</name></author>").GetAuthor().value().email, std::nullopt);
}

TEST(GpxMetadataTest, GivesTheCopyright) {
    const std::optional<GpxCopyright> copyright =
        Gpx11("<copyright author='A'><year>2009+01:00</year><license>l</license></copyright>").GetCopyright();
    ASSERT_TRUE(copyright);
    EXPECT_EQ(copyright->author, Text(u"A"));
    EXPECT_EQ(copyright->year, Text(u"2009+01:00"));
    EXPECT_EQ(copyright->license, Text(u"l"));
    const std::optional<GpxCopyright> empty = Gpx11("<copyright/>").GetCopyright();
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->author, std::nullopt);
    EXPECT_EQ(empty->year, std::nullopt);
    EXPECT_EQ(empty->license, std::nullopt);
    EXPECT_FALSE(Gpx11("").GetCopyright());
}

TEST(GpxMetadataTest, GivesTheLinksOfBothPlaces) {
    std::vector<std::string> links;
    for (const GpxLink& link :
         Gpx11("<link href='a'/><link href='b'><text>t</text></link>", "<url>c</url><urlname>n</urlname>")
             .GetLinks())
        links.push_back(Utf8(link.href) + "|" + Utf8(link.text));
    EXPECT_EQ(links, (std::vector<std::string>{"a|", "b|t", "c|n"}));
    ASSERT_EQ(Gpx10("<url>u</url><urlname>n</urlname>").GetLinks().size(), 1u);
    EXPECT_TRUE(Gpx10("").GetLinks().empty());
}

TEST(GpxMetadataTest, GivesTheBounds) {
    const std::string element = "<bounds minlat='-1.5' minlon='170' maxlat=' 2 ' maxlon='-170'/>";
    for (const GpxMetadata& metadata : {Gpx10(element), Gpx11(element)}) {
        const std::optional<GpxBounds> bounds = metadata.GetBounds();
        ASSERT_TRUE(bounds);
        EXPECT_EQ(bounds->minLatitude, -1.5);
        EXPECT_EQ(bounds->minLongitude, 170.0);
        EXPECT_EQ(bounds->maxLatitude, 2.0);
        EXPECT_EQ(bounds->maxLongitude, -170.0);
    }
    EXPECT_FALSE(Gpx11("").GetBounds());
    for (const char* attributes : {"", "minlat='1' minlon='1' maxlat='1'", "minlat='1' minlon='1' maxlon='1'",
                                   "minlat='1' maxlat='1' maxlon='1'", "minlon='1' maxlat='1' maxlon='1'",
                                   "minlat='x' minlon='1' maxlat='1' maxlon='1'"})
        EXPECT_FALSE(Gpx11("<bounds " + std::string(attributes) + "/>").GetBounds()) << attributes;
}

TEST(GpxMetadataTest, GivesTheTime) {
    EXPECT_EQ(Gpx10("<time>1970-01-01T00:00:01Z</time>").GetTime(), std::optional(1000.0));
    EXPECT_EQ(Gpx11("<time> 1970-01-01T00:00:01Z\n</time>").GetTime(), std::optional(1000.0));
    EXPECT_EQ(Gpx11("<time>1970</time>").GetTime(), std::nullopt);
    EXPECT_EQ(Gpx11("").GetTime(), std::nullopt);
}

TEST(GpxMetadataTest, GivesTheVendorsTexts) {
    for (const TextField& field : kVendorTexts) {
        const std::string name = "t:" + std::string(field.element);
        EXPECT_EQ((Vendor(Element(name, "a") + Element(name, " b ")).*field.get)(), Text(u" b ")) << name;
        EXPECT_EQ((Vendor(Element("f:" + std::string(field.element), "a")).*field.get)(), std::nullopt)
            << name;
        EXPECT_EQ((Gpx11("", "<extensions>" + Element(name, "r") + "</extensions>").*field.get)(), Text(u"r"))
            << name;
        EXPECT_EQ((Gpx11("").*field.get)(), std::nullopt) << name;
    }
}

TEST(GpxMetadataTest, GivesTheVendorsDefaultSymbol) {
    EXPECT_EQ(Vendor("<t:defaultsymbol>1,042</t:defaultsymbol>").GetDefaultSymbol(), std::optional(1042));
    EXPECT_EQ(Vendor("<t:defaultsymbol>x</t:defaultsymbol>").GetDefaultSymbol(), std::nullopt);
    EXPECT_EQ(Vendor("").GetDefaultSymbol(), std::nullopt);
}

TEST(GpxMetadataTest, GivesTheVendorsSummary) {
    const std::optional<GpxFileStats> stats =
        Vendor("<t:filestats><t:wptcount>1,001</t:wptcount><t:trkcount>2</t:trkcount>"
               "<t:trksegcount>3</t:trksegcount><t:trktotalkm>1,234.568</t:trktotalkm>"
               "<t:geocachecount>4</t:geocachecount><t:geocachesymbolcount>5</t:geocachesymbolcount></"
               "t:filestats>")
            .GetFileStats();
    ASSERT_TRUE(stats);
    EXPECT_EQ(stats->waypoints, std::optional(1001));
    EXPECT_EQ(stats->tracks, std::optional(2));
    EXPECT_EQ(stats->trackSegments, std::optional(3));
    EXPECT_EQ(stats->trackLength, std::optional(1234.568));
    EXPECT_EQ(stats->geocaches, std::optional(4));
    EXPECT_FALSE(Vendor("").GetFileStats());
}

TEST(GpxMetadataTest, GivesWhatThereIsOfTheVendorsSummary) {
    const std::optional<GpxFileStats> stats =
        Vendor("<t:filestats><t:geocachesymbolcount>5</t:geocachesymbolcount><t:wptcount>x</t:wptcount></"
               "t:filestats>")
            .GetFileStats();
    ASSERT_TRUE(stats);
    EXPECT_EQ(stats->geocaches, std::optional(5));
    EXPECT_EQ(stats->waypoints, std::nullopt);
    EXPECT_EQ(stats->tracks, std::nullopt);
    EXPECT_EQ(stats->trackSegments, std::nullopt);
    EXPECT_EQ(stats->trackLength, std::nullopt);
}

TEST(GpxMetadataTest, GivesItsExtensions) {
    std::vector<std::string> names;
    for (const GpxElement& element :
         Gpx11("<extensions><f:a/></extensions>", "<f:b/><extensions><f:c/></extensions>").GetExtensions())
        names.emplace_back(element.GetName());
    EXPECT_EQ(names, (std::vector<std::string>{"a", "b", "c"}));
}

TEST(GpxMetadataTest, OfNothingIsEmpty) {
    const GpxMetadata none{GpxElement()};
    for (const TextField& field : kTexts)
        EXPECT_EQ((none.*field.get)(), std::nullopt) << field.element;
    for (const TextField& field : kVendorTexts)
        EXPECT_EQ((none.*field.get)(), std::nullopt) << field.element;
    EXPECT_EQ(none.GetVersion(), std::nullopt);
    EXPECT_EQ(none.GetCreator(), std::nullopt);
    EXPECT_EQ(none.GetTime(), std::nullopt);
    EXPECT_EQ(none.GetDefaultSymbol(), std::nullopt);
    EXPECT_FALSE(none.GetAuthor());
    EXPECT_FALSE(none.GetCopyright());
    EXPECT_FALSE(none.GetBounds());
    EXPECT_FALSE(none.GetFileStats());
    EXPECT_TRUE(none.GetLinks().empty());
    EXPECT_TRUE(none.GetExtensions().empty());
    EXPECT_FALSE(none.GetElement());
}

} // namespace
} // namespace vexaTransferLib
