// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/NodeView.h>

#include <xercesc/dom/DOMNode.hpp>

namespace vexaTransferLib::reader {

/// The view of a node of a Xerces DOM; a null pointer gives a null view.
NodeView ViewOf(const xercesc::DOMNode* node);

} // namespace vexaTransferLib::reader
