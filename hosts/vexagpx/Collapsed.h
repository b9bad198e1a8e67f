// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
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
/// entry with a count, which takes no more memory for a million of them, unless each is to be an entry.
template <class Thing>
class Collapsed {
public:
    static constexpr std::size_t kMostPlaces = 10;

    struct Entry {
        Thing thing;
        std::uint64_t count = 0;
        std::vector<Place> places; ///< sorted, the first ten of them
    };

    explicit Collapsed(bool each) : each_(each) {}

    void Add(const Thing& thing, const Place& place) {
        ++count_;
        if (each_) {
            entries_.push_back({thing, 1, {place}});
            return;
        }
        const auto [known, isNew] = known_.try_emplace(thing, entries_.size());
        if (isNew)
            entries_.push_back({thing, 0, {}});
        Entry& entry = entries_[known->second];
        ++entry.count;
        AddPlace(entry.places, place);
    }

    std::uint64_t Count() const { return count_; }

    std::vector<const Entry*> Sorted() const {
        std::vector<const Entry*> sorted;
        sorted.reserve(entries_.size());
        for (const Entry& entry : entries_)
            sorted.push_back(&entry);
        std::stable_sort(sorted.begin(), sorted.end(), [](const Entry* a, const Entry* b) {
            return a->places.front() < b->places.front();
        });
        return sorted;
    }

private:
    static void AddPlace(std::vector<Place>& places, const Place& place) {
        if (places.size() == kMostPlaces && !(place < places.back()))
            return;
        places.insert(std::upper_bound(places.begin(), places.end(), place), place);
        if (places.size() > kMostPlaces)
            places.pop_back();
    }

    bool each_;
    std::uint64_t count_ = 0;
    std::map<Thing, std::size_t> known_;
    std::vector<Entry> entries_;
};

} // namespace vexagpx
