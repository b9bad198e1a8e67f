// SPDX-License-Identifier: MIT

// Objects that were read completely and then changed: what was set is written in its place, everything else as it
// stood.
#include <vexaTransferLib/GpxStandardWriter.h>

#include "support/ModelDoors.h"
#include "support/StandardWriting.h"

#include <vexaTransferLib/model/GpxModelAccess.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

constexpr char kGroundspeak[] = "http://www.groundspeak.com/cache/1/0";

constexpr char kForeignPrefix[] = " xmlns:x=\"urn:x\"";

// Every value in a form that the writer would not choose.
const std::string kPosition = "<wpt lon=\"02.50\" lat='01.0'>";
const std::string kBefore = "<ele> 12.50 </ele><time>2009-01-15T10:20:30+00:00</time><magvar>01.0</magvar>"
                            "<geoidheight>+2</geoidheight><name>n&#49;</name><cmt>c<!-- --></cmt>"
                            "<desc><![CDATA[d]]></desc><src>s</src>";
const std::string kLinks = "<link href='a'><text>t</text></link><link href='b'/>";
const std::string kAfter = "<sym>sym</sym><type>type</type><fix>3d</fix><sat>007</sat><hdop>1.50</hdop>"
                           "<extensions><x:a b='c'/></extensions></wpt>";

// What a waypoint with all this is written as after a change. The lines are joined.
std::string Changed(const std::function<void(GpxPoint&)>& change, const std::string& waypoint,
                    const GpxVersion& version = kGpx11) {
    const GpxDocument document =
        ReadCompletely(version == kGpx10 ? Gpx10(waypoint, kForeignPrefix) : Gpx11(waypoint, kForeignPrefix));
    GpxDocument changed;
    GpxPoint point = *document.GetWaypointIter();
    change(point);
    changed.AddWaypoint(point);
    return JoinedContent(StandardText(changed, version).text);
}

std::string Changed(const std::function<void(GpxPoint&)>& change) {
    return Changed(change, kPosition + kBefore + kLinks + kAfter);
}

// The waypoint with one part replaced by another.
std::string Expected(const std::string& part, const std::string& replacement) {
    std::string text = kPosition + kBefore + kLinks + kAfter;
    const std::size_t place = text.find(part);
    EXPECT_NE(place, std::string::npos) << part;
    return text.replace(place, part.size(), replacement);
}

TEST(GpxStandardWriterChangesTest, AnUnchangedPointIsWrittenAsItStood) {
    EXPECT_EQ(Changed([](GpxPoint&) {}), kPosition + kBefore + kLinks + kAfter);
    EXPECT_EQ(Changed([](GpxPoint& point) {
                  point.SetName(u"n1");
                  point.SetElevation(12.5);
                  point.SetFix(kGpxFix3D);
              }),
              kPosition + kBefore + kLinks + kAfter);
}

TEST(GpxStandardWriterChangesTest, EachValueChangesItsElementOnly) {
    const struct {
        void (*change)(GpxPoint&);
        const char* before;
        const char* after;
    } kChanges[] = {
        {[](GpxPoint& p) { p.SetElevation(0.1); }, "<ele> 12.50 </ele>", "<ele>0.1</ele>"},
        {[](GpxPoint& p) { p.SetTime(0.0); }, "<time>2009-01-15T10:20:30+00:00</time>",
         "<time>1970-01-01T00:00:00Z</time>"},
        {[](GpxPoint& p) { p.SetMagneticVariation(359.9999999999); }, "<magvar>01.0</magvar>",
         "<magvar>359.9999999999</magvar>"},
        {[](GpxPoint& p) { p.SetGeoidHeight(-3); }, "<geoidheight>+2</geoidheight>",
         "<geoidheight>-3</geoidheight>"},
        {[](GpxPoint& p) { p.SetName(u"<N>"); }, "<name>n&#49;</name>", "<name>&lt;N&gt;</name>"},
        {[](GpxPoint& p) { p.SetComment(u"C"); }, "<cmt>c<!-- --></cmt>", "<cmt>C</cmt>"},
        {[](GpxPoint& p) { p.SetDescription(u"D"); }, "<desc><![CDATA[d]]></desc>", "<desc>D</desc>"},
        {[](GpxPoint& p) { p.SetSource(u"S"); }, "<src>s</src>", "<src>S</src>"},
        {[](GpxPoint& p) { p.SetSymbol(u"S"); }, "<sym>sym</sym>", "<sym>S</sym>"},
        {[](GpxPoint& p) { p.SetType(u"T"); }, "<type>type</type>", "<type>T</type>"},
        {[](GpxPoint& p) { p.SetFix(kGpxFixPPS); }, "<fix>3d</fix>", "<fix>pps</fix>"},
        {[](GpxPoint& p) { p.SetURL(GpxUrl(u"z")); }, "<link href='a'><text>t</text></link>",
         "<link href=\"z\"></link>"},
    };
    for (const auto& [change, before, after] : kChanges)
        EXPECT_EQ(Changed(change), Expected(before, after));
}

