// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxParser.h>

#include <string>

namespace track_tests {

inline vexaTransferLib::GpxDocument ReadCompletely(const std::string& text) {
    vexaTransferLib::GpxDocument document;
    vexaTransferLib::GpxParser parser;
    parser.SetComplete();
    parser.Parse(text, u"t.gpx", document);
    return document;
}

} // namespace track_tests
