// SPDX-License-Identifier: MIT
#include "support/Tool.h"

namespace {

using cli::Data;
using cli::Folder;
using cli::Gpx;
using cli::ReadFile;
using cli::Result;
using cli::Tool;

const std::vector<std::pair<std::string, std::string>> kSettings = {
    {"LC_ALL", "C"},
    {"LC_ALL", "POSIX"},
    {"LC_ALL", "C.UTF-8"},
    {"LC_ALL", "de_DE.UTF-8"},
    {"LC_ALL", "th_TH.UTF-8"},
    {"LC_ALL", "fa_IR.UTF-8"},
    {"LC_ALL", "ar_EG"},
    {"LC_ALL", "de_DE.ISO-8859-1"},
    {"LANG", "fa_IR.UTF-8"},
    {"LANG", "tr_TR.UTF-8"},
    {"TZ", "America/New_York"},
    {"TZ", "Asia/Kolkata"},
    {"TZ", "XXX-14"},
    {"LC_ALL", ""},
    {"LC_ALL", "no_such_LOCALE"},
};

TEST(EnvironmentTest, NeitherLocaleNorTimeZoneShowsInWhatIsPrinted) {
    for (const auto& [name, value] : kSettings) {
        const Result dump =
            Tool({"dump", "--as-host", "hand-written.gpx"}).In(Data("")).Set(name, value).Run();
        EXPECT_EQ(dump.out, ReadFile(Data("hand-written.json"))) << name << "=" << value;
        const Result show = Tool({"show", "hand-written.gpx"}).In(Data("")).Set(name, value).Run();
        EXPECT_EQ(show.out, ReadFile(Data("hand-written.show.txt"))) << name << "=" << value;
        const Result clean = Tool({"clean", Data("web-text.html")}).Set(name, value).Run();
        EXPECT_EQ(clean.out, "\r\n\r\nCafé & more\"quoted\"") << name << "=" << value;
        const Result error = Tool({"dump", "not-well-formed.gpx"}).In(Data("")).Set(name, value).Run();
        EXPECT_EQ(error.err,
                  "vexagpx: One or more errors encountered while parsing the GPX file: not-well-formed.gpx "
                  "(line 3, column 23: expected end of tag 'name') Correct the tag in the line that is "
                  "named, or write the file again.\n")
            << name << "=" << value;
    }
}

TEST(EnvironmentTest, NeitherShowsInWhatIsWritten) {
    const Folder folder;
    ASSERT_EQ(Tool({"convert", Data("hand-written.gpx"), folder.File("plain.gpx")}).Run().status, 0);
    const std::string expected = ReadFile(folder.File("plain.gpx"));
    for (const auto& [name, value] : kSettings) {
        ASSERT_EQ(
            Tool({"convert", Data("hand-written.gpx"), folder.File("out.gpx")}).Set(name, value).Run().status,
            0);
        EXPECT_EQ(ReadFile(folder.File("out.gpx")), expected) << name << "=" << value;
    }
}

TEST(EnvironmentTest, ArgumentsAreUtf8WhateverTheLocale) {
    for (const char* locale : {"C", "POSIX", "C.UTF-8", "de_DE.ISO-8859-1"}) {
        const Folder folder;
        folder.Write("höhe 日本 😀.gpx", Gpx(""));
        const Result dump =
            Tool({"dump", "--as-host", "höhe 日本 😀.gpx"}).In(folder.Path()).Set("LC_ALL", locale).Run();
        EXPECT_EQ(dump.out, R"({"file":"höhe 日本 😀.gpx","waypoints":[],"routes":[],"tracks":[]})"
                            "\n")
            << locale;
        const Result show =
            Tool({"show", "--as-host", "höhe 日本 😀.gpx"}).In(folder.Path()).Set("LC_ALL", locale).Run();
        EXPECT_THAT(show.out, testing::StartsWith("höhe 日本 😀.gpx\n  Name       höhe 日本 😀\n")) << locale;
        const Result convert = Tool({"convert", "höhe 日本 😀.gpx", "žluťoučký.gpx", "--app", "Größe"})
                                   .In(folder.Path())
                                   .Set("LC_ALL", locale)
                                   .Run();
        EXPECT_EQ(convert.status, 0) << locale << convert.err;
        EXPECT_THAT(folder.Names(), testing::ElementsAre("höhe 日本 😀.gpx", "žluťoučký.gpx")) << locale;
        EXPECT_THAT(ReadFile(folder.File("žluťoučký.gpx")), testing::HasSubstr("creator=\"Größe - "))
            << locale;
        const Result missing = Tool({"dump", "größe.gpx"}).In(folder.Path()).Set("LC_ALL", locale).Run();
        EXPECT_THAT(missing.err, testing::HasSubstr(": größe.gpx (")) << locale;
        const Result unclean = Tool({"clean", "größe.html"}).In(folder.Path()).Set("LC_ALL", locale).Run();
        EXPECT_THAT(unclean.err, testing::HasSubstr(": größe.html (")) << locale;
    }
}

} // namespace
