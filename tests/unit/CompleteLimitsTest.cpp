// SPDX-License-Identifier: MIT

// Untrusted files, and files of extreme shapes, read completely: limits are those of the default way, and the stack
// does not grow.

#include "support/CompleteRead.h"
#include "support/ElementWalk.h"
#include "support/GpxReading.h"
#include "support/GpxText.h"
#include "support/GpxValues.h"
#include "support/HostileShapes.h"
#include "support/ModelCompare.h"
#include "support/SmallStack.h"

#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxParser.h>

#include <gtest/gtest.h>

#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

constexpr std::size_t kMillion = 1000000;

// Limits that one file or another exceeds.
constexpr GpxInputLimits kLowLimits{8, 400, 6, 12, 40, 12, 60, 10, 500, 30, 3000};

std::string CompatibleErrorOf(const std::string& bytes, const GpxInputLimits& limits) {
    return ErrorOf([&] {
        GpxParser parser;
        parser.SetUntrusted(limits);
        GpxDocument document;
        parser.Parse(bytes, u"walk.gpx", document);
    });
}

std::string Points(std::size_t count) {
    return Repeat("<wpt lat='1' lon='2'/>", count);
}

struct LimitCase {
    std::string children;
    std::string refusal; ///< a part of the message; empty when it is read
};

const LimitCase kLimitCases[] = {
    {Points(12), ""},
    {Points(13), "It has more points than 12 (limit of points)."},
    {"<rte>" + Repeat("<rtept lat='1' lon='2'/>", 13) + "</rte>", "(limit of points)."},
    {"<trk><trkseg>" + Repeat("<trkpt lat='1' lon='2'/>", 13) + "</trkseg></trk>", "(limit of points)."},
    {Repeat("<trk/>", 10), ""},
    {Repeat("<trk/>", 11), "It has more objects than 10 (limit of objects)."},
    {Repeat("<rte/>", 11), "(limit of objects)."},
    {"<trk>" + Repeat("<trkseg/>", 10) + "</trk>", "(limit of objects)."},
    {Repeat("<x>", 7) + Repeat("</x>", 7), ""},
    {Repeat("<x>", 8) + Repeat("</x>", 8), "nested deeper than 8 (limit of element depth)."},
    {"<x>" + std::string(400, 'a') + "</x>", ""},
    {"<x>" + std::string(401, 'a') + "</x>", "longer than 400 (limit of text length)."},
    {"<x a='1' b='1' c='1' d='1' e='1' f='1'/>", ""},
    {"<x a='1' b='1' c='1' d='1' e='1' f='1' g='1'/>", "more attributes than 6 (limit of attributes)."},
};

std::string Small(const std::string& children) {
    return "<gpx version='1.1'>" + children + "</gpx>";
}

TEST(CompleteLimitsTest, AnUntrustedFileIsReadUpToALimitAndRefusedBeyond) {
    for (const char* const start : {"", "<?xml version='1.0' encoding='ISO-8859-1'?>"})
        for (const LimitCase& one : kLimitCases) {
            SCOPED_TRACE(start + one.children);
            const CompleteRead read = ReadCompletely(start + Small(one.children), kLowLimits);
            if (one.refusal.empty()) {
                EXPECT_EQ(read.error, "");
                continue;
            }
            EXPECT_NE(read.error.find(one.refusal), std::string::npos) << read.error;
            EXPECT_NE(read.error.find("The untrusted GPX file was refused: walk.gpx. "), std::string::npos);
            EXPECT_TRUE(IsSameModel(UsedDocument(), read.document));
        }
}

TEST(CompleteLimitsTest, TheLimitsAreThoseOfTheDefaultWay) {
    for (const char* const start : {"", "<?xml version='1.0' encoding='ISO-8859-1'?>"})
        for (const LimitCase& one : kLimitCases) {
            const std::string bytes = start + Gpx11(one.children);
            EXPECT_EQ(ReadCompletely(bytes, kLowLimits).error, CompatibleErrorOf(bytes, kLowLimits)) << bytes;
        }
}

TEST(CompleteLimitsTest, ADocumentTypeAndAnAddressAreRefused) {
    const std::string bytes = "<!DOCTYPE gpx SYSTEM 'file:///etc/passwd'><gpx/>";
    EXPECT_EQ(ReadCompletely(bytes, GpxInputLimits()).error, CompatibleErrorOf(bytes, GpxInputLimits()));
    EXPECT_NE(ReadCompletely(bytes, GpxInputLimits()).error.find("It has a document type declaration."),
              std::string::npos);
    const CompleteRead address = ReadCompletelyBy([](GpxParser& parser, GpxDocument& document) {
        parser.SetUntrusted();
        parser.Parse(u"file:///no/such/walk.gpx", document);
    });
    EXPECT_NE(address.error.find("An untrusted GPX file is not read from an address"), std::string::npos);
}

