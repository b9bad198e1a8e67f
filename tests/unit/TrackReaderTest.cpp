// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/TrackReader.h>

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

GpxTrack Read(const GpxVersion& version, const std::string& children) {
    const std::string trk = "<trk>" + children + "</trk>";
    const DomTree tree(version.IsGpx10() ? Gpx10(trk) : Gpx11(trk));
    GpxDocument document;
    GpxParser().ParseTrkNode(version, tree.Find("trk"), document);
    if (document.GetTrackCount() != 1)
        throw std::runtime_error("not one track was added");
    return *document.GetTrackIter();
}

GpxTrack Read10(const std::string& children) {
    return Read(k10, children);
}
GpxTrack Read11(const std::string& children) {
    return Read(k11, children);
}

// "name|description|source|type|color".
std::string Texts(const GpxTrack& track) {
    return TextOf(track, &GpxTrack::GetName) + "|" + TextOf(track, &GpxTrack::GetDescription) + "|" +
           TextOf(track, &GpxTrack::GetSource) + "|" + TextOf(track, &GpxTrack::GetType) + "|" +
           std::to_string(GpxModelAccess::GetColor(track));
}

constexpr char kNoTexts[] = "(absent)|(absent)|(absent)|(absent)|-1";

// The points' names, each segment in brackets: "[a b][]".
std::string Segments(const GpxTrack& track) {
    std::string text;
    for (auto segment = track.GetSegmentIter(); segment != track.GetSegmentEndIter(); ++segment) {
        std::string names;
        for (auto point = track.GetPointIter(segment); point != track.GetPointEndIter(segment); ++point)
            names += (names.empty() ? "" : " ") + TextOf(*point, &GpxPoint::GetName);
        text += "[" + names + "]";
    }
    return text;
}

std::string TrackPoint(const std::string& name) {
    return "<trkpt lat='1' lon='2'><name>" + name + "</name></trkpt>";
}

constexpr char kAllTexts[] = "<name>N</name><desc>D</desc><src>S</src><type>T</type><number>5</number>"
                             "<extensions><tarvik:color>255</tarvik:color></extensions>";

TEST(TrackReaderTest, ReadsTextsAndColor) {
    EXPECT_EQ(Texts(Read11(kAllTexts)), "N|D|S|T|255");
    EXPECT_EQ(Texts(Read10(kAllTexts)), "N|D|S|(absent)|255") << "extensions are read in GPX 1.0 too";
    EXPECT_EQ(Texts(Read11("")), kNoTexts);
}

TEST(TrackReaderTest, EmptyTextsChangeNothing) {
    EXPECT_EQ(Texts(Read11("<name>A</name><name>B</name><name/><src><b>S</b></src><desc/><type/>")),
              "B|(absent)|(absent)|(absent)|-1");
}

TEST(TrackReaderTest, ACommentBecomesTheDescriptionAndWins) {
    struct Row {
        const char* children;
        const char* description;
    };
    constexpr Row kRows[] = {
        {"<desc>A</desc><cmt>B</cmt>", "B"},   {"<cmt>B</cmt><desc>A</desc>", "B"},
        {"<desc>A</desc><desc>C</desc>", "A"}, {"<cmt>A</cmt><cmt>B</cmt>", "B"},
        {"<cmt/><desc>A</desc>", "A"},         {"<desc>A</desc><cmt/>", "A"},
    };
    for (const Row& row : kRows)
        for (const GpxVersion& version : {k10, k11})
            EXPECT_EQ(TextOf(Read(version, row.children), &GpxTrack::GetDescription), row.description)
                << row.children;
}

TEST(TrackReaderTest, LinksAreReadByVersion) {
    struct Row {
        const char* children;
        const char* in10;
        const char* in11;
    };
    constexpr Row kRows[] = {
        {"<url>u</url><urlname>n</urlname>", "u|n|-", kAbsent},
        {"<urlname>n</urlname><url>u</url>", "u|-|-", kAbsent},
        {"<urlname>n</urlname>", kAbsent, kAbsent},
        {"<url/>", kAbsent, kAbsent},
        {"<link href='h'><text>t</text><type>y</type></link>", kAbsent, "h|t|y"},
        {"<link href='h'><text>t</text></link><link href='i'/>", kAbsent, "i|-|-"},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(LinkOf(Read10(row.children)), row.in10) << row.children;
        EXPECT_EQ(LinkOf(Read11(row.children)), row.in11) << row.children;
    }
}

