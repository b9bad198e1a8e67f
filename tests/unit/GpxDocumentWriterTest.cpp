// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/model/GpxModelAccess.h>

#include "support/ContractChecks.h"
#include "support/IcuMemory.h"
#include "support/LocaleScopes.h"
#include "support/ModelDoors.h"
#include "support/SampleDocument.h"
#include "support/TestFiles.h"

#include <common/dbc.h>

#include <boost/make_shared.hpp>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <limits>
#include <string>

#include <sys/resource.h>

using namespace vexaTransferLib;
using testing_support::CLocaleScope;
using testing_support::FullDocument;
using testing_support::IcuLocaleScope;
using testing_support::ModelDoors;
using testing_support::ReadBytes;
using testing_support::ReadTestData;
using testing_support::RefusedIcuMemory;
using testing_support::TemporaryFolder;
using testing_support::WriteBytes;
using UnicodeStrUtils::ByteString;

namespace {

constexpr char kSource[] = "LibCore/vexaTransferLib/GpxDocument.cpp";
constexpr char kPointSource[] = "LibCore/vexaTransferLib/GpxPoint.cpp";
constexpr char kRouteSource[] = "LibCore/vexaTransferLib/GpxRoute.cpp";
constexpr char kCreateFailed[] = "Unable to create the GPX file. Target could be write protected or full.";
constexpr char kWriteFailed[] = "Unable to write the GPX file. Target could be write protected or full.";
constexpr char kTooLarge[] = "The GPX text is too large to be held in memory.";
constexpr double kMorning = 1232014830000.0; // 2009-01-15T10:20:30Z

constexpr char16_t kApp[] = u"App & Co";
constexpr char16_t kUrl[] = u"http://x/?a=1&b=2";

const GpxVersion kGpx10(1, 0);
const GpxVersion kGpx11(1, 1);

std::string Bytes(const ByteString& bytes) {
    return std::string(bytes.buffer.get(), bytes.length);
}

std::string Everything(const GpxDocument& document, const GpxVersion& version) {
    return Bytes(document.GetAsByteString(version, kApp, kUrl));
}

std::string Plain(const GpxDocument& document, const GpxVersion& version = kGpx11) {
    return Bytes(document.GetAsByteString(version, u"App", u"x"));
}

icu::UnicodeString FileName(const std::filesystem::path& path) {
    return icu::UnicodeString::fromUTF8(path.string());
}

void WritePlain(const GpxDocument& document, const std::filesystem::path& path) {
    document.WriteToFile(kGpx11, u"App", u"x", FileName(path));
}

// The document without its first line and start tag.
std::string Body(const GpxDocument& document) {
    const std::string written = Plain(document);
    const std::string empty = Plain(GpxDocument());
    const std::string head = empty.substr(0, empty.size() - std::string("</gpx>\r\n").size());
    EXPECT_EQ(written.substr(0, head.size()), head);
    return written.substr(head.size());
}

std::string InExtensions(const std::string& lines) {
    return "<metadata>\r\n\t<extensions>\r\n" + lines + "\t</extensions>\r\n</metadata>\r\n</gpx>\r\n";
}

GpxDocument DocumentWithName(std::int32_t length) {
    GpxDocument document;
    GpxModelAccess::SetName(document, icu::UnicodeString(length, u'n', length));
    return document;
}

GpxPoint BadPoint() {
    GpxPoint point(kGpxWaypoint, 1.0, 2.0);
    ModelDoors::SetFix(point, 6);
    return point;
}

} // namespace

TEST(GpxDocumentWriterTest, AnEmptyDocumentHasNoMetadata) {
    EXPECT_EQ(Plain(GpxDocument(), kGpx11), ReadTestData("writer/empty-1.1.gpx"));
}

TEST(GpxDocumentWriterTest, Version10IsWrittenInTheNamespaceOf11) {
    EXPECT_EQ(Plain(GpxDocument(), kGpx10), ReadTestData("writer/empty-1.0.gpx"));
}

TEST(GpxDocumentWriterTest, EverythingAtOnce) {
    EXPECT_EQ(Everything(FullDocument(), kGpx10), ReadTestData("writer/everything-1.0.gpx"));
    EXPECT_EQ(Everything(FullDocument(), kGpx11), ReadTestData("writer/everything-1.1.gpx"));
}

