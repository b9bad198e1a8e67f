// SPDX-License-Identifier: MIT

// Reads files of many programs completely, if a folder of them is beside the source tree, and those of tests/data. The
// XML parser's DOM says how many objects they have.

#include "support/CompleteRead.h"
#include "support/GpxDom.h"
#include "support/GpxFiles.h"
#include "support/GpxReading.h"
#include "support/GpxValues.h"
#include "support/ModelCompare.h"
#include "support/TestFiles.h"

#include <vexaTransferLib/GpxElement.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

/// How many there are of the elements that are objects of the model, by their local names.
using Counts = std::map<std::string, std::size_t>;

bool IsOfGpx(const std::string& nameSpace) {
    return nameSpace.empty() || nameSpace.find("topografix.com/GPX/1/") != std::string::npos;
}

bool IsOfGeocaches(const std::string& nameSpace) {
    return nameSpace.find("groundspeak.com/cache/") != std::string::npos;
}

Counts CountsInDom(const std::string& bytes) {
    const DomTree tree(bytes);
    Counts counts;
    for (const xercesc::DOMNode* node = tree.Root(); node != nullptr; node = NextInDocument(node)) {
        if (node->getNodeType() != xercesc::DOMNode::ELEMENT_NODE)
            continue;
        const std::string name = Utf8(node->getLocalName());
        const std::string uri = node->getNamespaceURI() != nullptr ? Utf8(node->getNamespaceURI()) : "";
        for (const char* const known : {"wpt", "rte", "rtept", "trk", "trkseg", "trkpt"})
            if (name == known && IsOfGpx(uri))
                ++counts[name];
        for (const char* const known : {"cache", "log"})
            if (name == known && IsOfGeocaches(uri))
                ++counts[name];
    }
    return counts;
}

void AddUnread(Counts& counts, const std::vector<GpxElement>& elements) {
    for (const GpxElement& element : elements)
        ++counts[std::string(element.GetName())];
}

void Add(Counts& counts, const std::string& name, std::size_t count) {
    if (count != 0)
        counts[name] += count;
}

Counts CountsIn(const GpxDocument& document) {
    Counts counts;
    AddUnread(counts, document.GetUnreadElements());
    Add(counts, "wpt", document.GetWaypointCount());
    for (auto point = document.GetWaypointIter(); point != document.GetWaypointEndIter(); ++point)
        if (const std::optional<GpxGroundspeakCache> cache = GeocacheOf(*point)) {
            Add(counts, "cache", 1);
            Add(counts, "log", cache->logs.size());
        }
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route) {
        Add(counts, "rte", 1);
        Add(counts, "rtept", route->GetPointCount());
        AddUnread(counts, route->GetUnreadElements());
    }
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track) {
        Add(counts, "trk", 1);
        Add(counts, "trkseg", track->GetSegmentCount());
        AddUnread(counts, track->GetUnreadElements());
        for (auto segment = track->GetSegmentIter(); segment != track->GetSegmentEndIter(); ++segment)
            Add(counts, "trkpt", track->GetPointCount(segment));
    }
    return counts;
}

// What is meant to differ: texts that are not cleaned, `cmt` and `desc`, names that are not made up, log ids,
// the first of several links, characters of XML 1.1.
bool IsMeantToDiffer(const std::string& difference) {
    for (const char* const field : {"geocache, ", "url, ", "link, ",
                                    "description: ", "comment: ", "layer: ", "annotation: ", "statistics"})
        if (difference.find(field) != std::string::npos)
            return true;
    const bool hasControl = difference.find_first_of("\a\x1B") != std::string::npos;
    return hasControl || difference.starts_with("name: ");
}

// What the default way has left out: a value or objects that it did not find.
bool IsMore(const std::string& difference) {
    std::size_t fewer = 0;
    std::size_t more = 0;
    if (std::sscanf(difference.c_str(), "%*[a-z0-9, ]: %zu, not %zu", &fewer, &more) == 2 && fewer < more)
        return true;
    return difference.find(": absent, not ") != std::string::npos ||
           difference.find(": \"\", not ") != std::string::npos ||
           difference.find(": 0, not ") != std::string::npos;
}

// The default way rounds times to milliseconds.
bool IsFinerTime(const std::string& difference) {
    double coarse = 0.0;
    double fine = 0.0;
    return difference.find("time: ") != std::string::npos &&
           std::sscanf(difference.c_str(), "%*[a-zA-Z0-9, ]: %lf, not %lf", &coarse, &fine) == 2 &&
           std::abs(coarse - fine) < 1.0;
}

// True when the default way reads another of two values, or only a piece of one.
bool HasOtherValues(const std::string& notices) {
    return notices.find(" replaced: ") != std::string::npos ||
           notices.find("in several pieces") != std::string::npos;
}

std::vector<std::string> UnexpectedDifferences(const GpxDocument& compatible, const GpxDocument& complete) {
    std::vector<std::string> unexpected;
    for (const std::string& difference : DifferencesOf(compatible, complete))
        if (!IsMeantToDiffer(difference) && !IsMore(difference) && !IsFinerTime(difference))
            unexpected.push_back(difference);
    return unexpected;
}

void CheckFile(const std::filesystem::path& path) {
    SCOPED_TRACE(path.string());
    const std::string bytes = ReadBytes(path);
    const CompleteRead complete = ReadCompletely(bytes);
    EXPECT_EQ(complete.reports, "");
    EXPECT_EQ(complete.error, ErrorToExpect(bytes));
    if (!complete.error.empty()) {
        EXPECT_TRUE(IsSameModel(UsedDocument(), complete.document));
        return;
    }
    EXPECT_EQ(CountsIn(complete.document), CountsInDom(bytes));
    const Reading compatible = ReadingOfBytes(bytes, "walk.gpx");
    if (compatible.error.empty() && !HasOtherValues(complete.notices)) {
        EXPECT_EQ(UnexpectedDifferences(compatible.document, complete.document), std::vector<std::string>());
    }
}

TEST(CompleteTestDataTest, EveryObjectOfTheTestFilesIsReadOrListedAsUnread) {
    for (const std::filesystem::path& path : GpxFilesBelow(VEXA_TEST_DATA))
        CheckFile(path);
}

class CompleteCorpusTest : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Folders, CompleteCorpusTest, testing::Values("gpx", "gpx-malformed"),
                         [](const auto& folder) {
                             return std::string(folder.param) == "gpx" ? "WellFormed" : "Malformed";
                         });

TEST_P(CompleteCorpusTest, EveryObjectIsReadOrListedAsUnread) {
    const std::filesystem::path folder = std::filesystem::path(VEXA_SHARED) / "corpus" / GetParam();
    if (!std::filesystem::is_directory(folder))
        GTEST_SKIP() << "there is no corpus of GPX files beside the source tree";
    for (const std::filesystem::path& path : GpxFilesBelow(folder))
        CheckFile(path);
}

} // namespace
} // namespace vexaTransferLib
