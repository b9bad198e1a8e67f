// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxElement.h>

#include <string>
#include <string_view>
#include <vector>

namespace vexaTrackLib::comparing {

/// The local names of the children of two elements that differ, in order. Children of `extensions` count as children,
/// and all links as "link".
/// \param leftOut names that do not count
std::vector<std::string> DifferentFields(const vexaTransferLib::GpxElement& oldElement,
                                         const vexaTransferLib::GpxElement& newElement,
                                         const std::vector<std::string_view>& leftOut);

} // namespace vexaTrackLib::comparing
