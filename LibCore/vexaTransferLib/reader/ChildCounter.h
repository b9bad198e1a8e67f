// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/reader/PlainCheck.h>
#include <vexaTransferLib/reader/PlainLexer.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vexaTransferLib::reader {

/// Receives the parts of a file while it is checked, and counts the children of its elements.
class ChildCounter {
public:
    explicit ChildCounter(std::vector<LongElement>& longElements) : longElements_(longElements) {}

    void StartElement(const PlainTag& tag) {
        if (depth_ != 0 && !tag.attributes.empty())
            ++open_[depth_ - 1].children;
        open_[depth_++] = {tag.begin, 0};
    }
    void EndElement(std::uint64_t) {
        const LongElement& ended = open_[--depth_];
        if (ended.children >= kLongElementChildren)
            longElements_.push_back(ended);
    }
    void Text(const RawText&) {}
    void CData(const RawText&) {}
    void Other() {}
    std::uint64_t KeptFrom(std::uint64_t next) const { return next; }

private:
    std::vector<LongElement>& longElements_;
    std::array<LongElement, kMostPlainDepth> open_;
    std::size_t depth_ = 0;
};

} // namespace vexaTransferLib::reader
