// SPDX-License-Identifier: MIT
#pragma once

#include "support/TestFiles.h"

#include <vexaTransferLib/GpxDocument.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

namespace vexaTransferLib::testing_support {

/// A file in a folder of its own; both exist as long as this object.
class GpxFile {
public:
    explicit GpxFile(const std::string& bytes, const std::string& name = "walk.gpx");

    icu::UnicodeString Path() const;
    std::string NarrowPath() const;

private:
    TemporaryFolder folder_;
    std::string name_;
};

/// The document that a new parser reads from a file "walk.gpx" with these bytes.
GpxDocument ReadGpx(const std::string& bytes);

/// "One or more errors encountered while parsing the GPX file: " and the path.
std::string ParseErrorsMessage(const std::string& path);

/// The files below a folder whose names end with ".gpx" and that have at most the given length, in the order of their
/// paths.
std::vector<std::filesystem::path>
GpxFilesBelow(const std::filesystem::path& folder,
              std::uintmax_t longest = std::numeric_limits<std::uintmax_t>::max());

} // namespace vexaTransferLib::testing_support
