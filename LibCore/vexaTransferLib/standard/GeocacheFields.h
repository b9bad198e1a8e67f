// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxGroundspeakCache.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <unicode/unistr.h>

namespace vexaTransferLib::standard {

/// An element with a text of a geocache or a log, and the model's member for it.
template <class Owner>
struct GeocacheField {
    const text::ElementName& name;
    icu::UnicodeString Owner::*field;
};

// In the order of the schema.
inline constexpr GeocacheField<GpxGroundspeakCache> kCacheFields[] = {
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
inline constexpr GeocacheField<GpxGroundspeakCacheLog> kLogFields[] = {
    {groundspeak::kDate, &GpxGroundspeakCacheLog::date},
    {groundspeak::kType, &GpxGroundspeakCacheLog::type},
    {groundspeak::kFinder, &GpxGroundspeakCacheLog::finder},
    {groundspeak::kText, &GpxGroundspeakCacheLog::text},
};

} // namespace vexaTransferLib::standard
