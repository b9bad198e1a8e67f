// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What the file says about itself.

#include <common/Export.h>
#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxLink.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace vexaTransferLib {

/// The bounds that a file states, in degrees, WGS 84. Plain data; nothing is checked, and nothing says that the
/// points of the file are within them. A box across the date line has a minimum greater than its maximum.
struct VEXATRANSFERLIB_API GpxBounds {
    double minLatitude = 0.0;  ///< the southern edge
    double minLongitude = 0.0; ///< the western edge
    double maxLatitude = 0.0;  ///< the northern edge
    double maxLongitude = 0.0; ///< the eastern edge
};

/// A person or an organisation. Plain data; empty is what the file does not have.
struct VEXATRANSFERLIB_API GpxPerson {
    std::optional<icu::UnicodeString> name;  ///< in full, or of the organisation
    std::optional<icu::UnicodeString> email; ///< "id@domain"
    std::optional<GpxLink> link;             ///< GPX 1.1 only
};

/// Who has the rights, and what others may do. Plain data; empty is what the file does not have.
struct VEXATRANSFERLIB_API GpxCopyright {
    std::optional<icu::UnicodeString> author;  ///< who has the rights
    std::optional<icu::UnicodeString> year;    ///< as the file has it; it may have a zone
    std::optional<icu::UnicodeString> license; ///< an address
};

/// The vendor's summary of a file, as the file has it: nothing is counted. Plain data; empty is what the file does
/// not have, or what is no number.
struct VEXATRANSFERLIB_API GpxFileStats {
    std::optional<std::int32_t> waypoints;     ///< their number
    std::optional<std::int32_t> tracks;        ///< their number
    std::optional<std::int32_t> trackSegments; ///< their number
    std::optional<std::int32_t> geocaches;     ///< their number
    std::optional<double> trackLength;         ///< of all tracks, in kilometres
};

/// What a GPX file says about itself, read on demand from its root element: from `metadata`, where GPX 1.1 has it,
/// and from the children of the root, where 1.0 has it. The version that the file states plays no part. Where both
/// have a value, that of `metadata` counts, and of several with one name in one place the first.
///
/// An optional is empty when the file has no such element, and, for a number or a time, when its text is none. An
/// empty element gives an empty text. Texts come as they stand in the file, with references replaced and nothing
/// trimmed.
///
/// It is a view, as GpxElement is: it shares the source, and what it returns are copies. Nothing is kept. A call
/// costs as much as the part of the file up to what is found; for what is in neither place it costs as much as the
/// whole file, so keep what you need more than once. Of a view of nothing everything is empty. Const operations may
/// run on several threads at once. All throw std::bad_alloc when memory runs out, and nothing else.
///
///     const GpxMetadata metadata(document.GetElement());
///     if (const auto author = metadata.GetAuthor(); author && author->name)
///         Show(*author->name);
class VEXATRANSFERLIB_API GpxMetadata {
public:
    /// \param root the `gpx` element; its name is not checked
    explicit GpxMetadata(GpxElement root) : root_(std::move(root)) {}

    /// The element that all is read from.
    const GpxElement& GetElement() const { return root_; }

    /// \{
    /// The attributes of the root: the version that the file states, whatever it is, and the program that wrote it.
    /// These cost no more than the start tag.
    std::optional<icu::UnicodeString> GetVersion() const;
    std::optional<icu::UnicodeString> GetCreator() const;
    /// \}

    /// \{
    /// The texts of `name`, `desc` and `keywords`; the latter are separated by commas.
    std::optional<icu::UnicodeString> GetName() const;
    std::optional<icu::UnicodeString> GetDescription() const;
    std::optional<icu::UnicodeString> GetKeywords() const;
    /// \}
    /// The author with the elements of GPX 1.1. An `author` without elements in it is one of GPX 1.0, whose text is
    /// the name. The `email` of 1.0 is that of the author unless `metadata` has an author.
    std::optional<GpxPerson> GetAuthor() const;
    /// GPX 1.1 only.
    std::optional<GpxCopyright> GetCopyright() const;
    /// All links, those of `metadata` before those of the root; see GpxObjectDetails::GetLinks. Costs as much as
    /// the file.
    std::vector<GpxLink> GetLinks() const;
    /// Empty when one of the four numbers is missing or none.
    std::optional<GpxBounds> GetBounds() const;
    /// When the file was made, in milliseconds since 1970-01-01T00:00:00 UTC. A time without a zone counts as UTC.
    std::optional<double> GetTime() const;

    /// \{
    /// The vendor's description of the file as a layer of a map: its name, its key, its form, and the number of the
    /// symbol that points without one have. These, and what follows, are looked for in the extensions of `metadata`
    /// first; of several the last one counts.
    std::optional<icu::UnicodeString> GetLayerName() const;
    std::optional<icu::UnicodeString> GetLayerKey() const;
    std::optional<icu::UnicodeString> GetForm() const;
    std::optional<std::int32_t> GetDefaultSymbol() const;
    /// \}
    /// \{
    /// The vendor's identifiers of the file's track and waypoint.
    std::optional<icu::UnicodeString> GetTrackIdentifier() const;
    std::optional<icu::UnicodeString> GetWaypointIdentifier() const;
    /// \}
    /// The vendor's summary of the file.
    std::optional<GpxFileStats> GetFileStats() const;

    /// The elements of other formats in `metadata`, and then those below the root; see ForeignElements. Costs as
    /// much as the file.
    std::vector<GpxElement> GetExtensions() const;

private:
    GpxElement root_;
};

} // namespace vexaTransferLib
