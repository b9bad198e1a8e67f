// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/input/FailureCause.h>

#include <vexaTransferLib/GpxReadObserver.h>

namespace vexagpx {

/// The cause of something that was skipped or changed.
const Cause& SkipCause(vexaTransferLib::GpxSkipReason reason);

} // namespace vexagpx
