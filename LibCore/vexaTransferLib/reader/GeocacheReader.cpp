// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/GeocacheReader.h>

#include <vexaTransferLib/reader/ElementTable.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/NumberText.h>

#include <charconv>
#include <cstdint>
#include <string>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

// Cleaning this many code units takes about as long as reading a child.
constexpr std::uint64_t kUnitsCleanedAtOnce = 4;

bool ReadCleanText(ReadContext& context, const NodeView& node, icu::UnicodeString& text) {
    if (!ReadText(context, node, text))
        return false;
    context.Work(static_cast<std::uint64_t>(text.length()) / kUnitsCleanedAtOnce);
    context.CleanText(text);
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

void ReadLogId(ReadContext& context, const NodeView& node, GpxGroundspeakCacheLog& log) {
    std::string id;
    if (!ToNarrow(AttributeText(node, groundspeak::kId), id))
        return;
    log.id = text::ReadInt32(id.c_str());
    long long whole = 0;
    const char* const end = id.data() + id.size();
    if (std::from_chars(id.data(), end, whole).ptr != end || whole != log.id)
        context.reporter.Skip(node, kGpxUnreadable, "Its id is not a number.", true);
}

using Cache = GpxGroundspeakCache;

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
    element.owner.logs.push_back(std::move(log));
    return true;
}

constexpr ElementReader<Cache> kLogListReaders[] = {
    {groundspeak::kLog, nullptr, ReadLog},
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
        context.reporter.SkipForeign(child, "that of geocaches", true);
    else if (isRead)
        context.reporter.Skip(child, kGpxReplaced, "The geocache before it is the one that is read.", true);
}

} // namespace

bool ReadGeocacheFromExtensions(ReadContext& context, const NodeView& extensions,
                                GpxGroundspeakCache& cache) {
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
    }
    return found;
}

bool ReadGeocache(ReadContext& context, const NodeView& node, GpxGroundspeakCache& cache) {
    context.CountObject();
    cache.Clear();
    if (ReadElements(kCacheElements, context, node, cache))
        return true;
    if (!(cache.logs.empty() && cache.travelbugs.empty()))
        context.reporter.Skip(node, kGpxIncomplete,
                              "A geocache with nothing but logs and travel bugs is not kept.", true);
    return false;
}

bool ReadGeocacheLogs(ReadContext& context, const NodeView& logs, GpxGroundspeakCache& cache) {
    return ReadElements(kLogListElements, context, logs, cache);
}

bool ReadTravelBugs(ReadContext& context, const NodeView& travelBugs, GpxGroundspeakCache& cache) {
    return ReadElements(kTravelBugListElements, context, travelBugs, cache);
}

} // namespace vexaTransferLib::reader
