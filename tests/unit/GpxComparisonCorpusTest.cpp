// SPDX-License-Identifier: MIT

// Compares files of many programs with changed copies of themselves, if a folder of them is beside the source tree.

#include "support/TestFiles.h"
#include "support/comparison/GpxComparison.h"
#include "support/comparison/NormalValues.h"
#include "support/comparison/XmlDamage.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

using namespace vexaTransferLib::testing_support;

namespace {

using Findings = std::vector<MissingContent>;

const std::filesystem::path kCorpus = std::filesystem::path(VEXA_SHARED) / "corpus" / "gpx";

#define SKIP_WITHOUT_CORPUS()                                                                                \
    if (!std::filesystem::is_directory(kCorpus))                                                             \
    GTEST_SKIP() << "there is no corpus of GPX files beside the source tree"

std::vector<std::filesystem::path> Files() {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(kCorpus)) {
        if (entry.path().extension() == ".gpx")
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

// Damages some parts of each file, evenly spread and all of them in small files, and expects each to be found.
void ExpectDamageIsFound(XmlPart kind) {
    std::size_t damages = 0;
    for (const std::filesystem::path& file : Files()) {
        const std::string text = ReadBytes(file);
        const std::size_t count = CountParts(text, kind);
        const std::size_t samples = std::clamp<std::size_t>(1'000'000 / text.size(), 3, 100);
        const std::size_t step = std::max<std::size_t>(count / samples, 1);
        for (std::size_t n = 0; n < count; n += step) {
            ++damages;
            EXPECT_NE(FindMissing(text, Damaged(text, kind, n), GpxTarget::k11), Findings())
                << file.filename() << ", part " << n << " of " << count;
        }
    }
    EXPECT_GT(damages, 1000U);
}

// The text with the first elevation in the place of the next one that differs, and that in its place; empty if
// there are no two.
std::string WithElevationsSwapped(const std::string& text) {
    constexpr std::string_view kStart = "<ele>";
    const auto placeAfter = [&](std::size_t from) {
        const std::size_t start = text.find(kStart, from);
        return start == std::string::npos ? start : start + kStart.size();
    };
    const auto valueAt = [&](std::size_t place) { return text.substr(place, text.find('<', place) - place); };
    const std::size_t first = placeAfter(0);
    if (first == std::string::npos)
        return {};
    std::size_t second = placeAfter(first);
    while (second != std::string::npos && NormalNumber(valueAt(second)) == NormalNumber(valueAt(first)))
        second = placeAfter(second);
    if (second == std::string::npos)
        return {};
    std::string other = text;
    other.replace(second, valueAt(second).size(), valueAt(first));
    return other.replace(first, valueAt(first).size(), valueAt(second));
}

// Replaces all matches, of which there must be some.
void Replace(std::string& text, const std::string& pattern, const std::string& replacement) {
    const std::regex expression(pattern);
    ASSERT_TRUE(std::regex_search(text, expression)) << pattern;
    text = std::regex_replace(text, expression, replacement);
}

} // namespace

TEST(GpxComparisonCorpusTest, EachFileLacksNothingOfItself) {
    SKIP_WITHOUT_CORPUS();
    for (const std::filesystem::path& file : Files()) {
        const std::string text = ReadBytes(file);
        EXPECT_EQ(FindMissing(text, text, GpxTarget::k11), Findings()) << file.filename();
        const std::string respelled = Damaged(text, XmlPart::kElement, std::string::npos);
        EXPECT_EQ(FindMissing(text, respelled, GpxTarget::k10), Findings()) << file.filename();
        EXPECT_EQ(FindWithoutPlace(text, respelled), Findings()) << file.filename();
        EXPECT_EQ(FindInvented(text, respelled), Findings()) << file.filename();
    }
}

TEST(GpxComparisonCorpusTest, AMissingElementIsFound) {
    SKIP_WITHOUT_CORPUS();
    ExpectDamageIsFound(XmlPart::kElement);
}

TEST(GpxComparisonCorpusTest, AMissingAttributeIsFound) {
    SKIP_WITHOUT_CORPUS();
    ExpectDamageIsFound(XmlPart::kAttribute);
}

TEST(GpxComparisonCorpusTest, AChangedTextIsFound) {
    SKIP_WITHOUT_CORPUS();
    ExpectDamageIsFound(XmlPart::kText);
}

TEST(GpxComparisonCorpusTest, TwoElevationsThatAreSwappedAreFound) {
    SKIP_WITHOUT_CORPUS();
    std::size_t swapped = 0;
    for (const std::filesystem::path& file : Files()) {
        const std::string text = ReadBytes(file);
        const std::string other = WithElevationsSwapped(text);
        if (other.empty())
            continue;
        ++swapped;
        EXPECT_EQ(FindMissing(text, other, GpxTarget::k11).size(), 2U) << file.filename();
    }
    EXPECT_GT(swapped, 20U);
}

TEST(GpxComparisonCorpusTest, AFileThatIsConvertedByHandIsTheSame) {
    SKIP_WITHOUT_CORPUS();
    for (const char* name : {"gpxpy-gpx10-all-fields.gpx", "cgeo-oc5952.gpx"}) {
        const std::string original = ReadBytes(kCorpus / name);
        std::string text = original;
        Replace(text, "topografix.com/GPX/1/0", "topografix.com/GPX/1/1");
        Replace(text, "version=\"1.0\" creator", "version=\"1.1\" creator");
        Replace(text, "<url>([^<]*)</url>\\s*<urlname>([^<]*)</urlname>",
                "<link href=\"$1\"><text>$2</text></link>");
        Replace(text, "<author>([^<]*)</author>\\s*<email>([^@]*)@([^<]*)</email>",
                "<author><name>$1</name><email id=\"$2\" domain=\"$3\"/></author>");
        text.insert(text.find("<name>"), "<metadata>");
        text.insert(text.find("<wpt"), "</metadata>");
        if (original.find("<groundspeak:cache") != std::string::npos) {
            Replace(text, "<groundspeak:cache ", "<extensions>$&");
            Replace(text, "</groundspeak:cache>", "$&</extensions>");
        }
        EXPECT_EQ(FindMissing(original, text, GpxTarget::k11), Findings()) << name;
        EXPECT_EQ(FindMissing(text, original, GpxTarget::k10), Findings()) << name;
        EXPECT_EQ(FindInvented(original, text), Findings()) << name;
        EXPECT_EQ(FindWithoutPlace(text, original), Findings()) << name;
    }
}
