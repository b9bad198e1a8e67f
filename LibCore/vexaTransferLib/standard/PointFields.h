// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxPoint.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/standard/Writing.h>

#include <string_view>

namespace vexaTransferLib::standard {

/// All empty.
const GpxModelAccess::RareData& NoRareData();
/// The rare values of a point, which are all empty when it has none.
const GpxModelAccess::RareData& RareOf(const GpxPoint& point);
/// Null when there is none.
inline const GpxUrl* LinkOf(const GpxPoint& point) {
    return RareOf(point).url.get();
}

bool IsSamePosition(const GpxPoint& left, const GpxPoint& right);
/// Whether two links, or two times nothing, have equal addresses, texts and types.
bool IsSameLink(const GpxUrl* left, const GpxUrl* right);
bool IsSameForm(const GpxPoint::FormAttributes& left, const GpxPoint::FormAttributes& right);
bool IsSameCache(const GpxPoint& left, const GpxPoint& right);

/// One element with a text that a point of GPX can have, and the model's value for it.
struct PointField {
    std::string_view name;
    bool (*isSame)(const GpxPoint&, const GpxPoint&);
    /// Writes a line with the element, if the point has such a value and the version a place for it.
    void (*write)(Writing&, const GpxPoint&, int depth);
};

/// Null for another name.
const PointField* FindPointField(std::string_view name);
/// Whether all values of two points are equal.
bool HasSameValues(const GpxPoint& left, const GpxPoint& right);

} // namespace vexaTransferLib::standard
