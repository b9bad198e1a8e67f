// SPDX-License-Identifier: MIT
#include <vexagpx/output/JsonWriter.h>

#include "support/Tool.h"

#include <cstdlib>
#include <functional>
#include <limits>

#include <fcntl.h>

namespace {

using namespace vexagpx;

std::string JsonOf(const std::function<void(JsonWriter&)>& write) {
    const cli::Folder folder;
    const std::string path = folder.Write("out", "");
    Output out(::open(path.c_str(), O_WRONLY));
    JsonWriter json(out);
    write(json);
    out.Close();
    return cli::ReadFile(path);
}

TEST(JsonWriterTest, CommasAreBetweenMembersAndElementsOnly) {
    EXPECT_EQ(JsonOf([](JsonWriter& json) {
                  json.BeginObject();
                  json.Key("a");
                  json.BeginArray();
                  json.BeginObject();
                  json.EndObject();
                  json.Number(std::int32_t{-1});
                  json.BeginArray();
                  json.EndArray();
                  json.EndArray();
                  json.Key("b");
                  json.String(icu::UnicodeString(u"x"));
                  json.EndObject();
              }),
              R"({"a":[{},-1,[]],"b":"x"})");
}

TEST(JsonWriterTest, AnyTextMayBeAName) {
    EXPECT_EQ(JsonOf([](JsonWriter& json) {
                  json.BeginObject();
                  json.AnyKey("{urn:\"\\}a");
                  json.Bool(true);
                  json.AnyKey("\xC2\x9B\xFF");
                  json.Bool(false);
                  json.EndObject();
              }),
              R"({"{urn:\"\\}a":true,"\u009b)"
              "\xEF\xBF\xBD\":false}");
}

TEST(JsonWriterTest, IntegersHave64Bits) {
    EXPECT_EQ(JsonOf([](JsonWriter& json) {
                  json.BeginArray();
                  json.Number(std::numeric_limits<std::int64_t>::min());
                  json.Number(std::numeric_limits<std::uint64_t>::max());
                  json.EndArray();
              }),
              "[-9223372036854775808,18446744073709551615]");
}

TEST(JsonWriterTest, DoublesTakeTheirShortestForm) {
    const std::vector<std::pair<double, std::string>> rows = {
        {0.0, "0"},
        {-0.0, "-0"},
        {45.0, "45"},
        {0.1, "0.1"},
        {-122.25, "-122.25"},
        {1.0 / 3.0, "0.3333333333333333"},
        {179.9999998807907, "179.9999998807907"},
        {1232014830500.0, "1232014830500"},
        {1232019000000.0, "1.232019e+12"},
        {1e5, "1e+05"},
        {std::numeric_limits<double>::max(), "1.7976931348623157e+308"},
        {std::numeric_limits<double>::denorm_min(), "5e-324"},
        {std::numeric_limits<double>::quiet_NaN(), "\"NaN\""},
        {std::numeric_limits<double>::infinity(), "\"Infinity\""},
        {-std::numeric_limits<double>::infinity(), "\"-Infinity\""},
    };
    for (const auto& [number, expected] : rows)
        EXPECT_EQ(JsonOf([value = number](JsonWriter& json) { json.Number(value); }), expected);
}

TEST(JsonWriterTest, DoublesReadBackTheSame) {
    volatile double stored = 1.0; // in no register, which may have more digits
    for (int i = 0; i < 200; ++i) {
        stored = stored * -1.9437218 + 0.1;
        const double number = stored;
        EXPECT_EQ(std::strtod(JsonOf([number](JsonWriter& json) { json.Number(number); }).c_str(), nullptr),
                  number);
    }
}

TEST(JsonWriterTest, AnUnpairedSurrogateBecomesTheReplacementCharacter) {
    const char16_t units[] = {u'a', 0xD800, u'b', 0};
    EXPECT_EQ(JsonOf([&](JsonWriter& json) { json.String(icu::UnicodeString(units)); }), "\"a\xEF\xBF\xBD"
                                                                                         "b\"");
}

TEST(JsonWriterTest, TerminalControlsAreEscapedAndNothingElse) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"plain ~", "plain ~"},
        {"\x7F", "\\u007f"},
        {"\xC2\x80\xC2\x85\xC2\x9B\xC2\x9F", "\\u0080\\u0085\\u009b\\u009f"},
        {"\xC2\xA0\xC3\xA9", "\xC2\xA0\xC3\xA9"},
        {"\xD8\x9C", "\\u061c"},
        {"\xE2\x80\x8E\xE2\x80\x8F", "\\u200e\\u200f"},
        {"\xE2\x80\xAA\xE2\x80\xAB\xE2\x80\xAC\xE2\x80\xAD\xE2\x80\xAE",
         "\\u202a\\u202b\\u202c\\u202d\\u202e"},
        {"\xE2\x81\xA6\xE2\x81\xA7\xE2\x81\xA8\xE2\x81\xA9", "\\u2066\\u2067\\u2068\\u2069"},
        {"\xE2\x80\xA8\xE2\x80\xA9", "\\u2028\\u2029"},
        {"\xEF\xBB\xBF", "\\ufeff"},
        {"\xF3\xA0\x81\x81", "\\udb40\\udc41"},
        {"\x1B[31m\n\"\\", "\\u001b[31m\\n\\\"\\\\"},
        {"日本 👩\xE2\x80\x8D🚀", "日本 👩\xE2\x80\x8D🚀"},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(JsonOf([text = text](JsonWriter& json) { json.String(std::string_view(text)); }),
                  '"' + expected + '"');
}

} // namespace
