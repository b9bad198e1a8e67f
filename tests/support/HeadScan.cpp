// SPDX-License-Identifier: MIT
#include "support/HeadScan.h"

#include "support/GpxFiles.h"
#include "support/GpxText.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <xercesc/framework/MemBufInputSource.hpp>

#include <bit>
#include <cstdint>
#include <cstdio>

namespace vexaTransferLib::testing_support {

std::string WithExtensions(const std::string& elements) {
    return Gpx11("<metadata><extensions>" + elements + "</extensions></metadata><wpt lat='1' lon='2'/>");
}

std::string FoundBy(const GpxTarvikExtParser& scanner) {
    std::string found;
    if (const auto layer = scanner.GetGISMetaData())
        found += "layer " + Utf8(layer->layerKey) + "|" + Utf8(layer->layerName) + "|" + Utf8(layer->form) +
                 "|" + std::to_string(layer->defaultSymbol) + "; ";
    if (const auto guids = scanner.GetAnnotateMetaData())
        found += "guids " + Utf8(guids->trackGUID) + "|" + Utf8(guids->waypointGUID) + "; ";
    char text[200];
    if (const auto stats = scanner.GetStats()) {
        std::snprintf(text, sizeof text, "stats %d %d %d %llx %d; ", stats->wptcount, stats->trkcount,
                      stats->trksegcount,
                      static_cast<unsigned long long>(std::bit_cast<std::uint64_t>(stats->trktotalkm)),
                      stats->geocachecount);
        found += text;
    }
    std::snprintf(text, sizeof text, "time %.17g", scanner.GetDocumentTime());
    return found + text;
}

void ScanFile(GpxTarvikExtParser& scanner, const std::string& path) {
    scanner.Parse(icu::UnicodeString::fromUTF8(path));
}

void ScanBytes(GpxTarvikExtParser& scanner, const std::string& bytes) {
    scanner.ParseSource(
        xercesc::MemBufInputSource(reinterpret_cast<const XMLByte*>(bytes.data()), bytes.size(), "memory"));
}

std::string Scan(const std::string& bytes) {
    const GpxFile file(bytes);
    GpxTarvikExtParser fromFile;
    ScanFile(fromFile, file.NarrowPath());
    GpxTarvikExtParser fromMemory;
    ScanBytes(fromMemory, bytes);
    EXPECT_EQ(FoundBy(fromFile), FoundBy(fromMemory)) << "file and memory differ: " << bytes.substr(0, 2000);
    return FoundBy(fromFile);
}

} // namespace vexaTransferLib::testing_support
