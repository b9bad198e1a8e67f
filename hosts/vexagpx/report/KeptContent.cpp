// SPDX-License-Identifier: MIT
#include <vexagpx/report/KeptContent.h>

#include <vexagpx/terminal/DisplayText.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <string_view>

namespace vexagpx {

using vexaTransferLib::GpxDocument;

namespace {

constexpr std::size_t kLongestPath = 120;
constexpr std::size_t kLongestValue = 60;
// The start of a value that is kept of it; more is never shown.
constexpr std::size_t kKeptBytes = 4 * kLongestValue;

std::string Shown(const std::string& text, std::size_t width) {
    std::string utf8;
    return Fitted(Printable(icu::UnicodeString::fromUTF8(text)), width).toUTF8String(utf8);
}

std::string Quoted(const std::string& value) {
    return '"' + Shown(value, kLongestValue) + '"';
}

/// What a path is in, as the writer names it, and the rest of the path.
struct PathParts {
    std::string object = "document";
    std::string_view rest;
};

/// Takes "name[17]/" and adds ", noun 17" to the object.
bool TakeObject(PathParts& parts, std::string_view name, std::string_view noun) {
    if (!parts.rest.starts_with(name) || !parts.rest.substr(name.size()).starts_with('['))
        return false;
    const std::size_t end = parts.rest.find(']');
    const std::string number(parts.rest.substr(name.size() + 1, end - name.size() - 1));
    parts.object =
        (parts.object == "document" ? std::string() : parts.object + ", ") + std::string(noun) + " " + number;
    parts.rest.remove_prefix(std::min(end + 2, parts.rest.size()));
    return true;
}

PathParts PartsOf(std::string_view path) {
    PathParts parts;
    parts.rest = path.substr(std::min(std::string_view("gpx/").size(), path.size()));
    if (TakeObject(parts, "wpt", "waypoint"))
        return parts;
    if (TakeObject(parts, "rte", "route"))
        TakeObject(parts, "rtept", "point");
    else if (TakeObject(parts, "trk", "track") && TakeObject(parts, "trkseg", "segment"))
        TakeObject(parts, "trkpt", "point");
    return parts;
}

/// True when the path goes through an element with this name.
bool HasStep(std::string_view path, std::string_view name) {
    for (std::size_t at = path.find(name); at != std::string_view::npos; at = path.find(name, at + 1)) {
        const bool starts = at == 0 || path[at - 1] == '/' || path[at - 1] == '}';
        const std::string_view after = path.substr(at + name.size());
        if (starts && (after.empty() || after[0] == '/' || after[0] == '['))
            return true;
    }
    return false;
}

/// True when an element that is left out of an object takes with it what has this path below the object.
bool IsPartOf(std::string_view rest, std::string_view element, bool isPath) {
    constexpr std::string_view kMetadata = "metadata/";
    if (rest.starts_with(kMetadata))
        rest.remove_prefix(kMetadata.size());
    else if (element == "metadata")
        return false;
    const bool isLink = rest.starts_with("link(") || rest.starts_with("link/@href");
    if (element == "metadata")
        return rest.starts_with('@');
    if (element == "link")
        return isLink || rest.starts_with("author/link");
    if (element == "urlname")
        return rest.starts_with("link(") && rest.ends_with("/text");
    if (element == "type" && isLink)
        return rest.ends_with("/type");
    if (element == "type")
        return isPath && HasStep(rest.substr(0, rest.find('/')), element);
    return !isLink && HasStep(rest, element);
}

/// How often a hash is in each of two sorted lists decides how many of it are lost.
class LostHashes {
public:
    LostHashes(const std::vector<std::size_t>& before, const std::vector<std::size_t>& after) {
        std::vector<std::size_t> lost;
        std::set_difference(before.begin(), before.end(), after.begin(), after.end(),
                            std::back_inserter(lost));
        for (const std::size_t hash : lost)
            ++counts_[hash];
    }

    bool IsEmpty() const { return counts_.empty(); }
    bool Take(std::size_t hash) {
        const auto found = counts_.find(hash);
        if (found == counts_.end() || found->second == 0)
            return false;
        --found->second;
        return true;
    }

private:
    std::unordered_map<std::size_t, std::size_t> counts_;
};

std::size_t HashOf(const ContentFact& fact, std::string& buffer) {
    buffer.assign(fact.path).append(1, '\0').append(fact.value);
    return std::hash<std::string_view>()(buffer);
}

std::vector<std::size_t> SortedHashes(const GpxDocument& document, ContentForm form) {
    std::vector<std::size_t> hashes;
    std::string buffer;
    ForEachFact(document, form, [&](const ContentFact& fact) { hashes.push_back(HashOf(fact, buffer)); });
    std::sort(hashes.begin(), hashes.end());
    return hashes;
}

/// Gives what was lost the values that are in its place.
void FindValuesNow(LostContents& lost, const std::vector<std::size_t>& before, const GpxDocument& after,
                   ContentForm form) {
    std::unordered_map<std::string_view, LostContent*> paths;
    for (LostContent& one : lost.first)
        paths.try_emplace(one.path, &one);
    std::string buffer;
    ForEachFact(after, form, [&](const ContentFact& fact) {
        const auto found = paths.find(fact.path);
        if (found == paths.end() || std::binary_search(before.begin(), before.end(), HashOf(fact, buffer)))
            return;
        found->second->now = std::string(fact.shown.substr(0, kKeptBytes));
        paths.erase(found);
    });
}

} // namespace

bool UnwrittenCounts::Explain(const ContentFact& lost) {
    if (counts_.empty())
        return false;
    const PathParts parts = PartsOf(lost.path);
    const auto object = counts_.find(parts.object);
    if (object == counts_.end())
        return false;
    const bool isPath = parts.object.find(',') == std::string::npos &&
                        (parts.object.starts_with("route") || parts.object.starts_with("track"));
    for (auto& [element, count] : object->second) {
        if (!IsPartOf(parts.rest, element, isPath))
            continue;
        if (element != "link" || !parts.rest.ends_with("link/@href"))
            return true;
        if (count == 0)
            return false;
        --count;
        return true;
    }
    return false;
}

std::string LostContent::Text() const {
    const std::string where = line == 0 ? "." : " (line " + std::to_string(line) + ").";
    const std::string what = Shown(path, kLongestPath);
    if (now)
        return what + " is " + Quoted(*now) + ", and not " + Quoted(value) + where;
    return what + (value.empty() ? "" : ", " + Quoted(value) + ",") + " is missing" + where;
}

LostContents FindLost(const GpxDocument& before, const GpxDocument& after, ContentForm form,
                      UnwrittenCounts unwritten) {
    const std::vector<std::size_t> hashes = SortedHashes(before, form);
    LostHashes lostHashes(hashes, SortedHashes(after, form));
    LostContents lost;
    if (lostHashes.IsEmpty())
        return lost;
    std::string buffer;
    ForEachFact(before, form, [&](const ContentFact& fact) {
        if (!lostHashes.Take(HashOf(fact, buffer)) || unwritten.Explain(fact))
            return;
        if (++lost.count <= LostContents::kMost)
            lost.first.push_back({std::string(fact.path), std::string(fact.shown.substr(0, kKeptBytes)),
                                  std::nullopt, fact.element.GetLine()});
    });
    FindValuesNow(lost, hashes, after, form);
    return lost;
}

} // namespace vexagpx
