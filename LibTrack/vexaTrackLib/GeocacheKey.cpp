// SPDX-License-Identifier: MIT
#include <vexaTrackLib/GeocacheKey.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <stdexcept>

namespace vexaTrackLib {

namespace {

struct Key {
    std::string_view name;
    GeocacheKeyKind kind;
};

using Kind = GeocacheKeyKind;

// In the order of GeocacheKey.
constexpr Key kKeys[] = {
    {"code", Kind::kText},       {"name", Kind::kText},     {"owner", Kind::kText},
    {"type", Kind::kText},       {"size", Kind::kText},     {"country", Kind::kText},
    {"state", Kind::kText},      {"hint", Kind::kText},     {"difficulty", Kind::kNumber},
    {"terrain", Kind::kNumber},  {"bugs", Kind::kNumber},   {"logs", Kind::kNumber},
    {"distance", Kind::kLength}, {"placed", Kind::kDate},   {"found", Kind::kDate},
    {"available", Kind::kFlag},  {"archived", Kind::kFlag},
};
static_assert(std::size(kKeys) == static_cast<std::size_t>(GeocacheKey::kArchived) + 1);

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool IsSameName(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char one, char other) { return Lower(one) == Lower(other); });
}

/// How many letters must be put in, taken out or replaced to make one name of the other.
std::size_t SpellingDistance(std::string_view left, std::string_view right) {
    std::vector<std::size_t> row(right.size() + 1);
    for (std::size_t j = 0; j < row.size(); ++j)
        row[j] = j;
    for (std::size_t i = 0; i < left.size(); ++i) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < right.size(); ++j) {
            const std::size_t replaced = diagonal + (Lower(left[i]) == Lower(right[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, row[j + 1] + 1});
        }
    }
    return row.back();
}

GeocacheValue TextValue(const icu::UnicodeString& text) {
    return text.isEmpty() ? GeocacheValue() : GeocacheValue(text);
}

GeocacheValue NumberValue(const std::optional<double>& number) {
    return number ? GeocacheValue(*number) : GeocacheValue();
}

const icu::UnicodeString& TextOf(const Geocache& cache, GeocacheKey key) {
    switch (key) {
    case GeocacheKey::kCode:
        return cache.code;
    case GeocacheKey::kName:
        return cache.name;
    case GeocacheKey::kOwner:
        return cache.owner;
    case GeocacheKey::kType:
        return cache.type;
    case GeocacheKey::kSize:
        return cache.size;
    case GeocacheKey::kCountry:
        return cache.country;
    case GeocacheKey::kState:
        return cache.state;
    default:
        return cache.hint;
    }
}

std::optional<double> NumberOf(const Geocache& cache, GeocacheKey key) {
    switch (key) {
    case GeocacheKey::kDifficulty:
        return cache.difficulty;
    case GeocacheKey::kTerrain:
        return cache.terrain;
    case GeocacheKey::kBugs:
        return static_cast<double>(cache.travelBugs.size());
    case GeocacheKey::kLogs:
        return static_cast<double>(cache.logCount);
    case GeocacheKey::kDistance:
        return cache.metres;
    case GeocacheKey::kPlaced:
        return cache.placedTime;
    default:
        return cache.foundTime;
    }
}

// The sizes in the order of their boxes.
std::size_t SizeRank(const icu::UnicodeString& size) {
    static constexpr std::array<const char16_t*, 5> kSizes = {u"micro", u"small", u"regular", u"medium",
                                                              u"large"};
    icu::UnicodeString folded(size);
    folded.foldCase();
    std::size_t rank = 0;
    while (rank < kSizes.size() && folded != kSizes[rank])
        ++rank;
    return rank;
}

int Sign(bool isLess, bool isGreater) {
    return isLess ? -1 : isGreater ? 1 : 0;
}

