// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/ReadContext.h>

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <vector>

namespace vexaTransferLib::reader {
namespace {

class Context final : public ReadContext {
public:
    void CleanText(icu::UnicodeString&) override {}
};

TEST(ReadContextTest, MakesRoomForExpectedPoints) {
    std::vector<GpxPoint> points;
    Context().MakeRoom(points, 1000);
    EXPECT_EQ(points.capacity(), 1000u);
}

TEST(ReadContextTest, MakesRoomForNoMorePointsThanAnUntrustedFileMayHave) {
    GpxInputLimits limits;
    limits.points = 10;
    Context context;
    context.limiter = std::make_unique<ModelLimiter>(limits, InputName(u"file.gpx"));
    context.limiter->AddPoint();
    std::vector<GpxPoint> points;
    context.MakeRoom(points, 1000);
    EXPECT_EQ(points.capacity(), 9u);
}

TEST(ReadContextTest, DoesWithoutRoomForMorePointsThanAVectorCanHave) {
    std::vector<GpxPoint> points;
    EXPECT_NO_THROW(Context().MakeRoom(points, std::numeric_limits<std::uint64_t>::max()));
    EXPECT_EQ(points.capacity(), 0u);
}

} // namespace
} // namespace vexaTransferLib::reader
