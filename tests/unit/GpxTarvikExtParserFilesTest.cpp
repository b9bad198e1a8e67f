// SPDX-License-Identifier: MIT

// Files that the scanner can or cannot read, in any place and any encoding.

#include <vexaTransferLib/GpxTarvikExtParser.h>

#include "support/ContractChecks.h"
#include "support/GpxFiles.h"
#include "support/GpxText.h"
#include "support/HeadScan.h"
#include "support/SystemFiles.h"
#include "support/TestFiles.h"
#include "support/Utf16.h"
#include "support/XercesDoubles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <string>
#include <unistd.h>

#ifdef __SANITIZE_ADDRESS__
#include <sanitizer/lsan_interface.h>
#endif

namespace vexaTransferLib {
namespace {

using namespace testing_support;

const std::string kForm = "<tarvik:form>f</tarvik:form>";
constexpr char kFormFound[] = "layer ||f|1; time 0";
constexpr char kNothing[] = "time 0";

std::string ScanPath(const std::string& path) {
    GpxTarvikExtParser scanner;
    ScanFile(scanner, path);
    return FoundBy(scanner);
}

// The scanner has found something before.
void ExpectUnreadable(const std::string& path) {
    GpxTarvikExtParser scanner;
    ScanBytes(scanner, WithExtensions(kForm + "<time>2009-01-15T10:20:30Z</time>"));
    ASSERT_EQ(FoundBy(scanner), "layer ||f|1; time 1232014830000");
    EXPECT_EQ(CaptureStandardError([&] { EXPECT_NO_THROW(ScanFile(scanner, path)); }), "") << path;
    EXPECT_EQ(FoundBy(scanner), kNothing) << path;
    ScanBytes(scanner, WithExtensions(kForm));
    EXPECT_EQ(FoundBy(scanner), kFormFound) << "after " << path;
}

TEST(GpxTarvikExtParserFilesTest, AMissingFileLeavesNothing) {
    const TemporaryFolder folder;
    ExpectUnreadable((folder / "missing.gpx").string());
    ExpectUnreadable((folder / "f\u00E4hlt %20#?.gpx").string());
    ExpectUnreadable((folder / "no folder/walk.gpx").string());
    ExpectUnreadable(std::string(5000, 'x'));
}

TEST(GpxTarvikExtParserFilesTest, ADirectoryLeavesNothing) {
#ifdef __SANITIZE_ADDRESS__
    const __lsan::ScopedDisabler xercesLosesTheNameOfADirectory;
#endif
    const TemporaryFolder folder;
    ExpectUnreadable((folder / "").string());
}

TEST(GpxTarvikExtParserFilesTest, AFileThatMayNotBeReadLeavesNothing) {
    if (geteuid() == 0)
        GTEST_SKIP() << "root may read every file";
    const GpxFile file(WithExtensions(kForm));
    std::filesystem::permissions(file.NarrowPath(), std::filesystem::perms::none);
    ExpectUnreadable(file.NarrowPath());
}

TEST(GpxTarvikExtParserFilesTest, TheFileIsClosedHoweverTheScanEnds) {
    const GpxFile good(WithExtensions(kForm));
    const GpxFile withoutWaypoint(Gpx11(kForm));
    const GpxFile bad("<gpx><name></gpx>");
    const SystemFiles files;
    for (const GpxFile* file : {&good, &withoutWaypoint, &bad}) {
        GpxTarvikExtParser scanner;
        ScanFile(scanner, file->NarrowPath());
        EXPECT_EQ(files.StillOpen(), 0U) << "while the scanner lives";
    }
    EXPECT_EQ(files.Opened(), 3U);
}

struct IllFormed {
    const char* reason;
    std::string bytes;
    std::string found;
};

void PrintTo(const IllFormed& row, std::ostream* out) {
    *out << row.reason;
}

class IllFormedHeadTest : public testing::TestWithParam<IllFormed> {};

TEST_P(IllFormedHeadTest, LeavesWhatWasFoundBeforeTheError) {
    EXPECT_EQ(CaptureStandardError([] { EXPECT_EQ(Scan(GetParam().bytes), GetParam().found); }), "");
}

// The form, the error, the layer name.
std::string WithError(const std::string& error) {
    return WithExtensions(kForm + error + "<tarvik:layername>n</tarvik:layername>");
}

INSTANTIATE_TEST_SUITE_P(
    Files, IllFormedHeadTest,
    testing::Values(
        IllFormed{"Empty", "", kNothing}, IllFormed{"OnlyADeclaration", "<?xml version='1.0'?>", kNothing},
        IllFormed{"PlainText", "no XML at all", kNothing}, IllFormed{"OnlyBlanks", " \n", kNothing},
        IllFormed{"LineBeforeTheDeclaration", "\n<?xml version='1.0'?>" + WithExtensions(kForm), kNothing},
        IllFormed{"UnknownEncoding", "<?xml version='1.0' encoding='x-none'?>" + WithExtensions(kForm),
                  kNothing},
        IllFormed{"MismatchedTag", WithError("<a></b>"), kFormFound},
        IllFormed{"MismatchedVendorTag", WithError("<tarvik:layerkey>k</tarvik:form>"), kFormFound},
        IllFormed{"UnboundPrefix", WithError("<unbound:x/>"), kFormFound},
        IllFormed{"AttributeTwice", WithError("<a b='1' b='1'/>"), kFormFound},
        IllFormed{"UndefinedEntity", WithError("<a>&nbsp;</a>"), kFormFound},
        IllFormed{"UndefinedEntityInAText", WithError("<tarvik:layerkey>k&nbsp;</tarvik:layerkey>"),
                  kFormFound},
        IllFormed{"ControlCharacter", WithError("\x01"), kFormFound},
        IllFormed{"ReferenceToAControlCharacter", WithError("&#1;"), kFormFound},
        IllFormed{"LoneAmpersand", WithError("Tom & Jerry"), kFormFound},
        IllFormed{"ZeroByte", WithError(std::string(1, '\0')), kFormFound},
        IllFormed{"CutShort", "<gpx xmlns:tarvik='" + std::string(kVendorUri) + "'>" + kForm + "<tarvik:la",
                  kFormFound},
        IllFormed{"SecondRoot", Gpx11(kForm) + Gpx11("<tarvik:form>g</tarvik:form>"), kFormFound},
        IllFormed{"AfterTheHead", Gpx11(kForm + "<wpt>") + "& < \x01", kFormFound}),
    [](const auto& row) { return std::string(row.param.reason); });

TEST(GpxTarvikExtParserFilesTest, AnUnknownVersionOfXmlIsReadAllTheSame) {
    EXPECT_EQ(Scan("<?xml version='1.2'?>" + WithExtensions(kForm)), kFormFound);
}

TEST(GpxTarvikExtParserFilesTest, BadUtf8EndsTheScanWithWhatWasFound) {
    // The text is converted in blocks, so the error may show before the elements that precede it.
    const std::string distance(200000, ' ');
    EXPECT_EQ(Scan(WithError(distance + "\xE9t\xE9")), kFormFound);
}

TEST(GpxTarvikExtParserFilesTest, EveryPrefixOfAHeadIsHarmless) {
    const std::string head = WithExtensions(kForm + "<time>2009-01-15T10:20:30Z</time>");
    const std::size_t formEnds = head.find("</tarvik:form>") + std::string("</tarvik:form>").size();
    const std::size_t timeEnds = head.find("</time>") + std::string("</time>").size();
    for (std::size_t length = 0; length <= head.size(); ++length) {
        GpxTarvikExtParser scanner;
        ScanBytes(scanner, head.substr(0, length));
        std::string expected = kNothing;
        if (length >= formEnds)
            expected = kFormFound;
        if (length >= timeEnds)
            expected = "layer ||f|1; time 1232014830000";
        EXPECT_EQ(FoundBy(scanner), expected) << length;
    }
}

TEST(GpxTarvikExtParserFilesTest, ADocumentTypeDoesNoHarm) {
    const std::string types[] = {
        "<!DOCTYPE gpx>",
        "<!DOCTYPE gpx SYSTEM 'missing.dtd'>",
        "<!DOCTYPE gpx PUBLIC '-//x//y' 'http://missing.invalid/gpx.dtd'>",
        "<!DOCTYPE gpx [<!ELEMENT other EMPTY>]>",
        "<!DOCTYPE other [<!ELEMENT gpx EMPTY><!ATTLIST gpx need CDATA #REQUIRED>]>",
        "<!DOCTYPE gpx [<!ENTITY unused 'x'>]>",
    };
    const XercesNet net;
    for (const std::string& type : types)
        EXPECT_EQ(Scan(type + WithExtensions(kForm)), kFormFound) << type;
    EXPECT_EQ(net.Requests(), 0U);
}

TEST(GpxTarvikExtParserFilesTest, AnExternalDocumentTypeIsNotLoaded) {
    const TemporaryFolder folder;
    WriteBytes(folder / "types.dtd", "<!ATTLIST gpx xmlns:tarvik CDATA '" + std::string(kVendorUri) + "'>");
    const std::string root = "<gpx><tarvik:form>f</tarvik:form></gpx>";
    WriteBytes(folder / "walk.gpx", "<!DOCTYPE gpx SYSTEM 'types.dtd'>" + root);
    const XercesFiles files;
    EXPECT_EQ(ScanPath((folder / "walk.gpx").string()), kNothing) << "the prefix is unbound without it";
    EXPECT_EQ(files.Opened(), 0U);
}

TEST(GpxTarvikExtParserFilesTest, DeclaredEntitiesAreExpanded) {
    const std::string type = "<!DOCTYPE gpx [<!ENTITY text 'a &amp; b'><!ENTITY element "
                             "'<tarvik:layername>n</tarvik:layername>'><!ENTITY point '<wpt/>'>]>";
    EXPECT_EQ(Scan(type + WithExtensions("<tarvik:form>x &text; y</tarvik:form>")),
              "layer ||x a & b y|1; time 0");
    EXPECT_EQ(Scan(type + WithExtensions("&element;" + kForm)), "layer |n|f|1; time 0");
    EXPECT_EQ(Scan(type + WithExtensions("&element;&point;" + kForm)), "layer |n||1; time 0");
}

TEST(GpxTarvikExtParserFilesTest, AttributeDefaultsOfTheDocumentTypeCount) {
    const std::string type =
        "<!DOCTYPE gpx [<!ATTLIST gpx xmlns:tarvik CDATA '" + std::string(kVendorUri) + "'>]>";
    EXPECT_EQ(Scan(type + "<gpx><tarvik:form>f</tarvik:form></gpx>"), kFormFound);
}

TEST(GpxTarvikExtParserFilesTest, AnExternalEntityIsReadFromBesideTheFile) {
    const TemporaryFolder folder;
    WriteBytes(folder / "part.txt", "from outside");
    const std::string type = "<!DOCTYPE gpx [<!ENTITY e SYSTEM 'part.txt'>]>";
    WriteBytes(folder / "walk.gpx", type + WithExtensions("<tarvik:form>&e;</tarvik:form>"));
    EXPECT_EQ(ScanPath((folder / "walk.gpx").string()), "layer ||from outside|1; time 0");
}

std::string InUtf16(const std::string& utf8, bool bigEndian) {
    return testing_support::InUtf16(icu::UnicodeString::fromUTF8(utf8), bigEndian);
}

std::string FormIn(const std::string& declaration, const std::string& text) {
    return declaration + WithExtensions("<tarvik:form>" + text + "</tarvik:form>");
}

TEST(GpxTarvikExtParserFilesTest, EncodingsAreRead) {
    const std::string utf16 = "<?xml version='1.0' encoding='UTF-16'?>";
    const std::string text = "\u00E9\u20AC\u5C71\U0001F30D";
    const struct {
        std::string bytes;
        std::string text;
        const char* reason;
    } rows[] = {
        {FormIn("", text), text, "UTF-8"},
        {"\xEF\xBB\xBF" + FormIn("", text), text, "UTF-8 with a mark"},
        {"\xEF\xBB\xBF" + FormIn("<?xml version='1.0' encoding='UTF-8'?>", text), text, "the same, declared"},
        {InUtf16(FormIn("\uFEFF" + utf16, text), true), text, "UTF-16, big end first"},
        {InUtf16(FormIn("\uFEFF" + utf16, text), false), text, "UTF-16, little end first"},
        {InUtf16(FormIn("\uFEFF", text), false), text, "UTF-16, not declared"},
        {FormIn("<?xml version='1.0' encoding='ISO-8859-1'?>", "\xE9\xDF\xFF"), "\u00E9\u00DF\u00FF",
         "Latin-1"},
        {FormIn("<?xml version='1.0' encoding='windows-1252'?>", "\x80\x93\xE9"), "\u20AC\u201C\u00E9",
         "Windows"},
        {FormIn("<?xml version='1.0' encoding='US-ASCII'?>", "&#233;&#x1F30D;"), "\u00E9\U0001F30D", "ASCII"},
        {FormIn("<?xml version='1.1'?>", "a\u0085b&#1;"), "a\nb\x01", "XML 1.1"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Scan(row.bytes), "layer ||" + row.text + "|1; time 0") << row.reason;
}

TEST(GpxTarvikExtParserFilesTest, PathsMayHaveAnyCharacters) {
    for (const char* name :
         {"walk.gpx", "noext", "a b#1%20?x.gpx", "%", "#", "W\u00E4nderung \u5C71\U0001F30D.gpx",
          "d \u00F6 % #/x.gpx", "back\\slash.gpx", "a&b;c.gpx", "'\"<>.gpx", "c:d.gpx"}) {
        const TemporaryFolder folder;
        const std::filesystem::path path = folder / name;
        std::filesystem::create_directories(path.parent_path());
        WriteBytes(path, WithExtensions(kForm));
        EXPECT_EQ(ScanPath(path.string()), kFormFound) << name;
    }
}

// The bytes of the path, or the path as text; trusted or not.
using ScanWay = void (*)(GpxTarvikExtParser&, const std::string&);

void ScanNamed(GpxTarvikExtParser& scanner, const std::string& path) {
    scanner.ParseFile(path);
}

struct ScanRow {
    ScanWay scan;
    bool isTrusted;
};

constexpr ScanRow kScanRows[] = {{ScanFile, true}, {ScanFile, false}, {ScanNamed, true}, {ScanNamed, false}};

std::string ScanBy(const ScanRow& row, const std::string& path) {
    GpxTarvikExtParser scanner;
    if (!row.isTrusted)
        scanner.SetUntrusted();
    row.scan(scanner, path);
    return FoundBy(scanner);
}

TEST(GpxTarvikExtParserFilesTest, TwoDotsLeadWhereTheSystemSays) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder / "far/away");
    std::filesystem::create_directory(folder / "here");
    std::filesystem::create_directory_symlink(folder / "far/away", folder / "here/way");
    WriteBytes(folder / "far/x.gpx", WithExtensions(kForm));
    WriteBytes(folder / "here/x.gpx", WithExtensions("<tarvik:form>another</tarvik:form>"));
    const CurrentFolder current(folder / "here");
    for (const ScanRow& row : kScanRows) {
        const SystemFiles files;
        EXPECT_EQ(ScanBy(row, "way/../x.gpx"), kFormFound);
        EXPECT_EQ(files.Opened(), 1U);
        EXPECT_EQ(files.StillOpen(), 0U);
    }
}

TEST(GpxTarvikExtParserFilesTest, BytesThatAreNoTextNameAFile) {
    const TemporaryFolder folder;
    WriteBytes(folder / "caf\xE9.gpx", WithExtensions(kForm));
    WriteBytes(folder / "caf\uFFFD.gpx", WithExtensions("<tarvik:form>look-alike</tarvik:form>"));
    for (const bool isTrusted : {true, false})
        EXPECT_EQ(ScanBy({ScanNamed, isTrusted}, (folder / "caf\xE9.gpx").string()), kFormFound);
}

TEST(GpxTarvikExtParserFilesTest, BytesAreNeverAnAddress) {
    const TemporaryFolder folder;
    const CurrentFolder current(folder / "");
    std::filesystem::create_directories("http:/localhost:1");
    WriteBytes("http:/localhost:1/walk.gpx", WithExtensions(kForm));
    const GpxFile other(WithExtensions(kForm));
    const XercesNet net;
    for (const bool isTrusted : {true, false}) {
        EXPECT_EQ(ScanBy({ScanNamed, isTrusted}, "http://localhost:1/walk.gpx"), kFormFound);
        EXPECT_EQ(ScanBy({ScanNamed, isTrusted}, "http://localhost:1/x.gpx"), kNothing);
        EXPECT_EQ(ScanBy({ScanNamed, isTrusted}, "file://" + other.NarrowPath()), kNothing);
    }
    EXPECT_EQ(net.Requests(), 0U);
}

TEST(GpxTarvikExtParserFilesTest, APathThatNoFileCanHaveIsReportedAndNothingForgotten) {
    const GpxFile file(WithExtensions(kForm));
    const std::string path = file.NarrowPath();
    for (const ScanRow& row : kScanRows)
        for (const std::string& bad : {std::string(), path + '\0', path + '\0' + "x"}) {
            GpxTarvikExtParser scanner;
            ScanFile(scanner, path);
            EXPECT_REPORT(row.scan(scanner, bad), kScannerSource);
            EXPECT_EQ(FoundBy(scanner), kFormFound);
        }
    GpxTarvikExtParser scanner;
    ScanFile(scanner, path);
    EXPECT_REPORT(scanner.Parse(file.Path() + char16_t{0xD800}), kScannerSource);
    EXPECT_REPORT(scanner.Parse(char16_t{0xDC00} + file.Path()), kScannerSource);
    EXPECT_EQ(FoundBy(scanner), kFormFound);
}

TEST(GpxTarvikExtParserFilesTest, ThePathNeedNotEndWithAZero) {
    const GpxFile file(WithExtensions(kForm));
    const std::string path = file.NarrowPath();
    const icu::UnicodeString longer = icu::UnicodeString::fromUTF8(path + ".more");
    GpxTarvikExtParser scanner;
    scanner.Parse(longer.tempSubString(0, longer.length() - 5));
    EXPECT_EQ(FoundBy(scanner), kFormFound);
}

} // namespace
} // namespace vexaTransferLib
