// SPDX-License-Identifier: MIT

// What a scan finds in the heads of files of all programs.

#include <vexaTransferLib/GpxHead.h>
#include <vexaTransferLib/GpxTarvikExtParser.h>

#include "support/GpxFiles.h"
#include "support/GpxText.h"
#include "support/HeadScan.h"
#include "support/TestFiles.h"
#include "support/Utf16.h"
#include "support/XercesDoubles.h"

#include <gtest/gtest.h>

#include <xercesc/internal/VecAttributesImpl.hpp>

#include <initializer_list>
#include <numeric>
#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

struct Row {
    std::string text;
    std::string found;
};

const std::string kPoint = "<wpt lat='1' lon='2'/>";
const std::string kValues10 =
    "<name>N</name><desc>D</desc><author>A</author><email>e@x.example</email><url>u</url>"
    "<time>2009-01-15T10:20:30Z</time><keywords>k</keywords>"
    "<bounds minlat='1' minlon='-2.5' maxlat='3e1' maxlon='4'/>";
const std::string kValues11 =
    "<name>N</name><desc>D</desc><author><name>A</name><email id='e' domain='x.example'/>"
    "<link href='l'><text>L</text></link></author><copyright author='C'/>"
    "<link href='l'><text>L</text></link>"
    "<time>2009-01-15T10:20:30Z</time><keywords>k</keywords>"
    "<bounds minlat='1' minlon='-2.5' maxlat='3e1' maxlon='4'/>";
const std::string kValuesFound =
    "; name N; desc D; time 1232014830000; author A <e@x.example>; bounds 1 -2.5 30 4";

std::string Metadata(const std::string& children) {
    return "<metadata>" + children + "</metadata>";
}

/// A document with this start tag of its root `gpx`, which has no prefix.
std::string Document(const std::string& attributes, const std::string& children) {
    return "<gpx " + attributes + ">" + children + "</gpx>";
}

std::string Joined(std::initializer_list<std::string> parts) {
    return std::accumulate(parts.begin(), parts.end(), std::string());
}

/// What is found among the children of `metadata`, without what all these heads have.
std::string FoundIn(const std::string& children) {
    const std::string start = "root gpx; version 1.1";
    const std::string end = "; metadata; end object";
    const std::string found = HeadOf("<gpx version='1.1' xmlns='" + std::string(kGpx11Uri) +
                                     "' xmlns:o='urn:other'>" + Metadata(children) + kPoint + "</gpx>");
    EXPECT_TRUE(found.starts_with(start) && found.ends_with(end)) << found;
    return found.substr(start.size(), found.size() - start.size() - end.size());
}

TEST(GpxHeadTest, IsEmptyBeforeAScan) {
    EXPECT_EQ(Shown(GpxHead()), "root ; end none");
    EXPECT_EQ(Shown(GpxTarvikExtParser().GetHead()), "root ; end none");
}

