// SPDX-License-Identifier: MIT
#include <vexaTransferLib/text/ElementNames.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace vexaTransferLib::text {
namespace {

TEST(ElementNamesTest, ReadersAndWritersSeeOneName) {
    constexpr ElementName kColor("tarvik:color");
    EXPECT_EQ(std::u16string(kColor), u"color");
    EXPECT_EQ(std::string_view(kColor), "tarvik:color");
}

TEST(ElementNamesTest, ANameWithoutAPrefixIsTheSameForBoth) {
    EXPECT_EQ(std::u16string(gpx::kEle), u"ele");
    EXPECT_EQ(std::string_view(gpx::kEle), "ele");
}

TEST(ElementNamesTest, TheLongestNameIsWhole) {
    EXPECT_EQ(std::u16string(tarvik::kGeocachesymbolcount), u"geocachesymbolcount");
}

} // namespace
} // namespace vexaTransferLib::text
