// SPDX-License-Identifier: MIT
#include <vexaTransferLib/model/SourceText.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vexaTransferLib {
namespace {

using Scope = SourceText::Scope;

SourceText::Pointer Source(std::vector<Scope> scopes) {
    SourceBytes text;
    text.Append(std::string(100, ' '));
    text.Finish(SourceText::kPadding);
    return SourceText::Make(std::move(text), 0, std::move(scopes));
}

TEST(SourceTextTest, FindsTheDeclarationOfTheInnermostElement) {
    const SourceText::Pointer source =
        Source({{0, 90, {{"", "outer"}, {"p", "prefixed"}}}, {10, 20, {{"", "inner"}}}});
    EXPECT_EQ(source->FindNamespace("", 0), "outer");
    EXPECT_EQ(source->FindNamespace("", 10), "inner");
    EXPECT_EQ(source->FindNamespace("", 19), "inner");
    EXPECT_EQ(source->FindNamespace("", 20), "outer");
    EXPECT_EQ(source->FindNamespace("p", 15), "prefixed");
    EXPECT_EQ(source->FindNamespace("", 90), "");
    EXPECT_EQ(source->FindNamespace("p", 95), std::nullopt);
}

TEST(SourceTextTest, LooksNotIntoElementsThatHaveEnded) {
    const SourceText::Pointer source = Source(
        {{5, 80, {{"a", "1"}}}, {10, 20, {{"b", "2"}}}, {12, 18, {{"c", "3"}}}, {30, 40, {{"b", "4"}}}});
    EXPECT_EQ(source->FindNamespace("b", 19), "2");
    EXPECT_EQ(source->FindNamespace("c", 18), std::nullopt);
    EXPECT_EQ(source->FindNamespace("b", 25), std::nullopt);
    EXPECT_EQ(source->FindNamespace("a", 25), "1");
    EXPECT_EQ(source->FindNamespace("b", 35), "4");
    EXPECT_EQ(source->FindNamespace("a", 35), "1");
}

TEST(SourceTextTest, KnowsThePrefixOfXml) {
    EXPECT_EQ(Source({})->FindNamespace("xml", 0), "http://www.w3.org/XML/1998/namespace");
    EXPECT_EQ(Source({})->FindNamespace("", 0), "");
    EXPECT_EQ(Source({})->FindNamespace("p", 0), std::nullopt);
}

// With a look at each scope around a place this would not end.
TEST(SourceTextTest, ScopesAroundAPlaceCostNothing) {
    constexpr std::uint64_t kLevels = 1'000'000;
    SourceBytes bytes;
    std::vector<SourceText::Scope> scopes;
    for (std::uint64_t i = 0; i < kLevels; ++i) {
        bytes.Append("<>");
        scopes.push_back({i, 2 * kLevels - i, {{i == 0 ? "outer" : "inner", std::to_string(i)}}});
    }
    bytes.Finish(SourceText::kPadding);
    const SourceText::Pointer source = SourceText::Make(std::move(bytes), 0, std::move(scopes));
    for (std::uint64_t i = 1; i < kLevels; ++i) {
        ASSERT_EQ(source->FindNamespace("outer", i), "0");
        ASSERT_EQ(source->FindNamespace("inner", i), std::to_string(i));
        ASSERT_EQ(source->FindNamespace("none", i), std::nullopt);
    }
    EXPECT_EQ(source->FindNamespace("inner", 2 * kLevels - 2), "1");
    EXPECT_EQ(source->FindNamespace("inner", 2 * kLevels - 1), std::nullopt);
}

TEST(SourceTextTest, KnowsTheEndOfLongElementsWithoutReadingThem) {
    SourceBytes bytes;
    bytes.Append("<a><b>1</b><c>2</c></a>");
    bytes.Finish(SourceText::kPadding);
    // The remembered end of "b" is after "c", which its text does not say.
    const SourceText::Pointer source = SourceText::Make(std::move(bytes), 0, {}, {{3, 19}, {0, 23}});
    EXPECT_EQ(source->PlaceOf(source->EndOf(source->At(0))), 23u);
    EXPECT_EQ(source->PlaceOf(source->EndOf(source->At(3))), 19u);
    EXPECT_EQ(source->PlaceOf(source->EndOf(source->At(11))), 19u);
}

TEST(SourceTextTest, LivesAsLongAsOneOwner) {
    SourceText::Pointer first = Source({});
    SourceText::Pointer second = first;
    first.reset();
    EXPECT_EQ(second->Text().size(), 100u);
}

} // namespace
} // namespace vexaTransferLib
