// SPDX-License-Identifier: MIT

// Reads files of many programs if a folder of them is beside the source tree. The tables give the content of
// the files, which was counted without the reader.

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>

#include "support/ContractChecks.h"
#include "support/GpxFiles.h"
#include "support/GpxReadBack.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"
#include "support/ModelCompare.h"
#include "support/TestFiles.h"

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <ostream>
#include <set>
#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

const std::filesystem::path kGood = std::filesystem::path(VEXA_SHARED) / "corpus" / "gpx";
const std::filesystem::path kBad = std::filesystem::path(VEXA_SHARED) / "corpus" / "gpx-malformed";

#define SKIP_WITHOUT_CORPUS()                                                                                \
    if (!std::filesystem::is_directory(kGood))                                                               \
    GTEST_SKIP() << "there is no corpus of GPX files beside the source tree"

struct Counts {
    std::size_t waypoints = 0;
    std::size_t routes = 0;
    std::size_t routePoints = 0;
    std::size_t tracks = 0;
    std::size_t segments = 0;
    std::size_t trackPoints = 0;
    std::size_t geocaches = 0;
    std::size_t logs = 0;

    bool operator==(const Counts&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Counts& counts) {
    return out << counts.waypoints << " waypoints, " << counts.routes << " routes with " << counts.routePoints
               << " points, " << counts.tracks << " tracks with " << counts.segments << " segments and "
               << counts.trackPoints << " points, " << counts.geocaches << " geocaches with " << counts.logs
               << " logs";
}

Counts CountsIn(const GpxDocument& document) {
    Counts counts;
    for (auto point = document.GetWaypointIter(); point != document.GetWaypointEndIter(); ++point) {
        ++counts.waypoints;
        const std::optional<GpxGroundspeakCache> cache = GeocacheOf(*point);
        counts.geocaches += cache ? 1 : 0;
        counts.logs += cache ? cache->logs.size() : 0;
    }
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route) {
        ++counts.routes;
        counts.routePoints += route->GetPointCount();
    }
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track) {
        ++counts.tracks;
        for (auto segment = track->GetSegmentIter(); segment != track->GetSegmentEndIter(); ++segment) {
            ++counts.segments;
            counts.trackPoints += track->GetPointCount(segment);
        }
    }
    return counts;
}

template <class Row>
std::string TestName(const testing::TestParamInfo<Row>& info) {
    std::string name = info.param.file;
    for (char& c : name)
        if (std::isalnum(static_cast<unsigned char>(c)) == 0)
            c = '_';
    return name;
}

struct GoodFile {
    const char* file;
    Counts counts;
};

void PrintTo(const GoodFile& row, std::ostream* out) {
    *out << row.file;
}

