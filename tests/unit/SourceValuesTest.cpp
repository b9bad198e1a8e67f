// SPDX-License-Identifier: MIT
#include <vexaTransferLib/model/SourceValues.h>

#include "support/ContractChecks.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace vexaTransferLib {
namespace {

TEST(SourceValuesTest, AnEmptyTextIsNoValue) {
    EXPECT_EQ(NumberIn({}), std::nullopt);
    EXPECT_EQ(IntegerIn({}), std::nullopt);
    EXPECT_EQ(PlainIntegerIn({}), std::nullopt);
    EXPECT_EQ(testing_support::CaptureStandardError([] { EXPECT_EQ(TimeIn({}), std::nullopt); }), "");
}

TEST(SourceValuesTest, TimesHaveFractionsOfMilliseconds) {
    EXPECT_DOUBLE_EQ(TimeIn("1970-01-01T00:00:00.1234Z").value_or(0.0), 123.4);
    EXPECT_DOUBLE_EQ(TimeIn("1970-01-01T00:00:00.9999").value_or(0.0), 999.9);
    EXPECT_DOUBLE_EQ(TimeIn("1969-12-31T23:59:59.2504Z").value_or(0.0), -749.6);
    EXPECT_EQ(TimeIn("1970-01-01T00:00:01Z"), std::optional(1000.0));
}

TEST(SourceValuesTest, IntegersMayHaveASignAndOnlyTheVendorsSeparators) {
    EXPECT_EQ(IntegerIn("1,234"), std::optional(1234));
    EXPECT_EQ(IntegerIn("-1,234"), std::optional(-1234));
    EXPECT_EQ(IntegerIn(","), std::nullopt);
    EXPECT_EQ(PlainIntegerIn("1,234"), std::nullopt);
    EXPECT_EQ(PlainIntegerIn("+7"), std::optional(7));
    EXPECT_EQ(PlainIntegerIn("+-7"), std::nullopt);
    EXPECT_EQ(PlainIntegerIn("++7"), std::nullopt);
    EXPECT_EQ(PlainIntegerIn("-2147483648"), std::optional(-2147483647 - 1));
    EXPECT_EQ(PlainIntegerIn("-2147483649"), std::nullopt);
}

TEST(SourceValuesTest, NumbersAreThoseOfTheSchema) {
    // The reader looks at the bytes after a text.
    const auto numberIn = [](std::string text) {
        const std::size_t size = text.size();
        return NumberIn(std::string_view(text.append(16, '\0')).substr(0, size));
    };
    EXPECT_EQ(numberIn("1.5"), std::optional(1.5));
    EXPECT_EQ(numberIn("+1.5e1"), std::optional(15.0));
    EXPECT_EQ(numberIn("-.5"), std::optional(-0.5));
    EXPECT_EQ(numberIn("5."), std::optional(5.0));
    for (const char* const text : {".", "-", "1.5.", "1 2", "NaN", "INF", "1e", "0x1", "1,5", "1e999"})
        EXPECT_EQ(numberIn(text), std::nullopt) << text;
}

} // namespace
} // namespace vexaTransferLib
