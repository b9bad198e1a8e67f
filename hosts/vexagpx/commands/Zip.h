// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/Archive.h>
#include <vexagpx/process/Output.h>

#include <string>

namespace vexagpx {

// The `zip` commands. Each returns false after a failure, which has been reported on standard error.

/// What all of them take.
struct ZipOptions {
    std::string archive;
    ArchiveLimits limits;
};

struct ZipListOptions : ZipOptions {
    bool json = false; ///< prints a line of JSON for each entry, with all that the archive states about it
};

/// Prints the names of the entries, a line each.
bool ZipList(const ZipListOptions& options, Output& out);

struct ZipCatOptions : ZipOptions {
    std::string entry; ///< as ZipList prints its name
};

/// Prints the content of the first entry of this name.
bool ZipCat(const ZipCatOptions& options, Output& out);

/// Reads every entry to its end and says which ones are bad.
bool ZipTest(const ZipOptions& options, Output& out);

struct ZipExtractOptions : ZipOptions {
    std::string folder; ///< created when it does not exist
    bool overwrite = false;
};

/// Writes the entries to files below a folder. An entry whose file would be outside the folder is refused. Existing
/// files are kept unless `overwrite` is set. A failure of one entry does not stop the others.
bool ZipExtract(const ZipExtractOptions& options, Output& out);

} // namespace vexagpx
