// SPDX-License-Identifier: MIT

// What files have besides the model, in the same version, in the other one, and in another document.
#include <vexaTransferLib/GpxStandardWriter.h>

#include "support/StandardWriting.h"
#include "support/comparison/GpxComparison.h"
#include "support/comparison/SchemaValidation.h"

#include <vexaTransferLib/GpxPointDetails.h>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

using Found = std::vector<MissingContent>;

std::string Rewritten(const std::string& text, const GpxVersion& version = kGpx11) {
    return JoinedContent(StandardText(ReadCompletely(text), version).text);
}
std::string ReportsOf(const std::string& text, const GpxVersion& version) {
    return StandardText(ReadCompletely(text), version).Reports();
}

// Expects that the published schema of GPX 1.1 accepts it, where the schema is.
void ExpectValid(const std::string& xml) {
    const std::filesystem::path schema = std::filesystem::path(VEXA_SHARED) / "schemas" / "gpx11.xsd";
    if (std::filesystem::exists(schema))
        EXPECT_EQ(ValidateAgainst(xml, schema.string()), std::nullopt) << xml;
    else
        GTEST_LOG_(INFO) << "not validated, because the published schema is not here: " << schema;
}

// Expects that everything is there after writing, in both versions, and that writing again gives the same.
void ExpectKept(const std::string& text) {
    for (const GpxTarget target : {GpxTarget::k10, GpxTarget::k11}) {
        const GpxVersion& version = target == GpxTarget::k10 ? kGpx10 : kGpx11;
        const std::string written = StandardText(ReadCompletely(text), version).text;
        EXPECT_EQ(FindMissing(text, written, target), Found()) << text << written;
        EXPECT_EQ(FindInvented(text, written), Found()) << text << written;
        EXPECT_EQ(StandardText(ReadCompletely(written), version).text, written);
    }
}

// Expects that the waypoints of both texts are there in one document, which has the second as its source or none.
void ExpectKeptTogether(const std::string& first, const std::string& second) {
    const GpxDocument one = ReadCompletely(first);
    GpxDocument both = ReadCompletely(second);
    const std::size_t before = both.GetWaypointCount();
    both.AddWaypoint(*one.GetWaypointIter());
    const std::string text = StandardText(both, kGpx11).text;
    GpxDocument alone;
    alone.AddWaypoint(*(ReadCompletely(text).GetWaypointIter() + static_cast<std::ptrdiff_t>(before)));
    const std::string again = StandardText(alone, kGpx11).text;
    EXPECT_EQ(FindMissing(first, again, GpxTarget::k11), Found()) << text << again;
    EXPECT_EQ(FindInvented(first, again), Found()) << text << again;
    GpxDocument stranger;
    stranger.AddWaypoint(*one.GetWaypointIter());
    EXPECT_EQ(FindMissing(first, StandardText(stranger, kGpx11).text, GpxTarget::k11), Found());
}

// Namespaces.

TEST(GpxStandardWriterSourcesTest, ForeignElementsKeepTheirNamespaces) {
    for (const char* content : {"<x:a x:b='1'><x:c/></x:a>", "<a xmlns='urn:a'><b/></a>",
                                "<a xmlns=''><b/></a>", "<x:a><y:b xmlns:y='urn:y' y:c='1'/></x:a>",
                                "<x:a xmlns:x='urn:other'/>", "<x:a xmlns='urn:d'><b/></x:a>"}) {
        ExpectKept(Gpx10(Waypoint(content), " xmlns:x='urn:x'"));
        ExpectKept(
            Gpx11(Waypoint("<extensions>" + std::string(content) + "</extensions>"), " xmlns:x='urn:x'"));
        ExpectKept(Gpx11("<extensions>" + std::string(content) + "</extensions>", " xmlns:x='urn:x'"));
        ExpectKept(
            Gpx11("<trk><extensions>" + std::string(content) + "</extensions></trk>", " xmlns:x='urn:x'"));
    }
}

