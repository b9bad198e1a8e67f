// SPDX-License-Identifier: MIT
#include <benchmark/benchmark.h>
#include <xercesc/util/PlatformUtils.hpp>

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    xercesc::XMLPlatformUtils::Initialize();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    xercesc::XMLPlatformUtils::Terminate();
}
