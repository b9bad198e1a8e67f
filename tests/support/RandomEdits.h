// SPDX-License-Identifier: MIT
#pragma once

#include <vexaTransferLib/GpxDocument.h>

#include <cstdint>

namespace vexaTransferLib::testing_support {

/// Changes a document in many ways, the same ones for the same seed: values, lists, segments, and objects of another
/// document. What it sets, a file can hold and a complete reading reads.
void EditAtRandom(GpxDocument& document, const GpxDocument& other, std::uint64_t seed, int edits);

} // namespace vexaTransferLib::testing_support
