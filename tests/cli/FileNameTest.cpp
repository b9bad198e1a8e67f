// SPDX-License-Identifier: MIT

// Files whose names are not text, or look like something else: exactly this file is read and written, and a file
// with a similar name is not touched.

#include "support/Tool.h"

#include "support/ZipBuilder.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <ostream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;

using cli::Failed;
using cli::Folder;
using cli::Gpx;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using cli::Tool;
using testing::ElementsAre;
using testing::HasSubstr;

std::string Document(const std::string& name) {
    return Gpx("<metadata><name>" + name + "</name><extensions><t:layername>" + name +
               "</t:layername></extensions></metadata><wpt lat='1' lon='2'/>");
}

/// A name, and the name of the file that a careless conversion of the first one finds.
struct Names {
    const char* name;
    const char* lookAlike;
    const char* shown;
};

void PrintTo(const Names& names, std::ostream* out) {
    *out << names.shown;
}

class FileNameTest : public testing::TestWithParam<Names> {
protected:
    FileNameTest() {
        folder_.Write(GetParam().name, Document("asked for"));
        folder_.Write(GetParam().lookAlike, Document("look-alike"));
    }

    Result Run(std::vector<std::string> arguments) const {
        return RunTool(std::move(arguments), folder_.Path());
    }

    std::string Name() const { return GetParam().name; }

    Folder folder_;
};

INSTANTIATE_TEST_SUITE_P(Names, FileNameTest,
                         testing::Values(Names{"caf\xE9.gpx", "caf\uFFFD.gpx", "caf\uFFFD.gpx"},
                                         Names{"\xFF", "\uFFFD", "\uFFFD"},
                                         Names{"\x01.gpx", ".gpx", "?.gpx"}, Names{"\x01\x01", "\x01", "??"},
                                         Names{"[\xFE]", "\xFE", "[\uFFFD]"},
                                         Names{"\x01[a]", "[a]", "?[a]"}));

TEST_P(FileNameTest, IsReadByEveryCommand) {
    EXPECT_THAT(Run({"show", Name()}).out, HasSubstr("Name       asked for\n"));
    EXPECT_THAT(Run({"show", "--", Name()}).out, HasSubstr("Name       asked for\n"));
    EXPECT_THAT(Run({"dump", "none.gpx", Name()}).out, HasSubstr("\"name\":\"asked for\""));
    EXPECT_THAT(Run({"info", Name()}).out, HasSubstr("layer asked for"));
    EXPECT_THAT(Run({"info", "--trust", Name()}).out, HasSubstr("layer asked for"));
    EXPECT_EQ(Run({"check", Name()}).status, 0);
    EXPECT_THAT(Run({"clean", Name()}).out, HasSubstr("asked for"));
    EXPECT_THAT(Run({"convert", Name(), "-"}).out, HasSubstr("<name>asked for</name>"));
}

TEST_P(FileNameTest, MayBeThatOfAnArchive) {
    for (const auto& [name, content] :
         {std::pair(Name(), "asked for"), std::pair(std::string(GetParam().lookAlike), "look-alike")})
        folder_.Write(name, testing_support::BuildZip({{.name = "a.gpx", .content = Document(content)}}));
    EXPECT_THAT(Run({"show", Name()}).out, HasSubstr("Name       asked for\n"));
    EXPECT_EQ(Run({"zip", "cat", Name(), "a.gpx"}).out, Document("asked for"));
}

TEST_P(FileNameTest, ConvertedInPlaceItsLookAlikeStaysAsItWas) {
    EXPECT_EQ(Run({"convert", Name(), Name()}).status, 0);
    EXPECT_THAT(ReadFile(folder_.File(Name())), HasSubstr("creator=\"vexagpx"));
    EXPECT_THAT(ReadFile(folder_.File(Name())), HasSubstr("<name>asked for</name>"));
    EXPECT_EQ(ReadFile(folder_.File(GetParam().lookAlike)), Document("look-alike"));
    EXPECT_EQ(folder_.Names().size(), 2U);
}

TEST_P(FileNameTest, IsWrittenBesideItsLookAlike) {
    folder_.Write("in.gpx", Document("new"));
    EXPECT_EQ(Run({"convert", "in.gpx", Name()}).status, 0);
    EXPECT_THAT(ReadFile(folder_.File(Name())), HasSubstr("<name>new</name>"));
    EXPECT_EQ(ReadFile(folder_.File(GetParam().lookAlike)), Document("look-alike"));
    EXPECT_EQ(Run({"convert", "--debug-log=" + Name(), "in.gpx", "-"}).status, 0);
    EXPECT_EQ(ReadFile(folder_.File(Name())), "");
    EXPECT_EQ(ReadFile(folder_.File(GetParam().lookAlike)), Document("look-alike"));
}

TEST_P(FileNameTest, MayBeTheFolderOfWhatIsReadAndWritten) {
    fs::remove(folder_.File(Name()));
    fs::remove(folder_.File(GetParam().lookAlike));
    fs::create_directory(folder_.File(Name()));
    folder_.Write(Name() + "/in.gpx", Document("asked for"));
    EXPECT_EQ(Run({"convert", Name() + "/in.gpx", Name() + "/out.gpx"}).status, 0);
    EXPECT_THAT(ReadFile(folder_.File(Name() + "/out.gpx")), HasSubstr("<name>asked for</name>"));
    EXPECT_THAT(folder_.Tree(), ElementsAre(Name() + "/", Name() + "/in.gpx", Name() + "/out.gpx"));
    const Result refused = Run({"convert", "--app", "\x05", Name() + "/in.gpx", Name() + "/out.gpx"});
    EXPECT_TRUE(Failed(refused, "The result would not be well-formed XML because of the application name"));
}

