// SPDX-License-Identifier: MIT
#include "support/ModelCompare.h"

#include "support/GpxValues.h"
#include "support/TestFiles.h"

#include <vexaTransferLib/model/GpxModelAccess.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <optional>
#include <type_traits>
#include <utility>

namespace vexaTransferLib::testing_support {

namespace {

std::string Shown(const icu::UnicodeString& text) {
    return '"' + Utf8(text) + '"';
}

std::string Shown(double number) {
    char text[64];
    std::snprintf(text, sizeof text, "%.17g", number);
    return text;
}

template <class Integer, class = std::enable_if_t<std::is_integral_v<Integer> || std::is_enum_v<Integer>>>
std::string Shown(Integer number) {
    return std::to_string(static_cast<std::int64_t>(number));
}

std::string Shown(const std::optional<double>& number) {
    return number ? Shown(*number) : "absent";
}

template <class Value>
bool Same(const Value& first, const Value& second) {
    return first == second;
}

bool Same(double first, double second) {
    return (std::isnan(first) && std::isnan(second)) || std::memcmp(&first, &second, sizeof first) == 0;
}

bool Same(const std::optional<double>& first, const std::optional<double>& second) {
    return first && second ? Same(*first, *second) : first.has_value() == second.has_value();
}

// A value of a point in a form that can be compared and shown.
std::optional<double> ValueOf(const double* number) {
    return number ? std::optional(*number) : std::nullopt;
}

icu::UnicodeString ValueOf(const icu::UnicodeString* text) {
    return text ? *text : icu::UnicodeString();
}

std::int32_t ValueOf(const std::int32_t* number) {
    return number ? *number : 0;
}

template <class Enumeration>
std::uint32_t ValueOf(const std::optional<Enumeration>& number) {
    return number ? std::uint32_t{*number} : 0;
}

template <class Owner>
std::optional<GpxUrl> UrlOf(const Owner& owner) {
    GpxUrl url(u"unset");
    return owner.GetURL(url) ? std::optional<GpxUrl>(url) : std::nullopt;
}

class Comparison {
public:
    std::vector<std::string> differences;

    void Document(const GpxDocument& expected, const GpxDocument& actual) {
        using Access = GpxModelAccess;
        Field("name", Access::GetName(expected), Access::GetName(actual));
        Field("time", Access::GetTime(expected), Access::GetTime(actual));
        Held("layer", Access::GetGISMetaData(expected), Access::GetGISMetaData(actual), &Comparison::Layer);
        Held("annotation", Access::GetAnnotateMetaData(expected), Access::GetAnnotateMetaData(actual),
             &Comparison::Annotation);
        Held("statistics", Access::GetStats(expected), Access::GetStats(actual), &Comparison::Statistics);
        List("waypoint", std::pair(expected.GetWaypointIter(), expected.GetWaypointEndIter()),
             std::pair(actual.GetWaypointIter(), actual.GetWaypointEndIter()), &Comparison::Point);
        List("route", std::pair(expected.GetRouteIter(), expected.GetRouteEndIter()),
             std::pair(actual.GetRouteIter(), actual.GetRouteEndIter()), &Comparison::Route);
        List("track", std::pair(expected.GetTrackIter(), expected.GetTrackEndIter()),
             std::pair(actual.GetTrackIter(), actual.GetTrackEndIter()), &Comparison::Track);
    }

private:
    template <class Value>
    void Field(const char* name, const Value& expected, const Value& actual) {
        if (!Same(expected, actual))
            differences.push_back(where_ + name + ": " + Shown(expected) + ", not " + Shown(actual));
    }

    template <class Object>
    void Text(const char* name, const Object& expected, const Object& actual,
              bool (Object::*get)(icu::UnicodeString&) const) {
        icu::UnicodeString expectedText;
        icu::UnicodeString actualText;
        (expected.*get)(expectedText);
        (actual.*get)(actualText);
        Field(name, expectedText, actualText);
    }

    template <class Compare>
    void Within(const std::string& place, Compare compare) {
        const std::size_t length = where_.size();
        where_ += place + ", ";
        compare();
        where_.resize(length);
    }

