// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/commands/LinkJson.h>

#include <vexaTransferLib/GpxMetadata.h>

namespace vexagpx {

/// Writes the member "author" of the current object.
inline void WriteAuthor(JsonWriter& json, const vexaTransferLib::GpxPerson& author) {
    json.Key("author");
    json.BeginObject();
    MemberIfAny(json, "name", author.name);
    MemberIfAny(json, "email", author.email);
    if (author.link) {
        json.Key("link");
        WriteLink(json, *author.link);
    }
    json.EndObject();
}

} // namespace vexagpx
