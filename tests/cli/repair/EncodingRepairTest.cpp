// SPDX-License-Identifier: MIT
#include <vexagpx/repair/EncodingRepair.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using vexagpx::ChangeList;
using vexagpx::RepairEncoding;

TEST(EncodingRepairTest, LeavesUtf8AsItIs) {
    ChangeList changes;
    EXPECT_EQ(RepairEncoding("<?xml version='1.0' encoding='utf-8'?><a>\u00E4</a>", changes),
              "<?xml version='1.0' encoding='utf-8'?><a>\u00E4</a>");
    EXPECT_EQ(changes.Count(), 0U);
}

TEST(EncodingRepairTest, CorrectsADeclarationThatDoesNotHold) {
    ChangeList changes;
    EXPECT_EQ(RepairEncoding("<?xml version='1.0' encoding='UTF-16'?><a>\u00E4</a>", changes),
              "<?xml version='1.0' encoding='UTF-8'?><a>\u00E4</a>");
    EXPECT_EQ(changes.Count(), 1U);
}

TEST(EncodingRepairTest, TakesOtherBytesAsWindows1252) {
    ChangeList changes;
    EXPECT_EQ(RepairEncoding("<a>\xE4 \x80</a>", changes), "<a>\u00E4 \u20AC</a>");
}

TEST(EncodingRepairTest, ConvertsUtf16WithoutAMark) {
    ChangeList changes;
    EXPECT_EQ(RepairEncoding(std::string("<\0a\0/\0>\0", 8), changes), "<a/>");
}

} // namespace
