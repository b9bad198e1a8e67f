// SPDX-License-Identifier: MIT

// A file is read from the XML parser's events, or from a DOM tree when the events contain less. The results
// must be the same.

#include "support/DomReading.h"
#include "support/GpxFiles.h"
#include "support/GpxReading.h"
#include "support/GpxText.h"
#include "support/ModelCompare.h"
#include "support/Mutations.h"
#include "support/RecordingObserver.h"
#include "support/RecordingParser.h"
#include "support/SampleDocument.h"
#include "support/TestFiles.h"

#include <vexaTransferLib/GpxParser.h>

#include <gtest/gtest.h>
#include <xercesc/util/OutOfMemoryException.hpp>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

/// A host that ignores the errors of the XML parser.
class UnheedingParser : public GpxParser {
public:
    void error(const xercesc::SAXParseException&) override {}
    void fatalError(const xercesc::SAXParseException&) override {}
};

/// The error of a reading that a host's ignoring does not prevent, and the document that was read.
std::string ReadUnheeding(const std::function<void(GpxParser&, GpxDocument&)>& read, GpxDocument& document) {
    UnheedingParser parser;
    try {
        read(parser, document);
    } catch (const std::exception& exception) {
        return exception.what();
    }
    return "";
}

void ExpectSameUnheeding(const std::string& path) {
    GpxDocument expected;
    GpxDocument actual;
    const std::string expectedError = ReadUnheeding(
        [&path](GpxParser& parser, GpxDocument& document) { ReadByDom(parser, path, document); }, expected);
    const std::string actualError = ReadUnheeding(
        [&path](GpxParser& parser, GpxDocument& document) {
            parser.Parse(icu::UnicodeString::fromUTF8(path), document);
        },
        actual);
    EXPECT_EQ(actualError, expectedError);
    EXPECT_TRUE(IsSameModel(expected, actual));
}

/// The calls of the error handler, and whether the reading has thrown.
std::string HeardWhile(const std::function<void(GpxParser&, GpxDocument&)>& read) {
    RecordingParser parser;
    GpxDocument document;
    std::string end;
    try {
        read(parser, document);
    } catch (const std::exception&) {
        end = "thrown\n";
    }
    std::string heard;
    for (const RecordingParser::Call& call : parser.calls)
        heard += call.kind + " " + std::to_string(call.line) + ":" + std::to_string(call.column) + " " +
                 call.message + "\n";
    return heard + end;
}

/// The reports to an observer about skipped elements and the XML parser's messages, and the error of the
/// reading.
std::string SkippedBy(const std::function<void(GpxParser&, GpxDocument&)>& read) {
    RecordingObserver observer;
    GpxParser parser;
    parser.SetObserver(&observer);
    std::string error;
    GpxDocument document;
    try {
        read(parser, document);
    } catch (const std::exception& exception) {
        error = exception.what();
    }
    // In an ill-formed file, skipped elements are reported only when it is read from events.
    const bool isIllFormed = error.find("One or more errors") != std::string::npos;
    return observer.messages + (isIllFormed ? "" : observer.skipped) + error;
}

/// Compares the reading from events with that from the DOM; true when the file was read without an error.
bool ExpectSameByEventsAndDom(const std::string& path) {
    const auto byDom = [&path](GpxParser& parser, GpxDocument& document) {
        ReadByDom(parser, path, document);
    };
    const auto byParse = [&path](GpxParser& parser, GpxDocument& document) {
        parser.Parse(icu::UnicodeString::fromUTF8(path), document);
    };
    const Reading expected(byDom);
    const Reading actual(byParse);
    EXPECT_EQ(actual.error, expected.error);
    EXPECT_TRUE(IsSameModel(expected.document, actual.document));
    // The readers may have complained before the file proved to be ill-formed.
    if (expected.error.find("One or more errors") == std::string::npos) {
        EXPECT_EQ(actual.written, expected.written);
    }
    EXPECT_EQ(HeardWhile(byParse), HeardWhile(byDom));
    EXPECT_EQ(SkippedBy(byParse), SkippedBy(byDom));
    if (!expected.error.empty())
        ExpectSameUnheeding(path);
    return actual.error.empty();
}

bool ExpectSameOfBytes(const std::string& bytes) {
    const GpxFile file(bytes);
    const bool isRead = ExpectSameByEventsAndDom(file.NarrowPath());
    if (testing::Test::HasFailure())
        ADD_FAILURE() << "the file was: " << bytes.substr(0, 20000);
    return isRead;
}

std::vector<std::string> FilesBelow(const std::filesystem::path& folder, std::uintmax_t largest) {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file() && entry.path().extension() == ".gpx" && entry.file_size() <= largest)
            files.push_back(entry.path().string());
    std::sort(files.begin(), files.end());
    return files;
}

