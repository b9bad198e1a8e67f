// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxElement.h>

#include <functional>
#include <string>

namespace vexaTransferLib::testing_support {

/// Calls `visit` for an element and all elements in it, in the order of the source, without recursion.
void ForEachElement(const GpxElement& root, const std::function<void(const GpxElement&)>& visit);

/// Names, namespaces, attributes and texts of an element and of all in it: a line each.
std::string ContentOf(const GpxElement& root);

/// Asks an element and all in it for everything that they can say. Returns how many they are.
std::size_t AskAll(const GpxElement& root);

} // namespace vexaTransferLib::testing_support
