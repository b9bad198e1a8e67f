// SPDX-License-Identifier: MIT
// Says what one GPX file has and another lacks, by libxml2 and without the library:
//
//   compare_gpx BEFORE AFTER
//
// The first line is how many values BEFORE has, how many of them AFTER lacks or has changed, and how many it has
// rounded: a position by a millimetre at most, another number or a time by a thousandth; these are not lost. A value is
// an attribute, an element with text, a point, a segment, a route or a track. Each of the other lines is a number and
// what is lost so often. The status is 3 when BEFORE cannot be compared, because it is not well-formed or no GPX, and 4
// when AFTER cannot.
//
// A value that both files have is not lost, however it is spelled and wherever among its siblings it is: numbers are
// compared as decimals, times as instants, texts without the blanks at their ends, extensions with any prefix. Elements
// of GPX that are empty are no values, and neither are the time and the bounds of the document, which a program that
// writes may state anew.
#include "support/comparison/GpxContent.h"
#include "support/comparison/NormalValues.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

using namespace vexaTransferLib::testing_support;

// A millimetre and a thousandth, with room for the last digit of a double.
constexpr double kRoundedDegrees = 1.1e-8;
constexpr double kRoundedNumber = 1.1e-3;
constexpr std::size_t kToMinute = std::string_view("2012-03-14T10:20:").size();

// Places that are the same up to this decimal, some 10 cm, are those of one point; whether they are kept is another
// matter.
constexpr int kPlaceDecimals = 6;

struct Step {
    std::string_view uri; // with its braces
    std::string_view name;
};

// The first step of the path, which it loses. The numbers that tell siblings from each other are no part of a step. A
// closing brace in a namespace is doubled.
Step TakeStep(std::string_view& path) {
    Step step;
    const std::size_t uriStart = path.starts_with('@') ? 1 : 0;
    if (path.substr(uriStart).starts_with('{')) {
        std::size_t end = path.find('}', uriStart);
        while (path.substr(end + 1).starts_with('}'))
            end = path.find('}', end + 2);
        step.uri = path.substr(0, end + 1);
        path.remove_prefix(end + 1);
    }
    const std::size_t slash = std::min(path.find('/'), path.size());
    step.name = path.substr(0, std::min(path.find('['), slash));
    path.remove_prefix(std::min(slash + 1, path.size()));
    return step;
}

bool IsAttribute(const Step& step) {
    return step.uri.starts_with('@') || step.name.starts_with('@');
}

std::vector<Step> StepsOf(std::string_view path) {
    std::vector<Step> steps;
    while (!path.empty())
        steps.push_back(TakeStep(path));
    return steps;
}

std::string PathWithoutNumbers(std::string_view path) {
    std::string text;
    for (const Step& step : StepsOf(path))
        text.append("/").append(step.uri).append(step.name);
    return text;
}

// "trkpt ele", "trkpt extensions TrackPointExtension hr", "gpx metadata author email".
std::string LabelOf(std::string_view kind, std::string_view path) {
    std::string label(kind);
    for (const Step& step : StepsOf(path))
        label.append(step.uri.starts_with('@') ? " @" : " ").append(step.name);
    return label;
}

bool IsValue(std::string_view path, std::string_view value) {
    if (path.starts_with(kOrderOf) || path == "metadata/time" || path.starts_with("metadata/bounds/"))
        return false;
    return !TrimmedXml(value).empty() || path.find('{') != std::string_view::npos ||
           IsAttribute(StepsOf(path).back());
}

// "+0200" is no time zone of GPX, but everybody understands it.
std::string CompleteZone(std::string_view time) {
    constexpr std::string_view kZone = "+0200";
    std::string text(time);
    const std::size_t start = time.size() < kZone.size() ? 0 : time.size() - kZone.size();
    if (start > 0 && time.find_first_of("+-", start) == start)
        text.insert(text.size() - 2, ":");
    return NormalTime(text);
}

std::string ComparedValue(std::string_view path, std::string_view value) {
    return path == "time" ? CompleteZone(value) : std::string(TrimmedXml(value));
}

void ForEachValue(const GpxObject& object,
                  const std::function<void(std::string_view path, const std::string& value)>& function) {
    ForEachFact(object, [&](std::string_view path, std::string_view value) {
        if (IsValue(path, value))
            function(path, ComparedValue(path, value));
    });
}

double NumberIn(std::string_view text) {
    return std::strtod(std::string(text).c_str(), nullptr);
}

bool IsNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("+-.0123456789") == std::string_view::npos;
}

// True when a value of GPX is the other one with fewer digits.
bool IsRounded(std::string_view path, const std::string& value, const std::string& other) {
    if (path == "time")
        return value.compare(0, kToMinute, other, 0, kToMinute) == 0 && value.size() > kToMinute &&
               other.size() > kToMinute &&
               std::abs(NumberIn(value.substr(kToMinute)) - NumberIn(other.substr(kToMinute))) <
                   kRoundedNumber;
    if (path.find('{') != std::string_view::npos || !IsNumber(value) || !IsNumber(other))
        return false;
    const double limit = path == "@lat" || path == "@lon" ? kRoundedDegrees : kRoundedNumber;
    return std::abs(NumberIn(value) - NumberIn(other)) < limit;
}

