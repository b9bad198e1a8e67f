// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/page/PageDocument.h>

#include <vexaTransferLib/GpxDocument.h>

#include <string>

namespace vexagpx {

/// Points that the paths of a page may have in all, so that it has less than about a megabyte.
inline constexpr std::size_t kPagePoints = 25000;

/// What the page shows of a document. Its paths are thinned to kPagePoints. A path without points is left out.
/// \param source names the document if it has no name
PageDocument CollectPage(const vexaTransferLib::GpxDocument& document, const std::string& source);

} // namespace vexagpx
