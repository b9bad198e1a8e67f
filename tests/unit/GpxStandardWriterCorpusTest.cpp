// SPDX-License-Identifier: MIT

// Writes files of many programs by the published schemas and compares the results with them by an independent parser.
#include <vexaTransferLib/GpxStandardWriter.h>

#include "support/StandardWriting.h"
#include "support/TestFiles.h"
#include "support/comparison/GpxComparison.h"
#include "support/comparison/SchemaValidation.h"

#include <vexaTransferLib/GpxError.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib {
namespace {

namespace fs = std::filesystem;
using namespace testing_support;

const fs::path kShared = VEXA_SHARED;
const fs::path kCorpus = kShared / "corpus" / "gpx";
const fs::path kSchemas = kShared / "schemas";

// GPX 1.0 has no `metadata`: what is in its extensions moves to the end of the file, behind other elements that may
// have the same names. This is its path, below the extensions and without the number of the element.
std::optional<std::string> PathInExtensions(std::string_view path, std::string_view extensions) {
    if (!path.starts_with(extensions))
        return {};
    path.remove_prefix(extensions.size());
    const std::size_t uriEnd = path.find('}') == std::string_view::npos ? 0 : path.find('}');
    const std::size_t end = std::min(path.find('/', uriEnd), path.size());
    const std::size_t bracket = path.substr(0, end).find('[', uriEnd);
    return std::string(path.substr(0, std::min(bracket, end))) + std::string(path.substr(end));
}

bool IsMoved(const MissingContent& lost, const MissingContent& gained) {
    const auto before = PathInExtensions(lost.path, "gpx/metadata/extensions/");
    const auto after = PathInExtensions(gained.path, "gpx/extensions/");
    return before && before == after && lost.value == gained.value;
}

bool IsMovedFrom(const std::vector<MissingContent>& lost, const MissingContent& gained) {
    return std::any_of(lost.begin(), lost.end(),
                       [&](const MissingContent& content) { return IsMoved(content, gained); });
}

bool IsMovedTo(const std::vector<MissingContent>& gained, const MissingContent& lost) {
    return std::any_of(gained.begin(), gained.end(),
                       [&](const MissingContent& content) { return IsMoved(lost, content); });
}

std::vector<fs::path> FilesBelow(const fs::path& folder) {
    std::vector<fs::path> files;
    if (!fs::is_directory(folder))
        return files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.path().extension() == ".gpx")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

std::string NameOf(const testing::TestParamInfo<fs::path>& file) {
    std::string name = file.param.stem().string();
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return name + "_" + std::to_string(file.index);
}

/// A file, and what is written of it in one version.
struct Conversion {
    Conversion(const std::string& bytes, const GpxDocument& document, GpxTarget wanted)
        : before(bytes), target(wanted), version(wanted == GpxTarget::k10 ? kGpx10 : kGpx11),
          after(document, version) {}

    std::string Name() const { return target == GpxTarget::k10 ? "as 1.0" : "as 1.1"; }

    const std::string& before;
    GpxTarget target;
    GpxVersion version;
    StandardText after;
};

class GpxStandardWriterCorpusTest : public testing::TestWithParam<fs::path> {
protected:
    void SetUp() override {
        bytes_ = ReadBytes(GetParam());
        try {
            document_ = ReadCompletely(bytes_);
        } catch (const GpxReadError& error) {
            GTEST_SKIP() << "this file cannot be read: " << error.what();
        }
        isXml10_ = bytes_.find("<?xml version=\"1.1\"") == std::string::npos;
        for (const GpxTarget target : {GpxTarget::k10, GpxTarget::k11})
            conversions_.emplace_back(bytes_, document_, target);
    }

