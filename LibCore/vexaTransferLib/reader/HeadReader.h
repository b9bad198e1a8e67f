// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxHead.h>

#include <unicode/unistr.h>
#include <xercesc/sax2/Attributes.hpp>

#include <array>
#include <cstddef>
#include <cstdint>

namespace vexaTransferLib::reader {

struct HeadElement;

/// Fills a GpxHead from the events of an XML parser, up to the first waypoint, route or track. Keeps no text but that
/// of one value of the head at a time.
class HeadReader {
public:
    /// Forgets the head of an earlier file.
    void Reset();

    // The operations throw std::bad_alloc. Events after the end of the head, and end tags without start tags, change
    // nothing. Null names and namespaces are empty ones.

    void StartElement(const char16_t* uri, const char16_t* localName, const xercesc::Attributes& attributes);
    void AddText(const char16_t* units, std::size_t length);
    void EndElement();
    /// Takes down what has ended the head, unless that is known already.
    void Finish(GpxHead::End end);

    const GpxHead& Head() const { return head_; }
    GpxHead& Head() { return head_; }

private:
    static constexpr std::size_t kMostPlaces = 4; // the root, its metadata, their author, its name

    void StartRoot(const char16_t* localName, const xercesc::Attributes& attributes);
    void StartChild(const char16_t* localName, bool isGpx, const xercesc::Attributes& attributes);

    GpxHead head_;
    /// The open elements that are places or values of the head, from the root; those in them are only counted.
    std::array<const HeadElement*, kMostPlaces> open_{};
    std::size_t openCount_ = 0;
    std::uint64_t ignoredDepth_ = 0;
    icu::UnicodeString text_; ///< of the value that is open
};

} // namespace vexaTransferLib::reader
