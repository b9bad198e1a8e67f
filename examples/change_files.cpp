// SPDX-License-Identifier: MIT
// Puts two GPX files together without the places around a home, and writes the result; everything else stays as it was in
// the first file: change_files FILE OTHER OUT. See print_tracks.cpp first.
#include <vexaTrackLib/Comparison.h>
#include <vexaTrackLib/Cut.h>
#include <vexaTrackLib/CutArea.h>
#include <vexaTrackLib/Merge.h>
#include <vexaTrackLib/SimplifyPaths.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/GpxSaver.h>

#include <cmath>
#include <iostream>
#include <string>
#include <xercesc/util/PlatformUtils.hpp>

using namespace vexaTransferLib;

GpxDocument Read(const std::string& path) {
    GpxParser parser;
    parser.SetUntrusted();
    parser.SetComplete(); // what the saver keeps, and what is compared
    GpxDocument document;
    parser.ParseFile(path, document);
    return document;
}

void Change(GpxDocument& document, const GpxDocument& other) {
    const vexaTrackLib::MergeResult merged = vexaTrackLib::Merge(document, {&other});
    std::cout << merged.addedWaypoints << " waypoints and " << merged.addedTracks << " tracks came, "
              << merged.losers.size() << " versions were left out\n";

    const auto home = vexaTrackLib::CutArea::Around(46.5, 7.67, 500.0);
    const vexaTrackLib::CutResult cut = vexaTrackLib::CutOut(document, home);
    std::cout << cut.trackPoints << " track points and " << cut.traces << " traces of home went\n";

    for (GpxTrack& track : document.EditTracks()) {
        const vexaTrackLib::SimplifiedPath path = vexaTrackLib::SimplifyTrack(track, 5.0);
        std::cout << path.before << " points, " << path.after << " are left, at most "
                  << std::lround(path.farthest) << " m off\n";
    }
}

int main(int argc, char** argv) {
    if (argc != 4)
        return 2;
    xercesc::XMLPlatformUtils::Initialize();
    int status = 0;
    try {
        GpxDocument document = Read(argv[1]);
        const GpxDocument before = document;
        Change(document, Read(argv[2]));
        std::cout << vexaTrackLib::Compare(before, document).size() << " objects differ\n";
        GpxSaver().SaveFile(document, argv[3]);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        status = 1;
    }
    xercesc::XMLPlatformUtils::Terminate();
    return status;
}
