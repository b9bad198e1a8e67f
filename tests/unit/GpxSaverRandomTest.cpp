// SPDX-License-Identifier: MIT

// Random changes of files of the tests: what is read again is what was saved.
#include <vexaTransferLib/GpxSaver.h>

#include "support/RandomEdits.h"
#include "support/StandardWriting.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace vexaTransferLib {
namespace {

namespace fs = std::filesystem;
using namespace testing_support;

const fs::path kData = VEXA_TEST_DATA;

// By default few; VEXA_SAVED_EDITS is how many for each file.
std::uint64_t Rounds() {
    const char* const rounds = std::getenv("VEXA_SAVED_EDITS");
    return rounds != nullptr ? std::strtoull(rounds, nullptr, 10) : 40;
}

void TryEdits(const std::string& name, const GpxDocument& document, const GpxDocument& other) {
    for (std::uint64_t seed = 0; seed < Rounds(); ++seed) {
        GpxDocument changed = document;
        EditAtRandom(changed, other, seed, static_cast<int>(1 + seed % 7));
        bool isUnwritten = false;
        GpxSaveOptions options;
        options.unwritten = [&](const GpxUnwritten&) { isUnwritten = true; };
        const std::string saved = GpxSaver(options).GetText(changed);
        GpxDocument again;
        ASSERT_NO_THROW(again = ReadCompletely(saved)) << name << " " << seed;
        ASSERT_TRUE(isUnwritten || again == changed) << name << " " << seed << "\n" << saved;
    }
}

TEST(GpxSaverRandomTest, WhatIsReadAgainIsWhatWasSaved) {
    const std::vector<fs::path> files = {kData / "writer" / "everything-1.1.gpx",
                                         kData / "writer" / "everything-1.0.gpx",
                                         kData / "cli" / "hand-written.gpx", kData / "cli" / "day.gpx",
                                         kData / "reader" / "unusual-but-plain.gpx"};
    std::vector<GpxDocument> documents;
    for (const fs::path& file : files)
        documents.push_back(ReadCompletely(ReadBytes(file)));
    for (std::size_t i = 0; i < files.size(); ++i)
        for (const GpxDocument& other : documents)
            TryEdits(files[i].filename().string(), documents[i], other);
}

} // namespace
} // namespace vexaTransferLib
