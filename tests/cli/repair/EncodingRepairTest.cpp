// SPDX-License-Identifier: MIT
#include <vexagpx/repair/EncodingRepair.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using vexagpx::RepairedEncoding;
using vexagpx::RepairEncoding;

std::string Declared(const std::string& encoding, const std::string& content) {
    return "<?xml version='1.0' encoding='" + encoding + "'?>" + content;
}

// Each character as two bytes.
std::string Wide(const std::string& text, bool isBigEndian) {
    std::string wide;
    for (const char c : text)
        wide += isBigEndian ? std::string{'\0', c} : std::string{c, '\0'};
    return wide;
}

TEST(EncodingRepairTest, LeavesUtf8AsItIs) {
    for (const std::string& text : {Declared("utf-8", "<a>\u00E4</a>"), Declared("ISO-8859-1", "<a/>"),
                                    std::string("<a>\u00E4</a>"), std::string()}) {
        const RepairedEncoding result = RepairEncoding(text);
        EXPECT_EQ(result.text, text);
        EXPECT_THAT(result.told, IsEmpty());
        EXPECT_FALSE(result.wasWrong);
    }
}

TEST(EncodingRepairTest, EveryHighByteHasItsCharacter) {
    const RepairedEncoding result = RepairEncoding("<a>\x80\xFF\xE4 \xC3\xA4</a>");
    EXPECT_EQ(result.text, "<a>\u20AC\u00FF\u00E4 \u00E4</a>");
}

TEST(EncodingRepairTest, CorrectsADeclarationThatDoesNotHold) {
    for (const char* encoding : {"UTF-16", "ISO-8859-1", "windows-1252", "nonsense"}) {
        const RepairedEncoding result = RepairEncoding(Declared(encoding, "<a>\u00E4</a>"));
        EXPECT_EQ(result.text, Declared("UTF-8", "<a>\u00E4</a>"));
        EXPECT_THAT(result.told,
                    ElementsAre("the declared encoding " + std::string(encoding) + " became UTF-8"));
        EXPECT_TRUE(result.wasWrong);
    }
    EXPECT_TRUE(RepairEncoding(Declared("UTF-16", "<a/>")).wasWrong);
}

TEST(EncodingRepairTest, ConvertsADeclaredEncodingThatHolds) {
    const RepairedEncoding result = RepairEncoding(Declared("ISO-8859-2", "<a>\xE8</a>"));
    EXPECT_EQ(result.text, Declared("UTF-8", "<a>\u010D</a>"));
    EXPECT_FALSE(result.wasWrong);
    EXPECT_THAT(result.told, ElementsAre("it is written in UTF-8, not in ISO-8859-2",
                                         "the declared encoding ISO-8859-2 became UTF-8"));
}

TEST(EncodingRepairTest, TakesBytesThatAreNoUtf8AsWindows1252) {
    const RepairedEncoding result = RepairEncoding("<a>\xE4 \x80 \u00E4</a>");
    EXPECT_EQ(result.text, "<a>\u00E4 \u20AC \u00E4</a>");
    EXPECT_TRUE(result.wasWrong);
    EXPECT_THAT(result.told, ElementsAre("bytes that are no UTF-8 are read as windows-1252"));
}

TEST(EncodingRepairTest, ConvertsUtf16) {
    for (const bool isBigEndian : {false, true}) {
        EXPECT_EQ(RepairEncoding(Wide("<a/>", isBigEndian)).text, "<a/>");
        const RepairedEncoding result = RepairEncoding(Wide(Declared("UTF-16", "<a/>"), isBigEndian));
        EXPECT_EQ(result.text, Declared("UTF-8", "<a/>"));
        EXPECT_FALSE(result.wasWrong);
    }
}

} // namespace
