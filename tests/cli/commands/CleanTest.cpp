// SPDX-License-Identifier: MIT
#include "support/Tool.h"

namespace {

using cli::Data;
using cli::Folder;
using cli::Result;
using cli::RunTool;
using cli::Tool;
using testing::StartsWith;

TEST(CleanTest, TurnsWebTextIntoPlainText) {
    const Result result = RunTool({"clean", Data("web-text.html")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "\r\n\r\nCafé & more\"quoted\"");
    EXPECT_EQ(result.err, "");
}

TEST(CleanTest, ReadsStandardInputWithoutAFileAndForADash) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"clean"}, {"clean", "-"}}) {
        const Result result = Tool(arguments).Stdin("[b]x[/b] &lt;").Run();
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.out, "x <");
    }
}

TEST(CleanTest, AByteOrderMarkIsDroppedAndNoLineEndAdded) {
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"", ""},
        {"x", "x"},
        {"x\n", "x\r\n"},
        {"\xEF\xBB\xBF", ""},
        {"\xEF\xBB\xBFx", "x"},
        {"\xEF\xBB\xBF\xEF\xBB\xBFx", "\xEF\xBB\xBFx"},
        {"x\xEF\xBB\xBF", "x\xEF\xBB\xBF"},
        {"<!-- c -->", ""},
    };
    for (const auto& [input, expected] : rows) {
        const Result result = Tool({"clean"}).Stdin(input).Run();
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.out, expected) << testing::PrintToString(input);
    }
}

TEST(CleanTest, BytesThatAreNoUtf8BecomeTheReplacementCharacter) {
    EXPECT_EQ(Tool({"clean"}).Stdin("a\xFFz").Run().out, "a\xEF\xBF\xBDz");
}

TEST(CleanTest, AZeroByteDoesNotEndTheText) {
    EXPECT_EQ(Tool({"clean"}).Stdin(std::string("a\0b", 3)).Run().out, std::string("a\0b", 3));
}

TEST(CleanTest, AFileThatCannotBeReadIsReported) {
    const Folder folder;
    const Result missing = RunTool({"clean", "missing"}, folder.Path());
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.out, "");
    EXPECT_EQ(missing.err, "vexagpx: Unable to read the file: missing (No such file or directory)\n");
    const Result directory = RunTool({"clean", "."}, folder.Path());
    EXPECT_EQ(directory.status, 1);
    EXPECT_EQ(directory.err, "vexagpx: Unable to read the file: . (Is a directory)\n");
}

TEST(CleanTest, ALongTextArrivesWhole) {
    std::string input;
    for (int i = 0; i < 50000; ++i)
        input += "<b>word</b> ";
    const Result result = Tool({"clean"}).Stdin(input).Run();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out.size(), 50000U * 5 - 1);
}

} // namespace
