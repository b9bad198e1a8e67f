// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include <nlohmann/json.hpp>

namespace {

using cli::Gpx;
using cli::Lines;
using cli::Result;
using cli::Tool;
using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

Result Dump(const std::string& document, std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"dump", "-"});
    Result result = Tool(std::move(options)).Stdin(document).Run();
    EXPECT_EQ(result.status, 0) << document;
    EXPECT_EQ(result.err, "") << document;
    return result;
}

/// The line that `dump` prints for a document of these elements.
std::string DumpOf(const std::string& elements) {
    return Dump(Gpx(elements)).out;
}

struct Row {
    const char* reason;
    std::string elements;
    std::string expected;
};

/// The dump of a GPX 1.1 document.
std::string Document(const std::string& members, const std::string& waypoints = "",
                     const std::string& routes = "", const std::string& tracks = "") {
    return R"({"file":"-",)" + members + R"("waypoints":[)" + waypoints + R"(],"routes":[)" + routes +
           R"(],"tracks":[)" + tracks + "]}\n";
}

const std::string kVersion = R"("version":"1.1",)";

std::string WithPoint(const std::string& members) {
    return Document(kVersion, R"({"latitude":1,"longitude":2)" + members + "}");
}

std::string PointWith(const std::string& elements) {
    return R"(<wpt lat="1" lon="2">)" + elements + "</wpt>";
}

