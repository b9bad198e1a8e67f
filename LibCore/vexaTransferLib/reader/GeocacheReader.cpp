// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/GeocacheReader.h>

#include <vexaTransferLib/reader/ChildGuard.h>
#include <vexaTransferLib/reader/ValueReaders.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/NumberText.h>

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
    {u"name", &GpxGroundspeakCache::name},
    {u"owner", &GpxGroundspeakCache::owner},
    {u"type", &GpxGroundspeakCache::type},
    {u"container", &GpxGroundspeakCache::container},
    {u"difficulty", &GpxGroundspeakCache::difficulty},
    {u"terrain", &GpxGroundspeakCache::terrain},
    {u"short_description", &GpxGroundspeakCache::short_description},
    {u"long_description", &GpxGroundspeakCache::long_description},
    {u"encoded_hints", &GpxGroundspeakCache::encoded_hints},
};

constexpr TextElement<GpxGroundspeakCacheLog> kLogTexts[] = {
    {u"date", &GpxGroundspeakCacheLog::date},
    {u"finder", &GpxGroundspeakCacheLog::finder},
    {u"type", &GpxGroundspeakCacheLog::type},
    {u"text", &GpxGroundspeakCacheLog::text},
};

bool ReadCleanText(ReadContext& context, const NodeView& node, icu::UnicodeString& text) {
    if (!ReadText(node, text))
        return false;
    context.CleanText(text);
    return true;
}

// True when the child is one of the record's texts and has one.
template <class Record, std::size_t Size>
bool ReadTextOf(ReadContext& context, const NodeView& child, const TextElement<Record> (&elements)[Size],
                Record& record) {
    for (const TextElement<Record>& element : elements)
        if (Equals(child.LocalName(), element.name))
            return ReadCleanText(context, child, record.*element.field);
    return false;
}

template <class Read>
void ForEachGroundspeakChild(const NodeView& node, Read read) {
    ForEachNamedChild(node, [&](const NodeView& child) {
        if (IsGroundspeak(child))
            read(child);
    });
}

bool ReadLog(ReadContext& context, const NodeView& node, GpxGroundspeakCache& cache) {
    GpxGroundspeakCacheLog log;
    std::string id;
    if (ToNarrow(AttributeText(node, u"id"), id))
        log.id = text::ReadInt32(id.c_str());
    ForEachGroundspeakChild(node, [&](const NodeView& child) { ReadTextOf(context, child, kLogTexts, log); });
    if (log.date.isEmpty() || log.finder.isEmpty() || log.text.isEmpty())
        return false;
    cache.logs.push_back(std::move(log));
    return true;
}

} // namespace

bool IsGroundspeak(const NodeView& node) {
    if (!dbc::SoftCheck(!node.IsNull(), text::kGpxParserSource))
        return false;
    const char16_t* const uri = node.NamespaceUri();
    return Equals(uri, text::kGroundspeak10Namespace) || Equals(uri, text::kGroundspeak101Namespace);
}

bool ReadGeocacheFromExtensions(ReadContext& context, const NodeView& extensions,
                                GpxGroundspeakCache& cache) {
    ChildWalk children(extensions);
    for (NodeView child; children.Next(child);)
        if (Equals(child.LocalName(), u"cache") && IsGroundspeak(child))
            return ReadGeocache(context, child, cache);
    return false;
}

// Logs and travel bugs alone do not make a geocache.
bool ReadGeocache(ReadContext& context, const NodeView& node, GpxGroundspeakCache& cache) {
    cache.Clear();
    bool found = false;
    ForEachGroundspeakChild(node, [&](const NodeView& child) {
        if (Equals(child.LocalName(), u"logs"))
            ReadGeocacheLogs(context, child, cache);
        else if (Equals(child.LocalName(), u"travelbugs"))
            ReadTravelBugs(context, child, cache);
        else if (ReadTextOf(context, child, kCacheTexts, cache))
            found = true;
    });
    return found;
}

bool ReadGeocacheLogs(ReadContext& context, const NodeView& logs, GpxGroundspeakCache& cache) {
    bool found = false;
    ForEachGroundspeakChild(logs, [&](const NodeView& child) {
        if (Equals(child.LocalName(), u"log") && child.HasChildList())
            found = ReadLog(context, child, cache) || found;
    });
    return found;
}

bool ReadTravelBugs(ReadContext& context, const NodeView& travelBugs, GpxGroundspeakCache& cache) {
    bool found = false;
    ForEachGroundspeakChild(travelBugs, [&](const NodeView& travelBug) {
        if (!Equals(travelBug.LocalName(), u"travelbug"))
            return;
        ForEachGroundspeakChild(travelBug, [&](const NodeView& child) {
            icu::UnicodeString name;
            if (Equals(child.LocalName(), u"name") && ReadCleanText(context, child, name)) {
                cache.travelbugs.push_back(name);
                found = true;
            }
        });
    });
    return found;
}

} // namespace vexaTransferLib::reader
