// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/JsonWriter.h>

namespace vexagpx {

/// Writes the member "bounds" of the current object.
/// \param bounds those of a head or of a document
template <class Bounds>
void WriteBounds(JsonWriter& json, const Bounds& bounds) {
    json.Key("bounds");
    json.BeginObject();
    json.Member("minLatitude", bounds.minLatitude);
    json.Member("minLongitude", bounds.minLongitude);
    json.Member("maxLatitude", bounds.maxLatitude);
    json.Member("maxLongitude", bounds.maxLongitude);
    json.EndObject();
}

} // namespace vexagpx
