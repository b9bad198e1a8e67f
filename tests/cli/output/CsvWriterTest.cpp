// SPDX-License-Identifier: MIT
#include <vexagpx/output/CsvWriter.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>

namespace {

using vexagpx::CsvWriter;
using vexagpx::Output;

std::string CsvOf(const std::function<void(CsvWriter&)>& write) {
    std::string bytes;
    Output out([&bytes](std::string_view piece) { bytes += piece; });
    CsvWriter csv(out);
    write(csv);
    out.Flush();
    return bytes;
}

std::string CellOf(std::string_view text) {
    return CsvOf([text](CsvWriter& csv) {
        csv.Text("x");
        csv.Text(text);
    });
}

TEST(CsvWriterTest, CommasAreBetweenCellsAndRowsEndInCrLf) {
    EXPECT_EQ(CsvOf([](CsvWriter& csv) {
                  csv.Text("name");
                  csv.Text("height");
                  csv.EndRow();
                  csv.Text(u"Käse");
                  csv.Number(-35.25);
                  csv.EndRow();
                  csv.Empty();
                  csv.Empty();
                  csv.EndRow();
              }),
              "name,height\r\nK\xC3\xA4se,-35.25\r\n,\r\n");
}

TEST(CsvWriterTest, CellsAreQuotedWhereTheyMustBe) {
    struct Row {
        std::string_view text;
        std::string_view cell;
    };
    const Row rows[] = {
        {"plain", "plain"},   {"a b", "a b"},       {"", ""},
        {"a,b", "\"a,b\""},   {"\"", "\"\"\"\""},   {"say \"a\" twice", "\"say \"\"a\"\" twice\""},
        {"a\nb", "\"a\nb\""}, {"a\rb", "\"a\rb\""}, {" a", "\" a\""},
        {"a\t", "\"a\t\""},   {"'a'", "'a'"},       {"a;b", "a;b"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(CellOf(row.text), "x," + std::string(row.cell)) << row.text;
}

TEST(CsvWriterTest, NumbersTimesAndTruthValuesNeedNoQuotes) {
    EXPECT_EQ(CsvOf([](CsvWriter& csv) {
                  csv.Number(std::numeric_limits<std::int64_t>::min());
                  csv.Number(std::numeric_limits<std::uint64_t>::max());
                  csv.Bool(true);
                  csv.Bool(false);
                  csv.Time(1232014830250.0);
                  csv.Number(0.1);
              }),
              "-9223372036854775808,18446744073709551615,true,false,2009-01-15T10:20:30.25Z,0.1");
}

TEST(CsvWriterTest, WhatIsNotFiniteIsAnEmptyCell) {
    EXPECT_EQ(CsvOf([](CsvWriter& csv) {
                  csv.Number(std::numeric_limits<double>::quiet_NaN());
                  csv.Number(-std::numeric_limits<double>::infinity());
                  csv.Time(std::numeric_limits<double>::quiet_NaN());
                  csv.Text("end");
              }),
              ",,,end");
}

TEST(CsvWriterTest, ARowOfOneEmptyCellIsNoEmptyLine) {
    EXPECT_EQ(CsvOf([](CsvWriter& csv) {
                  csv.Empty();
                  csv.EndRow();
                  csv.Text("a");
                  csv.EndRow();
                  csv.Text("");
                  csv.EndRow();
              }),
              "\"\"\r\na\r\n\"\"\r\n");
}

TEST(CsvWriterTest, AnUnpairedSurrogateIsReplaced) {
    EXPECT_EQ(CsvOf([](CsvWriter& csv) { csv.Text(icu::UnicodeString(char16_t{0xD800})); }), "\xEF\xBF\xBD");
}

} // namespace