    std::string bytes_;
    GpxDocument document_;
    std::vector<Conversion> conversions_;
    bool isXml10_ = false;
};

#define SKIP_XML_11()                                                                                        \
    if (!isXml10_)                                                                                           \
    GTEST_SKIP() << "this file is in XML 1.1, which the comparison does not read"

std::optional<std::string> Errors(const std::string& xml) {
    const TemporaryFolder folder;
    const std::string schema = WriteCombinedSchema(
        folder / "",
        {kSchemas / "gpx10.xsd", kSchemas / "gpx11.xsd", kSchemas / "cache10.xsd", kSchemas / "cache101.xsd"},
        xml);
    return ValidateAgainst(xml, schema);
}

// True for a path that goes through an element of this name.
bool HasStep(std::string_view path, std::string_view name) {
    while (!path.empty()) {
        const std::size_t slash = path.find('/');
        std::string_view step = path.substr(0, slash);
        step = step.substr(0, step.find('['));
        if (step == name || step.ends_with("}" + std::string(name)))
            return true;
        path.remove_prefix(slash == std::string_view::npos ? path.size() : slash + 1);
    }
    return false;
}

TEST_P(GpxStandardWriterCorpusTest, NothingIsLost) {
    SKIP_XML_11();
    for (const Conversion& one : conversions_)
        EXPECT_EQ(FindMissing(one.before, one.after.text, one.target), std::vector<MissingContent>())
            << GetParam() << one.Name();
}

TEST_P(GpxStandardWriterCorpusTest, NothingIsInvented) {
    SKIP_XML_11();
    for (const Conversion& one : conversions_) {
        // Also what is found again below, where an element of that name was before.
        const std::vector<MissingContent> lost = FindWithoutPlace(one.before, one.after.text);
        for (const MissingContent& content : FindInvented(one.before, one.after.text))
            EXPECT_TRUE(one.target == GpxTarget::k10 && IsMovedFrom(lost, content))
                << GetParam() << one.Name() << ' ' << content;
    }
}

TEST_P(GpxStandardWriterCorpusTest, WritingAgainGivesTheSameBytes) {
    for (const Conversion& one : conversions_) {
        EXPECT_TRUE(StandardText(document_, one.version).text == one.after.text) << GetParam();
        const StandardText again(ReadCompletely(one.after.text), one.version);
        EXPECT_TRUE(again.text == one.after.text) << GetParam() << one.Name();
        EXPECT_EQ(again.Reports(), "") << GetParam();
    }
}

TEST_P(GpxStandardWriterCorpusTest, TheResultIsValidWhenTheFileIs) {
    SKIP_XML_11();
    if (!fs::is_directory(kSchemas))
        GTEST_SKIP() << "the published schemas are not here: " << kSchemas;
    if (Errors(bytes_))
        return;
    for (const Conversion& one : conversions_)
        EXPECT_EQ(Errors(one.after.text), std::nullopt) << GetParam() << one.Name();
}

TEST_P(GpxStandardWriterCorpusTest, WhatIsLeftOutIsReported) {
    SKIP_XML_11();
    for (const Conversion& one : conversions_) {
        const std::vector<MissingContent> lost = FindWithoutPlace(one.before, one.after.text);
        const std::vector<MissingContent> gained = FindInvented(one.before, one.after.text);
        for (const MissingContent& content : lost) {
            if (IsMovedTo(gained, content))
                continue;
            const bool isReported = std::any_of(
                one.after.unwritten.begin(), one.after.unwritten.end(),
                [&](const GpxUnwritten& report) { return HasStep(content.path, report.element); });
            EXPECT_TRUE(isReported) << GetParam() << " " << content << "\n" << one.after.Reports();
        }
        for (const GpxUnwritten& report : one.after.unwritten) {
            const bool isLost = std::any_of(lost.begin(), lost.end(), [&](const MissingContent& content) {
                return HasStep(content.path, report.element);
            });
            EXPECT_TRUE(isLost) << GetParam() << " " << report.object << " " << report.element;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Corpus, GpxStandardWriterCorpusTest, testing::ValuesIn(FilesBelow(kCorpus)), NameOf);
INSTANTIATE_TEST_SUITE_P(TestData, GpxStandardWriterCorpusTest, testing::ValuesIn(FilesBelow(VEXA_TEST_DATA)),
                         NameOf);
// Without a corpus of GPX files beside the source tree.
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(GpxStandardWriterCorpusTest);

} // namespace
} // namespace vexaTransferLib