TEST(GpxStandardWriterChangesTest, APositionChangesTheAttributesOnly) {
    EXPECT_EQ(Changed([](GpxPoint& point) { ModelDoors::SetPosition(point, 5.5, 6); }),
              Expected(kPosition, "<wpt lat=\"5.5\" lon=\"6\">"));
}

TEST(GpxStandardWriterChangesTest, AValueThatWasNotThereIsWrittenInItsPlace) {
    EXPECT_EQ(Changed(
                  [](GpxPoint& point) {
                      point.SetElevation(1);
                      point.SetDescription(u"d");
                      point.SetURL(GpxUrl(u"a"));
                      point.SetFix(kGpxFix2D);
                  },
                  "<wpt lat=\"1\" lon=\"2\"><name>n</name><sym>s</sym><sat>1</sat></wpt>"),
              "<wpt lat=\"1\" lon=\"2\"><ele>1</ele><name>n</name><desc>d</desc><link "
              "href=\"a\"></link><sym>s</sym>"
              "<fix>2d</fix><sat>1</sat></wpt>");
}

TEST(GpxStandardWriterChangesTest, TheVendorsElementsChangeOneByOne) {
    const std::string tarvik = " xmlns:tarvik=\"https://tarvik.example/xmlschemas/gpx-extensions/1/0\">";
    const std::string form = "<tarvik:formdata" + tarvik +
                             "<tarvik:formstring key=\"a\">b</tarvik:formstring>" + "</tarvik:formdata>";
    const std::string symbol = "<tarvik:tovasymbol" + tarvik + "07</tarvik:tovasymbol>";
    const std::string identifier = "<tarvik:objectid" + tarvik + "i</tarvik:objectid>";
    const std::string waypoint = "<wpt lat=\"1\" lon=\"2\"><extensions>";
    const std::string end = "</extensions></wpt>";
    const std::string before = waypoint + "<x:a/>" + form + symbol + identifier + end;
    EXPECT_EQ(Changed([](GpxPoint&) {}, before), before);
    EXPECT_EQ(Changed([](GpxPoint& point) { GpxModelAccess::SetSymbolNumber(point, 8); }, before),
              waypoint + "<x:a/>" + form + identifier + "<tarvik:tovasymbol" + tarvik +
                  "8</tarvik:tovasymbol>" + end);
    EXPECT_EQ(Changed([](GpxPoint& point) { GpxModelAccess::SetGUID(point, u"j"); }, before),
              waypoint + "<x:a/>" + form + symbol + "<tarvik:objectid" + tarvik + "j</tarvik:objectid>" +
                  end);
    EXPECT_EQ(Changed([](GpxPoint& point) { point.SetFormAttribute(u"c", u"d", 1000.0); }, before),
              waypoint + "<x:a/>" + symbol + identifier + "<tarvik:formdata" + tarvik +
                  "<tarvik:formstring key=\"a\">b</tarvik:formstring>"
                  "<tarvik:formstring key=\"c\" modtime=\"1970-01-01T00:00:01Z\">d</tarvik:formstring>"
                  "</tarvik:formdata>" +
                  end);
}

// Geocaches.

const std::string kCacheStart =
    std::string("<groundspeak:cache xmlns:groundspeak=\"") + kGroundspeak + "\" id=\"1\" available=\"True\">";
