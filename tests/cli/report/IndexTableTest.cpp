// SPDX-License-Identifier: MIT
#include <vexagpx/report/IndexTable.h>

#include "export/Reading.h"

#include <string>
#include <string_view>

namespace {

using testing::HasSubstr;
using testing::Not;
using vexagpx::IndexEntry;
using vexagpx::IndexTable;
using vexagpx::Output;

std::string TextOf(IndexTable& table) {
    std::string text;
    Output out([&text](std::string_view piece) { text += piece; });
    table.Write(out);
    out.Flush();
    return text;
}

IndexEntry Walk() {
    IndexEntry entry = vexagpx::IndexEntryOf(cli::DocumentOf(
        "<trk><trkseg>" + cli::PointText("trkpt", "1.5", "2", "<time>2024-05-01T10:00:00Z</time>") +
        cli::PointText("trkpt", "-3.25", "4", "<time>2024-05-02T10:00:00Z</time>") + "</trkseg></trk>"));
    entry.file = "walk.gpx";
    return entry;
}

TEST(IndexTableTest, ARowHasNumbersAndANoteBelow) {
    IndexTable table;
    table.Add(Walk());
    const std::string text = TextOf(table);
    EXPECT_THAT(text, HasSubstr("walk.gpx"));
    EXPECT_THAT(text,
                HasSubstr("tracks; 2024-05-01 to 2024-05-02; latitude -3.250 to 1.500, longitude 2.000 to "
                          "4.000"));
}

TEST(IndexTableTest, RowsAreNumberedAndNothingIsNotZero) {
    IndexTable table;
    table.Add(Walk());
    table.Add(Walk());
    const std::string text = TextOf(table);
    EXPECT_THAT(text, HasSubstr("1  walk.gpx"));
    EXPECT_THAT(text, HasSubstr("2  walk.gpx"));
    EXPECT_THAT(text, Not(HasSubstr(" 0 ")));
}

TEST(IndexTableTest, AnUnreadableFileSaysWhy) {
    IndexEntry entry;
    entry.file = "bad.gpx";
    entry.error = "It has no end.";
    IndexTable table;
    table.Add(entry);
    EXPECT_THAT(TextOf(table), HasSubstr("unreadable: It has no end."));
}

TEST(IndexTableTest, AFileWithoutAnythingHasNothing) {
    IndexEntry entry;
    entry.file = "empty.gpx";
    IndexTable table;
    table.Add(entry);
    EXPECT_THAT(TextOf(table), HasSubstr("nothing\n"));
}

} // namespace
