// SPDX-License-Identifier: MIT

// An untrusted file within the limits is read like a trusted one.

#include "support/GpxFiles.h"
#include "support/GpxReading.h"
#include "support/GpxText.h"
#include "support/HeadScan.h"
#include "support/ModelCompare.h"
#include "support/Mutations.h"
#include "support/TestFiles.h"

#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/GpxTarvikExtParser.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <limits>
#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

constexpr std::uint64_t kEndless = std::numeric_limits<std::uint64_t>::max();
constexpr GpxInputLimits kNoLimits{kEndless, kEndless, kEndless, kEndless, kEndless,
                                   kEndless, kEndless, kEndless, kEndless, kEndless};

void ExpectSameScan(const std::string& bytes) {
    GpxTarvikExtParser trusting;
    GpxTarvikExtParser guarded;
    guarded.SetUntrusted(kNoLimits);
    ScanBytes(trusting, bytes);
    ScanBytes(guarded, bytes);
    EXPECT_EQ(FoundBy(guarded), FoundBy(trusting));
    EXPECT_EQ(guarded.GetScanEnd(), trusting.GetScanEnd());
}

void ExpectSame(const std::string& bytes) {
    const bool isReadFromTrustedFilesOnly = bytes.find("<!DOCTYPE") != std::string::npos;
    const Reading guarded([&](GpxParser& parser, GpxDocument& document) {
        parser.SetUntrusted(kNoLimits);
        parser.Parse(bytes, u"walk.gpx", document);
    });
    if (isReadFromTrustedFilesOnly)
        return;
    const Reading trusted = ReadingOfBytes(bytes, "walk.gpx");
    EXPECT_EQ(guarded.error, trusted.error);
    EXPECT_TRUE(IsSameModel(trusted.document, guarded.document));
    EXPECT_EQ(guarded.written, trusted.written);
    ExpectSameScan(bytes);
}

TEST(UntrustedDifferenceTest, TestFilesAndChangedOnesAreReadTheSame) {
    Mutator mutator(13);
    for (const std::filesystem::path& path : GpxFilesBelow(VEXA_TEST_DATA, 100000)) {
        const std::string file = ReadBytes(path);
        ExpectSame(file);
        for (int i = 0; i < 10 && !HasFailure(); ++i)
            ExpectSame(mutator.Mutate(file));
    }
}

TEST(UntrustedDifferenceTest, FilesOfManyProgramsAreReadTheSame) {
    const std::filesystem::path corpus = std::filesystem::path(VEXA_SHARED) / "corpus";
    if (!std::filesystem::is_directory(corpus))
        GTEST_SKIP() << "there is no corpus of GPX files beside the source tree";
    Mutator mutator(14);
    for (const std::filesystem::path& path : GpxFilesBelow(corpus, 30000)) {
        const std::string file = ReadBytes(path);
        ExpectSame(file);
        for (int i = 0; i < 2 && !HasFailure(); ++i)
            ExpectSame(mutator.Mutate(file));
    }
}

// Each of these is well-formed and similar to the end of a tag, a comment, a section or an instruction.
TEST(UntrustedDifferenceTest, OddMarkupIsReadTheSame) {
    for (const std::string& odd :
         {std::string("<x a = '>' b\n=\n\"'/>\" ></x >"), std::string("<!----><!-- - -> --><?p?><?p ? >?>"),
          std::string("<![CDATA[]]><![CDATA[]]]]><![CDATA[>]]><![CDATA[<x a='>]>]]>"),
          std::string("<name>]] > &lt;x a='</name>"), std::string("<name>a = 'b\" > -- ?></name>"),
          std::string("\xE2\x80\xA8\xC2\x85<x \xC3\xA4='\xE2\x82\xAC'/>")})
        for (const char* declaration : {"", "<?xml version='1.0'?>",
                                        "<?xml  version = \"1.1\"\n encoding='utf-8' ?>", "\xEF\xBB\xBF"}) {
            const std::string bytes = declaration + Gpx11("<metadata>" + odd +
                                                          "<time>2009-01-15T10:20:30Z</time>"
                                                          "</metadata>" +
                                                          odd + "<wpt lat='1' lon='2'/>");
            ASSERT_EQ(ReadingOfBytes(bytes, "walk.gpx").error, "") << bytes;
            ExpectSame(bytes);
        }
}

TEST(UntrustedDifferenceTest, NamesOfEncodingsBeyondAsciiAreRefusedAlike) {
    for (const std::size_t length : {1U, 59U, 60U}) {
        std::string name;
        for (std::size_t i = 0; i < length; ++i)
            name += "\xAC\x20";
        const std::string bytes = "\xFF\xFE" + Wide("<?xml version='1.0' encoding='", 2, false) + name +
                                  Wide("'?>" + Gpx11(""), 2, false);
        ASSERT_NE(ReadingOfBytes(bytes, "walk.gpx").error, "") << length;
        ExpectSame(bytes);
    }
}

} // namespace
} // namespace vexaTransferLib
