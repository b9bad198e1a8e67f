// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxGroundspeakCache.h>
#include <vexaTransferLib/saving/ElementEdits.h>
#include <vexaTransferLib/saving/ListEdits.h>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vexaTransferLib::saving {

// One function for each kind of object. Each makes an element of the source have what the object has; what is the same
// is not touched.

/// Names, time and the lists of the root.
void EditDocument(Saving& saving, TextEdits& edits, const GpxDocument& document);
/// Name, time and metadata.
void EditHead(Saving& saving, TextEdits& edits, ElementEdits& root, const GpxDocument& document);
void EditRoute(Saving& saving, TextEdits& edits, const SavedElement& element, const GpxRoute& route);
void EditTrack(Saving& saving, TextEdits& edits, const SavedElement& element, const GpxTrack& track);
void EditPoint(Saving& saving, TextEdits& edits, const SavedElement& element, const GpxPoint& point);
/// \param read what the element says
void EditGeocache(Saving& saving, TextEdits& edits, const GpxGroundspeakCache& cache,
                  const GpxGroundspeakCache& read);

/// The link of a point or a track.
/// \param link, read null for none; they are different
void EditLink(Saving& saving, TextEdits& edits, ElementEdits& parent, const GpxUrl* link, const GpxUrl* read);

/// Makes the elements with a name have a text: replaces that of the first, or adds one. Removes them for an empty text.
/// \param content escaped
void EditText(ElementEdits& parent, std::string_view name, std::string_view content);

/// The vendor's elements and those that replace them.
/// \param isReplaced whether a child of the object or of its `extensions` goes
/// \param writeNew writes what comes in their place, from a depth on; null for nothing
void EditForeign(Saving& saving, TextEdits& edits, ElementEdits& parent,
                 const std::function<bool(const ScannedChild&)>& isReplaced,
                 const std::function<void(int depth)>& writeNew);

/// The points of a route or a segment, or waypoints.
void SavePoints(Saving& saving, TextEdits& edits, ElementEdits& parent, const ListKind& kind,
                const std::vector<GpxPoint>& points, int depth);

/// All points, as new children of an element.
std::string RenderAllPoints(Saving& saving, const SavedElement& parent, const std::vector<GpxPoint>& points,
                            const ElementLayout& layout, int depth);

/// The text of an object that was read from the source, as it is now, where it can stand elsewhere in the source.
/// \param edit makes the edits of the element
template <class Edit>
std::string MovedText(Saving& saving, std::uint64_t place, const ElementLayout& layout, Edit edit) {
    const SavedElement element = saving.ElementAt(place);
    TextEdits edits;
    edit(element, edits);
    std::string text = layout.separator;
    const TextPart part = saving.PartOf(element);
    edits.AddUntouched(saving.ElementChanges(), part.begin, part.end);
    edits.Apply(saving.Text(), part.begin, part.end, [&](std::string_view piece) { text.append(piece); });
    return text;
}

/// Renders an object for a place below a parent: from its element, when that is in the source and means the same there,
/// otherwise anew.
/// \param source of the object's element; null when there is none
/// \param edit as for MovedText
/// \param write writes the object through Writing
template <class Edit, class Write>
std::string RenderObject(Saving& saving, const SavedElement& parent, const SourceText* source,
                         std::uint64_t place, const ElementLayout& layout, int depth, Edit edit,
                         Write write) {
    if (source == &saving.Source() && saving.MeansTheSameBelow(parent, place))
        return MovedText(saving, place, layout, edit);
    saving.Writing().SetDeclaresAll(!saving.HasRootScope(parent));
    std::string text = saving.Rendered(layout, depth, write);
    saving.Writing().SetDeclaresAll(false);
    return saving.InNamespaceOf(parent, layout, std::move(text));
}

} // namespace vexaTransferLib::saving
