// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxDocument.h>
#include <vexaTransferLib/GpxElement.h>
#include <vexaTransferLib/OptionalValue.h>
#include <vexaTransferLib/model/SourceText.h>
#include <vexaTransferLib/text/IcuText.h>

#include <boost/shared_ptr.hpp>
#include <unicode/unistr.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace vexaTransferLib {

class CleanText;

/// The only access to those fields of the model that have no public accessor, or only one that copies. For
/// readers, writers, the unit tests, and the host's dump. Inline throughout, so that it needs no exported
/// symbol.
class GpxModelAccess {
public:
    /// The unit tests define it, for values that no constructor and no setter takes.
    class Doors;

    // Links. An empty text is absent.
    static const icu::UnicodeString& GetUrl(const GpxUrl& link) { return link.url_; }
    static const icu::UnicodeString& GetText(const GpxUrl& link) { return link.text_; }
    static const icu::UnicodeString& GetType(const GpxUrl& link) { return link.type_; }

    // Elements of a source.
    static GpxElement MakeElement(boost::intrusive_ptr<const SourceText> source, std::uint64_t place) {
        return GpxElement(std::move(source), place);
    }
    static std::uint64_t GetPlace(const GpxElement& element) { return element.place_; }
    /// Null for a view of nothing.
    static const SourceText* GetSource(const GpxElement& element) { return element.source_.get(); }

    // Points.
    using RareData = GpxPoint::RareData;
    static double GetLatitude(const GpxPoint& point) { return point.latitude_; }
    static double GetLongitude(const GpxPoint& point) { return point.longitude_; }
    /// \{
    /// A null pointer when the value is absent.
    static const double* GetElevation(const GpxPoint& point) {
        return point.hasElevation_ != 0 ? &point.elevation_ : nullptr;
    }
    static const double* GetTime(const GpxPoint& point) {
        return point.hasTime_ != 0 ? &point.time_ : nullptr;
    }
    static const RareData* GetRareData(const GpxPoint& point) { return point.rare_.get(); }
    /// \}
    /// True for a position that the constructor of a point accepts.
    static bool IsPosition(double latitude, double longitude) {
        return GpxPoint::IsPosition(latitude, longitude);
    }
    static RareData& GetOrMakeRareData(GpxPoint& point) { return MakeRare(point); }
    /// \{
    /// Numbers of the enumerations, 0 when absent.
    static std::uint8_t GetRawPointType(const GpxPoint& point) {
        return static_cast<std::uint8_t>(point.pointType_);
    }
    static std::uint8_t GetRawFix(const GpxPoint& point) { return static_cast<std::uint8_t>(point.fix_); }
    static std::uint8_t GetRawRoutePointType(const GpxPoint& point) {
        return static_cast<std::uint8_t>(point.routePointType_);
    }
    /// \}
    /// Null when the point was not read completely.
    static const SourceText* GetSource(const GpxPoint& point) { return point.source_.get(); }
    static std::uint64_t GetPlace(const GpxPoint& point) { return point.place_; }
    static void SetElement(GpxPoint& point, const SourceText::Pointer& source, std::uint64_t place) {
        point.source_ = source;
        point.place_ = place & ((std::uint64_t{1} << 40) - 1);
    }
    /// \{
    /// Whether a point may have other values than its element. The records of a form can be changed from outside.
    static bool IsChanged(const GpxPoint& point) {
        return point.isChanged_ != 0 || (point.rare_ && !point.rare_->formAttributes.empty());
    }
    static void SetUnchanged(GpxPoint& point) { point.isChanged_ = 0; }
    /// \}
    static std::int32_t GetSymbolNumber(const GpxPoint& point) {
        return point.rare_ ? point.rare_->symbolNumber : 0;
    }
    static void SetSymbolNumber(GpxPoint& point, std::int32_t number) {
        MakeRare(point).symbolNumber = number;
    }
    static icu::UnicodeString GetGUID(const GpxPoint& point) {
        return point.rare_ ? point.rare_->guid : icu::UnicodeString();
    }
    /// Without one leading and one trailing brace, each on its own.
    static void SetGUID(GpxPoint& point, const icu::UnicodeString& guid) {
        icu::UnicodeString bare(guid);
        if (bare.startsWith(u"{", 1))
            bare.remove(0, 1);
        if (bare.endsWith(u"}", 1))
            bare.truncate(bare.length() - 1);
        text::ThrowIfBogus(bare);
        MakeRare(point).guid = std::move(bare);
    }
    static GpxPoint::FormAttributes GetFormAttributes(const GpxPoint& point) {
        return point.rare_ ? point.rare_->formAttributes : GpxPoint::FormAttributes();
    }
    /// Calls `visit(name, get)` for each value that a point can have, in the order of the tool's dump.
    /// `get(point)` is a pointer to the value, or an optional enumeration, and is empty when the point does not
    /// have the value. A pointer to an integer may also lead to 0, and one to a map to an empty map.
    template <class Visitor>
    static void ForEachPointField(Visitor visit) {
        GpxPoint::ForEachField([&visit](const char* name, auto get) {
            visit(name, [get](const GpxPoint& point) { return Present(get(point)); });
        });
    }

