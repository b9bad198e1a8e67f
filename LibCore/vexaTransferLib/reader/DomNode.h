// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/NodeView.h>

#include <xercesc/dom/DOMNode.hpp>

namespace vexaTransferLib::reader {

/// Returns the view of a node of a Xerces DOM; a null view for a null pointer.
NodeView ViewOf(const xercesc::DOMNode* node);

} // namespace vexaTransferLib::reader
