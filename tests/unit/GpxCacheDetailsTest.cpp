// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxCacheDetails.h>

#include "support/SourceOf.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace vexaTransferLib {
namespace {

using testing_support::RootOf;

using Text = std::optional<icu::UnicodeString>;
using Boolean = std::optional<bool>;
using Number = std::optional<double>;
using Integer = std::optional<std::int64_t>;

const char* const kVersions[] = {"1/0", "1/0/1", "1/0/2"};

GpxCacheDetails Cache(const std::string& content, const std::string& attributes = {},
                      const std::string& version = "1/0/1") {
    return GpxCacheDetails(RootOf("<g:cache xmlns:f='urn:f' xmlns:g='http://www.groundspeak.com/cache/" +
                                  version + "' " + attributes + ">" + content + "</g:cache>"));
}

std::string Element(const std::string& name, const std::string& text) {
    return "<" + name + ">" + text + "</" + name + ">";
}

struct TextField {
    const char* element;
    Text (GpxCacheDetails::*get)() const;
};

constexpr TextField kTexts[] = {{"name", &GpxCacheDetails::GetName},
                                {"placed_by", &GpxCacheDetails::GetPlacedBy},
                                {"owner", &GpxCacheDetails::GetOwner},
                                {"type", &GpxCacheDetails::GetType},
                                {"container", &GpxCacheDetails::GetContainer},
                                {"country", &GpxCacheDetails::GetCountry},
                                {"state", &GpxCacheDetails::GetState},
                                {"short_description", &GpxCacheDetails::GetShortDescription},
                                {"long_description", &GpxCacheDetails::GetLongDescription},
                                {"encoded_hints", &GpxCacheDetails::GetEncodedHints},
                                {"personal_note", &GpxCacheDetails::GetPersonalNote}};

struct NumberField {
    const char* element;
    Number (GpxCacheDetails::*get)() const;
};

constexpr NumberField kNumbers[] = {{"difficulty", &GpxCacheDetails::GetDifficulty},
                                    {"terrain", &GpxCacheDetails::GetTerrain}};

struct BooleanField {
    const char* attribute;
    Boolean (GpxCacheDetails::*get)() const;
};

constexpr BooleanField kBooleans[] = {{"available", &GpxCacheDetails::IsAvailable},
                                      {"archived", &GpxCacheDetails::IsArchived},
                                      {"memberonly", &GpxCacheDetails::IsForMembersOnly},
                                      {"customcoords", &GpxCacheDetails::HasCustomCoordinates}};

constexpr BooleanField kHtml[] = {{"short_description", &GpxCacheDetails::IsShortDescriptionHtml},
                                  {"long_description", &GpxCacheDetails::IsLongDescriptionHtml}};

TEST(GpxCacheDetailsTest, IsFoundInAWaypointOfEitherVersion) {
    for (const std::string version : kVersions) {
        const std::string cache = "<g:cache xmlns:g='http://www.groundspeak.com/cache/" + version +
                                  "' id='1'/><g:cache "
                                  "xmlns:g='http://www.groundspeak.com/cache/" +
                                  version + "' id='2'/>";
        const GpxElement below =
            RootOf("<wpt xmlns='http://www.topografix.com/GPX/1/0'><name/>" + cache + "</wpt>");
        EXPECT_EQ(GpxCacheDetails(GpxCacheDetails::FindCache(below)).GetId(), Text(u"1")) << version;
        const GpxElement extended = RootOf("<wpt xmlns='http://www.topografix.com/GPX/1/1'><extensions><a/>" +
                                           cache + "</extensions></wpt>");
        EXPECT_EQ(GpxCacheDetails(GpxCacheDetails::FindCache(extended)).GetId(), Text(u"1")) << version;
    }
}

TEST(GpxCacheDetailsTest, IsNotFoundInOtherPlacesAndNamespaces) {
    EXPECT_FALSE(GpxCacheDetails::FindCache(RootOf("<wpt><cache/><f:cache xmlns:f='urn:f'/></wpt>")));
    EXPECT_FALSE(GpxCacheDetails::FindCache(
        RootOf("<wpt xmlns:g='http://www.groundspeak.com/cache/1/0'><extensions><g:logs><g:cache/></g:logs>"
               "</extensions></wpt>")));
    EXPECT_FALSE(GpxCacheDetails::FindCache(GpxElement()));
}

TEST(GpxCacheDetailsTest, GivesItsId) {
    EXPECT_EQ(Cache("", "id=' 42a '").GetId(), Text(u" 42a "));
    EXPECT_EQ(Cache("").GetId(), std::nullopt);
}

TEST(GpxCacheDetailsTest, GivesItsBooleans) {
    for (const BooleanField& field : kBooleans) {
        const std::string name = field.attribute;
        for (const char* value : {"True", "true", "1"})
            EXPECT_EQ((Cache("", name + "='" + value + "'").*field.get)(), Boolean(true)) << name << value;
        for (const char* value : {"False", "false", "0"})
            EXPECT_EQ((Cache("", name + "='" + value + "'").*field.get)(), Boolean(false)) << name << value;
        EXPECT_EQ((Cache("", name + "='yes'").*field.get)(), std::nullopt) << name;
        EXPECT_EQ((Cache("").*field.get)(), std::nullopt) << name;
    }
}

TEST(GpxCacheDetailsTest, GivesItsTextsAsTheyStand) {
    for (const TextField& field : kTexts)
        for (const char* version : kVersions) {
            const std::string name = "g:" + std::string(field.element);
            const auto get = [&](const std::string& content) {
                return (Cache(content, {}, version).*field.get)();
            };
            EXPECT_EQ(get(Element("f:" + std::string(field.element), "f") +
                          Element(name, " &lt;p&gt;a&lt;/p&gt;\n<![CDATA[<b>]]> ") + Element(name, "2")),
                      Text(u" <p>a</p>\n<b> "))
                << name;
            EXPECT_EQ(get(Element(name, "")), Text(u"")) << name;
            EXPECT_EQ(get("<g:logs/>"), std::nullopt) << name;
        }
}

TEST(GpxCacheDetailsTest, GivesTheAccountOfItsOwner) {
    EXPECT_EQ(Cache("<g:owner id='9af-1'>O</g:owner>").GetOwnerId(), Text(u"9af-1"));
    EXPECT_EQ(Cache("<g:owner>O</g:owner>").GetOwnerId(), std::nullopt);
    EXPECT_EQ(Cache("").GetOwnerId(), std::nullopt);
}

TEST(GpxCacheDetailsTest, GivesItsNumbers) {
    for (const NumberField& field : kNumbers) {
        const std::string name = "g:" + std::string(field.element);
        EXPECT_EQ((Cache(Element(name, " 1.5 ")).*field.get)(), Number(1.5)) << name;
        EXPECT_EQ((Cache(Element(name, "1,5")).*field.get)(), std::nullopt) << name;
        EXPECT_EQ((Cache("").*field.get)(), std::nullopt) << name;
    }
    EXPECT_EQ(Cache("<g:favorite_points> 17 </g:favorite_points>").GetFavoritePoints(),
              std::optional<std::uint64_t>(17));
    EXPECT_EQ(Cache("<g:favorite_points>-1</g:favorite_points>").GetFavoritePoints(), std::nullopt);
    EXPECT_EQ(Cache("").GetFavoritePoints(), std::nullopt);
}

TEST(GpxCacheDetailsTest, SaysWhetherItsDescriptionsAreHtml) {
    for (const BooleanField& field : kHtml) {
        const std::string start = "<g:" + std::string(field.attribute);
        EXPECT_EQ((Cache(start + " html='True'/>").*field.get)(), Boolean(true)) << start;
        EXPECT_EQ((Cache(start + " html='False'/>").*field.get)(), Boolean(false)) << start;
        EXPECT_EQ((Cache(start + "/>").*field.get)(), std::nullopt) << start;
        EXPECT_EQ((Cache("").*field.get)(), std::nullopt) << start;
    }
}

TEST(GpxCacheDetailsTest, GivesItsAttributes) {
    const std::vector<GpxCacheAttribute> attributes =
        Cache("<g:attributes><g:attribute id='13' inc='1'>Dogs</g:attribute><f:attribute id='1'/>"
              "<g:attribute id='x' inc='2'/></g:attributes><g:name/>"
              "<g:attributes><g:attribute id='14' inc='0'>Night</g:attribute></g:attributes>")
            .GetAttributes();
    ASSERT_EQ(attributes.size(), 3u);
    EXPECT_EQ(attributes[0].id, Integer(13));
    EXPECT_EQ(attributes[0].isIncluded, Boolean(true));
    EXPECT_EQ(attributes[0].name, Text(u"Dogs"));
    EXPECT_EQ(attributes[1].id, std::nullopt);
    EXPECT_EQ(attributes[1].isIncluded, std::nullopt);
    EXPECT_EQ(attributes[1].name, Text(u""));
    EXPECT_EQ(attributes[2].id, Integer(14));
    EXPECT_EQ(attributes[2].isIncluded, Boolean(false));
    EXPECT_EQ(attributes[2].name, Text(u"Night"));
    EXPECT_TRUE(Cache("<g:attributes/>").GetAttributes().empty());
    EXPECT_TRUE(Cache("<g:attribute id='1'/>").GetAttributes().empty());
}

TEST(GpxCacheDetailsTest, GivesEverythingOfItsLogs) {
    const std::vector<GpxCacheLogDetails> logs =
        Cache("<g:logs><g:log id='-2'><g:date>1970-01-01T00:00:01Z</g:date><g:type>Found it</g:type>"
              "<g:finder id='7'>F</g:finder><g:text encoded='True'> x </g:text>"
              "<g:log_wpt lat='1.5' lon='-2.5'/></g:log></g:logs>")
            .GetLogs();
    ASSERT_EQ(logs.size(), 1u);
    EXPECT_EQ(logs[0].id, Integer(-2));
    EXPECT_EQ(logs[0].date, Text(u"1970-01-01T00:00:01Z"));
    EXPECT_EQ(logs[0].time, Number(1000.0));
    EXPECT_EQ(logs[0].type, Text(u"Found it"));
    EXPECT_EQ(logs[0].finder, Text(u"F"));
    EXPECT_EQ(logs[0].finderId, Text(u"7"));
    EXPECT_EQ(logs[0].text, Text(u" x "));
    EXPECT_EQ(logs[0].isEncoded, Boolean(true));
    EXPECT_EQ(logs[0].latitude, Number(1.5));
    EXPECT_EQ(logs[0].longitude, Number(-2.5));
}

TEST(GpxCacheDetailsTest, GivesLogsThatHaveNothing) {
    const std::vector<GpxCacheLogDetails> logs =
        Cache("<g:logs><g:log/><f:log/><g:log id='a'><g:date>2011-01-08</g:date><g:finder/><g:text/>"
              "<g:log_wpt lat='' lon='x'/></g:log></g:logs>")
            .GetLogs();
    ASSERT_EQ(logs.size(), 2u);
    for (const GpxCacheLogDetails& log : logs) {
        EXPECT_EQ(log.id, std::nullopt);
        EXPECT_EQ(log.time, std::nullopt);
        EXPECT_EQ(log.type, std::nullopt);
        EXPECT_EQ(log.finderId, std::nullopt);
        EXPECT_EQ(log.isEncoded, std::nullopt);
        EXPECT_EQ(log.latitude, std::nullopt);
        EXPECT_EQ(log.longitude, std::nullopt);
    }
    EXPECT_EQ(logs[0].date, std::nullopt);
    EXPECT_EQ(logs[0].finder, std::nullopt);
    EXPECT_EQ(logs[0].text, std::nullopt);
    EXPECT_EQ(logs[1].date, Text(u"2011-01-08"));
    EXPECT_EQ(logs[1].finder, Text(u""));
    EXPECT_EQ(logs[1].text, Text(u""));
    EXPECT_TRUE(Cache("<g:logs/>").GetLogs().empty());
}

TEST(GpxCacheDetailsTest, GivesTheLogsOfAllLists) {
    const std::vector<GpxCacheLogDetails> logs =
        Cache("<g:logs><g:log id='1'/></g:logs><g:logs><g:log id='2'/></g:logs>").GetLogs();
    ASSERT_EQ(logs.size(), 2u);
    EXPECT_EQ(logs[0].id, Integer(1));
    EXPECT_EQ(logs[1].id, Integer(2));
}

TEST(GpxCacheDetailsTest, GivesItsTravelBugs) {
    const std::vector<GpxTravelBug> bugs =
        Cache(
            "<g:travelbugs><g:travelbug id='12' ref='TB1'><g:name>B</g:name><g:name>C</g:name></g:travelbug>"
            "<g:travelbug id='12.5'/></g:travelbugs>")
            .GetTravelBugs();
    ASSERT_EQ(bugs.size(), 2u);
    EXPECT_EQ(bugs[0].id, Integer(12));
    EXPECT_EQ(bugs[0].reference, Text(u"TB1"));
    EXPECT_EQ(bugs[0].name, Text(u"B"));
    EXPECT_EQ(bugs[1].id, std::nullopt);
    EXPECT_EQ(bugs[1].reference, std::nullopt);
    EXPECT_EQ(bugs[1].name, std::nullopt);
}

TEST(GpxCacheDetailsTest, KnowsItsElement) {
    const GpxElement root = RootOf("<cache/>");
    EXPECT_EQ(GpxCacheDetails(root).GetElement(), root);
}

TEST(GpxCacheDetailsTest, OfNothingIsEmpty) {
    const GpxCacheDetails none{GpxElement()};
    for (const TextField& field : kTexts)
        EXPECT_EQ((none.*field.get)(), std::nullopt) << field.element;
    for (const NumberField& field : kNumbers)
        EXPECT_EQ((none.*field.get)(), std::nullopt) << field.element;
    for (const BooleanField& field : kBooleans)
        EXPECT_EQ((none.*field.get)(), std::nullopt) << field.attribute;
    for (const BooleanField& field : kHtml)
        EXPECT_EQ((none.*field.get)(), std::nullopt) << field.attribute;
    EXPECT_EQ(none.GetId(), std::nullopt);
    EXPECT_EQ(none.GetOwnerId(), std::nullopt);
    EXPECT_EQ(none.GetFavoritePoints(), std::nullopt);
    EXPECT_TRUE(none.GetAttributes().empty());
    EXPECT_TRUE(none.GetLogs().empty());
    EXPECT_TRUE(none.GetTravelBugs().empty());
}

} // namespace
} // namespace vexaTransferLib
