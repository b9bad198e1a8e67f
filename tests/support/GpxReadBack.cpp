// SPDX-License-Identifier: MIT
#include "support/GpxReadBack.h"

#include "support/GpxValues.h"
#include "support/TestFiles.h"

#include <vexaTransferLib/model/GpxModelAccess.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <stdexcept>

namespace vexaTransferLib::testing_support {

namespace {

using Access = GpxModelAccess;

icu::UnicodeString InContent(const icu::UnicodeString& text) {
    icu::UnicodeString read(text);
    read.findAndReplace(u"\r\n", u"\n");
    read.findAndReplace(u"\r", u"\n");
    return read;
}

icu::UnicodeString InAttribute(const icu::UnicodeString& text) {
    icu::UnicodeString read = InContent(text);
    read.findAndReplace(u"\n", u" ");
    read.findAndReplace(u"\t", u" ");
    return read;
}

icu::UnicodeString Unescaped(const icu::UnicodeString& text) {
    for (const char16_t* bad : {u"&", u"<", u"\"", u"]]>"})
        if (text.indexOf(bad) >= 0)
            throw std::runtime_error("written unescaped, this text would not be read back: " + Utf8(text));
    return text;
}

double Rounded(double number, int decimals) {
    char text[400];
    std::snprintf(text, sizeof text, "%.*f", decimals, number);
    return std::strtod(text, nullptr);
}

// Absent when the reader does not accept the text that is written.
std::optional<double> WholeSeconds(double time) {
    constexpr double kYear10000 = 253402300800000.0;
    if (!(time >= 0.0 && time < kYear10000))
        return std::nullopt;
    return std::floor(time / 1000.0) * 1000.0;
}

GpxPoint AtPositionOf(const GpxPoint& written) {
    double latitude = 0.0;
    double longitude = 0.0;
    written.GetPoint(latitude, longitude);
    return GpxPoint(written.GetPointType(), Rounded(latitude, 9), Rounded(longitude, 9));
}

template <class Object>
void CopyText(const Object& written, Object& read, bool (Object::*get)(icu::UnicodeString&) const,
              void (Object::*set)(const icu::UnicodeString&)) {
    icu::UnicodeString text;
    if ((written.*get)(text))
        (read.*set)(InContent(text));
}

template <class Owner>
void CopyLink(const Owner& written, Owner& read) {
    GpxUrl writtenUrl(u"unset");
    if (!written.GetURL(writtenUrl))
        return;
    GpxUrl readUrl(InAttribute(writtenUrl.GetUrl()));
    CopyText(writtenUrl, readUrl, &GpxUrl::GetUrlText, &GpxUrl::SetUrlText);
    CopyText(writtenUrl, readUrl, &GpxUrl::GetUrlType, &GpxUrl::SetUrlType);
    read.SetURL(readUrl);
}

void CopyNumbers(const GpxPoint& written, GpxPoint& read) {
    double number = 0.0;
    if (written.GetElevation(number))
        read.SetElevation(Rounded(number, 6));
    if (written.GetGeoidHeight(number))
        read.SetGeoidHeight(Rounded(number, 6));
    if (written.GetMagneticVariation(number) && Rounded(number, 9) < 360.0)
        read.SetMagneticVariation(Rounded(number, 9));
    if (written.GetTime(number) && WholeSeconds(number))
        read.SetTime(*WholeSeconds(number));
    if (FixOf(written) != 0)
        read.SetFix(FixOf(written));
}

void CopyTexts(const GpxPoint& written, GpxPoint& read) {
    CopyText(written, read, &GpxPoint::GetName, &GpxPoint::SetName);
    CopyText(written, read, &GpxPoint::GetDescription, &GpxPoint::SetDescription);
    CopyText(written, read, &GpxPoint::GetComment, &GpxPoint::SetDescription);
    CopyText(written, read, &GpxPoint::GetSource, &GpxPoint::SetSource);
    CopyText(written, read, &GpxPoint::GetSymbol, &GpxPoint::SetSymbol);
    CopyText(written, read, &GpxPoint::GetType, &GpxPoint::SetType);
}

// 123456 is written "123,456" and read up to the comma.
std::int32_t LogIdOf(std::int32_t written) {
    std::int64_t id = written;
    while (id > 999 || id < -999)
        id /= 1000;
    return static_cast<std::int32_t>(id);
}

void CopyMetaData(const GpxDocument& written, GpxDocument& read) {
    if (!written.HasExtensionData())
        return;
    const boost::shared_ptr<GISMetaData> layer(new GISMetaData);
    if (const boost::shared_ptr<GISMetaData> from = Access::GetGISMetaData(written)) {
        layer->layerKey = InContent(Unescaped(from->layerKey));
        layer->layerName = InContent(Unescaped(from->layerName));
        layer->form = InContent(Unescaped(from->form));
        layer->defaultSymbol = from->defaultSymbol;
    }
    const boost::shared_ptr<AnnotateMetaData> annotation(new AnnotateMetaData);
    if (const boost::shared_ptr<AnnotateMetaData> from = Access::GetAnnotateMetaData(written)) {
        annotation->trackGUID = InContent(Unescaped(from->trackGUID));
        annotation->waypointGUID = InContent(Unescaped(from->waypointGUID));
    }
    Access::SetGISMetaData(read, layer);
    Access::SetAnnotateMetaData(read, annotation);
}

void CopyTrackTexts(const GpxTrack& written, GpxTrack& read) {
    CopyText(written, read, &GpxTrack::GetName, &GpxTrack::SetName);
    CopyText(written, read, &GpxTrack::GetDescription, &GpxTrack::SetDescription);
    CopyText(written, read, &GpxTrack::GetSource, &GpxTrack::SetSource);
    CopyText(written, read, &GpxTrack::GetType, &GpxTrack::SetType);
    CopyLink(written, read);
    if (Access::GetColor(written) >= 0)
        Access::SetColor(read, Access::GetColor(written));
}

GpxRoute WithoutPoints(const GpxRoute& written) {
    GpxRoute read(RouteTypeOf(written));
    CopyText(written, read, &GpxRoute::GetName, &GpxRoute::SetName);
    CopyText(written, read, &GpxRoute::GetSource, &GpxRoute::SetSource);
    CopyText(written, read, &GpxRoute::GetType, &GpxRoute::SetType);
    return read;
}

} // namespace

icu::UnicodeString ReadBack::Cleaned(const icu::UnicodeString& text) {
    icu::UnicodeString read = InContent(text);
    if (!read.isEmpty())
        cleaner_.CleanWebTextForTova(read);
    return read;
}

bool ReadBack::GeocacheOf(const GpxGroundspeakCache& written, GpxGroundspeakCache& read) {
    using Cache = GpxGroundspeakCache;
    bool found = false;
    for (icu::UnicodeString Cache::*field :
         {&Cache::name, &Cache::owner, &Cache::type, &Cache::container, &Cache::difficulty, &Cache::terrain,
          &Cache::short_description, &Cache::long_description, &Cache::encoded_hints}) {
        found = found || !(written.*field).isEmpty();
        read.*field = Cleaned(written.*field);
    }
    for (const GpxGroundspeakCacheLog& from : written.logs) {
        GpxGroundspeakCacheLog log;
        log.id = LogIdOf(from.id);
        log.date = Cleaned(from.date);
        log.finder = Cleaned(from.finder);
        log.text = Cleaned(from.text);
        log.type = Cleaned(from.type);
        if (!log.date.isEmpty() && !log.finder.isEmpty() && !log.text.isEmpty())
            read.logs.push_back(log);
    }
    for (const icu::UnicodeString& name : written.travelbugs)
        if (!name.isEmpty())
            read.travelbugs.push_back(Cleaned(name));
    return found;
}

void ReadBack::AddWaypointData(const GpxPoint& written, GpxPoint& read) {
    if (Access::GetSymbolNumber(written) > 0)
        Access::SetSymbolNumber(read, Access::GetSymbolNumber(written));
    if (!Access::GetGUID(written).isEmpty())
        Access::SetGUID(read, InContent(Unescaped(Access::GetGUID(written))));
    for (const auto& [key, record] : Access::GetFormAttributes(written)) {
        const icu::UnicodeString readKey = InAttribute(Unescaped(key));
        if (!readKey.isEmpty())
            read.SetFormAttribute(readKey, InContent(record->value),
                                  WholeSeconds(record->modTime).value_or(0.0));
    }
    GpxGroundspeakCache from;
    GpxGroundspeakCache cache;
    if (written.GetGroundspeakCache(from) && GeocacheOf(from, cache))
        read.SetGroundspeakCache(cache);
}

GpxPoint ReadBack::PointOf(const GpxPoint& written) {
    GpxPoint read = AtPositionOf(written);
    CopyNumbers(written, read);
    CopyTexts(written, read);
    CopyLink(written, read);
    if (written.GetPointType() == kGpxWaypoint)
        AddWaypointData(written, read);
    else if (written.GetPointType() == kGpxRoutePoint && RoutePointTypeOf(written) != 0)
        read.SetTarvikRoutePointType(RoutePointTypeOf(written));
    return read;
}

GpxDocument ReadBack::Of(const GpxDocument& written, const icu::UnicodeString& fileName) {
    GpxDocument read;
    const icu::UnicodeString& name = Access::GetName(written);
    Access::SetName(read, name.isEmpty() ? fileName : InContent(name));
    if (Access::GetTime(written) > 0.0)
        Access::SetTime(read, WholeSeconds(Access::GetTime(written)).value_or(0.0));
    CopyMetaData(written, read);
    for (auto point = written.GetWaypointIter(); point != written.GetWaypointEndIter(); ++point)
        read.AddWaypoint(PointOf(*point));
    for (auto from = written.GetRouteIter(); from != written.GetRouteEndIter(); ++from) {
        GpxRoute route = WithoutPoints(*from);
        for (auto point = from->GetPointIter(); point != from->GetPointEndIter(); ++point)
            route.AddPoint(PointOf(*point));
        read.AddRoute(route);
    }
    for (auto from = written.GetTrackIter(); from != written.GetTrackEndIter(); ++from) {
        GpxTrack track;
        CopyTrackTexts(*from, track);
        for (auto segment = from->GetSegmentIter(); segment != from->GetSegmentEndIter(); ++segment) {
            track.AddSegment();
            for (auto point = from->GetPointIter(segment); point != from->GetPointEndIter(segment); ++point)
                track.AddPoint(PointOf(*point));
        }
        read.AddTrack(track);
    }
    return read;
}

} // namespace vexaTransferLib::testing_support
