// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <span>
#include <tuple>
#include <vector>

namespace vexagpx {

/// From 1; 0 when it is not known.
struct Location {
    std::uint64_t line = 0;
    std::uint64_t column = 0;

    bool operator==(const Location&) const = default;
    bool operator<(const Location& other) const {
        return std::tie(line, column) < std::tie(other.line, other.column);
    }
};

/// Values with the locations in a file where they occur, in the order of their first location. Equal values are
/// one entry with a count, so that a million of them take no more memory than one. When each is to be an entry of
/// its own, each takes the memory of its location. An equal value is stored once in either case.
template <class T>
class Occurrences {
public:
    static constexpr std::size_t kMostLocations = 10;

    struct Entry {
        const T& value;
        std::uint64_t count;
        std::span<const Location> locations; ///< sorted, the first ten of them; never empty
    };

    explicit Occurrences(bool each) : each_(each) {}

    void Add(const T& value, const Location& location) {
        ++count_;
        const auto [known, isNew] = known_.try_emplace(value);
        if (each_) {
            occurrences_.push_back({&known->first, location});
            return;
        }
        Group& group = known->second;
        if (isNew)
            group.order = known_.size();
        ++group.count;
        AddLocation(group.locations, location);
    }

    std::uint64_t Count() const { return count_; }
    bool Contains(const T& value) const { return known_.find(value) != known_.end(); }
    std::size_t DifferentCount() const { return known_.size(); }

    /// Calls `take` with each Entry.
    template <class Take>
    void ForEach(Take take) const {
        if (each_)
            ForEachOccurrence(take);
        else
            ForEachGroup(take);
    }

private:
    struct Group {
        std::size_t order = 0;
        std::uint64_t count = 0;
        std::vector<Location> locations;
    };
    struct Occurrence {
        const T* value;
        Location location;
    };

    static void AddLocation(std::vector<Location>& locations, const Location& location) {
        if (locations.size() == kMostLocations && !(location < locations.back()))
            return;
        locations.insert(std::upper_bound(locations.begin(), locations.end(), location), location);
        if (locations.size() > kMostLocations)
            locations.pop_back();
    }

    template <class Take>
    void ForEachOccurrence(Take& take) const {
        std::vector<const Occurrence*> sorted;
        sorted.reserve(occurrences_.size());
        for (const Occurrence& entry : occurrences_)
            sorted.push_back(&entry);
        std::stable_sort(sorted.begin(), sorted.end(),
                         [](const Occurrence* a, const Occurrence* b) { return a->location < b->location; });
        for (const Occurrence* entry : sorted)
            take(Entry{*entry->value, 1, {&entry->location, 1}});
    }

    template <class Take>
    void ForEachGroup(Take& take) const {
        using Known = typename std::map<T, Group>::value_type;
        std::vector<const Known*> sorted;
        sorted.reserve(known_.size());
        for (const Known& known : known_)
            sorted.push_back(&known);
        std::sort(sorted.begin(), sorted.end(), [](const Known* a, const Known* b) {
            return std::tie(a->second.locations.front(), a->second.order) <
                   std::tie(b->second.locations.front(), b->second.order);
        });
        for (const Known* known : sorted)
            take(Entry{known->first, known->second.count, known->second.locations});
    }

    bool each_;
    std::uint64_t count_ = 0;
    std::map<T, Group> known_;
    /// In the order in which they came; a deque, for that does not take twice its memory while it grows.
    std::deque<Occurrence> occurrences_;
};

} // namespace vexagpx
