// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/RouteReader.h>

#include <vexaTransferLib/GpxParser.h>

#include "support/ContractChecks.h"
#include "support/FakeNode.h"
#include "support/GpxDom.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <xercesc/dom/DOMException.hpp>

#include <stdexcept>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

const GpxVersion k10(1, 0);
const GpxVersion k11(1, 1);

constexpr char kRouteSource[] = "LibCore/vexaTransferLib/GpxRoute.cpp";

GpxRoute Read(const GpxVersion& version, const std::string& children) {
    const std::string rte = "<rte>" + children + "</rte>";
    const DomTree tree(version.IsGpx10() ? Gpx10(rte) : Gpx11(rte));
    GpxDocument document;
    GpxParser().ParseRteNode(version, tree.Find("rte"), document);
    if (document.GetRouteCount() != 1)
        throw std::runtime_error("not one route was added");
    return *document.GetRouteIter();
}

GpxRoute Read11(const std::string& children) {
    return Read(k11, children);
}

// "name|source|type|route type|points".
std::string Summary(const GpxRoute& route) {
    std::string points;
    for (auto point = route.GetPointIter(); point != route.GetPointEndIter(); ++point)
        points += " " + TextOf(*point, &GpxPoint::GetName) + ":" + std::to_string(RoutePointTypeOf(*point));
    return TextOf(route, &GpxRoute::GetName) + "|" + TextOf(route, &GpxRoute::GetSource) + "|" +
           TextOf(route, &GpxRoute::GetType) + "|" + std::to_string(RouteTypeOf(route)) + "|" + points;
}

std::string RoutePoint(const std::string& name, const std::string& type) {
    return "<rtept lat='1' lon='2'><name>" + name + "</name><extensions><tarvik:routePointType>" + type +
           "</tarvik:routePointType></extensions></rtept>";
}

std::string RouteType(const std::string& type) {
    return "<extensions><tarvik:routeType>" + type + "</tarvik:routeType></extensions>";
}

constexpr char kPlainPoint[] = "<rtept lat='1' lon='2'><name>p</name></rtept>";

TEST(RouteReaderTest, ReadsTextsTypeAndPoints) {
    const std::string children =
        "<name>N</name><cmt>C</cmt><desc>D</desc><src>S</src><link href='u'/><number>5</number>"
        "<type>T</type>" +
        RouteType("directions") + RoutePoint("a", "start") + RoutePoint("b", "turn");
    EXPECT_EQ(Summary(Read11(children)), "N|S|T|2| a:1 b:5");
}

TEST(RouteReaderTest, A10RouteIsStandardAndHasNoType) {
    const std::string children = "<name>N</name><src>S</src><type>T</type>" + RouteType("points") +
                                 RoutePoint("a", "via") + kPlainPoint;
    EXPECT_EQ(Summary(Read(k10, children)), "N|S|(absent)|0| a:0 p:0");
}

TEST(RouteReaderTest, WithoutRoutePointsTheRouteIsAddedAllTheSame) {
    EXPECT_EQ(Summary(Read11("<name>N</name><src>S</src><type>T</type>" + RouteType("points"))), "N|S|T|1|");
    EXPECT_EQ(Summary(Read11("")), "(absent)|(absent)|(absent)|0|");
}

TEST(RouteReaderTest, EmptyTextsAreAbsent) {
    EXPECT_EQ(Summary(Read11("<name/><src></src><type><!-- c -->T</type>")), "(absent)|(absent)|(absent)|0|");
    EXPECT_EQ(Summary(Read11("<name>A</name><name>B</name><name/><src>S</src><src>R</src>")),
              "B|R|(absent)|0|");
}

TEST(RouteReaderTest, WhatFollowsTheFirstRoutePointHasNoEffect) {
    EXPECT_EQ(Summary(Read11("<name>N</name>" + std::string(kPlainPoint) +
                             "<name>M</name><src>S</src><type>T</type>" + RouteType("points") + kPlainPoint)),
              "N|(absent)|(absent)|0| p:0 p:0");
    // Even when that point itself is dropped.
    EXPECT_EQ(CaptureStandardError([] {
                  EXPECT_EQ(Summary(Read11("<rtept/><name>N</name>")), "(absent)|(absent)|(absent)|0|");
              }).empty(),
              false);
}

TEST(RouteReaderTest, TheLastOfSeveralRouteTypesCounts) {
    EXPECT_EQ(Summary(Read11(RouteType("points") + RouteType("directions"))),
              "(absent)|(absent)|(absent)|2|");
    EXPECT_EQ(Summary(Read11(RouteType("points") + RouteType("nonsense"))), "(absent)|(absent)|(absent)|1|");
}

TEST(RouteReaderTest, ARoutePointThatTheRouteRefusesIsReportedAndSkipped) {
    GpxRoute route(kTarvikRouteStandard);
    EXPECT_REPORT(
        route = Read11(RouteType("points") + RoutePoint("a", "start") + kPlainPoint + RoutePoint("b", "via")),
        kRouteSource);
    EXPECT_EQ(Summary(route), "(absent)|(absent)|(absent)|1| a:1 b:3");
    EXPECT_REPORT(route = Read11(RouteType("points") + RoutePoint("a", "turn")), kRouteSource);
    EXPECT_EQ(Summary(route), "(absent)|(absent)|(absent)|1|");
    EXPECT_REPORT(route = Read11(RouteType("directions") + kPlainPoint + RoutePoint("b", "turn")),
                  kRouteSource);
    EXPECT_EQ(Summary(route), "(absent)|(absent)|(absent)|2| b:5");
}