TEST(GpxDocumentWriterTest, FourZeroBytesFollowTheText) {
    const ByteString bytes = FullDocument().GetAsByteString(kGpx11, kApp, kUrl);
    ASSERT_GT(bytes.length, 0U);
    EXPECT_EQ(std::string(bytes.buffer.get() + bytes.length, 4), std::string(4, '\0'));
}

TEST(GpxDocumentWriterTest, NoByteOrderMarkIsWritten) {
    EXPECT_EQ(Plain(GpxDocument()).substr(0, 5), "<?xml");
}

TEST(GpxDocumentWriterTest, CreatorIsEscaped) {
    const std::string written = Bytes(GpxDocument().GetAsByteString(kGpx11, u"A&\"B'", u"<x>\u00E9"));
    EXPECT_NE(written.find(" creator=\"A&amp;&quot;B&apos; - &lt;x&gt;\xC3\xA9\"\r\n"), std::string::npos);
}

TEST(GpxDocumentWriterTest, OnlyAWaypointsGeocacheAddsItsSchema) {
    constexpr char kPair[] =
        "\r\n http://www.groundspeak.com/cache/1/0 http://www.groundspeak.com/cache/1/0/cache.xsd\">\r\n";
    GpxDocument document;
    document.AddWaypoint(GpxPoint(kGpxWaypoint, 1.0, 2.0));
    GpxPoint routePoint(kGpxRoutePoint, 1.0, 2.0);
    ModelDoors::SetGeocache(routePoint, GpxGroundspeakCache());
    GpxRoute route(kTarvikRouteStandard);
    route.AddPoint(routePoint);
    document.AddRoute(route);
    GpxPoint trackPoint(kGpxTrackPoint, 1.0, 2.0);
    ModelDoors::SetGeocache(trackPoint, GpxGroundspeakCache());
    GpxTrack track;
    track.AddSegment();
    track.AddPoint(trackPoint);
    document.AddTrack(track);
    EXPECT_EQ(Plain(document).find(kPair), std::string::npos);

    GpxPoint waypoint(kGpxWaypoint, 1.0, 2.0);
    waypoint.SetGroundspeakCache(GpxGroundspeakCache());
    document.AddWaypoint(waypoint);
    EXPECT_NE(Plain(document, kGpx11).find(kPair), std::string::npos);
    EXPECT_NE(Plain(document, kGpx10).find(kPair), std::string::npos);
}

TEST(GpxDocumentWriterTest, ATimeAloneIsWrittenWithoutMetadata) {
    GpxDocument document;
    GpxModelAccess::SetTime(document, kMorning + 999.0);
    EXPECT_EQ(Plain(document), ReadTestData("writer/time-only.gpx"));
}

TEST(GpxDocumentWriterTest, TimesAreWrittenAboveZeroOnly) {
    const struct {
        double time;
        const char* expected;
        const char* reason;
    } rows[] = {
        {0.0, "", "none"},
        {-1.0, "", "below"},
        {-kMorning, "", "below"},
        {-std::numeric_limits<double>::infinity(), "", "below"},
        {std::numeric_limits<double>::quiet_NaN(), "", "not a number"},
        {5e-324, "\t<time>1970-01-01T00:00:00Z</time>\r\n", "above"},
        {253402300800000.0, "\t<time>10000-01-01T00:00:00Z</time>\r\n", "far above"},
    };
    for (const auto& row : rows) {
        GpxDocument document;
        GpxModelAccess::SetTime(document, row.time);
        EXPECT_EQ(Body(document), std::string(row.expected) + "</gpx>\r\n") << row.reason;
    }
}

TEST(GpxDocumentWriterTest, NameIsEscapedAndBringsMetadata) {
    GpxDocument document;
    GpxModelAccess::SetName(document, u"a&b");
    EXPECT_EQ(Body(document), "<metadata>\r\n\t<name>a&amp;b</name>\r\n</metadata>\r\n</gpx>\r\n");
    GpxModelAccess::SetTime(document, kMorning);
    EXPECT_EQ(Body(document),
              "<metadata>\r\n\t<name>a&amp;b</name>\r\n\t<time>2009-01-15T10:20:30Z</time>\r\n"
              "</metadata>\r\n</gpx>\r\n");
}

