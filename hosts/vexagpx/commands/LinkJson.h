// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/output/OptionalMembers.h>

#include <vexaTransferLib/GpxLink.h>

#include <vector>

namespace vexagpx {

/// An object with the members that the dump gives every link.
inline void WriteLink(JsonWriter& json, const vexaTransferLib::GpxLink& link) {
    json.BeginObject();
    MemberIfAny(json, "url", link.href);
    MemberIfAny(json, "text", link.text);
    MemberIfAny(json, "type", link.type);
    json.EndObject();
}

/// The member "links" of the current object, with all of them; no links give no member.
inline void WriteLinks(JsonWriter& json, const std::vector<vexaTransferLib::GpxLink>& links) {
    ArrayIfAny(json, "links", links,
               [&json](const vexaTransferLib::GpxLink& link) { WriteLink(json, link); });
}

} // namespace vexagpx
