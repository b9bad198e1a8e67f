// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/export/FeatureWriter.h>

#include <vexaTransferLib/GpxDocument.h>

#include <deque>
#include <string>
#include <vector>

namespace vexagpx {

/// A document that is exported.
struct ExportSource {
    std::string name; ///< the property "file" of its features; empty for none
    vexaTransferLib::GpxDocument document;
};
using ExportSources = std::deque<ExportSource>;

/// Gives all features of some layers to a format.
/// \param layers in the order in which they are written; those that have no feature are left out
/// \return what the features lack, whatever the format
LeftOut WalkFeatures(const ExportSources& sources, const std::vector<Layer>& layers, FeatureWriter& writer);

} // namespace vexagpx
