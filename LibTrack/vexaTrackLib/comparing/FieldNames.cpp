// SPDX-License-Identifier: MIT
#include <vexaTrackLib/comparing/FieldNames.h>

#include <vexaTrackLib/content/ElementHash.h>
#include <vexaTrackLib/content/Hasher.h>

#include <algorithm>
#include <map>

namespace vexaTrackLib::comparing {

using content::Hasher;
using content::UnorderedSum;
using vexaTransferLib::GpxElement;

namespace {

using Sums = std::map<std::string, UnorderedSum, std::less<>>;

/// The hashes of the children of an element, by their names.
class FieldSums {
public:
    FieldSums(const GpxElement& element, const std::vector<std::string_view>& leftOut) : leftOut_(leftOut) {
        bool hasLink = false;
        for (const GpxElement& child : element.GetChildren()) {
            const std::string_view name = child.GetName();
            if (name == "link" || name == "url" || name == "urlname")
                hasLink = true;
            else if (name == "extensions")
                for (const GpxElement& inner : child.GetChildren())
                    Add(inner);
            else
                Add(child);
        }
        if (!hasLink)
            return;
        Hasher links;
        content::AddLinks(element, links);
        sums_["link"].Add(links);
    }

    const Sums& Get() const { return sums_; }

private:
    void Add(const GpxElement& element) {
        if (std::find(leftOut_.begin(), leftOut_.end(), element.GetName()) != leftOut_.end())
            return;
        Hasher item;
        if (content::AddElement(element.GetXml(), item))
            sums_[std::string(element.GetName())].Add(item);
    }

    const std::vector<std::string_view>& leftOut_;
    Sums sums_;
};

bool IsSame(const UnorderedSum& left, const UnorderedSum& right) {
    Hasher one;
    Hasher other;
    left.AddTo(one);
    right.AddTo(other);
    return one.High() == other.High() && one.Low() == other.Low();
}

} // namespace

std::vector<std::string> DifferentFields(const GpxElement& oldElement, const GpxElement& newElement,
                                         const std::vector<std::string_view>& leftOut) {
    const FieldSums olds(oldElement, leftOut);
    const FieldSums news(newElement, leftOut);
    std::vector<std::string> names;
    for (const auto& [name, sum] : olds.Get()) {
        const auto found = news.Get().find(name);
        if (found == news.Get().end() || !IsSame(sum, found->second))
            names.push_back(name);
    }
    for (const auto& [name, sum] : news.Get())
        if (olds.Get().find(name) == olds.Get().end())
            names.push_back(name);
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace vexaTrackLib::comparing