constexpr GoodFile kGoodFiles[] = {
    {"cachebox3-GC2T9RW.gpx", {2, 0, 0, 0, 0, 0, 1, 20}},
    {"cachebox3-GSAK-1-1.gpx", {1, 0, 0, 0, 0, 0, 1, 1}},
    {"cachebox3-acb-export.gpx", {785, 0, 0, 0, 0, 0, 351, 1457}},
    {"cgeo-gc31j2h.gpx", {1, 0, 0, 0, 0, 0, 1, 6}},
    {"cgeo-gc3t1xg-gsak.gpx", {1, 0, 0, 0, 0, 0, 1, 20}},
    {"cgeo-gctour.gpx", {72, 0, 0, 0, 0, 0, 54, 540}},
    {"cgeo-geotoad.gpx", {2, 0, 0, 0, 0, 0, 2, 20}},
    {"cgeo-lab-stary-prostejov.gpx", {5, 0, 0, 0, 0, 0, 5, 0}},
    {"cgeo-oc120f5.gpx", {1, 0, 0, 0, 0, 0, 1, 3}},
    {"cgeo-oc5952.gpx", {1, 0, 0, 0, 0, 0, 1, 3}},
    {"cgeo-renamed-waypoints-wpts.gpx", {90, 0, 0, 0, 0, 0, 0, 0}},
    {"cgeo-renamed-waypoints.gpx", {25, 0, 0, 0, 0, 0, 25, 130}},
    {"cgeo-tcehl-terracaching.gpx", {1, 0, 0, 0, 0, 0, 0, 0}},
    {"cgeo-waymarking.gpx", {1, 0, 0, 0, 0, 0, 0, 0}},
    {"coregpx-duallinks.gpx", {0, 0, 0, 0, 0, 0, 0, 0}},
    {"derived-utf16be-bom.gpx", {6, 0, 0, 0, 0, 0, 0, 0}},
    {"derived-utf16le-bom.gpx", {6, 0, 0, 0, 0, 0, 0, 0}},
    {"derived-windows1252.gpx", {7, 0, 0, 0, 0, 0, 0, 0}},
    {"exiftool-geotag.gpx", {0, 0, 0, 1, 1, 9, 0, 0}},
    {"gdal-test.gpx", {2, 2, 3, 3, 3, 4, 0, 0}},
    {"geogpxparser-test.gpx", {3, 0, 0, 0, 0, 0, 3, 3}},
    {"geohelper-GC1XRPM.gpx", {1, 1, 0, 0, 0, 0, 1, 1}},
    {"georust-garmin-activity.gpx", {0, 0, 0, 1, 1, 988, 0, 0}},
    {"georust-outdooractive.gpx", {0, 0, 0, 1, 1, 9, 0, 0}},
    {"goldencheetah-movescount.gpx", {0, 0, 0, 1, 1, 669, 0, 0}},
    {"gpsbabel-GC7FA4.gpx", {1, 0, 0, 0, 0, 0, 1, 5}},
    {"gpsbabel-GCGCA8-nasty.gpx", {1, 0, 0, 0, 0, 0, 1, 1}},
    {"gpsbabel-GCGCA8.gpx", {1, 0, 0, 0, 0, 0, 1, 25}},
    {"gpsbabel-basecamp.gpx", {2, 1, 2, 1, 1, 2, 0, 0}},
    {"gpsbabel-bigtime.gpx", {2, 0, 0, 0, 0, 0, 0, 0}},
    {"gpsbabel-dg100.gpx", {0, 0, 0, 1, 1, 12027, 0, 0}},
    {"gpsbabel-dop-test.gpx", {0, 0, 0, 1, 1, 3, 0, 0}},
    {"gpsbabel-expertgps.gpx", {86, 1, 46, 1, 1, 64, 0, 0}},
    {"gpsbabel-gdb-ilinks.gpx", {5, 1, 34, 0, 0, 0, 0, 0}},
    {"gpsbabel-gpxpassthrough11.gpx", {3, 1, 3, 1, 1, 3, 0, 0}},
    {"gpsbabel-multiple-links.gpx", {1, 0, 0, 0, 0, 0, 0, 0}},
    {"gpsbabel-segmented-tracks.gpx", {0, 0, 0, 2, 10, 46, 0, 0}},
    {"gpx-parse-cgeo-export.gpx", {4, 0, 0, 0, 0, 0, 3, 8}},
    {"gpxanimator-komoot.gpx", {0, 0, 0, 1, 1, 6, 0, 0}},
    {"gpxpy-gpx10-all-fields.gpx", {2, 2, 5, 2, 2, 1, 0, 0}},
    {"gpxpy-gpx11-all-fields.gpx", {2, 2, 5, 2, 2, 1, 0, 0}},
    {"gpxpy-korita-zbevnica.gpx", {2, 0, 0, 4, 4, 871, 0, 0}},
    {"gpxpy-less-sec-time.gpx", {0, 0, 0, 1, 1, 2, 0, 0}},
    {"gpxpy-node-with-comments.gpx", {0, 0, 0, 1, 1, 1, 0, 0}},
    {"hikingbook-test.gpx", {7, 0, 0, 1, 1, 7, 0, 0}},
    {"josm-osmtracker.gpx", {10, 0, 0, 0, 0, 0, 0, 0}},
    {"josm-tracks-extensions.gpx", {0, 0, 0, 5, 5, 397, 0, 0}},
    {"jpx-empty-extensions.gpx", {1, 0, 0, 1, 1, 2, 0, 0}},
    {"jpx-serialization-8.gpx", {0, 17, 138, 9, 60, 541, 0, 0}},
    {"mapmatching-test2.gpx", {0, 1, 1, 1, 1, 2, 0, 0}},
    {"nts-st-louis-zoo.gpx", {10, 0, 0, 0, 0, 0, 0, 0}},
    {"opentracks-timezone.gpx", {1, 0, 0, 1, 1, 1, 0, 0}},
    {"phpgpx-endomondo.gpx", {0, 0, 0, 1, 2, 5181, 0, 0}},
    {"phpgpx-timezero.gpx", {2, 0, 0, 2, 2, 6, 0, 0}},
    {"qmapshack-qlandkarte.gpx", {1, 0, 0, 1, 1, 7, 0, 0}},
    {"routeconverter-eventlogger.gpx", {10, 0, 0, 1, 1, 154, 0, 0}},
    {"routeconverter-macgpspro.gpx", {0, 0, 0, 1, 1, 1675, 0, 0}},
    {"routeconverter-osmand.gpx", {0, 0, 0, 1, 1, 3, 0, 0}},
    {"routeconverter-tourenplaner.gpx", {0, 1, 81, 0, 0, 0, 0, 0}},
    {"routeconverter-tripmaster-3-routes.gpx", {0, 1, 2, 1, 1, 60, 0, 0}},
    {"ruby-gpx-waypoints.gpx", {18, 0, 0, 0, 0, 0, 0, 0}},
    {"sgraaf-out-of-order.gpx", {0, 0, 0, 0, 0, 0, 0, 0}},
    {"sgraaf-time-formats.gpx", {6, 0, 0, 0, 0, 0, 0, 0}},
    {"sgraaf-whitespace-content.gpx", {1, 0, 0, 0, 0, 0, 0, 0}},
    {"togeojson-blue-hills.gpx", {46, 0, 0, 3, 14, 1243, 0, 0}},
    {"togeojson-opencpn.gpx", {0, 1, 16, 0, 0, 0, 0, 0}},
    {"togeojson-style.gpx", {0, 0, 0, 21, 21, 362, 0, 0}},
    {"viking-GH137-fitotrack.gpx", {0, 0, 0, 0, 0, 0, 0, 0}},
    {"wptripsummary-bom-cdata.gpx", {0, 0, 0, 1, 1, 0, 0, 0}},
};

