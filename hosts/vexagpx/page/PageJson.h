// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/page/PageDocument.h>
#include <vexagpx/process/Output.h>

#include <vector>

namespace vexagpx {

/// Writes the data that the script of the page draws, as JSON without "<", so that no text in it ends the element that
/// contains it. Numbers of points are whole numbers, each as its difference from the one before in the same segment:
/// x and y in the document's unit, distance and height in decimetres, time in tenths of a second since the path's
/// epoch.
void WritePageJson(const std::vector<PageDocument>& documents, Output& out);

} // namespace vexagpx
