// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include "support/ZipBuilder.h"

#include <cstdlib>
#include <filesystem>
#include <thread>

#include <sys/stat.h>
#include <unistd.h>

namespace cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

std::string Gpx10(const std::string& elements) {
    return "<?xml version='1.0'?><gpx version='1.0' creator='x' xmlns='http://www.topografix.com/GPX/1/0'>" +
           elements + "</gpx>";
}

/// What convert writes to standard output for a document on standard input.
Result Converted(const std::string& document, std::vector<std::string> options = {}) {
    std::vector<std::string> arguments = {"convert", "-", "-"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return Tool(std::move(arguments)).Stdin(document).Run();
}

TEST(ConvertTest, WritesVersion11WithTheToolsOwnNameByDefault) {
    const Folder folder;
    folder.Write("in.gpx", Gpx(kWaypoint));
    const Result result = RunTool({"convert", "in.gpx", "out.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(
        ReadFile(folder.File("out.gpx")),
        StartsWith(
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<gpx xmlns=\"http://www.topografix.com/GPX/1/1\" "
            "version=\"1.1\" creator=\"vexagpx - https://tarvik.example/\" "));
    EXPECT_THAT(folder.Names(), ElementsAre("in.gpx", "out.gpx"));
}

TEST(ConvertTest, NameAndUrlOfTheApplicationCanBeGiven) {
    const Result result =
        Converted(Gpx(kWaypoint), {"--app", "Ä & <B>", "--url", "https://example.org/?a&b"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, HasSubstr(" creator=\"Ä &amp; &lt;B&gt; - https://example.org/?a&amp;b\" "));
}

TEST(ConvertTest, TheApplicationsTextsMustBeOfCharactersThatXmlCanHold) {
    const Folder folder;
    EXPECT_EQ(RunTool({"convert", "--app", "x\x01", Data("empty.gpx"), folder.File("o")}).err,
              "vexagpx: The result would not be well-formed XML because of the application name \"x\".\n");
    EXPECT_EQ(RunTool({"convert", "--url", "y\xEF\xBF\xBF", Data("empty.gpx"), folder.File("o")}).status, 1);
    EXPECT_EQ(RunTool({"convert", "--url", "y\x02", Data("empty.gpx"), folder.File("o")}).err,
              "vexagpx: The result would not be well-formed XML because of the application URL \"y\".\n");
    EXPECT_THAT(folder.Names(), testing::IsEmpty());
}

TEST(ConvertTest, KeepsWhatTheModelDoesNotHave) {
    const std::string elements =
        "<metadata><author><name>A</name></author><keywords>k</keywords></metadata>"
        "<wpt lat='1.50' lon='2'><time>2020-01-02T03:04:05.678+01:00</time><cmt>c</cmt><desc>d</desc>"
        "<link href='u'/><link href='v'/><sat>7</sat><hdop>1.20</hdop>"
        "<extensions><z:z xmlns:z='urn:z' a='1'>z<z:y/></z:z></extensions></wpt>"
        "<trk><number>3</number><trkseg><trkpt lat='1' lon='2'><extensions><hr "
        "xmlns='urn:h'>99</hr></extensions>"
        "</trkpt></trkseg></trk>";
    const Result result = Converted(Gpx(elements));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    for (const char* kept :
         {"<author><name>A</name></author>", "<keywords>k</keywords>", "lat='1.50'", "04:05.678+01:00",
          "<cmt>c</cmt>", "<desc>d</desc>", "<link href='v'/>", "<sat>7</sat><hdop>1.20</hdop>",
          "<z:z xmlns:z='urn:z' a='1'>z<z:y/></z:z>", "<number>3</number>", "<hr xmlns='urn:h'>99</hr>"})
        EXPECT_THAT(result.out, HasSubstr(kept));
    EXPECT_EQ(Converted(result.out).out, result.out);
}

TEST(ConvertTest, WhatHasNoPlaceInVersion10IsListedByItsKind) {
    const std::string links = "<wpt lat='1' lon='2'><link href='u'/><link href='v'/><link href='w'/></wpt>";
    const std::string copyright = "<metadata><copyright author='me'/></metadata>";
    const Result many = Converted(Gpx(copyright + kWaypoint + links + links), {"--gpx", "1.0"});
    EXPECT_EQ(many.status, 0);
    EXPECT_EQ(many.err,
              "vexagpx: Note: 5 things in standard input have no place in GPX 1.0 and were left out:\n"
              "vexagpx:   copyright (in document): GPX 1.0 has no place for it.\n"
              "vexagpx:   link (4 times, first in waypoint 2): GPX 1.0 has a place for one link only.\n");
    EXPECT_EQ(Converted(Gpx(copyright), {"--gpx", "1.0"}).err,
              "vexagpx: Note: 1 thing in standard input has no place in GPX 1.0 and was left out:\n"
              "vexagpx:   copyright (in document): GPX 1.0 has no place for it.\n");
    EXPECT_EQ(Converted(Gpx(kWaypoint), {"--gpx", "1.0"}).err, "");
}

TEST(ConvertTest, Version10KeepsTheRestAndComesBack) {
    const std::string point =
        "<wpt lat='1.50' lon='2'><time>2020-01-02T03:04:05.678Z</time><name>n</name><sat>7</sat>"
        "<extensions><z xmlns='urn:z'>zz</z></extensions></wpt>";
    const Result old = Converted(Gpx(point), {"--gpx", "1.0"});
    EXPECT_EQ(old.err, "");
    EXPECT_THAT(old.out, HasSubstr("xmlns=\"http://www.topografix.com/GPX/1/0\" version=\"1.0\""));
    const Result back = Converted(old.out);
    EXPECT_EQ(back.err, "");
    EXPECT_THAT(back.out, HasSubstr("version=\"1.1\""));
    for (const std::string& text : {old.out, back.out})
        for (const char* kept : {"05.678Z", "<sat>7</sat>", ">zz</", "1.50"})
            EXPECT_THAT(text, HasSubstr(kept));
}

TEST(ConvertTest, SpeedAndCourseOfVersion10AreKept) {
    const Result result =
        Converted(Gpx10("<trk><trkseg><trkpt lat='1' "
                        "lon='2'><course>33.25</course><speed>1.75</speed></trkpt></trkseg></trk>"));
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, testing::AllOf(HasSubstr("33.25"), HasSubstr("1.75")));
}

TEST(ConvertTest, AFileWithoutANamespaceOrAVersionIsWrittenWithThem) {
    for (const char* root : {"<gpx>", "<gpx version='1.1'>", "<gpx version='2' xmlns='urn:x'>"}) {
        const Result result = Converted(std::string(root) + kWaypoint + "</gpx>");
        EXPECT_EQ(result.status, 0) << root;
        EXPECT_EQ(result.err, "") << root;
        EXPECT_THAT(result.out, HasSubstr("<gpx xmlns=\"http://www.topografix.com/GPX/1/1\" version=\"1.1\""))
            << root;
        EXPECT_THAT(result.out, HasSubstr("<name>w</name>")) << root;
    }
}

TEST(ConvertTest, WhatCannotBeReadIsKeptAndCounted) {
    const Folder folder;
    const std::string bad = "<wpt lat='91' lon='2'><name>bad</name></wpt>";
    folder.Write("a b.gpx", Gpx(bad + kWaypoint));
    const Result one = RunTool({"convert", "a b.gpx", "out.gpx"}, folder.Path());
    EXPECT_EQ(one.status, 0);
    EXPECT_EQ(one.err, "vexagpx: Note: 1 thing in a b.gpx could not be read and was carried over unchanged; "
                       "\"vexagpx check --keep 'a b.gpx'\" lists it.\n");
    EXPECT_THAT(ReadFile(folder.File("out.gpx")), HasSubstr(bad));
    EXPECT_EQ(Converted(Gpx(bad + bad)).err,
              "vexagpx: Note: 2 things in standard input could not be read and were carried over unchanged; "
              "\"vexagpx check --keep -\" with the same input lists them.\n");
}

TEST(ConvertTest, TheNotesOfAnArchiveAreThoseOfItsWrittenDocuments) {
    const Folder folder;
    const std::string document =
        Gpx("<wpt lat='1' lon='2'><link href='u'/><link href='v'/></wpt><wpt lat='91' lon='2'/>");
    folder.Write("a.zip", testing_support::BuildZip({{.name = "d/one.gpx", .content = document},
                                                     {.name = "two.gpx", .content = document},
                                                     {.name = "bad.gpx", .content = document + "<"}}));
    const Result result = RunTool({"convert", "--gpx", "1.0", "a.zip", "out"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    ASSERT_EQ(Lines(result.err).size(), 4U) << result.err;
    EXPECT_EQ(Lines(result.err)[1],
              "vexagpx: Note: 2 things in a.zip have no place in GPX 1.0 and were left out:");
    EXPECT_EQ(Lines(result.err)[2],
              "vexagpx:   link (2 times, first in waypoint 1 of d/one.gpx): GPX 1.0 has a place "
              "for one link only.");
    EXPECT_THAT(Lines(result.err)[3], HasSubstr("Note: 2 things in a.zip could not be read"));
    EXPECT_THAT(folder.Tree(), ElementsAre("a.zip", "out/", "out/d/", "out/d/one.gpx", "out/two.gpx"));
}

TEST(ConvertTest, TheCorpusConvertsAndStaysTheSame) {
    const std::vector<std::string> files = Corpus("gpx");
    if (files.empty())
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    const Folder folder;
    for (const std::string& file : files) {
        const Result result = RunTool({"convert", file, folder.File("out.gpx")});
        if (result.status != 0) {
            EXPECT_EQ(RunTool({"dump", file}).status, 1) << file;
            continue;
        }
        const auto again = [&] {
            EXPECT_EQ(RunTool({"convert", folder.File("out.gpx"), folder.File("out.gpx")}).status, 0) << file;
            return ReadFile(folder.File("out.gpx"));
        };
        const std::string second = again();
        EXPECT_TRUE(again() == second) << file;
    }
}

TEST(ConvertTest, InAndOutMayBeTheSameFile) {
    const Folder folder;
    folder.Write("a.gpx", Gpx(kWaypoint));
    const std::string before = RunTool({"dump", "--as-host", "a.gpx"}, folder.Path()).out;
    EXPECT_EQ(RunTool({"convert", "a.gpx", "a.gpx"}, folder.Path()).status, 0);
    EXPECT_THAT(ReadFile(folder.File("a.gpx")), HasSubstr("creator=\"vexagpx"));
    EXPECT_EQ(RunTool({"dump", "--as-host", "a.gpx"}, folder.Path()).out, before);
    EXPECT_THAT(folder.Names(), ElementsAre("a.gpx"));
}

TEST(ConvertTest, StandardInputAndOutput) {
    const Folder folder;
    const Folder temporary;
    const std::string expected = [&] {
        folder.Write("-", Gpx(kWaypoint));
        EXPECT_EQ(RunTool({"convert", "./-", "out.gpx"}, folder.Path()).status, 0);
        return ReadFile(folder.File("out.gpx"));
    }();
    for (const char* out : {"-", "/dev/stdout"}) {
        const Result result =
            Tool({"convert", "-", out}).Stdin(Gpx(kWaypoint)).Set("TMPDIR", temporary.Path()).Run();
        EXPECT_EQ(result.status, 0) << out;
        EXPECT_EQ(result.out, expected) << out;
        EXPECT_THAT(temporary.Names(), testing::IsEmpty()) << out;
    }
}

TEST(ConvertTest, AnInputThatCannotBeReadLeavesTheTargetAsItWas) {
    const Folder folder;
    folder.Write("out.gpx", "as it was");
    for (const char* in : {"not-well-formed.gpx", "missing.gpx"}) {
        const Result result = RunTool({"convert", Data(in), "out.gpx"}, folder.Path());
        EXPECT_EQ(result.status, 1) << in;
        EXPECT_EQ(result.out, "") << in;
        EXPECT_THAT(result.err, StartsWith("vexagpx: ")) << in;
        EXPECT_EQ(ReadFile(folder.File("out.gpx")), "as it was") << in;
        EXPECT_THAT(folder.Names(), ElementsAre("out.gpx")) << in;
    }
}

TEST(ConvertTest, ATargetThatCannotBeWrittenIsReported) {
    const Folder folder;
    std::filesystem::create_directory(folder.File("folder"));
    const std::string in = Data("empty.gpx");
    const std::vector<std::pair<std::string, std::string>> rows = {
        {"missing/out.gpx", "No such file or directory"},
        {"folder", "Is a directory"},
        {"/dev/full", "No space left on device"},
        {"", "No such file or directory"},
    };
    for (const auto& [out, reason] : rows) {
        const Result result = RunTool({"convert", in, out}, folder.Path());
        EXPECT_EQ(result.status, 1) << out;
        EXPECT_EQ(result.err, "vexagpx: Unable to write the file: " + out + " (" + reason + ")\n") << out;
        EXPECT_THAT(folder.Names(), ElementsAre("folder")) << out;
    }
}

TEST(ConvertTest, AWriteProtectedTargetIsKept) {
    if (::geteuid() == 0)
        GTEST_SKIP() << "no file is write-protected for root";
    const Folder folder;
    folder.Write("out.gpx", "as it was");
    std::filesystem::permissions(folder.File("out.gpx"), std::filesystem::perms::owner_read);
    EXPECT_EQ(RunTool({"convert", Data("empty.gpx"), "out.gpx"}, folder.Path()).status, 1);
    EXPECT_EQ(ReadFile(folder.File("out.gpx")), "as it was");
}

mode_t ModeOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_mode & 07777;
}

TEST(ConvertTest, AnExistingTargetKeepsItsModeAndANewOneHasTheUsualOne) {
    const Folder folder;
    folder.Write("old.gpx", "x");
    ::chmod(folder.File("old.gpx").c_str(), 0640);
    EXPECT_EQ(RunTool({"convert", Data("empty.gpx"), "old.gpx"}, folder.Path()).status, 0);
    EXPECT_EQ(ModeOf(folder.File("old.gpx")), 0640U);
    const mode_t mask = ::umask(027);
    EXPECT_EQ(RunTool({"convert", Data("empty.gpx"), "new.gpx"}, folder.Path()).status, 0);
    ::umask(mask);
    EXPECT_EQ(ModeOf(folder.File("new.gpx")), 0640U);
}

TEST(ConvertTest, ASymbolicLinkIsKeptAndItsTargetIsWritten) {
    const Folder folder;
    std::filesystem::create_directory(folder.File("sub"));
    folder.Write("sub/real.gpx", "x");
    std::filesystem::create_symlink("sub/real.gpx", folder.File("old.gpx"));
    std::filesystem::create_symlink("sub/fresh.gpx", folder.File("new.gpx"));
    for (const auto& [link, target] : {std::pair{"old.gpx", "sub/real.gpx"}, {"new.gpx", "sub/fresh.gpx"}}) {
        EXPECT_EQ(RunTool({"convert", Data("empty.gpx"), link}, folder.Path()).status, 0);
        EXPECT_TRUE(std::filesystem::is_symlink(folder.File(link)));
        EXPECT_THAT(ReadFile(folder.File(target)), HasSubstr("<gpx "));
    }
}

TEST(ConvertTest, ANamedPipeTakesTheBytes) {
    const Folder folder;
    const std::string pipe = folder.File("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::string bytes;
    std::thread reader([&] { bytes = ReadFile(pipe); });
    const Result result = RunTool({"convert", Data("empty.gpx"), pipe});
    reader.join();
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(bytes, HasSubstr("</gpx>\n"));
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}

TEST(ConvertTest, ATargetWhoseNameStartsWithADashOrLooksLikeAnAddress) {
    const Folder folder;
    for (const char* name : {"-out.gpx", "http:x"})
        EXPECT_EQ(RunTool({"convert", "--", Data("empty.gpx"), name}, folder.Path()).status, 0);
    EXPECT_THAT(folder.Names(), ElementsAre("-out.gpx", "http:x"));
}

} // namespace
} // namespace cli