class CorpusTest : public testing::TestWithParam<GoodFile> {};

TEST_P(CorpusTest, IsReadWrittenAndReadAgain) {
    SKIP_WITHOUT_CORPUS();
    GpxParser parser;
    const auto parse = [&](const std::filesystem::path& path, GpxDocument& document) {
        CaptureStandardError([&] { parser.Parse(icu::UnicodeString::fromUTF8(path.string()), document); });
    };
    GpxDocument first;
    parse(kGood / GetParam().file, first);
    EXPECT_EQ(CountsIn(first), GetParam().counts);

    const TemporaryFolder folder;
    const std::filesystem::path path = folder / "written again.gpx";
    first.WriteToFile(GpxVersion(1, 1), u"App", u"https://app.example/",
                      icu::UnicodeString::fromUTF8(path.string()));
    GpxDocument second;
    parse(path, second);
    EXPECT_TRUE(IsSameModel(ReadBack().Of(first, u"written again"), second));
}

INSTANTIATE_TEST_SUITE_P(Good, CorpusTest, testing::ValuesIn(kGoodFiles), TestName<GoodFile>);

enum class Outcome {
    kParseErrors, // "One or more errors ..." and the path
    kPostcondition,
    kPrecondition,
    kRead
};

struct BadFile {
    const char* file;
    Outcome outcome;
    const char* message; // for kRead: the document's name
    const char* source;
    Counts counts; // what the document holds then
};

