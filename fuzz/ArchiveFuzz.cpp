// SPDX-License-Identifier: MIT

// Reads the input as a ZIP archive, as a careful host would, and wants the documented results and exceptions only.

#include "MemoryFile.h"

#include <common/dbc.h>
#include <vexaTransferLib/ZIPFileReader.h>

#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

using vexaTransferLib::ZipFileReader;

constexpr int kEntries = 64;
constexpr int kBytesOfEntry = 1 << 20;

void ReadEntry(ZipFileReader& archive) {
    const icu::UnicodeString name = archive.GetCurrentFileName();
    const vexaTransferLib::ZipEntryInfo info = archive.GetCurrentFileInfo();
    if (name.length() > 1023 || static_cast<std::uint32_t>(name.length()) > info.nameLength)
        std::abort();
    archive.OpenCurrentFile();
    char buffer[4096];
    int total = 0;
    for (int count = 1; count > 0 && total < kBytesOfEntry; total += count) {
        count = archive.ReadFromCurrentFile(buffer, sizeof buffer);
        if (count > static_cast<int>(sizeof buffer))
            std::abort();
    }
    archive.CloseCurrentFile();
}

void ReadArchive(const icu::UnicodeString& path) {
    ZipFileReader archive(path);
    int entries = 0;
    for (bool found = archive.GoToFirstFile(); found && entries < kEntries; found = archive.GoToNextFile()) {
        ++entries;
        try {
            ReadEntry(archive);
        } catch (const dbc::precondition_error&) { // the next one may be read all the same
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const MemoryFile file(bytes, size);
    try {
        ReadArchive(icu::UnicodeString::fromUTF8(file.Path()));
    } catch (const dbc::precondition_error&) { // no archive
    }
    return 0;
}
