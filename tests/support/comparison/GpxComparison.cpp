// SPDX-License-Identifier: MIT
#include "support/comparison/GpxComparison.h"

#include "support/comparison/GpxContent.h"
#include "support/comparison/GpxPlaces.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_map>

namespace vexaTransferLib::testing_support {
namespace {

std::vector<std::string_view> Words(std::string_view text) {
    std::vector<std::string_view> words;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        words.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

template <class T>
bool IsSubsequence(const std::vector<T>& some, const std::vector<T>& all) {
    auto next = some.begin();
    for (auto one = all.begin(); one != all.end() && next != some.end(); ++one)
        next += *one == *next ? 1 : 0;
    return next == some.end();
}

// True when `all` has each of `some`, but in another order.
template <class T>
bool AreReordered(std::vector<T> some, std::vector<T> all) {
    if (IsSubsequence(some, all))
        return false;
    std::sort(some.begin(), some.end());
    std::sort(all.begin(), all.end());
    return std::includes(all.begin(), all.end(), some.begin(), some.end());
}

// What tells a point, a route or a track from its neighbours.
std::string Identity(const GpxObject& object) {
    std::string identity;
    ForEachFact(object, [&](std::string_view path, std::string_view value) {
        if (path == "name" || path == "@lat" || path == "@lon")
            identity.append(path).append("=").append(value).append(" ");
    });
    return identity;
}

std::vector<std::string> Identities(const std::vector<GpxObject>& objects) {
    std::vector<std::string> identities;
    for (const GpxObject& object : objects)
        identities.push_back(Identity(object));
    return identities;
}

// Gathers what the first of two objects has and the second lacks.
class Comparison {
public:
    void Compare(const GpxObject& before, const GpxObject& after, const std::string& path);
    void AddAll(const GpxObject& object, const std::string& path);

    std::vector<MissingContent> findings;

private:
    void CompareFacts(const GpxObject& before, const GpxObject& after, const std::string& path);
    void CompareObjects(const std::vector<GpxObject>& before, const std::vector<GpxObject>& after,
                        const std::string& path);
};

void Comparison::Compare(const GpxObject& before, const GpxObject& after, const std::string& path) {
    if (before.facts != after.facts)
        CompareFacts(before, after, path);
    const std::vector<GpxObject> none;
    for (const auto& [name, objects] : before.objects) {
        const auto others = after.objects.find(name);
        CompareObjects(objects, others == after.objects.end() ? none : others->second,
                       path + "/" + std::string(name));
    }
}

void Comparison::CompareFacts(const GpxObject& before, const GpxObject& after, const std::string& path) {
    std::unordered_map<std::string, std::size_t> there;
    std::unordered_map<std::string_view, std::string_view> orders;
    const auto key = [](std::string_view factPath, std::string_view value) {
        return std::string(factPath).append(1, '\0').append(value);
    };
    ForEachFact(after, [&](std::string_view factPath, std::string_view value) {
        if (factPath.starts_with(kOrderOf))
            orders.emplace(factPath, value);
        else
            ++there[key(factPath, value)];
    });
    std::unordered_map<std::string, std::size_t> found;
    ForEachFact(before, [&](std::string_view factPath, std::string_view value) {
        if (factPath.starts_with(kOrderOf)) {
            const auto other = orders.find(factPath);
            if (other != orders.end() && AreReordered(Words(value), Words(other->second)))
                findings.push_back(
                    {std::string(kOrderOf) + path + "/" + std::string(factPath.substr(kOrderOf.size())),
                     std::string(value), 1});
            return;
        }
        const std::string fact = key(factPath, value);
        const auto match = there.find(fact);
        if (match != there.end() && match->second > 0) {
            --match->second;
            return;
        }
        const auto [known, isNew] = found.try_emplace(fact, findings.size());
        if (isNew)
            findings.push_back({path + "/" + std::string(factPath), std::string(value), 1});
        else
            ++findings[known->second].times;
    });
}

void Comparison::CompareObjects(const std::vector<GpxObject>& before, const std::vector<GpxObject>& after,
                                const std::string& path) {
    const std::size_t findingsBefore = findings.size();
    for (std::size_t i = 0; i < before.size(); ++i) {
        const std::string place = path + "[" + std::to_string(i) + "]";
        if (i < after.size())
            Compare(before[i], after[i], place);
        else
            AddAll(before[i], place);
    }
    if (findings.size() == findingsBefore)
        return;
    const std::vector<std::string> identities = Identities(before);
    const std::vector<std::string> others = Identities(after);
    if (AreReordered(identities, others)) {
        const auto first =
            std::mismatch(identities.begin(), identities.end(), others.begin(), others.end()).first;
        findings.push_back({std::string(kOrderOf) + path, *first, 1});
    }
}

void Comparison::AddAll(const GpxObject& object, const std::string& path) {
    findings.push_back({path, "", 1});
    Compare(object, GpxObject(), path);
}

std::vector<MissingContent> FindAll(std::string_view before, std::string_view after) {
    DeepPaths deepPaths;
    const auto read = [&](std::string_view text, const char* which) {
        try {
            return ReadGpxContent(text, deepPaths);
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(std::string(which) + ": " + error.what());
        }
    };
    const GpxContent first = read(before, "the text before");
    const GpxContent second = read(after, "the text after");
    Comparison comparison;
    if (first.rootName == second.rootName)
        comparison.Compare(first.root, second.root, first.rootName);
    else
        comparison.AddAll(first.root, first.rootName);
    return comparison.findings;
}

} // namespace

std::ostream& operator<<(std::ostream& out, const MissingContent& missing) {
    return out << missing.path << " = '" << missing.value << "', " << missing.times << " times";
}

std::vector<MissingContent> FindMissing(std::string_view before, std::string_view after, GpxTarget target) {
    std::vector<MissingContent> findings = FindAll(before, after);
    if (target == GpxTarget::k10)
        std::erase_if(findings, [](const MissingContent& found) { return !HasPlaceInGpx10(found.path); });
    return findings;
}

std::vector<MissingContent> FindWithoutPlace(std::string_view before, std::string_view after) {
    std::vector<MissingContent> findings = FindAll(before, after);
    std::erase_if(findings, [](const MissingContent& found) { return HasPlaceInGpx10(found.path); });
    return findings;
}

std::vector<MissingContent> FindInvented(std::string_view before, std::string_view after) {
    return FindAll(after, before);
}

} // namespace vexaTransferLib::testing_support
