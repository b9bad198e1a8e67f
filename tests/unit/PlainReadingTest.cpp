// SPDX-License-Identifier: MIT

// A plain file is read without the XML parser. Model, error, report lines, calls of the error handler and notices must
// be those of a reading from the XML parser's events.

#include "support/CaughtAs.h"
#include "support/DomReading.h"
#include "support/EventsOnly.h"
#include "support/GpxFiles.h"
#include "support/GpxText.h"
#include "support/ModelCompare.h"
#include "support/Mutations.h"
#include "support/RecordingObserver.h"
#include "support/TestFiles.h"
#include "support/WindowOnBytes.h"

#include <vexaTransferLib/GpxError.h>
#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/reader/PlainCheck.h>
#include <vexaTransferLib/reader/PlainLexer.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;
using reader::NotPlain;

NotPlain WhyNot(std::string_view bytes) {
    reader::ByteWindow window = WindowOn(bytes);
    std::vector<reader::LongElement> longElements;
    return CheckPlain(window, std::nullopt, longElements);
}

void ExpectSame(const std::string& path, const HowRead& how) {
    const std::optional<Heard> expected = ReadByEvents(path, how);
    if (!expected)
        return;
    const Heard actual = ReadByParse(path, how);
    EXPECT_EQ(actual.error, expected->error);
    EXPECT_EQ(actual.calls, expected->calls);
    EXPECT_EQ(actual.skipped, expected->skipped);
    EXPECT_EQ(actual.reports, expected->reports);
    EXPECT_TRUE(IsSameModel(expected->document, actual.document));
}

void ExpectSame(const std::string& path) {
    ExpectSame(path, {false, std::nullopt});
    ExpectSame(path, {true, std::nullopt});
    ExpectSame(path, {true, GpxInputLimits()});
}

void ExpectSameOfBytes(const std::string& bytes) {
    const GpxFile file(bytes);
    ExpectSame(file.NarrowPath());
    if (testing::Test::HasFailure())
        ADD_FAILURE() << "the file was: " << bytes.substr(0, 20000);
}

std::vector<std::string> GpxFilesBelow(const std::filesystem::path& folder) {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file() && entry.path().extension() == ".gpx")
            files.push_back(entry.path().string());
    std::sort(files.begin(), files.end());
    return files;
}

TEST(PlainReadingTest, ReadsTheFilesOfTheRepositoryAsTheXmlParserDoes) {
    for (const std::string& file : GpxFilesBelow(VEXA_TEST_DATA)) {
        SCOPED_TRACE(file);
        ExpectSame(file);
    }
}

const std::filesystem::path kCorpus = std::filesystem::path(VEXA_SHARED) / "corpus";

TEST(PlainReadingTest, ReadsTheCorpusAsTheXmlParserDoes) {
    if (!std::filesystem::exists(kCorpus))
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    for (const std::string& file : GpxFilesBelow(kCorpus)) {
        SCOPED_TRACE(file);
        ExpectSame(file);
    }
}

bool IsWellFormed(const std::string& path) {
    const std::optional<Heard> heard = ReadByEvents(path, {false, std::nullopt});
    return heard && heard->calls == "1 resets\n" && heard->error.find("rror parsing") == std::string::npos;
}

const char* NameOf(NotPlain way) {
    switch (way) {
    case NotPlain::kIsPlain:
        return "plain";
    case NotPlain::kDeclaration:
        return "another encoding or version";
    case NotPlain::kDocumentType:
        return "a document type";
    case NotPlain::kName:
        return "names beyond ASCII";
    case NotPlain::kNamespace:
        return "namespaces";
    case NotPlain::kLimit:
        return "a limit";
    case NotPlain::kOther:
        break;
    }
    return "ill-formed, or perhaps so";
}

