// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxStandardWriter.h>

#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::testing_support {

inline const GpxVersion kGpx10(1, 0);
inline const GpxVersion kGpx11(1, 1);

/// The document that a parser reads completely from these bytes.
GpxDocument ReadCompletely(std::string_view bytes);

/// What a GpxStandardWriter writes, and what it reports as left out.
struct StandardText {
    StandardText(const GpxDocument& document, const GpxVersion& version);

    /// The reports, one a line: "waypoint 1: link: GPX 1.0 has a place for one link only."
    std::string Reports() const;

    std::string text;
    std::vector<GpxUnwritten> unwritten;
};

} // namespace vexaTransferLib::testing_support
