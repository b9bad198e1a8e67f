// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxParser.h>

#include "support/ContractChecks.h"
#include "support/GpxFiles.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"
#include "support/Utf16.h"

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace vexaTransferLib {
namespace {

using namespace testing_support;

const std::string kGoodFile = Gpx11("<wpt lat='1' lon='2'/>");

std::string NameReadFrom(const std::string& path) {
    GpxParser parser;
    GpxDocument document;
    parser.Parse(icu::UnicodeString::fromUTF8(path), document);
    EXPECT_EQ(CountsOf(document), "1 waypoints, 0 routes, 0 tracks") << path;
    return NameOf(document);
}

TEST(GpxParserFilesTest, TheDocumentIsNamedAfterTheFile) {
    struct Row {
        const char* path; // below a new folder
        const char* name;
    };
    constexpr Row kRows[] = {
        {"data/tracks/walk.2009.gpx", "walk.2009"},
        {"noext", "noext"},
        {"dir.d/file", "file"},
        {".gpx", ""},
        {"walk.", "walk"},
        {"..walk.gpx", "..walk"},
        {"back\\slash.gpx", "back\\slash"},
        {"a b#1%20?x.gpx", "a b#1%20?x"},
        {"W\u00E4nderung \u5C71\u9053 \U0001F30D.gpx", "W\u00E4nderung \u5C71\u9053 \U0001F30D"},
        {"d \u00F6 % #/x.gpx", "x"},
    };
    for (const Row& row : kRows) {
        const TemporaryFolder folder;
        const std::filesystem::path path = folder / row.path;
        std::filesystem::create_directories(path.parent_path());
        WriteBytes(path, kGoodFile);
        EXPECT_EQ(NameReadFrom(path.string()), row.name);
    }
}

TEST(GpxParserFilesTest, ARelativePathWithoutAFolderIsRead) {
    const TemporaryFolder folder;
    WriteBytes(folder / "noext", kGoodFile);
    WriteBytes(folder / "walk.gpx", kGoodFile);
    const CurrentFolder current(folder / "");
    EXPECT_EQ(NameReadFrom("noext"), "noext");
    EXPECT_EQ(NameReadFrom("walk.gpx"), "walk");
    EXPECT_EQ(NameReadFrom("./walk.gpx"), "walk");
}

void ExpectUnreadable(const std::string& path) {
    GpxParser parser;
    GpxDocument document;
    GpxModelAccess::SetName(document, u"before");
    document.AddTrack(GpxTrack());
    EXPECT_FAILURE(parser.Parse(icu::UnicodeString::fromUTF8(path), document), dbc::postcondition_error,
                   ParseErrorsMessage(path), "");
    EXPECT_EQ(CountsOf(document), "0 waypoints, 0 routes, 1 tracks");
    EXPECT_EQ(NameOf(document), "before");
}

TEST(GpxParserFilesTest, AMissingFileIsRefusedAndTheDocumentLeftUntouched) {
    const TemporaryFolder folder;
    ExpectUnreadable((folder / "missing.gpx").string());
    ExpectUnreadable((folder / "f\u00E4hlt %20#.gpx").string());
}

TEST(GpxParserFilesTest, ADirectoryIsRefused) {
#ifdef __SANITIZE_ADDRESS__
    const __lsan::ScopedDisabler xercesLosesTheNameOfADirectory;
#endif
    const TemporaryFolder folder;
    ExpectUnreadable((folder / "").string());
}

TEST(GpxParserFilesTest, AFileThatMayNotBeReadIsRefused) {
    if (geteuid() == 0)
        GTEST_SKIP() << "root may read every file";
    const GpxFile file(kGoodFile);
    std::filesystem::permissions(file.NarrowPath(), std::filesystem::perms::none);
    ExpectUnreadable(file.NarrowPath());
}

struct BadFile {
    const char* reason;
    std::string bytes;
};

class GpxParserBadFileTest : public testing::TestWithParam<BadFile> {};

TEST_P(GpxParserBadFileTest, IsRefusedAndTheDocumentLeftUntouched) {
    const GpxFile file(GetParam().bytes);
    ExpectUnreadable(file.NarrowPath());
}

std::string WithDeclarations(const std::string& declarations, const std::string& children) {
    return "<!DOCTYPE gpx [" + declarations + "]>" + Gpx11(children);
}

INSTANTIATE_TEST_SUITE_P(
    Files, GpxParserBadFileTest,
    testing::Values(BadFile{"Empty", ""}, BadFile{"OnlyADeclaration", "<?xml version=\"1.0\"?>"},
                    BadFile{"PlainText", "no XML at all"},
                    BadFile{"LineBeforeTheDeclaration", "\n<?xml version=\"1.0\"?>" + kGoodFile},
                    BadFile{"NotClosed", Gpx11("<wpt lat='1' lon='2'>").substr(0, 200)},
                    BadFile{"MismatchedTag", Gpx11("<wpt lat='1' lon='2'></trk>")},
                    BadFile{"TwoRoots", kGoodFile + kGoodFile},
                    BadFile{"AttributeTwice", Gpx11("<wpt lat='1' lat='2' lon='2'/>")},
                    BadFile{"UnboundPrefix", Gpx11("<unbound:x/>")},
                    BadFile{"UndefinedEntity", Gpx11("<name>&nbsp;</name>")},
                    BadFile{"ControlCharacter", Gpx11("<name>\x01</name>")},
                    BadFile{"ReferenceToAControlCharacter", Gpx11("<name>&#1;</name>")},
                    BadFile{"BadUtf8", Gpx11("<name>\xE9t\xE9</name>")},
                    BadFile{"CutUtf8", Gpx11("<name>\xC3</name>")},
                    BadFile{"UnknownEncoding", "<?xml version=\"1.0\" encoding=\"x-none\"?>" + kGoodFile},
                    BadFile{"ZeroByte", Gpx11(std::string("<name>a\0b</name>", 16))},
                    BadFile{"DeclaredEntity", WithDeclarations("<!ENTITY e 'x'>", "<name>&e;</name>")},
                    BadFile{"UnusedEntity", WithDeclarations("<!ENTITY e 'x'>", "")},
                    BadFile{"DeclaredElement", WithDeclarations("<!ELEMENT gpx EMPTY>", "")}),
    [](const auto& row) { return std::string(row.param.reason); });

TEST(GpxParserFilesTest, ADocumentTypeWithoutDeclarationsIsAccepted) {
    EXPECT_EQ(CountsOf(ReadGpx("<!DOCTYPE gpx>" + kGoodFile)), "1 waypoints, 0 routes, 0 tracks");
}

// Declarations for everything in the file, so that it is valid.
std::string ValidGpx(const std::string& entities, const std::string& children) {
    return "<!DOCTYPE gpx [<!ELEMENT gpx ANY><!ATTLIST gpx version CDATA #IMPLIED xmlns CDATA #FIXED "
           "'http://www.topografix.com/GPX/1/1'><!ELEMENT metadata ANY><!ELEMENT name ANY><!ELEMENT desc ANY>"
           "<!ELEMENT trk ANY><!ELEMENT wpt ANY><!ATTLIST wpt lat CDATA '5' lon CDATA #IMPLIED>" +
           entities + "]><gpx version='1.1'>" + children + "</gpx>";
}

TEST(GpxParserFilesTest, EntityReferencesSplitElementTextButNotTheDocumentName) {
    const GpxDocument document =
        ReadGpx(ValidGpx("<!ENTITY e '&amp;<!-- c --><desc>x</desc>'>",
                         "<name>Tom &e; Jerry</name>"
                         "<wpt lat='1' lon='2'><name>Tom &e; Jerry</name><desc>&e;</desc></wpt>"));
    EXPECT_EQ(NameOf(document), "Tom &x Jerry");
    EXPECT_EQ(TextOf(*document.GetWaypointIter(), &GpxPoint::GetName), "Tom ");
    EXPECT_EQ(TextOf(*document.GetWaypointIter(), &GpxPoint::GetDescription), kAbsent);
}

TEST(GpxParserFilesTest, AnEntityReferenceAmongChildrenIsSkipped) {
    EXPECT_EQ(CountsOf(ReadGpx(ValidGpx("<!ENTITY e '<trk/>'>", "<trk/>&e;<trk/>"))),
              "0 waypoints, 0 routes, 2 tracks");
}

TEST(GpxParserFilesTest, AttributeDefaultsOfTheDocumentTypeCount) {
    const GpxDocument document = ReadGpx(ValidGpx("", "<wpt lon='2'/>"));
    ASSERT_EQ(document.GetWaypointCount(), 1u);
    EXPECT_EQ(PositionOf(*document.GetWaypointIter()), "5 2");
}

TEST(GpxParserFilesTest, AnExternalEntityIsRead) {
    const TemporaryFolder folder;
    WriteBytes(folder / "part.txt", "from outside");
    WriteBytes(folder / "walk.gpx",
               ValidGpx("<!ENTITY e SYSTEM 'part.txt'>", "<name>&e;</name><wpt lat='1' lon='2'/>"));
    EXPECT_EQ(NameReadFrom((folder / "walk.gpx").string()), "from outside");
}

struct Encoded {
    const char* reason;
    std::string bytes;
    const char* name; // UTF-8
};

std::string NameInUtf16(const std::string& declaration, bool bigEndian) {
    const std::string name = "<metadata><name>\u00E9\u20AC\u5C71\U0001F30D</name></metadata>";
    return InUtf16(u"\uFEFF" + icu::UnicodeString::fromUTF8(declaration + Gpx11(name)), bigEndian);
}

std::string WithName(const std::string& declaration, const std::string& name) {
    return declaration + Gpx11("<metadata><name>" + name + "</name></metadata>");
}

class GpxParserEncodingTest : public testing::TestWithParam<Encoded> {};

TEST_P(GpxParserEncodingTest, IsRead) {
    EXPECT_EQ(NameOf(ReadGpx(GetParam().bytes)), GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(
    Encodings, GpxParserEncodingTest,
    testing::Values(
        Encoded{"Utf8", WithName("", "\u00E9\u5C71\U0001F30D"), "\u00E9\u5C71\U0001F30D"},
        Encoded{"Utf8Mark", "\xEF\xBB\xBF" + WithName("<?xml version='1.0' encoding='UTF-8'?>", "\u00E9"),
                "\u00E9"},
        Encoded{"Utf8MarkWithoutDeclaration", "\xEF\xBB\xBF" + WithName("", "\u00E9"), "\u00E9"},
        Encoded{"Utf16LittleEndian", NameInUtf16("<?xml version='1.0' encoding='UTF-16'?>", false),
                "\u00E9\u20AC\u5C71\U0001F30D"},
        Encoded{"Utf16BigEndian", NameInUtf16("<?xml version='1.0' encoding='UTF-16'?>", true),
                "\u00E9\u20AC\u5C71\U0001F30D"},
        Encoded{"Utf16WithoutDeclaration", NameInUtf16("", false), "\u00E9\u20AC\u5C71\U0001F30D"},
        Encoded{"Latin1", WithName("<?xml version='1.0' encoding='ISO-8859-1'?>", "\xE9\xDF\xFF"),
                "\u00E9\u00DF\u00FF"},
        Encoded{"Windows1252", WithName("<?xml version='1.0' encoding='windows-1252'?>", "\x80\x93\xE9\x94"),
                "\u20AC\u201C\u00E9\u201D"},
        Encoded{"Ascii", WithName("<?xml version='1.0' encoding='US-ASCII'?>", "&#233;&#x1F30D;"),
                "\u00E9\U0001F30D"}),
    [](const auto& row) { return std::string(row.param.reason); });

TEST(GpxParserFilesTest, LineEndsOfTextBecomeLineFeeds) {
    EXPECT_EQ(NameOf(ReadGpx(WithName("", "a\r\nb\rc\nd&#13;&#10;e"))), "a\nb\nc\nd\r\ne");
}

TEST(GpxParserFilesTest, ControlCharactersOfXml11AreRead) {
    EXPECT_EQ(NameOf(ReadGpx(WithName("<?xml version=\"1.1\"?>", "a&#1;b\u0085c"))), "a\x01"
                                                                                     "b\nc");
}

} // namespace
} // namespace vexaTransferLib
