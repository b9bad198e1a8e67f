// SPDX-License-Identifier: MIT
#include <vexagpx/report/NormalValue.h>

#include "export/Reading.h"

#include <string>

namespace {

using vexagpx::NormalNumber;

std::string NormalTime(const std::string& text) {
    const vexaTransferLib::GpxDocument document =
        cli::DocumentOf(cli::PointText("wpt", "1", "2", "<time>" + text + "</time>"));
    return vexagpx::NormalTime(document.GetWaypoints()[0].GetElement().GetFirstChild(), text);
}

TEST(NormalValueTest, EqualNumbersAreOneText) {
    for (const char* text : {"1.5", "+01.50", " 1.5 ", "15e-1", "0.15E1", "150e-2"})
        EXPECT_EQ(NormalNumber(text), "15e-1") << text;
    for (const char* text : {"0", "-0.00", "0e5", "+.0"})
        EXPECT_EQ(NormalNumber(text), "0") << text;
    EXPECT_EQ(NormalNumber("-2000"), "-2e3");
}

TEST(NormalValueTest, NumbersThatDifferInTheLastOfManyDigitsDiffer) {
    EXPECT_NE(NormalNumber("46.123456789012345678901"), NormalNumber("46.123456789012345678902"));
}

TEST(NormalValueTest, OtherTextsStayAsTheyAre) {
    for (const char* text : {"", ".", "1.5x", "1,5", "e5", "1e", "1e--5", "nan", "1e99999999999999999999"})
        EXPECT_EQ(NormalNumber(text), text);
}

TEST(NormalValueTest, EqualInstantsAreOneText) {
    const std::string noon = NormalTime("2024-05-01T12:00:00Z");
    for (const char* text : {"2024-05-01T12:00:00.000Z", "2024-05-01T14:00:00+02:00", "2024-05-01T12:00:00"})
        EXPECT_EQ(NormalTime(text), noon) << text;
    EXPECT_NE(NormalTime("2024-05-01T12:00:00.0001Z"), noon);
    EXPECT_NE(NormalTime("2024-05-01T12:00:01Z"), noon);
    EXPECT_EQ(NormalTime("yesterday"), "yesterday");
}

} // namespace
