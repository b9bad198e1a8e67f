// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Geocache.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <set>

namespace vexaTrackLib {

using vexaTransferLib::GpxCacheDetails;
using vexaTransferLib::GpxCacheLogDetails;
using vexaTransferLib::GpxElement;

std::vector<GeocacheDescription> Geocache::GetDescriptions() const {
    std::vector<GeocacheDescription> descriptions;
    if (elements.empty())
        return descriptions;
    const GpxCacheDetails details(elements.front());
    const auto add = [&](const std::optional<icu::UnicodeString>& text, const std::optional<bool>& isHtml) {
        if (text && !text->isEmpty())
            descriptions.push_back({*text, isHtml.value_or(false)});
    };
    add(details.GetShortDescription(), details.IsShortDescriptionHtml());
    add(details.GetLongDescription(), details.IsLongDescriptionHtml());
    return descriptions;
}

std::vector<GpxCacheLogDetails> Geocache::GetLogs() const {
    std::vector<GpxCacheLogDetails> logs;
    std::set<std::int64_t> known;
    for (const GpxElement& element : elements)
        for (GpxCacheLogDetails& log : GpxCacheDetails(element).GetLogs())
            if (!log.id || known.insert(*log.id).second)
                logs.push_back(std::move(log));
    const auto timeOf = [](const GpxCacheLogDetails& log) {
        return log.time.value_or(-std::numeric_limits<double>::infinity());
    };
    std::stable_sort(logs.begin(), logs.end(),
                     [&](const GpxCacheLogDetails& left, const GpxCacheLogDetails& right) {
                         return timeOf(left) > timeOf(right);
                     });
    return logs;
}

bool SaysFound(const icu::UnicodeString& logType) {
    static const char16_t* const kTypes[] = {u"found it", u"attended", u"webcam photo taken"};
    icu::UnicodeString type(logType);
    type.trim().foldCase();
    return std::any_of(std::begin(kTypes), std::end(kTypes),
                       [&](const char16_t* found) { return type == found; });
}

} // namespace vexaTrackLib
