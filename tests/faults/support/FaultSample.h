// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vexaTransferLib::testing_support {

/// The numbers that a sample contains.
enum class SampleNumbers {
    kAll,
    /// No number that ICU's number format reads or writes: ICU 72 crashes or stops the process where it
    /// cannot have the memory to make one (see UsNumberFormatDeathTest).
    kNoneOfIcu
};

/// A GPX 1.1 document with about every element that is read. Most texts are so long that neither a string nor
/// ICU holds them without memory; the cleaner leaves the geocache's texts unchanged.
std::string FaultSample(SampleNumbers numbers);

} // namespace vexaTransferLib::testing_support
