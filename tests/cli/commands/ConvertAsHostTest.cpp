// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include "support/ZipBuilder.h"

namespace cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

std::string Metadata(const std::string& element) {
    return "<metadata><extensions>" + element + "</extensions></metadata>";
}

std::string Extensions(const std::string& element) {
    return "<wpt lat='1' lon='2'/><wpt lat='1' lon='2'><extensions>" + element + "</extensions></wpt>";
}

TEST(ConvertAsHostTest, WritesVersion11WithTheToolsOwnNameByDefault) {
    const Folder folder;
    folder.Write("in.gpx", Gpx(kWaypoint));
    const Result result = RunTool({"convert", "--as-host", "in.gpx", "out.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(
        ReadFile(folder.File("out.gpx")),
        StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n<gpx version=\"1.1\"\r\n"
                   " creator=\"vexagpx - https://tarvik.example/\"\r\n"));
    EXPECT_THAT(folder.Names(), ElementsAre("in.gpx", "out.gpx"));
}

TEST(ConvertAsHostTest, TheResultReadsBackTheSame) {
    const Folder folder;
    ASSERT_EQ(
        RunTool({"convert", "--as-host", Data("hand-written.gpx"), folder.File("hand-written.gpx")}).status,
        0);
    // Times lose their fraction of a second in a file.
    std::string expected = ReadFile(Data("hand-written.json"));
    const std::string fraction = ".5Z";
    expected.replace(expected.find(fraction), fraction.size(), "Z");
    EXPECT_EQ(RunTool({"dump", "--as-host", "hand-written.gpx"}, folder.Path()).out, expected);
}

TEST(ConvertAsHostTest, NameAndUrlOfTheApplicationCanBeGiven) {
    const Folder folder;
    folder.Write("in.gpx", Gpx(kWaypoint));
    const Result result = RunTool({"convert", "--as-host", "in.gpx", "out.gpx", "--app", "Ä & <B>", "--url",
                                   "https://example.org/?a&b"},
                                  folder.Path());
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(ReadFile(folder.File("out.gpx")),
                HasSubstr(" creator=\"Ä &amp; &lt;B&gt; - https://example.org/?a&amp;b\"\r\n"));
}

