// SPDX-License-Identifier: MIT
#include "support/ZipFiles.h"

#include <common/dbc.h>

#include <array>
#include <iterator>

namespace vexaTransferLib::testing_support {

icu::UnicodeString AsPath(const std::filesystem::path& path) {
    return icu::UnicodeString::fromUTF8(path.string());
}

EntryRead ReadEntry(ZipFileReader& reader, std::size_t limit) {
    EntryRead read;
    try {
        reader.OpenCurrentFile();
        std::array<char, 4096> buffer;
        while (read.bytes.size() < limit &&
               (read.end = reader.ReadFromCurrentFile(buffer.data(), buffer.size())) > 0)
            read.bytes.append(buffer.data(), static_cast<std::size_t>(read.end));
        reader.CloseCurrentFile();
    } catch (const dbc::precondition_error& error) {
        read.failure = error.what();
    }
    return read;
}

std::string Lines(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "line " + std::to_string(i * 7919) + "\r\n";
    return text;
}

std::size_t OpenDescriptors() {
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                                                  std::filesystem::directory_iterator()));
}

} // namespace vexaTransferLib::testing_support
