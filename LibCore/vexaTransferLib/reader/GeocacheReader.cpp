// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/GeocacheReader.h>

#include <vexaTransferLib/reader/ChangedValues.h>
#include <vexaTransferLib/reader/ElementTable.h>
#include <vexaTransferLib/reader/UnreadAttributes.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/NumberText.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

// Cleaning this many code units takes about as long as reading a child.
constexpr std::uint64_t kUnitsCleanedAtOnce = 4;

bool ReadCleanText(ReadContext& context, const NodeView& node, icu::UnicodeString& text) {
    if (!ReadText(context, node, text))
        return false;
    context.Work(static_cast<std::uint64_t>(text.length()) / kUnitsCleanedAtOnce);
    if (!context.reporter.IsWanted()) {
        context.CleanText(text);
        return true;
    }
    const icu::UnicodeString before = text; // shares the units
    context.CleanText(text);
    ReportCleaned(context.reporter, node, before, text);
    return true;
}

template <auto field, class Owner>
bool ReadCleanTextInto(const Element<Owner>& element) {
    return ReadCleanText(element.context, element.node, element.owner.*field);
}

using Log = GpxGroundspeakCacheLog;
constexpr ElementReader<Log> kLogReaders[] = {
    {groundspeak::kDate, groundspeak::kDate, ReadCleanTextInto<&Log::date>},
    {groundspeak::kFinder, groundspeak::kFinder, ReadCleanTextInto<&Log::finder>},
    {groundspeak::kType, groundspeak::kType, ReadCleanTextInto<&Log::type>},
    {groundspeak::kText, groundspeak::kText, ReadCleanTextInto<&Log::text>},
};
constexpr ElementTable<Log> kLogElements = {Namespace::kGroundspeak, kLogReaders};

// Blanks around the number, a plus sign and leading zeros do not count.
bool IsKeptAs(std::string_view id, std::int32_t kept) {
    constexpr std::string_view kBlanks = " \t\n\v\f\r";
    id.remove_prefix(std::min(id.find_first_not_of(kBlanks), id.size()));
    id.remove_suffix(id.size() - std::min(id.find_last_not_of(kBlanks) + 1, id.size()));
    if (id.starts_with('+'))
        id.remove_prefix(1);
    std::int32_t whole = 0;
    const char* const end = id.data() + id.size();
    const std::from_chars_result result = std::from_chars(id.data(), end, whole);
    return result.ec == std::errc() && result.ptr == end && whole == kept;
}

void ReportLogId(SkipReporter& reporter, const NodeView& node, const std::string& id, std::int32_t kept) {
    const std::size_t first = id.find_first_not_of(" \t\n\v\f\r+-");
    const bool startsWithNumber = first != std::string::npos && id[first] >= '0' && id[first] <= '9';
    if (startsWithNumber)
        reporter.Report(node, kGpxChanged,
                        "Its id " + Quoted(node.Attribute(groundspeak::kId)) + " is kept as " +
                            std::to_string(kept) + ".",
                        true, "id");
    else
        reporter.Report(node, kGpxUnreadable, "Its id is not a number.", true, "id");
}

void ReadLogId(ReadContext& context, const NodeView& node, GpxGroundspeakCacheLog& log) {
    std::string id;
    if (!ToNarrow(AttributeText(node, groundspeak::kId), id))
        return;
    log.id = text::ReadInt32(id.c_str());
    if (context.reporter.IsWanted() && !IsKeptAs(id, log.id))
        ReportLogId(context.reporter, node, id, log.id);
}

using Cache = GpxGroundspeakCache;

constexpr const char16_t* kLogAttributes[] = {groundspeak::kId};

bool ReadLog(const Element<Cache>& element) {
    ReadContext& context = element.context;
    context.CountObject();
    Log log;
    ReadLogId(context, element.node, log);
    ReadElements(kLogElements, context, element.node, log);
    if (log.date.isEmpty() || log.finder.isEmpty() || log.text.isEmpty()) {
        context.reporter.Skip(element.node, kGpxIncomplete, "A log without date, finder or text is not kept.",
                              true);
        return false;
    }
    ReportUnreadAttributes(context.reporter, element.node, kLogAttributes);
    element.owner.logs.push_back(std::move(log));
    return true;
}

constexpr ElementReader<Cache> kLogListReaders[] = {
    {groundspeak::kLog, nullptr, ReadLog, Versions::kAll, Attributes::kOfReader},
};
constexpr ElementTable<Cache> kLogListElements = {Namespace::kGroundspeak, kLogListReaders};

bool ReadTravelBugName(const Element<Cache>& element) {
    icu::UnicodeString name;
    if (!ReadCleanText(element.context, element.node, name))
        return false;
    element.context.CountObject();
    element.owner.travelbugs.push_back(name);
    return true;
}