// Ill-formed files, and those with a document type or another encoding, need the XML parser.
TEST(PlainReadingTest, ReadsNearlyEveryFileOfTheCorpusWithoutTheXmlParser) {
    if (!std::filesystem::exists(kCorpus))
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    std::map<NotPlain, int> ways;
    int left = 0;
    for (const std::string& file : GpxFilesBelow(kCorpus)) {
        const NotPlain way = WhyNot(ReadBytes(file));
        ++ways[way];
        const bool isUtf8 = way != NotPlain::kDeclaration && !ReadBytes(file).starts_with("\xFF\xFE") &&
                            !ReadBytes(file).starts_with("\xFE\xFF");
        if (way != NotPlain::kIsPlain && isUtf8 && way != NotPlain::kDocumentType && IsWellFormed(file)) {
            ++left;
            std::printf("left to the XML parser, %s: %s\n", NameOf(way), file.c_str());
        }
    }
    for (const auto& [way, count] : ways)
        std::printf("%s: %d files\n", NameOf(way), count);
    EXPECT_GT(ways[NotPlain::kIsPlain], 60);
    EXPECT_LE(left * 20, ways[NotPlain::kIsPlain]);
}

// How often each file is changed: three times if it is short, or as often as VEXA_PLAIN_MUTATIONS says if it is not
// very long.
std::size_t MutationsOf(const std::string& bytes) {
    const char* const wanted = std::getenv("VEXA_PLAIN_MUTATIONS");
    if (bytes.size() > (wanted != nullptr ? 300000U : 50000U))
        return 0;
    return wanted != nullptr ? std::strtoul(wanted, nullptr, 10) : 3;
}

// Reads the file from a DOM, too, which gives the same model or the same error.
void ExpectSameByDom(const std::string& path) {
    GpxParser parser;
    GpxDocument expected;
    const Heard actual = ReadByParse(path, {false, std::nullopt});
    std::string error;
    try {
        ReadByDom(parser, path, expected);
    } catch (const std::exception& exception) {
        error = exception.what();
    }
    EXPECT_EQ(actual.error, error);
    EXPECT_TRUE(IsSameModel(expected, actual.document));
}

void ExpectSameOfMutations(const std::string& bytes, std::uint32_t seed) {
    Mutator mutator(seed);
    for (std::size_t round = MutationsOf(bytes); round != 0 && !testing::Test::HasFailure(); --round) {
        SCOPED_TRACE(round);
        const std::string mutated = mutator.Mutate(bytes);
        ExpectSameOfBytes(mutated);
        ExpectSameByDom(GpxFile(mutated).NarrowPath());
    }
}

TEST(PlainReadingTest, ReadsMutationsOfTheRepositorysFilesAsTheXmlParserDoes) {
    std::uint32_t seed = 0;
    for (const std::string& file : GpxFilesBelow(VEXA_TEST_DATA)) {
        SCOPED_TRACE(file);
        ExpectSameOfMutations(ReadBytes(file), ++seed);
    }
}

TEST(PlainReadingTest, ReadsMutationsOfTheCorpusAsTheXmlParserDoes) {
    if (!std::filesystem::exists(kCorpus))
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    std::uint32_t seed = 100;
    for (const std::string& file : GpxFilesBelow(kCorpus)) {
        SCOPED_TRACE(file);
        ExpectSameOfMutations(ReadBytes(file), ++seed);
    }
}

const std::string kSample =
    "<?xml version='1.0' encoding='UTF-8'?>\r\n<gpx version=\"1.1\" "
    "xmlns='http://www.topografix.com/GPX/1/1' "
    "xmlns:t='https://tarvik.example/xmlschemas/gpx-extensions/1/0'>\n<wpt lat='1.5' lon=\"-2\"><ele>3</ele>"
    "<name>a&amp;\xC3\xA9<![CDATA[b]]></name><!-- c --><t:x/></wpt>\n<trk><?p q?><trkseg><trkpt lat='1' "
    "lon='2'/>"
    "</trkseg></trk></gpx>\n";

TEST(PlainReadingTest, ReadsAFileThatIsCutOffAsTheXmlParserDoes) {
    for (std::size_t length = 0; length <= kSample.size() && !HasFailure(); ++length)
        ExpectSameOfBytes(kSample.substr(0, length));
}

// A file that is not plain need not be read here, because nothing but the XML parser reads it. Letters and digits are
// alike.
bool IsWorthTrying(char byte) {
    return std::isalnum(static_cast<unsigned char>(byte)) == 0 || byte == 'x' || byte == '7';
}