TEST(DumpCompleteTest, TheHeadOfADocumentIsPrinted) {
    const std::vector<Row> rows = {
        {"nothing", "", ""},
        {"the name is that of the file's metadata only", "<metadata><name>n</name></metadata>",
         R"("name":"n",)"},
        {"the epoch is a time", "<metadata><time>1970-01-01T00:00:00Z</time></metadata>",
         R"("time":"1970-01-01T00:00:00Z",)"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(DumpOf(row.elements), Document(row.expected + kVersion)) << row.reason;
    EXPECT_EQ(DumpOf("<metadata><desc>d</desc><author><name>a</name><email id='i' domain='d.e'/>"
                     "<link href='h'><text>t</text></link></author><copyright author='c'><year>2009</year>"
                     "<license>l</license></copyright><link href='u'/><link href='v'><type>y</type></link>"
                     "<keywords>k, l</keywords><bounds minlat='1' minlon='2' maxlat='3' maxlon='4.5'/>"
                     "</metadata>"),
              Document(kVersion + R"("description":"d","author":{"name":"a","email":"i@d.e",)"
                                  R"("link":{"url":"h","text":"t"}},)"
                                  R"("copyright":{"author":"c","year":"2009","license":"l"},)"
                                  R"("keywords":"k, l","links":[{"url":"u"},{"url":"v","type":"y"}],)"
                                  R"("bounds":{"minLatitude":1,"minLongitude":2,"maxLatitude":3,)"
                                  R"("maxLongitude":4.5},)"));
}

TEST(DumpCompleteTest, TheHeadOfGpx10IsPrinted) {
    EXPECT_EQ(Dump("<gpx version='1.0' creator='c'><desc>d</desc><author>a</author><email>e@f</email>"
                   "<url>u</url><urlname>n</urlname><keywords>k</keywords>"
                   "<bounds minlat='1' minlon='2' maxlat='3' maxlon='4'/></gpx>")
                  .out,
              Document(R"("version":"1.0","creator":"c","description":"d",)"
                       R"("author":{"name":"a","email":"e@f"},"keywords":"k",)"
                       R"("links":[{"url":"u","text":"n"}],"bounds":{"minLatitude":1,"minLongitude":2,)"
                       R"("maxLatitude":3,"maxLongitude":4},)"));
}

TEST(DumpCompleteTest, ValuesAfterThePointsAndInBothPlacesAreFound) {
    EXPECT_EQ(DumpOf("<metadata><link href='m'/></metadata><wpt lat='1' lon='2'/><keywords>k</keywords>"
                     "<url>r</url><x xmlns='urn:x'/>"),
              Document(kVersion + R"("keywords":"k","links":[{"url":"m"},{"url":"r"}],)"
                                  R"("extensions":[{"namespace":"urn:x","name":"x"}],)",
                       R"({"latitude":1,"longitude":2})"));
}

TEST(DumpCompleteTest, OtherElementsMayHaveTheNameOfTheMetadata) {
    const std::string head = "<metadata><keywords>k</keywords><link href='u'/><extensions><x xmlns=''/>"
                             "</extensions></metadata>";
    const std::string other = "<metadata xmlns='urn:m'/>";
    const std::string members =
        kVersion + R"("keywords":"k","links":[{"url":"u"}],"extensions":[{"name":"x"})";
    EXPECT_EQ(DumpOf(head), Document(members + "],"));
    for (const std::string& elements : {head + other, other + head})
        EXPECT_EQ(DumpOf(elements), Document(members + R"(,{"namespace":"urn:m","name":"metadata"}],)"));
    EXPECT_EQ(DumpOf(head + "<metadata><keywords>l</keywords><link href='v'/></metadata>"),
              Document(members + "],"));
}

TEST(DumpCompleteTest, ExtensionsOfTheMetadataArePrinted) {
    EXPECT_THAT(DumpOf("<metadata><extensions><x xmlns='urn:x'>a</x></extensions></metadata>"),
                HasSubstr(R"("extensions":[{"namespace":"urn:x","name":"x","text":"a"}],)"));
}

TEST(DumpCompleteTest, PointsHaveWhatTheModelLacks) {
    const std::vector<Row> rows = {
        {"nothing", "<ele>1</ele><time>1970-01-01T00:00:00Z</time>",
         R"(,"elevation":1,"time":"1970-01-01T00:00:00Z")"},
        {"two texts", "<cmt>c</cmt><desc>d</desc>", R"(,"comment":"c","description":"d")"},
        {"satellites", "<sat>7</sat>", R"(,"satellites":7)"},
        {"dilutions", "<hdop>1.5</hdop><vdop>2</vdop><pdop>0</pdop>", R"(,"hdop":1.5,"vdop":2,"pdop":0)"},
        {"differential GPS", "<ageofdgpsdata>4</ageofdgpsdata><dgpsid>1023</dgpsid>",
         R"(,"ageOfDgpsData":4,"dgpsId":1023)"},
        {"speed and course of GPX 1.0", "<course>90</course><speed>1.5</speed>",
         R"(,"speed":1.5,"course":90)"},
        {"no number", "<sat>many</sat><hdop/>", ""},
        {"a fix that the model does not know", "<fix>3D</fix>", R"(,"fix":"3D")"},
        {"a fix that it knows", "<fix>3d</fix>", R"(,"fix":"3d")"},
        {"a variation that it does not take", "<magvar>-3</magvar>", R"(,"magneticVariation":-3)"},
        {"a variation that it takes", "<magvar>3</magvar>", R"(,"magneticVariation":3)"},
        {"all links", "<link href='u'><text>x</text></link><link href='v'/>",
         R"(,"url":{"url":"u","text":"x"},"links":[{"url":"u","text":"x"},{"url":"v"}])"},
        {"a time of another program", "<time xmlns='urn:x'/>",
         R"(,"extensions":[{"namespace":"urn:x","name":"time"}])"},
        {"satellites of another program", "<sat xmlns='urn:x'>1</sat>",
         R"(,"extensions":[{"namespace":"urn:x","name":"sat","text":"1"}])"},
        {"a link of GPX 1.0", "<url>u</url>", R"(,"url":{"url":"u"},"links":[{"url":"u"}])"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(DumpOf(PointWith(row.elements)), WithPoint(row.expected)) << row.reason;
}

TEST(DumpCompleteTest, SensorValuesAreFoundByAllTheirNames) {
    const std::vector<std::pair<std::string, std::vector<std::string>>> sensors = {
        {"heartRate", {"hr", "heartrate", "heart_rate", "HeartRateBpm"}},
        {"cadence", {"cad", "cadence", "RunCadence"}},
        {"temperature", {"atemp", "temp", "temperature"}},
        {"waterTemperature", {"wtemp"}},
        {"power", {"power", "PowerInWatts", "Watts"}},
        {"speed", {"speed"}},
        {"course", {"course", "bearing"}},
        {"depth", {"depth"}},
    };
    for (const auto& [key, names] : sensors)
        for (const std::string& name : names)
            for (const char* around : {"", "a", "a><b", "a><b><c"}) {
                const std::string start = *around == '\0' ? "" : "<" + std::string(around) + ">";
                std::string end;
                for (const char* element = around; *element != '\0'; ++element)
                    if (*element >= 'a' && *element <= 'c')
                        end.insert(0, std::string("</") + *element + ">");
                const json dump = json::parse(DumpOf(PointWith(
                    "<extensions>" + start + "<" + name + ">12.5</" + name + ">" + end + "</extensions>")));
                EXPECT_EQ(dump["waypoints"][0].value(key, 0.0), 12.5) << name << " in " << around;
            }
}

TEST(DumpCompleteTest, SensorValuesAreInForeignElementsOfGpx10Too) {
    EXPECT_THAT(DumpOf("<trk><trkseg><trkpt lat='1' lon='2'><x:e xmlns:x='urn:x'><x:HR>90</x:HR></x:e>"
                       "</trkpt></trkseg></trk>"),
                HasSubstr(R"({"latitude":1,"longitude":2,"heartRate":90,"extensions":[{"namespace":"urn:x",)"
                          R"("name":"e","children":[{"name":"HR","text":"90"}]}]})"));
}

TEST(DumpCompleteTest, ElementsOfOtherProgramsAreObjects) {
    const std::vector<Row> rows = {
        {"nothing in it", "<x/>", R"({"name":"x"})"},
        {"no namespace", "<x xmlns=''>t</x>", R"({"name":"x","text":"t"})"},
        {"text as it is", "<x xmlns='urn:x'> a&lt;<![CDATA[<b>]]></x>",
         R"({"namespace":"urn:x","name":"x","text":" a<<b>"})"},
        {"attributes", "<x xmlns='urn:x' xmlns:y='urn:y' b='1' a='' y:b='&quot;'/>",
         R"({"namespace":"urn:x","name":"x","attributes":{"b":"1","a":"","{urn:y}b":"\""}})"},
        {"a child has a namespace only if it is another one",
         "<x xmlns='urn:x'><y/> <z xmlns='urn:z'><w/></z><v xmlns=''/></x>",
         R"({"namespace":"urn:x","name":"x","children":[{"name":"y"},{"namespace":"urn:z","name":"z",)"
         R"("children":[{"name":"w"}]},{"namespace":"","name":"v"}]})"},
        {"text between the children", "<x xmlns='urn:x'><y/>a<z/></x>",
         R"({"namespace":"urn:x","name":"x","xml":"<x xmlns='urn:x'><y/>a<z/></x>"})"},
        {"a comment between the children", "<x xmlns='urn:x'><y/><!-- a --><z/></x>",
         R"({"namespace":"urn:x","name":"x","children":[{"name":"y"},{"name":"z"}]})"},
        {"several", "<x xmlns=''/><y xmlns=''/>", R"({"name":"x"},{"name":"y"})"},
    };
    for (const Row& row : rows) {
        std::string elements = row.elements;
        if (elements == "<x/>")
            elements = "<x xmlns=''/>";
        EXPECT_EQ(DumpOf(PointWith("<extensions>" + elements + "</extensions>")),
                  WithPoint(R"(,"extensions":[)" + row.expected + "]"))
            << row.reason;
    }
    EXPECT_EQ(DumpOf(PointWith("<extensions/>")), WithPoint(""));
}

TEST(DumpCompleteTest, DeepElementsBecomeXml) {
    std::string start;
    std::string end;
    for (int i = 0; i < 60; ++i) {
        start += "<x>";
        end += "</x>";
    }
    const std::string dump =
        DumpOf(PointWith("<extensions><d xmlns=''>" + start + "t" + end + "</d></extensions>"));
    json element = json::parse(dump)["waypoints"][0]["extensions"][0];
    int levels = 1;
    for (; element.contains("children"); ++levels)
        element = json(element["children"][0]);
    EXPECT_EQ(levels, 16);
    EXPECT_THAT(element["xml"].get<std::string>(), HasSubstr("<x>t</x>"));
}

TEST(DumpCompleteTest, HostileTextsGiveValidJson) {
    const Result result =
        Dump(Gpx(PointWith("<extensions><x xmlns='urn:\"&#x9B;' xmlns:q='a&#x202E;\"\\' q:a='&#x85;\\'>"
                           "\xC2\x9B\"</x></extensions>")));
    EXPECT_THAT(result.out, Not(HasSubstr("\xC2")));
    EXPECT_THAT(result.out, Not(HasSubstr("\xE2\x80\xAE")));
    const json element = json::parse(result.out)["waypoints"][0]["extensions"][0];
    EXPECT_EQ(element["namespace"], "urn:\"\xC2\x9B");
    EXPECT_EQ(element["attributes"]["{a\xE2\x80\xAE\"\\}a"], "\xC2\x85\\");
    EXPECT_EQ(element["text"], "\xC2\x9B\"");
    EXPECT_EQ(Lines(result.out).size(), 1U);
}

TEST(DumpCompleteTest, RoutesHaveWhatTheModelLacks) {
    EXPECT_EQ(
        DumpOf("<rte><name>n</name><cmt>c</cmt><desc>d</desc><number>3</number><link href='u'/>"
               "<extensions><t:routeType>other</t:routeType></extensions></rte>"),
        Document(
            kVersion, "",
            R"({"name":"n","number":3,"comment":"c","links":[{"url":"u"}],"description":"d",)"
            R"("routeType":"other","extensions":[{"namespace":"https://tarvik.example/xmlschemas/gpx-extensions/1/0",)"
            R"("name":"routeType","text":"other"}],"points":[]})"));
    EXPECT_THAT(DumpOf("<rte><rtept lat='1' lon='2'><extensions><t:routePointType>odd</t:routePointType>"
                       "</extensions></rtept></rte>"),
                HasSubstr(R"({"latitude":1,"longitude":2,"routePointType":"odd",)"));
}

TEST(DumpCompleteTest, TracksHaveWhatTheModelLacks) {
    EXPECT_EQ(DumpOf("<trk><cmt>c</cmt><desc>d</desc><link href='u'/><link href='v'/><number>0</number>"
                     "<trkseg/></trk><trk><number>-1</number></trk>"),
              Document(kVersion, "", "",
                       R"({"description":"d","url":{"url":"u"},"number":0,"comment":"c",)"
                       R"("links":[{"url":"u"},{"url":"v"}],"segments":[[]]},{"segments":[]})"));
    EXPECT_THAT(DumpOf("<trk><extensions><t:color>70000</t:color></extensions></trk>"),
                HasSubstr(R"("tracks":[{"color":70000,)"));
    EXPECT_THAT(DumpOf("<trk><trkseg><trkpt lat='1' lon='2'/></trkseg><number>4</number></trk>"),
                HasSubstr(R"("tracks":[{"number":4,)"));
}

TEST(DumpCompleteTest, ExtensionsOfSegmentsSayWhichSegment) {
    EXPECT_EQ(DumpOf("<trk><trkseg/><trkseg><extensions><x xmlns=''/></extensions></trkseg></trk>"
                     "<trk><trkseg><extensions/></trkseg></trk>"),
              Document(kVersion, "", "",
                       R"({"segmentExtensions":[{"segment":1,"extensions":[{"name":"x"}]}],)"
                       R"("segments":[[],[]]},{"segments":[[]]})"));
}

TEST(DumpCompleteTest, WhatCannotBeReadHasItsLine) {
    const std::string gpx = R"("namespace":"http://www.topografix.com/GPX/1/1",)";
    EXPECT_EQ(Dump("<gpx xmlns='http://www.topografix.com/GPX/1/1' version='1.1'>\n"
                   "<wpt lat='1'><name>n</name></wpt>\n"
                   "<rte>\n<rtept/></rte>\n"
                   "<trk><trkseg>\n<trkpt lat='91' lon='2'/></trkseg></trk></gpx>")
                  .out,
              Document(kVersion + R"("unread":[{"line":2,)" + gpx +
                           R"("name":"wpt","attributes":{"lat":"1"},)"
                           R"("children":[{"name":"name","text":"n"}]}],)",
                       "", R"({"unread":[{"line":4,)" + gpx + R"("name":"rtept"}],"points":[]})",
                       R"({"unread":[{"line":6,)" + gpx +
                           R"("name":"trkpt","attributes":{"lat":"91","lon":"2"}}],"segments":[[]]})"));
}

std::string GeocacheWith(const std::string& attributes, const std::string& elements) {
    return PointWith("<extensions><g:cache " + attributes + ">" + elements + "</g:cache></extensions>");
}

TEST(DumpCompleteTest, GeocachesHaveWhatTheModelLacks) {
    const std::vector<Row> rows = {
        {"nothing", "", ""},
        {"people", "<g:placed_by>p</g:placed_by><g:owner id='7'>o</g:owner>",
         R"("owner":"o","placed_by":"p","owner_id":"7")"},
        {"place", "<g:country>c</g:country><g:state>s</g:state>", R"("country":"c","state":"s")"},
        {"properties", "<g:attributes><g:attribute id='1' inc='0'>Dogs</g:attribute></g:attributes>",
         R"("attributes":[{"id":1,"included":false,"name":"Dogs"}])"},
        {"texts as they stand",
         "<g:short_description html='True'>&lt;b&gt;s</g:short_description>"
         "<g:long_description html='False'>l</g:long_description>",
         R"("short_description":"<b>s","long_description":"l","short_description_html":true,)"
         R"("long_description_html":false)"},
        {"notes of users", "<g:personal_note>n</g:personal_note><g:favorite_points>5</g:favorite_points>",
         R"("personal_note":"n","favorite_points":5)"},
        {"travel bugs",
         "<g:travelbugs><g:travelbug id='1' ref='TB1'><g:name>b</g:name></g:travelbug></g:travelbugs>",
         R"("travelbugs":["b"],"travelbug_details":[{"id":1,"reference":"TB1","name":"b"}])"},
        {"a log",
         "<g:logs><g:log id='9000000000'><g:date>2009-01-15T10:20:30Z</g:date><g:finder id='x'>f</g:finder>"
         "<g:text encoded='False'>t</g:text><g:log_wpt lat='1' lon='-2.5'/></g:log><g:log/></g:logs>",
         R"("logs":[{"id":9000000000,"date":"2009-01-15T10:20:30Z","finder":"f","text":"t",)"
         R"("time":"2009-01-15T10:20:30Z","finder_id":"x","encoded":false,"latitude":1,"longitude":-2.5},{}])"},
        {"elements that nobody knows", "<g:rating>5</g:rating><x xmlns='urn:x'/>",
         R"("extensions":[{"namespace":"http://www.groundspeak.com/cache/1/0","name":"rating","text":"5"},)"
         R"({"namespace":"urn:x","name":"x"}])"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(DumpOf(GeocacheWith("", row.elements)), WithPoint(R"(,"geocache":{)" + row.expected + "}"))
            << row.reason;
}

TEST(DumpCompleteTest, AttributesOfAGeocacheArePrinted) {
    EXPECT_EQ(DumpOf(GeocacheWith("id='3' available='True' archived='False' memberonly='True' "
                                  "customcoords='False'",
                                  "")),
              WithPoint(R"(,"geocache":{"id":"3","available":true,"archived":false,"members_only":true,)"
                        R"("custom_coordinates":false})"));
}

TEST(DumpCompleteTest, OnlyTheGeocacheOfTheModelIsNoExtension) {
    const std::string dump =
        DumpOf(PointWith("<extensions><g:cache><g:name>1</g:name></g:cache><g:cache id='2'/></extensions>"));
    EXPECT_THAT(dump, HasSubstr(R"("geocache":{"name":"1"},"extensions":[{"namespace":)"));
    EXPECT_THAT(dump, HasSubstr(R"("name":"cache","attributes":{"id":"2"}}])"));
}

TEST(DumpCompleteTest, AsHostPrintsTheModelAlone) {
    const std::string document =
        Gpx("<metadata><keywords>k</keywords></metadata>" +
            PointWith("<sat>3</sat><link href='u'/><extensions><hr xmlns='urn:x'>9</hr></extensions>") +
            "<rte><number>1</number></rte><trk><number>1</number></trk>");
    EXPECT_EQ(Dump(document, {"--as-host"}).out,
              Document("", R"({"latitude":1,"longitude":2,"url":{"url":"u"}})", R"({"points":[]})",
                       R"({"segments":[]})"));
}

TEST(DumpCompleteTest, AFileWithoutANamespaceIsDumped) {
    EXPECT_EQ(Dump("<gpx><wpt lat='1' lon='2'><hdop>1</hdop></wpt></gpx>").out,
              Document("", R"({"latitude":1,"longitude":2,"hdop":1})"));
}

/// No member is there without a value, but for attributes and namespaces.
void CheckNothingEmpty(const json& value, const std::string& key) {
    EXPECT_FALSE(value.is_null()) << key;
    EXPECT_TRUE(value != "" || key == "namespace") << key;
    if (!value.is_structured() || key == "attributes")
        return;
    for (const auto& [name, member] : value.items())
        CheckNothingEmpty(member, value.is_object() ? name : key);
}

TEST(DumpCompleteTest, TheCorpusGivesJsonWithEverythingOfTheDefaultDump) {
    const std::vector<std::string> files = cli::Corpus("gpx");
    if (files.empty())
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    for (const std::string& file : files) {
        const Result result = cli::RunTool({"dump", file});
        ASSERT_EQ(result.status, 0) << file << result.err;
        ASSERT_EQ(Lines(result.out).size(), 1U) << file;
        const json dump = json::parse(result.out);
        CheckNothingEmpty(dump, file);
        const Result asHost = cli::RunTool({"dump", "--as-host", file});
        if (asHost.status != 0)
            continue;
        const json model = json::parse(asHost.out);
        for (const char* list : {"waypoints", "routes", "tracks"})
            EXPECT_GE(dump[list].size(), model[list].size()) << file;
    }
}

} // namespace
