// SPDX-License-Identifier: MIT
#include <vexaTrackLib/cutting/Traces.h>

#include <vexaTrackLib/cutting/CoordinateScan.h>
#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/GpxParser.h>
#include <vexaTransferLib/GpxRoute.h>
#include <vexaTransferLib/GpxTrack.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vexaTrackLib::cutting {

using vexaTransferLib::GpxAttribute;
using vexaTransferLib::GpxDocument;
using vexaTransferLib::GpxElement;
using vexaTransferLib::GpxPoint;
using vexaTransferLib::GpxRoute;
using vexaTransferLib::GpxTrack;

namespace {

std::string Utf8(const icu::UnicodeString& text) {
    std::string utf8;
    return text.toUTF8String(utf8);
}

std::string LowerCase(std::string_view name) {
    return Utf8(icu::UnicodeString::fromUTF8(std::string(name)).toLower());
}

template <std::size_t kCount>
bool IsOneOf(std::string_view name, const std::array<std::string_view, kCount>& names) {
    const std::string lower = LowerCase(name);
    for (const std::string_view candidate : names)
        if (lower == candidate)
            return true;
    return false;
}

constexpr std::array<std::string_view, 2> kLatitudes = {"lat", "latitude"};
constexpr std::array<std::string_view, 4> kLongitudes = {"lon", "long", "longitude", "lng"};

std::optional<double> NumberIn(const icu::UnicodeString& text) {
    double number = std::numeric_limits<double>::quiet_NaN();
    vexaTransferLib::StrToDouble(Utf8(text).c_str(), number);
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

bool IsGpx(const GpxElement& element) {
    return element.GetNamespace().starts_with("http://www.topografix.com/GPX/1/");
}

bool IsGpx(const GpxElement& element, std::string_view name) {
    return element.GetName() == name && IsGpx(element);
}

/// Walks through the elements of a document that are no points of the model.
class TraceRemoval {
public:
    TraceRemoval(GpxDocument& document, const CutArea& area) : document_(document), area_(area) {}

    std::size_t Run() {
        const std::size_t before = document_.EditElements().GetCount();
        RemoveFromChildren(document_.GetElement(), {"wpt", "rte", "trk"});
        for (const GpxElement& unread : document_.GetUnreadElements())
            RemoveFrom(unread);
        for (const GpxPoint& waypoint : document_.GetWaypoints())
            RemoveFromPoint(waypoint);
        for (const GpxRoute& route : document_.GetRoutes()) {
            RemoveFromChildren(route.GetElement(), {"rtept"});
            for (const GpxPoint& point : route.GetPoints())
                RemoveFromPoint(point);
        }
        for (const GpxTrack& track : document_.GetTracks())
            RemoveFromTrack(track);
        const std::size_t comments = document_.EditElements().RemoveComments(
            [this](std::string_view content) { return TextNamesPlace(content); });
        return document_.EditElements().GetCount() - before + comments;
    }

private:
    void RemoveFromTrack(const GpxTrack& track) {
        RemoveFromChildren(track.GetElement(), {"trkseg"});
        for (auto segment = track.GetSegmentIter(); segment != track.GetSegmentEndIter(); ++segment) {
            RemoveFromChildren(track.GetSegmentElement(segment), {"trkpt"});
            for (const GpxPoint& point : *segment)
                RemoveFromPoint(point);
        }
    }
    // Most points have nothing in them that could name a place: an element of their own, or two decimals.
    void RemoveFromPoint(const GpxPoint& point) {
        const GpxElement element = point.GetElement();
        if (element && MayNamePlace(element.GetXml()))
            RemoveFromChildren(element, {});
    }
    static bool MayNamePlace(std::string_view xml) {
        const std::string_view inside = xml.substr(std::min(xml.find('>'), xml.size()));
        std::size_t numbers = 0;
        for (std::size_t at = inside.find('.'); at != std::string_view::npos && numbers < 2;
             at = inside.find('.', at + 1))
            numbers += at + 1 < inside.size() && inside[at + 1] >= '0' && inside[at + 1] <= '9' ? 1 : 0;
        return numbers >= 2 || inside.find_first_of("=NSEW") != std::string_view::npos ||
               inside.find("lat") != std::string_view::npos || inside.find("Lat") != std::string_view::npos;
    }

    void RemoveFromChildren(const GpxElement& parent, const std::vector<std::string_view>& objects) {
        if (!parent || !IsOwn(parent))
            return;
        for (const GpxElement& child : parent.GetChildren()) {
            bool isObject = false;
            for (const std::string_view name : objects)
                isObject = isObject || IsGpx(child, name);
            if (!isObject)
                RemoveFrom(child);
        }
    }
    // Objects of other documents bring elements that cannot be changed here.
    bool IsOwn(const GpxElement& element) const {
        return element.GetXml().data() >= document_.GetElement().GetXml().data() &&
               element.GetXml().data() <
                   document_.GetElement().GetXml().data() + document_.GetElement().GetXml().size();
    }

    // Without recursion: elements may be as deep as a file can make them.
    void RemoveFrom(const GpxElement& element) {
        std::vector<GpxElement> open;
        for (GpxElement at = element; at;) {
            if (NamesPlace(at))
                document_.EditElements().Remove(at);
            else if (GpxElement child = at.GetFirstChild()) {
                open.push_back(std::move(at));
                at = std::move(child);
                continue;
            }
            while (!open.empty()) {
                at = at.GetNextSibling();
                if (at)
                    break;
                at = std::move(open.back());
                open.pop_back();
            }
            if (open.empty())
                return;
        }
    }

    bool NamesPlace(const GpxElement& element) const {
        // The bounds of the metadata are corrected.
        if (IsGpx(element, "bounds"))
            return false;
        std::optional<double> latitude;
        std::optional<double> longitude;
        for (const GpxAttribute& attribute : element.GetAttributes()) {
            if (IsOneOf(attribute.name, kLatitudes))
                latitude = NumberIn(attribute.value);
            else if (IsOneOf(attribute.name, kLongitudes))
                longitude = NumberIn(attribute.value);
            else if (TextNamesPlace(Utf8(attribute.value)))
                return true;
        }
        const bool isLeaf = !element.GetFirstChild();
        if (!isLeaf)
            ReadChildren(element, latitude, longitude);
        if (latitude && longitude && area_.ContainsPlace(*latitude, *longitude))
            return true;
        return isLeaf && TextNamesPlace(Utf8(element.GetText()));
    }
    static void ReadChildren(const GpxElement& parent, std::optional<double>& latitude,
                             std::optional<double>& longitude) {
        for (const GpxElement& child : parent.GetChildren()) {
            if (IsOneOf(child.GetName(), kLatitudes))
                latitude = child.GetNumber();
            else if (IsOneOf(child.GetName(), kLongitudes))
                longitude = child.GetNumber();
        }
    }
    bool TextNamesPlace(std::string_view text) const {
        return FindPlace(text, [this](double latitude, double longitude) {
            return area_.ContainsPlace(latitude, longitude);
        });
    }

    GpxDocument& document_;
    const CutArea& area_;
};

} // namespace

std::size_t RemoveTraces(GpxDocument& document, const CutArea& area) {
    return document.GetElement() ? TraceRemoval(document, area).Run() : 0;
}

} // namespace vexaTrackLib::cutting
