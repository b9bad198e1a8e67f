// SPDX-License-Identifier: MIT
// Reads a GPX file, adds a waypoint and writes the result: add_waypoint IN OUT
#include <iostream>
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>
#include <xercesc/util/PlatformUtils.hpp>

using namespace vexaTransferLib;

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    xercesc::XMLPlatformUtils::Initialize();
    try {
        GpxDocument document;
        GpxParser parser;
        parser.SetUntrusted(); // opens no other file, asks no server, enforces limits
        parser.Parse(argv[1], document);

        GpxPoint home(kGpxWaypoint, 46.95, 7.44); // latitude and longitude, WGS 84
        home.SetName("Home");
        document.AddWaypoint(home);

        document.WriteToFile(GpxVersion::GetLatestVersion(), "MyApp", "https://example.org/", argv[2]);
        std::cout << document.GetWaypointCount() << " waypoints written\n";
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    xercesc::XMLPlatformUtils::Terminate();
}