TEST(GpxStandardWriterSourcesTest, NamespacesAreEscaped) {
    ExpectKept(Gpx11(Waypoint("<extensions><x:a/></extensions>"), " xmlns:x='urn:a?b&amp;c=d'"));
    ExpectKeptTogether(Gpx11(Waypoint("<extensions><x:a/></extensions>"), " xmlns:x='urn:a?b&amp;c=d'"),
                       Gpx11(""));
}

TEST(GpxStandardWriterSourcesTest, GpxElementsLoseTheirPrefix) {
    const std::string text =
        std::string("<g:gpx xmlns:g=\"") + kGpx11Uri +
        "\" version='1.1' creator='c' xmlns:x='urn:x'><g:wpt lat='1' lon='2'><g:name>n</g:name>"
        "<g:link href='a'><g:text>t</g:text></g:link><g:extensions><x:a/></g:extensions></g:wpt>"
        "<g:trk><g:trkseg><g:trkpt lat='1' lon='2'/></g:trkseg></g:trk></g:gpx>";
    ExpectKept(text);
    EXPECT_EQ(Rewritten(text), "<wpt lat='1' lon='2'><name>n</name><link href='a'><text>t</text></link>"
                               "<extensions><x:a/></extensions></wpt>"
                               "<trk><trkseg><trkpt lat='1' lon='2'></trkpt></trkseg></trk>");
}

TEST(GpxStandardWriterSourcesTest, ForeignElementsWithoutAPrefixStayForeign) {
    for (const char* uri : {"", "xmlns='urn:default' "}) {
        const std::string start =
            std::string("<g:gpx ") + uri + "xmlns:g=\"" + kGpx11Uri + "\" version='1.1' creator='c'>";
        ExpectKept(start + "<g:wpt lat='1' lon='2'><g:extensions><a><b/></a></g:extensions></g:wpt></g:gpx>");
        ExpectKept(start + "<g:wpt lat='1' lon='2'><a>1</a></g:wpt></g:gpx>");
        ExpectKept(start +
                   "<g:trk><g:trkseg><g:trkpt lat='1' lon='2'><a>1</a></g:trkpt></g:trkseg></g:trk></g:gpx>");
    }
}

TEST(GpxStandardWriterSourcesTest, ASourceWithoutANamespaceOrOfAnotherOneIsGpx) {
    const std::string content = Waypoint("<name>n</name><extensions><x:a xmlns:x='urn:x'/></extensions>");
    for (const char* attributes :
         {"", " xmlns='urn:unknown'", " xmlns='http://www.topografix.com/GPX/1/0'"}) {
        const std::string text = "<gpx version='1.1'" + std::string(attributes) + ">" + content + "</gpx>";
        EXPECT_EQ(Rewritten(text), content);
        GpxDocument other = ReadCompletely(Gpx11(""));
        other.AddWaypoint(*ReadCompletely(text).GetWaypointIter());
        EXPECT_EQ(JoinedContent(StandardText(other, kGpx11).text), content);
    }
}

TEST(GpxStandardWriterSourcesTest, ElementsOfTheOtherVersionTakeThatOfTheFile) {
    const std::string inner = Waypoint("<name>n</name>");
    const std::string text = Gpx11("<wpt xmlns=\"" + std::string(kGpx10Uri) + "\"" + inner.substr(4));
    EXPECT_EQ(Rewritten(text), inner);
    EXPECT_EQ(Rewritten(text, kGpx10), inner);
    for (const std::string name : {kGpx10Uri, kGpx11Uri}) {
        const std::string declared = Waypoint("<name xmlns=\"" + name + "\">n</name>");
        EXPECT_EQ(Rewritten(Gpx10(declared)), inner);
        EXPECT_EQ(Rewritten(Gpx11(declared), kGpx10), inner);
    }
    const std::string deep =
        Waypoint("<link href='a'><text xmlns=\"" + std::string(kGpx11Uri) + "\">t</text></link>");
    EXPECT_EQ(Rewritten(Gpx11(deep)), Waypoint("<link href='a'><text>t</text></link>"));
}