const std::filesystem::path kCorpus = std::filesystem::path(VEXA_SHARED) / "corpus";

TEST(ReaderDifferenceTest, ReadTheFilesOfTheRepositoryAlike) {
    int read = 0;
    for (const std::string& file : FilesBelow(VEXA_TEST_DATA, 100000000)) {
        SCOPED_TRACE(file);
        read += ExpectSameByEventsAndDom(file) ? 1 : 0;
    }
    EXPECT_GT(read, 5);
}

TEST(ReaderDifferenceTest, ReadTheCorpusAlike) {
    if (!std::filesystem::exists(kCorpus))
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    int read = 0;
    for (const std::string& file : FilesBelow(kCorpus, 100000000)) {
        SCOPED_TRACE(file);
        read += ExpectSameByEventsAndDom(file) ? 1 : 0;
    }
    EXPECT_GT(read, 60);
}

struct Contents {
    const char* reason;
    std::string bytes;
};

void PrintTo(const Contents& contents, std::ostream* out) {
    *out << contents.reason;
}

class ReaderDifferenceContentsTest : public testing::TestWithParam<Contents> {};

TEST_P(ReaderDifferenceContentsTest, AreReadAlike) {
    ExpectSameOfBytes(GetParam().bytes);
}

std::string Wpt(const std::string& children) {
    return Gpx11("<wpt lat='1' lon='2'>" + children + "</wpt>");
}

const std::string kVendor = "xmlns:t='https://tarvik.example/xmlschemas/gpx-extensions/1/0'";

INSTANTIATE_TEST_SUITE_P(
    Files, ReaderDifferenceContentsTest,
    testing::Values(
        Contents{"text and comment", Wpt("<name>a<!-- b -->c</name>")},
        Contents{"comment first", Wpt("<name><!-- b -->c</name>")},
        Contents{"instruction first", Wpt("<name><?x y?>c</name>")},
        Contents{"CDATA", Wpt("<name><![CDATA[a<b]]></name>")},
        Contents{"empty CDATA", Wpt("<name><![CDATA[]]>a</name>")},
        Contents{"text and CDATA", Wpt("<name>a<![CDATA[b]]></name>")},
        Contents{"CDATA with an end mark", Wpt("<name><![CDATA[a]]]]><![CDATA[>b]]></name>")},
        Contents{"character references", Wpt("<name>a&#98;&lt;&#x1F5FB;</name>")},
        Contents{"elements between texts", Wpt("<name>a<b>c</b>d</name>")},
        Contents{"document name of many nodes",
                 Gpx11("<metadata><name>a<b>c<!-- x --><![CDATA[d]]></b>&amp;<?p q?>e</name></metadata>")},
        Contents{"document name without text", Gpx11("<name/><name><b/></name>")},
        Contents{"carriage returns", Wpt("<name>a\r\nb\rc</name>")},
        Contents{"a long text",
                 Wpt("<desc>" + std::string(300000, 'x') + "&amp;" + std::string(70000, 'y') + "</desc>")},
        Contents{"a long CDATA", Wpt("<desc><![CDATA[" + std::string(300000, 'x') + "]]></desc>")},
        Contents{"attributes with prefixes", Gpx11("<wpt x:lat='9' xmlns:x='y' lat='1' lon='2'/>")},
        Contents{"attributes with references",
                 Gpx11("<wpt lat='&#49;' lon=' 2'><link href='a&amp;b'/></wpt>")},
        Contents{"no namespace", "<gpx version='1.1'><wpt lat='1' lon='2'/></gpx>"},
        Contents{"a prefixed root",
                 "<g:gpx version='1.1' xmlns:g='http://www.topografix.com/GPX/1/1'>"
                 "<g:wpt lat='1' lon='2'><g:name>n</g:name><name>m</name></g:wpt></g:gpx>"},
        Contents{"another root", "<kml version='1.1'/>"},
        Contents{"a root of another name with points", "<gpxx version='1.1'><wpt lat='1' lon='2'/></gpxx>"},
        Contents{"no version", "<gpx/>"},
        Contents{"an unusable version", "<gpx version='1.2'><wpt lat='1' lon='2'/></gpx>"},
        Contents{"a waypoint without position in the middle",
                 Gpx11("<wpt lat='1' lon='2'/><wpt/><wpt lat='3' lon='4'/><trk/>")},
        Contents{"a waypoint without position and no end", Gpx11("<wpt/>").substr(0, 150)},
        Contents{"an unreadable point before ill-formed text", Gpx11("<wpt lat='x' lon='2'/><a></b>")},
        Contents{"out of order", Gpx11("<trk/><wpt lat='1' lon='2'/><rte/><trk><name>t</name></trk>")},
        Contents{"a waypoint between routes",
                 Gpx11("<rte><name>a</name></rte><wpt lat='1' lon='2'/><rte><name>b</name></rte>")},
        Contents{"a waypoint in a waypoint", Wpt("<wpt lat='1' lon='2'/>")},
        Contents{"a track in a track",
                 Gpx11("<trk><trk><trkseg/></trk><trkseg><trkseg/><trkpt lat='1' lon='2'/>"
                       "</trkseg><trkpt lat='1' lon='2'/></trk>")},
        Contents{"a name behind the first route point",
                 Gpx11("<rte><name>a</name><rtept lat='1' lon='2'/><name>b</name><src>s</src></rte>")},
        Contents{"route points that the route refuses",
                 Gpx11("<rte " + kVendor +
                       "><extensions><t:routeType>points</t:routeType></extensions>"
                       "<rtept lat='1' lon='2'/><rtept lat='1' lon='2'><extensions>"
                       "<t:routePointType>start</t:routePointType></extensions></rtept></rte>")},
        Contents{"track data behind the points",
                 Gpx11("<trk " + kVendor +
                       "><trkseg><trkpt lat='1' lon='2'/></trkseg><name>n</name>"
                       "<extensions><t:color>5</t:color></extensions></trk>")},
        Contents{"foreign elements with known names",
                 Gpx11("<x xmlns='y'><wpt lat='1' lon='2'/></x><trk><x:trkseg xmlns:x='y'/></trk>")},
        Contents{"a declared namespace in the middle",
                 Gpx11("<wpt lat='1' lon='2' xmlns='http://www.topografix.com/GPX/1/0'/>")},
        Contents{"two sets of metadata", Gpx11("<metadata><extensions><form>f</form></extensions></metadata>"
                                               "<metadata><extensions/></metadata>")},
        Contents{"XML 1.1", "<?xml version='1.1'?>" + Wpt("<name>a&#x85;b</name>")},
        Contents{"XML 1.2", "<?xml version='1.2'?>" + Wpt("<name>n</name>")},
        Contents{"a document type", "<!DOCTYPE gpx>" + Wpt("<name>n</name>")},
        Contents{"a document type and an ill-formed end", "<!DOCTYPE gpx>" + Wpt("<name>n</nam>")},
        Contents{"an ill-formed document type", "<!DOCTYPE>" + Wpt("")},
        Contents{"entities", "<!DOCTYPE gpx [<!ENTITY e 'text'>]>" + Wpt("<name>a&e;b</name>")},
        Contents{"text behind the root", Wpt("") + "text"},
        Contents{"comments around the root", "<!-- a -->" + Wpt("") + "<!-- b --><?c d?>"},
        Contents{"a byte order mark", "\xEF\xBB\xBF" + Wpt("<name>\xC3\xA9</name>")},
        Contents{"bad UTF-8", Wpt("<name>\xE9</name>")}, Contents{"nothing", ""}, Contents{"blanks", "  \n"},
        Contents{"an unknown encoding", "<?xml version='1.0' encoding='x-none'?>" + Wpt("")},
        Contents{"an undefined entity", Wpt("<name>&x;</name>")},
        Contents{"an undeclared prefix", Wpt("<x:name/>")}));

