// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <string_view>

namespace vexaTransferLib::text {

// Which namespaces a complete reading takes for those of a kind of elements. Files have them in many spellings.

/// That of any version of GPX, or none.
bool IsGpxNamespace(std::string_view uri);
/// That of any version of Groundspeak's geocaches.
bool IsGroundspeakNamespace(std::string_view uri);
/// The vendor's, or what stands for it in files that do not declare it: none, or one of GPX.
bool IsTarvikNamespace(std::string_view uri);

} // namespace vexaTransferLib::text
