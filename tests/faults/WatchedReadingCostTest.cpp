// SPDX-License-Identifier: MIT

// What a watched reading asks of memory, for files of a shape: so many times as much for so many times the file.

#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/GpxReadObserver.h>

#include "support/HostileShapes.h"
#include "support/IcuMemory.h"
#include "support/Memory.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <functional>
#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

/// Requests to operator new, to ICU, and to Xerces, and the bytes of those to ICU.
using Cost = std::array<std::size_t, 4>;

Cost CostOf(const std::function<void()>& action) {
    const RefusedNew news = RefusedNew::None();
    const RefusedXercesMemory xerces = RefusedXercesMemory::None();
    const RefusedIcuMemory icu = RefusedIcuMemory::None();
    action();
    return {news.Calls(), icu.Calls(), icu.Bytes(), xerces.Calls()};
}

void ExpectLinear(const std::function<Cost(std::size_t)>& costOf) {
    constexpr std::size_t kCount = 250;
    costOf(1); // what is made on first use
    const Cost fixed = costOf(1);
    const Cost ofFile = costOf(kCount);
    const Cost ofFourTimes = costOf(4 * kCount);
    for (std::size_t i = 0; i < fixed.size(); ++i) {
        ASSERT_GE(ofFile[i], fixed[i]) << i;
        // What asks for more than it needs as it grows takes steps. The square would be 16 times as much.
        EXPECT_LE(ofFourTimes[i] - fixed[i], (ofFile[i] - fixed[i]) * 8 + 1000) << i;
    }
}

class WatchedReadingCostTest : public testing::TestWithParam<HostileShape> {};

INSTANTIATE_TEST_SUITE_P(Shapes, WatchedReadingCostTest, testing::ValuesIn(HostileShapes()),
                         [](const testing::TestParamInfo<HostileShape>& shape) { return shape.param.name; });

TEST_P(WatchedReadingCostTest, FourTimesTheFileAsksForFourTimesTheMemory) {
    GpxParser parser;
    GpxReadObserver observer;
    parser.SetObserver(&observer);
    for (const char* declaration : {"", "<!DOCTYPE gpx>"}) {
        SCOPED_TRACE(declaration);
        ExpectLinear([&](std::size_t count) {
            const std::string bytes = declaration + GetParam().make(count);
            GpxDocument document;
            return CostOf([&] { parser.Parse(bytes, u"shape", document); });
        });
    }
}

TEST_P(WatchedReadingCostTest, SoItIsForAFileFromAStranger) {
    GpxParser parser;
    GpxReadObserver observer;
    parser.SetObserver(&observer);
    GpxInputLimits limits;
    limits.namespaceLength = limits.tagBytes;
    parser.SetUntrusted(limits);
    ExpectLinear([&](std::size_t count) {
        const std::string bytes = GetParam().make(count);
        GpxDocument document;
        return CostOf([&] { parser.Parse(bytes, u"shape", document); });
    });
}

} // namespace
} // namespace vexaTransferLib
