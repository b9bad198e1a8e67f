// SPDX-License-Identifier: MIT
#include <vexaTrackLib/Corrections.h>

#include <common/dbc.h>
#include <vexaTrackLib/Bounds.h>
#include <vexaTrackLib/paths/AllPoints.h>
#include <vexaTransferLib/GpxMetadata.h>

#include <algorithm>
#include <cmath>

namespace vexaTrackLib {

using vexaTransferLib::GpxDocument;
using vexaTransferLib::GpxElement;
using vexaTransferLib::GpxPoint;
using vexaTransferLib::GpxPointDetails;
using vexaTransferLib::GpxSensor;
using vexaTransferLib::GpxSensorElement;

namespace {

/// Removes elements of sensors from one point after another.
class Stripping {
public:
    Stripping(GpxDocument& document, const std::vector<GpxSensor>& sensors)
        : document_(document), sensors_(sensors) {}

    void Strip(const GpxPoint& point) {
        removed_.clear();
        for (const GpxSensorElement& found : GpxPointDetails(point.GetElement()).GetSensorElements())
            if (std::find(sensors_.begin(), sensors_.end(), found.sensor) != sensors_.end())
                removed_.push_back(found.element);
        if (removed_.empty())
            return;
        count_ += removed_.size();
        for (const GpxElement& child : point.GetElement().GetChildren())
            RemoveFrom(child, kLevels);
    }
    std::size_t Count() const { return count_; }

private:
    // Sensors are no deeper than this.
    static constexpr int kLevels = 6;

    // True when the element is removed: it is one of a sensor, or had nothing but such elements.
    bool RemoveFrom(const GpxElement& element, int levels) {
        bool isGone = IsRemoved(element);
        if (!isGone && levels > 1) {
            std::size_t gone = 0;
            std::size_t others = 0;
            for (const GpxElement& child : element.GetChildren())
                ++(RemoveFrom(child, levels - 1) ? gone : others);
            isGone = gone > 0 && others == 0;
        }
        if (isGone)
            document_.EditElements().Remove(element);
        return isGone;
    }
    bool IsRemoved(const GpxElement& element) const {
        return std::find(removed_.begin(), removed_.end(), element) != removed_.end();
    }

    GpxDocument& document_;
    const std::vector<GpxSensor>& sensors_;
    std::vector<GpxElement> removed_;
    std::size_t count_ = 0;
};

Bounds BoundsOf(const GpxDocument& document) {
    Bounds bounds;
    paths::ForEachPoint(document, [&bounds](const GpxPoint& point) {
        double latitude = 0.0;
        double longitude = 0.0;
        point.GetPoint(latitude, longitude);
        bounds.Add(latitude, longitude);
    });
    return bounds;
}

} // namespace

std::size_t ShiftTimes(GpxDocument& document, double milliseconds) {
    dbc::Require(std::isfinite(milliseconds), "LibTrack/vexaTrackLib/Corrections.cpp",
                 "The shift must be a number of milliseconds.");
    std::size_t count = 0;
    paths::EditEachPoint(document, [&](GpxPoint& point) {
        double time = 0.0;
        if (!point.GetTime(time))
            return;
        point.SetTime(time + milliseconds);
        ++count;
    });
    return count;
}

std::size_t StripSensors(GpxDocument& document, const std::vector<GpxSensor>& sensors) {
    if (!document.GetElement())
        return 0;
    Stripping stripping(document, sensors);
    const char* const begin = document.GetElement().GetXml().data();
    const char* const end = begin + document.GetElement().GetXml().size();
    paths::ForEachPoint(document, [&](const GpxPoint& point) {
        // Points of other documents have elements that cannot be changed here.
        const char* const at = point.GetElement().GetXml().data();
        if (at >= begin && at < end)
            stripping.Strip(point);
    });
    return stripping.Count();
}

void CorrectBounds(GpxDocument& document) {
    if (!document.GetElement())
        return;
    const bool hasBounds = vexaTransferLib::GpxMetadata(document.GetElement()).GetBounds().has_value();
    const Bounds bounds = BoundsOf(document);
    if (bounds.IsEmpty() || !hasBounds)
        document.EditMetadata().ClearBounds();
    else
        document.EditMetadata().SetBounds({bounds.South(), bounds.West(), bounds.North(), bounds.East()});
}

} // namespace vexaTrackLib