    // How many objects the lists had when they were read; 0 when they were not read completely.

    static std::size_t& ReadPoints(GpxRoute& route) { return route.readPoints_; }
    static std::size_t ReadPoints(const GpxRoute& route) { return route.readPoints_; }
    static std::uint32_t& ReadRouteType(GpxRoute& route) { return route.readRouteType_; }
    static std::uint32_t ReadRouteType(const GpxRoute& route) { return route.readRouteType_; }
    static std::size_t& ReadSegments(GpxTrack& track) { return track.readSegments_; }
    static std::size_t ReadSegments(const GpxTrack& track) { return track.readSegments_; }
    /// Of the last segment that has an element.
    static std::size_t& ReadPointsOfLast(GpxTrack& track) { return track.origins_.back().readPoints; }
    static std::size_t ReadPoints(const GpxTrack& track, std::size_t segment) {
        return segment < track.origins_.size() ? track.origins_[segment].readPoints : 0;
    }
    using ReadCounts = GpxDocument::ReadCounts;
    static ReadCounts& GetReadCounts(GpxDocument& document) { return document.readCounts_; }
    static const ReadCounts& GetReadCounts(const GpxDocument& document) { return document.readCounts_; }

    // Routes. An empty text is absent.
    static const icu::UnicodeString& GetName(const GpxRoute& route) { return route.name_; }
    static const icu::UnicodeString& GetSource(const GpxRoute& route) { return route.source_; }
    static const icu::UnicodeString& GetType(const GpxRoute& route) { return route.type_; }
    static std::uint32_t GetRawRouteType(const GpxRoute& route) { return route.routeType_; }
    static const GpxRoute::Points& GetPoints(const GpxRoute& route) { return route.points_; }
    static GpxRoute::Points& GetPoints(GpxRoute& route) { return route.points_; }

    // Tracks. An empty text is absent.
    static const icu::UnicodeString& GetName(const GpxTrack& track) { return track.name_; }
    static const icu::UnicodeString& GetDescription(const GpxTrack& track) { return track.description_; }
    static const icu::UnicodeString& GetSource(const GpxTrack& track) { return track.source_; }
    static const icu::UnicodeString& GetType(const GpxTrack& track) { return track.type_; }
    /// A null pointer when there is none.
    static const GpxUrl* GetLink(const GpxTrack& track) { return track.url_.get(); }
    /// -1 when there is none.
    static std::int16_t GetColor(const GpxTrack& track) { return track.color_; }
    static void SetColor(GpxTrack& track, std::int16_t color) { track.color_ = color; }
    static const GpxTrack::Segments& GetSegments(const GpxTrack& track) { return track.segments_; }
    static GpxTrack::Segment& GetLastSegment(GpxTrack& track) { return track.segments_.back(); }

    static void AddSegmentElement(GpxTrack& track, GpxElement element) {
        track.origins_.push_back({std::move(element), {}});
    }

