// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/VendorReader.h>

#include <vexaTransferLib/GpxParser.h>

#include "support/ContractChecks.h"
#include "support/FakeNode.h"
#include "support/GpxDom.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <stdexcept>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

// The extensions element of a document around these children, in GPX 1.1.
std::string Extensions(const std::string& children) {
    return Gpx11("<extensions>" + children + "</extensions>");
}

// The type as a number; 0 when the reader returned false and left its output untouched.
int RouteType(const std::string& children) {
    const DomTree tree(Extensions(children));
    auto type = static_cast<TarvikRouteType>(77);
    const bool read = GpxParser().GetTarvikRouteTypeElement(tree.Find("extensions"), type);
    EXPECT_EQ(read, type != 77u) << children;
    return read ? static_cast<int>(type) : 0;
}

int RoutePointType(const std::string& children) {
    const DomTree tree(Extensions(children));
    auto type = static_cast<TarvikRoutePointType>(77);
    const bool read = GpxParser().GetTarvikRoutePointTypeElement(tree.Find("extensions"), type);
    EXPECT_EQ(read, type != 77u) << children;
    return read ? static_cast<int>(type) : 0;
}

std::string Element(const std::string& name, const std::string& text) {
    return "<" + name + ">" + text + "</" + name + ">";
}

TEST(VendorTypeReaderTest, MapsTheTextsExactly) {
    struct Row {
        const char* text;
        int routeType;
        int routePointType;
    };
    constexpr Row kRows[] = {{"points", 1, 0}, {"directions", 2, 0}, {"start", 0, 1},   {"stop", 0, 2},
                             {"via", 0, 3},    {"finish", 0, 4},     {"turn", 0, 5},    {"Turn", 0, 0},
                             {"POINTS", 0, 0}, {" via", 0, 0},       {"via ", 0, 0},    {"standard", 0, 0},
                             {"", 0, 0},       {"1", 0, 0},          {"v\u00EFa", 0, 0}};
    for (const Row& row : kRows) {
        EXPECT_EQ(RouteType(Element("tarvik:routeType", row.text)), row.routeType) << row.text;
        EXPECT_EQ(RoutePointType(Element("tarvik:routePointType", row.text)), row.routePointType) << row.text;
        EXPECT_EQ(RouteType(Element("tarvik:routePointType", row.text)), 0) << row.text;
        EXPECT_EQ(RoutePointType(Element("tarvik:routeType", row.text)), 0) << row.text;
    }
}

TEST(VendorTypeReaderTest, WantsTheVendorNamespace) {
    EXPECT_EQ(RouteType("<routeType>points</routeType>"), 0);
    EXPECT_EQ(RouteType("<other:routeType>points</other:routeType>"), 0);
    EXPECT_EQ(RouteType("<routeType xmlns=''>points</routeType>"), 0);
    EXPECT_EQ(
        RouteType("<r:routeType "
                  "xmlns:r='https://tarvik.example/xmlschemas/gpx-extensions/1/0/'>points</r:routeType>"),
        0);
    EXPECT_EQ(
        RouteType(
            "<routeType xmlns='https://tarvik.example/xmlschemas/gpx-extensions/1/0'>points</routeType>"),
        1);
    EXPECT_EQ(RoutePointType("<routePointType>via</routePointType>"), 0);
    EXPECT_EQ(
        RoutePointType("<p:routePointType xmlns:p='https://tarvik.example/xmlschemas/gpx-extensions/1/0'>via"
                       "</p:routePointType>"),
        3);
}

TEST(VendorTypeReaderTest, TheLastRecognisedTypeCounts) {
    EXPECT_EQ(RoutePointType("<tarvik:routePointType>start</tarvik:routePointType>"
                             "<tarvik:routePointType>turn</tarvik:routePointType>"
                             "<tarvik:routePointType>oops</tarvik:routePointType>"
                             "<tarvik:routePointType/>"),
              5);
    EXPECT_EQ(
        RouteType(
            "<tarvik:routeType>directions</tarvik:routeType><tarvik:routeType>points</tarvik:routeType>"),
        1);
}

