// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxInputLimits.h>

#include <optional>
#include <string>

namespace vexaTransferLib::testing_support {

/// What a host gets and hears when a file is read.
struct Heard {
    std::string error;   ///< the message of the exception; empty when there was none
    std::string calls;   ///< of the error handler, a line each
    std::string skipped; ///< the notices to the observer with their places, a line each
    std::string reports; ///< the contract reports, a line each
    GpxDocument document;
};

/// How a file is read.
struct HowRead {
    bool isObserved = false;
    std::optional<GpxInputLimits> limits; ///< of an untrusted file
};

/// Reads a file with GpxParser::Parse.
Heard ReadByParse(const std::string& path, const HowRead& how);

/// Does the same, but always through the events of the XML parser, which GpxParser::Parse does only for a file that is
/// not plain. Empty for a file that needs a DOM.
std::optional<Heard> ReadByEvents(const std::string& path, const HowRead& how);

} // namespace vexaTransferLib::testing_support