TEST(TrackReaderTest, ALinkWithoutHrefIsReportedAndTheRestKept) {
    GpxTrack track;
    EXPECT_REPORT(track = Read11("<link href='h'/><link/><name>N</name>"), kParserSource);
    EXPECT_EQ(LinkOf(track), "h|-|-");
    EXPECT_EQ(TextOf(track, &GpxTrack::GetName), "N");
}

TEST(TrackReaderTest, SegmentsKeepTheirPointsAndMayBeEmpty) {
    EXPECT_EQ(Segments(Read11("<trkseg>" + TrackPoint("a") + TrackPoint("b") + "</trkseg><trkseg/>")),
              "[a b][]");
    EXPECT_EQ(Segments(Read10("<trkseg/><trkseg>" + TrackPoint("a") + "</trkseg>")), "[][a]");
    EXPECT_EQ(Segments(Read11("")), "");
}

TEST(TrackReaderTest, WhatFollowsTheSegmentsIsStillRead) {
    EXPECT_EQ(Texts(Read11("<trkseg/>" + std::string(kAllTexts))), "N|D|S|T|255");
}

TEST(TrackReaderTest, ATrackPointThatCannotBeReadIsReportedAndSkipped) {
    GpxTrack track;
    EXPECT_REPORT(
        track = Read11("<trkseg>" + TrackPoint("a") + "<trkpt lat='1'/>" + TrackPoint("b") + "</trkseg>"),
        kParserSource);
    EXPECT_EQ(Segments(track), "[a b]");
    EXPECT_REPORT(track = Read11("<trkseg><trkpt lat='1' lon='200'/>" + TrackPoint("b") + "</trkseg>"),
                  "LibCore/vexaTransferLib/GpxPoint.cpp");
    EXPECT_EQ(Segments(track), "[b]");
}

TEST(TrackReaderTest, OtherChildrenOfASegmentAreIgnored) {
    EXPECT_EQ(
        Segments(Read11("<trkseg>text<!-- c --><name>N</name><wpt lat='1' lon='2'/><rtept lat='1' lon='2'/>"
                        "<extensions/><trkseg>" +
                        TrackPoint("nested") + "</trkseg>" + TrackPoint("a") + "</trkseg>")),
        "[a]");
    EXPECT_EQ(Segments(Read11(TrackPoint("outside"))), "");
}

TEST(TrackReaderTest, OnlyChildrenInTheNamespaceOfTheVersionCount) {
    const std::string children = "<gpx10:name>ten</gpx10:name><gpx11:src>eleven</gpx11:src><desc "
                                 "xmlns=''>none</desc><other:type>o</other:type>"
                                 "<other:extensions><color>5</color></other:extensions>"
                                 "<gpx10:trkseg><gpx10:trkpt lat='1' lon='2'/></gpx10:trkseg>"
                                 "<gpx11:trkseg><gpx10:trkpt lat='1' lon='2'/></gpx11:trkseg><other:trkseg/>";
    const GpxTrack ten = Read10(children);
    EXPECT_EQ(Texts(ten), "ten|(absent)|(absent)|(absent)|-1");
    EXPECT_EQ(Segments(ten), "[(absent)]");
    const GpxTrack eleven = Read11(children);
    EXPECT_EQ(Texts(eleven), "(absent)|(absent)|eleven|(absent)|-1");
    EXPECT_EQ(Segments(eleven), "[]");
}

TEST(TrackReaderTest, ASegmentIsAppendedToTheTrack) {
    const DomTree tree(Gpx11("<trkseg>" + TrackPoint("a") + "</trkseg>"));
    GpxTrack track;
    GpxParser parser;
    parser.ParseTrkSegNode(k11, tree.Find("trkseg"), track);
    parser.ParseTrkSegNode(k11, tree.Find("trkseg"), track);
    EXPECT_EQ(Segments(track), "[a][a]");
}

// Nodes in forms that a Xerces tree never has.

void ReadView(const FakeNodePtr& node, GpxDocument& document) {
    MarkingContext context;
    reader::ReadTrack(context, k11, node->View(), document);
}

