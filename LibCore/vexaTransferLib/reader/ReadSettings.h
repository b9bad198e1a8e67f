// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxInputLimits.h>
#include <vexaTransferLib/GpxReadObserver.h>

#include <xercesc/sax/ErrorHandler.hpp>

#include <optional>

namespace vexaTransferLib::reader {

/// The host's settings for the reading of files. The caller owns all of them.
struct ReadSettings {
    xercesc::ErrorHandler& receiver;             ///< receives the XML parser's errors
    GpxReadObserver* observer;                   ///< null when there is no observer
    const std::optional<GpxInputLimits>& limits; ///< of untrusted files
};

} // namespace vexaTransferLib::reader
