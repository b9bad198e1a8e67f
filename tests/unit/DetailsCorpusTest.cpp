// SPDX-License-Identifier: MIT
// The values of real files against what their texts have, which regular expressions count.
#include <vexaTransferLib/GpxCacheDetails.h>
#include <vexaTransferLib/GpxMetadata.h>
#include <vexaTransferLib/GpxPointDetails.h>

#include "support/SourceOf.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <regex>
#include <string>
#include <vector>

namespace vexaTransferLib {
namespace {

using testing_support::ReadBytes;
using testing_support::RootOf;

class DetailsCorpusTest : public testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(Folder()))
            GTEST_SKIP() << "there is no corpus of GPX files: " << Folder();
    }

    static std::filesystem::path Folder() { return std::filesystem::path(VEXA_SHARED) / "corpus" / "gpx"; }
    static std::string TextOf(const std::string& name) { return ReadBytes(Folder() / name); }
};

// All points of a file in their order.
std::vector<GpxElement> PointsOf(const GpxElement& element) {
    std::vector<GpxElement> points;
    for (const GpxElement& child : element.GetChildren()) {
        const std::string_view name = child.GetName();
        if (name == "wpt" || name == "rtept" || name == "trkpt") {
            points.push_back(child);
        } else if (name == "rte" || name == "trk" || name == "trkseg") {
            const std::vector<GpxElement> inner = PointsOf(child);
            points.insert(points.end(), inner.begin(), inner.end());
        }
    }
    return points;
}

using Getter = std::optional<double> (GpxPointDetails::*)() const;

std::vector<double> Measured(const std::string& text, Getter get) {
    std::vector<double> numbers;
    for (const GpxElement& point : PointsOf(RootOf(text)))
        if (const std::optional<double> number = (GpxPointDetails(point).*get)())
            numbers.push_back(*number);
    return numbers;
}

// The texts of all elements with this name, whatever their prefix.
std::vector<double> Written(const std::string& text, const std::string& name) {
    const std::regex element("<(?:[A-Za-z0-9]+:)?" + name + ">([^<]*)</");
    std::vector<double> numbers;
    for (std::sregex_iterator at(text.begin(), text.end(), element); at != std::sregex_iterator(); ++at)
        numbers.push_back(std::stod((*at)[1]));
    return numbers;
}

std::size_t CountOf(const std::string& text, const std::string& pattern) {
    const std::regex regex(pattern);
    return static_cast<std::size_t>(
        std::distance(std::sregex_iterator(text.begin(), text.end(), regex), std::sregex_iterator()));
}

TEST_F(DetailsCorpusTest, SensorsAreReadFromWhatDevicesWrite) {
    const struct {
        const char* file;
        const char* element;
        Getter get;
    } kSensors[] = {
        {"georust-garmin-activity.gpx", "hr", &GpxPointDetails::GetHeartRate},
        {"georust-garmin-activity.gpx", "cad", &GpxPointDetails::GetCadence},
        {"phpgpx-endomondo.gpx", "hr", &GpxPointDetails::GetHeartRate},
        {"goldencheetah-movescount.gpx", "temp", &GpxPointDetails::GetTemperature},
        {"jpx-issue-170-version.gpx", "speed", &GpxPointDetails::GetSpeed},
        {"viking-GH137-fitotrack.gpx", "speed", &GpxPointDetails::GetSpeed},
        {"routeconverter-osmand.gpx", "speed", &GpxPointDetails::GetSpeed},
        {"hikingbook-test.gpx", "course", &GpxPointDetails::GetCourse},
        {"gpsbabel-dg100.gpx", "speed", &GpxPointDetails::GetSpeed},
    };
    for (const auto& sensor : kSensors) {
        const std::string text = TextOf(sensor.file);
        const std::vector<double> written = Written(text, sensor.element);
        EXPECT_FALSE(written.empty()) << sensor.file << " " << sensor.element;
        EXPECT_EQ(Measured(text, sensor.get), written) << sensor.file << " " << sensor.element;
    }
}

TEST_F(DetailsCorpusTest, GeocachesAreReadWithAllTheirLogsAttributesAndTravelBugs) {
    std::size_t files = 0;
    for (const char* file : {"cgeo-gc31j2h.gpx", "cachebox3-GC2T9RW.gpx", "cachebox3-GSAK-1-1.gpx",
                             "cgeo-lab-stary-prostejov.gpx", "gpsbabel-GC7FA4.gpx", "cgeo-oc5952.gpx"}) {
        const std::string text = TextOf(file);
        std::size_t caches = 0;
        std::size_t logs = 0;
        std::size_t attributes = 0;
        std::size_t bugs = 0;
        for (const GpxElement& point : PointsOf(RootOf(text))) {
            const GpxCacheDetails cache(GpxCacheDetails::FindCache(point));
            caches += cache.GetElement() ? 1 : 0;
            logs += cache.GetLogs().size();
            attributes += cache.GetAttributes().size();
            bugs += cache.GetTravelBugs().size();
            if (cache.GetElement()) {
                EXPECT_TRUE(cache.GetId() && cache.IsAvailable() && cache.IsArchived() && cache.GetName())
                    << file;
            }
            for (const GpxCacheLogDetails& log : cache.GetLogs())
                EXPECT_TRUE(log.id && log.time && log.finder && log.type && log.text) << file;
        }
        EXPECT_EQ(caches, CountOf(text, "<groundspeak:cache\\s")) << file;
        EXPECT_EQ(logs, CountOf(text, "<groundspeak:log[\\s>]")) << file;
        EXPECT_EQ(attributes, CountOf(text, "<groundspeak:attribute\\s")) << file;
        EXPECT_EQ(bugs, CountOf(text, "<groundspeak:travelbug\\s")) << file;
        files += caches != 0 ? 1 : 0;
    }
    EXPECT_EQ(files, 6u);
}

TEST_F(DetailsCorpusTest, MetadataIsReadFromBothVersions) {
    const struct {
        const char* file;
        icu::UnicodeString email;
    } kFiles[] = {{"gpxpy-gpx10-all-fields.gpx", u"example@email.com"},
                  {"gpxpy-gpx11-all-fields.gpx", u"aaa@bbb.com"}};
    for (const auto& [file, email] : kFiles) {
        const GpxMetadata metadata(RootOf(TextOf(file)));
        EXPECT_EQ(metadata.GetName(), std::optional<icu::UnicodeString>(u"example name")) << file;
        EXPECT_EQ(metadata.GetKeywords(), std::optional<icu::UnicodeString>(u"example keywords")) << file;
        EXPECT_EQ(metadata.GetTime(), std::optional(1357041600000.0)) << file;
        ASSERT_TRUE(metadata.GetBounds()) << file;
        EXPECT_EQ(metadata.GetBounds()->maxLongitude, 7.8) << file;
        ASSERT_TRUE(metadata.GetAuthor()) << file;
        EXPECT_EQ(metadata.GetAuthor()->email, std::optional(email)) << file;
    }
}

} // namespace
} // namespace vexaTransferLib
