// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxReadObserver.h>

namespace vexaTransferLib {

GpxReadObserver::~GpxReadObserver() = default;

bool GpxReadObserver::Progress(std::uint64_t, std::uint64_t) {
    return true;
}

void GpxReadObserver::ParserMessage(const GpxParserMessage&) {}

void GpxReadObserver::Skipped(const GpxSkippedElement&) {}

} // namespace vexaTransferLib
