// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Set.h>

#include <vexagpx/editing/EditRun.h>
#include <vexagpx/process/Utf8.h>
#include <vexagpx/terminal/DisplayText.h>
#include <vexagpx/terminal/TimeValue.h>
#include <vexagpx/terminal/Units.h>

#include <vexaTrackLib/Corrections.h>
#include <vexaTransferLib/GpxMetadata.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <stdexcept>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

constexpr std::pair<std::string_view, GpxSensor> kSensors[] = {
    {"heartrate", GpxSensor::kHeartRate},
    {"cadence", GpxSensor::kCadence},
    {"temperature", GpxSensor::kTemperature},
    {"watertemperature", GpxSensor::kWaterTemperature},
    {"power", GpxSensor::kPower},
    {"speed", GpxSensor::kSpeed},
    {"course", GpxSensor::kCourse},
    {"depth", GpxSensor::kDepth}};

icu::UnicodeString Utf16(const std::string& text) {
    return icu::UnicodeString::fromUTF8(text);
}

/// Makes the changes one after another.
class Setting {
public:
    Setting(GpxDocument& document, ChangeList& changes) : document_(document), changes_(changes) {}

    void Run(const SetOptions& options) {
        SetHead(options);
        for (const auto& [from, to] : options.renames)
            Rename(from, to);
        for (const std::string& name : options.drops)
            Drop(name);
        if (options.shift)
            Shift(*options.shift);
        if (!options.strips.empty())
            Strip(options.strips);
    }

private:
    void SetHead(const SetOptions& options) {
        if (options.name)
            SetName(Utf16(*options.name));
        if (options.description)
            SetText("description", Metadata().GetDescription(), *options.description,
                    &GpxMetadataEditor::SetDescription);
        if (options.author || options.email)
            SetAuthor(options);
        if (options.time)
            SetTime(*options.time);
        if (options.keywords)
            SetText("keywords", Metadata().GetKeywords(), *options.keywords, &GpxMetadataEditor::SetKeywords);
    }
    GpxMetadata Metadata() const { return GpxMetadata(document_.GetElement()); }

    void SetName(const icu::UnicodeString& name) {
        icu::UnicodeString old;
        document_.GetName(old);
        if (name == old)
            return;
        if (name.isEmpty())
            document_.ClearName();
        else
            document_.SetName(name);
        AddHead("name", name);
    }
    void SetText(const std::string& what, const std::optional<icu::UnicodeString>& old,
                 const std::string& text, void (GpxMetadataEditor::*set)(const icu::UnicodeString&) const) {
        const icu::UnicodeString value = Utf16(text);
        if (value == old.value_or(icu::UnicodeString()))
            return;
        (document_.EditMetadata().*set)(value);
        AddHead(what, value);
    }
    // What is not given of the author stays.
    void SetAuthor(const SetOptions& options) {
        const GpxPerson old = Metadata().GetAuthor().value_or(GpxPerson());
        GpxPerson author = old;
        const auto set = [](std::optional<icu::UnicodeString>& part, const std::optional<std::string>& text) {
            if (text)
                part = text->empty() ? std::nullopt : std::optional(Utf16(*text));
        };
        set(author.name, options.author);
        set(author.email, options.email);
        if (author.name == old.name && author.email == old.email)
            return;
        if (author.name || author.email || author.link)
            document_.EditMetadata().SetAuthor(author);
        else
            document_.EditMetadata().ClearAuthor();
        icu::UnicodeString text = author.name.value_or(icu::UnicodeString());
        if (author.email)
            text += (text.isEmpty() ? u"<" : u" <") + *author.email + u">";
        AddHead("author", text);
    }
    void SetTime(const std::string& text) {
        const double time = ParseTime(text).value_or(0.0);
        double old = 0.0;
        const bool hasOld = document_.GetDocumentTime(old);
        if (text.empty() ? !hasOld : hasOld && old == time)
            return;
        if (text.empty())
            document_.ClearDocumentTime();
        else
            document_.SetDocumentTime(time);
        AddHead("time", Utf16(text));
    }
    void AddHead(const std::string& what, const icu::UnicodeString& value) {
        std::string text = "the " + what + " is removed";
        if (!value.isEmpty()) {
            text = "the " + what + (what == "keywords" ? " are now " : " is now ");
            Printable(value).toUTF8String(text);
        }
        changes_.Add({what, "document", 0, {}, text, {}, {{"value", Utf8(value)}}});
    }

