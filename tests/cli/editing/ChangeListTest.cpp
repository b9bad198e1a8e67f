// SPDX-License-Identifier: MIT
#include <vexagpx/editing/ChangeList.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using vexagpx::ChangeList;
using vexagpx::JsonWriter;
using vexagpx::Output;

std::string TextOf(const ChangeList& changes) {
    std::string text;
    Output out([&text](std::string_view piece) { text += piece; });
    changes.WriteText(out);
    out.Flush();
    return text;
}

std::string JsonOf(const ChangeList& changes) {
    std::string text;
    Output out([&text](std::string_view piece) { text += piece; });
    JsonWriter json(out);
    json.BeginObject();
    changes.WriteJson(json);
    json.EndObject();
    out.Flush();
    return text;
}

TEST(ChangeListTest, TellsEachChangeOnALine) {
    ChangeList changes;
    changes.Add({"moved", "track", 2, u"Lake\nloop", "moved\aaway", {{"metres", 1.5}}});
    changes.Add({"time",
                 "document",
                 0,
                 {},
                 "the time is removed",
                 {},
                 {{"value", ""}},
                 {{"last", true}},
                 {"a", "b"}});
    EXPECT_EQ(changes.Count(), 2U);
    EXPECT_EQ(TextOf(changes), "  Track 2 (Lake loop): moved away\n  Document: the time is removed\n");
    EXPECT_EQ(JsonOf(changes),
              R"({"changeCount":2,"changes":[)"
              R"({"kind":"moved","object":"track","number":2,"name":"Lake\nloop","metres":1.5},)"
              R"({"kind":"time","object":"document","value":"","last":true,"values":["a","b"]}]})");
}

TEST(ChangeListTest, CountsAllAndListsTheFirst) {
    ChangeList changes;
    for (std::size_t i = 1; i <= ChangeList::kMostListed + 7; ++i)
        changes.Add({"moved", "route", i, {}, "moved", {}});
    EXPECT_EQ(changes.Count(), ChangeList::kMostListed + 7);
    EXPECT_TRUE(TextOf(changes).ends_with("  Route 1000: moved\n  and 7 other changes\n"));
    EXPECT_TRUE(JsonOf(changes).starts_with(R"({"changeCount":1007,)"));
    EXPECT_EQ(JsonOf(changes).find(R"("number":1001)"), std::string::npos);
}

TEST(ChangeListTest, NothingIsWrittenForNoChange) {
    EXPECT_EQ(TextOf({}), "");
    EXPECT_EQ(JsonOf({}), R"({"changeCount":0,"changes":[]})");
}

} // namespace
