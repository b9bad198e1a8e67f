// SPDX-License-Identifier: MIT
#include <vexagpx/commands/GeocacheJson.h>

#include <vexagpx/commands/ElementJson.h>
#include <vexagpx/output/OptionalMembers.h>

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

/// What the model or the details of a geocache have.
constexpr std::string_view kKnown[] = {"name",
                                       "placed_by",
                                       "owner",
                                       "type",
                                       "container",
                                       "attributes",
                                       "difficulty",
                                       "terrain",
                                       "country",
                                       "state",
                                       "logs",
                                       "short_description",
                                       "long_description",
                                       "encoded_hints",
                                       "travelbugs",
                                       "personal_note",
                                       "favorite_points"};

bool IsKnown(std::string_view name) {
    return std::find(std::begin(kKnown), std::end(kKnown), name) != std::end(kKnown);
}

/// The children that neither the model nor the details have.
std::vector<GpxElement> UnknownChildren(const GpxElement& cache) {
    std::vector<GpxElement> unknown;
    const std::string_view nameSpace = cache.GetNamespace();
    for (const GpxElement& child : cache.GetChildren())
        if (!IsKnown(child.GetName()) || child.GetNamespace() != nameSpace)
            unknown.push_back(child);
    return unknown;
}

} // namespace

void GeocacheJson::Write(const GpxGroundspeakCache& cache) {
    children_.clear();
    for (const GpxElement& child : cache.element.GetChildren())
        children_.push_back(child.GetName());
    json_.BeginObject();
    WriteModel(cache);
    if (cache.element) {
        WriteDetails(GpxCacheDetails(cache.element));
        ElementJson(json_).Write("extensions", UnknownChildren(cache.element));
    }
    json_.EndObject();
}

bool GeocacheJson::HasChild(std::string_view name) const {
    return std::find(children_.begin(), children_.end(), name) != children_.end();
}

void GeocacheJson::WriteModel(const GpxGroundspeakCache& cache) {
    MemberIfAny(json_, "name", cache.name);
    MemberIfAny(json_, "owner", cache.owner);
    MemberIfAny(json_, "type", cache.type);
    MemberIfAny(json_, "container", cache.container);
    MemberIfAny(json_, "difficulty", cache.difficulty);
    MemberIfAny(json_, "terrain", cache.terrain);
    MemberIfAny(json_, "short_description", cache.short_description);
    MemberIfAny(json_, "long_description", cache.long_description);
    MemberIfAny(json_, "encoded_hints", cache.encoded_hints);
    WriteLogs(cache);
    ArrayIfAny(json_, "travelbugs", cache.travelbugs,
               [this](const icu::UnicodeString& name) { json_.String(name); });
}

void GeocacheJson::WriteLogs(const GpxGroundspeakCache& cache) {
    if (cache.logs.empty())
        return;
    // A completely read geocache has all logs of its element, in their order.
    std::vector<GpxCacheLogDetails> details;
    if (cache.element)
        details = GpxCacheDetails(cache.element).GetLogs();
    std::size_t index = 0;
    ArrayIfAny(json_, "logs", cache.logs, [&](const GpxGroundspeakCacheLog& log) {
        WriteLog(log, index < details.size() ? &details[index] : nullptr);
        ++index;
    });
}

void GeocacheJson::WriteLog(const GpxGroundspeakCacheLog& log, const GpxCacheLogDetails* details) {
    json_.BeginObject();
    if (details != nullptr && details->id)
        json_.Member("id", *details->id);
    else if (log.id != 0)
        json_.Member("id", log.id);
    MemberIfAny(json_, "date", log.date);
    MemberIfAny(json_, "finder", log.finder);
    MemberIfAny(json_, "text", log.text);
    MemberIfAny(json_, "type", log.type);
    if (details != nullptr)
        WriteLogDetails(*details);
    json_.EndObject();
}

void GeocacheJson::WriteLogDetails(const GpxCacheLogDetails& log) {
    TimeMember(json_, "time", log.time);
    MemberIfAny(json_, "finder_id", log.finderId);
    MemberIfAny(json_, "encoded", log.isEncoded);
    MemberIfAny(json_, "latitude", log.latitude);
    MemberIfAny(json_, "longitude", log.longitude);
}

void GeocacheJson::WriteDetails(const GpxCacheDetails& cache) {
    MemberIfAny(json_, "id", cache.GetId());
    MemberIfAny(json_, "available", cache.IsAvailable());
    MemberIfAny(json_, "archived", cache.IsArchived());
    MemberIfAny(json_, "members_only", cache.IsForMembersOnly());
    MemberIfAny(json_, "custom_coordinates", cache.HasCustomCoordinates());
    // Each call reads the geocache up to what it finds, and a geocache has long texts.
    if (HasChild("placed_by"))
        MemberIfAny(json_, "placed_by", cache.GetPlacedBy());
    if (HasChild("owner"))
        MemberIfAny(json_, "owner_id", cache.GetOwnerId());
    if (HasChild("country"))
        MemberIfAny(json_, "country", cache.GetCountry());
    if (HasChild("state"))
        MemberIfAny(json_, "state", cache.GetState());
    if (HasChild("attributes"))
        ArrayIfAny(json_, "attributes", cache.GetAttributes(),
                   [this](const GpxCacheAttribute& attribute) { WriteAttribute(attribute); });
    if (HasChild("short_description"))
        MemberIfAny(json_, "short_description_html", cache.IsShortDescriptionHtml());
    if (HasChild("long_description"))
        MemberIfAny(json_, "long_description_html", cache.IsLongDescriptionHtml());
    if (HasChild("personal_note"))
        MemberIfAny(json_, "personal_note", cache.GetPersonalNote());
    if (HasChild("favorite_points"))
        MemberIfAny(json_, "favorite_points", cache.GetFavoritePoints());
    if (HasChild("travelbugs"))
        ArrayIfAny(json_, "travelbug_details", cache.GetTravelBugs(),
                   [this](const GpxTravelBug& bug) { WriteTravelBug(bug); });
}

void GeocacheJson::WriteAttribute(const GpxCacheAttribute& attribute) {
    json_.BeginObject();
    MemberIfAny(json_, "id", attribute.id);
    MemberIfAny(json_, "included", attribute.isIncluded);
    MemberIfAny(json_, "name", attribute.name);
    json_.EndObject();
}

void GeocacheJson::WriteTravelBug(const GpxTravelBug& bug) {
    json_.BeginObject();
    MemberIfAny(json_, "id", bug.id);
    MemberIfAny(json_, "reference", bug.reference);
    MemberIfAny(json_, "name", bug.name);
    json_.EndObject();
}

} // namespace vexagpx