TEST(VendorTypeReaderTest, LooksAtChildrenOnly) {
    EXPECT_EQ(RouteType("<other:x><tarvik:routeType>points</tarvik:routeType></other:x>"), 0);
    EXPECT_EQ(RouteType("<tarvik:routeType><!-- c -->points</tarvik:routeType>"), 0);
    EXPECT_EQ(RouteType("<tarvik:routeType><![CDATA[points]]></tarvik:routeType>"), 1);
    EXPECT_EQ(RouteType("text<!-- c -->"), 0);
}

TEST(VendorTypeReaderTest, TheElementsOwnNameDoesNotMatter) {
    const DomTree tree(
        "<x xmlns='https://tarvik.example/xmlschemas/gpx-extensions/1/0'><routeType>points</routeType></x>");
    TarvikRouteType type = kTarvikRouteStandard;
    EXPECT_TRUE(GpxParser().GetTarvikRouteTypeElement(tree.Root(), type));
    EXPECT_EQ(type, kTarvikRoutePoints);
}

constexpr char kNoChildren[] = "Unable to read GPX extension child elements.";

TEST(VendorTypeReaderTest, WithoutAChildListItFails) {
    const FakeNodePtr node = WithoutChildList(*Gpx11Node(u"extensions"));
    TarvikRouteType routeType = kTarvikRouteDirections;
    TarvikRoutePointType routePointType = kTarvikRoutePointTurn;
    EXPECT_FAILURE(reader::ReadRouteType(AnyContext(), node->View(), routeType), dbc::postcondition_error,
                   kNoChildren, kParserSource);
    EXPECT_FAILURE(reader::ReadRoutePointType(AnyContext(), node->View(), routePointType),
                   dbc::postcondition_error, kNoChildren, kParserSource);
    GpxParser parser;
    EXPECT_FAILURE(parser.GetTarvikRouteTypeElement(nullptr, routeType), dbc::postcondition_error,
                   kNoChildren, kParserSource);
    EXPECT_FAILURE(parser.GetTarvikRoutePointTypeElement(nullptr, routePointType), dbc::postcondition_error,
                   kNoChildren, kParserSource);
    EXPECT_EQ(routeType, kTarvikRouteDirections);
    EXPECT_EQ(routePointType, kTarvikRoutePointTurn);
}

FakeNodePtr VendorText(const char16_t* name, const char16_t* text) {
    const FakeNodePtr node = Gpx11Text(name, text);
    node->namespaceUri = u"https://tarvik.example/xmlschemas/gpx-extensions/1/0";
    return node;
}

TEST(VendorTypeReaderTest, AMissingChildIsReportedAndSkipped) {
    const FakeNodePtr node = Gpx11Node(
        u"extensions", {nullptr, VendorText(u"routeType", u"points"), VendorText(u"routePointType", u"via")});
    TarvikRouteType routeType = kTarvikRouteStandard;
    TarvikRoutePointType routePointType{};
    EXPECT_REPORT(EXPECT_TRUE(reader::ReadRouteType(AnyContext(), node->View(), routeType)), kParserSource);
    EXPECT_REPORT(EXPECT_TRUE(reader::ReadRoutePointType(AnyContext(), node->View(), routePointType)),
                  kParserSource);
    EXPECT_EQ(routeType, kTarvikRoutePoints);
    EXPECT_EQ(routePointType, kTarvikRoutePointVia);
}

TEST(VendorTypeReaderTest, AFailingChildIsSkippedIfItsExceptionIsAStandardOne) {
    const FakeNodePtr good = VendorText(u"routeType", u"points");
    const auto read = [&](const FakeNodePtr& bad) {
        TarvikRouteType type = kTarvikRouteStandard;
        reader::ReadRouteType(AnyContext(), Gpx11Node(u"extensions", {good, bad})->View(), type);
        return type;
    };
    EXPECT_EQ(read(Throwing(*VendorText(u"routeType", u"directions"), std::runtime_error("any"))),
              kTarvikRoutePoints);
    EXPECT_THROW(read(Throwing(*VendorText(u"routeType", u"directions"), 5)), int);
}

GpxPoint ReadPointData(const std::string& children) {
    const DomTree tree(Extensions(children));
    GpxPoint point(kGpxWaypoint, 0.0, 0.0);
    GpxParser().GetTarvikDataElementsFromWptExtensions(tree.Find("extensions"), point);
    return point;
}