TEST(GpxStandardWriterSourcesTest, AttributesKeepTheirNamespaces) {
    ExpectKept(Gpx11(
        "<wpt lat='1' lon='2' xmlns:y='urn:y' y:a='1' y:b='2' xml:lang='de'><name y:c='3'>n</name></wpt>"));
    ExpectKept(Gpx11(
        "<trk xmlns:y='urn:y' y:a='1'><trkseg y:b='2'><trkpt lat='1' lon='2' y:c='3'/></trkseg></trk>"));
    const std::string metadata = "<metadata xmlns:y=\"urn:y\" y:a='1'><name>n</name></metadata>";
    EXPECT_EQ(Rewritten(Gpx11(metadata)), metadata);
    EXPECT_EQ(ReportsOf(Gpx11(metadata), kGpx10),
              "document: metadata: GPX 1.0 has no place for its attributes.\n");
    ExpectKept(Gpx11("", " xmlns:y='urn:y' y:a='1'"));
}

TEST(GpxStandardWriterSourcesTest, ObjectsBringTheirNamespacesIntoAnotherDocument) {
    const std::string clash = Gpx11(Waypoint("<extensions><x:b/></extensions>"), " xmlns:x='urn:second'");
    for (const char* content : {"<x:a x:b='1'><x:c/></x:a>", "<a xmlns='urn:a'><b/></a>",
                                "<a xmlns=''><b/></a>", "<a xmlns='urn:a'><x:b/></a>"}) {
        const std::string first =
            Gpx11(Waypoint("<name>n</name><extensions>" + std::string(content) + "</extensions>"),
                  " xmlns:x='urn:x'");
        ExpectKeptTogether(first, clash);
        ExpectKeptTogether(first, Gpx11(""));
        ExpectKeptTogether(first, "<gpx version='1.1'/>");
    }
    ExpectKeptTogether(
        "<g:gpx xmlns='urn:d' xmlns:g=\"" + std::string(kGpx11Uri) +
            "\" version='1.1'><g:wpt lat='1' lon='2'><g:name>n</g:name><g:extensions><a/></g:extensions>"
            "</g:wpt></g:gpx>",
        clash);
    ExpectKeptTogether(Gpx11("<wpt lat='1' lon='2' x:a='1'><name x:b='2'>n</name></wpt>", " xmlns:x='urn:x'"),
                       clash);
}

TEST(GpxStandardWriterSourcesTest, APrefixInAValueIsDeclaredToo) {
    const GpxDocument one = ReadCompletely(
        Gpx11(Waypoint("<extensions><y:a type=\"x:b\"/></extensions>"), " xmlns:x='urn:x' xmlns:y='urn:y'"));
    GpxDocument other;
    {
        GpxDocument gone = ReadCompletely(Gpx11(""));
        gone.AddWaypoint(*one.GetWaypointIter());
        other = gone;
    }
    const std::string text = JoinedContent(StandardText(other, kGpx11).text);
    EXPECT_NE(text.find("xmlns:x=\"urn:x\""), std::string::npos) << text;
    EXPECT_NE(text.find("xmlns:y=\"urn:y\""), std::string::npos) << text;
}

// Encodings and document types.

