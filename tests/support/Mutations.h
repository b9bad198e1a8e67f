// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace vexaTransferLib::testing_support {

/// Makes files with a few errors; the same seed gives the same files.
class Mutator {
public:
    explicit Mutator(std::uint32_t seed) : random_(seed) {}

    /// One to three changes: an element is deleted, doubled, swapped with another or put inside another, a
    /// tag, an attribute or a text is replaced by one that readers treat differently, or bytes are deleted,
    /// doubled, changed or taken from elsewhere in the text.
    std::string Mutate(const std::string& xml);

private:
    struct Range {
        std::size_t begin;
        std::size_t end;
    };

    std::size_t Below(std::size_t bound);
    std::vector<Range> FindElements(const std::string& xml) const;
    void MutateNodes(std::string& xml);
    void MutateBytes(std::string& xml);
    void InsertPiece(std::string& xml);

    std::mt19937 random_;
};

} // namespace vexaTransferLib::testing_support
