// SPDX-License-Identifier: MIT
#include <vexagpx/terminal/ShellText.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

TEST(ShellTextTest, QuotesWhereAShellNeedsIt) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"walk.gpx", "walk.gpx"},
        {"/a/b-c_d/1.gpx", "/a/b-c_d/1.gpx"},
        {"höhe 日本.gpx", "'höhe 日本.gpx'"},
        {"höhe.gpx", "höhe.gpx"},
        {"-", "-"},
        {"-x.gpx", "./-x.gpx"},
        {"", "''"},
        {"~/a", "'~/a'"},
        {"a'b", "'a'\\''b'"},
        {"$(x)`y`;z&\"*?[a]#!\\", "'$(x)`y`;z&\"*?[a]#!\\'"},
        {"a\nb'c\\", "$'a\\012b\\'c\\\\'"},
        {"\x1B[2J\x7F", "$'\\033[2J\\177'"},
        {"c1\xC2\x9Bx", "$'c1\\302\\233x'"},
        {"x\xE2\x80\xAEy", "$'x\\342\\200\\256y'"},
        {"no\xFFutf8 \xC3", "$'no\\377utf8 \\303'"},
        {"a\xE2\x80\x8Dz", "a\xE2\x80\x8Dz"},
    };
    for (const auto& [argument, expected] : rows)
        EXPECT_EQ(vexagpx::ShellText(argument), expected);
}

} // namespace
