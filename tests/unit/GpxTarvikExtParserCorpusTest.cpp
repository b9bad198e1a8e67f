// SPDX-License-Identifier: MIT

// Scans files of many programs if a folder of them is beside the source tree.

#include <vexaTransferLib/GpxTarvikExtParser.h>
#include <vexaTransferLib/GpxUtils.h>

#include "support/GpxDom.h"
#include "support/GpxText.h"
#include "support/HeadScan.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

const std::filesystem::path kCorpus = std::filesystem::path(VEXA_SHARED) / "corpus";

std::string Name(const xercesc::DOMNode& node) {
    const XMLCh* const name = node.getLocalName();
    return name != nullptr ? Utf8(icu::UnicodeString(name).toLower(icu::Locale::getRoot())) : "";
}

bool IsGpxElement(const xercesc::DOMNode& node) {
    const XMLCh* const uri = node.getNamespaceURI();
    return node.getNodeType() == xercesc::DOMNode::ELEMENT_NODE && uri != nullptr &&
           (icu::UnicodeString(uri) == kGpx10Uri || icu::UnicodeString(uri) == kGpx11Uri);
}

// The last readable time before the first waypoint, route or track, found in the tree of the whole file; none
// for a file that is not well-formed.
std::optional<double> TimeInHead(const std::string& bytes) {
    std::optional<DomTree> tree;
    try {
        tree.emplace(bytes);
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
    double time = 0.0;
    for (const xercesc::DOMNode* node = tree->Root(); node != nullptr; node = NextInDocument(node)) {
        if (!IsGpxElement(*node))
            continue;
        const std::string name = Name(*node);
        if (name == "wpt" || name == "rte" || name == "trk")
            break;
        if (name == "time") {
            std::string text = Utf8(icu::UnicodeString(node->getTextContent()).trim());
            ParseGpxTime(text, time);
        }
    }
    return time;
}

struct Totals {
    std::size_t files = 0;
    std::size_t wellFormed = 0;
    std::size_t withTime = 0;
};

Totals CompareFilesIn(const std::filesystem::path& folder) {
    Totals totals;
    GpxTarvikExtParser scanner;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string path = entry.path().string();
        ++totals.files;
        EXPECT_NO_THROW(ScanFile(scanner, path)) << path;
        const std::string bytes = ReadBytes(path);
        GpxTarvikExtParser fromMemory;
        EXPECT_NO_THROW(ScanBytes(fromMemory, bytes)) << path;
        EXPECT_EQ(FoundBy(scanner), FoundBy(fromMemory)) << path;
        const std::optional<double> expected = TimeInHead(bytes);
        if (!expected)
            continue;
        ++totals.wellFormed;
        totals.withTime += *expected != 0.0 ? 1 : 0;
        EXPECT_EQ(scanner.GetDocumentTime(), *expected) << path;
        EXPECT_FALSE(scanner.GetStats() || scanner.GetGISMetaData() || scanner.GetAnnotateMetaData()) << path;
    }
    return totals;
}

TEST(GpxTarvikExtParserCorpusTest, EveryFileIsScannedForItsTime) {
    if (!std::filesystem::is_directory(kCorpus / "gpx"))
        GTEST_SKIP() << "there is no corpus of GPX files beside the source tree";
    const Totals good = CompareFilesIn(kCorpus / "gpx");
    EXPECT_GT(good.files, 0U);
    EXPECT_EQ(good.wellFormed, good.files);
    EXPECT_GT(good.withTime, good.files / 4);
    const Totals bad = CompareFilesIn(kCorpus / "gpx-malformed");
    EXPECT_GT(bad.wellFormed, 0U);
    EXPECT_LT(bad.wellFormed, bad.files);
}

} // namespace
} // namespace vexaTransferLib
