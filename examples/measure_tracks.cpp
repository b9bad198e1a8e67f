// SPDX-License-Identifier: MIT
// Measures the tracks of a GPX file and their segments: measure_tracks FILE. See print_tracks.cpp first.
#include <vexaTrackLib/PathMeter.h>
#include <vexaTrackLib/PathStatistics.h>

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>

#include <algorithm>
#include <cmath>
#include <iostream>
#include <xercesc/util/PlatformUtils.hpp>

using namespace vexaTransferLib;

void Print(const vexaTrackLib::PathStatistics& figures) {
    std::cout << std::lround(figures.metres) << " m, up " << std::lround(figures.ascent) << " m, down "
              << std::lround(figures.descent) << " m\n";
    if (const auto speed = figures.MeanSpeed())
        std::cout << "moving " << std::lround(figures.movingSeconds / 60) << " min at "
                  << std::lround(*speed * 3600) << " m an hour\n";
    for (const vexaTrackLib::Pause& pause : figures.pauses)
        std::cout << "pause of " << std::lround(pause.seconds / 60) << " min at " << pause.latitude << ' '
                  << pause.longitude << '\n';
}

void Measure(const GpxTrack& track) {
    vexaTrackLib::StatisticsOptions options;
    options.climb = 10.0; // metres that a peak is above a valley at least
    Print(vexaTrackLib::StatisticsOf(track, options));

    for (auto segment = track.GetSegmentIter(); segment != track.GetSegmentEndIter(); ++segment) {
        vexaTrackLib::PathMeter meter(options);
        for (auto point = track.GetPointIter(segment); point != track.GetPointEndIter(segment); ++point)
            meter.Add(*point);
        std::cout << "segment of " << std::lround(meter.Get().metres) << " m\n";
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
        parser.ParseFile(argv[1], document);
        std::for_each(document.GetTrackIter(), document.GetTrackEndIter(), Measure);
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    xercesc::XMLPlatformUtils::Terminate();
}