TEST(WaypointDataReaderTest, SymbolNumbersAreReadAsStrToInt) {
    struct Row {
        const char* text;
        std::int32_t number;
    };
    constexpr Row kRows[] = {
        {"42", 42},
        {"x", 0},
        {"7.9", 7},
        {"1,234", 1234},
        {"12abc", 12},
        {" 5", 0},
        {"-5", -5},
        {"NaN", INT32_MIN},
        {"", 77},
        {"0", 0},
        {"2147483648", INT32_MAX},
        {"4294967297", INT32_MAX},
        {"-99999999999", INT32_MIN},
    };
    for (const Row& row : kRows) {
        const DomTree tree(
            Extensions("<tarvik:tovasymbol>" + std::string(row.text) + "</tarvik:tovasymbol>"));
        GpxPoint point(kGpxWaypoint, 0.0, 0.0);
        GpxModelAccess::SetSymbolNumber(point, 77);
        GpxParser().GetTarvikDataElementsFromWptExtensions(tree.Find("extensions"), point);
        EXPECT_EQ(GpxModelAccess::GetSymbolNumber(point), row.number) << row.text;
    }
}

TEST(WaypointDataReaderTest, ALongSymbolNumberIsReadFromItsFirst400CodeUnits) {
    EXPECT_EQ(
        GpxModelAccess::GetSymbolNumber(ReadPointData("<tovasymbol>" + Repeat("0", 399) + "12</tovasymbol>")),
        1);
}

TEST(WaypointDataReaderTest, AnObjectIdLosesItsBraces) {
    struct Row {
        const char* text;
        const char* guid;
    };
    constexpr Row kRows[] = {
        {"abc", "abc"}, {"{abc}", "abc"},   {"{abc", "abc"},    {"abc}", "abc"}, {"{{abc}}", "{abc}"},
        {"{}", ""},     {"a{b}c", "a{b}c"}, {" {a} ", " {a} "}, {"{", ""},       {"", "before"}};
    for (const Row& row : kRows) {
        const DomTree tree(Extensions("<tarvik:objectid>" + std::string(row.text) + "</tarvik:objectid>"));
        GpxPoint point(kGpxWaypoint, 0.0, 0.0);
        GpxModelAccess::SetGUID(point, u"before");
        GpxParser().GetTarvikDataElementsFromWptExtensions(tree.Find("extensions"), point);
        EXPECT_EQ(GuidOf(point), row.guid) << row.text;
    }
}

TEST(WaypointDataReaderTest, TheLastOfANameCountsInAnyNamespace) {
    const GpxPoint point =
        ReadPointData("<tovasymbol>1</tovasymbol><other:tovasymbol>2</other:tovasymbol>"
                      "<tovasymbol xmlns=''>3</tovasymbol><tovasymbol/>"
                      "<objectid>A</objectid><tarvik:objectid>B</tarvik:objectid><objectid/>"
                      "<ToVaSymbol>9</ToVaSymbol>text<!-- c -->");
    EXPECT_EQ(GpxModelAccess::GetSymbolNumber(point), 3);
    EXPECT_EQ(GuidOf(point), "B");
}

// "key=value@time;" in the order of the map, the map's key in brackets where the record's differs.
std::string FormOf(const GpxPoint& point) {
    std::string text;
    for (const auto& [key, record] : GpxModelAccess::GetFormAttributes(point)) {
        if (record->key != key)
            text += "[" + Utf8(key) + "]";
        text += Utf8(record->key) + "=" + Utf8(record->value) + "@" +
                std::to_string(static_cast<long>(record->modTime)) + ";";
    }
    return text;
}

