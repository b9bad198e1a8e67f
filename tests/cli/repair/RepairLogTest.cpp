// SPDX-License-Identifier: MIT
#include <vexagpx/repair/RepairLog.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using vexagpx::ChangeList;
using vexagpx::Output;
using vexagpx::RepairLog;

TEST(RepairLogTest, NamesTheLineOfAChange) {
    const std::string text = "a\nb\r\nc";
    ChangeList changes;
    RepairLog log(text, changes);
    log.Add(0, "k", "one");
    log.Add(2, "k", "two");
    log.Add(text.size(), "k", "three");
    log.Add(0, "k", "an earlier place counts as the last one");
    std::string shown;
    Output out([&shown](std::string_view piece) { shown += piece; });
    changes.WriteText(out);
    out.Flush();
    EXPECT_EQ(shown, "  Line 1: one\n  Line 2: two\n  Line 3: three\n"
                     "  Line 3: an earlier place counts as the last one\n");
}

} // namespace
