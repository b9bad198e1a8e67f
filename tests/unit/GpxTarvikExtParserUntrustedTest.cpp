// SPDX-License-Identifier: MIT

// What the scanner does with an untrusted file.

#include "support/GpxFiles.h"
#include "support/GpxText.h"
#include "support/SystemFiles.h"
#include "support/XercesDoubles.h"

#include <vexaTransferLib/GpxTarvikExtParser.h>

#include <gtest/gtest.h>
#include <xercesc/framework/MemBufInputSource.hpp>

#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

const std::string kLayer = "<tarvik:layername>first</tarvik:layername>";
const std::string kLaterLayer = "<tarvik:layername>second</tarvik:layername>";

std::string Metadata(const std::string& children) {
    return Gpx11("<metadata><extensions>" + children + "</extensions></metadata>");
}

/// The layer's name that an untrusted scan finds; empty when it finds none.
std::string LayerOf(GpxTarvikExtParser& scanner) {
    std::string name;
    if (scanner.GetGISMetaData())
        scanner.GetGISMetaData()->layerName.toUTF8String(name);
    return name;
}

std::string ScanUntrusted(const std::string& bytes, const GpxInputLimits& limits = {}) {
    const GpxFile file(bytes);
    GpxTarvikExtParser scanner;
    scanner.SetUntrusted(limits);
    scanner.Parse(file.Path());
    const std::string ofFile = LayerOf(scanner);
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(bytes.data()), bytes.size(),
                                            "bytes");
    scanner.ParseSource(source);
    EXPECT_EQ(LayerOf(scanner), ofFile);
    return ofFile;
}

TEST(GpxTarvikExtParserUntrustedTest, OrdinaryHeadsAreScanned) {
    EXPECT_EQ(ScanUntrusted(Metadata(kLayer)), "first");
}

TEST(GpxTarvikExtParserUntrustedTest, ADocumentTypeEndsTheScanBeforeAnythingElseIsOpened) {
    for (const char* declaration : {"<!DOCTYPE gpx>", "<!DOCTYPE gpx SYSTEM 'file:///etc/hostname'>",
                                    "<!DOCTYPE gpx [<!ENTITY e SYSTEM 'file:///etc/hostname'>]>",
                                    "<!DOCTYPE gpx [<!ENTITY % p SYSTEM 'http://localhost:1/x'>%p;]>"}) {
        const GpxFile file(declaration + Metadata(kLayer));
        const XercesFiles xercesFiles;
        const SystemFiles files;
        const XercesNet net;
        GpxTarvikExtParser scanner;
        scanner.SetUntrusted();
        scanner.Parse(file.Path());
        EXPECT_EQ(LayerOf(scanner), "") << declaration;
        EXPECT_EQ(files.Opened(), 1U) << declaration;
        EXPECT_EQ(files.StillOpen(), 0U) << declaration;
        EXPECT_EQ(xercesFiles.Opened(), 0U) << declaration;
        EXPECT_EQ(net.Requests(), 0U) << declaration;
    }
}

TEST(GpxTarvikExtParserUntrustedTest, APathIsNeverTakenForAnAddress) {
    const GpxFile file(Metadata(kLayer));
    const XercesFiles xercesFiles;
    const SystemFiles files;
    const XercesNet net;
    GpxTarvikExtParser scanner;
    scanner.SetUntrusted();
    scanner.Parse(u"file://" + file.Path());
    scanner.Parse(u"http://localhost:1/walk.gpx");
    EXPECT_EQ(LayerOf(scanner), "");
    EXPECT_EQ(files.Opened(), 0U);
    EXPECT_EQ(xercesFiles.Opened(), 0U);
    EXPECT_EQ(net.Requests(), 0U);
    scanner.SetTrusted();
    scanner.Parse(u"file://" + file.Path());
    EXPECT_EQ(LayerOf(scanner), "first");
}

