// SPDX-License-Identifier: MIT

// Several threads read the elements of one document, and copy and destroy its objects, at once.
#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxParser.h>

#include "support/ElementWalk.h"
#include "support/GpxText.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace vexaTransferLib {
namespace {

using namespace testing_support;

constexpr int kThreads = 4;

GpxDocument SharedDocument() {
    GpxParser parser;
    parser.SetComplete();
    GpxDocument document;
    parser.Parse(
        Gpx11(Repeat("<wpt lat='1' lon='2'>\n<name>n</name><other:x other:y='1'>t</other:x></wpt>", 200)),
        u"walk.gpx", document);
    return document;
}

template <class Action>
void RunOnThreads(Action action) {
    std::vector<std::thread> threads;
    for (int number = 0; number < kThreads; ++number)
        threads.emplace_back([&, number] { action(number); });
    for (std::thread& thread : threads)
        thread.join();
}

TEST(GpxElementThreadsTest, ThreadsReadTheElementsOfOneSource) {
    const GpxDocument document = SharedDocument();
    std::vector<std::string> seen(kThreads);
    std::vector<std::size_t> asked(kThreads);
    RunOnThreads([&](int number) {
        const auto thread = static_cast<std::size_t>(number);
        // The lines are counted by all of them for the first time.
        for (auto point = document.GetWaypointIter(); point != document.GetWaypointEndIter(); ++point)
            seen[thread] += std::to_string(point->GetElement().GetLine()) + " ";
        asked[thread] = AskAll(document.GetElement());
        seen[thread] += ContentOf(document.GetElement());
    });
    for (const std::string& text : seen)
        EXPECT_EQ(text, seen.front());
    EXPECT_EQ(asked, std::vector<std::size_t>(kThreads, 601));
    EXPECT_EQ(seen.front().substr(0, 8), "1 2 3 4 ");
}

TEST(GpxElementThreadsTest, ThreadsCopyAndDestroyTheOwnersOfOneSource) {
    auto document = std::make_unique<GpxDocument>(SharedDocument());
    std::vector<GpxPoint> last(kThreads, *document->GetWaypointIter());
    RunOnThreads([&](int number) {
        for (int round = 0; round < 20; ++round) {
            const GpxDocument copy = *document;
            std::vector<GpxPoint> points(copy.GetWaypointIter(), copy.GetWaypointEndIter());
            last[static_cast<std::size_t>(number)] = points[static_cast<std::size_t>(round)];
        }
    });
    document.reset();
    // The threads destroy the last owners.
    std::vector<std::string> texts(kThreads);
    RunOnThreads([&](int number) {
        const auto thread = static_cast<std::size_t>(number);
        GpxElement element = last[thread].GetElement();
        last[thread] = GpxPoint(kGpxWaypoint, 0.0, 0.0);
        texts[thread] = std::string(element.GetXml());
        element = GpxElement();
    });
    for (const std::string& text : texts)
        EXPECT_EQ(text, texts.front());
    EXPECT_EQ(texts.front().substr(0, 4), "<wpt");
}

} // namespace
} // namespace vexaTransferLib