    // Compares objects of which one may be absent.
    template <class Holder, class Object>
    void Held(const char* name, const Holder& expected, const Holder& actual,
              void (Comparison::*compare)(const Object&, const Object&)) {
        Field(name, static_cast<bool>(expected), static_cast<bool>(actual));
        if (expected && actual)
            Within(name, [&] { (this->*compare)(*expected, *actual); });
    }

    template <class Iterator, class Object>
    void List(const char* name, std::pair<Iterator, Iterator> expected, std::pair<Iterator, Iterator> actual,
              void (Comparison::*compare)(const Object&, const Object&)) {
        const auto expectedCount = std::distance(expected.first, expected.second);
        const auto actualCount = std::distance(actual.first, actual.second);
        const std::string counted = std::string(name) + "s";
        Field(counted.c_str(), expectedCount, actualCount);
        if (expectedCount != actualCount)
            return;
        for (std::size_t index = 0; expected.first != expected.second;
             ++expected.first, ++actual.first, ++index)
            Within(name + (" " + std::to_string(index)),
                   [&] { (this->*compare)(*expected.first, *actual.first); });
    }

    template <class Object>
    void List(const char* name, const std::vector<Object>& expected, const std::vector<Object>& actual,
              void (Comparison::*compare)(const Object&, const Object&)) {
        List(name, std::pair(expected.begin(), expected.end()), std::pair(actual.begin(), actual.end()),
             compare);
    }

    void Layer(const GISMetaData& expected, const GISMetaData& actual) {
        Field("layerKey", expected.layerKey, actual.layerKey);
        Field("layerName", expected.layerName, actual.layerName);
        Field("form", expected.form, actual.form);
        Field("defaultSymbol", expected.defaultSymbol, actual.defaultSymbol);
    }

    void Annotation(const AnnotateMetaData& expected, const AnnotateMetaData& actual) {
        Field("trackGUID", expected.trackGUID, actual.trackGUID);
        Field("waypointGUID", expected.waypointGUID, actual.waypointGUID);
    }

    void Statistics(const GPXStats& expected, const GPXStats& actual) {
        Field("wptcount", expected.wptcount, actual.wptcount);
        Field("trkcount", expected.trkcount, actual.trkcount);
        Field("trksegcount", expected.trksegcount, actual.trksegcount);
        Field("trktotalkm", expected.trktotalkm, actual.trktotalkm);
        Field("geocachecount", expected.geocachecount, actual.geocachecount);
    }

    void Url(const GpxUrl& expected, const GpxUrl& actual) {
        Field("address", expected.GetUrl(), actual.GetUrl());
        Text("text", expected, actual, &GpxUrl::GetUrlText);
        Text("type", expected, actual, &GpxUrl::GetUrlType);
    }

    void Point(const GpxPoint& expected, const GpxPoint& actual) {
        Field("point type", expected.GetPointType(), actual.GetPointType());
        if (expected.GetPointType() != actual.GetPointType())
            return; // the values that only one kind has would differ too
        GpxModelAccess::ForEachPointField(
            [&](const char* name, auto get) { PointField(name, get(expected), get(actual)); });
        if (expected.GetPointType() == kGpxTrackPoint)
            Field("has extensions", expected.ContainsExtensions(), actual.ContainsExtensions());
    }

    template <class Value>
    void PointField(const char* name, const Value& expected, const Value& actual) {
        Field(name, ValueOf(expected), ValueOf(actual));
    }

    void PointField(const char* name, const GpxUrl* expected, const GpxUrl* actual) {
        Held(name, expected, actual, &Comparison::Url);
    }

    void PointField(const char* name, const GpxGroundspeakCache* expected,
                    const GpxGroundspeakCache* actual) {
        Held(name, expected, actual, &Comparison::Geocache);
    }

    void PointField(const char* name, const GpxPoint::FormAttributes* expected,
                    const GpxPoint::FormAttributes* actual) {
        static const GpxPoint::FormAttributes kNone;
        FormAttributes(name, expected ? *expected : kNone, actual ? *actual : kNone);
    }