void PrintTo(const BadFile& row, std::ostream* out) {
    *out << row.file;
}

constexpr char kPointSource[] = "LibCore/vexaTransferLib/GpxPoint.cpp";
constexpr char kVersionSource[] = "LibCore/vexaTransferLib/GpxVersion.cpp";

constexpr BadFile kBadFiles[] = {
    {"cgeo-gc31j2h-err.gpx", Outcome::kParseErrors, "", "", {}},
    {"dawarich-newline-before-declaration.gpx", Outcome::kParseErrors, "", "", {}},
    {"gpxmagic-latitude-flip.gpx", Outcome::kParseErrors, "", "", {}},
    {"gpxparser-basecamp-truncated.gpx", Outcome::kParseErrors, "", "", {}},
    {"gpxpod-mismatched-tag.gpx", Outcome::kParseErrors, "", "", {}},
    {"jpx-invalid-extensions.gpx", Outcome::kParseErrors, "", "", {}},
    {"osm-website-bzip2.gpx", Outcome::kParseErrors, "", "", {}},
    {"qmapshack-unbound-prefix.gpx", Outcome::kParseErrors, "", "", {}},
    {"routeconverter-g7towin-badutf8.gpx", Outcome::kParseErrors, "", "", {}},
    {"wptripsummary-declaration-only.gpx", Outcome::kParseErrors, "", "", {}},
    {"wptripsummary-jibberish.gpx", Outcome::kParseErrors, "", "", {}},
    {"wptripsummary-zero-bytes.gpx", Outcome::kParseErrors, "", "", {}},
    {"gpxpy-no-version.gpx", Outcome::kPostcondition, "Unable to read the GPX version.", kParserSource, {}},
    {"sgraaf-missing-version.gpx",
     Outcome::kPostcondition,
     "Unable to read the GPX version.",
     kParserSource,
     {}},
    {"sgraaf-not-gpx-root.gpx", Outcome::kPostcondition, "The GPX document element was not found.", "", {}},
    {"sgraaf-non-numeric-lat.gpx",
     Outcome::kPostcondition,
     "Unable to read a GPX point's latitude.",
     kParserSource,
     {}},
    {"sgraaf-missing-lat-lon.gpx",
     Outcome::kPostcondition,
     "Unable to read a GPX point's latitude.",
     kParserSource,
     {}},
    {"sgraaf-lat-too-high.gpx",
     Outcome::kPrecondition,
     "The GPX point's latitude is invalid.",
     kPointSource,
     {}},
    {"sgraaf-missing-namespace.gpx", Outcome::kRead, "sgraaf-missing-namespace", "", {}},
    {"sgraaf-duplicate-metadata.gpx", Outcome::kRead, "Second", "", {}},
    {"sgraaf-invalid-time.gpx", Outcome::kRead, "sgraaf-invalid-time", "", {1, 0, 0, 0, 0, 0, 0, 0}},
    {"sgraaf-invalid-fix.gpx", Outcome::kRead, "sgraaf-invalid-fix", "", {1, 0, 0, 0, 0, 0, 0, 0}},
    // An encoding that contradicts the bytes is only a warning; the file is read as the bytes show.
    {"routeconverter-utf16-declared.gpx",
     Outcome::kRead,
     "Rockbuster Duathlon at Ashland State Park",
     "",
     {25, 0, 0, 0, 0, 0, 0, 0}},
};

