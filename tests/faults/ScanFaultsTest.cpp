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
#include <xercesc/framework/MemBufInputSource.hpp>

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

/// The values of a head one after another, each of more units than ICU holds in place.
std::vector<std::string> ValuesOfAHead() {
    const std::string text = "a value of more units than ICU holds in place";
    return {"<gpx version='1.1 is " + text + "' creator='" + text + "'>",
            "<metadata><name>" + text + "</name>",
            "<desc>" + text + "</desc>",
            "<author><name>" + text + "</name>",
            "<email id='" + text + "' domain='" + text + ".example'/>",
            "</author><time>1969-12-31T23:59:59." + std::string(40, '9') + "Z</time>",
            "<bounds minlat='" + std::string(40, ' ') + "1' minlon='2' maxlat='3' maxlon='4'/>",
            "</metadata>"};
}

std::string WithoutEnd(const GpxHead& head) {
    const std::string shown = Shown(head);
    return shown.substr(0, shown.find("; end "));
}

/// A head in which memory runs out has the values up to some place, and each of them whole.
template <class Refuse>
void ScanHeadWithEachRefused(bool isTrusted, Refuse refuse) {
    GpxTarvikExtParser scanner;
    if (!isTrusted)
        scanner.SetUntrusted();
    ScanBytes(scanner, "<gpx"); // an attribute of the root may be kept before the next one is refused
    std::set<std::string> parts = {"root ", "root gpx",
                                   "root gpx; version 1.1 is a value of more units than ICU holds in place"};
    std::string head;
    for (const std::string& value : ValuesOfAHead()) {
        ScanBytes(scanner, head += value);
        parts.insert(WithoutEnd(scanner.GetHead()));
    }
    // Error messages are kept as well.
    head += "<a></b>";
    ScanBytes(scanner, head);
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(head.data()), head.size(),
                                            "memory");
    const std::string whole = Shown(scanner.GetHead());
    std::size_t partly = 0;
    const std::size_t calls = ForEachCall([&](std::size_t call) {
        const Attempt attempt =
            AttemptWith([&] { return refuse(call); }, [&] { scanner.ParseSource(source); });
        EXPECT_EQ(attempt.Failure(), "") << "a scan never throws";
        const std::string part = WithoutEnd(scanner.GetHead());
        EXPECT_TRUE(parts.contains(part)) << part;
        partly += whole.starts_with(part + "; end ") ? 0 : 1;
        ScanBytes(scanner, head);
        EXPECT_EQ(Shown(scanner.GetHead()), whole) << "without a refusal";
        return attempt;
    });
    EXPECT_GT(calls, 1U);
    EXPECT_GT(partly, 0U);
}

TEST_P(ScanFaultsTest, TheHeadOfAForeignFile) {
    ScanHeadWithEachRefused(!GetParam(), [](std::size_t call) { return RefusedNew::AtCall(call); });
    ScanHeadWithEachRefused(!GetParam(), [](std::size_t call) { return RefusedXercesMemory::AtCall(call); });
}

// ICU asks again for less when it is refused once, so that all requests are refused here.
TEST_P(ScanFaultsTest, AValueOfTheHeadThatIcuCannotHoldIsNeverEmpty) {
    const std::string text = "a value of more units than ICU holds in place";
    GpxTarvikExtParser scanner;
    if (GetParam())
        scanner.SetUntrusted();
    const auto headOf = [&](const std::string& bytes) {
        const RefusedIcuMemory refused = RefusedIcuMemory::Above(0);
        ScanBytes(scanner, bytes);
        EXPECT_GT(refused.Refused(), 0U) << bytes;
    };
    headOf("<gpx version='1.1' creator='" + text + "'/>");
    EXPECT_EQ(Shown(scanner.GetHead()), "root gpx; version 1.1; end failed");
    headOf("<gpx version='1.1'><name>short</name><desc>" + text + "</desc></gpx>");
    EXPECT_EQ(Shown(scanner.GetHead()), "root gpx; version 1.1; name short; end failed");
    headOf("<gpx><metadata><author><email id='of fourteen u' domain='which is of 17 "
           "u'/></author></metadata></gpx>");
    EXPECT_EQ(Shown(scanner.GetHead()), "root gpx; end failed");
}

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
