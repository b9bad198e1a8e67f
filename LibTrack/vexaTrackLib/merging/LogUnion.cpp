// SPDX-License-Identifier: MIT
#include <vexaTrackLib/merging/LogUnion.h>

#include <vexaTrackLib/content/Hasher.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace vexaTrackLib::merging {

namespace {

bool IsNewer(const LogUnion::Time& time, const LogUnion::Time& other) {
    return time && other && *time > *other;
}

} // namespace

comparing::Key LogUnion::KeyOf(const Log& log) {
    content::Hasher hasher;
    hasher.Add(static_cast<std::uint64_t>(log.id));
    if (log.id == 0)
        for (const icu::UnicodeString* const text : {&log.date, &log.finder, &log.text, &log.type}) {
            std::string utf8;
            hasher.Add(std::string_view(text->toUTF8String(utf8)));
        }
    return comparing::Key::Of(hasher);
}

LogUnion::LogUnion(const std::vector<Log>& logs, Time time) {
    versions_.reserve(logs.size());
    for (const Log& log : logs) {
        indexes_.emplace(KeyOf(log), versions_.size());
        versions_.push_back({log, time});
    }
}

const LogUnion::Version* LogUnion::Find(const Log& log) const {
    const auto found = indexes_.find(KeyOf(log));
    return found != indexes_.end() ? &versions_[found->second] : nullptr;
}

void LogUnion::Observe(const Log& log, Time time) {
    const auto found = indexes_.find(KeyOf(log));
    if (found == indexes_.end() || versions_[found->second].log != log)
        return;
    Version& version = versions_[found->second];
    if (time && (!version.time || *time > *version.time))
        version.time = time;
}

LogUnion::Outcome LogUnion::Add(const Log& log, Time time) {
    const auto [place, isNew] = indexes_.emplace(KeyOf(log), versions_.size());
    if (isNew) {
        versions_.push_back({log, time});
        return Outcome::kAdded;
    }
    Version& version = versions_[place->second];
    if (version.log == log) {
        Observe(log, time);
        return Outcome::kSame;
    }
    if (!IsNewer(time, version.time))
        return Outcome::kLeftOut;
    version = {log, time};
    return Outcome::kReplaced;
}

bool LogUnion::IsMoreThan(const std::vector<Log>& logs) const {
    if (logs.size() != versions_.size())
        return true;
    return std::any_of(logs.begin(), logs.end(), [this](const Log& log) {
        const Version* const version = Find(log);
        return version == nullptr || version->log != log;
    });
}

// Dates are texts that sort as times do.
std::vector<LogUnion::Log> LogUnion::TakeLogs() {
    std::vector<Log> logs;
    logs.reserve(versions_.size());
    for (Version& version : versions_)
        logs.push_back(std::move(version.log));
    std::stable_sort(logs.begin(), logs.end(),
                     [](const Log& left, const Log& right) { return left.date > right.date; });
    return logs;
}

} // namespace vexaTrackLib::merging
