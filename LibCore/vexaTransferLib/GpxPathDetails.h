// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What the file has for a route or a track.

#include <common/Export.h>
#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxObjectDetails.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <optional>

namespace vexaTransferLib {

/// The values of a `rte` or `trk` element of GPX 1.0 and 1.1 and of the vendor's extension, read on demand.
/// Everything but its points. What GpxObjectDetails says of values, costs and threads holds here too.
///
///     const GpxPathDetails details(track.GetElement());
///     if (const auto number = details.GetNumber())
///         std::cout << "track " << *number << '\n';
class VEXATRANSFERLIB_API GpxPathDetails : public GpxObjectDetails {
public:
    /// Of a `rte` or `trk`, whose name is not checked.
    using GpxObjectDetails::GpxObjectDetails;

    /// The number of the route or track in its device. Empty when it is no whole number, or negative.
    std::optional<std::uint64_t> GetNumber() const;

    /// The vendor's number of a colour as the file has it, which GpxTrack reduces to 16 bits. Empty when 32 bits do
    /// not hold it. The last one counts.
    std::optional<std::int32_t> GetColor() const;
    /// The vendor's kind of route: "points", "directions", or whatever the file has there. The last one counts.
    std::optional<icu::UnicodeString> GetRouteType() const;
};

} // namespace vexaTransferLib
