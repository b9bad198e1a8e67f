// SPDX-License-Identifier: MIT
#include "support/GpxFiles.h"

#include <vexaTransferLib/GpxParser.h>

#include <algorithm>

namespace vexaTransferLib::testing_support {

GpxFile::GpxFile(const std::string& bytes, const std::string& name) : name_(name) {
    WriteBytes(folder_ / name, bytes);
}

icu::UnicodeString GpxFile::Path() const {
    return icu::UnicodeString::fromUTF8(NarrowPath());
}
std::string GpxFile::NarrowPath() const {
    return (folder_ / name_).string();
}

GpxDocument ReadGpx(const std::string& bytes) {
    const GpxFile file(bytes);
    GpxParser parser;
    GpxDocument document;
    parser.Parse(file.Path(), document);
    return document;
}

std::string ParseErrorsMessage(const std::string& path) {
    return "One or more errors encountered while parsing the GPX file: " + path;
}

std::vector<std::filesystem::path> GpxFilesBelow(const std::filesystem::path& folder,
                                                 std::uintmax_t longest) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file() && entry.file_size() <= longest && entry.path().extension() == ".gpx")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace vexaTransferLib::testing_support