TEST(GpxTarvikExtParserUntrustedTest, LimitsEndTheScanWithWhatWasFoundBefore) {
    GpxInputLimits limits;
    limits.elementDepth = 5;
    limits.textLength = 100;
    const std::string longest(100, 'a');
    limits.attributes = 20;
    EXPECT_EQ(ScanUntrusted(Metadata(kLayer + "<x><!--" + longest + "--></x>" + kLaterLayer), limits),
              "second");
    EXPECT_EQ(ScanUntrusted(Metadata(kLayer + "<x><y/></x>" + kLaterLayer), limits), "second");
    EXPECT_EQ(ScanUntrusted(Metadata(kLayer + "<x><y><z/></y></x>" + kLaterLayer), limits), "first");
    EXPECT_EQ(ScanUntrusted(Metadata(kLayer + "<x>b" + longest + "</x>" + kLaterLayer), limits), "first");
    EXPECT_EQ(ScanUntrusted(Metadata(kLayer + "<x><!--b" + longest + "--></x>" + kLaterLayer), limits),
              "first");
    EXPECT_EQ(ScanUntrusted(Metadata(kLayer + "<x y='b" + longest + "'/>" + kLaterLayer), limits), "first");
    std::string attributes;
    for (int i = 0; i < 21; ++i)
        attributes += " a" + std::to_string(i) + "=''";
    EXPECT_EQ(ScanUntrusted(Metadata(kLayer + "<x" + attributes + "/>" + kLaterLayer), limits), "first");
}

TEST(GpxTarvikExtParserUntrustedTest, TheElementsOfTheHeadAreCounted) {
    GpxInputLimits limits;
    limits.headElements = 7;
    // The root, the metadata, its extensions and two layers are five.
    EXPECT_EQ(ScanUntrusted(Metadata(kLayer + Repeat("<x/>", 2) + kLaterLayer), limits), "second");
    EXPECT_EQ(ScanUntrusted(Metadata(kLayer + Repeat("<x/>", 3) + kLaterLayer), limits), "first");
}

TEST(GpxTarvikExtParserUntrustedTest, TheBytesOfTheHeadAreCounted) {
    GpxInputLimits limits;
    limits.headBytes = 60000;
    const std::string head = Metadata(kLayer + kLaterLayer);
    const auto headOf = [&](std::size_t size) {
        return Metadata(kLayer + std::string(size - head.size(), ' ') + kLaterLayer);
    };
    EXPECT_EQ(ScanUntrusted(headOf(60000), limits), "second");
    EXPECT_EQ(ScanUntrusted(headOf(62000), limits), "first");
    // What comes after the head does not matter.
    const std::string rest = Repeat("<wpt lat='1' lon='2'/>", 10000);
    const std::string open = Gpx11("<metadata><extensions>" + kLayer + "</extensions></metadata>");
    EXPECT_EQ(ScanUntrusted(open.substr(0, open.size() - 6) + rest + "</gpx>", limits), "first");
}

TEST(GpxTarvikExtParserUntrustedTest, AHeadOfAnySizeIsReadUpToTheLimitOnly) {
    for (const std::size_t count : {std::size_t{1000000}, std::size_t{1000000000}}) {
        const GeneratedSource elements("<gpx>", "<x/>", count, "</gpx>");
        const GeneratedSource text("<gpx>", Repeat("a", 1000), count, "</gpx>");
        GpxTarvikExtParser scanner;
        scanner.SetUntrusted();
        scanner.ParseSource(elements);
        EXPECT_EQ(scanner.GetScanEnd(), kGpxScanRefused);
        EXPECT_LE(elements.BytesRead(), 500000U);
        scanner.ParseSource(text);
        EXPECT_EQ(scanner.GetScanEnd(), kGpxScanRefused);
        EXPECT_LE(text.BytesRead(), 2200000U);
    }
}

} // namespace
} // namespace vexaTransferLib
