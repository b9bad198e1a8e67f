// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxInputLimits.h>

#include <cstdint>
#include <string>
#include <utility>

namespace vexaTransferLib::reader {

/// Watches over one file from a stranger: each operation throws ReadingStop with a dbc::postcondition_error when
/// the file goes too far.
class InputGuard {
public:
    InputGuard(const GpxInputLimits& limits, std::string name) : limits_(limits), name_(std::move(name)) {}

    [[noreturn]] void RefuseDocumentType() const;

    void StartElement(std::uint64_t attributeCount) {
        textLength_ = 0;
        if (++depth_ > limits_.elementDepth)
            Refuse("Its elements are nested deeper than", limits_.elementDepth, "element depth");
        if (attributeCount > limits_.attributes)
            Refuse("One of its elements has more attributes than", limits_.attributes, "attributes");
    }
    void EndElement() {
        textLength_ = 0;
        --depth_;
    }
    /// A piece of the text between two tags.
    void AddText(std::uint64_t length) {
        textLength_ += length;
        CheckText(textLength_);
    }
    /// Another text as a whole.
    void CheckText(std::uint64_t length) const {
        if (length > limits_.textLength)
            Refuse("One of its texts is longer than", limits_.textLength, "text length");
    }
    void AddPoint() {
        if (++points_ > limits_.points)
            Refuse("It has more points than", limits_.points, "points");
    }

private:
    [[noreturn]] void Refuse(const char* what, std::uint64_t limit, const char* limitName) const;
    [[noreturn]] void Refuse(const std::string& why) const;

    GpxInputLimits limits_;
    std::string name_;
    std::uint64_t depth_ = 0;
    std::uint64_t textLength_ = 0;
    std::uint64_t points_ = 0;
};

} // namespace vexaTransferLib::reader
