// SPDX-License-Identifier: MIT

// Scanning a head while one request for memory, or that request and all later ones, is refused. Each request
// is refused in turn.

#include <vexaTransferLib/GpxTarvikExtParser.h>

#include "support/Attempts.h"
#include "support/GpxFiles.h"
#include "support/HeadScan.h"
#include "support/IcuMemory.h"
#include "support/Memory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

std::string Element(const std::string& name) {
    return "<tarvik:" + name + ">The " + name + ", of more units than ICU holds in place</tarvik:" + name +
           ">";
}

enum class Numbers { kAll, kNoneOfIcu };

std::vector<std::string> ElementsOfAHead(Numbers numbers) {
    std::vector<std::string> elements = {
        Element("layername"),    Element("form"),
        Element("trackGUID"),    "<time>2009-01-15T10:20:30." + std::string(20, '0') + "Z</time>",
        Element("waypointGUID"), Element("layerkey")};
    if (numbers == Numbers::kAll)
        elements.insert(elements.begin() + 3, {"<tarvik:wptcount>1,234</tarvik:wptcount>",
                                               "<tarvik:trktotalkm>1,234.5</tarvik:trktotalkm>"});
    return elements;
}

class ScanFaultsTest : public testing::TestWithParam<bool> {
protected:
    /// A scan ends where memory runs out and keeps its results so far: those of the elements up to some place
    /// in the head.
    template <class Refuse>
    void ScanWithEachRefused(const std::string& what, Numbers numbers, Refuse refuse) {
        std::string head;
        std::set<std::string> parts = {Scan(WithExtensions(head))};
        for (const std::string& element : ElementsOfAHead(numbers))
            parts.insert(Scan(WithExtensions(head += element)));
        const std::string whole = Scan(WithExtensions(head));
        const GpxFile file(WithExtensions(head), "a head whose name has more units than ICU holds.gpx");
        const icu::UnicodeString path = file.Path();

        GpxTarvikExtParser scanner;
        if (GetParam())
            scanner.SetUntrusted();
        scanner.Parse(path);
        std::size_t partly = 0;
        const std::size_t calls = ForEachCall([&](std::size_t call) {
            const long blocks = CppMemory::Blocks();
            const Attempt attempt = AttemptWith([&] { return refuse(call); }, [&] { scanner.Parse(path); });
            EXPECT_EQ(attempt.Failure(), "") << "a scan never throws";
            {
                const std::string part = FoundBy(scanner);
                EXPECT_TRUE(parts.contains(part)) << part;
                partly += part != whole ? 1 : 0;
            }
            scanner.Parse(path);
            EXPECT_EQ(FoundBy(scanner), whole) << "without a refusal";
            EXPECT_EQ(CppMemory::Blocks(), blocks) << "blocks of memory are lost";
            return attempt;
        });
        EXPECT_GT(calls, 1U);
        EXPECT_GT(partly, 0U);
        Record(what, calls);
    }
};

TEST_P(ScanFaultsTest, OneRequestToOperatorNew) {
    ScanWithEachRefused("new", Numbers::kAll, [](std::size_t call) { return RefusedNew::AtCall(call); });
}

TEST_P(ScanFaultsTest, AllFurtherRequestsToOperatorNew) {
    ScanWithEachRefused("new_on", Numbers::kAll, [](std::size_t call) { return RefusedNew::FromCall(call); });
}

TEST_P(ScanFaultsTest, OneRequestOfXerces) {
    ScanWithEachRefused("xerces", Numbers::kAll,
                        [](std::size_t call) { return RefusedXercesMemory::AtCall(call); });
}

TEST_P(ScanFaultsTest, AllFurtherRequestsOfXerces) {
    ScanWithEachRefused("xerces_on", Numbers::kAll,
                        [](std::size_t call) { return RefusedXercesMemory::FromCall(call); });
}

// The refusal of ICU's memory for numbers is tested in GpxTarvikExtParserNumbersTest and
// GpxTarvikExtParserCostTest.
TEST_P(ScanFaultsTest, OneRequestOfIcu) {
    ScanWithEachRefused("icu", Numbers::kNoneOfIcu,
                        [](std::size_t call) { return RefusedIcuMemory::AtCall(call); });
}

INSTANTIATE_TEST_SUITE_P(Trust, ScanFaultsTest, testing::Values(false, true),
                         [](const auto& row) { return row.param ? "Untrusted" : "Trusted"; });

} // namespace
} // namespace vexaTransferLib
