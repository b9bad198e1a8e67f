// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/page/PageDocument.h>

#include <vexaTransferLib/GpxDocument.h>

#include <string>

namespace vexagpx {

/// Points that the paths of a page may have in all, so that it has less than about a megabyte.
inline constexpr std::size_t kPagePoints = 25000;

/// What the page shows of a document. Its paths are thinned to kPagePoints.
/// \param name where it comes from: the last part of this path is its name if it has none itself
PageDocument CollectPage(const vexaTransferLib::GpxDocument& document, const std::string& name);

} // namespace vexagpx
