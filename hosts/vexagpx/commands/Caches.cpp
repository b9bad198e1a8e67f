// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Caches.h>

#include <vexagpx/caches/CacheCsv.h>
#include <vexagpx/caches/CacheJson.h>
#include <vexagpx/caches/CacheText.h>
#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/terminal/Units.h>

#include <vexaTrackLib/GeocacheFilter.h>
#include <vexaTrackLib/GeocacheKey.h>
#include <vexaTrackLib/GeocacheList.h>

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

namespace vexagpx {

using namespace vexaTrackLib;

namespace {

/// What the options keep, in their order.
std::vector<Geocache> Selected(const CachesOptions& options, std::vector<Geocache> caches) {
    GeocacheFilter filter;
    for (const std::string& condition : options.conditions)
        filter.Add(GeocacheFilter::Parse(condition));
    const std::optional<double> within = ParseLength(options.within);
    caches.erase(std::remove_if(caches.begin(), caches.end(),
                                [&](const Geocache& cache) {
                                    return !filter.Accepts(cache) || (within && cache.metres > *within);
                                }),
                 caches.end());
    if (!options.order.empty())
        std::stable_sort(caches.begin(), caches.end(), GeocacheOrder::Parse(options.order));
    else if (!options.near.empty())
        std::stable_sort(caches.begin(), caches.end(), GeocacheOrder(GeocacheKey::kDistance));
    return caches;
}

} // namespace

std::optional<GeocachePlace> ParsePlace(const std::string& text) {
    const std::size_t comma = text.find(',');
    if (comma == std::string::npos)
        return std::nullopt;
    const std::optional<double> latitude = ParseDegrees(std::string_view(text).substr(0, comma), 90.0);
    const std::optional<double> longitude = ParseDegrees(std::string_view(text).substr(comma + 1), 180.0);
    if (!latitude || !longitude)
        return std::nullopt;
    return GeocachePlace{*latitude, *longitude};
}

bool Caches(const CachesOptions& options, Output& out) {
    const std::optional<GeocachePlace> origin = ParsePlace(options.near);
    const auto list = origin ? std::make_unique<GeocacheList>(*origin) : std::make_unique<GeocacheList>();
    const bool isComplete = ReadDocuments(
        options.files, options.rules,
        [&](const DocumentSource&, vexaTransferLib::GpxDocument& document) { list->Add(document); });
    std::vector<Geocache> all = list->Finish();
    const std::size_t count = all.size();
    const std::vector<Geocache> caches = Selected(options, std::move(all));
    const CacheDetailsWanted details{options.logs, options.hint, options.text, origin.has_value()};
    if (options.json)
        WriteCachesJson(caches, list->GetOrphans(), details, out);
    else if (options.csv)
        WriteCachesCsv(caches, list->GetOrphans().size(), details, out);
    else
        WriteCachesText({caches, list->GetOrphans(), count, list->GetOtherCount()}, details, out);
    return isComplete;
}

} // namespace vexagpx