TEST(GpxStandardWriterSourcesTest, TheResultIsInUtf8WithEntitiesExpanded) {
    EXPECT_EQ(
        Rewritten("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + Gpx11(Waypoint("<name>\xE9</name>"))),
        Waypoint("<name>\xC3\xA9</name>"));
    // A file with a document type is read when it is valid by it.
    const std::string type =
        "<!DOCTYPE gpx [<!ELEMENT gpx ANY><!ATTLIST gpx xmlns CDATA #IMPLIED version CDATA #IMPLIED "
        "creator CDATA #IMPLIED><!ELEMENT wpt ANY><!ATTLIST wpt lat CDATA '1' lon CDATA #IMPLIED>"
        "<!ELEMENT name ANY><!ELEMENT cmt ANY><!ENTITY e 'a&#38;lt;b'>"
        "<!ENTITY w '<cmt>c</cmt>'>]>";
    EXPECT_EQ(Rewritten(type + Gpx11("<wpt lon=\"2\"><name>&e;</name>&w;</wpt>")),
              "<wpt lon=\"2\" lat=\"1\"><name>a&lt;b</name><cmt>c</cmt></wpt>");
}

// Unread elements.

TEST(GpxStandardWriterSourcesTest, UnreadPointsStayAtTheirPlaces) {
    const auto point = [](const std::string& name, const std::string& latitude) {
        return "<" + name + " lat=\"" + latitude + "\" lon=\"2\"/>";
    };
    std::string text;
    for (const char* latitude : {"91", "1", "x", "2", "92"})
        text += point("wpt", latitude);
    for (const char* begin : {"<rte>", "<rte><name>n</name>"}) {
        text += begin;
        for (const char* latitude : {"91", "1", "x", "2", "92"})
            text += point("rtept", latitude);
        text += "</rte>";
    }
    text += "<trk>";
    for (const char* latitudes : {"a1b", "1", "cd"}) {
        text += "<trkseg>";
        for (const char* latitude = latitudes; *latitude != 0; ++latitude)
            text += point("trkpt", std::string(1, *latitude));
        text += "</trkseg>";
    }
    text += "</trk>";
    EXPECT_EQ(Rewritten(Gpx11(text)), text);
    EXPECT_EQ(Rewritten(Gpx11(text), kGpx10), text);
}

// What one version has and the other has not.

TEST(GpxStandardWriterSourcesTest, CourseAndSpeedAreExtensionsOf11) {
    const std::string text =
        Gpx10(TrackPoint("<ele>1</ele><course>52</course><speed>1.50</speed><sat>3</sat>"));
    ExpectKept(text);
    const std::string in11 = StandardText(ReadCompletely(text), kGpx11).text;
    EXPECT_EQ(JoinedContent(in11),
              TrackPoint("<ele>1</ele><sat>3</sat><extensions><course xmlns=\"" + std::string(kGpx10Uri) +
                         "\">52</course><speed xmlns=\"" + kGpx10Uri + "\">1.50</speed></extensions>"));
    EXPECT_EQ(Rewritten(in11), JoinedContent(in11));
    EXPECT_EQ(Rewritten(in11, kGpx10), JoinedContent(text));
}

TEST(GpxStandardWriterSourcesTest, ASpeedWithAPrefixOrADeclarationIsOneOf10) {
    for (const char* speed :
         {"<g:speed>1</g:speed>", "<speed xmlns='http://www.topografix.com/GPX/1/0'>1</speed>"})
        EXPECT_EQ(
            Rewritten(Gpx10(TrackPoint(speed), " xmlns:g='http://www.topografix.com/GPX/1/0'")),
            TrackPoint("<extensions><speed xmlns=\"" + std::string(kGpx10Uri) + "\">1</speed></extensions>"));
}

TEST(GpxStandardWriterSourcesTest, ElementsOfGpxInExtensionsStayThere) {
    for (const char* content :
         {"<wpt lat=\"1\" lon=\"2\"/>", "<name>n</name>", "<objectid>i</objectid>", "<a xmlns=''/>"}) {
        const std::string extensions = "<extensions>" + std::string(content) + "</extensions>";
        for (const std::string& object : {Waypoint(extensions), TrackPoint(extensions), extensions}) {
            EXPECT_EQ(Rewritten(Gpx11(object), kGpx10), object);
            EXPECT_EQ(Rewritten(Gpx10(object)), object);
        }
    }
}

TEST(GpxStandardWriterSourcesTest, AuthorAndEmailGoBothWays) {
    const std::string in10 = "<author>A &amp; B</author><email>a@b.c</email>";
    const std::string in11 =
        "<metadata><author><name>A &amp; B</name><email id=\"a\" domain=\"b.c\"/></author></metadata>";
    EXPECT_EQ(Rewritten(Gpx10(in10)), in11);
    EXPECT_EQ(Rewritten(Gpx11(in11), kGpx10), in10);
    EXPECT_EQ(Rewritten(Gpx10("<email>a@b.c</email>")),
              "<metadata><author><email id=\"a\" domain=\"b.c\"/></author></metadata>");
    EXPECT_EQ(
        Rewritten(Gpx11("<metadata><author><email id=\"a\" domain=\"b.c\"/></author></metadata>"), kGpx10),
        "<email>a@b.c</email>");
    EXPECT_EQ(Rewritten(Gpx10("<author>A</author>")), "<metadata><author><name>A</name></author></metadata>");
    const std::string withLink = "<metadata><author><name>A</name><link href='a'/></author></metadata>";
    EXPECT_EQ(Rewritten(Gpx11(withLink)), withLink);
    EXPECT_EQ(Rewritten(Gpx11(withLink), kGpx10), "<author>A</author>");
    EXPECT_EQ(ReportsOf(Gpx11(withLink), kGpx10),
              "document: link: GPX 1.0 has no place for the link of an author.\n");
}

TEST(GpxStandardWriterSourcesTest, LinksGoBothWays) {
    const std::string in10 = "<url>a?b&amp;c</url><urlname>n</urlname>";
    const std::string in11 = "<link href=\"a?b&amp;c\"><text>n</text></link>";
    EXPECT_EQ(Rewritten(Gpx10(Waypoint(in10))), Waypoint(in11));
    EXPECT_EQ(Rewritten(Gpx11(Waypoint(in11)), kGpx10), Waypoint(in10));
    EXPECT_EQ(Rewritten(Gpx10(in10)), "<metadata>" + in11 + "</metadata>");
    EXPECT_EQ(Rewritten(Gpx11("<metadata>" + in11 + "</metadata>"), kGpx10), in10);
    EXPECT_EQ(Rewritten(Gpx10("<rte>" + in10 + "</rte>")), "<rte>" + in11 + "</rte>");
    EXPECT_EQ(Rewritten(Gpx11("<trk>" + in11 + "</trk>"), kGpx10), "<trk>" + in10 + "</trk>");
}

// An empty address is a valid one.
TEST(GpxStandardWriterSourcesTest, TheNameOfALinkWithAnEmptyAddressIsKept) {
    const std::string in10 = "<url></url><urlname>n</urlname>";
    const std::string in11 = "<link href=\"\"><text>n</text></link>";
    for (const char* address : {"<url></url>", "<url/>"}) {
        const std::string file = Gpx10(Waypoint(std::string(address) + "<urlname>n</urlname>"));
        EXPECT_EQ(Rewritten(file), Waypoint(in11));
        EXPECT_EQ(ReportsOf(file, kGpx11), "");
        ExpectValid(StandardText(ReadCompletely(file), kGpx11).text);
    }
    EXPECT_EQ(Rewritten(Gpx11(Waypoint(in11))), Waypoint(in11));
    EXPECT_EQ(Rewritten(Gpx11(Waypoint(in11)), kGpx10), Waypoint(in10));
    const GpxDocument read = ReadCompletely(Gpx11(Waypoint(in11)));
    const std::vector<GpxLink> links = GpxPointDetails(read.GetWaypointIter()->GetElement()).GetLinks();
    ASSERT_EQ(links.size(), 1U);
    EXPECT_EQ(links[0].href, icu::UnicodeString());
    EXPECT_EQ(links[0].text, icu::UnicodeString(u"n"));
}

// GPX 1.1 allows elements of every namespace but its own in `extensions`.
TEST(GpxStandardWriterSourcesTest, UnknownElementsOfGpx10BecomeExtensionsOfTheirNamespace) {
    const std::string in10 = " xmlns=\"" + std::string(kGpx10Uri) + "\"";
    const std::string unknown = "<foo a='1'>2<bar/></foo>";
    const std::string extension = "<foo" + in10 + " a='1'>2<bar/></foo>";
    const std::string extensions = "<extensions>" + extension + "</extensions>";
    struct Row {
        std::string in10;
        std::string in11;
    };
    const std::vector<Row> rows = {
        {Waypoint("<name>n</name>" + unknown), Waypoint("<name>n</name>" + extensions)},
        {"<rte>" + unknown + "</rte>", "<rte>" + extensions + "</rte>"},
        {"<trk>" + unknown + "</trk>", "<trk>" + extensions + "</trk>"},
        {"<trk><trkseg>" + unknown + "</trkseg></trk>", "<trk><trkseg>" + extensions + "</trkseg></trk>"},
        {unknown, extensions},
        {Waypoint(unknown + "<x:a xmlns:x='urn:x'/>"),
         Waypoint("<extensions><x:a xmlns:x='urn:x'/>" + extension + "</extensions>")},
    };
    for (const Row& row : rows) {
        const std::string written = StandardText(ReadCompletely(Gpx10(row.in10)), kGpx11).text;
        EXPECT_EQ(JoinedContent(written), row.in11);
        ExpectValid(written);
        EXPECT_EQ(StandardText(ReadCompletely(written), kGpx11).text, written);
        EXPECT_EQ(ReportsOf(Gpx10(row.in10), kGpx11), "");
    }
    // GPX 1.0 has no place for them at all: they are as wrong as they were.
    EXPECT_EQ(Rewritten(Gpx10(Waypoint(unknown)), kGpx10), Waypoint(unknown));
    EXPECT_EQ(Rewritten(Gpx11(Waypoint(unknown))), Waypoint(unknown));
}

TEST(GpxStandardWriterSourcesTest, AVersionWithoutAPlaceLeavesOutAndReports) {
    const std::string links = "<link href='a'><type>t</type></link><link href='b'/><link href='c'/>";
    EXPECT_EQ(Rewritten(Gpx11(Waypoint(links)), kGpx10), Waypoint("<url>a</url>"));
    EXPECT_EQ(ReportsOf(Gpx11(Waypoint("") + Waypoint(links)), kGpx10),
              "waypoint 2: type: GPX 1.0 has no place for the type of a link.\n"
              "waypoint 2: link: GPX 1.0 has a place for one link only.\n"
              "waypoint 2: link: GPX 1.0 has a place for one link only.\n");
    EXPECT_EQ(Rewritten(Gpx10(Waypoint("<urlname>n</urlname>"))), Waypoint(""));
    EXPECT_EQ(ReportsOf(Gpx10(Waypoint("<urlname>n</urlname>")), kGpx11),
              "waypoint 1: urlname: GPX 1.1 has no place for the name of a link without its address.\n");
    EXPECT_EQ(ReportsOf(Gpx11("<metadata><copyright author='a'/></metadata>"), kGpx10),
              "document: copyright: GPX 1.0 has no place for it.\n");
    EXPECT_EQ(ReportsOf(Gpx11("<trk/><trk><trkseg/><trkseg><trkpt lat='1' lon='2'/><extensions><a xmlns='b'/>"
                              "</extensions></trkseg></trk>"),
                        kGpx10),
              "track 2, segment 2: extensions: GPX 1.0 has no place for it in a segment.\n");
}

TEST(GpxStandardWriterSourcesTest, TheOrderOfLinksIsKept) {
    EXPECT_EQ(Rewritten(Gpx11(Waypoint("<url>a</url><urlname>n</urlname><link href='b'/><url>c</url>"))),
              Waypoint("<link href=\"a\"><text>n</text></link><link href='b'/><link href=\"c\"></link>"));
    EXPECT_EQ(Rewritten(Gpx11(Waypoint("<link/><link href='b'/>")), kGpx10), Waypoint("<url>b</url>"));
}

TEST(GpxStandardWriterSourcesTest, ElementsComeInTheOrderOfTheSchema) {
    EXPECT_EQ(Rewritten(Gpx11("<trk/><rte/>" +
                              Waypoint("<time>t</time><sym>s</sym><ele>1</ele><extensions/>"
                                       "<name>n</name>") +
                              "<metadata><time>t</time><name>n</name></metadata>")),
              "<metadata><name>n</name><time>t</time></metadata>" +
                  Waypoint("<ele>1</ele><time>t</time><name>n</name><sym>s</sym><extensions/>") +
                  "<rte></rte><trk></trk>");
}

// Cost. A writer that takes the square of the count needs hours for these.

std::string Repeated(std::size_t count, const std::string& text) {
    std::string all;
    all.reserve(count * text.size());
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

double SecondsToWrite(const std::string& text) {
    const GpxDocument document = ReadCompletely(text);
    const auto start = std::chrono::steady_clock::now();
    for (const GpxVersion& version : {kGpx10, kGpx11})
        StandardText(document, version);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

TEST(GpxStandardWriterSourcesTest, TheTimeIsProportionalToTheLength) {
    constexpr std::size_t kCount = 200'000;
    const std::string log = "<g:log id='1'><g:text>t</g:text></g:log>";
    // Each is read anew, not copied, for its points are not in the order of the schema.
    const std::string texts[] = {
        Gpx11(Repeated(kCount, Waypoint("<name>n</name><ele>1</ele>"))),
        Gpx11(Waypoint(Repeated(kCount, "<link href='a'/>") + "<name>n</name>")),
        Gpx11("<metadata>" + Repeated(kCount, "<link href='a'/>") + "</metadata>"),
        Gpx11("<trk>" + Repeated(kCount, "<link href='a'/>") + Repeated(kCount, "<trkseg><x/></trkseg>") +
              "</trk>"),
        Gpx11("<extensions>" + Repeated(kCount, "<x xmlns='urn:x'/>") + "</extensions>" +
              Waypoint("<extensions>" + Repeated(kCount, "<x xmlns='urn:x'/>") +
                       "</extensions><name>n</name>")),
        Gpx11(Repeated(kCount, "<wpt lat='91' lon='1'/>")),
        Gpx10(Waypoint("<g:cache xmlns:g='http://www.groundspeak.com/cache/1/0'><g:logs>" +
                       Repeated(kCount, log) + "</g:logs></g:cache><name>n</name>")),
        Gpx10(Waypoint(Repeated(kCount, "<url>a</url>"))),
    };
    for (const std::string& text : texts)
        EXPECT_LT(SecondsToWrite(text), 60.0) << text.substr(0, 300);
}

// With a look at each declaration around each element this would not end.
TEST(GpxStandardWriterSourcesTest, DeclarationsAroundAnElementTakeNoLonger) {
    constexpr std::size_t kDeclarations = 10'000;
    constexpr std::size_t kPoints = 500;
    std::string declarations;
    for (std::size_t i = 0; i < kDeclarations; ++i)
        declarations += " xmlns:p" + std::to_string(i) + "='urn:p'";
    const std::string point = Waypoint("<name>n</name><extensions xmlns:a='urn:a'><p7:hr>1</p7:hr><a:b/>"
                                       "</extensions><ele>1</ele>");
    const GpxDocument wide = ReadCompletely(Gpx11(Repeated(kPoints, point), declarations));
    for (auto read = wide.GetWaypointIter(); read != wide.GetWaypointEndIter(); ++read)
        EXPECT_EQ(GpxPointDetails(read->GetElement()).GetHeartRate(), 1.0);
    EXPECT_EQ(ReadCompletely(StandardText(wide, kGpx10).text).GetWaypointCount(), kPoints);
    EXPECT_EQ(ReadCompletely(StandardText(wide, kGpx11).text).GetWaypointCount(), kPoints);
}

TEST(GpxStandardWriterSourcesTest, ManyLogsThatAreWrittenAnewTakeNoLonger) {
    const std::string log = "<g:log id='1'><g:text>t</g:text></g:log>";
    const GpxDocument document =
        ReadCompletely(Gpx10(Waypoint("<g:cache xmlns:g='http://www.groundspeak.com/cache/1/0'><g:logs>" +
                                      Repeated(100'000, log) + "</g:logs></g:cache>")));
    GpxPoint point = *document.GetWaypointIter();
    GpxGroundspeakCache cache;
    ASSERT_TRUE(point.GetGroundspeakCache(cache));
    cache.name = u"new";
    point.SetGroundspeakCache(cache);
    GpxDocument changed;
    changed.AddWaypoint(point);
    const auto start = std::chrono::steady_clock::now();
    StandardText(changed, kGpx10);
    EXPECT_LT(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), 30.0);
}

} // namespace
} // namespace vexaTransferLib
