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
struct Place {
    std::uint64_t line = 0;
    std::uint64_t column = 0;

    bool operator==(const Place&) const = default;
    bool operator<(const Place& other) const {
        return std::tie(line, column) < std::tie(other.line, other.column);
    }
};

/// Things with the places where they are in a file, in the order of their first place. Equal things are one
/// entry with a count, which takes no more memory for a million of them, unless each is to be an entry: then it
/// takes that of its place. A thing is stored once in either case.
template <class Thing>
class Collapsed {
public:
    static constexpr std::size_t kMostPlaces = 10;

    struct Entry {
        const Thing& thing;
        std::uint64_t count;
        std::span<const Place> places; ///< sorted, the first ten of them; never empty
    };

    explicit Collapsed(bool each) : each_(each) {}

    void Add(const Thing& thing, const Place& place) {
        ++count_;
        const auto [known, isNew] = known_.try_emplace(thing);
        if (each_) {
            eachPlaces_.push_back({&known->first, place});
            return;
        }
        Group& group = known->second;
        if (isNew)
            group.order = known_.size();
        ++group.count;
        AddPlace(group.places, place);
    }

    std::uint64_t Count() const { return count_; }
    bool Contains(const Thing& thing) const { return known_.find(thing) != known_.end(); }
    std::size_t DifferentCount() const { return known_.size(); }

    /// Calls `take` with each Entry.
    template <class Take>
    void ForEach(Take take) const {
        if (each_)
            ForEachPlace(take);
        else
            ForEachGroup(take);
    }

private:
    struct Group {
        std::size_t order = 0;
        std::uint64_t count = 0;
        std::vector<Place> places;
    };
    struct ThingAtPlace {
        const Thing* thing;
        Place place;
    };

    static void AddPlace(std::vector<Place>& places, const Place& place) {
        if (places.size() == kMostPlaces && !(place < places.back()))
            return;
        places.insert(std::upper_bound(places.begin(), places.end(), place), place);
        if (places.size() > kMostPlaces)
            places.pop_back();
    }

    template <class Take>
    void ForEachPlace(Take& take) const {
        std::vector<const ThingAtPlace*> sorted;
        sorted.reserve(eachPlaces_.size());
        for (const ThingAtPlace& entry : eachPlaces_)
            sorted.push_back(&entry);
        std::stable_sort(sorted.begin(), sorted.end(),
                         [](const ThingAtPlace* a, const ThingAtPlace* b) { return a->place < b->place; });
        for (const ThingAtPlace* entry : sorted)
            take(Entry{*entry->thing, 1, {&entry->place, 1}});
    }

    template <class Take>
    void ForEachGroup(Take& take) const {
        using Known = typename std::map<Thing, Group>::value_type;
        std::vector<const Known*> sorted;
        sorted.reserve(known_.size());
        for (const Known& known : known_)
            sorted.push_back(&known);
        std::sort(sorted.begin(), sorted.end(), [](const Known* a, const Known* b) {
            return std::tie(a->second.places.front(), a->second.order) <
                   std::tie(b->second.places.front(), b->second.order);
        });
        for (const Known* known : sorted)
            take(Entry{known->first, known->second.count, known->second.places});
    }

    bool each_;
    std::uint64_t count_ = 0;
    std::map<Thing, Group> known_;
    /// In the order in which they came; a deque, for that does not take twice its memory while it grows.
    std::deque<ThingAtPlace> eachPlaces_;
};

} // namespace vexagpx
