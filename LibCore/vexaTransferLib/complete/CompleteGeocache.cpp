// SPDX-License-Identifier: MIT
#include <vexaTransferLib/complete/CompleteReaders.h>

#include <vexaTransferLib/model/ElementText.h>
#include <vexaTransferLib/model/SourceValues.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vexaTransferLib::complete {

namespace {

using Cache = GpxGroundspeakCache;
using Log = GpxGroundspeakCacheLog;

template <class Owner>
struct TextReader {
    std::string_view name;
    icu::UnicodeString Owner::*field;
};

constexpr TextReader<Cache> kCacheReaders[] = {
    {groundspeak::kName.Local(), &Cache::name},
    {groundspeak::kOwner.Local(), &Cache::owner},
    {groundspeak::kType.Local(), &Cache::type},
    {groundspeak::kContainer.Local(), &Cache::container},
    {groundspeak::kDifficulty.Local(), &Cache::difficulty},
    {groundspeak::kTerrain.Local(), &Cache::terrain},
    {groundspeak::kShortDescription.Local(), &Cache::short_description},
    {groundspeak::kLongDescription.Local(), &Cache::long_description},
    {groundspeak::kEncodedHints.Local(), &Cache::encoded_hints},
};

constexpr TextReader<Log> kLogReaders[] = {
    {groundspeak::kDate.Local(), &Log::date},
    {groundspeak::kType.Local(), &Log::type},
    {groundspeak::kFinder.Local(), &Log::finder},
    {groundspeak::kText.Local(), &Log::text},
};

template <class Owner, std::size_t size>
const char* ReadTexts(CompleteContext& context, const TextReader<Owner> (&readers)[size],
                      const ScannedChild& child, Owner& owner) {
    for (const TextReader<Owner>& reader : readers)
        if (child.name == reader.name)
            return context.ReadText(child, owner.*reader.field);
    return nullptr;
}

bool IsGroundspeak(const ScannedChild& child) {
    return child.kind == NamespaceKind::kGroundspeak;
}

void ReadLogId(CompleteContext& context, const ScannedChild& element, Log& log) {
    std::string_view rest = element.tag.attributes;
    for (ScannedAttribute attribute; ScanAttribute(rest, attribute);) {
        if (attribute.name != groundspeak::kId)
            continue;
        std::string id;
        DecodedValue(attribute.value).toUTF8String(id);
        const std::optional<std::int32_t> number = PlainIntegerIn(id);
        log.id = number.value_or(0);
        if (!number)
            context.ReportUnread(element, "Its id is not a number that the model can have.");
    }
}

} // namespace

const char* ReadLog(CompleteContext& context, const ScannedChild& element, Cache& cache) {
    context.Host().CountObject();
    Log log;
    log.element = context.ElementOf(element);
    ReadLogId(context, element, log);
    const char* const end = context.ForEach(element, [&](const ScannedChild& child) {
        return IsGroundspeak(child) ? ReadTexts(context, kLogReaders, child, log) : nullptr;
    });
    cache.logs.push_back(std::move(log));
    return end;
}

namespace {

const char* ReadTravelBug(CompleteContext& context, const ScannedChild& element, Cache& cache) {
    context.Host().CountObject();
    icu::UnicodeString name;
    const char* const end = context.ForEach(element, [&](const ScannedChild& child) {
        return child.Is(NamespaceKind::kGroundspeak, groundspeak::kName.Local())
                   ? context.ReadText(child, name)
                   : nullptr;
    });
    if (!name.isEmpty())
        cache.travelbugs.push_back(std::move(name));
    return end;
}

// Reads a list such as `logs`.
template <class Read>
const char* ReadList(CompleteContext& context, const ScannedChild& list, std::string_view name, Read read,
                     Cache& cache) {
    return context.ForEach(list, [&](const ScannedChild& child) {
        return child.Is(NamespaceKind::kGroundspeak, name) ? read(context, child, cache) : nullptr;
    });
}

} // namespace

const char* ReadGeocache(CompleteContext& context, const ScannedChild& element, GpxGroundspeakCache& cache) {
    context.Host().CountObject();
    cache.element = context.ElementOf(element);
    return context.ForEach(element, [&](const ScannedChild& child) -> const char* {
        if (!IsGroundspeak(child))
            return nullptr;
        if (child.name == groundspeak::kLogs.Local())
            return ReadList(context, child, groundspeak::kLog.Local(), ReadLog, cache);
        if (child.name == groundspeak::kTravelbugs.Local())
            return ReadList(context, child, groundspeak::kTravelbug.Local(), ReadTravelBug, cache);
        return ReadTexts(context, kCacheReaders, child, cache);
    });
}

} // namespace vexaTransferLib::complete
