// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTrackLib/comparing/Pairing.h>
#include <vexaTrackLib/content/ObjectHash.h>
#include <vexaTransferLib/GpxPoint.h>

#include <optional>
#include <string>

namespace vexaTrackLib::comparing {

/// By all that a point has.
inline Key ContentKey(const vexaTransferLib::GpxPoint& point) {
    content::Hasher hasher;
    content::AddPoint(point, hasher);
    return Key::Of(hasher);
}

inline Key PlaceKey(const vexaTransferLib::GpxPoint& point) {
    double latitude = 0.0;
    double longitude = 0.0;
    point.GetPoint(latitude, longitude);
    content::Hasher hasher;
    hasher.Add(latitude);
    hasher.Add(longitude);
    return Key::Of(hasher);
}

/// Nothing for a point without a time.
inline std::optional<Key> TimeKey(const vexaTransferLib::GpxPoint& point) {
    double time = 0.0;
    if (!point.GetTime(time))
        return std::nullopt;
    content::Hasher hasher;
    hasher.Add(time);
    return Key::Of(hasher);
}

/// Nothing for an object without a name.
template <class Object>
std::optional<Key> NameKey(const Object& object) {
    icu::UnicodeString name;
    if (!object.GetName(name))
        return std::nullopt;
    std::string utf8;
    content::Hasher hasher;
    hasher.Add(std::string_view(name.toUTF8String(utf8)));
    return Key::Of(hasher);
}

} // namespace vexaTrackLib::comparing
