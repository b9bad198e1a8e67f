// SPDX-License-Identifier: MIT
#include "support/Tool.h"

#include "support/ZipBuilder.h"

#include <nlohmann/json.hpp>

#include <map>

namespace {

using cli::Data;
using cli::Folder;
using cli::Gpx;
using cli::Lines;
using cli::Result;
using cli::RunTool;

/// The line that `dump` prints for a document of these elements.
std::string DumpOf(const std::string& elements) {
    const Folder folder;
    folder.Write("t.gpx", Gpx(elements));
    const Result result = RunTool({"dump", "--as-host", "t.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 0) << elements;
    EXPECT_EQ(result.err, "") << elements;
    return result.out;
}

struct Row {
    const char* reason;
    std::string elements;
    std::string expected;
};

std::string WithPoint(const std::string& members) {
    return R"({"file":"t.gpx","waypoints":[{"latitude":1,"longitude":2)" + members +
           R"(}],"routes":[],"tracks":[]})"
           "\n";
}

TEST(DumpTest, EverythingThatIsWrittenIsReadAndDumped) {
    const std::string folder = VEXA_TEST_DATA "/writer/";
    const Result result = RunTool({"dump", "--as-host", "everything-1.1.gpx"}, folder);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, cli::ReadFile(folder + "everything-1.1.json"));
}

TEST(DumpTest, AFileWrittenByHandHasTheGivenShapeAndOrder) {
    const Result result = RunTool({"dump", "--as-host", "hand-written.gpx"}, Data(""));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, cli::ReadFile(Data("hand-written.json")));
}

TEST(DumpTest, AnEmptyDocumentHasItsFileAndThreeEmptyLists) {
    const Result result = RunTool({"dump", "--as-host", "empty.gpx"}, Data(""));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, R"({"file":"empty.gpx","waypoints":[],"routes":[],"tracks":[]})"
                          "\n");
}

TEST(DumpTest, PointMembers) {
    const std::vector<Row> rows = {
        {"nothing but a position", "", ""},
        {"an integer has no fraction", "<ele>45.0</ele>", R"(,"elevation":45)"},
        {"zero is present", "<ele>0</ele>", R"(,"elevation":0)"},
        {"shortest form", "<ele>0.1</ele>", R"(,"elevation":0.1)"},
        {"seventeen digits where it takes them", "<ele>0.30000000000000004</ele>",
         R"(,"elevation":0.30000000000000004)"},
        {"digits that change nothing", "<ele>0.30000000000000001</ele>", R"(,"elevation":0.3)"},
        {"an exponent where it is shorter", "<ele>1e300</ele>", R"(,"elevation":1e+300)"},
        {"a tiny number", "<ele>5e-324</ele>", R"(,"elevation":5e-324)"},
        {"the sign of zero", "<ele>-0</ele>", R"(,"elevation":-0)"},
        {"no number", "<ele>nan</ele>", R"(,"elevation":"NaN")"},
        {"infinity", "<ele>inf</ele>", R"(,"elevation":"Infinity")"},
        {"negative infinity", "<geoidheight>-inf</geoidheight>", R"(,"geoidHeight":"-Infinity")"},
        {"milliseconds", "<time>2009-01-15T10:20:30.25Z</time>", R"(,"time":"2009-01-15T10:20:30.25Z")"},
        {"an offset becomes UTC", "<time>2009-01-15T12:20:30+02:00</time>",
         R"(,"time":"2009-01-15T10:20:30Z")"},
        {"a point's time may be the epoch", "<time>1970-01-01T00:00:00Z</time>",
         R"(,"time":"1970-01-01T00:00:00Z")"},
        {"a time that cannot be read", "<time>yesterday</time>", ""},
        {"variation", "<magvar>359.5</magvar>", R"(,"magneticVariation":359.5)"},
        {"variation out of range", "<magvar>360</magvar>", ""},
        {"empty texts", "<name/><desc></desc><src/><sym/><type/>", ""},
        {"blanks are a text", "<name> </name>", R"(,"name":" ")"},
        {"cmt is read as description", "<cmt>c</cmt><desc>d</desc>", R"(,"description":"c")"},
        {"link", R"(<link href="u"/>)", R"(,"url":{"url":"u"})"},
        {"link with text", R"(<link href="u"><text>x</text></link>)", R"(,"url":{"url":"u","text":"x"})"},
        {"link with type", R"(<link href="u"><type>x</type></link>)", R"(,"url":{"url":"u","type":"x"})"},
        {"fix none", "<fix>none</fix>", R"(,"fix":"none")"},
        {"fix 2d", "<fix>2d</fix>", R"(,"fix":"2d")"},
        {"fix 3d", "<fix>3d</fix>", R"(,"fix":"3d")"},
        {"fix dgps", "<fix>dgps</fix>", R"(,"fix":"dgps")"},
        {"fix pps", "<fix>pps</fix>", R"(,"fix":"pps")"},
        {"fix of another kind", "<fix>3D</fix>", ""},
    };
    for (const Row& row : rows)
        EXPECT_EQ(DumpOf(R"(<wpt lat="1" lon="2">)" + row.elements + "</wpt>"), WithPoint(row.expected))
            << row.reason;
}