TEST(PlainReadingTest, ReadsAFileWithAnyOtherByteAsTheXmlParserDoes) {
    int plain = 0;
    for (std::size_t at = 0; at < kSample.size() && !HasFailure(); ++at)
        for (int byte = 0; byte < 256; ++byte) {
            std::string bytes = kSample;
            bytes[at] = static_cast<char>(byte);
            if (bytes == kSample || WhyNot(bytes) != NotPlain::kIsPlain || !IsWorthTrying(bytes[at]))
                continue;
            ++plain;
            const GpxFile file(bytes);
            ExpectSame(file.NarrowPath(), {true, std::nullopt});
            ASSERT_FALSE(HasFailure()) << "byte " << byte << " at " << at;
        }
    EXPECT_GT(plain, 1000);
}

struct Contents {
    const char* reason;
    std::string bytes;
};

void PrintTo(const Contents& contents, std::ostream* out) {
    *out << contents.reason;
}

class PlainReadingContentsTest : public testing::TestWithParam<Contents> {};

TEST_P(PlainReadingContentsTest, AreReadAsTheXmlParserReadsThem) {
    ExpectSameOfBytes(GetParam().bytes);
    ExpectSameOfMutations(GetParam().bytes, 1);
}

std::string Wpt(const std::string& children) {
    return Gpx11("<wpt lat='1' lon='2'>" + children + "</wpt>");
}

std::string Nested(int depth) {
    std::string start;
    std::string end;
    for (int i = 0; i < depth; ++i) {
        start += "<a>";
        end += "</a>";
    }
    return start + end;
}

std::string ManyAttributes(int count) {
    std::string attributes;
    for (int i = 0; i < count; ++i)
        attributes += " a" + std::to_string(i) + "='1'";
    return Gpx11("<wpt lat='1'" + attributes + " lon='2'/>");
}

