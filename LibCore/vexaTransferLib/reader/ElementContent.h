// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/NodeView.h>

namespace vexaTransferLib::reader {

// What of an element is content, so that skipping it is a loss. White space, comments, namespace declarations and
// what is for the validation by a schema are none.

/// True for an attribute that has content.
bool HasContent(const AttributeView& attribute);
/// True when the element, or one in it, has an attribute or a text with content. Linear in the size of the element at
/// most; the stack that it needs does not grow with the depth.
bool HasContent(const NodeView& element);
/// True when an element in it has an attribute with content, whatever texts there are.
bool HasAttributesBelow(const NodeView& element);

} // namespace vexaTransferLib::reader
