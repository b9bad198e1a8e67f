// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxPoint.h>
#include <vexaTransferLib/model/ChildScan.h>
#include <vexaTransferLib/standard/PointFields.h>
#include <vexaTransferLib/standard/Writing.h>

#include <cstddef>

namespace vexaTransferLib::standard {

/// The vendor's elements and the geocache of a point that are not as they were read.
class PointExtensions {
public:
    /// \param read what the point's element says; null when there is none
    PointExtensions(Writing& writing, const GpxPoint& point, const GpxPoint* read);

    /// Leaves the geocache to the caller.
    void LeaveGeocache() { hasNewCache_ = false; }
    bool HasNewGeocache() const { return hasNewCache_; }

    /// True for an element of the point in whose place there is another one, or none.
    bool IsReplaced(const ScannedChild& child) const;
    bool HasNew() const;
    void WriteNew(int depth) const;

private:
    bool IsNewForm() const { return !IsSameForm(rare_.formAttributes, readRare_.formAttributes); }
    bool IsNewSymbol() const { return rare_.symbolNumber != readRare_.symbolNumber; }
    bool IsNewIdentifier() const { return rare_.guid != readRare_.guid; }
    bool IsNewRoutePointType() const {
        return GpxModelAccess::GetRawRoutePointType(point_) != routePointType_;
    }

    Writing& writing_;
    const GpxPoint& point_;
    const GpxModelAccess::RareData& rare_;
    const GpxModelAccess::RareData& readRare_;
    std::size_t routePointType_;
    bool hasNewCache_;
};

} // namespace vexaTransferLib::standard
