// SPDX-License-Identifier: MIT
// Reads a GPX file that somebody sent: read_untrusted FILE
#include <common/dbc.h>
#include <iostream>
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxInputLimits.h>
#include <vexaTransferLib/GpxParser.h>
#include <xercesc/util/PlatformUtils.hpp>

using namespace vexaTransferLib;

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    xercesc::XMLPlatformUtils::Initialize();
    try {
        GpxInputLimits limits;
        limits.points = 1'000'000; // what this host can show
        GpxParser parser;
        parser.SetUntrusted(limits);
        GpxDocument document;
        parser.Parse(argv[1], document);
        std::cout << document.GetWaypointCount() << " waypoints\n";
    } catch (const dbc::postcondition_error& error) {
        std::cout << error.what() << '\n';
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    xercesc::XMLPlatformUtils::Terminate();
}
