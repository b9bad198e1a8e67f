// SPDX-License-Identifier: MIT
#include "support/SampleDocument.h"

#include "support/TestFiles.h"

#include <vexaTransferLib/model/GpxModelAccess.h>

#include <boost/make_shared.hpp>

namespace vexaTransferLib::testing_support {

namespace {

constexpr double kMorning = 1232014830000.0; // 2009-01-15T10:20:30Z

template <class Object>
std::string WrittenAs11(const Object& object) {
    icu::UnicodeString text;
    object.AppendToString(GpxVersion(1, 1), text);
    return Utf8(text);
}

GpxGroundspeakCacheLog Log(std::int32_t id, const icu::UnicodeString& type, const icu::UnicodeString& text) {
    GpxGroundspeakCacheLog log;
    log.id = id;
    log.date = u"2009-01-15T00:00:00Z";
    log.finder = u"Finder & Co";
    log.text = text;
    log.type = type;
    return log;
}

GpxRoute FullRoute() {
    GpxRoute route(kTarvikRouteDirections);
    route.SetName(u"Route <1>");
    route.SetSource(u"route source");
    route.SetType(u"route type");
    constexpr TarvikRoutePointType kTypes[] = {kTarvikRoutePointStart, kTarvikRoutePointVia,
                                               kTarvikRoutePointTurn, kTarvikRoutePointStop,
                                               kTarvikRoutePointFinish};
    double longitude = 0.0;
    for (const TarvikRoutePointType type : kTypes) {
        GpxPoint point(kGpxRoutePoint, -90.0, longitude);
        point.SetTarvikRoutePointType(type);
        route.AddPoint(point);
        longitude += 45.0;
    }
    return route;
}

GpxTrack FullTrack() {
    GpxTrack track;
    track.SetName(u"Track");
    track.SetDescription(u"track \"description\"");
    track.SetSource(u"track source");
    GpxUrl url(u"http://b/?x=1&y=2");
    url.SetUrlText(u"track link");
    track.SetURL(url);
    track.SetType(u"track type");
    GpxModelAccess::SetColor(track, 12345);
    track.AddSegment();
    track.AddSegment();
    GpxPoint point(kGpxTrackPoint, 12.3456789012, -180.0);
    point.SetElevation(-12345.6789);
    point.SetTime(-0.5);
    track.AddPoint(point);
    track.AddPoint(GpxPoint(kGpxTrackPoint, -0.0, 180.0));
    return track;
}

void SetMetaData(GpxDocument& document) {
    const auto gis = boost::make_shared<GISMetaData>();
    gis->layerName = u"layer name";
    gis->layerKey = u"layer key";
    gis->form = u"form";
    gis->defaultSymbol = 1234;
    GpxModelAccess::SetGISMetaData(document, gis);

    const auto annotate = boost::make_shared<AnnotateMetaData>();
    annotate->trackGUID = u"track-guid";
    annotate->waypointGUID = u"waypoint-guid";
    GpxModelAccess::SetAnnotateMetaData(document, annotate);

    const auto stats = boost::make_shared<GPXStats>();
    stats->wptcount = 1234567;
    stats->trkcount = 1;
    stats->trksegcount = 2000;
    stats->trktotalkm = 1234.5678;
    stats->geocachecount = 0;
    GpxModelAccess::SetStats(document, stats);
}

} // namespace

std::string Written(const GpxPoint& point) {
    return WrittenAs11(point);
}
std::string Written(const GpxRoute& route) {
    return WrittenAs11(route);
}
std::string Written(const GpxTrack& track) {
    return WrittenAs11(track);
}

GpxGroundspeakCache FullGeocache() {
    GpxGroundspeakCache cache;
    cache.name = u"Caf\u00E9 <Cache>";
    cache.owner = u"Owner";
    cache.type = u"Traditional Cache";
    cache.container = u"Small";
    cache.difficulty = u"1.5";
    cache.terrain = u"2";
    cache.short_description = u"short";
    cache.long_description = u"line 1\r\nline 2";
    cache.encoded_hints = u"";
    cache.logs = {Log(123456, u"Found it", u"\"TFTC\""), Log(0, u"", u"")};
    cache.travelbugs = {u"Bug 1", u"Bug's 2"};
    return cache;
}

GpxPoint FullWaypoint() {
    GpxPoint point(kGpxWaypoint, 45.5, -122.25);
    point.SetElevation(1234.5);
    point.SetTime(kMorning + 999.0);
    point.SetMagneticVariation(359.999);
    point.SetGeoidHeight(-17.25);
    point.SetName(u"Name & <more>");
    point.SetComment(u"comment");
    point.SetDescription(u"description");
    point.SetSource(u"source");
    GpxUrl url(u"http://a/?x=1&y=2");
    url.SetUrlText(u"link text");
    url.SetUrlType(u"text/html");
    point.SetURL(url);
    point.SetSymbol(u"symbol");
    point.SetType(u"type");
    point.SetFix(kGpxFixDGPS);
    point.SetFormAttribute(u"Beta", u"second's", kMorning);
    point.SetFormAttribute(u"alpha key", u"<first>", 0.0);
    GpxModelAccess::SetSymbolNumber(point, 1234);
    GpxModelAccess::SetGUID(point, u"{guid}");
    point.SetGroundspeakCache(FullGeocache());
    return point;
}

GpxDocument FullDocument() {
    GpxDocument document;
    GpxModelAccess::SetName(document, u"Document \u65E5\u672C \U0001F30D");
    GpxModelAccess::SetTime(document, kMorning);
    SetMetaData(document);
    document.AddWaypoint(FullWaypoint());
    document.AddWaypoint(GpxPoint(kGpxWaypoint, 90.0, 0.0));
    document.AddRoute(FullRoute());
    document.AddTrack(FullTrack());
    return document;
}

} // namespace vexaTransferLib::testing_support