INSTANTIATE_TEST_SUITE_P(
    Files, PlainReadingContentsTest,
    testing::Values(
        Contents{"overlong UTF-8", Wpt("<name>a\xC0\xAF</name>")},
        Contents{"surrogates in UTF-8", Wpt("<name>\xED\xA0\x80\xED\xB0\x80</name>")},
        Contents{"U+FFFE", Wpt("<name>\xEF\xBF\xBE</name>")},
        Contents{"U+FFFF", Wpt("<name>\xEF\xBF\xBF</name>")},
        Contents{"U+FFFD and beyond 16 bits", Wpt("<name>\xEF\xBF\xBD\xF4\x8F\xBF\xBF</name>")},
        Contents{"NUL", Wpt(std::string("<name>a\0b</name>", 16))},
        Contents{"NEL and line separator", Wpt("<name>a\xC2\x85z\xE2\x80\xA8</name><ele>x</ele>")},
        Contents{"NEL in an attribute before a notice",
                 Gpx11("<wpt lat='1' lon='2' a='\xC2\x85'><ele>x</ele></wpt>")},
        Contents{"a line separator in an attribute before a notice",
                 Gpx11("<wpt lat='1' lon='2' a='\xE2\x80\xA8'><ele>x</ele></wpt>")},
        Contents{"NEL in other places before a notice",
                 Wpt("<!-- \xC2\x85 --><?p \xE2\x80\xA8?><![CDATA[\xC2\x85]]><ele>x</ele>")},
        Contents{"DEL and C1", Wpt("<name>\x7F\xC2\x80</name>")},
        Contents{"an attribute twice", Gpx11("<wpt lat='1' lon='2' lat='3'/>")},
        Contents{"an attribute twice through two prefixes",
                 Gpx11("<wpt lat='1' lon='2' a:x='' b:x='' xmlns:a='u' xmlns:b='u'/>")},
        Contents{"an attribute in two namespaces",
                 Gpx11("<wpt lat='1' lon='2' a:x='' b:x='' xmlns:a='u' xmlns:b='v'/>")},
        Contents{"an unbound prefix of an attribute", Gpx11("<wpt lat='1' lon='2' a:x=''/>")},
        Contents{"an unbound prefix after its scope", Gpx11("<a:b xmlns:a='u'/><a:b/>")},
        Contents{"an undeclared prefix", Gpx11("<wpt lat='1' lon='2'><a:b xmlns:a=''/></wpt>")},
        Contents{"the prefix xmlns", Gpx11("<wpt lat='1' lon='2' xmlns:xmlns='u'/>")},
        Contents{"an element with the prefix xmlns", Gpx11("<xmlns:wpt lat='1' lon='2'/>")},
        Contents{"the prefix xml", Gpx11("<wpt lat='1' lon='2' xmlns:xml='u'/>")},
        Contents{
            "the prefix xml with its namespace",
            Gpx11("<wpt lat='1' lon='2' xmlns:xml='http://www.w3.org/XML/1998/namespace'><xml:a/></wpt>")},
        Contents{"an element with the prefix xml", Gpx11("<xml:wpt lat='1' lon='2'/><wpt lat='1' lon='2'/>")},
        Contents{"attributes with the prefix xml",
                 Gpx11("<wpt xml:lang='de' xml:lat='9' xml:space='x' lat='1' lon='2'/>")},
        Contents{"another prefix for the namespace of xml",
                 Gpx11("<wpt lat='1' lon='2' xmlns:x='http://www.w3.org/XML/1998/namespace'/>")},
        Contents{"the namespace of xmlns",
                 Gpx11("<wpt lat='1' lon='2' xmlns='http://www.w3.org/2000/xmlns/'/>")},
        Contents{
            "a namespace with blanks and references",
            Gpx11("<wpt lat='1' lon='2' xmlns='  http://www.topografix.com/GPX/1/1'/><a xmlns='a&amp;b'/>")},
        Contents{
            "schema attributes",
            Gpx11("<wpt lat='1' lon='2' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:nil='true' "
                  "xsi:type='x' xsi:schemaLocation='a b'/>")},
        Contents{"]]> in a text", Wpt("<name>a]]>b</name>")},
        Contents{"]] > and ]]&gt; in a text", Wpt("<name>a]] >]]&gt;]]&#62;]</name>")},
        Contents{"-- in a comment", Wpt("<!-- a -- b -->")}, Contents{"--- at its end", Wpt("<!-- a --->")},
        Contents{"a comment of nothing", Wpt("<name>a<!---->b</name>")},
        Contents{"< in an attribute", Gpx11("<wpt lat='1' lon='<2'/>")},
        Contents{"> in texts and attributes", Gpx11("<wpt lat='1' lon='2' a='>'><name>a>b</name></wpt>")},
        Contents{"references to excluded characters", Wpt("<name>&#1;</name>")},
        Contents{"a reference to a surrogate", Wpt("<name>&#xD800;</name>")},
        Contents{"a reference to U+FFFF", Wpt("<name>&#xFFFF;</name>")},
        Contents{"references to white space",
                 Wpt("<name>&#13;&#10;&#9;&#32;</name><ele>&#32;1</ele><desc>&#13;\n</desc>")},
        Contents{"a reference with many zeros", Wpt("<name>&#000000000000000000065;</name>")},
        Contents{"a reference with a capital X", Wpt("<name>&#X41;</name>")},
        Contents{"references in numbers", Wpt("<ele>1&#50;.5</ele><time>2009-01-15T10:20:30&#90;</time>")},
        Contents{"numbers of many kinds",
                 Wpt("<ele>1e2</ele><ele>+1</ele><ele> 1</ele><ele>1 "
                     "</ele><ele>.5</ele><ele>5.</ele><ele>-</ele><ele/>"
                     "<ele>0x1p3</ele><ele>12345678901234567890123</ele><ele>nan</ele><magvar>-.</magvar>")},
        Contents{"times of many kinds",
                 Wpt("<time>2009-01-15T10:20:30</time><time>2009-01-15T10:20:30.25Z</"
                     "time><time>2009-13-15T10:20:30Z</time>"
                     "<time>1969-01-15T10:20:30Z</time><time>2009-01-15T10:20:30+01:00</time><time>x</"
                     "time><time/>")},
        Contents{"white space in attributes",
                 Gpx11("<wpt lat='1' lon='2'><link href='a\tb\nc\r\nd\re &#10;'/></wpt>")},
        Contents{"line ends of every kind",
                 Wpt("\r\n<name>a\r\nb\rc\n</name>\r<ele>x</ele>\r\n\r\r\n<ele>y</ele>")},
        Contents{"deep nesting", Wpt(Nested(200))}, Contents{"deeper nesting", Wpt(Nested(300))},
        Contents{"very deep nesting", Wpt(Nested(100000))},
        Contents{"as many attributes as files have", ManyAttributes(60)},
        Contents{"many attributes", ManyAttributes(70)},
        Contents{"very many attributes", ManyAttributes(2000)},
        Contents{"a long text", Wpt("<desc>" + std::string(600000, 'x') + "</desc><ele>y</ele>")},
        Contents{"a long text in many pieces",
                 Wpt("<desc>" + std::string(300000, 'x') + "<!-- " + std::string(300000, '-' + 1) +
                     " -->\n<b/>" + std::string(300000, 'z') + "</desc><ele>y</ele>")},
        Contents{"a long line of elements that are not read", "<gpx version='1.1'>" + Nested(100) + "</gpx>"},
        Contents{"empty CDATA sections", Wpt("<name><![CDATA[]]></name><desc><![CDATA[]]>x</desc>")},
        Contents{"a long CDATA section", Wpt("<desc><![CDATA[" + std::string(600000, ']') + "]]></desc>")},
        Contents{"references in CDATA sections",
                 Wpt("<name><![CDATA[&lt;a&#65;]]></name><desc><![CDATA[&lt;\xC3\xA9&#65;]]></desc>"
                     "<sym><![CDATA[a&lt;\r\n]]></sym><type><![CDATA[ \xC3\xA9 & b]]></type>")},
        Contents{"instructions", Wpt("<?a?><?b c?><name><?d e?\?>n</name>") + "<?f?>"},
        Contents{"an instruction with a colon", Wpt("<?a:b c?>")},
        Contents{"an instruction named XML", Wpt("<?XML c?>")},
        Contents{"names beyond ASCII", Gpx11("<w\xC3\xA9/><wpt lat='1' lon='2' \xC3\xA9='x'/>")},
        Contents{"standalone", "<?xml version='1.0' standalone='yes'?>" + Wpt("<name>n</name>")},
        Contents{"an encoding in small letters",
                 "<?xml version='1.0' encoding='utf-8'?>" + Wpt("<name>\xC3\xA9</name>")},
        Contents{"a byte order mark and a refused point",
                 "\xEF\xBB\xBF<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'>"
                 "<wpt/></gpx>"},
        Contents{"characters of four bytes before a notice",
                 Wpt("<name>\xF0\x9F\x97\xBB\xC3\xA9</name><ele>x</ele><foo/>\n\xF0\x9F\x97\xBB<foo/>")},
        Contents{"a declaration before a notice on its line",
                 "<?xml version='1.0' encoding='UTF-8'?>" + Wpt("<ele>x</ele>")},
        Contents{"a byte order mark and a declaration before a notice",
                 "\xEF\xBB\xBF<?xml version='1.0'?>\n" + Wpt("<ele>x</ele>")},
        Contents{"a byte order mark and a declaration before a notice on its line",
                 "\xEF\xBB\xBF<?xml version='1.0'?>" + Wpt("<ele>x</ele>")},
        Contents{"white space after the root", Wpt("") + "\r\n \t"}, Contents{"another root", "<kml/>"},
        Contents{"no version", "<gpx/>"},
        Contents{"an unusable version", "<gpx version='1.2'><wpt lat='1' lon='2'/></gpx>"}));

