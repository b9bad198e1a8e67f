// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxElement.h>

#include <functional>
#include <string_view>

namespace vexagpx {

/// A value in a document, in a form in which GPX 1.0 and 1.1 do not differ. Valid during the call that receives it.
struct ContentFact {
    /// In the terms of GPX 1.1: "gpx/trk[1]/trkseg[2]/trkpt[17]/ele", "gpx/metadata/author/name". Objects are counted
    /// from 1; the address is part of the path of what a link has: "gpx/wpt[3]/link(http://example.com/)/text".
    std::string_view path;
    std::string_view value; ///< numbers and times in their normal form, any other text exactly
    std::string_view shown; ///< the value as the file has it
    const vexaTransferLib::GpxElement& element; ///< that has the value or the attribute
};

/// What the root of the extensions of metadata is taken for: GPX 1.0 has no metadata, so they are written into the
/// document.
enum class ContentForm { kGpx10, kGpx11 };

/// Calls `take` with everything that the elements of a document have which was read completely, whatever was set in the
/// document since. Left out are the creator, the version and the schema location of the root, comments and layout.
/// Elements that could not be read are not counted with those that could. The time is proportional to the source: what
/// is more than 32 levels deep is one fact.
void ForEachFact(const vexaTransferLib::GpxDocument& document, ContentForm form,
                 const std::function<void(const ContentFact&)>& take);

} // namespace vexagpx
