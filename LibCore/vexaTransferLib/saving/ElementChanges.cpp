// SPDX-License-Identifier: MIT
#include <vexaTransferLib/saving/ElementChanges.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/saving/ElementEdits.h>
#include <vexaTransferLib/text/ElementNames.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace vexaTransferLib::saving {

namespace {

using Access = GpxModelAccess;
using Place = standard::PieceOutput::Place;

// The children of elements of GPX 1.1 and 1.0, in orders that suit both.
constexpr std::string_view kHeadOrder[] = {gpx::kMetadata, gpx::kName,      gpx::kDesc, gpx::kAuthor,
                                           gpx::kEmail,    gpx::kCopyright, gpx::kLink, gpx::kTime,
                                           gpx::kKeywords, gpx::kBounds,    gpx::kWpt,  gpx::kRte,
                                           gpx::kTrk,      gpx::kExtensions};
constexpr std::string_view kObjectOrder[] = {
    gpx::kEle,    gpx::kTime,  gpx::kCourse,        gpx::kSpeed,  gpx::kMagvar,     gpx::kGeoidheight,
    gpx::kName,   gpx::kCmt,   gpx::kDesc,          gpx::kSrc,    gpx::kEmail,      gpx::kLink,
    gpx::kNumber, gpx::kSym,   gpx::kType,          gpx::kFix,    gpx::kSat,        gpx::kHdop,
    gpx::kVdop,   gpx::kPdop,  gpx::kAgeofdgpsdata, gpx::kDgpsid, gpx::kExtensions, gpx::kRtept,
    gpx::kTrkpt,  gpx::kTrkseg};

/// One element, while it is changed.
class ElementChanging {
public:
    ElementChanging(Saving& saving, TextEdits& edits, std::uint64_t place,
                    const Access::ElementChange& change)
        : saving_(saving), edits_(edits), change_(change), element_(saving.ElementAt(place)),
          editing_(saving, edits, element_, OrderOf(element_)) {}

    // Returns the place up to which nothing else can be changed.
    std::uint64_t Change() {
        const TextPart part = saving_.PartOf(element_);
        if (change_.isRemoved) {
            const TextPart lines = LinesOf(saving_.Text(), part);
            edits_.Remove(lines.begin, lines.end);
            return lines.end;
        }
        for (const auto& [name, value] : change_.attributes) {
            if (value)
                editing_.SetAttribute(element_.child.tag, name, saving_.Escaped(*value, Place::kAttribute));
            else
                editing_.RemoveAttribute(element_.child.tag, name);
        }
        if (change_.text) {
            editing_.SetContent(Self(), Content());
            return part.end;
        }
        for (const Access::NewChild& child : change_.children)
            editing_.Add(IsOfParent(child) ? std::string_view(child.name) : std::string_view(),
                         editing_.ChildLayout().separator + Xml(child));
        editing_.Finish();
        return part.begin;
    }

private:
    static ElementEdits::Order OrderOf(const SavedElement& element) {
        if (element.child.kind != NamespaceKind::kGpx)
            return {};
        const bool isHead = element.child.name == gpx::kGpx || element.child.name == gpx::kMetadata;
        return isHead ? ElementEdits::Order(kHeadOrder) : ElementEdits::Order(kObjectOrder);
    }
    SavedChild Self() const {
        return {element_.child.begin, element_.end, element_.child.name, element_.child.kind};
    }
    std::string Content() {
        std::string content = saving_.Escaped(*change_.text, Place::kContent);
        for (const Access::NewChild& child : change_.children)
            content += Xml(child);
        return content;
    }
    bool IsOfParent(const Access::NewChild& child) {
        const std::uint64_t place = saving_.Source().PlaceOf(element_.child.begin);
        return saving_.Names().UriOf(element_.child.prefix, place) == child.nameSpace;
    }
    // In the prefix of the parent when that is of the namespace.
    std::string Xml(const Access::NewChild& child) {
        const std::string name = IsOfParent(child) ? QualifiedBelow(element_, child.name) : child.name;
        std::string xml = "<" + name;
        if (!IsOfParent(child))
            xml += standard::Declaration({}, child.nameSpace);
        const std::string content = saving_.Escaped(child.text, Place::kContent);
        return content.empty() ? xml + "/>" : xml + ">" + content + "</" + name + ">";
    }

    Saving& saving_;
    TextEdits& edits_;
    const Access::ElementChange& change_;
    SavedElement element_;
    ElementEdits editing_;
};

TextEdits RemovedComments(std::string_view text, const GpxElementChanges& changes) {
    TextEdits edits;
    for (const auto& [begin, end] : Access::GetComments(changes)) {
        const TextPart lines = LinesOf(text, {begin, end});
        edits.Remove(lines.begin, end);
        // A part of its own: a new element may come right behind the comment.
        if (lines.end != end)
            edits.Remove(end, lines.end);
    }
    return edits;
}

} // namespace

TextEdits MakeElementChanges(Saving& saving, const GpxDocument& document) {
    TextEdits edits;
    const GpxElementChanges* const changes = Access::GetChanges(document);
    if (changes == nullptr)
        return edits;
    std::uint64_t covered = 0;
    for (const auto& [place, change] : Access::GetElements(*changes))
        if (place >= covered)
            covered = ElementChanging(saving, edits, place, change).Change();
    edits.AddUntouched(RemovedComments(saving.Text(), *changes), 0, saving.Text().size());
    edits.Sort();
    return edits;
}

} // namespace vexaTransferLib::saving
