// SPDX-License-Identifier: MIT

// What a scan reads and allocates, and what happens when memory runs out.

#include <vexaTransferLib/GpxTarvikExtParser.h>

#include "support/GpxFiles.h"
#include "support/GpxText.h"
#include "support/HeadScan.h"
#include "support/IcuMemory.h"
#include "support/SystemFiles.h"
#include "support/TestFiles.h"
#include "support/XercesDoubles.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace vexaTransferLib {
namespace {

using namespace testing_support;

constexpr std::size_t kMostBytesOfAScan = 100000;
constexpr char kHeadFound[] = "layer |Walks||1; stats 3 0 0 3ff8000000000000 -1; time 1232014830000";

// One waypoint is 100 bytes long.
struct LargeGpx {
    std::string head;
    std::string waypoint;
    std::string tail = "</gpx>";

    LargeGpx() {
        const std::string open =
            Gpx11("<metadata><time>2009-01-15T10:20:30Z</time><extensions><tarvik:layername>Walks"
                  "</tarvik:layername><tarvik:wptcount>3</tarvik:wptcount><tarvik:trktotalkm>1.5"
                  "</tarvik:trktotalkm></extensions></metadata>");
        head = open.substr(0, open.size() - tail.size());
        waypoint = "<wpt lat=\"47.123456789\" lon=\"-122.123456789\"><name>A waypoint";
        waypoint += std::string(100 - waypoint.size() - 14, ' ') + "</name></wpt>\n";
    }
};

void WriteLargeFile(const std::filesystem::path& path, std::size_t waypoints) {
    const LargeGpx text;
    constexpr std::size_t kBlock = 1000;
    const std::string block = Repeat(text.waypoint, kBlock);
    std::ofstream file(path, std::ios::binary);
    file << text.head;
    for (std::size_t written = 0; written < waypoints; written += kBlock)
        file << block;
    file << text.tail;
    ASSERT_TRUE(file.flush());
}

std::size_t BytesReadOfFile(std::size_t waypoints) {
    const TemporaryFolder folder;
    WriteLargeFile(folder / "large.gpx", waypoints);
    EXPECT_GE(std::filesystem::file_size(folder / "large.gpx"), waypoints * 100);
    const SystemFiles files;
    GpxTarvikExtParser scanner;
    ScanFile(scanner, (folder / "large.gpx").string());
    EXPECT_EQ(FoundBy(scanner), kHeadFound);
    EXPECT_EQ(files.Opened(), 1U);
    EXPECT_EQ(files.StillOpen(), 0U);
    return files.BytesRead();
}

TEST(GpxTarvikExtParserCostTest, OnlyTheHeadOfAFileIsRead) {
    const std::size_t ofSmallFile = BytesReadOfFile(1000);
    EXPECT_GT(ofSmallFile, LargeGpx().head.size());
    EXPECT_LE(ofSmallFile, kMostBytesOfAScan);
    EXPECT_EQ(BytesReadOfFile(1000000), ofSmallFile);
}

std::size_t BytesReadOfStream(std::size_t waypoints) {
    const LargeGpx text;
    const GeneratedSource source(text.head, text.waypoint, waypoints, text.tail);
    GpxTarvikExtParser scanner;
    scanner.ParseSource(source);
    EXPECT_EQ(FoundBy(scanner), kHeadFound);
    return source.BytesRead();
}

TEST(GpxTarvikExtParserCostTest, OnlyTheHeadOfAStreamIsRead) {
    const std::size_t ofShortStream = BytesReadOfStream(1000);
    EXPECT_GT(ofShortStream, LargeGpx().head.size());
    EXPECT_LE(ofShortStream, kMostBytesOfAScan);
    EXPECT_EQ(BytesReadOfStream(1000000000), ofShortStream);
}

TEST(GpxTarvikExtParserCostTest, AStreamWithoutAWaypointIsReadToItsEnd) {
    const LargeGpx text;
    const GeneratedSource source(text.head, "<name>no waypoint</name>", 100000,
                                 "<tarvik:form>at the end</tarvik:form></gpx>");
    GpxTarvikExtParser scanner;
    scanner.ParseSource(source);
    EXPECT_NE(FoundBy(scanner).find("layer |Walks|at the end|1; "), std::string::npos) << FoundBy(scanner);
    EXPECT_GT(source.BytesRead(), 2400000U);
}

TEST(GpxTarvikExtParserCostTest, ASourceWithoutAStreamLeavesNothing) {
    struct NoStream : xercesc::InputSource {
        xercesc::BinInputStream* makeStream() const override { return nullptr; }
    };
    GpxTarvikExtParser scanner;
    ScanBytes(scanner, WithExtensions("<tarvik:form>f</tarvik:form>"));
    EXPECT_NO_THROW(scanner.ParseSource(NoStream()));
    EXPECT_EQ(FoundBy(scanner), "time 0");
}

std::size_t IcuRequestsOf(std::size_t numericElements) {
    const std::string head =
        WithExtensions(Repeat("<tarvik:wptcount>1,234</tarvik:wptcount>", numericElements / 2) +
                       Repeat("<tarvik:trktotalkm>12.5</tarvik:trktotalkm>", (numericElements + 1) / 2));
    GpxTarvikExtParser scanner;
    const RefusedIcuMemory counted = RefusedIcuMemory::None();
    ScanBytes(scanner, head);
    const auto stats = scanner.GetStats();
    EXPECT_TRUE(stats && stats->trktotalkm == 12.5);
    return counted.Calls();
}

TEST(GpxTarvikExtParserCostTest, OneNumberFormatServesAScan) {
    IcuRequestsOf(1); // ICU keeps things that it makes on first use
    const std::size_t ofOne = IcuRequestsOf(1);
    EXPECT_GT(ofOne, 0U);
    // Reading a number may cost one request, but not the several requests of a new number format.
    EXPECT_LT(IcuRequestsOf(1000), ofOne + 1500);
}

TEST(GpxTarvikExtParserCostTest, AHeadWithoutNumbersNeedsNoNumberFormat) {
    IcuRequestsOf(1);
    const std::size_t withNumber = IcuRequestsOf(1);
    GpxTarvikExtParser scanner;
    const RefusedIcuMemory counted = RefusedIcuMemory::None();
    ScanBytes(scanner, WithExtensions(Repeat("<tarvik:form>f</tarvik:form>", 1000)));
    EXPECT_LT(counted.Calls(), withNumber);
}

// Files whose scans end in different ways, and one that is not there.
struct ScanEnds {
    GpxFile waypoint{WithExtensions("<tarvik:form>f</tarvik:form><tarvik:wptcount>3</tarvik:wptcount>")};
    GpxFile illFormed{Gpx11("<tarvik:form>f</tarvik:form><tarvik:wptcount>3</tarvik:wptcount><a></b>")};
    std::string missing = waypoint.NarrowPath() + ".missing";

