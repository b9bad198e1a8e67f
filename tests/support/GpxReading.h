// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>

#include <functional>
#include <string>
#include <string_view>

namespace vexaTransferLib::testing_support {

/// A document that shows whether a failed reading has touched it: with a name and a track.
GpxDocument UsedDocument();

/// What a fresh parser did to a used document.
struct Reading {
    explicit Reading(const std::function<void(GpxParser&, GpxDocument&)>& read);

    std::string error;   ///< type (see CaughtAs) and message of the exception; empty when there was none
    std::string written; ///< to standard error
    GpxDocument document = UsedDocument();
};

Reading ReadingOfFile(const std::string& path);
Reading ReadingOfBytes(std::string_view bytes, const std::string& name);

} // namespace vexaTransferLib::testing_support
