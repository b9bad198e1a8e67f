// SPDX-License-Identifier: MIT
#include <vexagpx/output/HiddenFields.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/text/GpxNames.h>

#include <cstddef>
#include <utility>

namespace vexagpx {

using namespace vexaTransferLib;

icu::UnicodeString DocumentName(const GpxDocument& document) {
    return GpxModelAccess::GetName(document);
}

const GISMetaData* GisMetaDataOf(const GpxDocument& document) {
    return GpxModelAccess::GetGISMetaData(document).get();
}

const AnnotateMetaData* AnnotateMetaDataOf(const GpxDocument& document) {
    return GpxModelAccess::GetAnnotateMetaData(document).get();
}

const GPXStats* StatsOf(const GpxDocument& document) {
    return GpxModelAccess::GetStats(document).get();
}

const std::vector<GpxElement>& FieldsOf(const GpxDocument& document) {
    return GpxModelAccess::GetFields(document);
}

const std::vector<GpxElement>& FieldsOf(const GpxRoute& route) {
    return GpxModelAccess::GetFields(route);
}

const std::vector<GpxElement>& FieldsOf(const GpxTrack& track) {
    return GpxModelAccess::GetFields(track);
}

std::vector<GpxElement> SegmentFieldsOf(const GpxTrack& track) {
    std::vector<GpxElement> fields;
    for (std::size_t i = 0; i < track.GetSegmentCount(); ++i) {
        const std::vector<GpxElement>& ofSegment = GpxModelAccess::GetSegmentFields(track, i);
        fields.insert(fields.end(), ofSegment.begin(), ofSegment.end());
    }
    return fields;
}

std::optional<std::int32_t> ColorOf(const GpxTrack& track) {
    const std::int32_t color = GpxModelAccess::GetColor(track);
    return color < 0 ? std::nullopt : std::optional(color);
}

std::string_view NameOf(TarvikRouteType type) {
    return text::kRouteTypeTexts.at(type);
}

namespace {

// Whether a value that the model has is one that a point has for the tool.
template <class Value>
bool IsPresent(const Value&) {
    return true;
}

bool IsPresent(std::int32_t number) {
    return number > 0;
}

bool IsPresent(const GpxPoint::FormAttributes& attributes) {
    return !attributes.empty();
}

// What the tool makes of such a value.
double ValueOf(double number) {
    return number;
}

std::int32_t ValueOf(std::int32_t number) {
    return number;
}

std::string_view ValueOf(GpxFix fix) {
    return text::kFixTexts.at(fix);
}

std::string_view ValueOf(TarvikRoutePointType type) {
    return text::kRoutePointTypeTexts.at(type);
}

template <class Value>
const Value* ValueOf(const Value& value) {
    return &value;
}

} // namespace

void ForEachField(const GpxPoint& point,
                  const std::function<void(std::string_view, const PointValue&)>& visit) {
    GpxModelAccess::ForEachPointField([&](const char* name, auto get) {
        const auto value = get(point);
        if (value && IsPresent(*value))
            visit(name, ValueOf(*value));
    });
}

namespace {

/// Looks at the raw texts in the order in which they are written. The name of a field is composed only when its text
/// is the wanted one.
class RawTextSearch {
public:
    using IsWanted = std::function<bool(const icu::UnicodeString&, RawText::Context)>;

    explicit RawTextSearch(const IsWanted& isWanted) : isWanted_(isWanted) {}

    bool IsFound() const { return found_.has_value(); }

    void Look(const std::string& field, const icu::UnicodeString& text) {
        Look(text, RawText::Context::kElement, [&field] { return field; });
    }

    /// \param owner what contains the points: " of route 2"
    template <class Iterator>
    void LookAtPoints(const std::string& kind, const std::string& owner, Iterator begin, Iterator end) {
        std::size_t number = 0;
        for (Iterator point = begin; point != end && !IsFound(); ++point) {
            ++number;
            if (!point->ContainsExtensions())
                continue;
            const auto Named = [&](std::string field) {
                return field.append(kind).append(" ").append(std::to_string(number)).append(owner);
            };
            for (const auto& attribute : GpxModelAccess::GetFormAttributes(*point))
                Look(attribute.first, RawText::Context::kAttribute, [&] { return Named("form key of "); });
            Look(GpxModelAccess::GetGUID(*point), RawText::Context::kElement,
                 [&] { return Named("GUID of "); });
        }
    }

    std::optional<RawText> TakeFound() { return std::move(found_); }

private:
    template <class ComposeName>
    void Look(const icu::UnicodeString& text, RawText::Context context, ComposeName composeName) {
        if (!IsFound() && !text.isEmpty() && isWanted_(text, context))
            found_ = RawText{composeName(), text, context};
    }

    const IsWanted& isWanted_;
    std::optional<RawText> found_;
};

void LookAtTracks(RawTextSearch& search, const GpxDocument& document) {
    std::size_t trackNumber = 0;
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track) {
        const std::string owner = " of track " + std::to_string(++trackNumber);
        std::size_t segmentNumber = 0;
        for (auto segment = track->GetSegmentIter(); segment != track->GetSegmentEndIter(); ++segment)
            search.LookAtPoints("point", " of segment " + std::to_string(++segmentNumber) + owner,
                                segment->begin(), segment->end());
    }
}

void LookAtMetaData(RawTextSearch& search, const GpxDocument& document) {
    if (const GISMetaData* record = GisMetaDataOf(document)) {
        search.Look("layer name", record->layerName);
        search.Look("layer key", record->layerKey);
        search.Look("form", record->form);
    }
    if (const AnnotateMetaData* record = AnnotateMetaDataOf(document)) {
        search.Look("track GUID", record->trackGUID);
        search.Look("waypoint GUID", record->waypointGUID);
    }
}

void LookAtRoutes(RawTextSearch& search, const GpxDocument& document) {
    std::size_t number = 0;
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route)
        search.LookAtPoints("point", " of route " + std::to_string(++number), route->GetPointIter(),
                            route->GetPointEndIter());
}

} // namespace

std::optional<RawText> FindRawText(const GpxDocument& document, const GpxVersion& version,
                                   const RawTextSearch::IsWanted& isWanted) {
    RawTextSearch search(isWanted);
    LookAtMetaData(search, document);
    if (!version.IsGpx10()) {
        search.LookAtPoints("waypoint", "", document.GetWaypointIter(), document.GetWaypointEndIter());
        LookAtRoutes(search, document);
        LookAtTracks(search, document);
    }
    return search.TakeFound();
}

} // namespace vexagpx
