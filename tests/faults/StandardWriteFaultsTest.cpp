// SPDX-License-Identifier: MIT

// Writing by the published schemas while one request for memory, or that request and all later ones, is refused: the
// target is whole, the old one or the new one.

#include <vexaTransferLib/GpxStandardWriter.h>

#include "support/Attempts.h"
#include "support/IcuMemory.h"
#include "support/Memory.h"
#include "support/SampleDocument.h"
#include "support/StandardWriting.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

// Longer than what ICU holds without asking for memory.
const std::string kLong = "a text of more units than ICU holds in place &amp; more";

std::string AFile() {
    return Gpx10("<author>" + kLong +
                     "</author><email>somebody.with.a.long.name@a.long.address.example</email>" +
                     Waypoint("<name>" + kLong + "</name><ele>1</ele><url>" + kLong + "</url><urlname>" +
                              kLong + "</urlname><x:a/>") +
                     "<trk><name>" + kLong + "</name><url>" + kLong +
                     "</url><trkseg><trkpt lat='1' lon='2'><speed>1</speed></trkpt></trkseg></trk>",
                 " xmlns:x='urn:x'");
}

/// Documents of each kind: a host's, one that was read, one of both.
std::vector<GpxDocument> Documents() {
    std::vector<GpxDocument> documents = {FullDocument(), ReadCompletely(AFile())};
    GpxDocument mixed = ReadCompletely(Gpx11("", " xmlns:x='urn:other'"));
    GpxPoint point = *documents[1].GetWaypointIter();
    point.SetComment(icu::UnicodeString::fromUTF8(kLong));
    mixed.AddWaypoint(point);
    documents.push_back(mixed);
    return documents;
}

template <class Refuse>
void WriteWithEachRefused(const std::string& what, Refuse refuse) {
    const TemporaryFolder folder;
    const std::filesystem::path target = folder / "a file whose name has more units than ICU holds.gpx";
    std::size_t calls = 0;
    for (const GpxDocument& document : Documents()) {
        for (const GpxVersion& version : {kGpx10, kGpx11}) {
            GpxStandardOptions options;
            options.version = version;
            const GpxStandardWriter writer(options);
            const std::string whole = writer.GetText(document);
            calls += ForEachCall([&](std::size_t call) {
                WriteBytes(target, "before");
                const Attempt attempt = AttemptWith([&] { return refuse(call); },
                                                    [&] { writer.WriteFile(document, target.string()); });
                if (attempt.Failure().empty()) {
                    EXPECT_EQ(ReadBytes(target), whole);
                } else {
                    EXPECT_EQ(attempt.Failure(), kBadAlloc);
                    EXPECT_EQ(ReadBytes(target), "before");
                }
                EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / ""),
                                        std::filesystem::directory_iterator()),
                          1);
                return attempt;
            });
        }
    }
    EXPECT_GT(calls, 0U) << what;
    Record(what, calls);
}

TEST(StandardWriteFaultsTest, OneRequestToOperatorNew) {
    WriteWithEachRefused("standard_new", [](std::size_t call) { return RefusedNew::AtCall(call); });
}

TEST(StandardWriteFaultsTest, AllFurtherRequestsToOperatorNew) {
    WriteWithEachRefused("standard_new_on", [](std::size_t call) { return RefusedNew::FromCall(call); });
}

TEST(StandardWriteFaultsTest, OneRequestOfIcu) {
    WriteWithEachRefused("standard_icu", [](std::size_t call) { return RefusedIcuMemory::AtCall(call); });
}

} // namespace
} // namespace vexaTransferLib
