// SPDX-License-Identifier: MIT

// That every field of every kind of object is checked is a test of the writer: GpxStandardWriterTest.
#include <vexaTransferLib/standard/TextCheck.h>

#include <vexaTransferLib/model/GpxModelAccess.h>

#include <common/dbc.h>

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace vexaTransferLib::standard {
namespace {

using Access = GpxModelAccess;

const icu::UnicodeString kBad(u"a\u0001");

std::string RefusalOf(const GpxDocument& document, const icu::UnicodeString& creator = u"c") {
    try {
        CheckTexts(document, creator);
    } catch (const dbc::precondition_error& error) {
        return error.what();
    }
    return {};
}

std::string RefusalOf(const std::function<void(GpxDocument&)>& change) {
    GpxDocument document;
    change(document);
    return RefusalOf(document);
}

std::string Refusal(const std::string& place, const std::string& character = "U+0001") {
    return "The " + place + " has a character that XML cannot hold: " + character + '.';
}

GpxPoint Point(GpxPointType type, const icu::UnicodeString& name = {}) {
    GpxPoint point(type, 1, 2);
    if (!name.isEmpty())
        point.SetName(name);
    return point;
}

GpxTrack TrackWith(const std::vector<std::vector<icu::UnicodeString>>& segments) {
    GpxTrack track;
    for (const std::vector<icu::UnicodeString>& names : segments) {
        track.AddSegment();
        for (const icu::UnicodeString& name : names)
            track.AddPoint(Point(kGpxTrackPoint, name));
    }
    return track;
}

GpxRoute RouteWith(const std::vector<icu::UnicodeString>& names) {
    GpxRoute route(kTarvikRouteStandard);
    for (const icu::UnicodeString& name : names)
        route.AddPoint(Point(kGpxRoutePoint, name));
    return route;
}

TEST(TextCheckTest, TheBoundariesAreThoseOfXml) {
    struct Row {
        char32_t character;
        const char* refused; // empty for one that is allowed
    };
    constexpr Row kRows[] = {
        {0x0, "U+0000"},    {0x1, "U+0001"}, {0x8, "U+0008"}, {0x9, ""},          {0xA, ""},
        {0xB, "U+000B"},    {0xC, "U+000C"}, {0xD, ""},       {0xE, "U+000E"},    {0x1F, "U+001F"},
        {0x20, ""},         {0x7F, ""},      {0x85, ""},      {0xD7FF, ""},       {0xD800, "U+D800"},
        {0xDFFF, "U+DFFF"}, {0xE000, ""},    {0xFFFD, ""},    {0xFFFE, "U+FFFE"}, {0xFFFF, "U+FFFF"},
        {0x10000, ""},      {0x1FFFE, ""},   {0x10FFFF, ""},
    };
    for (const Row& row : kRows) {
        icu::UnicodeString text(u"a");
        if (row.character < 0x10000)
            text.append(static_cast<char16_t>(row.character));
        else
            text.append(static_cast<UChar32>(row.character));
        EXPECT_EQ(RefusalOf(GpxDocument(), text),
                  *row.refused == '\0' ? "" : Refusal("creator of the document", row.refused));
    }
}

TEST(TextCheckTest, SurrogatesAreAllowedInPairsOnly) {
    const std::vector<std::pair<icu::UnicodeString, std::string>> rows = {
        {icu::UnicodeString(u"\U0001F600"), ""},
        {icu::UnicodeString(u"\U0001F600").append(char16_t{0xDE00}), "U+DE00"},
        {icu::UnicodeString(char16_t{0xD83D}).append(char16_t{0xD83D}).append(char16_t{0xDE00}), "U+D83D"},
        {icu::UnicodeString(char16_t{0xDE00}).append(char16_t{0xD83D}), "U+DE00"},
    };
    for (const auto& [text, character] : rows)
        EXPECT_EQ(RefusalOf(GpxDocument(), text),
                  character.empty() ? "" : Refusal("creator of the document", character));
}

TEST(TextCheckTest, TheFirstBadCharacterOfATextIsNamed) {
    EXPECT_EQ(RefusalOf(GpxDocument(), u"good\u0002\u0003"), Refusal("creator of the document", "U+0002"));
}

TEST(TextCheckTest, NothingIsFoundInADocumentWithoutTexts) {
    EXPECT_EQ(RefusalOf([](GpxDocument& document) {
                  document.AddWaypoint(Point(kGpxWaypoint));
                  document.AddRoute(RouteWith({u""}));
                  document.AddTrack(TrackWith({{}, {u""}}));
              }),
              "");
}

TEST(TextCheckTest, TheRecordsOfTheMetadataAreChecked) {
    for (const auto& [field, name] :
         {std::pair(&GISMetaData::layerName, "layer name"), std::pair(&GISMetaData::layerKey, "layer key"),
          std::pair(&GISMetaData::form, "form")})
        EXPECT_EQ(RefusalOf([field = field](GpxDocument& document) {
                      Access::SetGISMetaData(document, boost::make_shared<GISMetaData>());
                      (*Access::GetGISMetaData(document)).*field = kBad;
                  }),
                  Refusal(std::string(name) + " of the document"));
    for (const auto& [field, name] : {std::pair(&AnnotateMetaData::trackGUID, "track identifier"),
                                      std::pair(&AnnotateMetaData::waypointGUID, "waypoint identifier")})
        EXPECT_EQ(RefusalOf([field = field](GpxDocument& document) {
                      Access::SetAnnotateMetaData(document, boost::make_shared<AnnotateMetaData>());
                      (*Access::GetAnnotateMetaData(document)).*field = kBad;
                  }),
                  Refusal(std::string(name) + " of the document"));
}

TEST(TextCheckTest, TheLinkOfATrackIsCheckedWhole) {
    GpxUrl text(u"a");
    text.SetUrlText(kBad);
    GpxUrl type(u"a");
    type.SetUrlType(kBad);
    for (const auto& [link, name] : {std::pair(text, "text"), std::pair(type, "type")})
        EXPECT_EQ(RefusalOf([link = link](GpxDocument& document) {
                      GpxTrack track;
                      track.SetURL(link);
                      document.AddTrack(track);
                  }),
                  Refusal(std::string(name) + " of the link of track 1"));
}

TEST(TextCheckTest, ObjectsAreCountedByKind) {
    EXPECT_EQ(RefusalOf([](GpxDocument& document) {
                  document.AddWaypoint(Point(kGpxWaypoint, u"good"));
                  document.AddWaypoint(Point(kGpxWaypoint));
                  document.AddWaypoint(Point(kGpxWaypoint, kBad));
              }),
              Refusal("name of waypoint 3"));
    EXPECT_EQ(RefusalOf([](GpxDocument& document) {
                  document.AddWaypoint(Point(kGpxWaypoint, u"good"));
                  document.AddRoute(RouteWith({u"1", u"2"}));
                  document.AddRoute(RouteWith({u"1", kBad}));
              }),
              Refusal("name of point 2 of route 2"));
    EXPECT_EQ(RefusalOf([](GpxDocument& document) {
                  document.AddRoute(RouteWith({u"1"}));
                  document.AddTrack(TrackWith({{u"1", u"2"}, {u"1"}}));
                  document.AddTrack(TrackWith({{u"1"}, {}, {u"1", u"2", kBad}}));
              }),
              Refusal("name of point 3 of segment 3 of track 2"));
}

TEST(TextCheckTest, ATextOfALineIsNotTakenForThatOfThePointBefore) {
    EXPECT_EQ(RefusalOf([](GpxDocument& document) {
                  document.AddRoute(RouteWith({u"1"}));
                  GpxRoute route(kTarvikRouteStandard);
                  route.SetSource(kBad);
                  document.AddRoute(route);
              }),
              Refusal("source of route 2"));
    EXPECT_EQ(RefusalOf([](GpxDocument& document) {
                  document.AddTrack(TrackWith({{u"1"}}));
                  GpxTrack track;
                  track.SetType(kBad);
                  document.AddTrack(track);
              }),
              Refusal("type of track 2"));
    EXPECT_EQ(RefusalOf([](GpxDocument& document) {
                  document.AddTrack(TrackWith({{u"1", u"2"}}));
                  document.AddTrack(TrackWith({{kBad}}));
              }),
              Refusal("name of point 1 of segment 1 of track 2"));
}

TEST(TextCheckTest, TheFirstBadTextIsNamedInTheOrderOfTheFile) {
    const std::vector<std::pair<std::function<void(GpxDocument&)>, std::string>> parts = {
        {[](GpxDocument& document) { document.AddTrack(TrackWith({{kBad}})); },
         "name of point 1 of segment 1 of track 1"},
        {[](GpxDocument& document) { document.AddRoute(RouteWith({kBad})); }, "name of point 1 of route 1"},
        {[](GpxDocument& document) { document.AddWaypoint(Point(kGpxWaypoint, kBad)); },
         "name of waypoint 1"},
        {[](GpxDocument& document) { Access::SetName(document, kBad); }, "name of the document"},
    };
    GpxDocument document;
    for (const auto& [add, place] : parts) {
        add(document);
        EXPECT_EQ(RefusalOf(document), Refusal(place));
    }
    EXPECT_EQ(RefusalOf(document, kBad), Refusal("creator of the document"));
}

} // namespace
} // namespace vexaTransferLib::standard