    void FormAttributes(const char* name, const GpxPoint::FormAttributes& expected,
                        const GpxPoint::FormAttributes& actual) {
        Field(name, expected.size(), actual.size());
        if (expected.size() != actual.size())
            return;
        for (auto first = expected.begin(), second = actual.begin(); first != expected.end();
             ++first, ++second) {
            Within("form attribute " + Utf8(first->first), [&] {
                Field("map key", first->first, second->first);
                Held("record", first->second, second->second, &Comparison::FormRecord);
            });
        }
    }

    void FormRecord(const FormData& expected, const FormData& actual) {
        Field("key", expected.key, actual.key);
        Field("value", expected.value, actual.value);
        Field("modTime", expected.modTime, actual.modTime);
    }

    void Geocache(const GpxGroundspeakCache& expected, const GpxGroundspeakCache& actual) {
        Field("name", expected.name, actual.name);
        Field("owner", expected.owner, actual.owner);
        Field("type", expected.type, actual.type);
        Field("container", expected.container, actual.container);
        Field("difficulty", expected.difficulty, actual.difficulty);
        Field("terrain", expected.terrain, actual.terrain);
        Field("short_description", expected.short_description, actual.short_description);
        Field("long_description", expected.long_description, actual.long_description);
        Field("encoded_hints", expected.encoded_hints, actual.encoded_hints);
        List("log", expected.logs, actual.logs, &Comparison::Log);
        List("travelbug", expected.travelbugs, actual.travelbugs, &Comparison::TravelBug);
    }

    void Log(const GpxGroundspeakCacheLog& expected, const GpxGroundspeakCacheLog& actual) {
        Field("id", expected.id, actual.id);
        Field("date", expected.date, actual.date);
        Field("finder", expected.finder, actual.finder);
        Field("text", expected.text, actual.text);
        Field("type", expected.type, actual.type);
    }

    void TravelBug(const icu::UnicodeString& expected, const icu::UnicodeString& actual) {
        Field("name", expected, actual);
    }

    void Route(const GpxRoute& expected, const GpxRoute& actual) {
        Text("name", expected, actual, &GpxRoute::GetName);
        Text("source", expected, actual, &GpxRoute::GetSource);
        Text("type", expected, actual, &GpxRoute::GetType);
        Field("route type", RouteTypeOf(expected), RouteTypeOf(actual));
        List("point", std::pair(expected.GetPointIter(), expected.GetPointEndIter()),
             std::pair(actual.GetPointIter(), actual.GetPointEndIter()), &Comparison::Point);
    }

    void Track(const GpxTrack& expected, const GpxTrack& actual) {
        Text("name", expected, actual, &GpxTrack::GetName);
        Text("description", expected, actual, &GpxTrack::GetDescription);
        Text("source", expected, actual, &GpxTrack::GetSource);
        Text("type", expected, actual, &GpxTrack::GetType);
        Held("link", UrlOf(expected), UrlOf(actual), &Comparison::Url);
        Field("color", GpxModelAccess::GetColor(expected), GpxModelAccess::GetColor(actual));
        List("segment", std::pair(expected.GetSegmentIter(), expected.GetSegmentEndIter()),
             std::pair(actual.GetSegmentIter(), actual.GetSegmentEndIter()), &Comparison::Segment);
    }

    void Segment(const GpxTrack::Segment& expected, const GpxTrack::Segment& actual) {
        List("point", expected, actual, &Comparison::Point);
    }

    std::string where_;
};

} // namespace

std::vector<std::string> DifferencesOf(const GpxDocument& expected, const GpxDocument& actual) {
    Comparison comparison;
    comparison.Document(expected, actual);
    return std::move(comparison.differences);
}

testing::AssertionResult IsSameModel(const GpxDocument& expected, const GpxDocument& actual) {
    constexpr std::size_t kShown = 10;
    const std::vector<std::string> differences = DifferencesOf(expected, actual);
    if (differences.empty())
        return testing::AssertionSuccess();
    testing::AssertionResult result = testing::AssertionFailure() << differences.size() << " differences:";
    for (std::size_t i = 0; i < std::min(kShown, differences.size()); ++i)
        result << "\n  " << differences[i];
    return result;
}

} // namespace vexaTransferLib::testing_support
