// SPDX-License-Identifier: MIT
#include <vexagpx/input/XmlRoot.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using std::string_literals::operator""s;

struct Row {
    std::string head;
    std::string name; ///< empty for none
    std::uint64_t line = 1;
    std::uint64_t column = 1;
};

TEST(XmlRootTest, TheRootIsFoundWithItsPlace) {
    const std::vector<Row> rows = {
        {"<gpx>", "gpx"},
        {"<gpx", "gpx"},
        {"<a:gpx/>", "gpx"},
        {"<gpx\n version='1'>", "gpx"},
        {" \r\n\t<gpx>", "gpx", 2, 2},
        {"<?xml version='1.0'?><gpx>", "gpx", 1, 22},
        {"<?xml version='1.0'?>\n<!-- > -->\n\n  <gpx>", "gpx", 4, 3},
        {"<!DOCTYPE gpx SYSTEM 'x'>\n<gpx>", "gpx", 2, 1},
        {"<!doctype HTML>", "html"},
        {"<HtMl>", "html"},
        {"\xEF\xBB\xBF<gpx>", "gpx"},
        {"\xFF\xFE \0\n\0<\0g\0>\0"s, "g", 2, 1},
        {"\0<\0g\0>"s, "g"},
        {"<\0g\0>\0"s, "g"},
        {"<\0\xE9\x01>\0"s, "_"},
        {"", ""},
        {"   ", ""},
        {"x<gpx>", ""},
        {"<!-- <gpx>", ""},
        {"<?xml <gpx", ""},
    };
    for (const Row& row : rows) {
        const auto root = vexagpx::FindXmlRoot(row.head);
        ASSERT_EQ(root.has_value(), !row.name.empty()) << row.head;
        if (!root)
            continue;
        EXPECT_EQ(root->name, row.name) << row.head;
        EXPECT_EQ(root->line, row.line) << row.head;
        EXPECT_EQ(root->column, row.column) << row.head;
    }
}

} // namespace
