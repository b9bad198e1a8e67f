// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/export/LeftOut.h>
#include <vexagpx/export/Properties.h>

#include <vexaTransferLib/GpxElement.h>

namespace vexagpx {

/// Adds what a geocache has. Of its logs only the number is a property, and of its attributes nothing.
/// \param cache the `cache` element
/// \param missing gets the numbers of what is not added
void TakeGeocache(const vexaTransferLib::GpxElement& cache, Properties& properties, LeftOut& missing);

} // namespace vexagpx
