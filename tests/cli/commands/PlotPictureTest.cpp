// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <memory>

namespace {

using cli::Corpus;
using cli::Failed;
using cli::Folder;
using cli::Gpx;
using cli::ReadFile;
using cli::Result;
using cli::RunTool;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

const std::string kTrack =
    "<trk><name>up &lt;b&gt; &amp;amp; &#x202e;down</name><trkseg>"
    "<trkpt lat='47' lon='8'><ele>400</ele><time>2020-01-01T10:00:00Z</time></trkpt>"
    "<trkpt lat='47.001' lon='8'><ele>450</ele><time>2020-01-01T10:01:00Z</time></trkpt>"
    "<trkpt lat='47.002' lon='8.001'><ele>420</ele><time>2020-01-01T10:02:00Z</time></trkpt>"
    "</trkseg></trk>";

std::string PictureOf(const std::string& document, const std::string& out,
                      std::vector<std::string> options = {}) {
    const Folder folder;
    folder.Write("t<&>.gpx", document);
    options.insert(options.begin(), {"plot", "t<&>.gpx", "-o", out});
    const Result result = RunTool(options, folder.Path());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, "");
    return ReadFile(folder.File(out));
}

using XmlDocument = std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)>;

XmlDocument Parse(const std::string& svg) {
    return {xmlReadMemory(svg.data(), static_cast<int>(svg.size()), "t.svg", nullptr,
                          XML_PARSE_NONET | XML_PARSE_HUGE),
            xmlFreeDoc};
}

std::string TextOf(const xmlDoc* document, const std::string& name) {
    for (xmlNode* node = xmlDocGetRootElement(document)->children; node != nullptr; node = node->next)
        if (node->type == XML_ELEMENT_NODE && reinterpret_cast<const char*>(node->name) == name) {
            const std::unique_ptr<xmlChar, decltype(xmlFree)> text(xmlNodeGetContent(node), xmlFree);
            return reinterpret_cast<const char*>(text.get());
        }
    return "(none)";
}

std::string AttributeOf(xmlDoc* document, const char* name) {
    const std::unique_ptr<xmlChar, decltype(xmlFree)> text(
        xmlGetProp(xmlDocGetRootElement(document), reinterpret_cast<const xmlChar*>(name)), xmlFree);
    return text ? reinterpret_cast<const char*>(text.get()) : "(none)";
}

TEST(PlotPictureTest, SvgIsWellFormedAndSaysWhatItShows) {
    const XmlDocument svg = Parse(PictureOf(Gpx(kTrack), "t.svg"));
    ASSERT_TRUE(svg);
    EXPECT_STREQ(reinterpret_cast<const char*>(xmlDocGetRootElement(svg.get())->name), "svg");
    EXPECT_EQ(AttributeOf(svg.get(), "viewBox"), "0 0 1000 800");
    EXPECT_EQ(TextOf(svg.get(), "title"), "t<&>.gpx");
    EXPECT_EQ(TextOf(svg.get(), "desc"),
              "A map of 1 track, 0 routes and 0 waypoints above a profile of height over distance.");
}

TEST(PlotPictureTest, PngHasTheSize) {
    const std::string png = PictureOf(Gpx(kTrack), "t.PNG", {"--size", "640x300"});
    ASSERT_GT(png.size(), 1000U);
    EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1a\n");
    EXPECT_EQ(png.substr(16, 8), std::string("\0\0\x02\x80\0\0\x01\x2c", 8));
}

TEST(PlotPictureTest, PdfHasAPageAndItsEnd) {
    const std::string pdf = PictureOf(Gpx(kTrack), "t.pdf", {"--size", "800x600"});
    EXPECT_THAT(pdf, StartsWith("%PDF-1."));
    EXPECT_THAT(pdf, HasSubstr("[ 0 0 600 450 ]"));
    EXPECT_THAT(pdf.substr(pdf.size() - 10), HasSubstr("%%EOF"));
}

