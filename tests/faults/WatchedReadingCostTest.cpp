// SPDX-License-Identifier: MIT

// The memory that an observed reading requests for hostile shapes of files: it must grow in proportion to the
// length of the file.

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

/// The numbers of requests to operator new, ICU and Xerces, and the bytes that were requested from ICU.
using Cost = std::array<std::size_t, 4>;

Cost CostOf(const std::function<void()>& action) {
    const RefusedNew news = RefusedNew::None();
    const RefusedXercesMemory xerces = RefusedXercesMemory::None();
    const RefusedIcuMemory icu = RefusedIcuMemory::None();
    action();
    return {news.Calls(), icu.Calls(), icu.Bytes(), xerces.Calls()};
}

// More names than a plain file may have, so that files of this and of four times the length are read in the same way.
constexpr std::size_t kCount = 600;
// Four times as many names are fewer than that, and within the limits of an untrusted file.
constexpr std::size_t kUntrustedCount = 120;

void ExpectLinear(std::size_t count, const std::function<Cost(std::size_t)>& costOf) {
    costOf(1); // makes the objects that are made on first use
    const Cost fixed = costOf(1);
    const Cost ofFile = costOf(count);
    const Cost ofFourTimes = costOf(4 * count);
    for (std::size_t i = 0; i < fixed.size(); ++i) {
        ASSERT_GE(ofFile[i], fixed[i]) << i;
        // Buffers that request more than they need grow in steps, so that up to 8 times as much is accepted.
        // Quadratic growth would give 16 times as much.
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
        ExpectLinear(kCount, [&](std::size_t count) {
            const std::string bytes = declaration + GetParam().make(count);
            GpxDocument document;
            return CostOf([&] { parser.Parse(bytes, u"shape", document); });
        });
    }
}

TEST_P(WatchedReadingCostTest, FourTimesAnUntrustedFileAsksForFourTimesTheMemory) {
    GpxParser parser;
    GpxReadObserver observer;
    parser.SetObserver(&observer);
    GpxInputLimits limits;
    limits.namespaceLength = limits.tagBytes;
    parser.SetUntrusted(limits);
    ExpectLinear(kUntrustedCount, [&](std::size_t count) {
        const std::string bytes = GetParam().make(count);
        GpxDocument document;
        return CostOf([&] { parser.Parse(bytes, u"shape", document); });
    });
}

} // namespace
} // namespace vexaTransferLib
