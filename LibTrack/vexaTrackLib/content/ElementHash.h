// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTrackLib/content/Hasher.h>

#include <vexaTransferLib/GpxElement.h>

#include <string_view>

namespace vexaTrackLib::content {

/// Adds an element: local names, texts and attributes, without declarations of namespaces, and with each run of white
/// space in a text as one space and none at its ends.
/// \param xml well-formed, in UTF-8, from the start tag of the element to its end
/// \return false when there is no text and no attribute in it
bool AddElement(std::string_view xml, Hasher& hasher);

/// Adds what AddElement adds for an element that has only a text.
/// \param utf8 without references
bool AddTextElement(std::string_view name, std::string_view utf8, Hasher& hasher);

/// Adds the links of an object. The versions of GPX write them in different ways, which give the same hash.
void AddLinks(const vexaTransferLib::GpxElement& object, Hasher& hasher);

} // namespace vexaTrackLib::content