// What tells an object from its neighbours: its name and place, or those of the first object in it.
std::string IdentityOf(const GpxObject& object) {
    std::string identity;
    ForEachFact(object, [&](std::string_view path, std::string_view value) {
        if (path == "name")
            identity.append(path).append(TrimmedXml(value)).append(" ");
        if (path != "@lat" && path != "@lon")
            return;
        std::array<char, 400> rounded{}; // a double has up to 309 digits before the point
        std::snprintf(rounded.data(), rounded.size(), "%.*f ", kPlaceDecimals, NumberIn(value));
        identity.append(path).append(rounded.data());
    });
    for (const auto& [name, objects] : object.objects) {
        if (identity.empty() && !objects.empty())
            identity = IdentityOf(objects.front());
    }
    return identity;
}

// For each object its counterpart among the others, or null: first those with the same identity, then the rest by their
// order.
std::vector<const GpxObject*> Counterparts(const std::vector<GpxObject>& objects,
                                           const std::vector<GpxObject>& others) {
    std::unordered_map<std::string, std::deque<std::size_t>> places;
    for (std::size_t i = 0; i < others.size(); ++i)
        places[IdentityOf(others[i])].push_back(i);
    std::vector<const GpxObject*> counterparts(objects.size());
    std::vector<bool> isTaken(others.size());
    for (std::size_t i = 0; i < objects.size(); ++i) {
        const auto found = places.find(IdentityOf(objects[i]));
        if (found == places.end() || found->second.empty())
            continue;
        counterparts[i] = &others[found->second.front()];
        isTaken[found->second.front()] = true;
        found->second.pop_front();
    }
    std::size_t next = 0;
    for (const GpxObject*& counterpart : counterparts) {
        while (next < others.size() && isTaken[next])
            ++next;
        if (counterpart == nullptr && next < others.size())
            counterpart = &others[next++];
    }
    return counterparts;
}

class Losses {
public:
    void Compare(std::string_view kind, const GpxObject& before, const GpxObject& after) {
        CompareValues(kind, before, after);
        const std::vector<GpxObject> none;
        for (const auto& [name, objects] : before.objects) {
            const auto others = after.objects.find(name);
            CompareAll(name, objects, others == after.objects.end() ? none : others->second);
        }
    }

    void Print() const {
        std::cout << values_ << '\t' << lost_ << '\t' << rounded_ << '\n';
        for (const auto& [label, count] : labels_)
            std::cout << count << '\t' << label << '\n';
    }

private:
    void CompareValues(std::string_view kind, const GpxObject& before, const GpxObject& after) {
        std::unordered_map<std::string, std::unordered_multiset<std::string>> others;
        ForEachValue(after, [&](std::string_view path, const std::string& value) {
            others[PathWithoutNumbers(path)].insert(value);
        });
        ForEachValue(before, [&](std::string_view path, const std::string& value) {
            ++values_;
            std::unordered_multiset<std::string>& candidates = others[PathWithoutNumbers(path)];
            if (const auto same = candidates.find(value); same != candidates.end())
                candidates.erase(same);
            else if (candidates.size() == 1 && IsRounded(path, value, *candidates.begin()))
                ++rounded_;
            else
                Lose(LabelOf(kind, path));
        });
    }

    void CompareAll(std::string_view kind, const std::vector<GpxObject>& objects,
                    const std::vector<GpxObject>& others) {
        const GpxObject none;
        const std::vector<const GpxObject*> counterparts = Counterparts(objects, others);
        for (std::size_t i = 0; i < objects.size(); ++i) {
            ++values_;
            if (counterparts[i] == nullptr)
                Lose(std::string(kind));
            Compare(kind, objects[i], counterparts[i] == nullptr ? none : *counterparts[i]);
        }
    }

    void Lose(const std::string& label) {
        ++lost_;
        ++labels_[label];
    }

    std::size_t values_ = 0;
    std::size_t lost_ = 0;
    std::size_t rounded_ = 0;
    std::map<std::string, std::size_t> labels_;
};

GpxObject Read(const char* path, DeepPaths& deepPaths) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("there is no such file");
    const std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    GpxContent content = ReadGpxContent(text, deepPaths);
    if (content.rootName != "gpx")
        throw std::runtime_error("the root is '" + content.rootName + "'");
    return std::move(content.root);
}

GpxObject ReadOrExit(const char* path, DeepPaths& deepPaths, int status) {
    try {
        return Read(path, deepPaths);
    } catch (const std::runtime_error& error) {
        std::cerr << path << ": " << error.what() << '\n';
        std::exit(status);
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    DeepPaths deepPaths;
    const GpxObject before = ReadOrExit(argv[1], deepPaths, 3);
    const GpxObject after = ReadOrExit(argv[2], deepPaths, 4);
    Losses losses;
    losses.Compare("gpx", before, after);
    losses.Print();
}
