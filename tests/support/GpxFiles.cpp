// SPDX-License-Identifier: MIT
#include "support/GpxFiles.h"

#include <vexaTransferLib/GpxParser.h>

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

} // namespace vexaTransferLib::testing_support
