// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTrackLib/CutArea.h>
#include <vexaTransferLib/GpxDocument.h>

#include <cstddef>

namespace vexaTrackLib::cutting {

/// Removes the elements that name a place in an area from the metadata of a document, and from the objects that are in
/// its lists, and such comments of its file. The positions of its points are none of them.
/// \returns how many elements and comments were removed
std::size_t RemoveTraces(vexaTransferLib::GpxDocument& document, const CutArea& area);

} // namespace vexaTrackLib::cutting
