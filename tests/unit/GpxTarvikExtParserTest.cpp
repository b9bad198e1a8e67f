// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxTarvikExtParser.h>

#include "support/ContractChecks.h"
#include "support/GpxFiles.h"
#include "support/GpxText.h"
#include "support/HeadScan.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

struct Row {
    std::string text;
    std::string found;
};

TEST(GpxTarvikExtParserTest, StartsWithoutResults) {
    EXPECT_EQ(FoundBy(GpxTarvikExtParser()), "time 0");
}

TEST(GpxTarvikExtParserTest, AHeadWithoutVendorElementsGivesNothing) {
    EXPECT_EQ(Scan(Gpx11("")), "time 0");
    EXPECT_EQ(Scan(WithExtensions("<name>Walk</name><other:layername>x</other:layername>")), "time 0");
    EXPECT_EQ(Scan(WithExtensions("<tarvik:unknown>1</tarvik:unknown><tarvik:filestats/>")), "time 0");
}

TEST(GpxTarvikExtParserTest, EachElementFillsItsFieldAndMakesItsRecordOnly) {
    const Row rows[] = {
        {"<tarvik:layerkey>k</tarvik:layerkey>", "layer k|||1; time 0"},
        {"<tarvik:layername>n</tarvik:layername>", "layer |n||1; time 0"},
        {"<tarvik:form>f</tarvik:form>", "layer ||f|1; time 0"},
        {"<tarvik:defaultsymbol>7</tarvik:defaultsymbol>", "layer |||7; time 0"},
        {"<tarvik:trackGUID>t</tarvik:trackGUID>", "guids t|; time 0"},
        {"<tarvik:waypointGUID>w</tarvik:waypointGUID>", "guids |w; time 0"},
        {"<tarvik:wptcount>5</tarvik:wptcount>", "stats 5 0 0 0 -1; time 0"},
        {"<tarvik:trkcount>5</tarvik:trkcount>", "stats 0 5 0 0 -1; time 0"},
        {"<tarvik:trksegcount>5</tarvik:trksegcount>", "stats 0 0 5 0 -1; time 0"},
        {"<tarvik:trktotalkm>1.5</tarvik:trktotalkm>", "stats 0 0 0 3ff8000000000000 -1; time 0"},
        {"<tarvik:geocachecount>5</tarvik:geocachecount>", "stats 0 0 0 0 5; time 0"},
        {"<tarvik:geocachesymbolcount>5</tarvik:geocachesymbolcount>", "stats 0 0 0 0 5; time 0"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Scan(WithExtensions(row.text)), row.found) << row.text;
}

TEST(GpxTarvikExtParserTest, EmptyElementsMakeTheirRecords) {
    const Row rows[] = {
        {"<tarvik:layername/>", "layer |||1; time 0"},
        {"<tarvik:defaultsymbol/>", "layer |||0; time 0"},
        {"<tarvik:trackGUID/>", "guids |; time 0"},
        {"<tarvik:wptcount/>", "stats 0 0 0 0 -1; time 0"},
        {"<tarvik:trktotalkm/>", "stats 0 0 0 0 -1; time 0"},
        {"<tarvik:geocachecount/>", "stats 0 0 0 0 0; time 0"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Scan(WithExtensions(row.text)), row.found) << row.text;
}

const std::string kEverything =
    "<metadata><time>2009-01-15T10:20:30Z</time><extensions><tarvik:layername>n</tarvik:layername>"
    "<tarvik:layerkey>k</tarvik:layerkey><tarvik:form>f</tarvik:form><tarvik:defaultsymbol>2"
    "</tarvik:defaultsymbol><tarvik:trackGUID>t</tarvik:trackGUID><tarvik:waypointGUID>w"
    "</tarvik:waypointGUID><tarvik:filestats><tarvik:wptcount>3</tarvik:wptcount><tarvik:trkcount>4"
    "</tarvik:trkcount><tarvik:trksegcount>5</tarvik:trksegcount><tarvik:trktotalkm>-2.5"
    "</tarvik:trktotalkm><tarvik:geocachecount>6</tarvik:geocachecount></tarvik:filestats></extensions>"
    "</metadata>";
const std::string kEverythingFound =
    "layer k|n|f|2; guids t|w; stats 3 4 5 c004000000000000 6; time 1232014830000";

TEST(GpxTarvikExtParserTest, FindsEverythingAtOnce) {
    EXPECT_EQ(Scan(Gpx11(kEverything)), kEverythingFound);
    EXPECT_EQ(Scan(Gpx10(kEverything + "<wpt/>")), kEverythingFound);
}

TEST(GpxTarvikExtParserTest, TheLastElementOfANameWins) {
    EXPECT_EQ(Scan(WithExtensions("<tarvik:form>a</tarvik:form><tarvik:FORM>b</tarvik:FORM>")),
              "layer ||b|1; time 0");
    EXPECT_EQ(Scan(WithExtensions("<tarvik:form>a</tarvik:form><tarvik:form/>")), "layer |||1; time 0");
    const std::string caches = "<tarvik:geocachecount>3</tarvik:geocachecount>";
    const std::string symbols = "<tarvik:geocachesymbolcount>4</tarvik:geocachesymbolcount>";
    EXPECT_EQ(Scan(WithExtensions(caches + symbols)), "stats 0 0 0 0 4; time 0");
    EXPECT_EQ(Scan(WithExtensions(symbols + caches)), "stats 0 0 0 0 3; time 0");
}

std::string NamedElement(const std::string& declaration, const std::string& name) {
    return declaration + WithExtensions("<tarvik:" + name + ">5</tarvik:" + name + ">");
}

TEST(GpxTarvikExtParserTest, NamesAreFoldedFully) {
    const char* const xml10 = "";
    const char* const xml11 = "<?xml version='1.1'?>"; // knows more letters
    const struct {
        const char* declaration;
        const char* name;
        const char* found;
    } rows[] = {
        {xml10, "LayerName", "layer |5||1; time 0"},
        {xml10, "LAYERKEY", "layer 5|||1; time 0"},
        {xml10, "Form", "layer ||5|1; time 0"},
        {xml10, "DefaultSymbol", "layer |||5; time 0"},
        {xml10, "trackguid", "guids 5|; time 0"},
        {xml10, "WAYPOINTGUID", "guids |5; time 0"},
        {xml10, "WptCount", "stats 5 0 0 0 -1; time 0"},
        {xml10, "TRKTOTALKM", "stats 0 0 0 5 -1; time 0"},
        {xml10, "GeocacheSymbolCount", "stats 0 0 0 0 5; time 0"},
        {xml10, "tr\u212Acount", "stats 0 5 0 0 -1; time 0"},
        {xml11, "TR\u212A\u017Fegcount", "stats 0 0 5 0 -1; time 0"},
        {xml11, "geocache\u017Fymbolcount", "stats 0 0 0 0 5; time 0"},
        {xml10, "waypo\u0131ntGUID", "time 0"},
        {xml10, "layer-name", "time 0"},
        {xml10, "layername2", "time 0"},
        {xml10, "layernam", "time 0"},
        {xml10, "gis.layername", "time 0"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Scan(NamedElement(row.declaration, row.name)), row.found) << row.name;
}

TEST(GpxTarvikExtParserTest, TheVendorsNamespaceIsFoldedFullyToo) {
    const Row rows[] = {
        {"https://tarvik.example/xmlschemas/gpx-extensions/1/0", "layer ||f|1; time 0"},
        {"HTTPS://Tarvik.EXAMPLE/XmlSchemas/GPX-Extensions/1/0", "layer ||f|1; time 0"},
        {"http\u017F://tarvi\u212A.example/xmlschema\u017F/gpx-extensions/1/0", "layer ||f|1; time 0"},
        {"https://tarvik.example/xmlschemas/gpx-extensions/1/1", "time 0"},
        {"https://tarvik.example/xmlschemas/gpx-extensions/1/0/", "time 0"},
        {"http://tarvik.example/xmlschemas/gpx-extensions/1/0", "time 0"},
        {"http://www.topografix.com/GPX/1/1", "time 0"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Scan("<gpx xmlns:tarvik='" + row.text + "'><tarvik:form>f</tarvik:form></gpx>"), row.found)
            << row.text;
        EXPECT_EQ(Scan("<gpx><form xmlns='" + row.text + "'>f</form></gpx>"), row.found) << row.text;
    }
    EXPECT_EQ(Scan("<gpx><form>f</form></gpx>"), "time 0") << "no namespace";
}

TEST(GpxTarvikExtParserTest, TextsAreTrimmed) {
    const Row rows[] = {
        {" \t\r\n a  b \n", "a  b"},  {"&#9;&#13;&#10;a&#13;", "a"},      {"<![CDATA[ a ]]>", "a"},
        {"\u3000\u2003a\u2028", "a"}, {"\u00A0a\u202F", "\u00A0a\u202F"}, {" \n ", ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Scan(WithExtensions("<tarvik:form>" + row.text + "</tarvik:form>")),
                  "layer ||" + row.found + "|1; time 0")
            << row.text;
}

TEST(GpxTarvikExtParserTest, TextsMayBeInPieces) {
    const Row rows[] = {
        {"a<![CDATA[<b> &amp; ]]>c", "a<b> &amp; c"},
        {"a&amp;b&lt;&#233;&#x1F30D;&quot;", "a&b<\u00E9\U0001F30D\""},
        {"a<!-- x -->b", "ab"},
        {"a<?pi x?>b", "ab"},
        {"a\r\nb\rc", "a\nb\nc"},
        {"\u5C71\u9053", "\u5C71\u9053"},
        {std::string(100000, 'x'), std::string(100000, 'x')},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Scan(WithExtensions("<tarvik:form>" + row.text + "</tarvik:form>")),
                  "layer ||" + row.found + "|1; time 0")
            << row.text.substr(0, 100);
}

TEST(GpxTarvikExtParserTest, AnElementEndsWithTheTextSinceTheLastStartTag) {
    const Row rows[] = {
        {"<tarvik:form>a<other:x>b</other:x>c</tarvik:form>", "layer ||bc|1; time 0"},
        {"<tarvik:form>a<other:x> b </other:x> c </tarvik:form>", "layer ||b  c|1; time 0"},
        {"<tarvik:form>a<other:x/>b<other:y/>c</tarvik:form>", "layer ||c|1; time 0"},
        {"<tarvik:form>a<other:x/></tarvik:form>", "layer |||1; time 0"},
        {"<tarvik:form>a<tarvik:layername> b </tarvik:layername> c</tarvik:form>", "layer |b|b c|1; time 0"},
        {"<tarvik:form><tarvik:unknown> b </tarvik:unknown> c</tarvik:form>", "layer ||b c|1; time 0"},
        {"<tarvik:form><tarvik:wptcount> 12 </tarvik:wptcount>3</tarvik:form>",
         "layer ||123|1; stats 12 0 0 0 -1; time 0"},
        {"<tarvik:form>a</tarvik:form>b<tarvik:layername>c</tarvik:layername>", "layer |c|a|1; time 0"},
        {"a<tarvik:layername/>b", "layer |||1; time 0"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Scan(WithExtensions(row.text)), row.found) << row.text;
}

TEST(GpxTarvikExtParserTest, VendorElementsMayBeAnywhereInTheHead) {
    const std::string form = "<tarvik:form>f</tarvik:form>";
    const Row rows[] = {
        {Gpx11(form), "layer ||f|1; time 0"},
        {Gpx11("<extensions>" + form + "</extensions><trk/>"), "layer ||f|1; time 0"},
        {Gpx11("<a><b>" + form + "</b></a>"), "layer ||f|1; time 0"},
        {"<form xmlns='" + std::string(kVendorUri) + "'>f</form>", "layer ||f|1; time 0"},
        {"<html xmlns:t='" + std::string(kVendorUri) + "'><t:form>f</t:form></html>", "layer ||f|1; time 0"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Scan(row.text), row.found) << row.text;
}

TEST(GpxTarvikExtParserTest, TheFirstWaypointRouteOrTrackEndsTheHead) {
    const std::string before = "<tarvik:form>before</tarvik:form>";
    const std::string after = "<tarvik:form>after</tarvik:form>";
    for (const std::string element :
         {"wpt", "rte", "trk", "WPT", "Rte", "tRk", "tr\u212A", "gpx10:wpt", "gpx10:TRK", "gpx11:rte"}) {
        EXPECT_EQ(Scan(Gpx11(before + "<" + element + ">" + after + "</" + element + ">")),
                  "layer ||before|1; time 0")
            << element;
        EXPECT_EQ(Scan(Gpx11(before + "<a><" + element + "/></a>" + after)), "layer ||before|1; time 0")
            << element;
    }
    for (const std::string uri : {"HTTP://www.topografix.com/gpx/1/0", "http://WWW.TOPOGRAFIX.COM/gpx/1/1",
                                  "http://www.topogra\uFB01x.com/GPX/1/1"})
        EXPECT_EQ(Scan(Gpx("1.1", uri, before + "<wpt/>" + after)), "layer ||before|1; time 0") << uri;
}

TEST(GpxTarvikExtParserTest, OtherElementsDoNotEndTheHead) {
    const std::string form = "<tarvik:form>f</tarvik:form>";
    for (const std::string element : {"other:wpt", "tarvik:rte", "groundspeak:trk", "rtept", "trkseg",
                                      "trkpt", "wpts", "gpx", "extensions"})
        EXPECT_EQ(Scan(Gpx11("<" + element + "/>" + form)), "layer ||f|1; time 0") << element;
    EXPECT_EQ(Scan(Gpx11("<wpt xmlns=''/>" + form)), "layer ||f|1; time 0");
    EXPECT_EQ(Scan(Gpx11("<wpt xmlns='http://www.topografix.com/GPX/1/2'/>" + form)), "layer ||f|1; time 0");
    EXPECT_EQ(Scan(Gpx("1.1", "", "<wpt/>" + form)), "layer ||f|1; time 0");
}

TEST(GpxTarvikExtParserTest, ARootThatIsAWaypointIsTheWholeHead) {
    const std::string form = "<form xmlns='" + std::string(kVendorUri) + "'>f</form>";
    EXPECT_EQ(Scan("<wpt xmlns='" + std::string(kGpx11Uri) + "'>" + form + "</wpt>"), "time 0");
}

TEST(GpxTarvikExtParserTest, AnotherScanStartsAfresh) {
    const GpxFile full(Gpx11(kEverything));
    GpxTarvikExtParser scanner;
    ScanFile(scanner, full.NarrowPath());
    ASSERT_EQ(FoundBy(scanner), kEverythingFound);
    ScanBytes(scanner, WithExtensions("<tarvik:form>f</tarvik:form>"));
    EXPECT_EQ(FoundBy(scanner), "layer ||f|1; time 0");
    ScanFile(scanner, full.NarrowPath());
    EXPECT_EQ(FoundBy(scanner), kEverythingFound);
    ScanFile(scanner, full.NarrowPath() + ".missing");
    EXPECT_EQ(FoundBy(scanner), "time 0");
}

TEST(GpxTarvikExtParserTest, RecordsOutliveTheNextScanAndTheScanner) {
    boost::shared_ptr<GISMetaData> layer;
    boost::shared_ptr<AnnotateMetaData> guids;
    boost::shared_ptr<GPXStats> stats;
    {
        GpxTarvikExtParser scanner;
        ScanBytes(scanner, Gpx11(kEverything));
        layer = scanner.GetGISMetaData();
        guids = scanner.GetAnnotateMetaData();
        stats = scanner.GetStats();
        ScanBytes(scanner, WithExtensions("<tarvik:form>other</tarvik:form>"));
        EXPECT_NE(scanner.GetGISMetaData(), layer);
    }
    ASSERT_TRUE(layer && guids && stats);
    EXPECT_EQ(Utf8(layer->form), "f");
    EXPECT_EQ(Utf8(guids->trackGUID), "t");
    EXPECT_EQ(stats->trksegcount, 5);
}

TEST(GpxTarvikExtParserTest, TheGettersShareTheRecord) {
    GpxTarvikExtParser scanner;
    ScanBytes(scanner, Gpx11(kEverything));
    EXPECT_EQ(scanner.GetGISMetaData(), scanner.GetGISMetaData());
    EXPECT_EQ(scanner.GetAnnotateMetaData(), scanner.GetAnnotateMetaData());
    EXPECT_EQ(scanner.GetStats(), scanner.GetStats());
}

TEST(GpxTarvikExtParserTest, ALiteralIsAPath) {
    GpxTarvikExtParser scanner;
    ScanBytes(scanner, Gpx11(kEverything));
    scanner.Parse("no such folder/walk.gpx");
    EXPECT_EQ(FoundBy(scanner), "time 0");
    ScanBytes(scanner, Gpx11(kEverything));
    scanner.Parse(u"no such folder/walk.gpx");
    EXPECT_EQ(FoundBy(scanner), "time 0");
}

TEST(GpxTarvikExtParserTest, AnEmptyPathIsReportedAndLeavesTheResults) {
    GpxTarvikExtParser scanner;
    EXPECT_REPORT(scanner.Parse(u""), kScannerSource);
    EXPECT_EQ(FoundBy(scanner), "time 0");
    ScanBytes(scanner, Gpx11(kEverything));
    const auto layer = scanner.GetGISMetaData();
    EXPECT_REPORT(scanner.Parse(icu::UnicodeString()), kScannerSource);
    icu::UnicodeString bogus;
    bogus.setToBogus();
    EXPECT_REPORT(scanner.Parse(bogus), kScannerSource);
    EXPECT_EQ(FoundBy(scanner), kEverythingFound);
    EXPECT_EQ(scanner.GetGISMetaData(), layer);
}

TEST(GpxTarvikExtParserTest, ServesAsAContentHandler) {
    EXPECT_TRUE((std::is_base_of_v<xercesc::ContentHandler, GpxTarvikExtParser>));
    EXPECT_FALSE(std::is_copy_constructible_v<GpxTarvikExtParser>);
    EXPECT_FALSE(std::is_copy_assignable_v<GpxTarvikExtParser>);
}

} // namespace
} // namespace vexaTransferLib
