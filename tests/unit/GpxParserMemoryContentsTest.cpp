// SPDX-License-Identifier: MIT

// Bytes in memory of any content are read like a file with the same bytes.

#include "support/GpxFiles.h"
#include "support/GpxReading.h"
#include "support/GpxText.h"
#include "support/ModelCompare.h"
#include "support/TestFiles.h"
#include "support/Utf16.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

const std::string kGoodFile = Gpx11("<wpt lat='1' lon='2'/>");

std::string Replaced(std::string text, const std::string& part, const std::string& by) {
    for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + by.size()))
        text.replace(at, part.size(), by);
    return text;
}

// Returns the error, empty when the document was read.
std::string ExpectSameFromBytes(const std::string& path) {
    const std::string name = "no such folder/" + std::filesystem::path(path).filename().string();
    const Reading expected = ReadingOfFile(path);
    const Reading actual = ReadingOfBytes(ReadBytes(path), name);
    EXPECT_EQ(actual.error, Replaced(expected.error, path, name));
    EXPECT_EQ(actual.written, expected.written) << path;
    EXPECT_TRUE(IsSameModel(expected.document, actual.document)) << path;
    return actual.error;
}

struct Contents {
    const char* reason;
    std::string bytes;
    const char* error; // the start of the message without the type; empty when it is read
};

void PrintTo(const Contents& row, std::ostream* out) {
    *out << row.reason;
}

class GpxParserMemoryContentsTest : public testing::TestWithParam<Contents> {};

TEST_P(GpxParserMemoryContentsTest, AreReadAsFromAFile) {
    const GpxFile file(GetParam().bytes, "my.walk.gpx");
    const std::string error = ExpectSameFromBytes(file.NarrowPath());
    EXPECT_EQ(error.empty(), *GetParam().error == '\0');
    EXPECT_NE(error.find(GetParam().error), error.npos) << error;
}

const std::string kNamed = Gpx11("<metadata><name>\u00E9\u5C71\U0001F30D</name><time>2009-01-15T10:20:30Z"
                                 "</time></metadata><wpt lat='1' lon='2'/>");
constexpr char kIllFormed[] = "One or more errors encountered while parsing the GPX file: no such folder/";

INSTANTIATE_TEST_SUITE_P(
    Bytes, GpxParserMemoryContentsTest,
    testing::Values(
        Contents{"Good", kGoodFile, ""}, Contents{"Named", kNamed, ""},
        Contents{"Gpx10", Gpx10("<rte><rtept lat='1' lon='2'/></rte><trk><trkseg/></trk>"), ""},
        Contents{"Mark", "\xEF\xBB\xBF" + kNamed, ""},
        Contents{"Utf16", InUtf16(u"\uFEFF" + icu::UnicodeString::fromUTF8(kNamed), false), ""},
        Contents{"Latin1", "<?xml version='1.0' encoding='ISO-8859-1'?>" + Gpx11("<name>\xE9\xDF\xFF</name>"),
                 ""},
        Contents{"DeclaredUtf8", "<?xml version='1.0' encoding='UTF-8'?>" + kNamed, ""},
        Contents{"EncodingContradictsTheBytes", "<?xml version='1.0' encoding='UTF-16'?>" + kNamed, ""},
        Contents{"NoChildren", Gpx11(""), ""},
        Contents{"Skipped", Gpx11("<trk/><wpt/><gpx10:wpt/><rte><rtept lat='x'/></rte>"), ""},
        Contents{"PointTypeRefused", Gpx11("<rte><rtept lat='91' lon='0'/></rte>"), ""},
        Contents{"Empty", "", kIllFormed}, Contents{"PlainText", "no XML", kIllFormed},
        Contents{"OnlyADeclaration", "<?xml version='1.0'?>", kIllFormed},
        Contents{"NotClosed", "<gpx version='1.1'><wpt>", kIllFormed},
        Contents{"TwoRoots", kGoodFile + kGoodFile, kIllFormed},
        Contents{"BadUtf8", Gpx11("<name>\xE9t\xE9</name>"), kIllFormed},
        Contents{"ZeroByte", Gpx11(std::string("a\0b", 3)), kIllFormed},
        Contents{"ZeroByteAtTheEnd", kGoodFile + std::string(1, '\0'), ""},
        Contents{"UndefinedEntity", Gpx11("<name>&nbsp;</name>"), kIllFormed},
        Contents{"Invalid", "<!DOCTYPE gpx [<!ELEMENT other EMPTY>]>" + kGoodFile, kIllFormed},
        Contents{"UnknownVersionOfXml", "<?xml version='1.2'?>" + kGoodFile,
                 "Error parsing GPX file: no such folder/my.walk.gpx. DOM error code: 9"},
        Contents{"WrongRoot", "<kml/>", "The GPX document element was not found."},
        Contents{"NoVersion", "<gpx/>", "Unable to read the GPX version."},
        Contents{"UnknownVersion", Gpx("1.2", kGpx11Uri, ""), "Unsupported GPX version string."},
        Contents{"BadWaypoint", Gpx11("<name>n</name><wpt lat='1' lon='2'/><wpt lat='1'/>"),
                 "Unable to read a GPX point's longitude."},
        Contents{"RefusedWaypoint", Gpx11("<wpt lat='91' lon='2'/>"),
                 "The GPX point's latitude is invalid."}),
    [](const auto& row) { return std::string(row.param.reason); });

// Returns how many of the files were read.
std::size_t ExpectSameForFilesIn(const std::filesystem::path& folder) {
    std::size_t read = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".gpx")
            read += ExpectSameFromBytes(entry.path().string()).empty() ? 1 : 0;
    return read;
}

TEST(GpxParserMemoryFilesTest, FilesOfTheTestsAreReadTheSameFromBytes) {
    EXPECT_GE(ExpectSameForFilesIn(std::filesystem::path(VEXA_TEST_DATA) / "cli"), 3U);
    EXPECT_GE(ExpectSameForFilesIn(std::filesystem::path(VEXA_TEST_DATA) / "writer"), 1U);
}

TEST(GpxParserMemoryFilesTest, FilesOfTheCorpusAreReadTheSameFromBytes) {
    const std::filesystem::path corpus = std::filesystem::path(VEXA_SHARED) / "corpus";
    if (!std::filesystem::is_directory(corpus / "gpx"))
        GTEST_SKIP() << "there is no corpus of GPX files beside the source tree";
    EXPECT_GE(ExpectSameForFilesIn(corpus / "gpx"), 60U);
    EXPECT_GE(ExpectSameForFilesIn(corpus / "gpx-malformed"), 1U);
}

} // namespace
} // namespace vexaTransferLib