TEST(GpxHeadTest, EveryVersionAndNamespaceIsKnown) {
    const std::string found11 = kValuesFound + "; metadata; end object";
    const Row rows[] = {
        {"xmlns='http://www.topografix.com/GPX/1/1' version='1.1' creator='C'", "; version 1.1; creator C"},
        {"xmlns='http://www.topografix.com/GPX/1/0' version='1.0' creator='C'", "; version 1.0; creator C"},
        {"xmlns='https://www.topografix.com/GPX/1/1' version='1.1'", "; version 1.1"},
        {"xmlns='http://www.topografix.com/GPX/1/2' version='1.2'", "; version 1.2"},
        {"version='1.1' creator='C'", "; version 1.1; creator C"},
        {"creator=''", "; creator "},
        {"version='7.7.5-play'", "; version 7.7.5-play"},
        {"version=' 1.1&#10;'", "; version  1.1\n"},
        {"xmlns:o='urn:other' o:version='3' o:creator='O'", ""},
        {"", ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(HeadOf(Document(row.text, Metadata(kValues11) + kPoint)), "root gpx" + row.found + found11)
            << row.text;
        EXPECT_EQ(HeadOf(Document(row.text, kValues10 + kPoint)),
                  "root gpx" + row.found + kValuesFound + "; end object")
            << row.text;
    }
}

TEST(GpxHeadTest, PrefixesDoNotMatter) {
    EXPECT_EQ(HeadOf("<g:gpx xmlns:g='" + std::string(kGpx11Uri) +
                     "' version='1.1'><g:metadata><g:name>N</g:name><g:bounds minlat='1' minlon='2' "
                     "maxlat='3' maxlon='4'/></g:metadata><g:rte/></g:gpx>"),
              "root gpx; version 1.1; name N; bounds 1 2 3 4; metadata; end object");
    EXPECT_EQ(HeadOf("<gpx xmlns='urn:other' xmlns:g='" + std::string(kGpx10Uri) +
                     "'><name>other</name><g:name>N</g:name><wpt/><g:desc>D</g:desc></gpx>"),
              "root gpx; name N; desc D; end end of file");
}

TEST(GpxHeadTest, MetadataMayLackAnyPart) {
    const Row rows[] = {
        {"", ""},
        {" <!-- nothing --> ", ""},
        {"<name/>", "; name "},
        {"<desc/>", "; desc "},
        {"<bounds/>", ""},
        {"<author/>", ""},
        {"<author>A</author>", ""},
        {"<author><name/></author>", "; author  <>"},
        {"<author><name>A</name></author>", "; author A <>"},
        {"<author><email id='e' domain='x'/></author>", "; author  <e@x>"},
        {"<author><email id='e'/></author>", ""},
        {"<author><email domain='x'/></author>", ""},
        {"<author><email>e@x</email></author>", ""},
        {"<email>e@x</email>", ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(FoundIn(row.text), row.found) << row.text;
    EXPECT_EQ(HeadOf("<gpx><metadata/></gpx>"), "root gpx; metadata; end end of file");
    EXPECT_EQ(HeadOf("<gpx><metadata><time/></metadata></gpx>"), "root gpx; metadata; end end of file");
    EXPECT_EQ(HeadOf("<gpx/>"), "root gpx; end end of file");
}

TEST(GpxHeadTest, OnlyTheElementsInTheirPlacesCount) {
    const std::string name = "<name>other</name>";
    for (const std::string& element :
         {"<extensions>" + name + "</extensions>", "<author><link>" + name + "</link></author>",
          "<copyright>" + name + "</copyright>", "<x><metadata>" + name + "</metadata></x>",
          "<metadata>" + name + "</metadata>", std::string("<o:name>other</o:name>"),
          "<o:x>" + name + "</o:x>", std::string("<Name>other</Name>"),
          std::string("<names>other</names>")}) {
        EXPECT_EQ(FoundIn(element), "") << element;
        EXPECT_EQ(FoundIn(element + "<name>N</name>"), "; name N") << element;
        EXPECT_EQ(FoundIn("<name>N</name>" + element), "; name N") << element;
    }
    EXPECT_EQ(HeadOf("<gpx><author><name>other</name></author><author><author>A</author></author></gpx>"),
              "root gpx; author A <>; end end of file");
    EXPECT_EQ(HeadOf("<gpx><gpx version='2'><name>other</name></gpx></gpx>"), "root gpx; end end of file");
}

TEST(GpxHeadTest, TheLastReadableValueCounts) {
    EXPECT_EQ(HeadOf("<gpx><name>a</name><metadata><name>b</name></metadata><metadata/></gpx>"),
              "root gpx; name b; metadata; end end of file");
    EXPECT_EQ(HeadOf("<gpx><metadata><name>b</name></metadata><name>a</name></gpx>"),
              "root gpx; name a; metadata; end end of file");
    EXPECT_EQ(FoundIn("<time>1970-01-01T00:00:01Z</time><time>yesterday</time>"), "; time 1000");
    const std::string bounds = "<bounds minlat='1' minlon='2' maxlat='3' maxlon='4'/>";
    EXPECT_EQ(FoundIn(bounds + "<bounds minlat='5' minlon='6' maxlat='7' maxlon='x'/>"), "; bounds 1 2 3 4");
    EXPECT_EQ(FoundIn("<author><name>A</name></author><author><email id='e' domain='x'/></author>"),
              "; author A <e@x>");
}

TEST(GpxHeadTest, TextsAreWhole) {
    const Row rows[] = {
        {" \n a  b\t", " \n a  b\t"},
        {"a<![CDATA[<b> &amp; ]]>c", "a<b> &amp; c"},
        {"<![CDATA[]]>", ""},
        {"a<!-- x -->b<?pi x?>c", "abc"},
        {"a&amp;&lt;&#233;&#x1F30D;", "a&<\u00E9\U0001F30D"},
        {"a<b>c<i/>d</b>e", "acde"},
        {"a<o:name>b</o:name><name>c</name>d", "abcd"},
        {"\u5C71\u9053", "\u5C71\u9053"},
        {std::string(100000, 'x'), std::string(100000, 'x')},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(FoundIn("<name>" + row.text + "</name>"), "; name " + row.found) << row.text.substr(0, 99);
        EXPECT_EQ(FoundIn("<desc>" + row.text + "</desc><src>x</src>"), "; desc " + row.found)
            << row.text.substr(0, 99);
    }
}

TEST(GpxHeadTest, TimesAreReadAsXmlSchemaWritesThem) {
    const Row rows[] = {
        {"1970-01-01T00:00:00Z", "; time 0"},
        {"1969-12-31T23:59:59.5Z", "; time -500"},
        {"0001-01-01T00:00:00Z", "; time -62135596800000"},
        {" \n2009-01-15T10:20:30.25+01:00\t", "; time 1232011230250"},
        {"2009-01-15T10:20:30", "; time 1232014830000"},
        {"<![CDATA[2009-01-15]]>T10:20:30<!-- -->Z", "; time 1232014830000"},
        {"2009-01-15", ""},
        {"2009-02-30T10:20:30Z", ""},
        {"15 Jan 2009", ""},
        {"\u06F2009-01-15T10:20:30Z", ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(FoundIn("<time>" + row.text + "</time>"), row.found) << row.text;
    GpxTarvikExtParser scanner;
    ScanBytes(scanner,
              Gpx11("<metadata><time>2009-01-15T10:20:30Z</time><link><time>2020-01-01T00:00:00Z</time>"
                    "</link></metadata>"));
    EXPECT_EQ(scanner.GetHead().time, 1232014830000.0);
    EXPECT_EQ(scanner.GetDocumentTime(), 1577836800000.0) << "stays the last one anywhere in the head";
}

TEST(GpxHeadTest, BoundsAreFourNumbers) {
    const auto bounds = [](const char* minlat) {
        return FoundIn(std::string("<bounds maxlon='4' ") + minlat + " maxlat='+3.50' minlon='-2'/>");
    };
    for (const char* minlat :
         {"minlat='1'", "minlat=' 1&#9;'", "minlat='1.0'", "minlat='.1e1'", "minlat='\n01'"})
        EXPECT_EQ(bounds(minlat), "; bounds 1 -2 3.5 4") << minlat;
    EXPECT_EQ(bounds("minlat='95'"), "; bounds 95 -2 3.5 4") << "no range is checked";
    for (const char* minlat :
         {"", "minlat=''", "minlat='1,5'", "minlat='1 2'", "minlat='NaN'", "minlat='INF'", "minlat='1e999'",
          "minlat='0x1'", "minlat='-'", "minlat='\u0661'", "Minlat='1'", "o:minlat='1'"})
        EXPECT_EQ(bounds(minlat), "") << minlat;
}

TEST(GpxHeadTest, TheFirstObjectEndsTheHead) {
    const std::string after = "<name>after</name><metadata><desc>after</desc></metadata>";
    const std::string found = "root gpx; name N; end object";
    for (const std::string object : {"<wpt/>", "<rte><name>R</name></rte>", "<trk></trk>"}) {
        const std::string direct = Joined({"<name>N</name>", object, after});
        const std::string within =
            Joined({"<name>N</name><extensions>", object, after, "</extensions>", after});
        for (const char* attributes : {"", "xmlns='http://www.topografix.com/GPX/1/0'",
                                       "xmlns='https://www.topografix.com/GPX/1/1'"}) {
            EXPECT_EQ(HeadOf(Document(attributes, direct)), found) << attributes << object;
            EXPECT_EQ(HeadOf(Document(attributes, within)), found) << attributes << object;
        }
    }
    EXPECT_EQ(
        HeadOf("<o:gpx xmlns='http://www.topografix.com/GPX/1/3' xmlns:o='urn:other'><name>N</name><trk/>" +
               after + "</o:gpx>"),
        found);
    EXPECT_EQ(HeadOf(Gpx11("<WPT/>" + after)), "root gpx; version 1.1; creator test; end object")
        << "it ends the scan too";
}

TEST(GpxHeadTest, OtherElementsDoNotEndTheHead) {
    for (const char* element :
         {"<o:wpt/>", "<o:rte/>", "<o:trk/>", "<WPT/>", "<rtept/>", "<trkseg/>", "<extensions/>"})
        EXPECT_EQ(HeadOf(Document("xmlns:o='urn:other'", element + std::string("<name>N</name>"))),
                  "root gpx; name N; end end of file")
            << element;
}

TEST(GpxHeadTest, OfAFileOfAnySizeOnlyTheHeadIsRead) {
    for (const std::size_t points : {std::size_t{1000}, std::size_t{1000000000}}) {
        const GeneratedSource source("<gpx xmlns='http://www.topografix.com/GPX/1/1'>" + Metadata(kValues11),
                                     kPoint, points, "</gpx>");
        GpxTarvikExtParser scanner;
        scanner.ParseSource(source);
        EXPECT_EQ(Shown(scanner.GetHead()), "root gpx" + kValuesFound + "; metadata; end object");
        EXPECT_LE(source.BytesRead(), 50000U);
    }
}

TEST(GpxHeadTest, TheScanReadsOnAfterAnObjectThatIsInNoNamespace) {
    const std::string form = "<form xmlns='" + std::string(kVendorUri) + "'>f</form>";
    const std::string head = "<gpx><name>N</name><wpt/><name>after</name>" + form;
    GpxTarvikExtParser scanner;
    ScanBytes(scanner, head + "</gpx>");
    EXPECT_EQ(Shown(scanner.GetHead()), "root gpx; name N; end object");
    EXPECT_EQ(FoundBy(scanner), "layer ||f|1; time 0");
    EXPECT_EQ(scanner.GetScanEnd(), kGpxScanComplete);

    ScanBytes(scanner, head + "\n</oops>");
    EXPECT_EQ(Shown(scanner.GetHead()), "root gpx; name N; end object; error 2:3");
    EXPECT_EQ(FoundBy(scanner), "layer ||f|1; time 0");
    EXPECT_EQ(scanner.GetScanEnd(), kGpxScanIllFormed);
}

TEST(GpxHeadTest, AHeadThatIsCutOffKeepsWhatCameBefore) {
    const std::string head = "<gpx version='1.1'>\n<metadata>\n<name>N</name><desc>D</desc>\n<ti";
    EXPECT_EQ(HeadOf(head), "root gpx; version 1.1; name N; desc D; end ill-formed; error 4:4");
    EXPECT_EQ(HeadOf("<gpx><metadata><name>N</name><desc>D"), "root gpx; name N; end ill-formed; error 1:37");
    EXPECT_EQ(HeadOf("<gpx><metadata><name>N</name></metadata>"),
              "root gpx; name N; metadata; end ill-formed; error 1:41");
    EXPECT_EQ(HeadOf("<gpx version='1.1"), "root ; end ill-formed; error 1:18");
}

TEST(GpxHeadTest, EveryPrefixOfAHeadGivesWhatItHolds) {
    const std::string head = "<gpx version='1.1' creator='C'>" + Metadata(kValues11);
    const std::string found = "root gpx; version 1.1; creator C" + kValuesFound + "; metadata";
    GpxTarvikExtParser scanner;
    std::string last = "root ";
    for (std::size_t size = 0; size <= head.size(); ++size) {
        ScanBytes(scanner, head.substr(0, size));
        EXPECT_EQ(scanner.GetHead().end, GpxHead::End::kIllFormed) << size;
        ASSERT_TRUE(scanner.GetHead().error) << size;
        EXPECT_NE(scanner.GetHead().error->message, "") << size;
        const std::string shown = Shown(scanner.GetHead());
        const std::string values = shown.substr(0, shown.find("; end "));
        EXPECT_GE(values.size(), last.size()) << "a value is lost: " << head.substr(0, size);
        last = values;
    }
    EXPECT_EQ(last, found);
}

TEST(GpxHeadTest, WhatIsNotXmlIsIllFormedFromItsStart) {
    EXPECT_EQ(HeadOf(""), "root ; end ill-formed; error 1:1");
    EXPECT_EQ(HeadOf("no XML"), "root ; end ill-formed; error 1:1");
    GpxTarvikExtParser scanner;
    ScanBytes(scanner, Gpx11("\n<a></b>"));
    ASSERT_TRUE(scanner.GetHead().error);
    EXPECT_EQ(scanner.GetHead().error->message, "expected end of tag 'a'");
    EXPECT_EQ(scanner.GetHead().error->line, 2U);
    ScanBytes(scanner, Gpx11("<a>\xFF\xFE</a>"));
    ASSERT_TRUE(scanner.GetHead().error);
    EXPECT_NE(scanner.GetHead().error->message, "");
}

TEST(GpxHeadTest, ARootThatIsNotGpxIsNamed) {
    const std::string values = kValues10 + Metadata(kValues11) + kPoint;
    EXPECT_EQ(HeadOf("<html version='1.1' creator='C'>" + values + "</html>"), "root html; end no GPX");
    EXPECT_EQ(HeadOf("<GPX version='1.1'>" + values + "</GPX>"), "root GPX; end no GPX");
    EXPECT_EQ(HeadOf("<x:kml xmlns:x='urn:x'/>"), "root kml; end no GPX");
    EXPECT_EQ(HeadOf("<wpt xmlns='" + std::string(kGpx11Uri) + "'/>"), "root wpt; end no GPX");
    EXPECT_EQ(HeadOf("<html><p>"), "root html; end no GPX; error 1:10");
}

TEST(GpxHeadTest, EncodingsDoNotMatter) {
    const icu::UnicodeString text = icu::UnicodeString::fromUTF8(
        "<gpx version='1.1' creator='\u5C71'><metadata><name>\U0001F30D</name></metadata>" + kPoint +
        "</gpx>");
    const std::string found = "root gpx; version 1.1; creator \u5C71; name \U0001F30D; metadata; end object";
    EXPECT_EQ(HeadOf("\xEF\xBB\xBF" + Utf8(text)), found);
    EXPECT_EQ(HeadOf(InUtf16(u'\uFEFF' + text, true)), found);
    EXPECT_EQ(HeadOf(InUtf16(u'\uFEFF' + text, false)), found);
    EXPECT_EQ(HeadOf("<?xml version='1.0' encoding='ISO-8859-1'?><gpx><name>\xE9</name></gpx>"),
              "root gpx; name \u00E9; end end of file");
}

TEST(GpxHeadTest, AnotherScanStartsAfresh) {
    GpxTarvikExtParser scanner;
    ScanBytes(scanner, "<gpx version='1.0' creator='C'>" + kValues10 + Metadata("") + "</oops>");
    ASSERT_NE(Shown(scanner.GetHead()).find("; metadata; end ill-formed; error "), std::string::npos);
    const GpxHead copy = scanner.GetHead();
    ScanBytes(scanner, "<gpx><author><name>");
    EXPECT_EQ(Shown(scanner.GetHead()), "root gpx; end ill-formed; error 1:20");
    ScanBytes(scanner, "<gpx><name>N</name></gpx>");
    EXPECT_EQ(Shown(scanner.GetHead()), "root gpx; name N; end end of file");
    const TemporaryFolder folder;
    ScanFile(scanner, (folder / "none.gpx").string());
    EXPECT_EQ(Shown(scanner.GetHead()), "root ; end missing");
    EXPECT_EQ(Utf8(*copy.creator), "C");
}

TEST(GpxHeadTest, AnUntrustedFileThatIsRefusedKeepsWhatCameBefore) {
    GpxTarvikExtParser scanner;
    scanner.SetUntrusted();
    std::string attributes;
    for (int i = 0; i < 1000000; ++i)
        attributes += " a" + std::to_string(i) + "=''";
    ScanBytes(scanner, "<gpx version='1.1'><metadata><name>N</name><bounds" + attributes + "/>");
    EXPECT_EQ(Shown(scanner.GetHead()), "root gpx; version 1.1; name N; end refused");
    ScanBytes(scanner, "<gpx" + attributes + "/>");
    EXPECT_EQ(Shown(scanner.GetHead()), "root ; end refused");
    ScanBytes(scanner, "<gpx><metadata>" + Repeat("<name>N</name>", 1000000) + "</metadata></gpx>");
    EXPECT_EQ(Shown(scanner.GetHead()), "root gpx; name N; end refused");
    ScanBytes(scanner, "<gpx><name>N</name>" + Repeat("<x>", 300));
    EXPECT_EQ(Shown(scanner.GetHead()), "root gpx; name N; end refused");
    ScanBytes(scanner, "<!DOCTYPE gpx><gpx><name>N</name></gpx>");
    EXPECT_EQ(Shown(scanner.GetHead()), "root ; end refused");
    // The limits of a head hold for all of a file that its objects do not end, and leave what was found.
    ScanBytes(scanner, "<gpx><name>N</name>" + Repeat(kPoint, 200000) + "</gpx>");
    EXPECT_EQ(scanner.GetScanEnd(), kGpxScanRefused);
    EXPECT_EQ(Shown(scanner.GetHead()), "root gpx; name N; end object");
}

TEST(GpxHeadTest, AHeadOfAMillionElementsInAllIsRead) {
    for (const std::string element : {"<name>N</name>", "<author><name>A</name></author>", "<x a='1'/>",
                                      "<bounds minlat='1' minlon='2' maxlat='3' maxlon='4'/>"}) {
        const GeneratedSource source("<gpx><metadata><desc>D</desc>", element, 250000, "</metadata>");
        GpxTarvikExtParser scanner;
        scanner.ParseSource(source);
        EXPECT_EQ(scanner.GetHead().end, GpxHead::End::kIllFormed);
        EXPECT_TRUE(scanner.GetHead().hasMetadata) << element;
        EXPECT_EQ(scanner.GetHead().description, icu::UnicodeString("D"));
    }
}

// Without the XML parser, which takes time that grows with the square of the depth.
TEST(GpxHeadTest, AMillionElementsWithinEachOtherAreLeftAgain) {
    GpxTarvikExtParser scanner;
    const xercesc::VecAttributesImpl attributes;
    scanner.startElement(u"", u"gpx", u"gpx", attributes);
    for (int i = 0; i < 1000000; ++i)
        scanner.startElement(u"", u"x", u"x", attributes);
    for (int i = 0; i < 1000000; ++i)
        scanner.endElement(u"", u"x", u"x");
    scanner.startElement(u"", u"name", u"name", attributes);
    scanner.characters(u"N", 1);
    scanner.endElement(u"", u"name", u"name");
    EXPECT_EQ(Shown(scanner.GetHead()), "root gpx; name N; end none");
}

TEST(GpxHeadTest, EntitiesOfATrustedFileAreReplaced) {
    GpxTarvikExtParser scanner;
    ScanBytes(scanner,
              "<!DOCTYPE gpx [<!ENTITY e 'N<b>o</b>'>]><gpx creator='&#67;'><name>&e;w</name></gpx>");
    EXPECT_EQ(Shown(scanner.GetHead()), "root gpx; creator C; name Now; end end of file");
}

TEST(GpxHeadTest, EventsThatDoNotMatchAreHarmless) {
    GpxTarvikExtParser scanner;
    const xercesc::VecAttributesImpl attributes;
    scanner.endElement(u"", u"gpx", u"gpx");
    scanner.characters(u"x", 1);
    scanner.startElement(nullptr, u"gpx", u"gpx", attributes);
    scanner.startElement(nullptr, nullptr, nullptr, attributes);
    scanner.endElement(u"", u"other", u"other");
    scanner.startElement(u"", u"name", u"name", attributes);
    scanner.characters(u"N", 1);
    scanner.endElement(u"", u"name", u"name");
    for (int i = 0; i < 3; ++i)
        scanner.endElement(u"", u"gpx", u"gpx");
    EXPECT_EQ(Shown(scanner.GetHead()), "root gpx; name N; end none");
}

} // namespace
} // namespace vexaTransferLib