const std::string kFirstLog =
    "<groundspeak:log id=\"10\"><groundspeak:date>2009-01-15T00:00:00</groundspeak:date>"
    "<groundspeak:type>Found it</groundspeak:type>"
    "<groundspeak:finder id=\"7\">F</groundspeak:finder>"
    "<groundspeak:text encoded=\"False\">one</groundspeak:text></groundspeak:log>";
const std::string kSecondLog =
    "<groundspeak:log id=\"011\"><groundspeak:text>two</groundspeak:text></groundspeak:log>";
const std::string kBugs =
    "<groundspeak:travelbugs><groundspeak:travelbug id=\"1\" ref=\"TB1\">"
    "<groundspeak:name>bug</groundspeak:name></groundspeak:travelbug></groundspeak:travelbugs>";
const std::string kNames =
    "<groundspeak:name>n</groundspeak:name><groundspeak:placed_by>p</groundspeak:placed_by>"
    "<groundspeak:owner id=\"5\">o</groundspeak:owner>";
const std::string kCountry =
    "<groundspeak:terrain>2</groundspeak:terrain><groundspeak:country>c</groundspeak:country>";

std::string CacheWith(const std::string& names, const std::string& country, const std::string& rest) {
    return Gpx10("<wpt lat=\"1\" lon=\"2\">" + kCacheStart + names + country + rest +
                 "</groundspeak:cache></wpt>");
}
std::string Logs(const std::string& logs) {
    return "<groundspeak:logs>" + logs + "</groundspeak:logs>";
}

std::string ChangedCache(const std::function<void(GpxGroundspeakCache&)>& change) {
    GpxDocument document = ReadCompletely(CacheWith(kNames, kCountry, Logs(kFirstLog + kSecondLog) + kBugs));
    GpxPoint point = *document.GetWaypointIter();
    GpxGroundspeakCache cache;
    EXPECT_TRUE(point.GetGroundspeakCache(cache));
    change(cache);
    point.SetGroundspeakCache(cache);
    GpxDocument changed;
    changed.AddWaypoint(point);
    return JoinedContent(StandardText(changed, kGpx10).text);
}

std::string ExpectedCache(const std::string& names, const std::string& country, const std::string& rest) {
    return JoinedContent(CacheWith(names, country, rest));
}

std::string Replaced(std::string text, const std::string& part, const std::string& replacement) {
    EXPECT_NE(text.find(part), std::string::npos);
    return text.replace(text.find(part), part.size(), replacement);
}

TEST(GpxStandardWriterChangesTest, AGeocacheChangesInTheElementThatWasSet) {
    const std::string rest = Logs(kFirstLog + kSecondLog) + kBugs;
    EXPECT_EQ(ChangedCache([](GpxGroundspeakCache&) {}), ExpectedCache(kNames, kCountry, rest));
    EXPECT_EQ(ChangedCache([](GpxGroundspeakCache& cache) { cache.owner = u"O"; }),
              ExpectedCache(Replaced(kNames, ">o<", ">O<"), kCountry, rest));
    EXPECT_EQ(ChangedCache([](GpxGroundspeakCache& cache) { cache.type = u"T"; }),
              ExpectedCache(kNames + "<groundspeak:type>T</groundspeak:type>", kCountry, rest));
    EXPECT_EQ(ChangedCache([](GpxGroundspeakCache& cache) { cache.name = u""; }),
              ExpectedCache(Replaced(kNames, "<groundspeak:name>n</groundspeak:name>", ""), kCountry, rest));
}