TEST(WaypointDataReaderTest, ReadsFormStrings) {
    struct Row {
        const char* strings;
        const char* form;
    };
    constexpr Row kRows[] = {
        {"<tarvik:formstring key='k' modtime='1970-01-01T00:00:01Z'>v</tarvik:formstring>", "k=v@1000;"},
        {"<formstring key='k'>v</formstring>", "k=v@0;"},
        {"<formstring key='k' modtime=''>v</formstring>", "k=v@0;"},
        {"<formstring key='k' modtime='yesterday'>v</formstring>", "k=v@0;"},
        {"<formstring key='k' modtime='1970-01-01T00:00:01.500Z'/>", "k=@1500;"},
        {"<formstring key='k'><!-- c -->v</formstring>", "k=@0;"},
        {"<formstring key='k'><![CDATA[ <v> ]]></formstring>", "k= <v> @0;"},
        {"<formstring>v</formstring>", ""},
        {"<formstring key=''>v</formstring>", ""},
        {"<formstring Key='k'>v</formstring>", ""},
        {"<other:formstring key='k'>v</other:formstring>", "k=v@0;"},
        {"<formstring xmlns='' key='k'>v</formstring>", "k=v@0;"},
        {"<FormString key='k'>v</FormString>", ""},
        {"<formint key='k'>v</formint>text", ""},
        {"<formstring key='b'>1</formstring><formstring key='A'>2</formstring>", "A=2@0;b=1@0;"},
        {"<formstring key='Color'>red</formstring><formstring key='COLOR'>blue</formstring>",
         "[Color]COLOR=blue@0;"},
        {"<formstring key='&lt;&quot;&#10;'>v</formstring>", "<\"\n=v@0;"},
    };
    for (const Row& row : kRows)
        EXPECT_EQ(
            FormOf(ReadPointData("<tarvik:formdata>" + std::string(row.strings) + "</tarvik:formdata>")),
            row.form)
            << row.strings;
}

TEST(WaypointDataReaderTest, OnlyTheLastFormIsRead) {
    EXPECT_EQ(
        FormOf(ReadPointData("<formdata><formstring key='a'>1</formstring></formdata><objectid>G</objectid>"
                             "<formdata><formstring key='b'>2</formstring></formdata>")),
        "b=2@0;");
    EXPECT_EQ(FormOf(ReadPointData("<formdata><formstring key='a'>1</formstring></formdata><formdata/>")),
              "");
    EXPECT_EQ(FormOf(ReadPointData("<formstring key='a'>1</formstring>")), "");
}

TEST(WaypointDataReaderTest, OtherElementsThanExtensionsAreIgnoredWithoutAReport) {
    const DomTree tree("<Extensions><objectid>G</objectid><tovasymbol>5</tovasymbol></Extensions>");
    GpxPoint point(kGpxWaypoint, 0.0, 0.0);
    EXPECT_EQ(
        CaptureStandardError([&] { GpxParser().GetTarvikDataElementsFromWptExtensions(tree.Root(), point); }),
        "");
    EXPECT_FALSE(point.ContainsExtensions());
}

TEST(WaypointDataReaderTest, ExtensionsOfAnyNamespaceAreRead) {
    const DomTree tree("<extensions><objectid>G</objectid></extensions>");
    GpxPoint point(kGpxWaypoint, 0.0, 0.0);
    GpxParser().GetTarvikDataElementsFromWptExtensions(tree.Root(), point);
    EXPECT_EQ(GuidOf(point), "G");
}

TEST(WaypointDataReaderTest, ANullNodeOrOneWithoutALocalNameIsReported) {
    const DomTree tree("<r>text</r>");
    GpxParser parser;
    GpxPoint point(kGpxWaypoint, 0.0, 0.0);
    EXPECT_REPORT(parser.GetTarvikDataElementsFromWptExtensions(nullptr, point), kParserSource);
    EXPECT_REPORT(parser.GetTarvikDataElementsFromWptExtensions(tree.Root()->getFirstChild(), point),
                  kParserSource);
    EXPECT_FALSE(point.ContainsExtensions());
}

TEST(WaypointDataReaderTest, MissingChildrenAndListsAreSkipped) {
    const FakeNodePtr nameless = Gpx11Text(u"objectid", u"X");
    nameless->localName.reset();
    const FakeNodePtr formString = Gpx11Text(u"formstring", u"v");
    formString->attributes = {{u"key", u"k"}};
    const FakeNodePtr form = Gpx11Node(u"formdata", {nullptr, nameless, formString});
    MarkingContext context;
    reader::FieldSources sources(context.reporter, reader::FieldSources::Lifetime::kLong);
    GpxPoint point(kGpxWaypoint, 0.0, 0.0);
    const auto read = [&](const FakeNodePtr& node) {
        return CaptureStandardError([&] { reader::ReadWaypointData(context, sources, node->View(), point); });
    };
    EXPECT_EQ(read(Gpx11Node(u"extensions", {nullptr, nameless, form, Gpx11Text(u"objectid", u"G")})), "");
    EXPECT_EQ(FormOf(point), "k=v@0;");
    EXPECT_EQ(GuidOf(point), "G");
    EXPECT_EQ(read(WithoutChildList(*Gpx11Node(u"extensions"))), "");
    EXPECT_EQ(read(Gpx11Node(u"extensions", {WithoutChildList(*Gpx11Node(u"formdata"))})), "");
    EXPECT_EQ(FormOf(point), "k=v@0;");
}

