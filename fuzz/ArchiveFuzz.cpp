// SPDX-License-Identifier: MIT

// Reads the input as a ZIP archive, as a careful host would, and accepts only the documented results and
// exceptions.

#include "MemoryFile.h"

#include <common/dbc.h>
#include <vexaTransferLib/ZIPFileReader.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using vexaTransferLib::ZipFileReader;

constexpr int kEntries = 64;
constexpr std::uint64_t kBytesOfEntry = 1 << 20;

/// The header that the range includes has been read, so it lies within the file.
void CheckRange(ZipFileReader& archive, std::uint64_t fileSize) {
    constexpr std::uint64_t kLocalHeader = 30;
    const vexaTransferLib::ZipEntryRange range = archive.GetCurrentFileRange();
    if (range.begin + kLocalHeader > fileSize || range.end < range.begin + kLocalHeader)
        std::abort();
}

void ReadEntry(ZipFileReader& archive, std::uint64_t fileSize) {
    const icu::UnicodeString name = archive.GetCurrentFileName();
    const vexaTransferLib::ZipEntryInfo info = archive.GetCurrentFileInfo();
    if (name.length() > 1023 || static_cast<std::uint32_t>(name.length()) > info.nameLength)
        std::abort();
    CheckRange(archive, fileSize);
    archive.OpenCurrentFile();
    char buffer[4096];
    std::uint64_t total = 0;
    int count = 1;
    for (; count > 0 && total < kBytesOfEntry; total += static_cast<std::uint64_t>(std::max(count, 0))) {
        count = archive.ReadFromCurrentFile(buffer, sizeof buffer);
        if (count > static_cast<int>(sizeof buffer))
            std::abort();
    }
    archive.CloseCurrentFile();
    // An entry that was read to its end and closed without an error is complete.
    if (count == 0 && total != info.size)
        std::abort();
}

void ReadArchive(const std::string& path, std::uint64_t fileSize) {
    ZipFileReader archive = ZipFileReader::OpenFile(path);
    int entries = 0;
    for (bool found = archive.GoToFirstFile(); found && entries < kEntries; found = archive.GoToNextFile()) {
        ++entries;
        try {
            ReadEntry(archive, fileSize);
        } catch (const dbc::precondition_error&) { // the next one may still be readable
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const MemoryFile file(bytes, size);
    try {
        ReadArchive(file.Path(), size);
    } catch (const dbc::precondition_error&) { // no archive
    }
    return 0;
}
