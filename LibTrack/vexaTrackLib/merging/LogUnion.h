// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTrackLib/comparing/Pairing.h>

#include <vexaTransferLib/GpxGroundspeakCache.h>

#include <cstddef>
#include <optional>
#include <unordered_map>
#include <vector>

namespace vexaTrackLib::merging {

/// The logs of a geocache, each one once: in its newest version, by the times of the documents. Logs are the same when
/// they have the same identifier, or none and the same content.
class LogUnion {
public:
    using Log = vexaTransferLib::GpxGroundspeakCacheLog;
    using Time = std::optional<double>; ///< of a document, if it has one

    enum class Outcome {
        kSame,     ///< it was there
        kAdded,    ///< it was not there
        kReplaced, ///< an older version was there
        kLeftOut   ///< another version was there, which is not older
    };

    /// \param logs all are kept
    LogUnion(const std::vector<Log>& logs, Time time);

    /// Takes notice that a version, if it is there, is also in a document with a time.
    void Observe(const Log& log, Time time);
    Outcome Add(const Log& log, Time time);

    /// Whether a list, all of whose logs were added, is without anything that is here.
    bool IsMoreThan(const std::vector<Log>& logs) const;
    /// The logs, the newest first.
    std::vector<Log> TakeLogs();

private:
    struct Version {
        Log log;
        Time time;
    };

    static comparing::Key KeyOf(const Log& log);
    const Version* Find(const Log& log) const;

    std::vector<Version> versions_;
    std::unordered_map<comparing::Key, std::size_t, comparing::KeyHash> indexes_;
};

} // namespace vexaTrackLib::merging
