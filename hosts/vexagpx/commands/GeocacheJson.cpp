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
    WriteTravelBugs(cache.travelbugs);
}

void GeocacheJson::WriteLogs(const GpxGroundspeakCache& cache) {
    if (cache.logs.empty())
        return;
    // A completely read geocache has all logs of its element, in their order.
    std::vector<GpxCacheLogDetails> details;
    if (cache.element)
        details = GpxCacheDetails(cache.element).GetLogs();
    json_.Key("logs");
    json_.BeginArray();
    for (std::size_t i = 0; i < cache.logs.size(); ++i)
        WriteLog(cache.logs[i], i < details.size() ? &details[i] : nullptr);
    json_.EndArray();
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
    MemberIfAny(json_, "time", log.time);
    MemberIfAny(json_, "finder_id", log.finderId);
    MemberIfAny(json_, "encoded", log.isEncoded);
    MemberIfAny(json_, "latitude", log.latitude);
    MemberIfAny(json_, "longitude", log.longitude);
}

void GeocacheJson::WriteTravelBugs(const std::vector<icu::UnicodeString>& names) {
    if (names.empty())
        return;
    json_.Key("travelbugs");
    json_.BeginArray();
    for (const icu::UnicodeString& name : names)
        json_.String(name);
    json_.EndArray();
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
        WriteAttributes(cache.GetAttributes());
    if (HasChild("short_description"))
        MemberIfAny(json_, "short_description_html", cache.IsShortDescriptionHtml());
    if (HasChild("long_description"))
        MemberIfAny(json_, "long_description_html", cache.IsLongDescriptionHtml());
    if (HasChild("personal_note"))
        MemberIfAny(json_, "personal_note", cache.GetPersonalNote());
    if (HasChild("favorite_points"))
        MemberIfAny(json_, "favorite_points", cache.GetFavoritePoints());
    if (HasChild("travelbugs"))
        WriteTravelBugDetails(cache.GetTravelBugs());
}

void GeocacheJson::WriteAttributes(const std::vector<GpxCacheAttribute>& attributes) {
    if (attributes.empty())
        return;
    json_.Key("attributes");
    json_.BeginArray();
    for (const GpxCacheAttribute& attribute : attributes) {
        json_.BeginObject();
        MemberIfAny(json_, "id", attribute.id);
        MemberIfAny(json_, "included", attribute.isIncluded);
        MemberIfAny(json_, "name", attribute.name);
        json_.EndObject();
    }
    json_.EndArray();
}

void GeocacheJson::WriteTravelBugDetails(const std::vector<GpxTravelBug>& bugs) {
    if (bugs.empty())
        return;
    json_.Key("travelbug_details");
    json_.BeginArray();
    for (const GpxTravelBug& bug : bugs) {
        json_.BeginObject();
        MemberIfAny(json_, "id", bug.id);
        MemberIfAny(json_, "reference", bug.reference);
        MemberIfAny(json_, "name", bug.name);
        json_.EndObject();
    }
    json_.EndArray();
}

} // namespace vexagpx