TEST(GpxDocumentWriterTest, GisRecordIsNotEscapedAndAlwaysHasItsSymbol) {
    GpxDocument document;
    const auto record = boost::make_shared<GISMetaData>();
    GpxModelAccess::SetGISMetaData(document, record);
    EXPECT_EQ(Body(document), InExtensions("\t\t<tarvik:defaultsymbol>1</tarvik:defaultsymbol>\r\n"));
    record->layerName = u"a&b";
    record->layerKey = u"<k>";
    record->form = u"\"f\"";
    record->defaultSymbol = -1234567;
    EXPECT_EQ(Body(document),
              InExtensions("\t\t<tarvik:layername>a&b</tarvik:layername>\r\n"
                           "\t\t<tarvik:layerkey><k></tarvik:layerkey>\r\n"
                           "\t\t<tarvik:form>\"f\"</tarvik:form>\r\n"
                           "\t\t<tarvik:defaultsymbol>-1,234,567</tarvik:defaultsymbol>\r\n"));
}

TEST(GpxDocumentWriterTest, AnnotationRecordIsNotEscapedAndMayBeEmpty) {
    GpxDocument document;
    const auto record = boost::make_shared<AnnotateMetaData>();
    GpxModelAccess::SetAnnotateMetaData(document, record);
    EXPECT_EQ(Body(document), InExtensions(""));
    record->waypointGUID = u"w&";
    EXPECT_EQ(Body(document), InExtensions("\t\t<tarvik:waypointGUID>w&</tarvik:waypointGUID>\r\n"));
    record->trackGUID = u"{t<}";
    EXPECT_EQ(Body(document), InExtensions("\t\t<tarvik:trackGUID>{t<}</tarvik:trackGUID>\r\n"
                                           "\t\t<tarvik:waypointGUID>w&</tarvik:waypointGUID>\r\n"));
}

TEST(GpxDocumentWriterTest, StatsAreWrittenAsTheRecordHoldsThem) {
    const struct {
        GPXStats stats;
        const char* expected;
        const char* reason;
    } rows[] = {
        {{0, 0, 0, 0.0, -1}, "", "the defaults"},
        {{-1, -2, -3, -4.0, -5}, "", "below zero"},
        {{0, 0, 0, 0.0, 0},
         "\t\t\t<tarvik:geocachecount>0</tarvik:geocachecount>\r\n",
         "zero geocaches are written"},
        {{1, 0, 0, 0.0, -1}, "\t\t\t<tarvik:wptcount>1</tarvik:wptcount>\r\n", "one"},
        {{0, 1000, 0, 0.0, -1}, "\t\t\t<tarvik:trkcount>1,000</tarvik:trkcount>\r\n", "grouped"},
        {{0, 0, 2147483647, 0.0, -1},
         "\t\t\t<tarvik:trksegcount>2,147,483,647</tarvik:trksegcount>\r\n",
         "highest"},
        {{0, 0, 0, 1234.5678, -1},
         "\t\t\t<tarvik:trktotalkm>1,234.568</tarvik:trktotalkm>\r\n",
         "three decimals"},
        {{0, 0, 0, 12.0, -1}, "\t\t\t<tarvik:trktotalkm>12</tarvik:trktotalkm>\r\n", "none needed"},
        {{0, 0, 0, 1e-9, -1},
         "\t\t\t<tarvik:trktotalkm>0</tarvik:trktotalkm>\r\n",
         "above zero, however small"},
        {{0, 0, 0, std::numeric_limits<double>::quiet_NaN(), -1}, "", "not above zero"},
    };
    for (const auto& row : rows) {
        GpxDocument document;
        document.AddWaypoint(GpxPoint(kGpxWaypoint, 1.0, 2.0));
        GpxModelAccess::SetStats(document, boost::make_shared<GPXStats>(row.stats));
        EXPECT_EQ(Body(document), "<metadata>\r\n\t<extensions>\r\n\t\t<tarvik:filestats>\r\n" +
                                      std::string(row.expected) +
                                      "\t\t</tarvik:filestats>\r\n\t</extensions>\r\n</metadata>\r\n"
                                      "<wpt lat=\"1.000000000\" lon=\"2.000000000\">\r\n</wpt>\r\n</gpx>\r\n")
            << row.reason;
    }
}

TEST(GpxDocumentWriterTest, WaypointsThenRoutesThenTracks) {
    GpxDocument document;
    document.AddTrack(GpxTrack());
    document.AddRoute(GpxRoute(kTarvikRouteStandard));
    document.AddWaypoint(GpxPoint(kGpxWaypoint, 3.0, 4.0));
    document.AddWaypoint(GpxPoint(kGpxWaypoint, 1.0, 2.0));
    EXPECT_EQ(Body(document), "<wpt lat=\"3.000000000\" lon=\"4.000000000\">\r\n</wpt>\r\n"
                              "<wpt lat=\"1.000000000\" lon=\"2.000000000\">\r\n</wpt>\r\n"
                              "<rte>\r\n</rte>\r\n<trk>\r\n</trk>\r\n</gpx>\r\n");
}

