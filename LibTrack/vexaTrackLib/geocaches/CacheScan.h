// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTrackLib/Geocache.h>

#include <vexaTransferLib/GpxElement.h>

#include <set>

namespace vexaTrackLib {

/// Fills in what the `cache` element of a geocache says, without its descriptions, in one pass over its children. Its
/// logs are counted but for those whose identifiers are known; these are added to the known ones.
void ScanCache(const vexaTransferLib::GpxElement& element, std::set<std::int64_t>& knownLogs,
               Geocache& cache);
/// The same for the logs alone: their number, and when it was found last.
void ScanLogs(const vexaTransferLib::GpxElement& element, std::set<std::int64_t>& knownLogs, Geocache& cache);

} // namespace vexaTrackLib
