// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxGroundspeakCache.h>

namespace vexaTransferLib {

void GpxGroundspeakCache::Clear() {
    *this = GpxGroundspeakCache();
}

} // namespace vexaTransferLib
