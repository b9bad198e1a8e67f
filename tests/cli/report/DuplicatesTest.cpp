// SPDX-License-Identifier: MIT
#include <vexagpx/report/Duplicates.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using vexagpx::Duplicates;
using vexagpx::IndexEntry;
using vexagpx::Output;

IndexEntry Entry(const std::string& file, const std::string& entry, const std::string& content) {
    IndexEntry made;
    made.file = file;
    made.entry = entry;
    made.content = content;
    return made;
}

std::string Written(const Duplicates& duplicates, void (Duplicates::*write)(Output&) const) {
    std::string bytes;
    Output out([&bytes](std::string_view piece) { bytes += piece; });
    (duplicates.*write)(out);
    out.Flush();
    return bytes;
}

TEST(DuplicatesTest, GroupsAreInTheOrderOfTheirFirstDocument) {
    Duplicates duplicates;
    duplicates.Add(Entry("a", "", "1"));
    duplicates.Add(Entry("b", "x", "2"));
    duplicates.Add(Entry("c", "", "3"));
    duplicates.Add(Entry("d", "", "2"));
    duplicates.Add(Entry("e", "", "1"));
    duplicates.Add(Entry("f", "y", "1"));
    EXPECT_EQ(Written(duplicates, &Duplicates::WriteText), "3 documents with equal content\n"
                                                           "  a\n"
                                                           "  e\n"
                                                           "  f: y\n"
                                                           "\n"
                                                           "2 documents with equal content\n"
                                                           "  b: x\n"
                                                           "  d\n");
    EXPECT_EQ(Written(duplicates, &Duplicates::WriteJson),
              "{\"content\":\"1\",\"duplicates\":[{\"file\":\"a\"},{\"file\":\"e\"},{\"file\":\"f\","
              "\"entry\":\"y\"}]}\n"
              "{\"content\":\"2\",\"duplicates\":[{\"file\":\"b\",\"entry\":\"x\"},{\"file\":\"d\"}]}\n");
}

TEST(DuplicatesTest, DocumentsWithoutContentAreInNoGroup) {
    Duplicates duplicates;
    duplicates.Add(Entry("a", "", ""));
    duplicates.Add(Entry("b", "", ""));
    duplicates.Add(Entry("c", "", "1"));
    EXPECT_EQ(Written(duplicates, &Duplicates::WriteText), "No documents have equal content.\n");
    EXPECT_EQ(Written(duplicates, &Duplicates::WriteJson), "");
}

} // namespace
