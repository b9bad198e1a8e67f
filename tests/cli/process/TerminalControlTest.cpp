// SPDX-License-Identifier: MIT
#include <vexagpx/process/TerminalControl.h>

#include "support/Tool.h"

#include "support/ZipBuilder.h"

#include <nlohmann/json.hpp>
#include <unicode/unistr.h>

namespace {

using namespace vexagpx;

using cli::Folder;
using cli::Gpx;
using cli::RunTool;
using nlohmann::json;

struct Range {
    UChar32 first;
    UChar32 last;
};

const std::vector<Range> kControls = {
    {0x00, 0x1F},     {0x7F, 0x9F},       {0xAD, 0xAD},       {0x061C, 0x061C}, {0x200B, 0x200B},
    {0x200E, 0x200F}, {0x2028, 0x202E},   {0x2060, 0x2064},   {0x2066, 0x206F}, {0xFEFF, 0xFEFF},
    {0xFFF9, 0xFFFB}, {0xE0001, 0xE0001}, {0xE0020, 0xE007F},
};

std::string Utf8(UChar32 character) {
    std::string bytes;
    return icu::UnicodeString(character).toUTF8String(bytes);
}

TEST(TerminalControlTest, ControlsSeparatorsAndFormatCharactersAre) {
    for (const Range& range : kControls)
        for (UChar32 character = range.first; character <= range.last; ++character)
            EXPECT_TRUE(IsTerminalControl(character)) << std::hex << character;
}

TEST(TerminalControlTest, TextIsNotNorAreTheJoinersThatHoldItTogether) {
    for (const UChar32 character : {0x20, 0x7E, 0xA0, 0xA1, 0x0301, 0x200C, 0x200D, 0x2010, 0x2027, 0x202F,
                                    0x2065, 0xFE0F, 0xFFFD, 0x1F680, 0x10FFFF})
        EXPECT_FALSE(IsTerminalControl(character)) << std::hex << character;
    EXPECT_FALSE(IsTerminalControl(-1));
}

TEST(TerminalControlTest, CharactersComeOneByOneAndWhatIsNoUtf8ByteByByte) {
    struct Row {
        std::string text;
        std::vector<UChar32> characters;
    };
    const std::vector<Row> rows = {
        {"", {}},
        {std::string("a\0\x7F", 3), {'a', 0, 0x7F}},
        {"\xC2\x9B\xE2\x80\xAE\xF0\x9F\x9A\x80", {0x9B, 0x202E, 0x1F680}},
        {"\xEF\xBF\xBD", {0xFFFD}},
        {"\xFF\xFE", {-1, -1}},
        {"a\x80z", {'a', -1, 'z'}},
        {"\xC3", {-1}},
        {"\xC3z", {-1, 'z'}},
        {"\xE2\x80", {-1, -1}},
        {"\xE2\x80z", {-1, -1, 'z'}},
        {"\xC0\xAF", {-1, -1}},
        {"\xED\xA0\x80", {-1, -1, -1}},
        {"\xF4\x90\x80\x80", {-1, -1, -1, -1}},
        {"\xC3\xC3\xA9", {-1, 0xE9}},
    };
    for (const Row& row : rows) {
        std::vector<UChar32> characters;
        for (std::size_t at = 0; at < row.text.size();)
            characters.push_back(NextCharacter(row.text, at));
        EXPECT_EQ(characters, row.characters) << testing::PrintToString(row.text);
    }
}

/// The characters that control a terminal and that XML 1.0 allows.
std::string AllThatXmlHolds() {
    std::string text = "a";
    for (const Range& range : kControls)
        for (UChar32 character = range.first; character <= range.last; ++character)
            if (character >= 0x7F)
                text += Utf8(character);
    return text + "z";
}

testing::AssertionResult IsSafe(const std::string& output) {
    for (std::size_t at = 0; at < output.size();) {
        const UChar32 character = NextCharacter(output, at);
        if (IsTerminalControl(character) && character != '\n')
            return testing::AssertionFailure() << std::hex << character << " in " << output;
    }
    return testing::AssertionSuccess();
}

/// A document that has such texts wherever a command shows a text.
class TerminalTest : public testing::Test {
protected:
    const std::string text = AllThatXmlHolds();
    const std::string name = "n\x1B\xC2\x9B\xE2\x80\xAE\xEF\xBB\xBF.gpx";
    const Folder folder;

    TerminalTest() {
        folder.Write(name, Gpx("<metadata><name>" + text + "</name><extensions><t:layername>" + text +
                               "</t:layername><t:form>" + text + "</t:form></extensions></metadata>" +
                               "<wpt lat='1' lon='2'><ele>" + text + "</ele><name>" + text +
                               "</name></wpt><rte><name>" + text + "</name></rte>"));
    }
};

TEST_F(TerminalTest, NoCommandShowsThem) {
    folder.Write("a.zip",
                 testing_support::BuildZip({{.name = name, .content = cli::ReadFile(folder.File(name))}}));
    for (const std::string& file : {name, std::string("a.zip")})
        for (const std::vector<std::string>& command : std::vector<std::vector<std::string>>{
                 {"show", "--all"}, {"dump"}, {"info"}, {"info", "--json"}, {"check"}, {"check", "--json"}}) {
            std::vector<std::string> arguments = command;
            arguments.push_back(file);
            const cli::Result result = RunTool(arguments, folder.Path());
            EXPECT_TRUE(IsSafe(result.out)) << testing::PrintToString(arguments);
            EXPECT_TRUE(IsSafe(result.err)) << testing::PrintToString(arguments);
            EXPECT_NE(result.out, "") << testing::PrintToString(arguments);
        }
    EXPECT_TRUE(IsSafe(RunTool({"zip", "list", "a.zip"}, folder.Path()).out));
}

TEST_F(TerminalTest, MessagesDoNotEither) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"dump", name + "x"},
                                               {"convert", name, "missing/" + name},
                                               {"zip", "list", name},
                                               {"convert", name, "out.gpx"},
                                               {"dump", "--" + name}}) {
        const cli::Result result = RunTool(arguments, folder.Path());
        EXPECT_NE(result.err, "") << testing::PrintToString(arguments);
        EXPECT_TRUE(IsSafe(result.err)) << testing::PrintToString(arguments);
    }
}

TEST_F(TerminalTest, JsonMeansTheSameText) {
    const json dump = json::parse(RunTool({"dump", name}, folder.Path()).out);
    EXPECT_EQ(dump["name"], text);
    EXPECT_EQ(dump["waypoints"][0]["name"], text);
    const json info = json::parse(RunTool({"info", "--json", name}, folder.Path()).out);
    EXPECT_EQ(info["gisMetaData"]["layerName"], text);
    EXPECT_EQ(info["file"], name);
    EXPECT_EQ(json::parse(RunTool({"check", "--json", name}, folder.Path()).out)["file"], name);
}

} // namespace