int CompareTexts(GeocacheKey key, const icu::UnicodeString& left, const icu::UnicodeString& right) {
    if (key == GeocacheKey::kSize) {
        const std::size_t one = SizeRank(left);
        const std::size_t other = SizeRank(right);
        if (one != other)
            return Sign(one<other, one> other);
    }
    const auto order = left.caseCompare(right, 0);
    return Sign(order<0, order> 0);
}

/// Of two values that are there.
int Compare(GeocacheKey key, const GeocacheValue& left, const GeocacheValue& right) {
    if (const auto* const text = std::get_if<icu::UnicodeString>(&left))
        return CompareTexts(key, *text, std::get<icu::UnicodeString>(right));
    if (const auto* const number = std::get_if<double>(&left))
        return Sign(*number<std::get<double>(right), *number> std::get<double>(right));
    return Sign(!std::get<bool>(left) && std::get<bool>(right),
                std::get<bool>(left) && !std::get<bool>(right));
}

} // namespace

std::optional<GeocacheKey> FindGeocacheKey(std::string_view name) {
    if (IsSameName(name, "hidden"))
        return GeocacheKey::kPlaced;
    const auto* const found = std::find_if(std::begin(kKeys), std::end(kKeys),
                                           [&](const Key& key) { return IsSameName(key.name, name); });
    return found != std::end(kKeys) ? std::optional(static_cast<GeocacheKey>(found - std::begin(kKeys)))
                                    : std::nullopt;
}

std::vector<std::string_view> GeocacheKeyNames() {
    std::vector<std::string_view> names;
    for (const Key& key : kKeys)
        names.push_back(key.name);
    return names;
}

GeocacheKeyKind KindOf(GeocacheKey key) {
    return kKeys[static_cast<std::size_t>(key)].kind;
}

GeocacheValue ValueOf(const Geocache& cache, GeocacheKey key) {
    if (key == GeocacheKey::kArchived)
        return cache.isArchived.value_or(false);
    if (key == GeocacheKey::kAvailable)
        return cache.isAvailable.value_or(true) && !cache.isArchived.value_or(false);
    if (KindOf(key) == GeocacheKeyKind::kText)
        return TextValue(TextOf(cache, key));
    return NumberValue(NumberOf(cache, key));
}

std::string UnknownGeocacheKey(std::string_view name) {
    constexpr std::size_t kMostLetters = 64;
    std::string message = "There is no key \"" + std::string(name) + "\"";
    const Key* nearest = nullptr;
    std::size_t distance = 3;
    for (const Key& key : kKeys) {
        const std::size_t other = SpellingDistance(name.substr(0, kMostLetters), key.name);
        if (other < distance && other < key.name.size()) {
            distance = other;
            nearest = &key;
        }
    }
    message += nearest != nullptr ? "; did you mean \"" + std::string(nearest->name) + "\"? The keys are"
                                  : "; the keys are";
    for (const Key& key : kKeys)
        message += (&key == kKeys ? " " : ", ") + std::string(key.name);
    return message + ".";
}

GeocacheOrder GeocacheOrder::Parse(std::string_view text) {
    const bool isDescending = text.substr(0, 1) == "-";
    text.remove_prefix(isDescending ? 1 : 0);
    const std::optional<GeocacheKey> key = FindGeocacheKey(text);
    if (!key)
        throw std::invalid_argument(UnknownGeocacheKey(text));
    return GeocacheOrder(*key, isDescending);
}

bool GeocacheOrder::operator()(const Geocache& left, const Geocache& right) const {
    const GeocacheValue one = ValueOf(left, key_);
    const GeocacheValue other = ValueOf(right, key_);
    if (one.index() == 0 || other.index() == 0) {
        if (one.index() != other.index())
            return other.index() == 0;
    } else if (const int order = Compare(key_, one, other); order != 0) {
        return isDescending_ ? order > 0 : order < 0;
    }
    return left.code < right.code;
}

} // namespace vexaTrackLib
