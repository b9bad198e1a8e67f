// SPDX-License-Identifier: MIT
#include "support/WindowOnBytes.h"

#include <vexaTransferLib/reader/ByteWindow.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace vexaTransferLib::reader {
namespace {

using testing_support::WindowOn;

std::string_view ContentOf(const ByteWindow& window) {
    return {window.Begin(), window.End()};
}

TEST(ByteWindowTest, HoldsAShortFileAtOnce) {
    ByteWindow window = WindowOn("abc");
    EXPECT_EQ(ContentOf(window), "abc");
    EXPECT_TRUE(window.IsWhole());
    EXPECT_FALSE(window.ReadOn(3));
    EXPECT_EQ(ContentOf(window), "abc");
}

TEST(ByteWindowTest, HoldsNothingOfAnEmptyFile) {
    ByteWindow window = WindowOn("");
    EXPECT_EQ(ContentOf(window), "");
    EXPECT_TRUE(window.IsWhole());
}

TEST(ByteWindowTest, HasZerosAfterItsLastByte) {
    ByteWindow window = WindowOn("abcdefgh", 5);
    const auto hasZeros = [&] {
        return std::all_of(window.End(), window.End() + ByteWindow::kPadding,
                           [](char byte) { return byte == '\0'; });
    };
    EXPECT_TRUE(hasZeros());
    while (window.ReadOn(window.PlaceOf(window.End())))
        EXPECT_TRUE(hasZeros());
}

TEST(ByteWindowTest, KeepsItsBytesFromAPlace) {
    ByteWindow window = WindowOn("0123456789", 4);
    EXPECT_EQ(ContentOf(window), "0123");
    EXPECT_FALSE(window.IsWhole());
    EXPECT_TRUE(window.ReadOn(2));
    EXPECT_EQ(ContentOf(window), "2345");
    EXPECT_EQ(window.PlaceOf(window.Begin()), 2u);
    EXPECT_EQ(*window.At(4), '4');
    EXPECT_TRUE(window.ReadOn(6));
    EXPECT_EQ(ContentOf(window), "6789");
}

TEST(ByteWindowTest, GrowsWhenTooMuchIsKept) {
    ByteWindow window = WindowOn("0123456789", 4);
    EXPECT_TRUE(window.ReadOn(1));
    EXPECT_EQ(ContentOf(window), "12345678");
    EXPECT_TRUE(window.ReadOn(1));
    EXPECT_EQ(ContentOf(window), "123456789");
    EXPECT_FALSE(window.ReadOn(1));
    EXPECT_FALSE(window.IsWhole());
}

TEST(ByteWindowTest, ReadsALongFileToItsEnd) {
    std::string file(100000, '\0');
    for (std::size_t i = 0; i < file.size(); ++i)
        file[i] = static_cast<char>('a' + i % 26);
    ByteWindow window = WindowOn(file, 1000);
    std::string read(ContentOf(window));
    for (std::uint64_t next = read.size(); window.ReadOn(next - 10); next = read.size())
        read.append(window.At(next), window.End());
    EXPECT_EQ(read, file);
}

TEST(ByteWindowTest, StartsAgain) {
    const std::string file = "one\ntwo\nthree";
    ByteWindow window = WindowOn(file, 4);
    window.ReadOn(4);
    EXPECT_EQ(window.Locate(8).line, 3u);
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(file.data()), file.size(),
                                            "again");
    window.Restart(std::unique_ptr<xercesc::BinInputStream>(source.makeStream()));
    EXPECT_EQ(window.PlaceOf(window.Begin()), 0u);
    EXPECT_EQ(window.Locate(3).line, 1u);
}

TEST(ByteWindowTest, StartsAgainWithWhatItHolds) {
    ByteWindow window = WindowOn("one\ntwo");
    EXPECT_EQ(window.Locate(5).line, 2u);
    window.Restart();
    EXPECT_EQ(ContentOf(window), "one\ntwo");
    EXPECT_EQ(window.Locate(2).line, 1u);
}

} // namespace
} // namespace vexaTransferLib::reader
