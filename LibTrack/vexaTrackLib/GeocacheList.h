// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The geocaches of several files as one list.

#include <vexaTrackLib/Geocache.h>

#include <vexaTransferLib/GpxDocument.h>

#include <common/Export.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <vector>

namespace vexaTrackLib {

/// Makes one list of the geocaches of several documents, such as a pocket query and its `-wpts` companion.
///
/// A geocache that several documents have is in the list once, as the newest has it: the one with the latest time; of
/// equal ones that which was added last. Logs of all of them count, each identifier once. A waypoint without a geocache
/// whose code is that of a geocache in all but the first two characters is a companion of it, whichever file they are
/// in. One whose type starts with "Waypoint|", as companions have it, and whose geocache is in none of the files, is an
/// orphan. Other waypoints are no part of the list; GetOtherCount tells how many they are.
///
/// Documents must have been read completely (GpxParser::SetComplete); of others nothing is taken. The list keeps what
/// it needs of a document, the text of its file included, and none of its points. Adding a document takes as long as
/// its waypoints and geocaches, without their descriptions. An operation that throws leaves the list as it was or with
/// a part of the document. Const operations may run on several threads at once.
///
///     GeocacheList list;
///     list.Add(query);
///     list.Add(companions);
///     for (const Geocache& cache : list.Finish())
///         Show(cache);
class VEXATRANSFERLIB_API GeocacheList {
public:
    /// An empty list.
    GeocacheList();
    /// Computes distances and bearings from a place for each geocache that is added from now on.
    /// \param origin any place of the earth
    explicit GeocacheList(const GeocachePlace& origin);
    GeocacheList(const GeocacheList&) = delete;
    GeocacheList& operator=(const GeocacheList&) = delete;
    ~GeocacheList();

    /// Adds the geocaches and companions of a document.
    /// \throws std::bad_alloc
    void Add(const vexaTransferLib::GpxDocument& document);

    /// Gives companions to their geocaches. Call it once, when all documents have been added.
    /// \returns the geocaches in the order in which they came first, to be moved from, sorted and filtered
    /// \throws std::bad_alloc
    std::vector<Geocache> Finish();
    /// After Finish, the companions of geocaches that no document has, in the order of their codes.
    const std::vector<GeocacheCompanion>& GetOrphans() const { return orphans_; }
    /// How many waypoints were neither geocaches nor companions. After Finish.
    std::size_t GetOtherCount() const { return others_; }

private:
    struct Version {
        double time; ///< of its document
        vexaTransferLib::GpxElement element;
    };
    struct Entry {
        Geocache cache;
        std::vector<Version> versions; ///< in the order in which they were added
        std::set<std::int64_t> logs;   ///< identifiers of the logs that are counted
    };
    struct Candidate {
        GeocacheCompanion companion;
        bool isCompanion; ///< by its type
    };

    VEXATRANSFERLIB_LOCAL void AddCache(const vexaTransferLib::GpxPoint& waypoint,
                                        const vexaTransferLib::GpxElement& element, double time);
    VEXATRANSFERLIB_LOCAL static void SortVersions(Entry& entry);
    VEXATRANSFERLIB_LOCAL void Describe(const vexaTransferLib::GpxPoint& waypoint,
                                        const vexaTransferLib::GpxElement& element, double time,
                                        Entry& entry) const;
    VEXATRANSFERLIB_LOCAL void AddCompanion(const vexaTransferLib::GpxPoint& waypoint, double time);
    VEXATRANSFERLIB_LOCAL void Measure(Geocache& cache) const;

    std::optional<GeocachePlace> origin_;
    std::vector<Entry> entries_;
    /// The geocaches by their codes.
    std::map<icu::UnicodeString, std::size_t> indexes_;
    /// Waypoints without geocaches by their codes.
    std::map<icu::UnicodeString, Candidate> companions_;
    std::vector<GeocacheCompanion> orphans_;
    std::size_t others_ = 0;
};

} // namespace vexaTrackLib
