// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/PlainDeclaration.h>

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace vexaTransferLib::reader {
namespace {

TEST(PlainDeclarationTest, IsSkippedInItsUsualForms) {
    for (const std::string declaration :
         {"<?xml version=\"1.0\"?>", "<?xml version='1.0'?>", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>",
          "<?xml version='1.0' encoding='utf-8'?>", "<?xml version='1.0' encoding='Utf-8' standalone='yes'?>",
          "<?xml version='1.0' standalone='no'?>", "<?xml\tversion = \"1.0\"  encoding =\t'UTF-8' ?>",
          "\xEF\xBB\xBF<?xml version='1.0'?>", "\xEF\xBB\xBF"}) {
        SCOPED_TRACE(declaration);
        EXPECT_EQ(PlainDeclarationLength(declaration), declaration.size());
        EXPECT_EQ(PlainDeclarationLength(declaration + "\n<gpx/>"), declaration.size());
    }
}

TEST(PlainDeclarationTest, MayBeMissing) {
    for (const char* start :
         {"", "<", "<gpx/>", "\n<?xml version='1.0'?>", "<?xml-stylesheet href='a'?>", "<?xmlx?>"})
        EXPECT_EQ(PlainDeclarationLength(start), 0u) << start;
}

TEST(PlainDeclarationTest, IsRefusedInAnyOtherForm) {
    for (const char* start : {"<?xml version='1.1'?>",
                              "<?xml version='1.00'?>",
                              "<?xml version='1.0'",
                              "<?xml version='1.0>",
                              "<?xml encoding='UTF-8'?>",
                              "<?xml ?>",
                              "<?xml\nversion='1.0'?>",
                              "<?xml version='1.0'\r\nencoding='UTF-8'?>",
                              "<?xml version='1.0'\n?>",
                              "<?xml version='1.0' encoding='ISO-8859-1'?>",
                              "<?xml version='1.0' encoding='UTF8'?>",
                              "<?xml version='1.0' encoding='UTF-16'?>",
                              "<?xml version='1.0' encoding=''?>",
                              "<?xml version='1.0' encoding=UTF-8?>",
                              "<?xml version='1.0'encoding='UTF-8'?>",
                              "<?xml version='1.0' encoding='UTF-8'standalone='yes'?>",
                              "<?xml version='1.0' standalone='maybe'?>",
                              "<?xml version='1.0' standalone='yes' encoding='UTF-8'?>",
                              "<?xml version='1.0' other='x'?>",
                              "<?xml version='1.0' ? >",
                              "<?xml version=\"1.0'?>",
                              "<?xml versionx='1.0'?>",
                              "<?xml version '1.0'?>"})
        EXPECT_EQ(PlainDeclarationLength(start), std::nullopt) << start;
}

TEST(PlainDeclarationTest, IsRefusedWhenItIsTooLong) {
    const std::string blanks(kLongestPlainDeclaration - std::string("<?xml version='1.0'?>").size(), ' ');
    EXPECT_EQ(PlainDeclarationLength("<?xml version='1.0'" + blanks + "?><gpx/>"), kLongestPlainDeclaration);
    EXPECT_EQ(PlainDeclarationLength("<?xml version='1.0' " + blanks + "?><gpx/>"), std::nullopt);
}

} // namespace
} // namespace vexaTransferLib::reader
