// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// A number that documents with the same points and texts have in common.

#include <common/Export.h>
#include <vexaTransferLib/GpxDocument.h>

#include <cstdint>
#include <string>

namespace vexaTrackLib {

/// A hash of 128 bits of what a document contains, for finding files that have the same content. Documents with equal
/// content have equal hashes. Different documents have different ones, but for a chance of about one in 10^30 for a
/// pair of them; it is no cryptographic hash, so somebody may make two documents whose hashes are equal on purpose.
///
/// What counts, in its order: all waypoints, routes, tracks and segments with points; the numbers of position, height
/// and time; and every other element of these objects by its local name, its text and its attributes, links and
/// extensions included. What does not count: the version, the creator and the metadata of the document, white space at
/// the start and the end of a text and how much of it is between words, comments, the order of the elements of an
/// object, prefixes and namespaces, and elements that say nothing. So a file written as GPX 1.0 and as 1.1 has one
/// hash, unless something had no place in one of them.
///
/// Of a document that was not read completely (GpxParser::SetComplete) only positions, heights, times and the texts of
/// the model count.
///
/// It is the same on every machine. Const operations may run on several threads at once.
///
///     if (ContentHash(first) == ContentHash(second))
///         std::cout << "the files have the same content\n";
class VEXATRANSFERLIB_API ContentHash {
public:
    /// Takes linear time, and memory only for the longest text.
    /// \throws std::bad_alloc
    explicit ContentHash(const vexaTransferLib::GpxDocument& document);

    /// True when the document has no waypoint, route or track, so that it has nothing to compare.
    bool IsEmpty() const { return isEmpty_; }

    /// \{
    /// The upper and the lower half.
    std::uint64_t High() const { return high_; }
    std::uint64_t Low() const { return low_; }
    /// \}
    /// 32 hexadecimal digits in lower case.
    std::string Text() const;

    /// \{
    /// Whether the halves are equal, and an order for containers.
    friend bool operator==(const ContentHash& left, const ContentHash& right) {
        return left.high_ == right.high_ && left.low_ == right.low_;
    }
    friend bool operator!=(const ContentHash& left, const ContentHash& right) { return !(left == right); }
    friend bool operator<(const ContentHash& left, const ContentHash& right) {
        return left.high_ != right.high_ ? left.high_ < right.high_ : left.low_ < right.low_;
    }
    /// \}

private:
    std::uint64_t high_ = 0;
    std::uint64_t low_ = 0;
    bool isEmpty_ = true;
};

} // namespace vexaTrackLib
