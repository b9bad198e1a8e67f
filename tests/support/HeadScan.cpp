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
#include <optional>

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

namespace {

constexpr const char* kEndNames[] = {"none",   "object",  "end of file", "ill-formed",
                                     "no GPX", "missing", "refused",     "failed"};

std::string Labelled(const char* label, const std::optional<icu::UnicodeString>& text) {
    return text ? std::string("; ") + label + " " + Utf8(*text) : "";
}

} // namespace

std::string Shown(const GpxHead& head) {
    std::string shown = "root " + Utf8(head.rootName) + Labelled("version", head.version) +
                        Labelled("creator", head.creator) + Labelled("name", head.name) +
                        Labelled("desc", head.description);
    char text[200];
    if (head.time) {
        std::snprintf(text, sizeof text, "; time %.17g", *head.time);
        shown += text;
    }
    if (head.author)
        shown += "; author " + Utf8(head.author->name) + " <" + Utf8(head.author->email) + ">";
    if (head.bounds) {
        std::snprintf(text, sizeof text, "; bounds %.17g %.17g %.17g %.17g", head.bounds->minLatitude,
                      head.bounds->minLongitude, head.bounds->maxLatitude, head.bounds->maxLongitude);
        shown += text;
    }
    shown += head.hasMetadata ? "; metadata" : "";
    shown += std::string("; end ") + kEndNames[static_cast<std::uint32_t>(head.end)];
    if (head.error)
        shown += "; error " + std::to_string(head.error->line) + ":" + std::to_string(head.error->column);
    return shown;
}

std::string HeadOf(const std::string& bytes) {
    GpxTarvikExtParser scanner;
    ScanBytes(scanner, bytes);
    std::string shown = Shown(scanner.GetHead());
    const GpxFile file(bytes);
    ScanFile(scanner, file.NarrowPath());
    EXPECT_EQ(Shown(scanner.GetHead()), shown) << "file and memory differ: " << bytes.substr(0, 2000);
    scanner.SetUntrusted();
    ScanBytes(scanner, bytes);
    EXPECT_EQ(Shown(scanner.GetHead()), shown) << "an untrusted scan differs: " << bytes.substr(0, 2000);
    return shown;
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