TEST(GpxStandardWriterChangesTest, LogsAreAddedRemovedAndChanged) {
    EXPECT_EQ(ChangedCache([](GpxGroundspeakCache& cache) { cache.logs.erase(cache.logs.begin()); }),
              ExpectedCache(kNames, kCountry, Logs(kSecondLog) + kBugs));
    EXPECT_EQ(ChangedCache([](GpxGroundspeakCache& cache) { std::swap(cache.logs[0], cache.logs[1]); }),
              ExpectedCache(kNames, kCountry, Logs(kSecondLog + kFirstLog) + kBugs));
    EXPECT_EQ(ChangedCache([](GpxGroundspeakCache& cache) { cache.logs[0].finder = u"G"; }),
              ExpectedCache(kNames, kCountry, Logs(Replaced(kFirstLog, ">F<", ">G<") + kSecondLog) + kBugs));
    EXPECT_EQ(ChangedCache([](GpxGroundspeakCache& cache) { cache.logs[1].id = 12; }),
              ExpectedCache(kNames, kCountry, Logs(kFirstLog + Replaced(kSecondLog, "011", "12")) + kBugs));
    EXPECT_EQ(
        ChangedCache([](GpxGroundspeakCache& cache) {
            GpxGroundspeakCacheLog log;
            log.id = 3;
            log.text = u"<three>";
            cache.logs.push_back(log);
        }),
        ExpectedCache(kNames, kCountry,
                      Logs(kFirstLog + kSecondLog +
                           "<groundspeak:log id=\"3\"><groundspeak:text>&lt;three&gt;</groundspeak:text>"
                           "</groundspeak:log>") +
                          kBugs));
}

TEST(GpxStandardWriterChangesTest, TravelBugsAreWrittenAnewWhenTheyChange) {
    EXPECT_EQ(ChangedCache([](GpxGroundspeakCache& cache) { cache.travelbugs = {u"b"}; }),
              ExpectedCache(
                  kNames, kCountry,
                  Logs(kFirstLog + kSecondLog) +
                      "<groundspeak:travelbugs><groundspeak:travelbug><groundspeak:name>b</groundspeak:name>"
                      "</groundspeak:travelbug></groundspeak:travelbugs>"));
}

// Routes and tracks.

TEST(GpxStandardWriterChangesTest, ARouteChangesInTheElementThatWasSet) {
    const std::string start = "<rte><name>n</name><cmt>c</cmt><src>s</src><link href='a'/><number>07</number>"
                              "<type>t</type><extensions><x:a/></extensions>";
    const std::string end = "<rtept lat=\"01\" lon=\"2\"></rtept></rte>";
    const GpxDocument document = ReadCompletely(Gpx11(start + end, kForeignPrefix));
    const auto changed = [&](const std::function<void(GpxRoute&)>& change) {
        GpxRoute route = *document.GetRouteIter();
        change(route);
        GpxDocument other;
        other.AddRoute(route);
        return JoinedContent(StandardText(other, kGpx11).text);
    };
    EXPECT_EQ(changed([](GpxRoute&) {}), start + end);
    EXPECT_EQ(changed([](GpxRoute& route) { route.SetName(u"N"); }), Replaced(start, ">n<", ">N<") + end);
    EXPECT_EQ(changed([](GpxRoute& route) { route.SetSource(u"S"); }), Replaced(start, ">s<", ">S<") + end);
    EXPECT_EQ(changed([](GpxRoute& route) { route.SetType(u"T"); }), Replaced(start, ">t<", ">T<") + end);
    EXPECT_EQ(changed([](GpxRoute& route) { route.AddPoint(GpxPoint(kGpxRoutePoint, 3, 4)); }),
              start + "<rtept lat=\"01\" lon=\"2\"></rtept><rtept lat=\"3\" lon=\"4\"></rtept></rte>");
}

