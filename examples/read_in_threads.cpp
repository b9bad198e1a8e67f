// SPDX-License-Identifier: MIT
// Reads GPX files side by side: read_in_threads FILE...
#include <future>
#include <iostream>
#include <vector>
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>
#include <xercesc/util/PlatformUtils.hpp>

using namespace vexaTransferLib;

GpxDocument Read(const char* path) {
    GpxParser parser; // one for each thread
    parser.SetUntrusted();
    GpxDocument document;
    parser.Parse(path, document);
    return document;
}

int main(int argc, char** argv) {
    xercesc::XMLPlatformUtils::Initialize(); // before the first thread
    std::vector<std::future<GpxDocument>> readings;
    for (int i = 1; i < argc; ++i)
        readings.push_back(std::async(std::launch::async, Read, argv[i]));
    int failures = 0;
    for (auto& reading : readings) {
        try {
            std::cout << reading.get().GetWaypointCount() << " waypoints\n";
        } catch (const std::exception& error) { // thrown in the thread, rethrown by get()
            std::cout << error.what() << '\n';
            ++failures;
        }
    }
    xercesc::XMLPlatformUtils::Terminate(); // after the last
    return failures == 0 ? 0 : 1;
}
