// SPDX-License-Identifier: MIT

// How the scanner reports the end of a scan.

#include "support/GpxFiles.h"
#include "support/GpxText.h"
#include "support/HeadScan.h"
#include "support/TestFiles.h"
#include "support/XercesDoubles.h"

#include <vexaTransferLib/GpxTarvikExtParser.h>

#include <gtest/gtest.h>
#include <xercesc/util/BinInputStream.hpp>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <ostream>
#include <stdexcept>
#include <string>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace vexaTransferLib {
namespace {

using namespace testing_support;

struct Case {
    const char* name;
    std::string bytes;
    GpxScanEnd trusted;
    GpxScanEnd untrusted;
};

void PrintTo(const Case& example, std::ostream* out) {
    *out << example.name;
}

class ScanEndTest : public testing::TestWithParam<Case> {};

const std::string kPoint = "<wpt lat='1' lon='2'/>";

INSTANTIATE_TEST_SUITE_P(
    Ends, ScanEndTest,
    testing::Values(
        Case{"no content", Gpx11("<metadata/>"), kGpxScanComplete, kGpxScanComplete},
        Case{"no GPX", "<html/>", kGpxScanComplete, kGpxScanComplete},
        Case{"waypoint", Gpx11(kPoint), kGpxScanContent, kGpxScanContent},
        Case{"route", Gpx10("<rte/>"), kGpxScanContent, kGpxScanContent},
        Case{"track", Gpx11("<TRK/>"), kGpxScanContent, kGpxScanContent},
        Case{"ill-formed after content", Gpx11(kPoint + "</oops>"), kGpxScanContent, kGpxScanContent},
        Case{"ill-formed", Gpx11("<a></b>"), kGpxScanIllFormed, kGpxScanIllFormed},
        Case{"cut short", "<gpx><metadata>", kGpxScanIllFormed, kGpxScanIllFormed},
        Case{"empty", "", kGpxScanIllFormed, kGpxScanIllFormed},
        Case{"no XML", "PK\3\4", kGpxScanIllFormed, kGpxScanIllFormed},
        Case{"no UTF-8", Gpx11("<a>\xFF\xFE</a>"), kGpxScanIllFormed, kGpxScanIllFormed},
        Case{"unknown encoding", "<?xml version='1.0' encoding='no-such'?><gpx/>", kGpxScanIllFormed,
             kGpxScanIllFormed},
        Case{"undeclared prefix", "<x:gpx/>", kGpxScanIllFormed, kGpxScanIllFormed},
        Case{"document type", "<!DOCTYPE gpx>" + Gpx11(""), kGpxScanComplete, kGpxScanRefused},
        Case{"hidden markup", "<?xml version='1.0' encoding='UTF-7'?>" + Gpx11(kPoint), kGpxScanContent,
             kGpxScanRefused},
        Case{"deep", Gpx11(Repeat("<x>", 300) + Repeat("</x>", 300)), kGpxScanComplete, kGpxScanRefused},
        Case{"long head", Gpx11(Repeat("<x/>", 100001)), kGpxScanComplete, kGpxScanRefused},
        Case{"large head", Gpx11(std::string(3000000, ' ')), kGpxScanComplete, kGpxScanRefused}));

TEST_P(ScanEndTest, IsReportedForFilesAndForBytes) {
    GpxTarvikExtParser scanner;
    const GpxFile file(GetParam().bytes);
    for (const bool isTrusted : {true, false, true}) {
        if (isTrusted)
            scanner.SetTrusted();
        else
            scanner.SetUntrusted();
        const GpxScanEnd expected = isTrusted ? GetParam().trusted : GetParam().untrusted;
        ScanFile(scanner, file.NarrowPath());
        EXPECT_EQ(scanner.GetScanEnd(), expected) << "file, trusted: " << isTrusted;
        ScanBytes(scanner, GetParam().bytes);
        EXPECT_EQ(scanner.GetScanEnd(), expected) << "bytes, trusted: " << isTrusted;
    }
}

TEST(GpxTarvikExtParserEndTest, BeforeAScanThereIsNoEndAndAnEmptyPathIsNoScan) {
    GpxTarvikExtParser scanner;
    EXPECT_EQ(scanner.GetScanEnd(), kGpxScanNone);
    scanner.Parse(u"");
    EXPECT_EQ(scanner.GetScanEnd(), kGpxScanNone);
    ScanBytes(scanner, Gpx11(kPoint));
    scanner.Parse(u"");
    EXPECT_EQ(scanner.GetScanEnd(), kGpxScanContent);
}

struct NoStream : xercesc::InputSource {
    xercesc::BinInputStream* makeStream() const override { return nullptr; }
};

TEST(GpxTarvikExtParserEndTest, AFileThatCannotBeOpenedIsMissing) {
    const TemporaryFolder folder;
    for (const bool isTrusted : {true, false}) {
        GpxTarvikExtParser scanner;
        if (!isTrusted)
            scanner.SetUntrusted();
        for (const std::string& path :
             {(folder / "none.gpx").string(), (folder / "none/none.gpx").string()}) {
            ScanBytes(scanner, Gpx11(kPoint));
            ScanFile(scanner, path);
            EXPECT_EQ(scanner.GetScanEnd(), kGpxScanMissing) << path << " " << isTrusted;
        }
        ScanBytes(scanner, Gpx11(kPoint));
        scanner.ParseSource(NoStream());
        EXPECT_EQ(scanner.GetScanEnd(), kGpxScanMissing) << isTrusted;
    }
}

TEST(GpxTarvikExtParserEndTest, AFolderIsMissing) {
#ifdef __SANITIZE_ADDRESS__
    const __lsan::ScopedDisabler xercesLosesTheNameOfADirectory;
#endif
    const TemporaryFolder folder;
    GpxTarvikExtParser scanner;
    ScanFile(scanner, (folder / "").string());
    EXPECT_EQ(scanner.GetScanEnd(), kGpxScanMissing);
    scanner.SetUntrusted();
    ScanFile(scanner, (folder / "").string());
    EXPECT_EQ(scanner.GetScanEnd(), kGpxScanMissing);
}

TEST(GpxTarvikExtParserEndTest, AnAddressIsRefusedOrMissing) {
    const XercesNet net;
    GpxTarvikExtParser scanner;
    scanner.Parse(u"http://localhost:1/walk.gpx");
    EXPECT_EQ(scanner.GetScanEnd(), kGpxScanMissing);
    EXPECT_EQ(net.Requests(), 1U);
    scanner.SetUntrusted();
    scanner.Parse(u"http://localhost:1/walk.gpx");
    EXPECT_EQ(scanner.GetScanEnd(), kGpxScanRefused);
    EXPECT_EQ(net.Requests(), 1U);
}

/// Throws at its second reading.
struct FailingSource : xercesc::InputSource {
    struct Stream : xercesc::BinInputStream {
        XMLFilePos curPos() const override { return 0; }
        const XMLCh* getContentType() const override { return nullptr; }
        // Xerces loses memory when it is left within a tag, so that the first reading fills its buffer with text.
        XMLSize_t readBytes(XMLByte* const bytes, const XMLSize_t capacity) override {
            constexpr char kRoot[] = "<gpx>";
            if (isRead)
                throw std::runtime_error("the archive is damaged");
            isRead = true;
            std::fill_n(bytes, capacity, XMLByte{' '});
            std::copy(std::begin(kRoot), std::end(kRoot) - 1, bytes);
            return capacity;
        }
        bool isRead = false;
    };
    xercesc::BinInputStream* makeStream() const override { return new Stream; }
};

TEST(GpxTarvikExtParserEndTest, ExceptionsOfTheHostsSourceAndLackOfMemoryAreFailures) {
    for (const bool isTrusted : {true, false}) {
        GpxTarvikExtParser scanner;
        if (!isTrusted)
            scanner.SetUntrusted();
        scanner.ParseSource(FailingSource());
        EXPECT_EQ(scanner.GetScanEnd(), kGpxScanFailed) << isTrusted;
    }
    const GpxFile file(Gpx11(kPoint));
    XercesMemory memory; // outlives the reader that the scanner keeps
    GpxTarvikExtParser scanner;
    memory.RefuseRequest(1);
    ScanFile(scanner, file.NarrowPath());
    EXPECT_EQ(scanner.GetScanEnd(), kGpxScanFailed);
    scanner.ParseSource(NoStream());
    EXPECT_EQ(scanner.GetScanEnd(), kGpxScanMissing);
}

} // namespace
} // namespace vexaTransferLib
