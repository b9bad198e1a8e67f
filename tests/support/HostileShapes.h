// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace vexaTransferLib::testing_support {

/// GPX files whose shape could make an observed reading take much more time or memory than their length
/// justifies.
struct HostileShape {
    const char* name;
    /// Makes a file whose length grows with the number.
    std::string (*make)(std::size_t);
};

const std::vector<HostileShape>& HostileShapes();

inline void PrintTo(const HostileShape& shape, std::ostream* out) {
    *out << shape.name;
}

} // namespace vexaTransferLib::testing_support