TEST(GpxDocumentWriterTest, ControlCharactersAreWrittenAsTheModelHoldsThem) {
    GpxDocument document;
    GpxModelAccess::SetName(document, u"\x01\x1F\uFFFE");
    EXPECT_NE(Plain(document).find("<name>\x01\x1F\xEF\xBF\xBE</name>"), std::string::npos);
}

TEST(GpxDocumentWriterTest, VersionNameAndUrlAreCheckedInThisOrderBeforeTheModel) {
    const GpxVersion unknown = ModelDoors::MakeVersion(1, 2);
    const struct {
        GpxVersion version;
        const char16_t* name;
        const char16_t* url;
        const char* message;
    } rows[] = {
        {unknown, u"", u"", "Cannot write to unknown GPX schema version."},
        {ModelDoors::MakeVersion(2, 0), u"App", u"x", "Cannot write to unknown GPX schema version."},
        {ModelDoors::MakeVersion(0, 1), u"App", u"x", "Cannot write to unknown GPX schema version."},
        {kGpx11, u"", u"", "The application name is required to write a GPX document."},
        {kGpx10, u"", u"x", "The application name is required to write a GPX document."},
        {kGpx11, u"App", u"", "The application URL is required to write a GPX document."},
        {kGpx10, u" ", u"", "The application URL is required to write a GPX document."},
    };
    const TemporaryFolder folder;
    const std::filesystem::path path = folder / "out.gpx";
    WriteBytes(path, "before");
    GpxDocument document;
    document.AddWaypoint(BadPoint());
    for (const auto& row : rows) {
        std::string out = "before";
        EXPECT_FAILURE(document.GetAsByteString(row.version, row.name, row.url), dbc::precondition_error,
                       row.message, kSource);
        EXPECT_FAILURE(document.WriteToString(row.version, row.name, row.url, out), dbc::precondition_error,
                       row.message, kSource);
        EXPECT_FAILURE(document.WriteToFile(row.version, row.name, row.url, FileName(path)),
                       dbc::precondition_error, row.message, kSource);
        EXPECT_EQ(out, "before");
        EXPECT_EQ(ReadBytes(path), "before");
    }
}

TEST(GpxDocumentWriterTest, AnExceptionOfTheModelPassesAndNothingIsWritten) {
    const TemporaryFolder folder;
    GpxDocument document;
    document.AddWaypoint(BadPoint());
    std::string out = "before";
    constexpr char kBadFix[] = "Unable to write an unknown GPS fix type.";
    EXPECT_FAILURE(Plain(document), dbc::invariant_error, kBadFix, kPointSource);
    EXPECT_FAILURE(document.WriteToString(kGpx10, u"App", u"x", out), dbc::invariant_error, kBadFix,
                   kPointSource);
    EXPECT_FAILURE(WritePlain(document, folder / "out.gpx"), dbc::invariant_error, kBadFix, kPointSource);
    EXPECT_EQ(out, "before");
    EXPECT_FALSE(std::filesystem::exists(folder / "out.gpx"));

    WriteBytes(folder / "existing.gpx", "before");
    GpxRoute route(kTarvikRouteStandard);
    ModelDoors::SetRouteType(route, 3);
    GpxDocument second;
    second.AddRoute(route);
    EXPECT_FAILURE(WritePlain(second, folder / "existing.gpx"), dbc::invariant_error,
                   "Unable to write an unknown GPX route type.", kRouteSource);
    EXPECT_EQ(ReadBytes(folder / "existing.gpx"), "before");
}

TEST(GpxDocumentWriterTest, StringHoldsTheSameBytes) {
    std::string out = "before";
    FullDocument().WriteToString(kGpx11, kApp, kUrl, out);
    EXPECT_EQ(out, ReadTestData("writer/everything-1.1.gpx"));
}

