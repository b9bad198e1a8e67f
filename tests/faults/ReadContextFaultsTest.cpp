// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/ReadContext.h>

#include "support/Memory.h"

#include <gtest/gtest.h>

#include <vector>

namespace vexaTransferLib::reader {
namespace {

class Context final : public ReadContext {
public:
    void CleanText(icu::UnicodeString&) override {}
};

TEST(ReadContextFaultsTest, DoesWithoutRoomThatThereIsNot) {
    const Context context;
    std::vector<GpxPoint> points;
    {
        const auto refused = testing_support::RefusedNew::AtCall(1);
        context.MakeRoom(points, 1000);
        EXPECT_EQ(refused.Calls(), 1u);
    }
    EXPECT_EQ(points.capacity(), 0u);
    context.MakeRoom(points, 1000);
    EXPECT_EQ(points.capacity(), 1000u);
}

} // namespace
} // namespace vexaTransferLib::reader
