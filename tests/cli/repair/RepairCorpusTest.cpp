// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include <vexagpx/repair/MarkupRepair.h>
#include <vexagpx/report/SchemaReport.h>
#include <vexagpx/schema/DocumentValidation.h>

#include <libxml/parser.h>
#include <xercesc/util/PlatformUtils.hpp>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

namespace {

using cli::Folder;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using vexagpx::ChangeList;
using vexagpx::DocumentValidation;
using vexagpx::RepairMarkup;
using vexagpx::SchemaReport;

bool IsWellFormed(const std::string& text) {
    xmlDoc* const document = xmlReadMemory(text.data(), static_cast<int>(text.size()), "walk.gpx", nullptr,
                                           XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NONET);
    xmlFreeDoc(document);
    return document != nullptr;
}

bool IsValid(DocumentValidation& validation, const std::string& text) {
    SchemaReport report(false);
    validation.ValidateBytes(text, "walk.gpx", report);
    return report.IsValid();
}

std::size_t CountMatches(const std::string& text, const std::regex& pattern) {
    return static_cast<std::size_t>(
        std::distance(std::sregex_iterator(text.begin(), text.end(), pattern), std::sregex_iterator()));
}

// Points that stand whole in a text.
std::size_t CountPoints(const std::string& text) {
    static const std::regex pattern("</(wpt|rtept|trkpt)\\s*>|<(wpt|rtept|trkpt)\\s[^<>]*/>");
    return CountMatches(text, pattern);
}

// Points that start in a text.
std::size_t CountStarts(const std::string& text) {
    static const std::regex pattern("<(wpt|rtept|trkpt)[\\s/>]");
    return CountMatches(text, pattern);
}

void RepairTruncations(const std::string& file, DocumentValidation& validation) {
    const std::string whole = ReadFile(file);
    const bool wasValid = IsValid(validation, whole);
    for (std::size_t size = whole.find('>', whole.find("<gpx")) + 1; size < whole.size(); ++size) {
        const std::string cut = whole.substr(0, size);
        ChangeList changes;
        const std::string text = RepairMarkup(cut, {}, changes).text;
        ASSERT_TRUE(IsWellFormed(text)) << file << " cut at " << size << ":\n" << text;
        ASSERT_EQ(CountPoints(text), CountPoints(cut)) << file << " cut at " << size << ":\n" << text;
        ASSERT_TRUE(!wasValid || IsValid(validation, text)) << file << " cut at " << size << ":\n" << text;
    }
}

class RepairCorpusTest : public testing::Test {
protected:
    static void SetUpTestSuite() { xercesc::XMLPlatformUtils::Initialize(); }
    static void TearDownTestSuite() { xercesc::XMLPlatformUtils::Terminate(); }
};

TEST_F(RepairCorpusTest, EveryTruncationKeepsWholePointsAndIsValidWhereTheFileWas) {
    std::vector<std::string> files;
    for (const std::string& file : cli::Corpus("gpx")) {
        const std::string text = ReadFile(file);
        if (text.size() > 700 && text.size() < 3600 && text.find('\0') == std::string::npos &&
            IsWellFormed(text) && text.find("<gpx") != std::string::npos)
            files.push_back(file);
    }
    constexpr std::size_t kFiles = 10;
    if (files.size() < kFiles)
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    files.resize(kFiles);
    DocumentValidation validation;
    for (const std::string& file : files)
        RepairTruncations(file, validation);
}

TEST_F(RepairCorpusTest, MostMalformedFilesComeBackWithTheirPoints) {
    const std::vector<std::string> files = cli::Corpus("gpx-malformed");
    if (files.empty())
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    const Folder folder;
    std::size_t repaired = 0;
    for (const std::string& file : files) {
        const std::string out = folder.File("out-" + std::to_string(repaired) + ".gpx");
        const Result result = RunTool({"repair", file, out}, ".");
        if (result.status != 0) {
            EXPECT_FALSE(std::filesystem::exists(out)) << file;
            continue;
        }
        ++repaired;
        const std::string text = ReadFile(out);
        EXPECT_TRUE(IsWellFormed(text)) << file;
        // A point that was cut off is unfinished.
        EXPECT_GE(CountPoints(text) + 1, CountStarts(ReadFile(file))) << file;
        EXPECT_EQ(CountPoints(text), CountPoints(ReadFile(file))) << file;
        EXPECT_EQ(RunTool({"show", out}, ".").status, 0) << file;
    }
    EXPECT_GE(repaired, 16U);
    std::printf("%zu of %zu come back\n", repaired, files.size());
}

TEST_F(RepairCorpusTest, WellFormedMarkupStaysByteForByte) {
    std::size_t compared = 0;
    for (const std::string& file : cli::Corpus("gpx")) {
        const std::string text = ReadFile(file);
        if (text.size() > 1'000'000 || text.find('\0') != std::string::npos || !IsWellFormed(text) ||
            text.find("encoding=\"ISO") != std::string::npos || text.find("<!DOCTYPE") != std::string::npos)
            continue;
        ChangeList changes;
        const std::string repaired = RepairMarkup(text, {}, changes).text;
        EXPECT_TRUE(changes.Count() != 0 || repaired == text) << file;
        compared += changes.Count() == 0 ? 1 : 0;
    }
    if (compared == 0)
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    EXPECT_GT(compared, 50U);
}

} // namespace
