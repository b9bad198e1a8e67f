// SPDX-License-Identifier: MIT
#include <vexaTransferLib/zip/Zip64Directory.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace vexaTransferLib::zip {
namespace {

constexpr std::uint64_t kInZip64 = 0xFFFFFFFF;

std::string Field(int id, const std::string& content) {
    std::string field = {static_cast<char>(id), '\0', static_cast<char>(content.size()), '\0'};
    return field + content;
}

std::string Number(char low) {
    return low + std::string(7, '\0');
}

TEST(Zip64DirectoryTest, OnlyValuesOfAllOnesAreTakenFromTheField) {
    std::uint64_t size = 5;
    std::uint64_t compressedSize = kInZip64;
    std::uint64_t offset = kInZip64;
    const Zip64Values values{&size, &compressedSize, &offset};
    EXPECT_TRUE(values.IsNeeded());
    EXPECT_TRUE(values.TakeFrom(Field(7, "other") + Field(1, Number(1) + Number(2))));
    EXPECT_EQ(size, 5U);
    EXPECT_EQ(compressedSize, 1U);
    EXPECT_EQ(offset, 2U);
    EXPECT_FALSE(values.IsNeeded());
    EXPECT_TRUE(values.TakeFrom(""));
}

TEST(Zip64DirectoryTest, AMissingValueIsNoticed) {
    const std::string rows[] = {"",
                                Field(7, Number(1)),
                                Field(1, ""),
                                Field(1, "1234567"),
                                std::string("\1\0\x10\0", 4) + Number(1),
                                std::string("\1\0\x08", 3)};
    for (const std::string& extra : rows) {
        std::uint64_t size = kInZip64;
        EXPECT_FALSE((Zip64Values{&size, nullptr, nullptr}.TakeFrom(extra))) << extra.size();
        EXPECT_EQ(size, kInZip64);
    }
}

} // namespace
} // namespace vexaTransferLib::zip
