// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vexaTransferLib::testing_support {

/// What the contract reports of every reader name.
inline constexpr char kParserSource[] = "LibCore/vexaTransferLib/GpxParser.cpp";

inline constexpr char kGpx10Uri[] = "http://www.topografix.com/GPX/1/0";
inline constexpr char kGpx11Uri[] = "http://www.topografix.com/GPX/1/1";
inline constexpr char kVendorUri[] = "https://tarvik.example/xmlschemas/gpx-extensions/1/0";
inline constexpr char kGeocache10Uri[] = "http://www.groundspeak.com/cache/1/0";
inline constexpr char kGeocache101Uri[] = "http://www.groundspeak.com/cache/1/0/1";

/// A GPX document around the children of its root. The prefixes `tarvik`, `groundspeak`, `groundspeak101` and
/// `other` are declared, `gpx10` and `gpx11` name the two standard namespaces.
std::string Gpx(const std::string& version, const std::string& defaultNamespace, const std::string& children);
std::string Gpx10(const std::string& children);
std::string Gpx11(const std::string& children);

/// `count` times the text.
std::string Repeat(const std::string& text, std::size_t count);

/// The text, whose characters are below U+0100, in units of that many bytes.
std::string Wide(const std::string& text, std::size_t width, bool isBigEndian);

} // namespace vexaTransferLib::testing_support
