// SPDX-License-Identifier: MIT
// Reads the GPX files of a ZIP archive without unpacking them to disk: read_archive ARCHIVE
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>
#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/ZIPFileReader.h>
#include <xercesc/util/PlatformUtils.hpp>

using namespace vexaTransferLib;

constexpr std::size_t kMostBytes = 100'000'000; // a few kilobytes can unpack to gigabytes: count the bytes

std::string ReadEntry(ZipFileReader& archive) {
    std::string content;
    std::vector<char> buffer(65536);
    int count = 0;
    archive.OpenCurrentFile();
    while ((count = archive.ReadFromCurrentFile(buffer.data(), 65536)) > 0) {
        content.append(buffer.data(), static_cast<std::size_t>(count));
        if (content.size() > kMostBytes)
            throw std::runtime_error("An entry of the archive is too large.");
    }
    if (count < 0)
        throw std::runtime_error("An entry of the archive is damaged.");
    archive.CloseCurrentFile(); // compares the size and the checksum
    return content;
}

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    xercesc::XMLPlatformUtils::Initialize();
    try {
        GpxParser parser;
        parser.SetUntrusted();
        ZipFileReader archive(argv[1]);
        for (bool found = archive.GoToFirstFile(); found; found = archive.GoToNextFile()) {
            const icu::UnicodeString name = archive.GetCurrentFileName();
            if (!name.endsWith(u".gpx"))
                continue;
            GpxDocument document;
            parser.Parse(ReadEntry(archive), name, document);
            std::string utf8;
            std::cout << name.toUTF8String(utf8) << ": " << document.GetWaypointCount() << " waypoints\n";
        }
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    xercesc::XMLPlatformUtils::Terminate();
}
