// SPDX-License-Identifier: MIT
#pragma once

#include "support/Tool.h"
#include "support/XercesPlatform.h"

#include <vexagpx/input/FileParser.h>

#include <vexaTransferLib/GpxDocument.h>

#include <string>

namespace cli {

/// The document that the tool reads from GPX 1.1 around some elements.
inline vexaTransferLib::GpxDocument DocumentOf(const std::string& elements) {
    const XercesPlatform platform;
    vexaTransferLib::GpxDocument document;
    vexagpx::FileParser(vexagpx::InputRules()).ReadBytes(Gpx(elements), "t.gpx", document);
    return document;
}

/// A point whose content are elements.
inline std::string PointText(const std::string& name, const std::string& latitude,
                             const std::string& longitude, const std::string& content = "") {
    return "<" + name + " lat='" + latitude + "' lon='" + longitude + "'>" + content + "</" + name + ">";
}

} // namespace cli
