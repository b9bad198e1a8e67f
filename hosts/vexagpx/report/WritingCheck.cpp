// SPDX-License-Identifier: MIT
#include <vexagpx/report/WritingCheck.h>

#include <vexagpx/report/DocumentCounts.h>
#include <vexagpx/terminal/DisplayText.h>

#include <vexaTransferLib/GpxMetadata.h>
#include <vexaTransferLib/GpxStandardWriter.h>

#include <cstddef>
#include <stdexcept>
#include <utility>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

std::vector<std::string> VersionsOf(const GpxDocument& document) {
    if (GpxMetadata(document.GetElement()).GetVersion() == icu::UnicodeString(u"1.0"))
        return {"1.0", "1.1"};
    return {"1.1"};
}

std::vector<std::string> Differences(const DocumentCounts& before, const DocumentCounts& after) {
    std::vector<std::string> differences;
    const auto compare = [&](std::size_t DocumentCounts::*count, const std::string& noun) {
        if (before.*count != after.*count)
            differences.push_back("It has " + Counted(after.*count, noun) + ", and not " +
                                  std::to_string(before.*count) + ".");
    };
    compare(&DocumentCounts::waypoints, "waypoint");
    compare(&DocumentCounts::routes, "route");
    compare(&DocumentCounts::routePoints, "route point");
    compare(&DocumentCounts::tracks, "track");
    compare(&DocumentCounts::segments, "segment");
    compare(&DocumentCounts::trackPoints, "track point");
    compare(&DocumentCounts::geocaches, "geocache");
    compare(&DocumentCounts::logs, "log");
    compare(&DocumentCounts::travelBugs, "travel bug");
    return differences;
}

WritingCheck CheckVersion(const GpxDocument& document, const std::string& version, FileParser& parser,
                          const std::string& name) {
    WritingCheck check{version, {}, {}, 0};
    UnwrittenCounts unwritten;
    GpxStandardOptions options;
    options.version = GpxVersion(icu::UnicodeString::fromUTF8(version));
    options.unwritten = [&](const GpxUnwritten& what) {
        check.unwritten.Add(what);
        unwritten.Add(what);
    };
    try {
        // What the writer leaves out is known when it has written.
        const std::string text = GpxStandardWriter(options).GetText(document);
        CompareWithText(document, text, std::move(unwritten), parser, name, check);
    } catch (const std::runtime_error& failure) {
        check.differences.push_back(std::string("It cannot be read again: ") + failure.what());
    } catch (const std::logic_error& refusal) {
        check.differences.push_back(std::string("It cannot be written: ") + refusal.what());
    }
    return check;
}

} // namespace

std::uint64_t LostCount(const std::vector<WritingCheck>& checks) {
    std::uint64_t count = 0;
    for (const WritingCheck& check : checks)
        count += check.LostCount();
    return count;
}

void CompareWithText(const GpxDocument& document, const std::string& text, UnwrittenCounts unwritten,
                     FileParser& parser, const std::string& name, WritingCheck& check) {
    GpxDocument again;
    parser.Watch(nullptr);
    parser.ReadBytes(text, name, again);
    check.differences = Differences(CountDocument(document), CountDocument(again));
    const ContentForm form = check.version == "1.0" ? ContentForm::kGpx10 : ContentForm::kGpx11;
    const LostContents lost = FindLost(document, again, form, std::move(unwritten));
    for (const LostContent& one : lost.first)
        check.differences.push_back(one.Text());
    check.otherDifferences = lost.count - lost.first.size();
}

std::vector<WritingCheck> CheckWriting(const GpxDocument& document, FileParser& parser,
                                       const std::string& name) {
    std::vector<WritingCheck> checks;
    for (const std::string& version : VersionsOf(document))
        checks.push_back(CheckVersion(document, version, parser, name));
    return checks;
}

} // namespace vexagpx
