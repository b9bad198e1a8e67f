// SPDX-License-Identifier: MIT
#include <vexaTransferLib/zip/Archive.h>

namespace vexaTransferLib::zip {

bool HasKnownPacking(const ZipEntryInfo& info) {
    constexpr std::uint16_t kStored = 0;
    constexpr std::uint16_t kDeflated = 8;
    return !info.isEncrypted && (info.method == kStored || info.method == kDeflated);
}

} // namespace vexaTransferLib::zip
