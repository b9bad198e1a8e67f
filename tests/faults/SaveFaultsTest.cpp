// SPDX-License-Identifier: MIT

// Saving edited documents while one request for memory, or that request and all later ones, is refused: the
// target is whole, the old one or the new one.

#include <vexaTransferLib/GpxSaver.h>

#include "support/Attempts.h"
#include "support/IcuMemory.h"
#include "support/Memory.h"
#include "support/StandardWriting.h"
#include "support/TestFiles.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <iterator>
#include <string>
#include <string_view>
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
                     "</url><!-- a --><trkseg><trkpt lat='1' lon='2'><speed>1</speed></trkpt></trkseg></trk>",
                 " xmlns:x='urn:x'");
}

/// Documents with edits of each kind.
std::vector<GpxDocument> Documents() {
    const GpxDocument read = ReadCompletely(AFile());
    std::vector<GpxDocument> documents(4, read);
    const icu::UnicodeString text = icu::UnicodeString::fromUTF8(kLong);
    documents[1].SetName(text);
    documents[1].EditWaypoints()[0].SetComment(text);
    documents[1].EditMetadata().SetKeywords(text);
    documents[1].EditTracks()[0].SetName(text);
    GpxPoint point = read.GetWaypoints()[0];
    point.SetDescription(text);
    documents[2] = ReadCompletely(Gpx11(Waypoint("<name>" + kLong + "</name>"), " xmlns:x='urn:other'"));
    documents[2].AddWaypoint(point);
    documents[2].EditWaypoints().Insert(0, point);
    const GpxElement element = read.GetWaypoints()[0].GetElement().GetFirstChild();
    documents[3].EditElements().SetText(element, text);
    documents[3].EditElements().AddChild(documents[3].GetElement(), "urn:new", "new", text);
    documents[3].EditElements().RemoveComments([](std::string_view) { return true; });
    documents[3].EditTracks().Remove(0);
    return documents;
}

template <class Refuse>
void SaveWithEachRefused(const std::string& what, Refuse refuse) {
    const TemporaryFolder folder;
    const std::filesystem::path target = folder / "a file whose name has more units than ICU holds.gpx";
    std::size_t calls = 0;
    const GpxSaver saver;
    for (const GpxDocument& document : Documents()) {
        const std::string whole = saver.GetText(document);
        calls += ForEachCall([&](std::size_t call) {
            WriteBytes(target, "before");
            const Attempt attempt =
                AttemptWith([&] { return refuse(call); }, [&] { saver.SaveFile(document, target.string()); });
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
    EXPECT_GT(calls, 0U) << what;
    Record(what, calls);
}

TEST(SaveFaultsTest, OneRequestToOperatorNew) {
    SaveWithEachRefused("save_new", [](std::size_t call) { return RefusedNew::AtCall(call); });
}

TEST(SaveFaultsTest, AllFurtherRequestsToOperatorNew) {
    SaveWithEachRefused("save_new_on", [](std::size_t call) { return RefusedNew::FromCall(call); });
}

TEST(SaveFaultsTest, OneRequestOfIcu) {
    SaveWithEachRefused("save_icu", [](std::size_t call) { return RefusedIcuMemory::AtCall(call); });
}

} // namespace
} // namespace vexaTransferLib