    /// \{
    /// Of links, routes, tracks and documents that are read completely.
    template <class Object>
    static void SetElement(Object& object, const GpxElement& element) {
        object.element_ = element;
    }
    template <class Object>
    static void AddUnread(Object& object, const GpxElement& element) {
        object.unread_.push_back(element);
    }
    template <class Object>
    static void AddField(Object& object, const GpxElement& element) {
        object.fields_.push_back(element);
    }
    template <class Object>
    static const std::vector<GpxElement>& GetFields(const Object& object) {
        return object.fields_;
    }
    /// To the last segment that has an element.
    static void AddSegmentField(GpxTrack& track, GpxElement element) {
        track.origins_.back().Extras().fields.push_back(std::move(element));
    }
    /// \param index any; what a segment does not have is empty
    static const std::vector<GpxElement>& GetSegmentFields(const GpxTrack& track, std::size_t index) {
        static const std::vector<GpxElement> kNone;
        const GpxTrack::SegmentExtras* const extras = GetExtras(track, index);
        return extras != nullptr ? extras->fields : kNone;
    }
    /// \param index any; a view of nothing for what has no element
    static GpxElement GetSegmentElement(const GpxTrack& track, std::size_t index) {
        return index < track.origins_.size() ? track.origins_[index].element : GpxElement();
    }
    /// The elements of segments that were joined to this one.
    static const std::vector<GpxElement>& GetJoinedElements(const GpxTrack& track, std::size_t index) {
        static const std::vector<GpxElement> kNone;
        const GpxTrack::SegmentExtras* const extras = GetExtras(track, index);
        return extras != nullptr ? extras->joined : kNone;
    }
    static void SetFields(GpxRoute& route, std::vector<GpxElement> elements) {
        route.fields_ = std::move(elements);
    }
    static void SetUnread(GpxRoute& route, std::vector<GpxElement> elements) {
        route.unread_ = std::move(elements);
    }
    /// \}

    /// \{
    /// What the editors of elements and metadata changed.
    using ElementChange = GpxElementChanges::Change;
    using NewChild = GpxElementChanges::NewChild;
    using HeadChanges = GpxElementChanges::Head;
    /// Null for nothing.
    static const GpxElementChanges* GetChanges(const GpxDocument& document) {
        return document.elementChanges_.get();
    }
    static GpxElementChanges& MakeChanges(GpxDocument& document) {
        if (!document.elementChanges_)
            document.elementChanges_ = std::make_unique<GpxElementChanges>();
        return *document.elementChanges_;
    }
    static const std::map<std::uint64_t, ElementChange>& GetElements(const GpxElementChanges& changes) {
        return changes.elements_;
    }
    static const std::map<std::uint64_t, std::uint64_t>& GetComments(const GpxElementChanges& changes) {
        return changes.comments_;
    }
    static const HeadChanges& GetHead(const GpxElementChanges& changes) { return changes.head_; }
    /// \}

    // Documents.
    static const icu::UnicodeString& GetName(const GpxDocument& document) { return document.name_; }
    static void SetName(GpxDocument& document, icu::UnicodeString name) { document.name_ = std::move(name); }
    static double GetTime(const GpxDocument& document) { return document.time_; }
    static void SetTime(GpxDocument& document, double time) { document.time_ = time; }
    /// Also a time of 0.
    static void SetAnyTime(GpxDocument& document, double time) {
        document.time_ = time;
        document.hasTime_ = true;
    }
    static const boost::shared_ptr<GISMetaData>& GetGISMetaData(const GpxDocument& document) {
        return document.gisMetaData_;
    }
    static void SetGISMetaData(GpxDocument& document, const boost::shared_ptr<GISMetaData>& record) {
        document.gisMetaData_ = record;
    }
    static const boost::shared_ptr<AnnotateMetaData>& GetAnnotateMetaData(const GpxDocument& document) {
        return document.annotateMetaData_;
    }
    static void SetAnnotateMetaData(GpxDocument& document,
                                    const boost::shared_ptr<AnnotateMetaData>& record) {
        document.annotateMetaData_ = record;
    }
    static const boost::shared_ptr<GPXStats>& GetStats(const GpxDocument& document) {
        return document.stats_;
    }
    static void SetStats(GpxDocument& document, const boost::shared_ptr<GPXStats>& record) {
        document.stats_ = record;
    }

private:
    static const GpxTrack::SegmentExtras* GetExtras(const GpxTrack& track, std::size_t index) {
        return index < track.origins_.size() ? track.origins_[index].extras.get() : nullptr;
    }

    template <class Value>
    static Value Present(Value value) {
        return value;
    }
    static const icu::UnicodeString* Present(const icu::UnicodeString* text) {
        return text != nullptr && !text->isEmpty() ? text : nullptr;
    }
    static const double* Present(const std::optional<double>* number) {
        return number != nullptr && *number ? &**number : nullptr;
    }
    template <class Value>
    static const Value* Present(const OwnedValue<Value>* holder) {
        return holder != nullptr ? holder->get() : nullptr;
    }

    static GpxPoint::RareData& MakeRare(GpxPoint& point) {
        if (!point.rare_)
            point.rare_ = std::make_unique<GpxPoint::RareData>();
        return *point.rare_;
    }
};

} // namespace vexaTransferLib
