// SPDX-License-Identifier: MIT
#include <vexagpx/export/LeftOut.h>

#include <vexagpx/terminal/DisplayText.h>

namespace vexagpx {

namespace {

constexpr char kLayerAdvice[] = " (--layer points writes them)";

} // namespace

std::vector<std::string> LeftOut::Lines() const {
    std::vector<std::string> lines;
    const auto add = [&lines](std::uint64_t count, const std::string& text) {
        if (count != 0)
            lines.push_back(text);
    };
    add(metadata, Counted(metadata, "value") + " of the metadata");
    add(extensions, Counted(extensions, "value") + " in extensions");
    add(logs, Counted(logs, "log") + " of geocaches");
    add(numbers, Counted(numbers, "height or time", "heights and times") + " out of range");
    add(pathPoints, Counted(pathPoints, "point") + " of routes and tracks" + kLayerAdvice);
    add(pointTimes, Counted(pointTimes, "time") + " of points in lines" + kLayerAdvice);
    add(pointDetails, "the names, sensor values and other details of " + Counted(pointDetails, "point") +
                          " in lines" + kLayerAdvice);
    return lines;
}

} // namespace vexagpx