constexpr BadFile kGoodFilesOfNoVersion[] = {
    {"gpxpy-unicode-with-bom.gpx",
     Outcome::kPostcondition,
     "Unable to read the GPX version.",
     kParserSource,
     {}},
    {"jpx-issue-170-version.gpx",
     Outcome::kPrecondition,
     "Unsupported GPX version string.",
     kVersionSource,
     {}},
};

void ExpectOutcome(const std::filesystem::path& path, const BadFile& row) {
    GpxParser parser;
    GpxDocument document;
    GpxModelAccess::SetName(document, u"before");
    const auto parse = [&] { parser.Parse(icu::UnicodeString::fromUTF8(path.string()), document); };
    std::string name = path.stem().string();
    switch (row.outcome) {
    case Outcome::kParseErrors:
        EXPECT_FAILURE(parse(), dbc::postcondition_error, ParseErrorsMessage(path.string()), "");
        name = "before";
        break;
    case Outcome::kPostcondition:
        EXPECT_FAILURE(parse(), dbc::postcondition_error, row.message, row.source);
        break;
    case Outcome::kPrecondition:
        EXPECT_FAILURE(parse(), dbc::precondition_error, row.message, row.source);
        break;
    case Outcome::kRead:
        EXPECT_EQ(CaptureStandardError(parse), "");
        name = row.message;
        break;
    }
    EXPECT_EQ(NameOf(document), name);
    EXPECT_EQ(CountsIn(document), row.counts);
}

class BadCorpusTest : public testing::TestWithParam<BadFile> {};

TEST_P(BadCorpusTest, IsRefusedOrReadAsFarAsItGoes) {
    SKIP_WITHOUT_CORPUS();
    ExpectOutcome(kBad / GetParam().file, GetParam());
}

INSTANTIATE_TEST_SUITE_P(Bad, BadCorpusTest, testing::ValuesIn(kBadFiles), TestName<BadFile>);

class VersionlessCorpusTest : public testing::TestWithParam<BadFile> {};

TEST_P(VersionlessCorpusTest, IsRefused) {
    SKIP_WITHOUT_CORPUS();
    ExpectOutcome(kGood / GetParam().file, GetParam());
}

INSTANTIATE_TEST_SUITE_P(Good, VersionlessCorpusTest, testing::ValuesIn(kGoodFilesOfNoVersion),
                         TestName<BadFile>);

GpxPoint OnlyWaypointOf(const char* file) {
    GpxParser parser;
    GpxDocument document;
    parser.Parse(icu::UnicodeString::fromUTF8((kBad / file).string()), document);
    return *document.GetWaypointIter();
}

TEST(CorpusFilesTest, BadElementsOfAWaypointAreSkipped) {
    SKIP_WITHOUT_CORPUS();
    const GpxPoint badTime = OnlyWaypointOf("sgraaf-invalid-time.gpx");
    EXPECT_EQ(PositionOf(badTime), "52.52 13.405");
    EXPECT_EQ(NumberOf(badTime, &GpxPoint::GetTime), std::nullopt);
    const GpxPoint badFix = OnlyWaypointOf("sgraaf-invalid-fix.gpx");
    EXPECT_EQ(FixOf(badFix), 0u);
    EXPECT_EQ(TextOf(badFix, &GpxPoint::GetName), "Invalid fix value");
}

std::set<std::string> FilesIn(const std::filesystem::path& folder) {
    std::set<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        files.insert(entry.path().filename().string());
    return files;
}

TEST(CorpusFilesTest, EveryFileHasItsTest) {
    SKIP_WITHOUT_CORPUS();
    std::set<std::string> good;
    for (const GoodFile& row : kGoodFiles)
        good.insert(row.file);
    for (const BadFile& row : kGoodFilesOfNoVersion)
        good.insert(row.file);
    std::set<std::string> bad;
    for (const BadFile& row : kBadFiles)
        bad.insert(row.file);
    EXPECT_EQ(good, FilesIn(kGood));
    EXPECT_EQ(bad, FilesIn(kBad));
}

} // namespace
} // namespace vexaTransferLib
