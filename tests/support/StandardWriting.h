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

inline constexpr char kGpx10Uri[] = "http://www.topografix.com/GPX/1/0";
inline constexpr char kGpx11Uri[] = "http://www.topografix.com/GPX/1/1";

/// \{
/// A file with something in its root, whose further attributes start with a blank.
std::string Gpx10(const std::string& content, const std::string& attributes = "");
std::string Gpx11(const std::string& content, const std::string& attributes = "");
/// \}
/// \{
/// A point at latitude 1, longitude 2, and a track with one.
std::string Waypoint(const std::string& content);
std::string TrackPoint(const std::string& content);
/// \}

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

/// What is between the root's tags, without line ends and the blanks after them.
std::string JoinedContent(const std::string& text);

} // namespace vexaTransferLib::testing_support
