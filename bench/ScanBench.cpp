// SPDX-License-Identifier: MIT
#include "Files.h"

#include <vexaTransferLib/GpxTarvikExtParser.h>

#include <benchmark/benchmark.h>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinFileInputStream.hpp>

namespace {

/// A file that counts the bytes that are read.
class CountingSource final : public xercesc::InputSource {
public:
    explicit CountingSource(const std::string& path) : path_(path) {}

    xercesc::BinInputStream* makeStream() const override { return new Stream(path_.c_str(), bytesRead_); }
    std::size_t BytesRead() const { return bytesRead_; }

private:
    class Stream final : public xercesc::BinFileInputStream {
    public:
        Stream(const char* path, std::size_t& bytesRead) : BinFileInputStream(path), bytesRead_(bytesRead) {}

        XMLSize_t readBytes(XMLByte* const bytes, const XMLSize_t capacity) override {
            const XMLSize_t count = BinFileInputStream::readBytes(bytes, capacity);
            bytesRead_ += count;
            return count;
        }

    private:
        std::size_t& bytesRead_;
    };

    std::string path_;
    mutable std::size_t bytesRead_ = 0;
};

void ScanHead(benchmark::State& state) {
    const bench::File file("scan.gpx", bench::WaypointFile(static_cast<int>(state.range(0))));
    const CountingSource source(file.Path());
    vexaTransferLib::GpxTarvikExtParser scanner;
    for (auto _ : state) {
        scanner.ParseSource(source);
        if (!scanner.GetStats())
            state.SkipWithError("The scan found nothing.");
    }
    state.counters["bytesRead"] =
        benchmark::Counter(static_cast<double>(source.BytesRead()), benchmark::Counter::kAvgIterations);
}

BENCHMARK(ScanHead)->ArgName("waypoints")->Arg(1000)->Arg(1000000)->Unit(benchmark::kMicrosecond);

} // namespace