    void ScanAll(GpxTarvikExtParser& scanner) const {
        ScanFile(scanner, waypoint.NarrowPath());
        EXPECT_TRUE(scanner.GetStats());
        ScanFile(scanner, illFormed.NarrowPath());
        EXPECT_TRUE(scanner.GetStats());
        ScanFile(scanner, missing);
        EXPECT_FALSE(scanner.GetStats());
    }
};

TEST(GpxTarvikExtParserCostTest, NothingLeaksHoweverTheScanEnds) {
    const ScanEnds ends;
    {
        GpxTarvikExtParser warmUp;
        ends.ScanAll(warmUp);
    }
    const XercesMemory memory;
    {
        GpxTarvikExtParser scanner;
        std::set<std::size_t> blocks;
        std::set<std::size_t> bytes;
        for (int round = 0; round < 334; ++round) {
            ends.ScanAll(scanner);
            blocks.insert(memory.BlocksInUse());
            bytes.insert(memory.BytesInUse());
        }
        EXPECT_EQ(blocks.size(), 1U) << "the number of blocks changes from scan to scan";
        EXPECT_EQ(bytes.size(), 1U) << "the memory in use changes from scan to scan";
        EXPECT_GT(*blocks.begin(), 0U) << "the scanner keeps its reader";
    }
    EXPECT_GT(memory.Requests(), 1000U);
    EXPECT_EQ(memory.BlocksInUse(), 0U);
    EXPECT_EQ(memory.BytesInUse(), 0U);
}

TEST(GpxTarvikExtParserCostTest, MemoryRefusedByXercesEndsTheScan) {
#ifdef __SANITIZE_ADDRESS__
    const __lsan::ScopedDisabler xercesLosesMemoryWhenItRunsOut;
#endif
    const std::string complete = "layer ||f|1; guids t|; stats 3 0 0 0 -1; time 1232014830000";
    const GpxFile file(WithExtensions("<time>2009-01-15T10:20:30Z</time><tarvik:form>f</tarvik:form>"
                                      "<tarvik:trackGUID>t</tarvik:trackGUID><tarvik:wptcount>3"
                                      "</tarvik:wptcount>"));
    // What a scan may have found when it ends early.
    const std::set<std::string> expected = {"time 0", "time 1232014830000", "layer ||f|1; time 1232014830000",
                                            "layer ||f|1; guids t|; time 1232014830000", complete};
    GpxTarvikExtParser warmUp;
    ScanFile(warmUp, file.NarrowPath());
    bool refused = true;
    std::size_t requests = 0;
    while (refused) {
        XercesMemory memory;
        GpxTarvikExtParser scanner;
        memory.RefuseRequest(++requests);
        EXPECT_NO_THROW(ScanFile(scanner, file.NarrowPath())) << "request " << requests;
        refused = memory.HasRefused();
        EXPECT_TRUE(expected.contains(FoundBy(scanner)))
            << "request " << requests << ": " << FoundBy(scanner);
        if (!refused) {
            EXPECT_EQ(FoundBy(scanner), complete);
        }
        memory.RefuseRequest(0);
        ScanFile(scanner, file.NarrowPath());
        EXPECT_EQ(FoundBy(scanner), complete) << "after request " << requests;
    }
    EXPECT_GT(requests, 50U);
}

// Texts that ICU cannot keep without asking for memory.
TEST(GpxTarvikExtParserCostTest, MemoryRefusedByIcuNeverGivesAWrongText) {
    const std::string longText(5000, 'x');
    const std::string head =
        WithExtensions("<time>2009-01-15T10:20:30.000000000Z</time><tarvik:form>" + longText +
                       "</tarvik:form><tarvik:trackGUID>" + longText + "</tarvik:trackGUID>");
    const std::string time = "time 1232014830000";
    const std::string layer = "layer ||" + longText + "|1; ";
    const std::set<std::string> expected = {"time 0", time, layer + time,
                                            layer + "guids " + longText + "|; " + time};
    std::set<std::string> found;
    bool refusedAny = true;
    for (std::size_t call = 1; refusedAny; ++call) {
        GpxTarvikExtParser scanner;
        const GpxFile file(head);
        const icu::UnicodeString path = file.Path();
        const RefusedIcuMemory refused = RefusedIcuMemory::AtCall(call);
        EXPECT_NO_THROW(scanner.Parse(path)) << "call " << call;
        refusedAny = refused.Refused() > 0;
        found.insert(FoundBy(scanner));
        EXPECT_TRUE(expected.contains(FoundBy(scanner))) << "call " << call << ": " << FoundBy(scanner);
    }
    EXPECT_GT(found.size(), 1U) << "memory was never refused in the middle";
}

TEST(GpxTarvikExtParserCostTest, ATextThatIcuCannotHoldEndsTheScan) {
    const std::string head =
        WithExtensions("<time>2009-01-15T10:20:30Z</time><tarvik:form>" + std::string(5000, 'x') +
                       "</tarvik:form><tarvik:trackGUID>t</tarvik:trackGUID>");
    GpxTarvikExtParser scanner;
    {
        const RefusedIcuMemory refused = RefusedIcuMemory::Above(4096);
        EXPECT_NO_THROW(ScanBytes(scanner, head));
        EXPECT_GT(refused.Refused(), 0U);
    }
    EXPECT_EQ(FoundBy(scanner), "time 1232014830000");
    ScanBytes(scanner, head);
    EXPECT_EQ(FoundBy(scanner), "layer ||" + std::string(5000, 'x') + "|1; guids t|; time 1232014830000");
}

TEST(GpxTarvikExtParserCostTest, APathThatIcuCannotHoldLeavesNothing) {
    GpxTarvikExtParser scanner;
    ScanBytes(scanner, WithExtensions("<tarvik:form>f</tarvik:form>"));
    const icu::UnicodeString longPath(3000, u'x', 3000);
    const icu::UnicodeString path = longPath.tempSubString(0, 2999); // has no zero after it
    {
        const RefusedIcuMemory refused = RefusedIcuMemory::Above(4096);
        EXPECT_NO_THROW(scanner.Parse(path));
        EXPECT_GT(refused.Refused(), 0U);
    }
    EXPECT_EQ(FoundBy(scanner), "time 0");
}

// Only with a format from an earlier scan: without one ICU itself does not survive.
TEST(GpxTarvikExtParserCostTest, MemoryRefusedByIcuWhileNumbersAreReadNeverThrows) {
    const std::string head = WithExtensions("<tarvik:wptcount>1,234</tarvik:wptcount><tarvik:trktotalkm>"
                                            "1234567890.0625</tarvik:trktotalkm>");
    bool refusedAny = true;
    for (std::size_t call = 1; refusedAny; ++call) {
        GpxTarvikExtParser scanner;
        ScanBytes(scanner, head);
        ASSERT_TRUE(scanner.GetStats() && scanner.GetStats()->wptcount == 1234);
        const RefusedIcuMemory refused = RefusedIcuMemory::AtCall(call);
        EXPECT_NO_THROW(ScanBytes(scanner, head)) << "call " << call;
        refusedAny = refused.Refused() > 0;
        const auto stats = scanner.GetStats();
        if (!stats)
            continue;
        EXPECT_TRUE(stats->wptcount == 1234 || stats->wptcount == 0) << "call " << call;
        EXPECT_TRUE(stats->trktotalkm == 1234567890.0625 || stats->trktotalkm == 0.0) << "call " << call;
    }
}

TEST(GpxTarvikExtParserDeathTest, StopsTheProcessWhenIcuCannotMakeANumberFormat) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_DEATH(
        {
            GpxTarvikExtParser scanner;
            const RefusedIcuMemory refused = RefusedIcuMemory::Above(0);
            ScanBytes(scanner, WithExtensions("<tarvik:wptcount>1</tarvik:wptcount>"));
        },
        "^ASSERT failed at LibCore/vexaTransferLib/GpxUtils\\.cpp:[1-9][0-9]*\n$");
}

} // namespace
} // namespace vexaTransferLib
