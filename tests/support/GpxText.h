// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vexaTransferLib::testing_support {

/// The source that the contract reports of all readers name.
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

/// The text repeated `count` times.
std::string Repeat(const std::string& text, std::size_t count);

/// The text, whose characters must be below U+0100, in code units of the given number of bytes.
std::string Wide(const std::string& text, std::size_t width, bool isBigEndian);

} // namespace vexaTransferLib::testing_support