TEST(RouteReaderTest, ARoutePointThatCannotBeReadIsReportedAndSkipped) {
    GpxRoute route(kTarvikRouteStandard);
    EXPECT_REPORT(route = Read11(std::string(kPlainPoint) + "<rtept lat='1'/>" + kPlainPoint), kParserSource);
    EXPECT_EQ(Summary(route), "(absent)|(absent)|(absent)|0| p:0 p:0");
    EXPECT_REPORT(route = Read11("<rtept lat='91' lon='2'/>" + std::string(kPlainPoint)),
                  "LibCore/vexaTransferLib/GpxPoint.cpp");
    EXPECT_EQ(Summary(route), "(absent)|(absent)|(absent)|0| p:0");
}

TEST(RouteReaderTest, OnlyChildrenInTheNamespaceOfTheVersionCount) {
    const std::string children =
        "<gpx10:name>ten</gpx10:name><gpx11:src>eleven</gpx11:src><name xmlns=''>none</name>"
        "<gpx10:rtept lat='1' lon='2'/><gpx11:rtept lat='1' lon='2'/><other:rtept lat='1' lon='2'/>";
    EXPECT_EQ(Summary(Read(k10, children)), "ten|(absent)|(absent)|0| (absent):0");
    EXPECT_EQ(Summary(Read11(children)), "(absent)|eleven|(absent)|0| (absent):0");
}

TEST(RouteReaderTest, OtherPointsAreNotTaken) {
    EXPECT_EQ(Summary(Read11("<wpt lat='1' lon='2'/><trkpt lat='1' lon='2'/>text<!-- c --><?p i?>")),
              "(absent)|(absent)|(absent)|0|");
}

TEST(RouteReaderTest, RoutesAreAppended) {
    const DomTree tree(Gpx11("<rte><name>N</name></rte>"));
    GpxDocument document;
    GpxParser parser;
    parser.ParseRteNode(k11, tree.Find("rte"), document);
    parser.ParseRteNode(k11, tree.Find("rte"), document);
    EXPECT_EQ(CountsOf(document), "0 waypoints, 2 routes, 0 tracks");
}

// Nodes in forms that a Xerces tree never has.

void ReadView(const FakeNodePtr& node, GpxDocument& document) {
    MarkingContext context;
    reader::ReadRoute(context, k11, node->View(), document);
}

TEST(RouteReaderTest, WithoutAChildListNoRouteIsAdded) {
    GpxDocument document;
    EXPECT_FAILURE(ReadView(WithoutChildList(*Gpx11Node(u"rte")), document), dbc::postcondition_error,
                   "Unable to read GPX route child elements.", kParserSource);
    EXPECT_EQ(document.GetRouteCount(), 0u);
}

TEST(RouteReaderTest, ANullNodeHasNoChildList) {
    GpxDocument document;
    EXPECT_FAILURE(GpxParser().ParseRteNode(k11, nullptr, document), dbc::postcondition_error,
                   "Unable to read GPX route child elements.", kParserSource);
    EXPECT_EQ(document.GetRouteCount(), 0u);
}

TEST(RouteReaderTest, AMissingChildIsReportedAndSkipped) {
    GpxDocument document;
    EXPECT_REPORT(
        ReadView(Gpx11Node(u"rte", {Gpx11Text(u"name", u"N"), nullptr, Gpx11Point(u"rtept")}), document),
        kParserSource);
    EXPECT_EQ(Summary(*document.GetRouteIter()), "N|(absent)|(absent)|0| (absent):0");
}

TEST(RouteReaderTest, AMissingChildOfTheExtensionsIsReportedAndSkipped) {
    const FakeNodePtr type = Gpx11Text(u"routeType", u"points");
    type->namespaceUri = u"https://tarvik.example/xmlschemas/gpx-extensions/1/0";
    GpxDocument document;
    EXPECT_REPORT(ReadView(Gpx11Node(u"rte", {Gpx11Node(u"extensions", {nullptr, type})}), document),
                  kParserSource);
    EXPECT_EQ(RouteTypeOf(*document.GetRouteIter()), kTarvikRoutePoints);
}

TEST(RouteReaderTest, ExtensionsWithoutAChildListAreReportedAndSkipped) {
    GpxDocument document;
    EXPECT_REPORT(
        ReadView(Gpx11Node(u"rte", {WithoutChildList(*Gpx11Node(u"extensions")), Gpx11Text(u"name", u"N")}),
                 document),
        kParserSource);
    EXPECT_EQ(Summary(*document.GetRouteIter()), "N|(absent)|(absent)|0|");
}

TEST(RouteReaderTest, AFailingChildIsSkipped) {
    GpxDocument document;
    ReadView(Gpx11Node(u"rte", {Throwing(*Gpx11Text(u"name", u"N"), std::runtime_error("any")),
                                Gpx11Text(u"src", u"S")}),
             document);
    EXPECT_EQ(Summary(*document.GetRouteIter()), "(absent)|S|(absent)|0|");
}

TEST(RouteReaderTest, OnlyStandardExceptionsAreSwallowed) {
    GpxDocument document;
    const FakeNodePtr name = Gpx11Text(u"name", u"N");
    EXPECT_THROW(ReadView(Gpx11Node(u"rte", {Throwing(*name, 5)}), document), int);
    EXPECT_THROW(
        ReadView(Gpx11Node(u"rte", {Gpx11Point(u"rtept", {Throwing(*name, xercesc::DOMException())})}),
                 document),
        xercesc::DOMException);
    EXPECT_EQ(document.GetRouteCount(), 0u);
}

} // namespace
} // namespace vexaTransferLib