TEST(PlotPictureTest, TheSameFileGivesTheSameBytes) {
    for (const char* out : {"t.svg", "t.png", "t.pdf"})
        EXPECT_EQ(PictureOf(Gpx(kTrack), out), PictureOf(Gpx(kTrack), out)) << out;
}

TEST(PlotPictureTest, TheColoursChangeThePicture) {
    const std::string plain = PictureOf(Gpx(kTrack), "t.svg");
    const std::string heights = PictureOf(Gpx(kTrack), "t.svg", {"--colour", "height"});
    EXPECT_NE(plain, heights);
    EXPECT_NE(heights, PictureOf(Gpx(kTrack), "t.svg", {"--colour", "speed"}));
}

TEST(PlotPictureTest, NothingToDrawIsAnErrorAndNothingIsWritten) {
    const Folder folder;
    folder.Write("t.gpx", Gpx(""));
    EXPECT_TRUE(Failed(RunTool({"plot", "t.gpx", "-o", "t.svg"}, folder.Path()),
                       "There is no point to draw. t.svg was not written."));
    EXPECT_THAT(folder.Names(), testing::ElementsAre("t.gpx"));
}

TEST(PlotPictureTest, WrongOptionsAreNamed) {
    const auto errorOf = [](std::vector<std::string> options) {
        options.insert(options.begin(), {"plot", "t.gpx"});
        const Result result = RunTool(options);
        EXPECT_EQ(result.status, 2);
        return result.err;
    };
    EXPECT_THAT(errorOf({"-o", "t.gif"}), HasSubstr("must end with .svg, .png, .pdf or .html"));
    EXPECT_THAT(errorOf({"-o", "t.svg", "--size", "100x"}),
                HasSubstr("a width and a height, such as 1000x800"));
    EXPECT_THAT(errorOf({"-o", "t.svg", "--size", "99999x800"}), HasSubstr("from 200x150 to 10000x10000"));
    EXPECT_THAT(errorOf({"-o", "t.svg", "--colour", "pink"}), HasSubstr("--colour"));
}

TEST(PlotPictureTest, TheExampleOfTheManualIsDrawn) {
    const Folder folder;
    const std::string out = folder.File("plot.svg");
    const Result result =
        RunTool({"plot", cli::Data("round.gpx"), "-o", out, "--size", "800x600", "--colour", "height"});
    EXPECT_EQ(result.status, 0);
    const XmlDocument svg = Parse(ReadFile(out));
    ASSERT_TRUE(svg);
    EXPECT_EQ(TextOf(svg.get(), "title"), "Round of the lakes");
    EXPECT_EQ(TextOf(svg.get(), "desc"),
              "A map of 1 track, 0 routes and 4 waypoints above a profile of height over "
              "distance, coloured by height.");
}

TEST(PlotPictureTest, SeveralFilesAreOnePicture) {
    const Folder folder;
    folder.Write("a.gpx", Gpx(kTrack));
    folder.Write("b.gpx", Gpx(cli::kWaypoint));
    EXPECT_EQ(RunTool({"plot", "a.gpx", "b.gpx", "-o", "t.svg"}, folder.Path()).status, 0);
    const XmlDocument svg = Parse(ReadFile(folder.File("t.svg")));
    ASSERT_TRUE(svg);
    EXPECT_EQ(TextOf(svg.get(), "title"), "a.gpx, b.gpx");
    EXPECT_THAT(TextOf(svg.get(), "desc"), HasSubstr("1 track, 0 routes and 1 waypoint "));
}

TEST(PlotPictureTest, EveryFileOfTheCorpusIsDrawn) {
    const Folder folder;
    for (const std::string& file : Corpus("gpx")) {
        const Result result = RunTool({"plot", file, "-o", "t.svg", "--size", "600x500"}, folder.Path());
        if (result.status == 0)
            EXPECT_TRUE(Parse(ReadFile(folder.File("t.svg")))) << file;
        else
            EXPECT_THAT(result.err, HasSubstr("There is no point to draw.")) << file;
    }
}

} // namespace
