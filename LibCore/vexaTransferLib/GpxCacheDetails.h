// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What the file has for a geocache.

#include <common/Export.h>
#include <vexaTransferLib/GpxElement.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace vexaTransferLib {

/// A property of a geocache, such as "Dogs allowed". Plain data; empty is what the file does not have.
struct VEXATRANSFERLIB_API GpxCacheAttribute {
    std::optional<std::int64_t> id; ///< the number that stands for the property
    std::optional<bool> isIncluded; ///< false when the geocache does not have the property, as in "no dogs"
    std::optional<icu::UnicodeString> name; ///< in words
};

/// A log of a geocache with all that Groundspeak defines, as the file has it. Plain data; empty is what the file
/// does not have.
struct VEXATRANSFERLIB_API GpxCacheLogDetails {
    std::optional<std::int64_t> id;             ///< may be negative; empty also when 64 bits do not hold it
    std::optional<icu::UnicodeString> date;     ///< the text of the date
    std::optional<double> time;                 ///< the date in milliseconds since 1970-01-01T00:00:00 UTC
    std::optional<icu::UnicodeString> type;     ///< "Found it", "Write note" ...
    std::optional<icu::UnicodeString> finder;   ///< the name of who wrote the log
    std::optional<icu::UnicodeString> finderId; ///< the account of the finder; not always a number
    std::optional<icu::UnicodeString> text;     ///< as the file has it: neither decoded nor cleaned
    std::optional<bool> isEncoded;              ///< whether the text is encoded by ROT13
    std::optional<double> latitude;             ///< of the place that was logged, in degrees
    std::optional<double> longitude;            ///< in degrees
};

/// A travel bug in a geocache. Plain data; empty is what the file does not have.
struct VEXATRANSFERLIB_API GpxTravelBug {
    std::optional<std::int64_t> id;              ///< empty also when 64 bits do not hold it
    std::optional<icu::UnicodeString> reference; ///< the code of the bug: "TB1234"
    std::optional<icu::UnicodeString> name;      ///< of the bug; the first one
};

/// The values of a geocache of Groundspeak's formats 1.0, 1.0.1 and 1.0.2, read on demand. Unlike
/// GpxGroundspeakCache it has everything, and all texts as they stand in the file: they have not passed the text
/// cleaner.
///
/// The elements may be in the namespace of any version of the format. Of several with one name the first counts. An
/// optional is empty when the file has no such element or attribute, and, for a number, when its text is none. An
/// empty element gives an empty text. Nothing is trimmed.
///
/// It is a view, as GpxElement is: it shares the source, and what it returns are copies. Nothing is kept, so each
/// call reads the element again and costs at most as much as its content, which has the descriptions and all logs;
/// what is in an attribute costs as much as the start tag. Of a view of nothing everything is empty. Const
/// operations may run on several threads at once. All throw std::bad_alloc when memory runs out, and nothing else.
///
///     const GpxCacheDetails cache(GpxCacheDetails::FindCache(point.GetElement()));
///     if (cache.GetElement() && cache.IsArchived() != std::optional(true))
///         Show(cache.GetName().value_or(u"?"), cache.GetDifficulty());
class VEXATRANSFERLIB_API GpxCacheDetails {
public:
    /// The first geocache of a waypoint: in its `extensions`, as in GPX 1.1, or below it, as in 1.0. A view of
    /// nothing when there is none. Costs at most as much as the content of the waypoint.
    static GpxElement FindCache(const GpxElement& waypoint);

    /// \param cache the `cache` element; its name is not checked
    explicit GpxCacheDetails(GpxElement cache) : element_(std::move(cache)) {}

    /// The element that all is read from.
    const GpxElement& GetElement() const { return element_; }

    /// \{
    /// The attributes of the element; "True" and "1" are true, "False" and "0" are false. The last two came with
    /// format 1.0.2: whether the geocache is for paying members only, and whether its position was corrected by the
    /// user.
    std::optional<icu::UnicodeString> GetId() const;
    std::optional<bool> IsAvailable() const;
    std::optional<bool> IsArchived() const;
    std::optional<bool> IsForMembersOnly() const;
    std::optional<bool> HasCustomCoordinates() const;
    /// \}

    /// Of the geocache, not of its waypoint.
    std::optional<icu::UnicodeString> GetName() const;
    /// \{
    /// Who placed it, in words of their own; the owner by name; and the owner's account, which need not be a
    /// number.
    std::optional<icu::UnicodeString> GetPlacedBy() const;
    std::optional<icu::UnicodeString> GetOwner() const;
    std::optional<icu::UnicodeString> GetOwnerId() const;
    /// \}
    /// "Traditional Cache" ...
    std::optional<icu::UnicodeString> GetType() const;
    /// The size: "Small" ...
    std::optional<icu::UnicodeString> GetContainer() const;
    /// \{
    /// From 1, which is the easiest, to 5 by halves; the range is not checked.
    std::optional<double> GetDifficulty() const;
    std::optional<double> GetTerrain() const;
    /// \}
    /// \{
    /// Where it is, in words.
    std::optional<icu::UnicodeString> GetCountry() const;
    std::optional<icu::UnicodeString> GetState() const;
    /// \}
    /// The properties in the order of the file.
    std::vector<GpxCacheAttribute> GetAttributes() const;

    /// \{
    /// The descriptions, and whether they are HTML. HTML comes with its tags; CleanText makes plain text of it.
    std::optional<icu::UnicodeString> GetShortDescription() const;
    std::optional<icu::UnicodeString> GetLongDescription() const;
    std::optional<bool> IsShortDescriptionHtml() const;
    std::optional<bool> IsLongDescriptionHtml() const;
    /// \}
    /// As the file has them, which is most often in clear text in spite of the name. Nothing is decoded.
    std::optional<icu::UnicodeString> GetEncodedHints() const;

    /// \{
    /// What came with format 1.0.2: the note that the user made for the geocache, and how many like it best.
    std::optional<icu::UnicodeString> GetPersonalNote() const;
    std::optional<std::uint64_t> GetFavoritePoints() const;
    /// \}

    /// All logs in the order of the file, also those that lack a finder or a text.
    std::vector<GpxCacheLogDetails> GetLogs() const;
    /// All travel bugs in the order of the file.
    std::vector<GpxTravelBug> GetTravelBugs() const;

private:
    GpxElement element_;
};

} // namespace vexaTransferLib