TEST(GpxDocumentWriterTest, StringEndsAtTheFirstZeroAndTheFileDoesNot) {
    const char16_t name[] = {u'a', 0, u'b'};
    GpxDocument document;
    GpxModelAccess::SetName(document, icu::UnicodeString(name, 3));
    const std::string bytes = Plain(document);
    const std::size_t zero = bytes.find('\0');
    ASSERT_NE(zero, std::string::npos);
    EXPECT_EQ(bytes.substr(zero), std::string("\0b</name>\r\n</metadata>\r\n</gpx>\r\n", 32));

    std::string out;
    document.WriteToString(kGpx11, u"App", u"x", out);
    EXPECT_EQ(out, bytes.substr(0, zero));
    const TemporaryFolder folder;
    WritePlain(document, folder / "out.gpx");
    EXPECT_EQ(ReadBytes(folder / "out.gpx"), bytes);
}

TEST(GpxDocumentWriterTest, FileHoldsTheSameBytes) {
    const TemporaryFolder folder;
    FullDocument().WriteToFile(kGpx10, kApp, kUrl, FileName(folder / "out.gpx"));
    EXPECT_EQ(ReadBytes(folder / "out.gpx"), ReadTestData("writer/everything-1.0.gpx"));
}

TEST(GpxDocumentWriterTest, ALargeDocumentReachesTheFileWhole) {
    const TemporaryFolder folder;
    const GpxDocument document = DocumentWithName(3000000);
    WritePlain(document, folder / "out.gpx");
    EXPECT_EQ(ReadBytes(folder / "out.gpx"), Plain(document));
}

TEST(GpxDocumentWriterTest, AnExistingLongerFileIsReplaced) {
    const TemporaryFolder folder;
    WriteBytes(folder / "out.gpx", std::string(100000, 'x'));
    WritePlain(GpxDocument(), folder / "out.gpx");
    EXPECT_EQ(ReadBytes(folder / "out.gpx"), ReadTestData("writer/empty-1.1.gpx"));
}

TEST(GpxDocumentWriterTest, FileNameMayHoldAnyCharacter) {
    const TemporaryFolder folder;
    for (const char* name : {"Weg \xC3\xBC"
                             "ber \xE6\x97\xA5\xE6\x9C\xAC \xF0\x9F\x8C\x8D.gpx",
                             "100% & #1?.gpx", " ", "a\\b"}) {
        WritePlain(GpxDocument(), folder / name);
        EXPECT_EQ(ReadBytes(folder / name), ReadTestData("writer/empty-1.1.gpx")) << name;
    }
}

TEST(GpxDocumentWriterTest, AFileThatCannotBeCreatedIsReportedAndNotThere) {
    const TemporaryFolder folder;
    const std::filesystem::path missing = folder / "missing/out.gpx";
    EXPECT_FAILURE(WritePlain(FullDocument(), missing), dbc::postcondition_error, kCreateFailed, kSource);
    EXPECT_FALSE(std::filesystem::exists(missing));
    EXPECT_FALSE(std::filesystem::exists(missing.parent_path()));
    EXPECT_FAILURE(WritePlain(FullDocument(), folder / ""), dbc::postcondition_error, kCreateFailed, kSource);
    EXPECT_FAILURE(FullDocument().WriteToFile(kGpx11, u"App", u"x", u""), dbc::postcondition_error,
                   kCreateFailed, kSource);
    EXPECT_FAILURE(WritePlain(FullDocument(), folder / std::string(300, 'n')), dbc::postcondition_error,
                   kCreateFailed, kSource);
}

TEST(GpxDocumentWriterTest, ANameThatNoFileCanHaveWritesNoOther) {
    const TemporaryFolder folder;
    const icu::UnicodeString start = FileName(folder / "a");
    const char16_t zero[] = {0, u'x'};
    for (const icu::UnicodeString& end :
         {icu::UnicodeString(char16_t{0}), icu::UnicodeString(zero, 2), icu::UnicodeString(char16_t{0xD800}),
          icu::UnicodeString(char16_t{0xDC00})})
        EXPECT_FAILURE(FullDocument().WriteToFile(kGpx11, u"App", u"x", start + end),
                       dbc::postcondition_error, kCreateFailed, kSource);
    EXPECT_TRUE(std::filesystem::is_empty(folder / ""));
}

TEST(GpxDocumentWriterTest, AFullDiskIsReportedWhateverTheSize) {
    const std::filesystem::path full = "/dev/full";
    if (!std::filesystem::exists(full))
        GTEST_SKIP() << "this machine has no " << full;
    ASSERT_LT(Plain(GpxDocument()).size(), 4096U) << "must fit a buffer of the C library";
    EXPECT_FAILURE(WritePlain(GpxDocument(), full), dbc::postcondition_error, kWriteFailed, kSource);
    EXPECT_FAILURE(WritePlain(DocumentWithName(5000), full), dbc::postcondition_error, kWriteFailed, kSource);
    EXPECT_FAILURE(WritePlain(DocumentWithName(3000000), full), dbc::postcondition_error, kWriteFailed,
                   kSource);
}