/// A track of a few megabytes, in which every thousandth point has something that is reported.
std::string LongTrack() {
    std::string points;
    for (int i = 0; i < 40000; ++i) {
        points += "<trkpt lat='" + std::to_string(i % 90) + ".5' lon='7.25'><ele>" + std::to_string(i) +
                  "</ele><time>2012-03-04T05:06:07Z</time>";
        points += i % 1000 == 0 ? "<!-- \xC3\xA9 --><ele>x</ele>\r\n<foo/></trkpt>\n" : "</trkpt>\n";
    }
    return Gpx11("<trk><name>n</name><trkseg>\n" + points + "</trkseg></trk>");
}

TEST(PlainReadingTest, ReadsAFileThatIsLongerThanItsWindowAsTheXmlParserDoes) {
    const std::string bytes = LongTrack();
    ASSERT_GT(bytes.size(), 10 * reader::ByteWindow::kStartCapacity);
    EXPECT_EQ(WhyNot(bytes), NotPlain::kIsPlain);
    ExpectSameOfBytes(bytes);
    ExpectSameOfBytes(bytes.substr(0, bytes.size() - 20));
}

const std::vector<GpxPoint>& PointsOf(const GpxDocument& document) {
    return GpxModelAccess::GetSegments(*document.GetTrackIter()).front();
}

