// SPDX-License-Identifier: MIT
#include <vexagpx/input/UnpackedBytes.h>

#include <vexagpx/input/FileKind.h>

#include "support/Tool.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>

namespace {

using testing::HasSubstr;
using vexagpx::ArchiveLimits;
using vexagpx::kHeadSize;
using vexagpx::PeekedBytes;
using vexagpx::UnpackedBytes;

/// Gives out a text in pieces of at most so many bytes. Nothing may be read after its end was told.
class Source {
public:
    Source(std::string bytes, std::size_t most) : bytes_(std::move(bytes)), most_(most) {}

    std::size_t operator()(char* buffer, std::size_t size) {
        EXPECT_FALSE(hasEnded_);
        const std::size_t count = bytes_.copy(buffer, std::min(size, most_), taken_);
        taken_ += count;
        hasEnded_ = count == 0;
        return count;
    }

private:
    std::string bytes_;
    std::size_t most_;
    std::size_t taken_ = 0;
    bool hasEnded_ = false;
};

std::string All(PeekedBytes& bytes) {
    std::string all;
    std::array<char, 7> buffer{};
    while (const std::size_t count = bytes.Read(buffer.data(), buffer.size()))
        all.append(buffer.data(), count);
    EXPECT_EQ(bytes.Read(buffer.data(), buffer.size()), 0U);
    return all;
}

std::string Gzip(const std::string& text) {
    z_stream stream{};
    EXPECT_EQ(deflateInit2(&stream, 9, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY), Z_OK);
    std::string packed(text.size() + 100, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

TEST(UnpackedBytesTest, TheHeadIsSeenAndReadAgain) {
    for (const std::size_t size : {std::size_t{0}, std::size_t{5}, kHeadSize, kHeadSize + 5}) {
        std::string text;
        for (std::size_t i = 0; i < size; ++i)
            text += static_cast<char>('a' + i % 26);
        for (const std::size_t most : {std::size_t{1}, std::size_t{100000}}) {
            PeekedBytes bytes(Source(text, most));
            EXPECT_EQ(bytes.Head(), text.substr(0, kHeadSize));
            EXPECT_EQ(bytes.Head(), text.substr(0, kHeadSize));
            EXPECT_EQ(All(bytes), text);
        }
    }
}

TEST(UnpackedBytesTest, WithoutALookTheBytesAreReadAsTheyCome) {
    PeekedBytes bytes(Source("abcdefghij", 3));
    EXPECT_EQ(All(bytes), "abcdefghij");
}

TEST(UnpackedBytesTest, OnlyAGzipFileIsUnpacked) {
    PeekedBytes plain(Source("<gpx/>", 2));
    UnpackedBytes same(plain, ArchiveLimits(), "a.gpx");
    EXPECT_FALSE(same.IsUnpacked());
    EXPECT_EQ(All(same.Get()), "<gpx/>");

    PeekedBytes packed(Source(Gzip("<gpx/>"), 2));
    UnpackedBytes unpacked(packed, ArchiveLimits(), "a.gpx.gz");
    EXPECT_TRUE(unpacked.IsUnpacked());
    EXPECT_EQ(unpacked.Get().Head(), "<gpx/>");
    EXPECT_EQ(All(unpacked.Get()), "<gpx/>");
}

TEST(UnpackedBytesTest, ADamagedGzipFileIsNamed) {
    PeekedBytes packed(Source(Gzip("<gpx/>").substr(0, 15), 100));
    UnpackedBytes unpacked(packed, ArchiveLimits(), "a.gpx.gz");
    try {
        All(unpacked.Get());
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_THAT(error.what(), HasSubstr("a.gpx.gz"));
    }
}

} // namespace
