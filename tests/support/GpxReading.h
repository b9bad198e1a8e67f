// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>

#include <functional>
#include <string>
#include <string_view>

namespace vexaTransferLib::testing_support {

/// A document with a name and a track, which shows whether a failed reading has changed it.
GpxDocument UsedDocument();

/// The result of reading with a new parser into such a document.
struct Reading {
    explicit Reading(const std::function<void(GpxParser&, GpxDocument&)>& read);

    std::string error;   ///< type (see CaughtAs) and message of the exception; empty when there was none
    std::string written; ///< the text written to standard error
    GpxDocument document = UsedDocument();
};

Reading ReadingOfFile(const std::string& path);
Reading ReadingOfBytes(std::string_view bytes, const std::string& name);

} // namespace vexaTransferLib::testing_support