TEST(GpxStandardWriterChangesTest, ATrackChangesInTheElementThatWasSet) {
    const std::string tarvik = " xmlns:tarvik=\"https://tarvik.example/xmlschemas/gpx-extensions/1/0\">";
    const std::string start =
        "<trk><name>n</name><cmt>c</cmt><desc>d</desc><src>s</src><link href='a'/>"
        "<link href='b'/><number>07</number><type>t</type><extensions><x:a/><tarvik:color" +
        tarvik + "07</tarvik:color></extensions>";
    const std::string end =
        "<trkseg><trkpt lat=\"01\" lon=\"2\"></trkpt><extensions><x:s/></extensions></trkseg></trk>";
    const GpxDocument document = ReadCompletely(Gpx11(start + end, kForeignPrefix));
    const auto changed = [&](const std::function<void(GpxTrack&)>& change) {
        GpxTrack track = *document.GetTrackIter();
        change(track);
        GpxDocument other;
        other.AddTrack(track);
        return JoinedContent(StandardText(other, kGpx11).text);
    };
    EXPECT_EQ(changed([](GpxTrack&) {}), start + end);
    EXPECT_EQ(changed([](GpxTrack& track) { track.SetName(u"N"); }), Replaced(start, ">n<", ">N<") + end);
    EXPECT_EQ(changed([](GpxTrack& track) { track.SetDescription(u"D"); }),
              Replaced(start, ">d<", ">D<") + end);
    EXPECT_EQ(changed([](GpxTrack& track) { track.SetSource(u"S"); }), Replaced(start, ">s<", ">S<") + end);
    EXPECT_EQ(changed([](GpxTrack& track) { track.SetType(u"T"); }), Replaced(start, ">t<", ">T<") + end);
    EXPECT_EQ(changed([](GpxTrack& track) { track.SetURL(GpxUrl(u"z")); }),
              Replaced(start, "<link href='a'/>", "<link href=\"z\"></link>") + end);
    EXPECT_EQ(changed([](GpxTrack& track) { GpxModelAccess::SetColor(track, 8); }),
              Replaced(start, ">07</tarvik", ">8</tarvik") + end);
    EXPECT_EQ(changed([](GpxTrack& track) {
                  track.AddSegment();
                  track.AddPoint(GpxPoint(kGpxTrackPoint, 3, 4));
              }),
              start + Replaced(end, "</trk>", "<trkseg><trkpt lat=\"3\" lon=\"4\"></trkpt></trkseg></trk>"));
}

TEST(GpxStandardWriterChangesTest, AClearedValueIsLeftOut) {
    const struct {
        void (GpxPoint::*clear)() noexcept;
        const char* before;
    } kClears[] = {
        {&GpxPoint::ClearElevation, "<ele> 12.50 </ele>"},
        {&GpxPoint::ClearTime, "<time>2009-01-15T10:20:30+00:00</time>"},
        {&GpxPoint::ClearMagneticVariation, "<magvar>01.0</magvar>"},
        {&GpxPoint::ClearGeoidHeight, "<geoidheight>+2</geoidheight>"},
        {&GpxPoint::ClearName, "<name>n&#49;</name>"},
        {&GpxPoint::ClearComment, "<cmt>c<!-- --></cmt>"},
        {&GpxPoint::ClearDescription, "<desc><![CDATA[d]]></desc>"},
        {&GpxPoint::ClearSource, "<src>s</src>"},
        {&GpxPoint::ClearSymbol, "<sym>sym</sym>"},
        {&GpxPoint::ClearType, "<type>type</type>"},
        {&GpxPoint::ClearFix, "<fix>3d</fix>"},
        {&GpxPoint::ClearURL, "<link href='a'><text>t</text></link>"},
    };
    for (const auto& [clear, before] : kClears)
        EXPECT_EQ(Changed([clear = clear](GpxPoint& point) { (point.*clear)(); }), Expected(before, ""));
}

constexpr char kSegments[] =
    "<trk><trkseg><trkpt lat=\"1\" lon=\"1\"></trkpt><trkpt lat=\"2\" lon=\"2\"></trkpt>"
    "<trkpt lat=\"x\" lon=\"2\"></trkpt><extensions><x:a/></extensions></trkseg>"
    "<trkseg><trkpt lat=\"3\" lon=\"3\"></trkpt><trkpt lat=\"y\" lon=\"2\"></trkpt>"
    "<extensions><x:b/></extensions></trkseg></trk>";

// What a track of two segments, each with an unread point and an extension, is written as after a change.
std::string ChangedTrack(const std::function<void(GpxTrack&)>& change) {
    GpxDocument document = ReadCompletely(Gpx11(kSegments, kForeignPrefix));
    change(document.EditTracks()[0]);
    return JoinedContent(StandardText(document, kGpx11).text);
}

