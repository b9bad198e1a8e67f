// SPDX-License-Identifier: MIT
#include <vexaTransferLib/saving/TextEdits.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::saving {
namespace {

TEST(TextEditsTest, WithoutEditsTheTextIsTheSame) {
    TextEdits edits;
    EXPECT_TRUE(edits.IsEmpty());
    EXPECT_EQ(edits.Apply("abc"), "abc");
    EXPECT_EQ(edits.Apply(""), "");
}

TEST(TextEditsTest, PartsAreReplacedInTheOrderOfTheText) {
    TextEdits edits;
    edits.Replace(4, 5, "E");
    edits.Remove(1, 3);
    edits.Insert(0, "<");
    edits.Insert(6, ">");
    EXPECT_FALSE(edits.IsEmpty());
    EXPECT_EQ(edits.Apply("abcdef"), "<adEf>");
}

TEST(TextEditsTest, WhatIsInsertedAtOnePlaceKeepsItsOrderAndComesBeforeAReplacement) {
    TextEdits edits;
    edits.Replace(1, 2, "B");
    edits.Insert(1, "1");
    edits.Insert(1, "2");
    edits.Insert(2, "3");
    EXPECT_EQ(edits.Apply("abc"), "a12B3c");
}

TEST(TextEditsTest, APartOfTheTextIsChangedByItsOwnEditsOnly) {
    TextEdits edits;
    edits.Replace(0, 1, "A");
    edits.Replace(2, 3, "C");
    edits.Replace(5, 6, "F");
    std::vector<std::string> pieces;
    edits.Apply("abcdef", 1, 5, [&](std::string_view piece) { pieces.emplace_back(piece); });
    EXPECT_EQ(pieces, (std::vector<std::string>{"b", "C", "de"}));
}

TEST(TextEditsTest, TakesTheEditsOfAnotherOne) {
    TextEdits edits;
    edits.Insert(1, "1");
    TextEdits other;
    other.Insert(1, "2");
    other.Insert(0, "0");
    edits.Append(std::move(other));
    EXPECT_EQ(edits.Apply("ab"), "0a12b");
}

TEST(TextEditsTest, AMillionEditsAreApplied) {
    constexpr std::size_t kCount = 1'000'000;
    TextEdits edits;
    for (std::size_t i = kCount; i != 0; --i)
        edits.Replace(i - 1, i, "bb");
    EXPECT_EQ(edits.Apply(std::string(kCount, 'a')), std::string(2 * kCount, 'b'));
}

} // namespace
} // namespace vexaTransferLib::saving
