// SPDX-License-Identifier: MIT

// Untrusted files, and --trust.

#include "support/Tool.h"

#include "support/ZipBuilder.h"

namespace {

using cli::Failed;
using cli::Folder;
using cli::Gpx;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using testing::HasSubstr;
using testing::Not;

using Arguments = std::vector<std::string>;

const std::string kRefused = "vexagpx: The untrusted GPX file was refused: ";
const std::string kAdvice = " If you know where it comes from, --trust reads it.\n";

// The file is valid, because the reader validates a file whose declaration lists elements.
const std::string kLeak = "<!DOCTYPE gpx [<!ENTITY e SYSTEM 'secret.txt'>"
                          "<!ELEMENT gpx ANY><!ATTLIST gpx version CDATA #IMPLIED xmlns CDATA #IMPLIED>"
                          "<!ELEMENT metadata ANY><!ELEMENT name ANY>]>"
                          "<gpx version='1.1' xmlns='http://www.topografix.com/GPX/1/1'>"
                          "<metadata><name>&e;</name></metadata></gpx>";

std::string Nested(int depth) {
    std::string nested;
    for (int i = 1; i < depth; ++i)
        nested = "<x>" + nested + "</x>";
    return Gpx(nested);
}

/// Commands that read a document, each with the arguments after its options.
class TrustTest : public testing::TestWithParam<Arguments> {
protected:
    TrustTest() {
        folder.Write("secret.txt", "quiet");
        folder.Write("leak.gpx", kLeak);
        folder.Write("deep.gpx", Nested(257));
        folder.Write("flat.gpx", Nested(256));
    }

    Result Run(const std::string& file, const Arguments& options = {}) const {
        Arguments arguments = {GetParam().front()};
        arguments.insert(arguments.end(), options.begin(), options.end());
        arguments.push_back(file);
        arguments.insert(arguments.end(), GetParam().begin() + 1, GetParam().end());
        return RunTool(arguments, folder.Path());
    }

    const Folder folder;
};

INSTANTIATE_TEST_SUITE_P(Commands, TrustTest,
                         testing::Values(Arguments{"show"}, Arguments{"dump"}, Arguments{"check"},
                                         Arguments{"convert", "out.gpx"}),
                         [](const auto& instance) { return instance.param.front(); });

TEST_P(TrustTest, AFileWithADocumentTypeIsRefusedAndNothingOfAnotherFileShown) {
    const Result result = Run("leak.gpx");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, kRefused + "leak.gpx. It has a document type declaration." + kAdvice);
    EXPECT_THAT(result.out, Not(HasSubstr("quiet")));
    EXPECT_THAT(folder.Names(), Not(testing::Contains("out.gpx")));
}

TEST_P(TrustTest, ATrustedFileMayNameAnotherOne) {
    const Result result = Run("leak.gpx", {"--trust"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    const std::string written =
        GetParam().front() == "convert" ? ReadFile(folder.File("out.gpx")) : result.out;
    if (GetParam().front() != "check") {
        EXPECT_THAT(written, HasSubstr("quiet"));
    }
}

TEST_P(TrustTest, LimitsHoldUnlessTheFileIsTrusted) {
    const Result refused = Run("deep.gpx");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err, kRefused +
                               "deep.gpx. Its elements are nested deeper than 256 (limit of element depth)." +
                               kAdvice);
    EXPECT_THAT(Run("flat.gpx").err, Not(HasSubstr("refused")));
    EXPECT_THAT(Run("deep.gpx", {"--trust"}).err, Not(HasSubstr("refused")));
}

TEST_P(TrustTest, EntriesOfArchivesAreUntrustedToo) {
    folder.Write("a.zip", testing_support::BuildZip(
                              {{.name = "leak.gpx", .content = ReadFile(folder.File("leak.gpx"))}}));
    const Result result = Run("a.zip");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, kRefused + "a.zip/leak.gpx. It has a document type declaration." + kAdvice);
}

std::string HeadRefused(const std::string& name) {
    return "vexagpx: The head of the untrusted GPX file was refused: " + name +
           ". It has a document type declaration or is beyond a limit." + kAdvice;
}

TEST(TrustInfoTest, TheScanEndsAtADocumentType) {
    const Folder folder;
    folder.Write("name.txt", "quiet");
    folder.Write("a.gpx", "<!DOCTYPE gpx [<!ENTITY e SYSTEM 'name.txt'>]>" +
                              Gpx("<metadata><time>2012-03-14T10:00:00Z</time></metadata>"));
    const Result refused = RunTool({"info", "a.gpx"}, folder.Path());
    EXPECT_EQ(refused.out, "a.gpx: no vendor metadata and no time\n");
    EXPECT_EQ(refused.err, HeadRefused("a.gpx"));
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(
        RunTool({"info", "--trust", "a.gpx"}, folder.Path()).out,
        "a.gpx: 2012-03-14T10:00:00Z\n  Version      1.1\n  Contents     no waypoint, route or track\n");
}

TEST(TrustInfoTest, WhatWasFoundBeforeALimitIsShownAndTheNextFileToo) {
    const Folder folder;
    const std::string time = "<metadata><time>2012-03-14T10:00:00Z</time></metadata>";
    std::string elements;
    for (int i = 0; i < 100001; ++i)
        elements += "<x/>";
    folder.Write("long.gpx", Gpx(time + elements));
    folder.Write("a.gpx", Gpx(time));
    const Result result = RunTool({"info", "long.gpx", "a.gpx"}, folder.Path());
    EXPECT_EQ(
        result.out,
        "long.gpx: 2012-03-14T10:00:00Z\n  Version      1.1\n"
        "a.gpx: 2012-03-14T10:00:00Z\n  Version      1.1\n  Contents     no waypoint, route or track\n");
    EXPECT_EQ(result.err, HeadRefused("long.gpx"));
    EXPECT_EQ(result.status, 1);
    const Result trusted = RunTool({"info", "--trust", "long.gpx"}, folder.Path());
    EXPECT_EQ(trusted.err, "");
    EXPECT_EQ(trusted.status, 0);
    folder.Write("a.zip", testing_support::BuildZip(
                              {{.name = "long.gpx", .content = ReadFile(folder.File("long.gpx"))}}));
    const Result ofArchive = RunTool({"info", "--max-ratio", "5000", "a.zip"}, folder.Path());
    EXPECT_EQ(ofArchive.err, HeadRefused("a.zip/long.gpx"));
    EXPECT_EQ(ofArchive.status, 1);
}

TEST(TrustUsageTest, CommandsThatReadNoGpxHaveNoSuchOption) {
    EXPECT_EQ(RunTool({"clean", "--trust"}).status, 2);
    EXPECT_EQ(RunTool({"zip", "list", "--trust", "a.zip"}).status, 2);
}

} // namespace
