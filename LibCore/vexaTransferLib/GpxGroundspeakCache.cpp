// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxGroundspeakCache.h>

namespace vexaTransferLib {

void GpxGroundspeakCache::Clear() {
    *this = GpxGroundspeakCache();
}

bool operator==(const GpxGroundspeakCache& left, const GpxGroundspeakCache& right) {
    return left.name == right.name && left.owner == right.owner && left.type == right.type &&
           left.container == right.container && left.difficulty == right.difficulty &&
           left.terrain == right.terrain && left.short_description == right.short_description &&
           left.long_description == right.long_description && left.encoded_hints == right.encoded_hints &&
           left.logs == right.logs && left.travelbugs == right.travelbugs;
}

} // namespace vexaTransferLib
