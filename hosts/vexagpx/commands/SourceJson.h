// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/DocumentReading.h>
#include <vexagpx/output/JsonWriter.h>

namespace vexagpx {

/// Writes the members "entry", if there is one, and "file" of the current object.
inline void WriteSource(JsonWriter& json, const DocumentSource& source) {
    if (source.entry != nullptr)
        json.Member("entry", *source.entry);
    json.Member("file", source.file);
}

} // namespace vexagpx
