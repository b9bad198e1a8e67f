// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The elements of other formats in an object of GPX.

#include <common/Export.h>
#include <vexaTransferLib/GpxElement.h>

#include <vector>

namespace vexaTransferLib {

/// The elements of other formats in an object (the root, `metadata`, a point, route, track or segment), in their
/// order: the children of its `extensions`, as in GPX 1.1, and those of its children that are in no namespace of
/// GPX, as in 1.0. Both are looked for whatever the version says. Elements of no namespace count as GPX, but in
/// `extensions` all count.
///
/// The views share the object's source. Costs as much as the content of the object, which for a track is all its
/// points.
/// \throws std::bad_alloc
///
///     for (const GpxElement& element : ForeignElements(point.GetElement()))
///         if (element.Is("http://www.opencpn.org", "guid"))
///             Use(element.GetText());
VEXATRANSFERLIB_API std::vector<GpxElement> ForeignElements(const GpxElement& object);

} // namespace vexaTransferLib