TEST(ReaderDifferenceTest, ReadMutationsAlike) {
    const std::vector<std::string> seeds = {
        ReadTestData("cli/hand-written.gpx"), ReadTestData("writer/everything-1.1.gpx"),
        Gpx11(
            "<metadata><name>m</name></metadata><wpt lat='1' lon='2'><name>a</name><ele>5</ele></wpt>"
            "<rte><name>r</name><rtept lat='3' lon='4'/></rte><trk><name>t</name><trkseg><trkpt lat='5' "
            "lon='6'>"
            "<ele>1</ele><time>2009-01-15T10:20:30Z</time></trkpt><trkpt lat='7' lon='8'/></trkseg></trk>")};
    Mutator mutator(20);
    int read = 0;
    constexpr int kRounds = 900;
    for (int round = 0; round < kRounds && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        read +=
            ExpectSameOfBytes(mutator.Mutate(seeds[static_cast<std::size_t>(round) % seeds.size()])) ? 1 : 0;
    }
    // With fewer well-formed files the mutations would test little.
    EXPECT_GT(read, kRounds / 4);
    EXPECT_LT(read, kRounds);
}

TEST(ReaderDifferenceTest, ReadMutationsOfTheCorpusAlike) {
    if (!std::filesystem::exists(kCorpus))
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    Mutator mutator(7);
    for (const std::string& file : FilesBelow(kCorpus, 40000)) {
        SCOPED_TRACE(file);
        const std::string bytes = ReadBytes(file);
        for (int round = 0; round < 4 && !HasFailure(); ++round)
            ExpectSameOfBytes(mutator.Mutate(bytes));
    }
}

} // namespace
} // namespace vexaTransferLib
