// SPDX-License-Identifier: MIT
// Prints the tracks of a GPX file, segment by segment: print_tracks FILE
#include <algorithm>
#include <iostream>
#include <string>
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>
#include <xercesc/util/PlatformUtils.hpp>

using namespace vexaTransferLib;

void Print(const GpxTrack& track) {
    icu::UnicodeString name(u"(without a name)");
    track.GetName(name); // left as it is when the track has none
    std::string utf8;
    std::cout << name.toUTF8String(utf8) << '\n';
    for (auto segment = track.GetSegmentIter(); segment != track.GetSegmentEndIter(); ++segment) {
        double highest = -1e9;
        for (auto point = track.GetPointIter(segment); point != track.GetPointEndIter(segment); ++point) {
            double elevation = highest;
            point->GetElevation(elevation);
            highest = std::max(highest, elevation);
        }
        std::cout << "  " << track.GetPointCount(segment) << " points, up to " << highest << " m\n";
    }
}

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    xercesc::XMLPlatformUtils::Initialize();
    try {
        GpxDocument document;
        GpxParser parser;
        parser.SetUntrusted();
        parser.Parse(argv[1], document);
        std::for_each(document.GetTrackIter(), document.GetTrackEndIter(), Print);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    xercesc::XMLPlatformUtils::Terminate();
}
