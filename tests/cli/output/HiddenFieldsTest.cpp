// SPDX-License-Identifier: MIT
#include <vexagpx/output/HiddenFields.h>

#include <vexaTransferLib/model/GpxModelAccess.h>

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using namespace vexagpx;
using namespace vexaTransferLib;

GpxPoint PointWith(GpxPointType type, const char16_t* key, const char16_t* guid) {
    GpxPoint point(type, 1, 2);
    point.SetFormAttribute(key, u"", 0.0);
    GpxModelAccess::SetGUID(point, guid);
    return point;
}

GpxDocument DocumentWithRawTexts() {
    GpxDocument document;
    const auto layer = boost::make_shared<GISMetaData>();
    layer->layerName = u"ln";
    layer->layerKey = u"lk";
    layer->form = u"f";
    GpxModelAccess::SetGISMetaData(document, layer);
    const auto identifiers = boost::make_shared<AnnotateMetaData>();
    identifiers->trackGUID = u"tg";
    identifiers->waypointGUID = u"wg";
    GpxModelAccess::SetAnnotateMetaData(document, identifiers);
    document.AddWaypoint(GpxPoint(kGpxWaypoint, 1, 2));
    document.AddWaypoint(PointWith(kGpxWaypoint, u"wk", u"w"));
    document.AddRoute(GpxRoute(kTarvikRouteStandard));
    GpxRoute route(kTarvikRouteStandard);
    route.AddPoint(GpxPoint(kGpxRoutePoint, 1, 2));
    route.AddPoint(PointWith(kGpxRoutePoint, u"rk", u"r"));
    document.AddRoute(route);
    document.AddTrack(GpxTrack());
    GpxTrack track;
    track.AddSegment();
    track.AddSegment();
    track.AddPoint(PointWith(kGpxTrackPoint, u"tk", u"t"));
    document.AddTrack(track);
    return document;
}

using NamedTexts = std::vector<std::pair<std::string, icu::UnicodeString>>;

/// The raw texts in the order in which they are looked at, each with the name under which it is found.
NamedTexts RawTextsOf(const GpxDocument& document, const char16_t* version) {
    const GpxVersion written{icu::UnicodeString(version)};
    std::vector<icu::UnicodeString> texts;
    FindRawText(document, written, [&texts](const icu::UnicodeString& text, RawText::Context) {
        texts.push_back(text);
        return false;
    });
    NamedTexts named;
    for (const icu::UnicodeString& wanted : texts) {
        const auto found =
            FindRawText(document, written, [&wanted](const icu::UnicodeString& text, RawText::Context) {
                return text == wanted;
            });
        named.emplace_back(found->field, found->text);
    }
    return named;
}

TEST(HiddenFieldsTest, EachRawTextIsFoundByItsFieldAndContext) {
    const NamedTexts ofMetaData = {
        {"layer name", u"ln"}, {"layer key", u"lk"},     {"form", u"f"},
        {"track GUID", u"tg"}, {"waypoint GUID", u"wg"},
    };
    NamedTexts all = ofMetaData;
    all.insert(all.end(), {{"form key of waypoint 2", u"wk"},
                           {"GUID of waypoint 2", u"w"},
                           {"form key of point 2 of route 2", u"rk"},
                           {"GUID of point 2 of route 2", u"r"},
                           {"form key of point 1 of segment 2 of track 2", u"tk"},
                           {"GUID of point 1 of segment 2 of track 2", u"t"}});
    EXPECT_EQ(RawTextsOf(DocumentWithRawTexts(), u"1.1"), all);
    EXPECT_EQ(RawTextsOf(DocumentWithRawTexts(), u"1.0"), ofMetaData);
    EXPECT_EQ(RawTextsOf(GpxDocument(), u"1.1"), NamedTexts());
}

TEST(HiddenFieldsTest, ARawTextIsThatOfTheWrittenField) {
    GpxDocument document = DocumentWithRawTexts();
    std::string bytes;
    document.WriteToString(GpxVersion(u"1.1"), u"a", u"u", bytes);
    for (const auto& [field, text] : RawTextsOf(document, u"1.1")) {
        std::string utf8;
        text.toUTF8String(utf8);
        EXPECT_TRUE(bytes.find('>' + utf8 + "</tarvik:") != std::string::npos ||
                    bytes.find("key=\"" + utf8 + '"') != std::string::npos)
            << field;
    }
}

TEST(HiddenFieldsTest, OnlyTheFirstRawTextThatIsWantedIsFound) {
    int looks = 0;
    const auto found = FindRawText(DocumentWithRawTexts(), GpxVersion(u"1.1"),
                                   [&looks](const icu::UnicodeString&, RawText::Context context) {
                                       ++looks;
                                       return context == RawText::Context::kAttribute;
                                   });
    ASSERT_TRUE(found);
    EXPECT_EQ(found->field, "form key of waypoint 2");
    EXPECT_EQ(found->context, RawText::Context::kAttribute);
    EXPECT_EQ(looks, 6);
}

} // namespace