TEST_P(FileNameTest, IsShownInMessagesWithoutHarm) {
    folder_.Write(GetParam().name, "<gpx");
    const std::string shown = GetParam().shown;
    EXPECT_THAT(
        Run({"show", Name()}).err,
        HasSubstr("One or more errors encountered while parsing the GPX file: " + shown + " (line 1"));
    fs::remove(folder_.File(Name()));
    const Result missing = Run({"dump", Name()});
    EXPECT_TRUE(Failed(missing, "Unable to read the file: " + shown + " (No such file"));
    EXPECT_EQ(missing.out, "");
    EXPECT_TRUE(Failed(Run({"info", Name()}), "Unable to read the file: " + shown + " (No such file"));
    EXPECT_TRUE(Failed(Run({"clean", Name()}), "Unable to read the file: " + shown + " (No such file"));
}

TEST_P(FileNameTest, IsShownInJsonAsText) {
    const std::string expected = nlohmann::json::parse(
        nlohmann::json(Name()).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace));
    for (const char* command : {"info", "check", "show", "stats", "index"}) {
        const Result result = Run({command, "--json", Name()});
        EXPECT_EQ(nlohmann::json::parse(result.out)["file"], expected) << command;
    }
}

TEST_P(FileNameTest, MayBeThatOfAPipe) {
    fs::remove(folder_.File(Name()));
    ASSERT_EQ(::mkfifo(folder_.File(Name()).c_str(), 0600), 0);
    const Folder temporary;
    std::thread writer([&] { folder_.Write(Name(), Gpx("<wpt lat='1' lon='2'/>")); });
    const Result result = Tool({"dump", Name()}).In(folder_.Path()).Set("TMPDIR", temporary.Path()).Run();
    writer.join();
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, HasSubstr("\"latitude\":1"));
    EXPECT_THAT(temporary.Names(), testing::IsEmpty());
}

TEST(FileNamesTest, TwoDotsLeadWhereTheSystemSays) {
    const Folder folder;
    fs::create_directories(folder.File("far/away"));
    fs::create_directory(folder.File("here"));
    fs::create_directory_symlink("../far/away", folder.File("here/way"));
    folder.Write("far/x.gpx", Document("asked for"));
    folder.Write("here/x.gpx", Document("another"));
    for (const char* command : {"show", "dump", "info"})
        EXPECT_THAT(RunTool({command, "way/../x.gpx"}, folder.File("here")).out, HasSubstr("asked for"))
            << command;
    EXPECT_EQ(RunTool({"convert", "way/../x.gpx", "way/../x.gpx"}, folder.File("here")).status, 0);
    EXPECT_THAT(ReadFile(folder.File("far/x.gpx")), HasSubstr("<name>asked for</name>"));
    EXPECT_THAT(ReadFile(folder.File("far/x.gpx")), HasSubstr("creator=\"vexagpx"));
    EXPECT_EQ(ReadFile(folder.File("here/x.gpx")), Document("another"));
}

TEST(FileNamesTest, ATextThatStartsWithTheMarkOfTheCommandLineKeepsIt) {
    const Folder folder;
    folder.Write("in.gpx", Document("n"));
    for (const std::vector<std::string>& option :
         {std::vector<std::string>{"--url=\x01[u]"}, std::vector<std::string>{"--url", "\x01[u]"}}) {
        std::vector<std::string> arguments = {"convert"};
        arguments.insert(arguments.end(), option.begin(), option.end());
        arguments.insert(arguments.end(), {"in.gpx", "-"});
        // XML cannot contain this character.
        EXPECT_TRUE(Failed(RunTool(arguments, folder.Path()), "because of the application URL \"[u]\""));
    }
    const Result plain = RunTool({"convert", "--app=[a]", "--url", "[u]", "in.gpx", "-"}, folder.Path());
    EXPECT_THAT(plain.out, HasSubstr("creator=\"[a] - [u]\""));
}

TEST(FileNamesTest, ANameLikeAnAddressIsThatOfAFile) {
    const Folder folder;
    fs::create_directories(folder.File("http:/localhost:1"));
    folder.Write("http:/localhost:1/walk.gpx", Document("a file"));
    folder.Write("http:/localhost:1/part.txt", "beside it");
    folder.Write("http:/localhost:1/with.gpx",
                 "<!DOCTYPE gpx [<!ENTITY e SYSTEM 'part.txt'>]>" +
                     Gpx("<metadata><extensions><t:form>&e;</t:form></extensions></metadata>"));
    for (const char* trust : {"--no-progress", "--trust"}) {
        for (const char* command : {"dump", "info"})
            EXPECT_THAT(RunTool({command, trust, "http://localhost:1/walk.gpx"}, folder.Path()).out,
                        HasSubstr("a file"))
                << command << trust;
        const Result missing = RunTool({"dump", trust, "file:///etc/hostname"}, folder.Path());
        EXPECT_TRUE(Failed(missing, "Unable to read the file: file:///etc/hostname (No such file"));
    }
    EXPECT_THAT(RunTool({"info", "--trust", "http://localhost:1/with.gpx"}, folder.Path()).out,
                HasSubstr("form beside it"));
}

} // namespace
