// SPDX-License-Identifier: MIT
#include "support/FaultReading.h"

#include "support/Attempts.h"

#include "support/GpxReading.h"
#include "support/GpxValues.h"
#include "support/Memory.h"
#include "support/ModelCompare.h"

#include <xercesc/dom/DOMDocument.hpp>
#include <xercesc/dom/DOMElement.hpp>

#include <algorithm>

namespace vexaTransferLib::testing_support {

namespace {

constexpr char kFileName[] = "a walk whose name has more units than ICU holds in place.gpx";

// All elements with that path of local names.
void Collect(xercesc::DOMElement& element, const std::string& path, const std::string& wanted,
             std::vector<xercesc::DOMNode*>& found) {
    const std::string here = path + Utf8(icu::UnicodeString(element.getLocalName()));
    if (here == wanted)
        found.push_back(&element);
    for (auto* child = element.getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling())
        Collect(*child, here + "/", wanted, found);
}

// The paths of all elements, without the root's.
void CollectPaths(xercesc::DOMElement& element, const std::string& path, std::vector<std::string>& paths) {
    const std::string here = path + Utf8(icu::UnicodeString(element.getLocalName()));
    if (!path.empty() && std::find(paths.begin(), paths.end(), here) == paths.end())
        paths.push_back(here);
    for (auto* child = element.getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling())
        CollectPaths(*child, here + "/", paths);
}

bool IsWithin(const std::string& path, const std::string& outer) {
    return path == outer || path.starts_with(outer + "/");
}

std::vector<std::string> RefusedOf(const std::vector<GpxSkippedElement>& told) {
    std::vector<std::string> refused;
    for (const GpxSkippedElement& what : told)
        if (what.reason == kGpxRefused)
            refused.push_back(what.element);
    return refused;
}

bool IsToldAs(const GpxSkippedElement& what, const GpxSkippedElement& other) {
    return what.element == other.element && what.reason == other.reason && what.message == other.message &&
           what.isLoss == other.isLoss;
}

} // namespace

testing::AssertionResult IsOutOfMemory(std::string_view failure, const std::string& path) {
    const std::string others[] = {
        kBadAlloc,
        kXercesOutOfMemory,
        "runtime: Unable to open the converter: UTF-8 (default)",
        "runtime: Unable to convert the UnicodeString.",
        "postcondition: " + ParseErrorsMessage(path),
    };
    for (const std::string& other : others)
        if (failure == other)
            return testing::AssertionSuccess();
    return testing::AssertionFailure() << "not for want of memory: " << failure;
}

bool UnrefusedObserver::Progress(std::uint64_t bytesRead, std::uint64_t bytesInAll) {
    const MemoryPause pause;
    return RecordingObserver::Progress(bytesRead, bytesInAll);
}

void UnrefusedObserver::ParserMessage(const GpxParserMessage& message) {
    const MemoryPause pause;
    RecordingObserver::ParserMessage(message);
}

void UnrefusedObserver::Skipped(const GpxSkippedElement& what) {
    const MemoryPause pause;
    RecordingObserver::Skipped(what);
}

void UnrefusedObserver::Forget() {
    decltype(progress)().swap(progress);
    std::string().swap(messages);
    std::string().swap(skipped);
    decltype(things)().swap(things);
}

FaultFile::FaultFile(const std::string& bytes) : bytes_(bytes), file_(bytes, kFileName), path_(file_.Path()) {
    GpxParser parser;
    RecordingObserver observer;
    parser.SetObserver(&observer);
    parser.Parse(file_.Path(), whole_);
    told_ = observer.things;
}

const std::vector<std::vector<std::string>>& FaultFile::DifferencesWithout(const std::string& element) {
    const auto [entry, isNew] = differencesWithout_.try_emplace(element);
    if (!isNew)
        return entry->second;
    GpxParser parser;
    for (std::size_t index = 0;; ++index) {
        const auto tree = parser.GetParser(file_.Path());
        xercesc::DOMElement* const root = tree->getDocument()->getDocumentElement();
        std::vector<xercesc::DOMNode*> found;
        Collect(*root, "", element, found);
        if (index >= found.size())
            return entry->second;
        xercesc::DOMNode* const node = found[index];
        if (node == root)
            return entry->second;
        node->getParentNode()->removeChild(node)->release();
        GpxDocument without;
        // The name that Parse gives to a document that has none.
        icu::UnicodeString name = icu::UnicodeString(kFileName);
        name.truncate(name.length() - 4);
        GpxModelAccess::SetName(without, name);
        parser.ParseGpxNode(root, without);
        entry->second.push_back(DifferencesOf(whole_, without));
    }
}

testing::AssertionResult FaultFile::HasAllBut(const std::vector<std::string>& elements,
                                              const GpxDocument& document) {
    std::vector<std::string> differences = DifferencesOf(whole_, document);
    if (differences.empty())
        return testing::AssertionSuccess();
    std::sort(differences.begin(), differences.end());
    testing::AssertionResult lost = testing::AssertionFailure();
    lost << "lost:";
    for (const std::string& difference : differences)
        lost << "\n  " << difference;
    lost << "\nwhich is not what was lost with any of:";
    for (const std::string& element : elements) {
        lost << "\n  " << element;
        for (std::vector<std::string> explained : DifferencesWithout(element)) {
            std::sort(explained.begin(), explained.end());
            if (std::includes(explained.begin(), explained.end(), differences.begin(), differences.end()))
                return testing::AssertionSuccess();
        }
    }
    return lost;
}

testing::AssertionResult FaultFile::HasAllBut(const std::vector<GpxSkippedElement>& told,
                                              const GpxDocument& document) {
    return HasAllBut(RefusedOf(told), document);
}

testing::AssertionResult FaultFile::HasAllButOne(const GpxDocument& document) {
    if (DifferencesOf(whole_, document).empty())
        return testing::AssertionSuccess();
    GpxParser parser;
    const auto tree = parser.GetParser(file_.Path());
    std::vector<std::string> elements;
    CollectPaths(*tree->getDocument()->getDocumentElement(), "", elements);
    return HasAllBut(elements, document);
}

testing::AssertionResult FaultFile::IsToldAll(const std::vector<GpxSkippedElement>& told) const {
    const std::vector<std::string> refused = RefusedOf(told);
    for (const GpxSkippedElement& expected : told_) {
        const bool isTold = std::any_of(told.begin(), told.end(), [&](const GpxSkippedElement& what) {
            return IsToldAs(what, expected);
        });
        const bool isInRefused = std::any_of(refused.begin(), refused.end(), [&](const std::string& element) {
            return IsWithin(expected.element, element);
        });
        // An element that would be replaced is kept when the element that replaces it is refused.
        const bool mayHaveStayed = expected.reason == kGpxReplaced && !refused.empty();
        if (!isTold && !isInRefused && !mayHaveStayed)
            return testing::AssertionFailure()
                   << "not told: " << expected.element << ": " << expected.message;
    }
    return testing::AssertionSuccess();
}

testing::AssertionResult FaultFile::IsPart(const GpxDocument& document) const {
    if (document.GetWaypointCount() <= whole_.GetWaypointCount() &&
        document.GetRouteCount() <= whole_.GetRouteCount() &&
        document.GetTrackCount() <= whole_.GetTrackCount() && NameOf(document) != NameOf(UsedDocument()))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << NameOf(document) << ": " << CountsOf(document);
}

} // namespace vexaTransferLib::testing_support
