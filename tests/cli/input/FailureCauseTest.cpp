// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include <vexagpx/input/FailureCause.h>

namespace {

using cli::Folder;
using cli::Result;
using cli::RunTool;
using testing::EndsWith;
using testing::HasSubstr;
using vexagpx::FailureAdvice;
using vexagpx::FailureCause;

struct Case {
    const char* content;
    const char* word;
};

class FailureCauseTest : public testing::TestWithParam<Case> {};

constexpr char kStart[] = "<gpx version='1.1' creator='c' xmlns='http://www.topografix.com/GPX/1/1'>";

std::string Content(const Case& tested) {
    std::string content = tested.content;
    if (const std::size_t at = content.find('@'); at != std::string::npos)
        content.replace(at, 1, kStart);
    return content;
}

// Names that a file may have say nothing about its cause.
constexpr char kName[] = "byte limit, not open longitude.gpx";

TEST_P(FailureCauseTest, AMessageEndsWithWhatToDo) {
    const Folder folder;
    folder.Write(kName, Content(GetParam()));
    const Result result = RunTool({"show", "--as-host", kName}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "");
    std::string message = result.err.substr(0, result.err.size() - 1);
    if (const std::size_t name = message.find(kName); name != std::string::npos)
        message.erase(name, sizeof(kName) - 1);
    const vexagpx::Cause& cause = FailureCause(message);
    EXPECT_EQ(cause.word, GetParam().word) << result.err;
    EXPECT_THAT(message, EndsWith(" " + std::string(cause.advice)));
}

TEST_P(FailureCauseTest, TheNameOfTheFileIsNoCause) {
    const Folder folder;
    folder.Write(kName, Content(GetParam()));
    const Result result = RunTool({"check", "--summary", "--json", kName}, folder.Path());
    EXPECT_THAT(result.out, HasSubstr("\"cause\":\"" + std::string(GetParam().word) + "\""));
}

INSTANTIATE_TEST_SUITE_P(
    Causes, FailureCauseTest,
    testing::Values(Case{"@<wpt lat='1' lon='2'>", "cut-off"}, Case{"@<wpt lat='1", "cut-off"},
                    Case{"@<wpt lat='1' lon='2'><a:b/></wpt></gpx>", "undeclared-prefix"},
                    Case{"@</gpx>@</gpx>", "more-after-the-end"},
                    Case{"\n<?xml version='1.0'?>@</gpx>", "late-declaration"},
                    Case{"@<wpt lat='1' lon='2'></rte></gpx>", "mismatched-tags"},
                    Case{"@<metadata><name>\xE4 </name></metadata></gpx>", "wrong-encoding"},
                    Case{"no XML", "no-xml"}, Case{"<gpx/>", "no-version"},
                    Case{"<gpx version='2.0'/>", "other-version"}, Case{"<notgpx/>", "other-root"},
                    Case{"@<wpt lat='91' lon='2'/></gpx>", "bad-position"},
                    Case{"@<wpt lat='1' lon='x'/></gpx>", "bad-position"},
                    Case{"@<wpt lat='1' lat='1'/></gpx>", "not-well-formed"}));

TEST(FailureAdviceTest, AnUnknownCauseHasNone) {
    EXPECT_EQ(FailureAdvice(""), "");
    EXPECT_EQ(FailureAdvice("Out of memory."), "");
    EXPECT_EQ(FailureAdvice("Unable to open a ZIP for reading."), " Get it again from where it comes.");
}

} // namespace
