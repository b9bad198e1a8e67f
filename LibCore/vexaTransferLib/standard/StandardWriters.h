// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/complete/CompleteReaders.h>
#include <vexaTransferLib/standard/Writing.h>

#include <cstddef>
#include <functional>
#include <string_view>
#include <vector>

namespace vexaTransferLib::standard {

// One function for each kind of object. Each writes what the model has, and what the object's element has besides.

/// Writes the whole document, from the XML declaration to the end of the root.
void WriteDocument(Writing& writing, const GpxDocument& document);
void WriteRoute(Writing& writing, const GpxRoute& route);
void WriteTrack(Writing& writing, const GpxTrack& track);
/// \param index from 0
void WriteSegment(Writing& writing, const GpxTrack& track, std::size_t index);

/// Writes points in one go, which remembers what is the same for all of them.
class PointWriter {
public:
    PointWriter(Writing& writing, GpxPointType type, int depth)
        : writing_(writing), type_(type), depth_(depth) {}

    void Write(const GpxPoint& point);

private:
    bool IsAsRead(const GpxPoint& point, const SourceElement& element);
    void WriteAnew(const GpxPoint& point, const SourceElement& element);

    Writing& writing_;
    GpxPointType type_;
    int depth_;
    /// What the point's element says; kept for its memory.
    std::vector<GpxPoint> read_;
};

/// A geocache in GPX 1.1's extensions, or directly in a point of GPX 1.0.
void WriteGeocache(Writing& writing, const GpxGroundspeakCache& cache, int depth);

/// True for the elements of a track point that GPX 1.1 has not: speed and course.
bool IsOnlyIn10(const ScannedChild& child);

/// What an object writes of the vendor's and other programs' elements.
struct ForeignParts {
    /// The elements that have others in them: `extensions`.
    SourceElements extensions;
    /// Elements that are directly in the object, as in GPX 1.0.
    SourceElements direct;
    /// Elements of GPX that only the other version has.
    SourceElements other;
    /// True for an element that is not written because the model has another value for it.
    std::function<bool(const ScannedChild&)> isReplaced = [](const ScannedChild&) { return false; };
    /// Writes what replaces them; empty when there is nothing.
    std::function<void(int depth)> writeNew;
};
/// Writes them, in `extensions` in GPX 1.1.
void WriteForeign(Writing& writing, const ForeignParts& parts, int depth);
/// Writes the link of an object: as it stands in its elements, or the model's.
/// \param isAsRead the model has the link that the elements have
void WriteLinks(Writing& writing, const SourceElements& elements, const GpxUrl* link, bool isAsRead,
                int depth);
/// A line with an element that has a text.
void WriteTextElement(Writing& writing, std::string_view name, const icu::UnicodeString& text, int depth);
/// A line with one of the vendor's elements, whose text is ASCII without markup.
void WriteVendorElement(Writing& writing, std::string_view name, std::string_view text, int depth);
/// A line with an element whose text is ASCII without markup.
void WriteAsciiElement(Writing& writing, std::string_view name, std::string_view text, int depth);

} // namespace vexaTransferLib::standard
