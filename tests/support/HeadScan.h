// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxTarvikExtParser.h>

#include <string>

namespace vexaTransferLib::testing_support {

/// The source that the contract reports of the scanner name.
inline constexpr char kScannerSource[] = "LibCore/vexaTransferLib/GpxTarvikExtParser.cpp";

/// A GPX 1.1 document: the elements among the extensions of its metadata, then a waypoint.
std::string WithExtensions(const std::string& elements);

/// Everything that the last scan found: "layer KEY|NAME|FORM|1; guids TRACK|WAYPOINT; stats 0 0 0 0 -1; time
/// 0". A record that is null is left out; the kilometres are shown by their bits, in hexadecimal.
std::string FoundBy(const GpxTarvikExtParser& scanner);

void ScanFile(GpxTarvikExtParser& scanner, const std::string& path);
void ScanBytes(GpxTarvikExtParser& scanner, const std::string& bytes);

/// Everything in a head that is there, and its end: "root gpx; version 1.1; creator C; name N; desc D; time 0; author
/// A <E>; bounds 1 2 3 4; metadata; end object". Of an error only the place: "error 1:2".
std::string Shown(const GpxHead& head);
/// The head that scanners find in these bytes, shown; fails the test when a trusted and an untrusted scan of the
/// bytes, and a scan of a file with them, do not find the same.
std::string HeadOf(const std::string& bytes);

/// The results that new scanners find in a file with these bytes; fails the test when a scan of the bytes in
/// memory finds others.
std::string Scan(const std::string& bytes);

} // namespace vexaTransferLib::testing_support
