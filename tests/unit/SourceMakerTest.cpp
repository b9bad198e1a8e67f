// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/SourceMaker.h>

#include "support/SourceOf.h"

#include <gtest/gtest.h>

#include <xercesc/util/BinMemInputStream.hpp>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>

namespace vexaTransferLib::reader {
namespace {

using testing_support::SourceOf;

SourceBytes BytesOf(const std::string& text) {
    SourceBytes bytes;
    bytes.Append(text);
    bytes.Finish(SourceText::kPadding);
    return bytes;
}

TEST(SourceMakerTest, KeepsTheBytesOfAPlainFile) {
    const std::string text = "\xEF\xBB\xBF<?xml version='1.0'?>\n<a/>\n";
    const SourceText::Pointer source = SourceOf(text);
    ASSERT_TRUE(source);
    EXPECT_EQ(source->Text(), text);
    EXPECT_EQ(source->RootPlace(), text.find("<a"));
}

TEST(SourceMakerTest, KnowsWhichNamespacesAreDeclaredWhere) {
    const std::string text =
        "<a xmlns='1' xmlns:p='2'><b xmlns:p='3'><c/></b><d/><e xmlns:q='4' xmlns:r='5'/><f/></a>";
    const SourceText::Pointer source = SourceOf(text);
    ASSERT_TRUE(source);
    const auto find = [&](const char* prefix, const char* at) {
        return source->FindNamespace(prefix, text.find(at));
    };
    EXPECT_EQ(find("p", "<a"), "2");
    EXPECT_EQ(find("p", "<b"), "3");
    EXPECT_EQ(find("p", "<c"), "3");
    EXPECT_EQ(find("", "<c"), "1");
    EXPECT_EQ(find("p", "<d"), "2");
    EXPECT_EQ(find("q", "<e"), "4");
    EXPECT_EQ(find("r", "<e"), "5");
    EXPECT_EQ(find("q", "<f"), std::nullopt);
}

TEST(SourceMakerTest, RemembersWhereLongElementsEnd) {
    const std::string shortest(SourceText::kLongSpan - 7, 'x');
    const std::string text = "<a><b>" + shortest + "</b><c>" + shortest.substr(1) + "</c><d/></a>";
    const SourceText::Pointer source = SourceOf(text);
    ASSERT_TRUE(source);
    ASSERT_EQ(source->LongSpans().size(), 2u);
    EXPECT_EQ(source->LongSpans()[0].begin, 0u);
    EXPECT_EQ(source->LongSpans()[0].end, text.size());
    EXPECT_EQ(source->LongSpans()[1].begin, 3u);
    EXPECT_EQ(source->LongSpans()[1].end, text.find("<c>"));
}

TEST(SourceMakerTest, LeavesTheBytesOfAnyOtherFile) {
    for (const std::string text : {"<a>", "<!DOCTYPE a><a/>", "<\xC3\xA9/>"}) {
        SourceBytes bytes = BytesOf(text);
        std::vector<LongElement> longElements;
        EXPECT_FALSE(MakeSource(bytes, std::nullopt, longElements)) << text;
        EXPECT_EQ(bytes.View(), text);
    }
}

TEST(SourceMakerTest, HoldsTheLimitsOfAnUntrustedFile) {
    GpxInputLimits limits;
    limits.elementDepth = 1;
    SourceBytes bytes = BytesOf("<a><b/></a>");
    std::vector<LongElement> longElements;
    EXPECT_FALSE(MakeSource(bytes, limits, longElements));
}

std::string ReadWith(const std::string& text, std::uint64_t expectedSize) {
    xercesc::BinMemInputStream stream(reinterpret_cast<const XMLByte*>(text.data()), text.size(),
                                      xercesc::BinMemInputStream::BufOpt_Reference);
    const SourceBytes bytes = ReadAll(stream, expectedSize);
    EXPECT_EQ(std::string(bytes.Data() + bytes.Size(), SourceText::kPadding),
              std::string(SourceText::kPadding, '\0'));
    return std::string(bytes.View());
}

TEST(SourceMakerTest, ReadsAllBytesWhateverSizeWasExpected) {
    const std::size_t lengths[] = {0, 1, 65535, 65536, 65537, 200000, 5000000};
    for (const std::size_t length : lengths) {
        const std::string text(length, 'x');
        for (const std::uint64_t expected : lengths)
            EXPECT_TRUE(ReadWith(text, expected) == text) << length << ", expected " << expected;
    }
}

TEST(SourceMakerTest, DoesNotBelieveASizeThatNoFileHas) {
    for (const std::uint64_t expected : {std::numeric_limits<std::uint64_t>::max(), std::uint64_t{1} << 63})
        EXPECT_EQ(ReadWith("x", expected), "x") << expected;
}

} // namespace
} // namespace vexaTransferLib::reader
