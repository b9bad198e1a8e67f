// SPDX-License-Identifier: MIT

// Reads files of many programs with an observer and compares what is written of the documents with the files, by an
// independent parser.

#include "support/RecordingObserver.h"
#include "support/StandardWriting.h"
#include "support/TestFiles.h"
#include "support/comparison/GpxComparison.h"

#include <vexaTransferLib/GpxParser.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib {
namespace {

namespace fs = std::filesystem;
using namespace testing_support;

const fs::path kCorpus = fs::path(VEXA_SHARED) / "corpus";

std::vector<fs::path> Files() {
    std::vector<fs::path> files;
    if (!fs::is_directory(kCorpus))
        return files;
    for (const auto& entry : fs::recursive_directory_iterator(kCorpus))
        if (entry.path().extension() == ".gpx")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

// What the comparison misses, although a document has it or it is none of its content.
bool IsNoLoss(const MissingContent& missing) {
    // The comment is kept as the description.
    return missing.path.ends_with("/cmt") ||
           // An empty element says nothing.
           missing.value.empty();
}

// Only the document's own writer leaves out digits. The one of this test writes all that the document has.
bool IsLostHere(const GpxSkippedElement& thing) {
    return thing.isLoss && thing.reason != kGpxRounded;
}

std::string Listed(const std::vector<MissingContent>& missing) {
    std::string text;
    for (const MissingContent& content : missing)
        text += content.path + " = " + content.value + "\n";
    return text.substr(0, 2000);
}

TEST(ReadLossCorpusTest, AnObserverHearsOfALossExactlyWhenContentIsMissing) {
    const std::vector<fs::path> files = Files();
    if (files.empty())
        GTEST_SKIP() << "there is no corpus of GPX files beside the source tree";
    std::size_t lossy = 0;
    std::size_t lossless = 0;
    std::size_t compared = 0;
    for (const fs::path& file : files) {
        const std::string bytes = ReadBytes(file);
        RecordingObserver observer;
        GpxParser parser;
        parser.SetObserver(&observer);
        GpxDocument document;
        try {
            parser.Parse(bytes, u".gpx", document);
        } catch (const std::exception&) {
            continue; // The reader refuses some files on purpose.
        }
        std::vector<MissingContent> missing;
        try {
            missing = FindMissing(bytes, StandardText(document, kGpx11).text, GpxTarget::k11);
        } catch (const std::runtime_error&) {
            continue; // The comparison reads no XML 1.1, and not every encoding that the reader does.
        }
        ++compared;
        std::erase_if(missing, IsNoLoss);
        const auto isHeard = [&](auto isLoss) {
            return std::any_of(observer.things.begin(), observer.things.end(), isLoss);
        };
        const std::string found = file.string() + "\n" + Listed(missing) + observer.skipped.substr(0, 3000);
        if (missing.empty())
            EXPECT_FALSE(isHeard(IsLostHere)) << found;
        else
            EXPECT_TRUE(isHeard([](const GpxSkippedElement& thing) { return thing.isLoss; })) << found;
        ++(missing.empty() ? lossless : lossy);
    }
    EXPECT_GT(compared, files.size() / 2);
    EXPECT_GT(lossy, 10U);
    EXPECT_GT(lossless, 5U);
}

} // namespace
} // namespace vexaTransferLib
