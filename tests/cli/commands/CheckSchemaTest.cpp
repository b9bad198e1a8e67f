// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include <nlohmann/json.hpp>

namespace {

using cli::Folder;
using cli::Gpx;
using cli::Lines;
using cli::Result;
using cli::RunTool;
using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

constexpr char kStart[] = "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1'>";

std::string Valid() {
    return std::string(kStart) + "<metadata><name>n</name></metadata><wpt lat='1' lon='2'/></gpx>";
}

std::string Invalid() {
    return std::string(kStart) +
           "<metadata><name>n</name></metadata>\n<wpt lat='1' lon='2'>\n<fix>4d</fix></wpt></gpx>";
}

TEST(CheckSchemaTest, AValidDocumentEndsWithSuccess) {
    const Folder folder;
    folder.Write("a.gpx", Valid());
    const Result result = RunTool({"check", "--schema", "a.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, HasSubstr("\nValid by its schema\n"));
    EXPECT_THAT(result.out, HasSubstr(" 1 document is valid by the schema.\n"));
}

TEST(CheckSchemaTest, WithoutTheOptionNothingIsSaidOfTheSchema) {
    const Folder folder;
    folder.Write("a.gpx", Valid());
    EXPECT_THAT(RunTool({"check", "a.gpx"}, folder.Path()).out, Not(HasSubstr("chema")));
    EXPECT_THAT(RunTool({"check", "--json", "a.gpx"}, folder.Path()).out, Not(HasSubstr("isValid")));
}

TEST(CheckSchemaTest, TellsWhatIsNotValidAndWhere) {
    const Folder folder;
    folder.Write("a.gpx", Invalid());
    folder.Write("b.gpx", Valid());
    const Result result = RunTool({"check", "--schema", "a.gpx", "b.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("Not valid by its schema\n  3:14  gpx/wpt/fix\n      bad-value: "));
    EXPECT_THAT(result.out, HasSubstr(" 1 document is valid by the schema, 1 is not.\n"));
}

TEST(CheckSchemaTest, PrintsJson) {
    const Folder folder;
    folder.Write("a.gpx", Invalid());
    folder.Write("b.gpx", Valid());
    const Result result = RunTool({"check", "--schema", "--json", "a.gpx", "b.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    ASSERT_EQ(Lines(result.out).size(), 2U);
    const json invalid = json::parse(Lines(result.out)[0]);
    EXPECT_EQ(invalid["isValid"], false);
    EXPECT_EQ(invalid["schemaErrorCount"], 1);
    EXPECT_EQ(invalid["schemaErrors"][0]["element"], "gpx/wpt/fix");
    EXPECT_EQ(invalid["schemaErrors"][0]["kind"], "bad-value");
    EXPECT_EQ(invalid["schemaErrors"][0]["places"], json::parse(R"([{"line":3,"column":14}])"));
    const json valid = json::parse(Lines(result.out)[1]);
    EXPECT_EQ(valid["isValid"], true);
    EXPECT_EQ(valid["schemaErrors"], json::array());
}

TEST(CheckSchemaTest, ChecksWhatCannotBeReadForItsContent) {
    const Folder folder;
    folder.Write("a.gpx", std::string(kStart) + "<wpt lat='91' lon='2'/>\n<wpt lat='92' lon='2'/></gpx>");
    const Result result = RunTool({"check", "--schema", "a.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("a.gpx\n  It could not be read.\n\nNot valid by its schema\n"));
    EXPECT_THAT(result.out, HasSubstr("  1:97  gpx/wpt\n"));
    EXPECT_THAT(result.out, HasSubstr("  2:24  gpx/wpt\n"));
    const json line = json::parse(RunTool({"check", "--schema", "--json", "a.gpx"}, folder.Path()).out);
    EXPECT_EQ(line["schemaErrorCount"], 2);
    EXPECT_TRUE(line.contains("error"));
}

TEST(CheckSchemaTest, DoesNotCheckWhatIsNotWellFormedOrHasADocumentType) {
    const Folder folder;
    folder.Write("cut.gpx", std::string(kStart) + "<wpt lat='91'");
    folder.Write("type.gpx", "<!DOCTYPE gpx [<!ENTITY a 'b'>]>" + std::string(kStart) + "</gpx>");
    const Result result = RunTool({"check", "--schema", "--json", "cut.gpx", "type.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, Not(HasSubstr("isValid")));
}

TEST(CheckSchemaTest, ATrustedDocumentWithADocumentTypeIsChecked) {
    const Folder folder;
    folder.Write("type.gpx", "<!DOCTYPE gpx [<!ENTITY a '4'><!ELEMENT gpx (wpt)><!ELEMENT wpt (ele, sat)>"
                             "<!ELEMENT ele (#PCDATA)><!ELEMENT sat (#PCDATA)>"
                             "<!ATTLIST gpx version CDATA '' creator CDATA '' xmlns CDATA ''>"
                             "<!ATTLIST wpt lat CDATA '' lon CDATA ''>]>" +
                                 std::string(kStart) +
                                 "<wpt lat='1' lon='2'><ele>&a;</ele><sat>&a;.5</sat></wpt></gpx>");
    const json line =
        json::parse(RunTool({"check", "--schema", "--trust", "--json", "type.gpx"}, folder.Path()).out);
    ASSERT_EQ(line["schemaErrorCount"], 1) << line;
    EXPECT_EQ(line["schemaErrors"][0]["element"], "gpx/wpt/sat");
}

TEST(CheckSchemaTest, GroupsTheCausesOfAFolder) {
    const Folder folder;
    folder.Write("a.gpx", Invalid());
    folder.Write("b.gpx", Valid());
    folder.Write("c.gpx", Invalid());
    const Result result = RunTool({"check", "--schema", "--summary", "."}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr(" 1 document is valid by the schema, 2 are not.\n"));
    EXPECT_THAT(result.out,
                HasSubstr("\nNot valid by the schema\n  2 files: Values that are not of their type. "));
    EXPECT_THAT(result.out, HasSubstr("    gpx/wpt/fix (2)\n    ./a.gpx:3, ./c.gpx:3\n"));
    const json summary =
        json::parse(RunTool({"check", "--schema", "--summary", "--json", "."}, folder.Path()).out);
    EXPECT_EQ(summary["invalid"], 2);
    EXPECT_EQ(summary["causes"][0]["kind"], "invalid");
    EXPECT_EQ(summary["causes"][0]["cause"], "bad-value");
}

TEST(CheckSchemaTest, WorksTogetherWithKeep) {
    const Folder folder;
    folder.Write("a.gpx", Invalid());
    const Result result = RunTool({"check", "--schema", "--keep", "a.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.out, HasSubstr("Not valid by its schema\n"));
    EXPECT_THAT(result.out, HasSubstr("Nothing is lost"));
}

} // namespace