TEST(DumpTest, VendorMembersOfAPoint) {
    const std::vector<Row> rows = {
        {"no symbol number", "<t:tovasymbol>0</t:tovasymbol>", ""},
        {"negative symbol number", "<t:tovasymbol>-3</t:tovasymbol>", ""},
        {"symbol number", "<t:tovasymbol>1</t:tovasymbol>", R"(,"symbolNumber":1)"},
        {"an integer stands plainly", "<t:tovasymbol>100,000</t:tovasymbol>", R"(,"symbolNumber":100000)"},
        {"guid without braces", "<t:objectid>{x}</t:objectid>", R"(,"guid":"x")"},
        {"guid of braces only", "<t:objectid>{}</t:objectid>", ""},
        {"no form attribute", "<t:formdata/>", ""},
        {"form attribute without value and time", R"(<t:formdata><t:formstring key="k"/></t:formdata>)",
         R"(,"formAttributes":[{"key":"k"}])"},
        {"form attribute with the epoch as time",
         R"(<t:formdata><t:formstring key="k" modtime="1970-01-01T00:00:00Z">v</t:formstring></t:formdata>)",
         R"(,"formAttributes":[{"key":"k","value":"v"}])"},
        {"form attribute with a time",
         R"(<t:formdata><t:formstring key="k" modtime="1970-01-01T00:00:01Z">v</t:formstring></t:formdata>)",
         R"(,"formAttributes":[{"key":"k","value":"v","modTime":"1970-01-01T00:00:01Z"}])"},
        {"the first spelling of a key, in the order of the keys",
         R"(<t:formdata><t:formstring key="b">1</t:formstring><t:formstring key="Aa">2</t:formstring>)"
         R"(<t:formstring key="aA">3</t:formstring></t:formdata>)",
         R"(,"formAttributes":[{"key":"Aa","value":"3"},{"key":"b","value":"1"}])"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(DumpOf(R"(<wpt lat="1" lon="2"><extensions>)" + row.elements + "</extensions></wpt>"),
                  WithPoint(row.expected))
            << row.reason;
}

TEST(DumpTest, GeocacheMembers) {
    const std::string log = "<g:date>d</g:date><g:finder>f</g:finder><g:text>t</g:text>";
    const std::vector<Row> rows = {
        {"absent", "<g:logs/>", ""},
        {"present and empty", "<g:name>&lt;i&gt;</g:name>", R"(,"geocache":{})"},
        {"one text", "<g:terrain>5</g:terrain>", R"(,"geocache":{"terrain":"5"})"},
        {"empty lists", "<g:name>n</g:name><g:logs/><g:travelbugs/>", R"(,"geocache":{"name":"n"})"},
        {"log without id and type", "<g:name>n</g:name><g:logs><g:log>" + log + "</g:log></g:logs>",
         R"(,"geocache":{"name":"n","logs":[{"date":"d","finder":"f","text":"t"}]})"},
        {"log with id 0", "<g:name>n</g:name><g:logs><g:log id='0'>" + log + "</g:log></g:logs>",
         R"(,"geocache":{"name":"n","logs":[{"date":"d","finder":"f","text":"t"}]})"},
        {"log with a negative id",
         "<g:name>n</g:name><g:logs><g:log id='-4'>" + log + "<g:type>y</g:type></g:log></g:logs>",
         R"(,"geocache":{"name":"n","logs":[{"id":-4,"date":"d","finder":"f","text":"t","type":"y"}]})"},
        {"travel bugs",
         "<g:name>n</g:name><g:travelbugs><g:travelbug><g:name>b</g:name></g:travelbug></g:travelbugs>",
         R"(,"geocache":{"name":"n","travelbugs":["b"]})"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(DumpOf(R"(<wpt lat="1" lon="2"><g:cache>)" + row.elements + "</g:cache></wpt>"),
                  WithPoint(row.expected))
            << row.reason;
}

TEST(DumpTest, DocumentMembers) {
    const std::string none = R"("waypoints":[],"routes":[],"tracks":[]})";
    const std::string vendor = "<metadata><extensions>";
    const std::string end = "</extensions></metadata>";
    const std::vector<Row> rows = {
        {"no name", "", R"({"file":"t.gpx",)"},
        {"an empty name", "<metadata><name/></metadata>", R"({"file":"t.gpx",)"},
        {"the name of the file, which the file has", "<metadata><name>t</name></metadata>",
         R"({"file":"t.gpx","name":"t",)"},
        {"time", "<metadata><time>1970-01-01T00:00:01Z</time></metadata>",
         R"({"file":"t.gpx","time":"1970-01-01T00:00:01Z",)"},
        {"the epoch is no time", "<metadata><time>1970-01-01T00:00:00Z</time></metadata>",
         R"({"file":"t.gpx",)"},
        {"empty records", vendor + end,
         R"({"file":"t.gpx","gisMetaData":{"defaultSymbol":1},"annotateMetaData":{},)"},
        {"default symbol 0", vendor + "<t:defaultsymbol>x</t:defaultsymbol>" + end,
         R"({"file":"t.gpx","gisMetaData":{"defaultSymbol":0},"annotateMetaData":{},)"},
        {"layer name alone", vendor + "<t:layername>l</t:layername>" + end,
         R"({"file":"t.gpx","gisMetaData":{"layerName":"l","defaultSymbol":1},"annotateMetaData":{},)"},
        {"waypoint GUID alone", vendor + "<t:waypointGUID>w</t:waypointGUID>" + end,
         R"({"file":"t.gpx","gisMetaData":{"defaultSymbol":1},"annotateMetaData":{"waypointGUID":"w"},)"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(DumpOf(row.elements), row.expected + none + "\n") << row.reason;
}

TEST(DumpTest, RouteMembers) {
    const std::string type = "<extensions><t:routeType>";
    const std::vector<Row> rows = {
        {"nothing", "<rte/>", R"({"points":[]})"},
        {"by points", "<rte>" + type + "points</t:routeType></extensions></rte>",
         R"({"routeType":"points","points":[]})"},
        {"directions", "<rte>" + type + "directions</t:routeType></extensions></rte>",
         R"({"routeType":"directions","points":[]})"},
        {"standard", "<rte>" + type + "other</t:routeType></extensions></rte>", R"({"points":[]})"},
        {"texts", "<rte><name>n</name><src>s</src><type>y</type></rte>",
         R"({"name":"n","source":"s","type":"y","points":[]})"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(DumpOf(row.elements), R"({"file":"t.gpx","waypoints":[],"routes":[)" + row.expected +
                                            R"(],"tracks":[]})"
                                            "\n")
            << row.reason;
}

TEST(DumpTest, RoutePointTypes) {
    for (const std::string type : {"start", "stop", "via", "finish", "turn"}) {
        const std::string dump = DumpOf("<rte><rtept lat='1' lon='2'><extensions><t:routePointType>" + type +
                                        "</t:routePointType></extensions></rtept></rte>");
        EXPECT_EQ(
            dump,
            R"({"file":"t.gpx","waypoints":[],"routes":[{"points":[{"latitude":1,"longitude":2,"routePointType":")" +
                type +
                R"("}]}],"tracks":[]})"
                "\n");
    }
}

TEST(DumpTest, TrackMembers) {
    const auto colour = [](const std::string& number) {
        return "<trk><extensions><t:color>" + number + "</t:color></extensions></trk>";
    };
    const std::vector<Row> rows = {
        {"nothing", "<trk/>", R"({"segments":[]})"},
        {"an empty segment", "<trk><trkseg/></trk>", R"({"segments":[[]]})"},
        {"colour 0", colour("0"), R"({"color":0,"segments":[]})"},
        {"colour", colour("32767"), R"({"color":32767,"segments":[]})"},
        {"no colour", colour("-1"), R"({"segments":[]})"},
        {"no colour in 16 bits", colour("65535"), R"({"segments":[]})"},
        {"texts", "<trk><name>n</name><cmt>d</cmt><src>s</src><type>y</type></trk>",
         R"({"name":"n","description":"d","source":"s","type":"y","segments":[]})"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(DumpOf(row.elements),
                  R"({"file":"t.gpx","waypoints":[],"routes":[],"tracks":[)" + row.expected + "]}\n")
            << row.reason;
}

TEST(DumpTest, TextsAreEscapedAndStayOnOneLine) {
    EXPECT_EQ(DumpOf("<wpt lat='1' lon='2'><name>\"\\/ \n\t&#x1F600; é &lt;&amp;</name></wpt>"),
              WithPoint(R"(,"name":"\"\\/ \n\t😀 é <&")"));
    const Result control = RunTool({"dump", "--as-host", Data("control-character.gpx")});
    EXPECT_THAT(control.out, testing::HasSubstr(R"("bell \u0007 and escape \u001b[31m")"));
}

TEST(DumpTest, ANameThatAFailedFileLacksIsNotTakenFromTheNextOne) {
    const Folder folder;
    folder.Write("nameless.gpx", "<gpx><wpt lat='1' lon='2'/><wpt>");
    folder.Write("named.gpx", Gpx("<metadata><name>n</name></metadata>"));
    const Result result = RunTool({"dump", "--as-host", "nameless.gpx", "named.gpx"}, folder.Path());
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, R"({"file":"named.gpx","name":"n","waypoints":[],"routes":[],"tracks":[]})"
                          "\n");
}

TEST(DumpTest, AnEntryOfAnArchiveNamesItsFileToo) {
    const Folder folder;
    folder.Write("a.zip", testing_support::BuildZip({{.name = "x/e.gpx", .content = Gpx("")}}));
    for (const std::string option : {"--as-host", "--no-progress"}) {
        const Result result = RunTool({"dump", option, "a.zip"}, folder.Path());
        EXPECT_THAT(result.out, testing::StartsWith(R"({"entry":"x/e.gpx","file":"a.zip",)"));
        EXPECT_THAT(result.out, testing::Not(testing::HasSubstr("\"name\":")));
    }
}

TEST(DumpTest, StandardInputIsNamedAsOnTheCommandLine) {
    const Result result = cli::Tool({"dump", "--as-host", "-"}).Stdin(Gpx("")).Run();
    EXPECT_EQ(result.out, R"({"file":"-","waypoints":[],"routes":[],"tracks":[]})"
                          "\n");
}

TEST(DumpTest, EachFileGivesOneLine) {
    const Result result =
        RunTool({"dump", "--as-host", "empty.gpx", "hand-written.gpx", "empty.gpx"}, Data(""));
    EXPECT_EQ(result.status, 0);
    ASSERT_EQ(Lines(result.out).size(), 3U);
    EXPECT_EQ(Lines(result.out)[0], Lines(result.out)[2]);
    EXPECT_EQ(Lines(result.out)[1] + "\n", cli::ReadFile(Data("hand-written.json")));
}

/// Members of each kind of record in the order that is allowed.
const std::map<std::string, std::vector<std::string>> kShape = {
    {"document",
     {"file", "name", "time", "gisMetaData", "annotateMetaData", "stats", "waypoints", "routes", "tracks"}},
    {"gisMetaData", {"layerKey", "layerName", "form", "defaultSymbol"}},
    {"annotateMetaData", {"trackGUID", "waypointGUID"}},
    {"routes", {"name", "source", "type", "routeType", "points"}},
    {"tracks", {"name", "description", "source", "type", "url", "color", "segments"}},
    {"url", {"url", "text", "type"}},
    {"point",
     {"latitude", "longitude", "elevation", "time", "magneticVariation", "geoidHeight", "name", "comment",
      "description", "source", "url", "symbol", "type", "fix", "routePointType", "symbolNumber", "guid",
      "formAttributes", "geocache"}},
    {"formAttributes", {"key", "value", "modTime"}},
    {"geocache",
     {"name", "owner", "type", "container", "difficulty", "terrain", "short_description", "long_description",
      "encoded_hints", "logs", "travelbugs"}},
    {"logs", {"id", "date", "finder", "text", "type"}},
};

std::string KindOf(const std::string& key) {
    return key == "waypoints" || key == "points" || key == "segments" ? "point" : key;
}

void CheckShape(const nlohmann::ordered_json& value, const std::string& kind) {
    if (value.is_array()) {
        for (const nlohmann::ordered_json& element : value)
            CheckShape(element, kind);
        return;
    }
    if (!value.is_object())
        return;
    const std::vector<std::string>& order = kShape.at(kind);
    auto place = order.begin();
    for (const auto& [key, member] : value.items()) {
        place = std::find(place, order.end(), key);
        ASSERT_NE(place, order.end()) << kind << "." << key;
        EXPECT_NE(member, "") << kind << "." << key;
        CheckShape(member, KindOf(key));
    }
}

TEST(DumpTest, TheCorpusGivesJsonOfThisShape) {
    const std::vector<std::string> files = cli::Corpus("gpx");
    if (files.empty())
        GTEST_SKIP() << "the shared corpus is not beside the repository";
    std::size_t read = 0;
    for (const std::string& file : files) {
        const Result result = RunTool({"dump", "--as-host", file});
        if (result.status != 0) {
            EXPECT_EQ(result.out, "") << file;
            continue;
        }
        ++read;
        ASSERT_EQ(Lines(result.out).size(), 1U) << file;
        EXPECT_EQ(result.out.back(), '\n') << file;
        const auto json = nlohmann::ordered_json::parse(result.out);
        CheckShape(json, "document");
        for (const char* list : {"waypoints", "routes", "tracks"})
            EXPECT_TRUE(json.at(list).is_array()) << file;
    }
    EXPECT_GT(read, files.size() / 2);
}

} // namespace
