// SPDX-License-Identifier: MIT
#include <vexaTrackLib/comparing/FieldNames.h>

#include <vexaTrackLib/content/ElementHash.h>
#include <vexaTrackLib/content/Hasher.h>

#include <vexaTransferLib/GpxObjectDetails.h>

#include <algorithm>
#include <map>

namespace vexaTrackLib::comparing {

using content::Hasher;
using content::UnorderedSum;
using vexaTransferLib::GpxElement;
using vexaTransferLib::GpxLink;
using vexaTransferLib::GpxObjectDetails;

namespace {

using Sums = std::map<std::string, UnorderedSum, std::less<>>;

std::string Utf8(const icu::UnicodeString& text) {
    std::string utf8;
    return text.toUTF8String(utf8);
}

/// The hashes of the children of an element, by their names.
class FieldSums {
public:
    FieldSums(const GpxElement& element, const std::vector<std::string_view>& leftOut) : leftOut_(leftOut) {
        for (const GpxElement& child : element.GetChildren()) {
            const std::string_view name = child.GetName();
            if (name == "link" || name == "url" || name == "urlname")
                hasLink_ = true;
            else if (name == "extensions")
                for (const GpxElement& inner : child.GetChildren())
                    Add(inner);
            else
                Add(child);
        }
        if (hasLink_)
            AddLinks(element);
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
    void AddLinks(const GpxElement& element) {
        Hasher links;
        for (const GpxLink& link : GpxObjectDetails(element).GetLinks()) {
            content::AddTextElement("href", Utf8(link.href), links);
            content::AddTextElement("text", Utf8(link.text), links);
            content::AddTextElement("type", Utf8(link.type), links);
        }
        sums_["link"].Add(links);
    }

    const std::vector<std::string_view>& leftOut_;
    bool hasLink_ = false;
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
