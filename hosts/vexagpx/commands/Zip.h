// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/Archive.h>
#include <vexagpx/process/Output.h>

#include <string>

namespace vexagpx {

// The `zip` commands. Each is false after a failure, which has been told on standard error.

/// The names of the entries, a line each.
bool ZipList(const std::string& archive, const ArchiveLimits& limits, Output& out);

/// The content of the first entry that ZipList prints so.
bool ZipCat(const std::string& archive, const std::string& entry, const ArchiveLimits& limits, Output& out);

/// Reads every entry to its end and tells which ones are bad.
bool ZipTest(const std::string& archive, const ArchiveLimits& limits, Output& out);

/// Writes the entries below a folder, which is made when it is not there. An entry that would come to lie
/// elsewhere is refused, and what is there is kept unless `overwrite`; the other entries are written all the
/// same.
bool ZipExtract(const std::string& archive, const std::string& folder, bool overwrite,
                const ArchiveLimits& limits, Output& out);

} // namespace vexagpx