void ReadSegmentView(const FakeNodePtr& node, GpxTrack& track) {
    MarkingContext context;
    reader::ReadSegment(context, k11, node->View(), track);
}

TEST(TrackReaderTest, WithoutAChildListNoTrackIsAdded) {
    GpxDocument document;
    EXPECT_FAILURE(ReadView(WithoutChildList(*Gpx11Node(u"trk")), document), dbc::postcondition_error,
                   "Unable to read GPX track child elements.", kParserSource);
    EXPECT_FAILURE(GpxParser().ParseTrkNode(k11, nullptr, document), dbc::postcondition_error,
                   "Unable to read GPX track child elements.", kParserSource);
    EXPECT_EQ(document.GetTrackCount(), 0u);
}

TEST(TrackReaderTest, WithoutAChildListNoSegmentIsAdded) {
    GpxTrack track;
    EXPECT_FAILURE(ReadSegmentView(WithoutChildList(*Gpx11Node(u"trkseg")), track), dbc::postcondition_error,
                   "Unable to read GPX track segment child elements.", kParserSource);
    EXPECT_FAILURE(GpxParser().ParseTrkSegNode(k11, nullptr, track), dbc::postcondition_error,
                   "Unable to read GPX track segment child elements.", kParserSource);
    EXPECT_EQ(track.GetSegmentCount(), 0u);
}

TEST(TrackReaderTest, ASegmentWithoutAChildListIsReportedAndTheTrackReadOn) {
    GpxDocument document;
    EXPECT_REPORT(
        ReadView(Gpx11Node(u"trk", {Gpx11Node(u"trkseg", {Gpx11Point(u"trkpt")}),
                                    WithoutChildList(*Gpx11Node(u"trkseg")), Gpx11Text(u"name", u"N")}),
                 document),
        kParserSource);
    EXPECT_EQ(Segments(*document.GetTrackIter()), "[(absent)]");
    EXPECT_EQ(TextOf(*document.GetTrackIter(), &GpxTrack::GetName), "N");
}

TEST(TrackReaderTest, AMissingChildIsReportedAndSkipped) {
    GpxDocument document;
    EXPECT_REPORT(ReadView(Gpx11Node(u"trk", {nullptr, Gpx11Text(u"name", u"N")}), document), kParserSource);
    EXPECT_EQ(TextOf(*document.GetTrackIter(), &GpxTrack::GetName), "N");
    GpxTrack track;
    EXPECT_REPORT(
        ReadSegmentView(Gpx11Node(u"trkseg", {Gpx11Point(u"trkpt"), nullptr, Gpx11Point(u"trkpt")}), track),
        kParserSource);
    EXPECT_EQ(Segments(track), "[(absent) (absent)]");
}

TEST(TrackReaderTest, AChildWithoutALocalNameIsSkipped) {
    const FakeNodePtr nameless = Gpx11Point(u"trkpt");
    nameless->localName.reset();
    GpxTrack track;
    ReadSegmentView(Gpx11Node(u"trkseg", {nameless}), track);
    EXPECT_EQ(Segments(track), "[]");
}

TEST(TrackReaderTest, AFailingChildIsSkipped) {
    GpxDocument document;
    ReadView(Gpx11Node(u"trk", {Throwing(*Gpx11Text(u"name", u"N"), std::runtime_error("any")),
                                Gpx11Text(u"src", u"S")}),
             document);
    EXPECT_EQ(Texts(*document.GetTrackIter()), "(absent)|(absent)|S|(absent)|-1");
}

TEST(TrackReaderTest, OnlyStandardExceptionsAreSwallowedAndTheSegmentIsKept) {
    GpxDocument document;
    EXPECT_THROW(ReadView(Gpx11Node(u"trk", {Throwing(*Gpx11Text(u"name", u"N"), 5)}), document), int);
    EXPECT_EQ(document.GetTrackCount(), 0u);
    GpxTrack track;
    const FakeNodePtr failing =
        Gpx11Point(u"trkpt", {Throwing(*Gpx11Text(u"name", u"N"), xercesc::DOMException())});
    EXPECT_THROW(ReadSegmentView(Gpx11Node(u"trkseg", {Gpx11Point(u"trkpt"), failing}), track),
                 xercesc::DOMException);
    EXPECT_EQ(Segments(track), "[(absent)]");
}

} // namespace
} // namespace vexaTransferLib