TEST(ConvertAsHostTest, Version10SaysThatNoPointsCanBeReadFromIt) {
    const Folder folder;
    folder.Write("in.gpx", Gpx(kWaypoint));
    const Result result =
        RunTool({"convert", "--as-host", "--gpx", "1.0", "in.gpx", "out.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "");
    ASSERT_EQ(Lines(result.err).size(), 1U);
    EXPECT_THAT(result.err, StartsWith("vexagpx: "));
    EXPECT_THAT(result.err, HasSubstr("this library reads no points"));
    EXPECT_THAT(ReadFile(folder.File("out.gpx")), HasSubstr("<gpx version=\"1.0\"\r\n"));
    EXPECT_THAT(RunTool({"dump", "--as-host", "out.gpx"}, folder.Path()).out, HasSubstr(R"("waypoints":[])"));
    EXPECT_EQ(RunTool({"convert", "--as-host", "--gpx", "1.1", "in.gpx", "out.gpx"}, folder.Path()).err, "");
}

struct IllFormed {
    const char* field;
    std::string elements;
    const char* text = nullptr;
};

/// The message when the document is refused; the file to write stays unchanged.
std::string ComplaintAbout(const IllFormed& row) {
    const Folder folder;
    folder.Write("in.gpx", Gpx(row.elements));
    folder.Write("out.gpx", "as it was");
    const Result result = RunTool({"convert", "--as-host", "in.gpx", "out.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1) << row.field;
    EXPECT_EQ(result.out, "") << row.field;
    EXPECT_EQ(Lines(result.err).size(), 1U) << result.err;
    EXPECT_EQ(ReadFile(folder.File("out.gpx")), "as it was") << row.field;
    EXPECT_THAT(folder.Names(), ElementsAre("in.gpx", "out.gpx")) << row.field;
    return result.err;
}

TEST(ConvertAsHostTest, AnIllFormedResultNamesTheFieldAndLeavesTheTargetAsItWas) {
    const std::vector<IllFormed> rows = {
        {"layer name", Metadata("<t:layername>a &amp; b</t:layername>"), "\"a & b\""},
        {"layer key", Metadata("<t:layerkey>a &lt; b</t:layerkey>"), "\"a < b\""},
        {"form", Metadata("<t:form>&lt;x></t:form>"), "\"<x>\""},
        {"track GUID", Metadata("<t:trackGUID>&amp;unknown;</t:trackGUID>"), "\"&unknown;\""},
        {"waypoint GUID", Metadata("<t:waypointGUID>]]&gt;</t:waypointGUID>"), "\"]]>\""},
        {"layer name", Metadata("<t:layername>&lt;p:x/></t:layername>"), "\"<p:x/>\""},
        {"layer key", Metadata("<t:layername>fine</t:layername><t:layerkey>&amp;</t:layerkey>"), "\"&\""},
        {"GUID of waypoint 2", Extensions("<t:objectid>a&lt;b</t:objectid>"), "\"a<b\""},
        {"form key of waypoint 2", Extensions("<t:formdata><t:formstring key='a&amp;b'/></t:formdata>"),
         "\"a&b\""},
        {"form key of waypoint 2", Extensions("<t:formdata><t:formstring key='a&quot;b'/></t:formdata>"),
         "\"a\"b\""},
        {"form key of waypoint 2", Extensions("<t:formdata><t:formstring key='a&lt;b'/></t:formdata>"),
         "\"a<b\""},
    };
    for (const IllFormed& row : rows) {
        const std::string complaint = ComplaintAbout(row);
        EXPECT_THAT(complaint, StartsWith("vexagpx: ")) << row.field;
        EXPECT_THAT(complaint, HasSubstr("because of the " + std::string(row.field) + " " + row.text + "."));
        EXPECT_THAT(complaint, HasSubstr("out.gpx was not written. (line ")) << row.field;
    }
}

TEST(ConvertAsHostTest, AnIllFormedResultMakesNoNewFile) {
    const Folder folder;
    EXPECT_EQ(RunTool({"convert", "--as-host", Data("raw-markup.gpx"), folder.File("out.gpx")}).status, 1);
    EXPECT_THAT(folder.Names(), testing::IsEmpty());
}

TEST(ConvertAsHostTest, AnIllFormedResultDoesNotReachStandardOutput) {
    for (const char* out : {"-", "/dev/stdout"}) {
        const Result result = RunTool({"convert", "--as-host", Data("raw-markup.gpx"), out});
        EXPECT_EQ(result.status, 1) << out;
        EXPECT_EQ(result.out, "") << out;
    }
}

TEST(ConvertAsHostTest, AFileConvertedInPlaceIsUnchangedWhenTheResultIsIllFormed) {
    const Folder folder;
    const std::string document = ReadFile(Data("raw-markup.gpx"));
    folder.Write("a.gpx", document);
    EXPECT_EQ(RunTool({"convert", "--as-host", "a.gpx", "a.gpx"}, folder.Path()).status, 1);
    EXPECT_EQ(ReadFile(folder.File("a.gpx")), document);
}

std::string Changed(const std::string& field, const std::string& in) {
    return "vexagpx: The result would not say what the input says: the " + field +
           " is written without escapes and would be read as something else. out.gpx was not written. (" +
           in + ")\n";
}

/// Texts of every kind that is written unescaped, each with characters that XML reads as something else.
const std::vector<IllFormed> kChanged = {
    {"layer name", Metadata("<t:layername>a &amp;amp; b</t:layername>"), "\"a &amp; b\""},
    {"layer name", Metadata("<t:layername>a &lt;i>c&lt;/i></t:layername>"), "\"a <i>c</i>\""},
    {"layer key", Metadata("<t:layername>fine</t:layername><t:layerkey>&lt;!-- gone --></t:layerkey>"),
     "\"<!-- gone -->\""},
    {"form", Metadata("<t:form>&lt;![CDATA[x]]&gt;</t:form>"), "\"<![CDATA[x]]>\""},
    {"form", Metadata("<t:form>&lt;?pi?></t:form>"), "\"<?pi?>\""},
    {"track GUID", Metadata("<t:trackGUID>&amp;#65;</t:trackGUID>"), "\"&#65;\""},
    {"waypoint GUID",
     Metadata("<t:waypointGUID>g&lt;/tarvik:waypointGUID>&lt;tarvik:waypointGUID>"
              "h</t:waypointGUID>"),
     "\"g</tarvik:waypointGUID><tarvik:waypointGUID>h\""},
    {"layer name", Metadata("<t:layername>a&#13;b</t:layername>"), "\"a b\""},
    {"GUID of waypoint 2",
     Extensions("<t:objectid>x&lt;/tarvik:objectid>&lt;/extensions>&lt;/wpt>&lt;wpt lat=\"9\" lon=\"9\">"
                "&lt;extensions>&lt;tarvik:objectid></t:objectid>"),
     "\"x</tarvik:objectid></extensions></wpt><wpt lat=\"9\" lon=\"9\">…\""},
    {"form key of waypoint 2", Extensions("<t:formdata><t:formstring key='a&amp;lt;b'/></t:formdata>"),
     "\"a&lt;b\""},
    {"form key of waypoint 2",
     Extensions("<t:formdata><t:formstring key='a&quot; modtime=&quot;2020-01-01T00:00:00Z'/></t:formdata>"),
     "\"a\" modtime=\"2020-01-01T00:00:00Z\""},
    {"form key of waypoint 2", Extensions("<t:formdata><t:formstring key='a&#10;b'/></t:formdata>"),
     "\"a b\""},
    {"form key of waypoint 2", Extensions("<t:formdata><t:formstring key='a&#9;b'/></t:formdata>"),
     "\"a b\""},
};

TEST(ConvertAsHostTest, ATextThatWouldBeReadAsSomethingElseIsNamedAndNothingWritten) {
    for (const IllFormed& row : kChanged)
        EXPECT_EQ(ComplaintAbout(row), Changed(row.field + std::string(" ") + row.text, "in.gpx"));
}

TEST(ConvertAsHostTest, ATextThatWouldBeReadAsSomethingElseMakesNoNewFileAndNoOutput) {
    for (const IllFormed& row : {kChanged.front(), kChanged.back()}) {
        const Folder folder;
        folder.Write("in.gpx", Gpx(row.elements));
        EXPECT_EQ(RunTool({"convert", "--as-host", "in.gpx", "new.gpx"}, folder.Path()).status, 1);
        EXPECT_EQ(RunTool({"convert", "--as-host", "in.gpx", "in.gpx"}, folder.Path()).status, 1);
        EXPECT_EQ(ReadFile(folder.File("in.gpx")), Gpx(row.elements));
        EXPECT_THAT(folder.Names(), ElementsAre("in.gpx"));
        for (const char* out : {"-", "/dev/stdout"}) {
            const Result result = RunTool({"convert", "--as-host", "in.gpx", out}, folder.Path());
            EXPECT_EQ(result.status, 1) << out;
            EXPECT_EQ(result.out, "") << out;
        }
    }
}

TEST(ConvertAsHostTest, ATextThatWouldBeReadAsSomethingElseIsNamedWithItsSource) {
    const Folder folder;
    const std::string bad = Gpx(Extensions("<t:objectid>&lt;x/></t:objectid>"));
    const std::string field = "GUID of waypoint 2 \"<x/>\"";
    EXPECT_EQ(Tool({"convert", "--as-host", "-", "out.gpx"}).In(folder.Path()).Stdin(bad).Run().err,
              Changed(field, "standard input"));
    folder.Write("one.zip", testing_support::BuildZip({{.name = "d/a.gpx", .content = bad}}));
    EXPECT_EQ(RunTool({"convert", "--as-host", "one.zip", "out.gpx"}, folder.Path()).err,
              Changed(field, "one.zip/d/a.gpx"));
    folder.Write("two.zip", testing_support::BuildZip({{.name = "out.gpx", .content = bad},
                                                       {.name = "good.gpx", .content = Gpx(kWaypoint)}}));
    const Result result = RunTool({"convert", "--as-host", "two.zip", "folder"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, HasSubstr("folder/out.gpx was not written. (two.zip/out.gpx)\n"));
    EXPECT_THAT(folder.Tree(), ElementsAre("folder/", "folder/good.gpx", "one.zip", "two.zip"));
}

TEST(ConvertAsHostTest, AnyOtherTextIsWrittenAndReadBackAsItIs) {
    // Also characters that are markup only in other places, and markup in texts that are escaped.
    const std::vector<std::string> rows = {
        Metadata("<t:layername>a > b \"c\" 'd'\n\te\xC2\x85\xE2\x80\xA8</t:layername>"),
        Metadata("<t:layerkey> ]] > amp; lt; #65; --> </t:layerkey><t:form>日本</t:form>"),
        Metadata("<t:trackGUID>{a-b}</t:trackGUID><t:waypointGUID>?></t:waypointGUID>"),
        Extensions("<t:objectid>a\nb>\"'\t</t:objectid>"),
        Extensions("<t:formdata><t:formstring key=\"a>b'c]]>d\">&lt;&amp;amp;></t:formstring></t:formdata>"),
        "<metadata><name>&lt;i>&amp;amp;&lt;/i></name></metadata>"
        "<wpt lat='1' lon='2'><name>&lt;x/>&amp;lt;\"</name></wpt>",
    };
    for (const std::string& elements : rows) {
        const Folder folder;
        folder.Write("in.gpx", Gpx(elements));
        const Result result = RunTool({"convert", "--as-host", "in.gpx", "out.gpx"}, folder.Path());
        EXPECT_EQ(result.status, 0) << elements;
        EXPECT_EQ(result.err, "") << elements;
        std::string before = RunTool({"dump", "--as-host", "in.gpx"}, folder.Path()).out;
        // A host writes the name that the reader gives to a document without one.
        if (const std::string file = R"("file":"in.gpx",)";
            before.find(file + R"("name")") == std::string::npos)
            before.insert(before.find(file) + file.size(), R"("name":"in",)");
        folder.Write("in.gpx", ReadFile(folder.File("out.gpx")));
        EXPECT_EQ(RunTool({"dump", "--as-host", "in.gpx"}, folder.Path()).out, before) << elements;
    }
}

TEST(ConvertAsHostTest, PointDataIsNotWrittenAs10AndCannotChangeIt) {
    const Folder folder;
    folder.Write("points.gpx", Gpx(Extensions("<t:objectid>&lt;x/></t:objectid>")));
    folder.Write("metadata.gpx", Gpx(Metadata("<t:form>&lt;x/></t:form>")));
    EXPECT_EQ(
        RunTool({"convert", "--as-host", "--gpx", "1.0", "points.gpx", "out.gpx"}, folder.Path()).status, 0);
    EXPECT_EQ(
        RunTool({"convert", "--as-host", "--gpx", "1.0", "metadata.gpx", "out.gpx"}, folder.Path()).status,
        1);
}

TEST(ConvertAsHostTest, CharactersThatNoXmlCanHoldNameTheirField) {
    const std::string xml11 = "<?xml version='1.1'?>";
    const std::vector<std::pair<std::string, std::string>> rows = {
        {Gpx("<metadata><name>&#1;</name></metadata>"), "text of /gpx/metadata/name"},
        {Gpx(kWaypoint + "<wpt lat='1' lon='2'><name>&#1;</name></wpt>"), "text of /gpx/wpt[2]/name"},
        {Gpx("<trk/><trk><trkseg/><trkseg><trkpt lat='1' lon='2'/><trkpt lat='1' "
             "lon='2'><desc>&#2;</desc></trkpt>"
             "</trkseg></trk>"),
         "text of /gpx/trk[2]/trkseg[2]/trkpt[2]/desc"},
        {Gpx(Metadata("<t:form>&#1;x</t:form>")), "form \"x\""},
        {Gpx(Extensions("<t:objectid>&#1;x</t:objectid>")), "GUID of waypoint 2 \"x\""},
    };
    for (const auto& [document, field] : rows) {
        const Folder folder;
        folder.Write("in.gpx", xml11 + document);
        const Result result = RunTool({"convert", "--as-host", "in.gpx", "out.gpx"}, folder.Path());
        EXPECT_EQ(result.status, 1) << field;
        EXPECT_THAT(result.err, HasSubstr("because of the " + field + ". ")) << field;
        EXPECT_THAT(folder.Names(), ElementsAre("in.gpx")) << field;
    }
}

TEST(ConvertAsHostTest, TheApplicationsTextsAreNamedToo) {
    const Folder folder;
    EXPECT_THAT(RunTool({"convert", "--as-host", "--app", "x\x01", Data("empty.gpx"), folder.File("o")}).err,
                HasSubstr("because of the application name \"x\"."));
    EXPECT_THAT(RunTool({"convert", "--as-host", "--url", "y\x02", Data("empty.gpx"), folder.File("o")}).err,
                HasSubstr("because of the application URL \"y\"."));
    EXPECT_THAT(folder.Names(), testing::IsEmpty());
}

TEST(ConvertAsHostTest, PointDataIsNotWrittenAs10AndCannotSpoilIt) {
    const Folder folder;
    folder.Write("in.gpx", Gpx(Extensions("<t:objectid>a&lt;b</t:objectid>")));
    EXPECT_EQ(RunTool({"convert", "--as-host", "--gpx", "1.0", "in.gpx", "out.gpx"}, folder.Path()).status,
              0);
}

const std::string kPartlyRead = "<wpt lat='1' lon='2'><ele>x</ele><hdop>1</hdop></wpt>";

TEST(ConvertAsHostTest, WhatWasNotCarriedOverIsCountedAtTheEnd) {
    const Folder folder;
    folder.Write("a b.gpx", Gpx(kPartlyRead));
    folder.Write("one.gpx", Gpx("<wpt lat='1' lon='2'><hdop>1</hdop></wpt>"));
    const Result two = RunTool({"convert", "--as-host", "a b.gpx", "out.gpx"}, folder.Path());
    EXPECT_EQ(two.status, 0);
    EXPECT_EQ(two.err, "vexagpx: Note: 2 things in a b.gpx were not carried over; "
                       "\"vexagpx check 'a b.gpx'\" lists them.\n");
    EXPECT_EQ(
        RunTool({"convert", "--as-host", "one.gpx", "out.gpx"}, folder.Path()).err,
        "vexagpx: Note: 1 thing in one.gpx was not carried over; \"vexagpx check one.gpx\" lists it.\n");
    const Result old = RunTool({"convert", "--as-host", "--gpx", "1.0", "one.gpx", "out.gpx"}, folder.Path());
    ASSERT_EQ(Lines(old.err).size(), 2U);
    EXPECT_THAT(Lines(old.err)[1], StartsWith("vexagpx: Note: 1 thing "));
}

TEST(ConvertAsHostTest, TheNoteNamesNoFileThatTheConversionHasReplaced) {
    const Folder folder;
    folder.Write("a.gpx", Gpx(kPartlyRead));
    EXPECT_EQ(
        Tool({"convert", "--as-host", "-", "out.gpx"}).In(folder.Path()).Stdin(Gpx(kPartlyRead)).Run().err,
        "vexagpx: Note: 2 things in standard input were not carried over; "
        "\"vexagpx check -\" with the same input lists them.\n");
    EXPECT_EQ(RunTool({"convert", "--as-host", "a.gpx", "a.gpx"}, folder.Path()).err,
              "vexagpx: Note: 2 things in a.gpx were not carried over, and the file that held them was "
              "replaced.\n");
}

TEST(ConvertAsHostTest, TheCountOfAnArchiveIsThatOfItsWrittenDocuments) {
    const Folder folder;
    folder.Write("a.zip",
                 testing_support::BuildZip({{.name = "one.gpx", .content = Gpx(kPartlyRead)},
                                            {.name = "two.gpx", .content = Gpx(kPartlyRead)},
                                            {.name = "bad.gpx", .content = Gpx(kPartlyRead) + "<"}}));
    const Result result = RunTool({"convert", "--as-host", "a.zip", "out"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    ASSERT_EQ(Lines(result.err).size(), 2U);
    EXPECT_EQ(Lines(result.err)[1], "vexagpx: Note: 4 things in a.zip were not carried over; "
                                    "\"vexagpx check a.zip\" lists them.");
}

TEST(ConvertAsHostTest, AFailedConversionCountsNothing) {
    const Folder folder;
    folder.Write("a.gpx", Gpx(kPartlyRead) + "<");
    EXPECT_EQ(Lines(RunTool({"convert", "--as-host", "a.gpx", "out.gpx"}, folder.Path()).err).size(), 1U);
}

TEST(ConvertAsHostTest, TheCorpusConvertsAndReadsBack) {
    const std::vector<std::string> files = Corpus("gpx");
    if (files.empty())
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    const Folder folder;
    for (const std::string& file : files) {
        const bool readable = RunTool({"dump", "--as-host", file}).status == 0;
        const Result result = RunTool({"convert", "--as-host", file, folder.File("out.gpx")});
        EXPECT_EQ(result.status, readable ? 0 : 1) << file << "\n" << result.err;
        if (readable) {
            EXPECT_EQ(RunTool({"dump", "--as-host", folder.File("out.gpx")}).status, 0) << file;
        }
    }
}

} // namespace
} // namespace cli
