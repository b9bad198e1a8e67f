// SPDX-License-Identifier: MIT
#include <vexaTransferLib/GpxListEditor.h>

#include <vexaTransferLib/GpxRoute.h>
#include <vexaTransferLib/GpxTrack.h>
#include <vexaTransferLib/text/ContractSources.h>

#include <common/dbc.h>

namespace vexaTransferLib {

void GpxListChecks::RequireObject(Owner owner, const GpxRoute* route, const GpxPoint& point) {
    switch (owner) {
    case kDocument:
        dbc::Require(point.GetPointType() == kGpxWaypoint, text::kGpxListEditorSource,
                     "Only waypoints can be added the GPX waypoint list.");
        return;
    case kTrack:
        dbc::Require(point.GetPointType() == kGpxTrackPoint, text::kGpxListEditorSource,
                     "Only track points can be added to GPX tracks.");
        return;
    case kRoute:
        route->CheckPoint(point);
        return;
    }
}

void GpxListChecks::RequireObject(Owner, const GpxRoute*, const GpxRoute&) {}

void GpxListChecks::RequireObject(Owner, const GpxRoute*, const GpxTrack&) {}

void GpxListChecks::RequirePlace(bool isPlace) {
    dbc::Require(isPlace, text::kGpxListEditorSource, "There is no such place in the list.");
}

} // namespace vexaTransferLib