TEST(GpxStandardWriterChangesTest, SegmentsTakeAlongWhatAFileHasInThem) {
    EXPECT_EQ(ChangedTrack([](GpxTrack&) {}), kSegments);
    const std::string first =
        std::string(kSegments).substr(5, std::string(kSegments).find("<trkseg><trkpt lat=\"3") - 5);
    const std::string second = Replaced(Replaced(kSegments, "<trk>" + first, ""), "</trk>", "");
    EXPECT_EQ(ChangedTrack([](GpxTrack& track) { track.MoveSegment(1, 0); }),
              "<trk>" + second + first + "</trk>");
    EXPECT_EQ(ChangedTrack([](GpxTrack& track) { track.RemoveSegments(0); }), "<trk>" + second + "</trk>");
    EXPECT_EQ(ChangedTrack([](GpxTrack& track) { track.InsertSegment(1, {}); }),
              "<trk>" + first + "<trkseg></trkseg>" + second + "</trk>");
    EXPECT_EQ(ChangedTrack([](GpxTrack& track) {
                  track.SplitSegment(0, 1);
                  track.JoinSegments(0);
              }),
              kSegments);
    EXPECT_EQ(ChangedTrack([](GpxTrack& track) {
                  const GpxTrack rest = track.SplitOff(1);
                  track.AppendSegments(rest);
              }),
              kSegments);
}

TEST(GpxStandardWriterChangesTest, JoinedSegmentsHaveWhatBothHad) {
    EXPECT_EQ(ChangedTrack([](GpxTrack& track) { track.JoinSegments(0); }),
              "<trk><trkseg><trkpt lat=\"1\" lon=\"1\"></trkpt><trkpt lat=\"2\" lon=\"2\"></trkpt>"
              "<trkpt lat=\"x\" lon=\"2\"></trkpt><trkpt lat=\"3\" lon=\"3\"></trkpt>"
              "<trkpt lat=\"y\" lon=\"2\"></trkpt><extensions><x:a/><x:b/></extensions></trkseg></trk>");
}

std::string ChangedDocument(const std::string& content, const std::function<void(GpxDocument&)>& change) {
    GpxDocument document = ReadCompletely(Gpx11(content, kForeignPrefix));
    change(document);
    return JoinedContent(StandardText(document, kGpx11).text);
}

TEST(GpxStandardWriterChangesTest, NameAndTimeOfADocumentChangeTheirElementsOnly) {
    const std::string before =
        "<metadata><name><![CDATA[n]]></name><desc>d</desc><author><name>a</name></author>"
        "<time>2009-01-15T10:20:30.0Z</time><keywords>k</keywords></metadata>";
    const auto changed = [&](void (*change)(GpxDocument&)) { return ChangedDocument(before, change); };
    EXPECT_EQ(changed([](GpxDocument&) {}), before);
    EXPECT_EQ(changed([](GpxDocument& d) { d.SetName(u"n"); }), before);
    EXPECT_EQ(changed([](GpxDocument& d) { d.SetName(u"N"); }), Replaced(before, "<![CDATA[n]]>", "N"));
    EXPECT_EQ(changed([](GpxDocument& d) { d.ClearName(); }),
              Replaced(before, "<name><![CDATA[n]]></name>", ""));
    EXPECT_EQ(changed([](GpxDocument& d) { d.SetDocumentTime(0.0); }),
              Replaced(before, "2009-01-15T10:20:30.0Z", "1970-01-01T00:00:00Z"));
    EXPECT_EQ(changed([](GpxDocument& d) { d.ClearDocumentTime(); }),
              Replaced(before, "<time>2009-01-15T10:20:30.0Z</time>", ""));
}

TEST(GpxStandardWriterChangesTest, ADocumentWithoutMetadataGetsThemForANameAndATime) {
    EXPECT_EQ(
        ChangedDocument("<wpt lat=\"1\" lon=\"2\"/>",
                        [](GpxDocument& document) {
                            document.SetName(u"N");
                            document.SetDocumentTime(0.0);
                        }),
        "<metadata><name>N</name><time>1970-01-01T00:00:00Z</time></metadata><wpt lat=\"1\" lon=\"2\"/>");
    EXPECT_EQ(ChangedDocument("<metadata><time>never</time><name/></metadata>",
                              [](GpxDocument& document) { document.SetName(u"N"); }),
              "<metadata><name>N</name><name/><time>never</time></metadata>");
}

} // namespace
} // namespace vexaTransferLib
