// SPDX-License-Identifier: MIT
#include "Files.h"

#include <vexaTransferLib/ZIPFileReader.h>

#include <benchmark/benchmark.h>
#include <unzip.h>
#include <zip.h>

#include <array>
#include <vector>

namespace {

constexpr unsigned int kBufferSize = 1 << 16;

/// An archive of one big or of many small entries.
class Archive {
public:
    Archive(int entries, int waypointsPerEntry, int method) : file_("archive.zip", "") {
        const std::string content = bench::WaypointFile(waypointsPerEntry);
        zipFile zip = zipOpen(file_.Path().c_str(), APPEND_STATUS_CREATE);
        bool fine = zip != nullptr;
        for (int i = 0; fine && i < entries; ++i) {
            const std::string name = "w" + std::to_string(i) + ".gpx";
            fine = zipOpenNewFileInZip(zip, name.c_str(), nullptr, nullptr, 0, nullptr, 0, nullptr, method,
                                       Z_DEFAULT_COMPRESSION) == ZIP_OK &&
                   zipWriteInFileInZip(zip, content.data(), static_cast<unsigned int>(content.size())) ==
                       ZIP_OK &&
                   zipCloseFileInZip(zip) == ZIP_OK;
        }
        if (!fine || zipClose(zip, nullptr) != ZIP_OK)
            throw std::runtime_error("Unable to write the archive");
    }

    const std::string& Path() const { return file_.Path(); }

private:
    bench::File file_;
};

std::int64_t ReadByMinizip(const std::string& path, std::vector<char>& buffer) {
    std::int64_t total = 0;
    const unzFile zip = unzOpen(path.c_str());
    for (int found = unzGoToFirstFile(zip); found == UNZ_OK; found = unzGoToNextFile(zip)) {
        std::array<char, 1024> name;
        unz_file_info info;
        unzGetCurrentFileInfo(zip, &info, name.data(), name.size(), nullptr, 0, nullptr, 0);
        benchmark::DoNotOptimize(name);
        unzOpenCurrentFile(zip);
        while (const int count = unzReadCurrentFile(zip, buffer.data(), kBufferSize))
            total += count;
        unzCloseCurrentFile(zip);
    }
    unzClose(zip);
    return total;
}

std::int64_t ReadByLibrary(const std::string& path, std::vector<char>& buffer) {
    std::int64_t total = 0;
    vexaTransferLib::ZipFileReader zip(icu::UnicodeString::fromUTF8(path));
    for (bool found = zip.GoToFirstFile(); found; found = zip.GoToNextFile()) {
        benchmark::DoNotOptimize(zip.GetCurrentFileName());
        zip.OpenCurrentFile();
        while (const int count = zip.ReadFromCurrentFile(buffer.data(), kBufferSize))
            total += count;
        zip.CloseCurrentFile();
    }
    return total;
}

template <class Read>
void ReadArchive(benchmark::State& state, Read read, int entries, int waypoints, int method) {
    const Archive archive(entries, waypoints, method);
    std::vector<char> buffer(kBufferSize);
    std::int64_t total = 0;
    for (auto _ : state)
        total += read(archive.Path(), buffer);
    state.SetBytesProcessed(total);
}

BENCHMARK_CAPTURE(ReadArchive, deflated / minizip, ReadByMinizip, 1, 300000, Z_DEFLATED);
BENCHMARK_CAPTURE(ReadArchive, deflated / library, ReadByLibrary, 1, 300000, Z_DEFLATED);
BENCHMARK_CAPTURE(ReadArchive, stored / minizip, ReadByMinizip, 1, 300000, 0);
BENCHMARK_CAPTURE(ReadArchive, stored / library, ReadByLibrary, 1, 300000, 0);
BENCHMARK_CAPTURE(ReadArchive, many / minizip, ReadByMinizip, 1000, 100, Z_DEFLATED);
BENCHMARK_CAPTURE(ReadArchive, many / library, ReadByLibrary, 1000, 100, Z_DEFLATED);

} // namespace
