// SPDX-License-Identifier: MIT
#include <vexagpx/report/UnwrittenReport.h>

#include <vexagpx/terminal/DisplayText.h>

namespace vexagpx {

namespace {

std::string Shown(const std::string& name) {
    std::string utf8;
    Fitted(Printable(icu::UnicodeString::fromUTF8(name)), UnwrittenReport::kLongestName).toUTF8String(utf8);
    return utf8;
}

} // namespace

void UnwrittenReport::Add(const UnwrittenReport& other, const std::string& source) {
    for (const UnwrittenKind& kind : other.kinds_)
        Add(kind.element, kind.message, source.empty() ? kind.first : kind.first + " of " + source,
            kind.count);
    count_ += other.others_;
    others_ += other.others_;
}

void UnwrittenReport::Add(const std::string& element, const std::string& message, const std::string& object,
                          std::uint64_t count) {
    count_ += count;
    std::pair<std::string, std::string> key(element, message);
    if (const auto known = known_.find(key); known != known_.end()) {
        kinds_[known->second].count += count;
    } else if (kinds_.size() == kMostKinds) {
        others_ += count;
    } else {
        known_.emplace(std::move(key), kinds_.size());
        kinds_.push_back({element, message, object, count});
    }
}

std::vector<std::string> UnwrittenLines(const UnwrittenReport& report) {
    std::vector<std::string> lines;
    for (const UnwrittenKind& kind : report.Kinds()) {
        const std::string where = kind.count == 1
                                      ? "in " + kind.first
                                      : std::to_string(kind.count) + " times, first in " + kind.first;
        lines.push_back(Shown(kind.element) + " (" + where + "): " + kind.message);
    }
    if (report.OthersCount() > 0)
        lines.push_back("and " + Counted(report.OthersCount(), "thing") + " of other kinds");
    return lines;
}

} // namespace vexagpx
