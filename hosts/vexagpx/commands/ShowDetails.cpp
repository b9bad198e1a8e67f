// SPDX-License-Identifier: MIT
#include <vexagpx/commands/ShowDetails.h>

#include <vexagpx/terminal/DisplayText.h>

#include <vexaTransferLib/GpxCacheDetails.h>
#include <vexaTransferLib/GpxMetadata.h>
#include <vexaTransferLib/GpxPathDetails.h>
#include <vexaTransferLib/GpxPointDetails.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

using Text = std::optional<icu::UnicodeString>;

constexpr std::size_t kMostLinks = 5;

void AddPart(icu::UnicodeString& note, const icu::UnicodeString& part) {
    note += (note.isEmpty() ? u"" : u", ") + part;
}

/// \param label what the text is; empty when it says that itself
void AddText(icu::UnicodeString& note, const char16_t* label, const Text& text) {
    if (text && !Printable(*text).trim().isEmpty())
        AddPart(note, label + Printable(*text));
}

icu::UnicodeString NameOf(const GpxPerson& person) {
    icu::UnicodeString name;
    AddText(name, u"", person.name);
    AddText(name, u"", person.email);
    if (person.link)
        AddText(name, u"", person.link->href);
    return name;
}

void AddLine(std::vector<icu::UnicodeString>& lines, const char16_t* label, const Text& text) {
    if (text && !Printable(*text).trim().isEmpty())
        lines.push_back(label + Printable(*text));
}

void AddLinks(std::vector<icu::UnicodeString>& lines, const std::vector<GpxLink>& links) {
    for (std::size_t i = 0; i < std::min(links.size(), kMostLinks); ++i) {
        icu::UnicodeString link = links[i].href;
        if (!links[i].text.isEmpty())
            link += u" (" + links[i].text + u")";
        AddLine(lines, i == 0 ? u"  Links      " : u"             ", link);
    }
    if (links.size() > kMostLinks)
        lines.push_back(u"             \u2026 and " + NumberText(links.size() - kMostLinks) + u" more");
}

} // namespace

std::vector<icu::UnicodeString> HeadLines(const GpxDocument& document) {
    std::vector<icu::UnicodeString> lines;
    if (!document.GetElement())
        return lines;
    const GpxMetadata metadata(document.GetElement());
    if (const std::optional<GpxPerson> author = metadata.GetAuthor())
        AddLine(lines, u"  Author     ", NameOf(*author));
    AddLine(lines, u"  About      ", metadata.GetDescription());
    AddLine(lines, u"  Keywords   ", metadata.GetKeywords());
    AddLinks(lines, metadata.GetLinks());
    return lines;
}

icu::UnicodeString PathNote(const GpxElement& path) {
    icu::UnicodeString note;
    if (!path)
        return note;
    const GpxPathDetails details(path);
    if (const std::optional<std::uint64_t> number = details.GetNumber())
        AddPart(note, u"number " + NumberText(*number));
    AddText(note, u"type ", details.GetType());
    AddText(note, u"comment: ", details.GetComment());
    return note;
}

icu::UnicodeString GeocacheNote(const GpxElement& waypoint) {
    icu::UnicodeString note;
    const GpxElement element = waypoint ? GpxCacheDetails::FindCache(waypoint) : GpxElement();
    if (!element)
        return note;
    const GpxCacheDetails cache(element);
    if (cache.IsArchived() == std::optional(true))
        AddPart(note, u"archived");
    else if (cache.IsAvailable() == std::optional(false))
        AddPart(note, u"not available");
    AddText(note, u"", cache.GetState());
    AddText(note, u"", cache.GetCountry());
    return note;
}

void SensorStatistics::Range::Add(const std::optional<double>& value) {
    if (!value || !std::isfinite(*value))
        return;
    lowest = std::min(lowest, *value);
    highest = std::max(highest, *value);
    sum += *value;
    ++count;
}

void SensorStatistics::Add(const GpxPoint& point) {
    const GpxElement element = point.GetElement();
    if (!element)
        return;
    const GpxSensors sensors = GpxPointDetails(element).GetSensors();
    ranges_[0].Add(sensors.heartRate);
    ranges_[1].Add(sensors.cadence);
    ranges_[2].Add(sensors.power);
    ranges_[3].Add(sensors.temperature);
}

std::vector<icu::UnicodeString> SensorStatistics::Notes() const {
    struct Sensor {
        const char16_t* name;
        const char16_t* unit;
    };
    constexpr std::array<Sensor, 4> kSensors = {{{u"heart rate ", u" bpm"},
                                                 {u"cadence ", u" rpm"},
                                                 {u"power ", u" W"},
                                                 {u"temperature ", u" \u00B0C"}}};
    const auto rounded = [](double value) {
        std::string digits = std::to_string(std::round(value));
        digits.erase(digits.find('.'));
        return icu::UnicodeString::fromUTF8(digits == "-0" ? "0" : digits);
    };
    constexpr std::size_t kSensorsOfLine = 2;
    std::vector<icu::UnicodeString> notes;
    std::size_t shown = 0;
    for (std::size_t i = 0; i < ranges_.size(); ++i) {
        const Range& range = ranges_[i];
        if (range.count == 0)
            continue;
        const icu::UnicodeString extremes = range.lowest == range.highest
                                                ? rounded(range.lowest)
                                                : rounded(range.lowest) + u" to " + rounded(range.highest);
        const icu::UnicodeString mean = rounded(range.Mean());
        if (shown++ % kSensorsOfLine == 0)
            notes.emplace_back();
        AddPart(notes.back(),
                kSensors[i].name + extremes +
                    (range.lowest == range.highest ? icu::UnicodeString() : u" (mean " + mean + u")") +
                    kSensors[i].unit);
    }
    return notes;
}

} // namespace vexagpx