class CompleteShapesTest : public testing::TestWithParam<HostileShape> {};

INSTANTIATE_TEST_SUITE_P(Shapes, CompleteShapesTest, testing::ValuesIn(HostileShapes()),
                         [](const auto& shape) { return std::string(shape.param.name); });

TEST_P(CompleteShapesTest, IsReadWhole) {
    for (const std::string start : {"", "<!DOCTYPE gpx>"}) {
        const CompleteRead read = ReadCompletely(start + GetParam().make(50));
        EXPECT_EQ(read.error + read.reports, "");
        EXPECT_GT(AskAll(read.document.GetElement()), 1U);
    }
}

// The number is large enough that quadratic time would exceed the time limit of a test.
TEST_P(CompleteShapesTest, IsReadWithALengthThatQuadraticTimeDoesNotAllow) {
    const std::size_t count = std::string(GetParam().name) == "Attributes" ? 10000 : 100000;
    EXPECT_EQ(ErrorOf([&] { DocumentOf(GetParam().make(count)); }), "");
}

GpxDocument ReadOnASmallStack(const std::string& bytes) {
    GpxDocument document;
    RunOnASmallStack([&] {
        GpxParser parser;
        parser.SetComplete();
        parser.Parse(bytes, u"walk.gpx", document);
        for (GpxElement child = document.GetElement(); child; child = child.GetFirstChild())
            child.GetName();
        document.GetElement().GetText();
        document.GetElement().GetXml();
    });
    return document;
}

// Each level has a namespace of its own, because Xerces searches an inherited one level by level.
TEST(CompleteLimitsTest, AMillionLevelsAreReadOnASmallStack) {
    const std::string levels = Repeat("<x xmlns='u'>", kMillion) + "t" + Repeat("</x>", kMillion);
    const GpxDocument document = ReadOnASmallStack(
        Gpx11(levels + "<wpt lat='1' lon='2'><name>" + levels + "</name></wpt><wpt lat='1' lon='2'/>"));
    ASSERT_EQ(document.GetWaypointCount(), 2U);
    EXPECT_EQ(TextOf(*document.GetWaypointIter(), &GpxPoint::GetName), "t");
}

TEST(CompleteLimitsTest, AMillionPiecesOfOneTextAreRead) {
    const GpxDocument document = ReadOnASmallStack(
        Gpx11("<wpt lat='1' lon='2'><desc>" + Repeat("a<!---->", kMillion) + "</desc></wpt>"));
    EXPECT_EQ(TextOf(*document.GetWaypointIter(), &GpxPoint::GetDescription).size(), kMillion);
}

// After the deep element has ended, its scopes must cost nothing: prefixes take turns so that nothing is remembered.
TEST(CompleteLimitsTest, ElementsAfterManyNestedScopesAreFoundInShortTime) {
    const std::string deep = Repeat("<x xmlns='u' xmlns:p='v'>", 100000) + Repeat("</x>", 100000);
    const GpxDocument document = ReadOnASmallStack(
        Gpx11(deep + Repeat("<gpx10:wpt lat='1' lon='2'/><gpx11:wpt lat='1' lon='2'/>", 100000)));
    EXPECT_EQ(document.GetWaypointCount(), 200000U);
    EXPECT_EQ((document.GetWaypointEndIter() - 1)->GetElement().GetNamespace(), kGpx11Uri);
}

TEST(CompleteLimitsTest, AMillionScopesBesideEachOtherAreRead) {
    const GpxDocument document = DocumentOf(
        Gpx11(Repeat("<p:wpt xmlns:p='http://www.topografix.com/GPX/1/1' lat='1' lon='2'/>", kMillion)));
    EXPECT_EQ(document.GetWaypointCount(), kMillion);
}

TEST(CompleteLimitsTest, ManyAttributesOfAnElementAreGiven) {
    std::string attributes;
    for (int i = 0; i < 20000; ++i)
        attributes += " a" + std::to_string(i) + "='v'";
    const GpxPoint point = WaypointWith("<x" + attributes + "/>");
    EXPECT_EQ(point.GetElement().GetFirstChild().GetAttributes().size(), 20000U);
}

} // namespace
} // namespace vexaTransferLib
