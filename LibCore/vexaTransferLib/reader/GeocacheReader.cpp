// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/GeocacheReader.h>

#include <vexaTransferLib/reader/FailureIsolation.h>
#include <vexaTransferLib/reader/FieldSources.h>
#include <vexaTransferLib/reader/ToldValues.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/NumberText.h>

#include <charconv>
#include <cstdint>
#include <string>
#include <utility>

namespace vexaTransferLib::reader {

namespace {

template <class Record>
struct TextElement {
    const char16_t* name;
    icu::UnicodeString Record::*field;
};

constexpr TextElement<GpxGroundspeakCache> kCacheTexts[] = {
    {groundspeak::kName, &GpxGroundspeakCache::name},
    {groundspeak::kOwner, &GpxGroundspeakCache::owner},
    {groundspeak::kType, &GpxGroundspeakCache::type},
    {groundspeak::kContainer, &GpxGroundspeakCache::container},
    {groundspeak::kDifficulty, &GpxGroundspeakCache::difficulty},
    {groundspeak::kTerrain, &GpxGroundspeakCache::terrain},
    {groundspeak::kShortDescription, &GpxGroundspeakCache::short_description},
    {groundspeak::kLongDescription, &GpxGroundspeakCache::long_description},
    {groundspeak::kEncodedHints, &GpxGroundspeakCache::encoded_hints},
};

constexpr TextElement<GpxGroundspeakCacheLog> kLogTexts[] = {
    {groundspeak::kDate, &GpxGroundspeakCacheLog::date},
    {groundspeak::kFinder, &GpxGroundspeakCacheLog::finder},
    {groundspeak::kType, &GpxGroundspeakCacheLog::type},
    {groundspeak::kText, &GpxGroundspeakCacheLog::text},
};

// To clean so much text takes as long as to read a child.
constexpr std::uint64_t kUnitsCleanedAtOnce = 4;

bool ReadCleanText(ReadContext& context, const NodeView& node, icu::UnicodeString& text) {
    if (!ReadText(context, node, text))
        return false;
    context.Work(static_cast<std::uint64_t>(text.length()) / kUnitsCleanedAtOnce);
    context.CleanText(text);
    return true;
}

template <class Record, std::size_t Size>
const TextElement<Record>* FindText(const TextElement<Record> (&elements)[Size], const NodeView& child) {
    for (const TextElement<Record>& element : elements)
        if (Equals(child.LocalName(), element.name))
            return &element;
    return nullptr;
}

// True when the child is one of the record's texts and has one.
template <class Record, std::size_t Size>
bool ReadTextOf(ReadContext& context, FieldSources& sources, const NodeView& child,
                const TextElement<Record> (&elements)[Size], Record& record) {
    const TextElement<Record>* const element = FindText(elements, child);
    if (element == nullptr) {
        context.reporter.SkipUnknown(child);
        return false;
    }
    if (!ReadCleanText(context, child, record.*element->field))
        return false;
    sources.Set(element->name, child);
    return true;
}

template <class Read>
void ForEachGroundspeakChild(ReadContext& context, const NodeView& node, Read read) {
    ForEachNamedChild(context, node, [&](const NodeView& child) {
        if (IsGroundspeak(child))
            read(child);
        else
            context.reporter.SkipForeign(child, "that of geocaches", true);
    });
}

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

bool ReadLog(ReadContext& context, const NodeView& node, GpxGroundspeakCache& cache) {
    context.CountObject();
    GpxGroundspeakCacheLog log;
    ReadLogId(context, node, log);
    FieldSources sources(context.reporter, FieldSources::Lifetime::kLong);
    ForEachGroundspeakChild(
        context, node, [&](const NodeView& child) { ReadTextOf(context, sources, child, kLogTexts, log); });
    if (log.date.isEmpty() || log.finder.isEmpty() || log.text.isEmpty()) {
        context.reporter.Skip(node, kGpxIncomplete, "A log without date, finder or text is not kept.", true);
        return false;
    }
    cache.logs.push_back(std::move(log));
    return true;
}

bool ReadTravelBug(ReadContext& context, const NodeView& travelBug, GpxGroundspeakCache& cache) {
    bool found = false;
    ForEachGroundspeakChild(context, travelBug, [&](const NodeView& child) {
        icu::UnicodeString name;
        if (!Equals(child.LocalName(), groundspeak::kName)) {
            context.reporter.SkipUnknown(child);
        } else if (ReadCleanText(context, child, name)) {
            context.CountObject();
            cache.travelbugs.push_back(name);
            found = true;
        }
    });
    if (!found)
        context.reporter.Skip(travelBug, kGpxIncomplete, "A travel bug without a name is not kept.", true);
    return found;
}

// Unlike the rest of the extensions, only the first counts.
void TellOtherGeocache(ReadContext& context, const NodeView& child, bool isRead) {
    if (!IsGroundspeak(child))
        context.reporter.SkipForeign(child, "that of geocaches", true);
    else if (isRead)
        context.reporter.Skip(child, kGpxReplaced, "The geocache before it is the one that is read.", true);
}

} // namespace

bool IsGroundspeak(const NodeView& node) {
    if (!text::SoftCheck(!node.IsNull(), text::sites::kGroundspeakNode))
        return false;
    const char16_t* const uri = node.NamespaceUri();
    return Equals(uri, text::kGroundspeak10Namespace) || Equals(uri, text::kGroundspeak101Namespace);
}

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
            TellOtherGeocache(context, child, isRead);
            continue;
        }
        isRead = true;
        found = ReadGeocache(context, child, cache);
    }
    return found;
}

// Logs and travel bugs alone do not make a geocache.
bool ReadGeocache(ReadContext& context, const NodeView& node, GpxGroundspeakCache& cache) {
    context.CountObject();
    cache.Clear();
    bool found = false;
    FieldSources sources(context.reporter, FieldSources::Lifetime::kLong);
    ForEachGroundspeakChild(context, node, [&](const NodeView& child) {
        if (Equals(child.LocalName(), groundspeak::kLogs))
            ReadGeocacheLogs(context, child, cache);
        else if (Equals(child.LocalName(), groundspeak::kTravelbugs))
            ReadTravelBugs(context, child, cache);
        else if (ReadTextOf(context, sources, child, kCacheTexts, cache))
            found = true;
    });
    if (!found && !(cache.logs.empty() && cache.travelbugs.empty()))
        context.reporter.Skip(node, kGpxIncomplete,
                              "A geocache with nothing but logs and travel bugs is not kept.", true);
    return found;
}

bool ReadGeocacheLogs(ReadContext& context, const NodeView& logs, GpxGroundspeakCache& cache) {
    bool found = false;
    ForEachGroundspeakChild(context, logs, [&](const NodeView& child) {
        if (!Equals(child.LocalName(), groundspeak::kLog))
            context.reporter.SkipUnknown(child);
        else if (child.HasChildList())
            found = ReadLog(context, child, cache) || found;
    });
    return found;
}

bool ReadTravelBugs(ReadContext& context, const NodeView& travelBugs, GpxGroundspeakCache& cache) {
    bool found = false;
    ForEachGroundspeakChild(context, travelBugs, [&](const NodeView& child) {
        if (Equals(child.LocalName(), groundspeak::kTravelbug))
            found = ReadTravelBug(context, child, cache) || found;
        else
            context.reporter.SkipUnknown(child);
    });
    return found;
}

} // namespace vexaTransferLib::reader
