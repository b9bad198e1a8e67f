// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/IcuText.h>

#include "support/PageEndText.h"

#include <gtest/gtest.h>

namespace vexaTransferLib::text {
namespace {

using testing_support::PageEndText;

TEST(IcuTextTest, TheStartOfATextEndsAtItsZeroOrAfterSoManyUnits) {
    EXPECT_EQ(AliasOfStart(u"abc", 5), u"abc");
    EXPECT_EQ(AliasOfStart(u"abc", 3), u"abc");
    EXPECT_EQ(AliasOfStart(u"abc", 2), u"ab");
    EXPECT_EQ(AliasOfStart(u"abc", 0), u"");
    EXPECT_EQ(AliasOfStart(u"", 5), u"");
    EXPECT_EQ(AliasOfStart(nullptr, 5), u"");
}

TEST(IcuTextTest, TheStartOfATextIsNoCopyAndNothingAfterItIsLookedAt) {
    const PageEndText text(u"abc");
    const icu::UnicodeString start = AliasOfStart(text.Get(), 3);
    EXPECT_EQ(start, u"abc");
    EXPECT_EQ(start.getBuffer(), text.Get());
}

} // namespace
} // namespace vexaTransferLib::text