TEST(WaypointDataReaderTest, TheExceptionOfAChildIsPassedOn) {
    MarkingContext context;
    reader::FieldSources sources(context.reporter, reader::FieldSources::Lifetime::kLong);
    GpxPoint point(kGpxWaypoint, 0.0, 0.0);
    const FakeNodePtr node =
        Gpx11Node(u"extensions", {Throwing(*Gpx11Text(u"objectid", u"G"), std::runtime_error("any"))});
    EXPECT_THROW(reader::ReadWaypointData(context, sources, node->View(), point), std::runtime_error);
}

std::int16_t ColorFrom(const std::string& children, std::int16_t before = -1) {
    const DomTree tree(Extensions(children));
    GpxTrack track;
    GpxModelAccess::SetColor(track, before);
    GpxParser().GetTarvikDataElementsFromTrkExtensions(tree.Find("extensions"), track);
    return GpxModelAccess::GetColor(track);
}

TEST(TrackDataReaderTest, ColorsKeepTheLow16BitsOfTheClampedNumber) {
    struct Row {
        const char* text;
        std::int16_t color;
    };
    constexpr Row kRows[] = {
        {"0", 0},          {"255", 255},       {"12,345", 12345},   {"32767", 32767},    {"32768", -32768},
        {"65535", -1},     {"65536", 0},       {"65537", 1},        {"-1", -1},          {"-5", -5},
        {"-32769", 32767}, {"7.9", 7},         {"12abc", 12},       {" 5", 0},           {"x", 0},
        {"NaN", 0},        {"2147483647", -1}, {"99999999999", -1}, {"-99999999999", 0}, {"#ff0000", 0},
        {"", 77},
    };
    for (const Row& row : kRows)
        EXPECT_EQ(ColorFrom("<tarvik:color>" + std::string(row.text) + "</tarvik:color>", 77), row.color)
            << row.text;
}

TEST(TrackDataReaderTest, TheLastColorCountsInAnyNamespace) {
    EXPECT_EQ(
        ColorFrom(
            "<color>1</color><other:color>2</other:color><color xmlns=''>3</color><color/><Color>9</Color>"),
        3);
    EXPECT_EQ(ColorFrom("<other:x><color>1</color></other:x>text"), -1);
    EXPECT_EQ(ColorFrom("<color>1</color><color><b>2</b></color>"), 1);
}

TEST(TrackDataReaderTest, OtherElementsThanExtensionsAreIgnoredWithoutAReport) {
    const DomTree tree("<style><color>5</color></style>");
    GpxTrack track;
    EXPECT_EQ(
        CaptureStandardError([&] { GpxParser().GetTarvikDataElementsFromTrkExtensions(tree.Root(), track); }),
        "");
    EXPECT_EQ(GpxModelAccess::GetColor(track), -1);
}

TEST(TrackDataReaderTest, ANullNodeOrOneWithoutALocalNameIsReported) {
    const DomTree tree("<r>text</r>");
    GpxParser parser;
    GpxTrack track;
    EXPECT_REPORT(parser.GetTarvikDataElementsFromTrkExtensions(nullptr, track), kParserSource);
    EXPECT_REPORT(parser.GetTarvikDataElementsFromTrkExtensions(tree.Root()->getFirstChild(), track),
                  kParserSource);
}

TEST(TrackDataReaderTest, MissingChildrenAndListsAreSkipped) {
    MarkingContext context;
    GpxTrack track;
    const auto read = [&](const FakeNodePtr& node) {
        return CaptureStandardError([&] { reader::ReadTrackData(context, node->View(), track); });
    };
    EXPECT_EQ(read(Gpx11Node(u"extensions", {nullptr, Gpx11Text(u"color", u"5"), nullptr})), "");
    EXPECT_EQ(read(WithoutChildList(*Gpx11Node(u"extensions"))), "");
    EXPECT_EQ(GpxModelAccess::GetColor(track), 5);
}

} // namespace
} // namespace vexaTransferLib
