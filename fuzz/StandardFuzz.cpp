// SPDX-License-Identifier: MIT

// Reads the input completely and writes it by the published schemas. Stops when the result cannot be read, has other
// objects, or is not the same when it is written again.

#include "DocumentType.h"
#include "Stop.h"
#include "support/StandardWriting.h"

#include <vexaTransferLib/GpxError.h>

#include <xercesc/util/PlatformUtils.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace {

using namespace vexaTransferLib;
using namespace vexaTransferLib::testing_support;

std::optional<GpxDocument> TryToRead(std::string_view text) {
    try {
        return ReadCompletely(text);
    } catch (const GpxReadError&) {
        return std::nullopt;
    }
}

// How many points there are in each waypoint list, route and segment.
std::string CountsOf(const GpxDocument& document) {
    std::string counts = std::to_string(document.GetWaypointCount());
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route)
        counts += " r" + std::to_string(route->GetPointCount());
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track) {
        counts += " t";
        for (auto segment = track->GetSegmentIter(); segment != track->GetSegmentEndIter(); ++segment)
            counts += "," + std::to_string(track->GetPointCount(segment));
    }
    return counts;
}

void Check(const GpxDocument& document, const GpxVersion& version) {
    const std::string written = StandardText(document, version).text;
    const std::optional<GpxDocument> read = TryToRead(written);
    if (!read)
        StopBecause("cannot be read:\n" + written);
    if (CountsOf(*read) != CountsOf(document))
        StopBecause(CountsOf(document) + " became " + CountsOf(*read) + "\n" + written);
    if (StandardText(document, version).text != written)
        StopBecause("is not the same the second time:\n" + written);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    xercesc::XMLPlatformUtils::Initialize();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(bytes), size);
    if (HasDocumentType(text))
        return -1;
    if (const std::optional<GpxDocument> document = TryToRead(text)) {
        Check(*document, kGpx10);
        Check(*document, kGpx11);
    }
    return 0;
}