constexpr ElementReader<Cache> kTravelBugReaders[] = {
    {groundspeak::kName, nullptr, ReadTravelBugName},
};
constexpr ElementTable<Cache> kTravelBugElements = {Namespace::kGroundspeak, kTravelBugReaders};

bool ReadTravelBug(const Element<Cache>& element) {
    if (ReadElements(kTravelBugElements, element.context, element.node, element.owner))
        return true;
    element.context.reporter.Skip(element.node, kGpxIncomplete, "A travel bug without a name is not kept.",
                                  true);
    return false;
}

constexpr ElementReader<Cache> kTravelBugListReaders[] = {
    {groundspeak::kTravelbug, nullptr, ReadTravelBug},
};
constexpr ElementTable<Cache> kTravelBugListElements = {Namespace::kGroundspeak, kTravelBugListReaders};

// The two functions below return false, because logs and travel bugs alone do not make a geocache.

bool ReadLogList(const Element<Cache>& element) {
    ReadGeocacheLogs(element.context, element.node, element.owner);
    return false;
}

bool ReadTravelBugList(const Element<Cache>& element) {
    ReadTravelBugs(element.context, element.node, element.owner);
    return false;
}

constexpr ElementReader<Cache> kCacheReaders[] = {
    {groundspeak::kName, groundspeak::kName, ReadCleanTextInto<&Cache::name>},
    {groundspeak::kOwner, groundspeak::kOwner, ReadCleanTextInto<&Cache::owner>},
    {groundspeak::kType, groundspeak::kType, ReadCleanTextInto<&Cache::type>},
    {groundspeak::kContainer, groundspeak::kContainer, ReadCleanTextInto<&Cache::container>},
    {groundspeak::kDifficulty, groundspeak::kDifficulty, ReadCleanTextInto<&Cache::difficulty>},
    {groundspeak::kTerrain, groundspeak::kTerrain, ReadCleanTextInto<&Cache::terrain>},
    {groundspeak::kShortDescription, groundspeak::kShortDescription,
     ReadCleanTextInto<&Cache::short_description>},
    {groundspeak::kLongDescription, groundspeak::kLongDescription,
     ReadCleanTextInto<&Cache::long_description>},
    {groundspeak::kEncodedHints, groundspeak::kEncodedHints, ReadCleanTextInto<&Cache::encoded_hints>},
    {groundspeak::kLogs, nullptr, ReadLogList},
    {groundspeak::kTravelbugs, nullptr, ReadTravelBugList},
};
constexpr ElementTable<Cache> kCacheElements = {Namespace::kGroundspeak, kCacheReaders};

// Only the first geocache is read, unlike the other extensions, of which the last counts.
void ReportOtherGeocache(ReadContext& context, const NodeView& child, bool isRead) {
    if (!IsGroundspeak(child))
        context.reporter.SkipForeign(child, "that of geocaches");
    else if (isRead)
        context.reporter.SkipContent(child, kGpxReplaced, "The geocache before it is the one that is read.");
}

} // namespace

bool ReadGeocacheFromExtensions(ReadContext& context, const NodeView& extensions, GpxGroundspeakCache& cache,
                                NodeView* source) {
    bool isRead = false;
    bool found = false;
    ChildWalk children(extensions);
    for (NodeView child; children.Next(child);) {
        context.Work();
        if (!Equals(child.LocalName(), groundspeak::kCache))
            continue;
        if (isRead || !IsGroundspeak(child)) {
            ReportOtherGeocache(context, child, isRead);
            continue;
        }
        isRead = true;
        found = ReadGeocache(context, child, cache);
        if (source != nullptr)
            *source = child;
    }
    return found;
}

bool ReadGeocache(ReadContext& context, const NodeView& node, GpxGroundspeakCache& cache) {
    context.CountObject();
    cache.Clear();
    const bool isRead = ReadElements(kCacheElements, context, node, cache);
    if (!isRead && !(cache.logs.empty() && cache.travelbugs.empty()))
        context.reporter.Skip(node, kGpxIncomplete,
                              "A geocache with nothing but logs and travel bugs is not kept.", true);
    else
        ReportUnreadAttributes(context.reporter, node);
    return isRead;
}

bool ReadGeocacheLogs(ReadContext& context, const NodeView& logs, GpxGroundspeakCache& cache) {
    return ReadElements(kLogListElements, context, logs, cache);
}

bool ReadTravelBugs(ReadContext& context, const NodeView& travelBugs, GpxGroundspeakCache& cache) {
    return ReadElements(kTravelBugListElements, context, travelBugs, cache);
}

} // namespace vexaTransferLib::reader
