// SPDX-License-Identifier: MIT

// Files of extreme shapes, read by every reading operation on a small stack, with limits and without.

#include "support/GpxFiles.h"
#include "support/GpxText.h"
#include "support/HeadScan.h"
#include "support/SmallStack.h"
#include "support/XercesDoubles.h"

#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/GpxTarvikExtParser.h>

#include <common/dbc.h>

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

constexpr std::size_t kMillion = 1000000;
static_assert(kMillion * sizeof(void*) > kSmallStack, "a recursion would overflow the stack");

/// Content of a file's metadata. It is between two times: every reading finds the first, and only a reading
/// that gets past the shape finds the second.
struct Shape {
    const char* name;
    std::function<std::string()> make;
    std::string refusal;
};

void PrintTo(const Shape& shape, std::ostream* out) {
    *out << shape.name;
}

std::string Document(const Shape& shape, const std::string& declaration) {
    return declaration + Gpx11("<metadata><time>2012-03-14T10:00:00Z</time>" + shape.make() +
                               "<time>2013-03-14T10:00:00Z</time></metadata><wpt lat='1' lon='2'/>");
}

std::string ManyAttributes() {
    std::string attributes;
    for (int i = 0; i < 20000; ++i)
        attributes += " a" + std::to_string(i) + "='v'";
    return "<x" + attributes + "/>";
}

class DeepAndWideTest : public testing::TestWithParam<Shape> {};

// Each level has a namespace of its own, because Xerces searches an inherited one level by level.
INSTANTIATE_TEST_SUITE_P(
    Shapes, DeepAndWideTest,
    testing::Values(Shape{"MillionLevels",
                          [] { return Repeat("<x xmlns='u'>", kMillion) + Repeat("</x>", kMillion); },
                          "Its elements are nested deeper than 256 (limit of element depth)."},
                    Shape{"LongText", [] { return "<x>" + std::string(100 * kMillion, 'a') + "</x>"; },
                          "One of its texts is longer than 16777216 (limit of text length)."},
                    Shape{"MillionChildren", [] { return Repeat("<x/>", kMillion); }, ""},
                    Shape{"ManyAttributes", ManyAttributes,
                          "One of its elements has more attributes than 1024 (limit of attributes)."}),
    [](const auto& instance) { return instance.param.name; });

std::size_t WaypointsOf(const std::string& bytes) {
    GpxDocument document;
    RunOnASmallStack([&] { GpxParser().Parse(bytes, u"shape", document); });
    return document.GetWaypointCount();
}

TEST_P(DeepAndWideTest, IsReadFromEvents) {
    EXPECT_EQ(WaypointsOf(Document(GetParam(), "")), 1U);
}

TEST_P(DeepAndWideTest, IsReadFromTheDom) {
    EXPECT_EQ(WaypointsOf(Document(GetParam(), "<!DOCTYPE gpx>")), 1U);
}

TEST_P(DeepAndWideTest, IsScanned) {
    GpxTarvikExtParser scanner;
    RunOnASmallStack([&] { ScanBytes(scanner, Document(GetParam(), "")); });
    EXPECT_EQ(scanner.GetDocumentTime(), 1363255200000.0);
}

/// The message of the exception from the parse of an untrusted file; empty when there is none.
std::string RefusalOf(const std::function<void(GpxParser&)>& parse) {
    GpxParser parser;
    parser.SetUntrusted();
    try {
        RunOnASmallStack([&] { parse(parser); });
        return "";
    } catch (const dbc::postcondition_error& error) {
        return error.what();
    }
}

TEST_P(DeepAndWideTest, IsRefusedInAnUntrustedFileBeyondALimit) {
    const GpxFile file(Document(GetParam(), ""));
    const std::string expected =
        GetParam().refusal.empty()
            ? ""
            : "The untrusted GPX file was refused: " + file.NarrowPath() + ". " + GetParam().refusal;
    EXPECT_EQ(RefusalOf([&](GpxParser& parser) {
                  GpxDocument document;
                  parser.Parse(file.Path(), document);
              }),
              expected);
    EXPECT_EQ(RefusalOf([&](GpxParser& parser) { parser.GetParser(file.Path()); }), expected);
}

TEST_P(DeepAndWideTest, EndsTheScanOfAnUntrustedFileBeyondALimit) {
    GpxTarvikExtParser scanner;
    scanner.SetUntrusted();
    RunOnASmallStack([&] { ScanBytes(scanner, Document(GetParam(), "")); });
    // A head has limits of its own.
    const bool isWithin = GetParam().refusal.empty() && std::string(GetParam().name) != "MillionChildren";
    EXPECT_EQ(scanner.GetDocumentTime(), isWithin ? 1363255200000.0 : 1331719200000.0);
    EXPECT_EQ(scanner.GetScanEnd() == kGpxScanRefused, !isWithin);
}

// Levels without namespaces of their own, for which Xerces needs quadratic time: they must be refused before
// it reads them.
TEST(DeepAndWideLimitsTest, NothingIsDoneForTheLevelsBeyondTheLimit) {
    const GpxFile file(Gpx11(Repeat("<x>", kMillion)));
    const XercesMemory memory;
    EXPECT_NE(RefusalOf([&](GpxParser& parser) {
                  GpxDocument document;
                  parser.Parse(file.Path(), document);
              }),
              "");
    const std::size_t ofEvents = memory.Requests();
    EXPECT_NE(RefusalOf([&](GpxParser& parser) { parser.GetParser(file.Path()); }), "");
    const std::size_t ofDom = memory.Requests() - ofEvents;
    GpxTarvikExtParser scanner;
    scanner.SetUntrusted();
    ScanFile(scanner, file.NarrowPath());
    const std::size_t ofScanner = memory.Requests() - ofEvents - ofDom;
    EXPECT_LT(ofEvents, 20000U);
    EXPECT_LT(ofDom, 20000U);
    EXPECT_LT(ofScanner, 20000U);
}

} // namespace
} // namespace vexaTransferLib
