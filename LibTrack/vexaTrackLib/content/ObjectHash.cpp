// SPDX-License-Identifier: MIT
#include <vexaTrackLib/content/ObjectHash.h>

#include <vexaTrackLib/content/ElementHash.h>

#include <cstdint>
#include <string>

namespace vexaTrackLib::content {

using namespace vexaTransferLib;

namespace {

/// The elements of an object.
class Fields {
public:
    void Add(const GpxElement& child);
    /// The same, but of a geocache without its logs.
    void AddWithoutLogs(const GpxElement& child);
    void AddLinks(const GpxElement& object);
    void AddText(std::string_view name, const icu::UnicodeString& text);

    template <class Object>
    void AddText(std::string_view name, const Object& object,
                 bool (Object::*get)(icu::UnicodeString&) const) {
        icu::UnicodeString text;
        if ((object.*get)(text))
            AddText(name, text);
    }

    void AddTo(Hasher& hasher) const { sum_.AddTo(hasher); }

private:
    void AddOne(const GpxElement& element);
    void AddOneWithoutLogs(const GpxElement& element);

    UnorderedSum sum_;
    bool hasLink_ = false;
};

void Fields::Add(const GpxElement& child) {
    const std::string_view name = child.GetName();
    if (name == "link" || name == "url" || name == "urlname") {
        hasLink_ = true;
    } else if (name == "extensions") {
        for (const GpxElement& inner : child.GetChildren())
            AddOne(inner);
    } else {
        AddOne(child);
    }
}

void Fields::AddWithoutLogs(const GpxElement& child) {
    if (child.GetName() == "extensions")
        for (const GpxElement& inner : child.GetChildren())
            AddOneWithoutLogs(inner);
    else if (child.GetName() == "cache")
        AddOneWithoutLogs(child);
    else
        Add(child);
}

void Fields::AddOneWithoutLogs(const GpxElement& element) {
    if (element.GetName() != "cache") {
        AddOne(element);
        return;
    }
    Hasher item;
    item.Add(std::string_view("cache"));
    UnorderedSum attributes;
    for (const GpxAttribute& attribute : element.GetAttributes()) {
        Hasher one;
        std::string utf8;
        AddTextElement(attribute.name, attribute.value.toUTF8String(utf8), one);
        attributes.Add(one);
    }
    attributes.AddTo(item);
    AddFields(element, "logs", item);
    sum_.Add(item);
}

void Fields::AddOne(const GpxElement& element) {
    Hasher item;
    if (AddElement(element.GetXml(), item))
        sum_.Add(item);
}

void Fields::AddLinks(const GpxElement& object) {
    if (!hasLink_)
        return;
    Hasher links;
    content::AddLinks(object, links);
    sum_.Add(links);
}

void Fields::AddText(std::string_view name, const icu::UnicodeString& text) {
    Hasher item;
    std::string utf8;
    if (AddTextElement(name, text.toUTF8String(utf8), item))
        sum_.Add(item);
}

void AddElements(const GpxElement& object, std::string_view part, Fields& fields) {
    for (const GpxElement& child : object.GetChildren())
        if (child.GetName() != part)
            fields.Add(child);
    fields.AddLinks(object);
}

/// A value and whether there is one.
void AddNumber(bool isPresent, double number, Hasher& hasher) {
    hasher.Add(std::uint64_t{isPresent ? 1U : 0U});
    if (isPresent)
        hasher.Add(number);
}

/// What a point has beside position, height and time.
void AddPointFields(const GpxPoint& point, Fields& fields, void (Fields::*add)(const GpxElement&)) {
    const GpxElement element = point.GetElement();
    for (const GpxElement& child : element.GetChildren())
        if (child.GetName() != "ele" && child.GetName() != "time")
            (fields.*add)(child);
    fields.AddLinks(element);
    if (element)
        return;
    fields.AddText("name", point, &GpxPoint::GetName);
    fields.AddText("cmt", point, &GpxPoint::GetComment);
    fields.AddText("desc", point, &GpxPoint::GetDescription);
    fields.AddText("src", point, &GpxPoint::GetSource);
    fields.AddText("sym", point, &GpxPoint::GetSymbol);
    fields.AddText("type", point, &GpxPoint::GetType);
}

void AddPoint(const GpxPoint& point, Hasher& hasher, void (Fields::*add)(const GpxElement&)) {
    double latitude = 0.0;
    double longitude = 0.0;
    double value = 0.0;
    point.GetPoint(latitude, longitude);
    hasher.Add(latitude);
    hasher.Add(longitude);
    const bool hasElevation = point.GetElevation(value);
    AddNumber(hasElevation, value, hasher);
    const bool hasTime = point.GetTime(value);
    AddNumber(hasTime, value, hasher);
    Fields fields;
    AddPointFields(point, fields, add);
    fields.AddTo(hasher);
}

} // namespace

void AddPoint(const GpxPoint& point, Hasher& hasher) {
    AddPoint(point, hasher, &Fields::Add);
}

void AddPointWithoutLogs(const GpxPoint& point, Hasher& hasher) {
    AddPoint(point, hasher, &Fields::AddWithoutLogs);
}

void AddRoute(const GpxRoute& route, Hasher& hasher) {
    Fields fields;
    AddElements(route.GetElement(), "rtept", fields);
    if (!route.GetElement()) {
        fields.AddText("name", route, &GpxRoute::GetName);
        fields.AddText("src", route, &GpxRoute::GetSource);
        fields.AddText("type", route, &GpxRoute::GetType);
    }
    fields.AddTo(hasher);
    hasher.Add(std::uint64_t{route.GetPointCount()});
}

void AddTrack(const GpxTrack& track, Hasher& hasher) {
    Fields fields;
    AddElements(track.GetElement(), "trkseg", fields);
    if (!track.GetElement()) {
        fields.AddText("name", track, &GpxTrack::GetName);
        fields.AddText("desc", track, &GpxTrack::GetDescription);
        fields.AddText("src", track, &GpxTrack::GetSource);
        fields.AddText("type", track, &GpxTrack::GetType);
    }
    fields.AddTo(hasher);
}

void AddFields(const GpxElement& object, std::string_view part, Hasher& hasher) {
    Fields fields;
    AddElements(object, part, fields);
    fields.AddTo(hasher);
}

} // namespace vexaTrackLib::content
