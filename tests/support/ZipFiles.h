// SPDX-License-Identifier: MIT
#pragma once

#include "support/TestFiles.h"

#include <vexaTransferLib/ZIPFileReader.h>

#include <unicode/unistr.h>

#include <cstddef>
#include <filesystem>
#include <string>

namespace vexaTransferLib::testing_support {

icu::UnicodeString AsPath(const std::filesystem::path& path);

/// The bytes as a file, which can be replaced.
class ArchiveFile {
public:
    explicit ArchiveFile(const std::string& bytes, const std::string& name = "archive.zip")
        : path_(folder_ / name) {
        Write(bytes);
    }
    void Write(const std::string& bytes) { WriteBytes(path_, bytes); }
    icu::UnicodeString Path() const { return AsPath(path_); }

private:
    TemporaryFolder folder_;
    std::filesystem::path path_;
};

/// How one entry was read.
struct EntryRead {
    std::string bytes;
    int end = -102;      ///< the result of the last read
    std::string failure; ///< of opening or closing it

    bool IsFlagged() const { return end < 0 || !failure.empty(); }
};

/// Opens, reads and closes the current entry; stops early when there are `limit` bytes.
EntryRead ReadEntry(ZipFileReader& reader, std::size_t limit = std::string::npos);

/// The given number of lines, all different.
std::string Lines(int count);

/// The number of open descriptors of this process.
std::size_t OpenDescriptors();

} // namespace vexaTransferLib::testing_support