TEST(PlainReadingTest, HasRoomForAllPointsOfALongSegmentFromTheStart) {
    GpxDocument document;
    GpxParser().Parse(LongTrack(), u"track", document);
    EXPECT_EQ(PointsOf(document).size(), 40000u);
    EXPECT_EQ(PointsOf(document).capacity(), 40000u);
}

TEST(PlainReadingTest, HasNoRoomForChildrenThatArePerhapsNoPoints) {
    std::string children;
    for (int i = 0; i < 5000; ++i)
        children += "<a/>";
    GpxDocument document;
    GpxParser().Parse(Gpx11("<trk><trkseg>" + children + "<trkpt lat='1' lon='2'/></trkseg></trk>"), u"track",
                      document);
    EXPECT_EQ(PointsOf(document).size(), 1u);
    EXPECT_LT(PointsOf(document).capacity(), 10u);
}

TEST(PlainReadingTest, HasNoRoomInASegmentForThePointsOfAnElementBeforeIt) {
    std::string skipped;
    for (int i = 0; i < 5000; ++i)
        skipped += "<trkpt lat='1' lon='2'/>";
    GpxDocument document;
    GpxParser().Parse(Gpx11("<trk><a:trkseg xmlns:a='b'>" + skipped +
                            "</a:trkseg><trkseg><trkpt lat='1' lon='2'/></trkseg></trk>"),
                      u"track", document);
    EXPECT_EQ(PointsOf(document).size(), 1u);
    EXPECT_LT(PointsOf(document).capacity(), 10u);
}

TEST(PlainReadingTest, ReadsBytesInMemoryAsItReadsAFile) {
    const std::string bytes = LongTrack();
    GpxParser parser;
    GpxDocument ofFile;
    GpxDocument ofBytes;
    const GpxFile file(bytes);
    parser.Parse(file.Path(), ofFile);
    parser.Parse(bytes, file.Path(), ofBytes);
    EXPECT_TRUE(IsSameModel(ofFile, ofBytes));
}

TEST(PlainReadingTest, ReportsItsProgressFromTheFirstByteToTheLast) {
    const std::string bytes = LongTrack();
    const GpxFile file(bytes);
    RecordingObserver observer;
    GpxParser parser;
    parser.SetObserver(&observer);
    GpxDocument document;
    parser.Parse(file.Path(), document);
    ASSERT_GT(observer.progress.size(), 30u);
    EXPECT_LT(observer.progress.size(), 300u);
    EXPECT_EQ(observer.progress.front().first, 0u);
    EXPECT_EQ(observer.progress.back().first, bytes.size());
    EXPECT_TRUE(std::is_sorted(observer.progress.begin(), observer.progress.end()));
}

// The file is read twice. Whatever it has become by the second time, the reading ends, and says what the XML parser
// finds.
TEST(PlainReadingTest, SurvivesAFileThatShrinksWhileItIsRead) {
    const std::string bytes = LongTrack();
    for (const std::uintmax_t length : {std::uintmax_t{0}, std::uintmax_t{10}, std::uintmax_t{700000}}) {
        const GpxFile file(bytes);
        RecordingObserver observer;
        observer.goesOn = [&] {
            if (observer.progress.size() == 3)
                std::filesystem::resize_file(file.NarrowPath(), length);
            return true;
        };
        GpxParser parser;
        parser.SetObserver(&observer);
        GpxDocument document;
        EXPECT_THROW(parser.Parse(file.Path(), document), GpxReadError) << length;
        EXPECT_EQ(document.GetTrackCount(), 0u);
    }
}

} // namespace
} // namespace vexaTransferLib
