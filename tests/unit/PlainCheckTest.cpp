// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/PlainCheck.h>

#include "support/WindowOnBytes.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace vexaTransferLib::reader {
namespace {

using testing_support::WindowOn;

std::string Times(std::uint64_t count, const std::string& text) {
    std::string times;
    while (count-- != 0)
        times += text;
    return times;
}

std::vector<LongElement> LongElementsOf(const std::string& bytes) {
    ByteWindow window = WindowOn(bytes);
    std::vector<LongElement> longElements;
    EXPECT_EQ(CheckPlain(window, std::nullopt, longElements), NotPlain::kIsPlain);
    return longElements;
}

TEST(PlainCheckTest, CountsTheChildrenOfALongElement) {
    const std::vector<LongElement> found =
        LongElementsOf("<a>" + Times(kLongElementChildren, "<b c='1'><d e='2'/></b>") + "</a>");
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].begin, 0u);
    EXPECT_EQ(found[0].children, kLongElementChildren);
}

TEST(PlainCheckTest, LeavesOutAnElementWithFewerChildren) {
    EXPECT_TRUE(LongElementsOf("<a>" + Times(kLongElementChildren - 1, "<b c='1'/>") + "</a>").empty());
}

// They are too short to be points, of which each takes much more memory than they do.
TEST(PlainCheckTest, LeavesOutChildrenWithoutAttributes) {
    EXPECT_TRUE(LongElementsOf("<a>" + Times(2 * kLongElementChildren, "<b>1</b>") + "</a>").empty());
}

TEST(PlainCheckTest, GivesLongElementsInTheOrderOfTheFile) {
    const std::string inner = "<i>" + Times(kLongElementChildren, "<b c='1'/>") + "</i>";
    const std::string start = "<r><o>";
    const std::vector<LongElement> found = LongElementsOf(
        start + inner + Times(2 * kLongElementChildren, "<b c='1'/>") + "</o>" + inner + "</r>");
    ASSERT_EQ(found.size(), 3u);
    EXPECT_EQ(found[0].begin, 3u);
    EXPECT_EQ(found[0].children, 2 * kLongElementChildren);
    EXPECT_EQ(found[1].begin, start.size());
    EXPECT_EQ(found[1].children, kLongElementChildren);
    EXPECT_GT(found[2].begin, found[1].begin);
}

TEST(PlainCheckTest, SaysWhyAFileIsNotPlain) {
    ByteWindow window = WindowOn("<!DOCTYPE a><a/>");
    std::vector<LongElement> longElements;
    EXPECT_EQ(CheckPlain(window, std::nullopt, longElements), NotPlain::kDocumentType);
}

} // namespace
} // namespace vexaTransferLib::reader