    void Rename(const std::string& from, const std::string& to) {
        bool isFound = RenameIn("waypoint", document_.EditWaypoints(), from, to);
        isFound = RenameIn("route", document_.EditRoutes(), from, to) || isFound;
        isFound = RenameIn("track", document_.EditTracks(), from, to) || isFound;
        if (!isFound)
            throw std::runtime_error("There is no waypoint, route or track with the name " + from + ".");
    }
    template <class Objects>
    bool RenameIn(std::string_view object, const Objects& objects, const std::string& from,
                  const std::string& to) {
        const icu::UnicodeString old = Utf16(from);
        const icu::UnicodeString name = Utf16(to);
        bool isFound = false;
        std::size_t number = 0;
        for (auto& candidate : objects) {
            ++number;
            icu::UnicodeString text;
            if (!candidate.GetName(text) || text != old)
                continue;
            isFound = true;
            if (name == old)
                continue;
            candidate.SetName(name);
            std::string told = "renamed to ";
            changes_.Add({"renamed", object, number, old, Printable(name).toUTF8String(told), {}});
        }
        return isFound;
    }
    void Drop(const std::string& name) {
        const icu::UnicodeString wanted = Utf16(name);
        const std::size_t count = document_.EditWaypoints().RemoveIf([&](const GpxPoint& point) {
            icu::UnicodeString text;
            return point.GetName(text) && text == wanted;
        });
        if (count == 0)
            throw std::runtime_error("There is no waypoint with the name " + name + ".");
        changes_.Add({"removed",
                      "document",
                      0,
                      {},
                      Counted(count, "waypoint") + " removed with the name " + name,
                      {{"waypoints", static_cast<double>(count)}}});
    }
    void Shift(double seconds) {
        const std::size_t count = seconds == 0.0 ? 0 : vexaTrackLib::ShiftTimes(document_, seconds * 1000.0);
        if (count != 0)
            changes_.Add({"shifted",
                          "document",
                          0,
                          {},
                          Counted(count, "time") + " moved " + (seconds < 0.0 ? "back" : "on") + " by " +
                              ShiftText(std::abs(seconds)),
                          {{"times", static_cast<double>(count)}, {"seconds", seconds}}});
    }
    static std::string ShiftText(double seconds) {
        std::string text;
        return DurationText(seconds * 1000.0).toUTF8String(text);
    }
    void Strip(const std::vector<std::string>& words) {
        std::vector<GpxSensor> sensors;
        sensors.reserve(words.size());
        for (const std::string& word : words)
            sensors.push_back(FindSensor(word).value());
        const std::size_t count = vexaTrackLib::StripSensors(document_, sensors);
        if (count != 0)
            changes_.Add({"stripped",
                          "document",
                          0,
                          {},
                          Counted(count, "sensor value") + " removed",
                          {{"values", static_cast<double>(count)}}});
    }

    GpxDocument& document_;
    ChangeList& changes_;
};

} // namespace

std::optional<GpxSensor> FindSensor(std::string_view word) {
    const auto* const found = std::find_if(std::begin(kSensors), std::end(kSensors),
                                           [word](const auto& sensor) { return sensor.first == word; });
    return found != std::end(kSensors) ? std::optional(found->second) : std::nullopt;
}

std::optional<double> ParseShift(std::string_view text) {
    const bool isBack = text.starts_with('-');
    if (isBack || text.starts_with('+'))
        text.remove_prefix(1);
    const std::optional<double> seconds = ParseDuration(text);
    return seconds && isBack ? -*seconds : seconds;
}

bool Set(const SetOptions& options, Output& standardOutput) {
    const auto edit = [&options](GpxDocument& document, ChangeList& changes) {
        Setting(document, changes).Run(options);
    };
    return RunEdit(options.edit, edit, standardOutput);
}

} // namespace vexagpx
