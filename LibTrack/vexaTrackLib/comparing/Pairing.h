// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTrackLib/content/Hasher.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vexaTrackLib::comparing {

/// Something by which objects belong together: a hash of 128 bits.
struct Key {
    std::uint64_t high;
    std::uint64_t low;

    static Key Of(const content::Hasher& hasher) { return {hasher.High(), hasher.Low()}; }

    bool operator==(const Key&) const = default;
};

struct KeyHash {
    std::size_t operator()(const Key& key) const { return static_cast<std::size_t>(key.low); }
};

/// Which objects of an old list belong to which of a new one.
class Pairing {
public:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    Pairing(std::size_t oldCount, std::size_t newCount) : newOf_(oldCount, kNone), oldOf_(newCount, kNone) {}

    /// Pairs objects with equal keys that have no partner yet, in their order.
    /// \param oldKey, newKey an optional key of an index; nothing for an object that is not paired now
    template <class OldKey, class NewKey>
    void PairBy(OldKey oldKey, NewKey newKey) {
        std::unordered_map<Key, std::vector<std::size_t>, KeyHash> candidates;
        for (std::size_t i = newOf_.size(); i-- > 0;)
            if (newOf_[i] == kNone)
                if (const std::optional<Key> key = oldKey(i))
                    candidates[*key].push_back(i);
        for (std::size_t i = 0; i < oldOf_.size() && !candidates.empty(); ++i) {
            const std::optional<Key> key = oldOf_[i] == kNone ? newKey(i) : std::nullopt;
            const auto found = key ? candidates.find(*key) : candidates.end();
            if (found == candidates.end())
                continue;
            Pair(found->second.back(), i);
            found->second.pop_back();
            if (found->second.empty())
                candidates.erase(found);
        }
    }
    /// Pairs those without a partner by their order, if they are as many.
    void PairRestByOrder() {
        std::vector<std::size_t> olds;
        std::vector<std::size_t> news;
        for (std::size_t i = 0; i < newOf_.size(); ++i)
            if (newOf_[i] == kNone)
                olds.push_back(i);
        for (std::size_t i = 0; i < oldOf_.size(); ++i)
            if (oldOf_[i] == kNone)
                news.push_back(i);
        for (std::size_t i = 0; olds.size() == news.size() && i < olds.size(); ++i)
            Pair(olds[i], news[i]);
    }
    void Pair(std::size_t oldIndex, std::size_t newIndex) {
        newOf_[oldIndex] = newIndex;
        oldOf_[newIndex] = oldIndex;
    }

    /// \{
    /// The index of the partner; kNone when there is none.
    std::size_t NewOf(std::size_t oldIndex) const { return newOf_[oldIndex]; }
    std::size_t OldOf(std::size_t newIndex) const { return oldOf_[newIndex]; }
    /// \}

private:
    std::vector<std::size_t> newOf_;
    std::vector<std::size_t> oldOf_;
};

} // namespace vexaTrackLib::comparing
