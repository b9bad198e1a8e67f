// SPDX-License-Identifier: MIT
#include <vexagpx/editing/PathChoice.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace vexaTransferLib;
using testing::ElementsAre;
using vexagpx::PathChoice;

// The calls for a document with two routes and three tracks.
std::vector<std::string> Calls(const PathChoice& choice) {
    GpxDocument document;
    for (int i = 0; i < 2; ++i)
        document.AddRoute(GpxRoute(kTarvikRouteStandard));
    for (int i = 0; i < 3; ++i)
        document.AddTrack(GpxTrack());
    std::vector<std::string> calls;
    try {
        vexagpx::ForEachPath(
            document, choice,
            [&](GpxTrack&, std::size_t number) { calls.push_back("track " + std::to_string(number)); },
            [&](GpxRoute&, std::size_t number) { calls.push_back("route " + std::to_string(number)); });
    } catch (const std::runtime_error& error) {
        calls.emplace_back(error.what());
    }
    return calls;
}

TEST(PathChoiceTest, NoneNamedIsAllOfThem) {
    EXPECT_TRUE(PathChoice().IsAll());
    EXPECT_THAT(Calls({}), ElementsAre("route 1", "route 2", "track 1", "track 2", "track 3"));
}

TEST(PathChoiceTest, NamedOnesComeInTheOrderOfTheDocument) {
    EXPECT_THAT(Calls({{3, 1, 3}, {}}), ElementsAre("track 1", "track 3"));
    EXPECT_THAT(Calls({{2}, {2}}), ElementsAre("route 2", "track 2"));
}

TEST(PathChoiceTest, ANumberThatIsTooHighIsRefusedBeforeAnyCall) {
    EXPECT_THAT(Calls({{1, 4}, {}}), ElementsAre("There is no track 4; the document has 3 tracks."));
    EXPECT_THAT(Calls({{1}, {3}}), ElementsAre("There is no route 3; the document has 2 routes."));
}

} // namespace
