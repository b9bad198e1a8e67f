// SPDX-License-Identifier: MIT The time for reading a small file in a program that makes a parser for each
// file.
#include "Files.h"

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>

#include <benchmark/benchmark.h>

#include <string>

namespace {

void ParserOfASmallFile(benchmark::State& state) {
    const std::string file = bench::WaypointFile(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        vexaTransferLib::GpxParser parser;
        vexaTransferLib::GpxDocument document;
        parser.Parse(file, u"small.gpx", document);
        benchmark::DoNotOptimize(document);
    }
}

BENCHMARK(ParserOfASmallFile)->ArgName("points")->Arg(20)->Unit(benchmark::kMicrosecond);

} // namespace