TEST(GpxDocumentWriterTest, NoFileStaysOpen) {
    const auto openFiles = [] {
        std::ptrdiff_t count = 0;
        for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
            ++count;
        return count;
    };
    if (!std::filesystem::exists("/proc/self/fd"))
        GTEST_SKIP() << "this machine has no /proc";
    const TemporaryFolder folder;
    const std::ptrdiff_t before = openFiles();
    for (int i = 0; i < 3; ++i) {
        WritePlain(GpxDocument(), folder / "out.gpx");
        EXPECT_FAILURE(WritePlain(GpxDocument(), "/dev/full"), dbc::postcondition_error, kWriteFailed,
                       kSource);
    }
    EXPECT_EQ(openFiles(), before);
}

// Runs in a child process, because the limit cannot be removed again.
void WriteWithLittleMemory(const GpxDocument& document, const std::filesystem::path& path) {
    constexpr rlim_t kLimit = rlim_t{256} << 20;
    const rlimit limit{kLimit, kLimit};
    setrlimit(RLIMIT_AS, &limit);
    try {
        WritePlain(document, path);
    } catch (const dbc::postcondition_error& error) {
        std::fputs(error.what(), stderr);
        std::exit(7);
    }
    std::exit(0);
}

TEST(GpxDocumentWriterDeathTest, ATextThatMemoryCannotHoldIsReportedBeforeAFileIsTouched) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "AddressSanitizer needs more address space than the test allows";
#endif
    const TemporaryFolder folder;
    WriteBytes(folder / "existing.gpx", "before");
    const GpxDocument document = DocumentWithName(150 << 20);
    for (const char* name : {"existing.gpx", "new.gpx"})
        EXPECT_EXIT(WriteWithLittleMemory(document, folder / name), testing::ExitedWithCode(7), kTooLarge);
    EXPECT_EQ(ReadBytes(folder / "existing.gpx"), "before");
    EXPECT_FALSE(std::filesystem::exists(folder / "new.gpx"));
}

TEST(GpxDocumentWriterTest, WritingTextNeedsNoMemoryOfIcu) {
    GpxGroundspeakCache cache = testing_support::FullGeocache();
    for (GpxGroundspeakCacheLog& log : cache.logs)
        log.id = 0; // numbers with separators are ICU's
    GpxPoint waypoint(kGpxWaypoint, 1.0, 2.0);
    waypoint.SetGroundspeakCache(cache);
    waypoint.SetTime(kMorning);
    GpxDocument document = DocumentWithName(3000);
    for (int i = 0; i < 100; ++i)
        document.AddWaypoint(waypoint);
    const std::string expected = Plain(document);
    const RefusedIcuMemory refused = RefusedIcuMemory::Above(0);
    EXPECT_EQ(Plain(document), expected);
    EXPECT_EQ(refused.Refused(), 0U);
}

TEST(GpxDocumentWriterTest, NoLocaleShows) {
    const GpxDocument document = FullDocument();
    const std::string expected10 = ReadTestData("writer/everything-1.0.gpx");
    const std::string expected11 = ReadTestData("writer/everything-1.1.gpx");
    for (const char* name : {"th_TH_TRADITIONAL", "ar_EG", "fa_IR", "de_DE", "tr_TR"}) {
        SCOPED_TRACE(name);
        const IcuLocaleScope scope(name);
        EXPECT_EQ(Everything(document, kGpx10), expected10);
        EXPECT_EQ(Everything(document, kGpx11), expected11);
    }
    const CLocaleScope german("de_DE.UTF-8");
    if (!german.IsInstalled())
        GTEST_SKIP() << "the locale de_DE.UTF-8 is not installed; the ICU locales were checked";
    EXPECT_EQ(Everything(document, kGpx10), expected10);
    EXPECT_EQ(Everything(document, kGpx11), expected11);
    const TemporaryFolder folder;
    document.WriteToFile(kGpx11, kApp, kUrl, FileName(folder / "out.gpx"));
    EXPECT_EQ(ReadBytes(folder / "out.gpx"), expected11);
}
