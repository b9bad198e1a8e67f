// SPDX-License-Identifier: MIT
#include <vexagpx/export/FeatureWalk.h>

#include <vexagpx/export/PathProperties.h>
#include <vexagpx/export/PointProperties.h>

#include <cstdint>

namespace vexagpx {

using namespace vexaTransferLib;

namespace {

/// One walk through the documents.
class Walk {
public:
    Walk(const ExportSources& sources, FeatureWriter& writer) : sources_(sources), writer_(writer) {}

    void WriteHead();
    void WriteLayer(Layer layer);

    const LeftOut& Missing() const { return missing_; }

private:
    void WriteObjects(Layer layer, const ExportSource& source);
    void WriteWaypoints(const GpxDocument& document);
    void WriteRoutes(const GpxDocument& document);
    void WriteTracks(const GpxDocument& document);
    void WriteRoutePoints(const GpxDocument& document);
    void WriteTrackPoints(const GpxDocument& document);

    void StartObject();
    void WritePoint(const GpxPoint& point, bool isPlain);
    void WritePath(const PathGeometry& geometry);
    void CountInLine(const GpxPoint& point, bool isPlain);

    const ExportSources& sources_;
    FeatureWriter& writer_;
    LeftOut missing_;
    icu::UnicodeString file_; ///< of the current document
    Properties properties_;
};

/// What several documents say about themselves is no text about all of them.
void Walk::WriteHead() {
    ExportHead head;
    for (const ExportSource& source : sources_) {
        head = HeadOf(source.document, missing_);
        if (sources_.size() > 1) {
            missing_.metadata += CountValues(head);
            head = {};
        }
    }
    writer_.Start(head);
}

void Walk::WriteLayer(Layer layer) {
    writer_.StartLayer(layer);
    for (const ExportSource& source : sources_)
        WriteObjects(layer, source);
    writer_.EndLayer();
}

void Walk::WriteObjects(Layer layer, const ExportSource& source) {
    file_ = icu::UnicodeString::fromUTF8(source.name);
    switch (layer) {
    case Layer::kWaypoints:
        return WriteWaypoints(source.document);
    case Layer::kRoutes:
        return WriteRoutes(source.document);
    case Layer::kTracks:
        return WriteTracks(source.document);
    case Layer::kPoints:
        WriteRoutePoints(source.document);
        return WriteTrackPoints(source.document);
    }
}

void Walk::StartObject() {
    properties_.Clear();
    properties_.Add(Field::kFile, file_);
}

/// \param isPlain it has nothing but a position, a height and a time
void Walk::WritePoint(const GpxPoint& point, bool isPlain) {
    if (!isPlain)
        TakePoint(point, properties_, missing_);
    CountUnwritable(point, missing_);
    properties_.Sort();
    writer_.WritePoint(PositionOf(point), properties_);
}

void Walk::WritePath(const PathGeometry& geometry) {
    properties_.Sort();
    writer_.WritePath(geometry, properties_);
}

void Walk::CountInLine(const GpxPoint& point, bool isPlain) {
    CountUnwritable(point, missing_);
    if (!isPlain && HasMoreThanPosition(point))
        ++missing_.pointDetails;
}

void Walk::WriteWaypoints(const GpxDocument& document) {
    for (auto point = document.GetWaypointIter(); point != document.GetWaypointEndIter(); ++point) {
        StartObject();
        WritePoint(*point, false);
    }
}

void Walk::WriteRoutes(const GpxDocument& document) {
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route) {
        StartObject();
        TakeRoute(*route, properties_, missing_);
        const bool isPlain = HasPlainPoints(*route);
        for (auto point = route->GetPointIter(); point != route->GetPointEndIter(); ++point)
            CountInLine(*point, isPlain);
        WritePath(PathGeometry(*route));
    }
}

void Walk::WriteTracks(const GpxDocument& document) {
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track) {
        StartObject();
        TakeTrack(*track, properties_, missing_);
        const bool isPlain = HasPlainPoints(*track);
        for (auto segment = track->GetSegmentIter(); segment != track->GetSegmentEndIter(); ++segment)
            for (const GpxPoint& point : *segment)
                CountInLine(point, isPlain);
        WritePath(PathGeometry(*track));
    }
}

void Walk::WriteRoutePoints(const GpxDocument& document) {
    std::uint64_t number = 0;
    for (auto route = document.GetRouteIter(); route != document.GetRouteEndIter(); ++route) {
        ++number;
        const bool isPlain = HasPlainPoints(*route);
        for (auto point = route->GetPointIter(); point != route->GetPointEndIter(); ++point) {
            StartObject();
            properties_.Add(Field::kRoute, number);
            WritePoint(*point, isPlain);
        }
    }
}

void Walk::WriteTrackPoints(const GpxDocument& document) {
    std::uint64_t number = 0;
    for (auto track = document.GetTrackIter(); track != document.GetTrackEndIter(); ++track) {
        ++number;
        const bool isPlain = HasPlainPoints(*track);
        std::uint64_t segmentNumber = 0;
        for (auto segment = track->GetSegmentIter(); segment != track->GetSegmentEndIter(); ++segment) {
            ++segmentNumber;
            for (const GpxPoint& point : *segment) {
                StartObject();
                properties_.Add(Field::kTrack, number);
                properties_.Add(Field::kSegment, segmentNumber);
                WritePoint(point, isPlain);
            }
        }
    }
}

} // namespace

LeftOut WalkFeatures(const ExportSources& sources, const std::vector<Layer>& layers, FeatureWriter& writer) {
    Walk walk(sources, writer);
    walk.WriteHead();
    for (const Layer layer : layers)
        walk.WriteLayer(layer);
    writer.End();
    return walk.Missing();
}

} // namespace vexagpx
