// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/StandardWriters.h>

#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/model/SourceValues.h>
#include <vexaTransferLib/standard/PointForm.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/ValueText.h>

#include <cmath>
#include <optional>
#include <string>
#include <string_view>

namespace vexaTransferLib::standard {

namespace {

using Access = GpxModelAccess;
using RareData = Access::RareData;

template <class Value>
bool IsSameValue(const Value* left, const Value* right) {
    return left == nullptr || right == nullptr ? left == right : *left == *right;
}

bool IsSameLink(const GpxUrl* left, const GpxUrl* right) {
    if (left == nullptr || right == nullptr)
        return left == right;
    return Access::GetUrl(*left) == Access::GetUrl(*right) &&
           Access::GetText(*left) == Access::GetText(*right) &&
           Access::GetType(*left) == Access::GetType(*right);
}

bool IsSameForm(const GpxPoint::FormAttributes& left, const GpxPoint::FormAttributes& right) {
    if (left.size() != right.size())
        return false;
    for (auto i = left.begin(), j = right.begin(); i != left.end(); ++i, ++j)
        if (i->first != j->first || i->second->value != j->second->value ||
            i->second->modTime != j->second->modTime)
            return false;
    return true;
}

const RareData& NoRareData() {
    static const RareData kNone;
    return kNone;
}

const RareData& RareOf(const GpxPoint& point) {
    const RareData* const rare = Access::GetRareData(point);
    return rare != nullptr ? *rare : NoRareData();
}

const GpxUrl* LinkOf(const GpxPoint& point) {
    return RareOf(point).url.get();
}

bool IsSameCache(const GpxPoint& left, const GpxPoint& right) {
    const GpxGroundspeakCache* const one = RareOf(left).geocache.get();
    const GpxGroundspeakCache* const other = RareOf(right).geocache.get();
    return one == nullptr || other == nullptr ? one == other : IsSameGeocache(*one, *other);
}

bool IsSamePosition(const GpxPoint& left, const GpxPoint& right) {
    return Access::GetLatitude(left) == Access::GetLatitude(right) &&
           Access::GetLongitude(left) == Access::GetLongitude(right);
}

bool IsSame(const GpxPoint& left, const GpxPoint& right);

/// One element that a point of GPX can have, and the model's value for it.
struct Field {
    std::string_view name;
    bool (*isSame)(const GpxPoint&, const GpxPoint&);
    void (*write)(Writing&, const GpxPoint&, int depth);
};

template <icu::UnicodeString RareData::*field>
bool IsSameText(const GpxPoint& left, const GpxPoint& right) {
    return RareOf(left).*field == RareOf(right).*field;
}

void WriteNumber(Writing& writing, std::string_view name, double number, int depth) {
    if (!std::isfinite(number)) {
        writing.ReportUnwritten(name, "GPX has no place for a number that is not finite.");
        return;
    }
    writing.StartLine(depth);
    writing.Out().AppendAll("<", name, ">");
    writing.Out().AppendNumber(number);
    writing.Out().AppendAll("</", name, ">");
}

bool IsSameElevation(const GpxPoint& left, const GpxPoint& right) {
    return IsSameValue(Access::GetElevation(left), Access::GetElevation(right));
}

void WriteElevation(Writing& writing, const GpxPoint& point, int depth) {
    if (const double* const elevation = Access::GetElevation(point))
        WriteNumber(writing, gpx::kEle, *elevation, depth);
}

bool IsSameTime(const GpxPoint& left, const GpxPoint& right) {
    return IsSameValue(Access::GetTime(left), Access::GetTime(right));
}

void WriteTime(Writing& writing, const GpxPoint& point, int depth) {
    const double* const time = Access::GetTime(point);
    if (time == nullptr)
        return;
    const std::string written = text::SchemaTime(*time);
    if (written.empty())
        writing.ReportUnwritten(gpx::kTime, "GPX has no place for such a time.");
    else
        WriteAsciiElement(writing, gpx::kTime, written, depth);
}

template <std::optional<double> RareData::*field>
bool IsSameNumber(const GpxPoint& left, const GpxPoint& right) {
    return RareOf(left).*field == RareOf(right).*field;
}

void WriteVariation(Writing& writing, const GpxPoint& point, int depth) {
    if (const auto& variation = RareOf(point).magneticVariation)
        WriteNumber(writing, gpx::kMagvar, *variation, depth);
}

void WriteGeoidHeight(Writing& writing, const GpxPoint& point, int depth) {
    if (const auto& height = RareOf(point).geoidHeight)
        WriteNumber(writing, gpx::kGeoidheight, *height, depth);
}

bool IsSameFix(const GpxPoint& left, const GpxPoint& right) {
    return Access::GetRawFix(left) == Access::GetRawFix(right);
}

void WriteFix(Writing& writing, const GpxPoint& point, int depth) {
    const std::size_t fix = Access::GetRawFix(point);
    if (fix != 0 && fix < text::kFixTexts.size())
        WriteAsciiElement(writing, gpx::kFix, text::kFixTexts[fix], depth);
}

template <icu::UnicodeString RareData::*field, const text::ElementName& name>
void WriteText(Writing& writing, const GpxPoint& point, int depth) {
    const icu::UnicodeString& text = RareOf(point).*field;
    if (!text.isEmpty())
        WriteTextElement(writing, name, text, depth);
}

constexpr Field kFields[] = {
    {gpx::kEle, IsSameElevation, WriteElevation},
    {gpx::kTime, IsSameTime, WriteTime},
    {gpx::kMagvar, IsSameNumber<&RareData::magneticVariation>, WriteVariation},
    {gpx::kGeoidheight, IsSameNumber<&RareData::geoidHeight>, WriteGeoidHeight},
    {gpx::kName, IsSameText<&RareData::name>, WriteText<&RareData::name, gpx::kName>},
    {gpx::kCmt, IsSameText<&RareData::comment>, WriteText<&RareData::comment, gpx::kCmt>},
    {gpx::kDesc, IsSameText<&RareData::description>, WriteText<&RareData::description, gpx::kDesc>},
    {gpx::kSrc, IsSameText<&RareData::source>, WriteText<&RareData::source, gpx::kSrc>},
    {gpx::kSym, IsSameText<&RareData::symbol>, WriteText<&RareData::symbol, gpx::kSym>},
    {gpx::kType, IsSameText<&RareData::type>, WriteText<&RareData::type, gpx::kType>},
    {gpx::kFix, IsSameFix, WriteFix},
};

const Field* FindField(std::string_view name) {
    for (const Field& field : kFields)
        if (field.name == name)
            return &field;
    return nullptr;
}

bool IsSameVendorData(const GpxPoint& left, const GpxPoint& right) {
    return Access::GetRawRoutePointType(left) == Access::GetRawRoutePointType(right) &&
           RareOf(left).symbolNumber == RareOf(right).symbolNumber &&
           RareOf(left).guid == RareOf(right).guid &&
           IsSameForm(RareOf(left).formAttributes, RareOf(right).formAttributes) && IsSameCache(left, right);
}

bool IsSame(const GpxPoint& left, const GpxPoint& right) {
    if (!IsSamePosition(left, right))
        return false;
    for (const Field& field : kFields)
        if (!field.isSame(left, right))
            return false;
    return IsSameLink(LinkOf(left), LinkOf(right)) && IsSameVendorData(left, right);
}

void StartPoint(Writing& writing, const GpxPoint& point, const SourceElement& element, bool isAsRead) {
    PieceOutput& out = writing.Out();
    out.AppendAll("<", text::kPointElementNames[Access::GetRawPointType(point)]);
    if (!isAsRead) {
        out.Append(" lat=\"");
        out.AppendNumber(Access::GetLatitude(point));
        out.Append("\" lon=\"");
        out.AppendNumber(Access::GetLongitude(point));
        out.Append("\"");
    }
    if (element.source != nullptr)
        CopyAttributes(writing, element, [&](std::string_view name) {
            return !isAsRead && (name == gpx::kLat || name == gpx::kLon);
        });
}

void WriteForm(Writing& writing, const GpxPoint::FormAttributes& form, int depth) {
    PieceOutput& out = writing.Out();
    writing.StartLine(depth);
    out.AppendAll("<", tarvik::kFormdata, " xmlns:tarvik=\"", text::kTarvikUri, "\">");
    for (const auto& [key, record] : form) {
        if (key.isEmpty()) {
            writing.ReportUnwritten(tarvik::kFormstring.Local(), "A form has no place for an empty key.");
            continue;
        }
        writing.StartLine(depth + 1);
        out.AppendAll("<", tarvik::kFormstring, " ", tarvik::kKey, "=\"");
        out.AppendEscaped(key, PieceOutput::Place::kAttribute);
        const std::string time = record->modTime != 0.0 ? text::SchemaTime(record->modTime) : std::string();
        if (!time.empty())
            out.AppendAll("\" ", tarvik::kModtime, "=\"", time);
        out.Append("\">");
        out.AppendEscaped(record->value, PieceOutput::Place::kContent);
        out.AppendAll("</", tarvik::kFormstring, ">");
    }
    writing.StartLine(depth);
    out.AppendAll("</", tarvik::kFormdata, ">");
}

void WriteVendorText(Writing& writing, std::string_view name, const icu::UnicodeString& text, int depth) {
    PieceOutput& out = writing.Out();
    writing.StartLine(depth);
    out.AppendAll("<", name, " xmlns:tarvik=\"", text::kTarvikUri, "\">");
    out.AppendEscaped(text, PieceOutput::Place::kContent);
    out.AppendAll("</", name, ">");
}

/// The vendor's elements and the geocache of a point that are not as they were read.
class PointExtensions {
public:
    PointExtensions(Writing& writing, const GpxPoint& point, const GpxPoint* read)
        : writing_(writing), point_(point), rare_(RareOf(point)),
          readRare_(read != nullptr ? RareOf(*read) : NoRareData()),
          routePointType_(read != nullptr ? Access::GetRawRoutePointType(*read) : 0),
          newCache_(read != nullptr ? !IsSameCache(point, *read) : rare_.geocache != nullptr) {}

    bool IsReplaced(const ScannedChild& child) const {
        const std::string_view name = child.name;
        if (child.kind == NamespaceKind::kGroundspeak)
            return newCache_ && name == groundspeak::kCache.Local();
        if (child.kind == NamespaceKind::kOther)
            return false;
        return (name == tarvik::kFormdata.Local() && IsNewForm()) ||
               (name == tarvik::kTovasymbol.Local() && IsNewSymbol()) ||
               (name == tarvik::kObjectid.Local() && IsNewIdentifier()) ||
               (name == tarvik::kRoutePointType.Local() && IsNewRoutePointType());
    }
    bool HasNew() const {
        return (IsNewRoutePointType() && Access::GetRawRoutePointType(point_) != 0) ||
               (IsNewForm() && !rare_.formAttributes.empty()) || (IsNewSymbol() && rare_.symbolNumber > 0) ||
               (IsNewIdentifier() && !rare_.guid.isEmpty()) || (newCache_ && rare_.geocache != nullptr);
    }
    void WriteNew(int depth) const {
        const std::size_t type = Access::GetRawRoutePointType(point_);
        if (IsNewRoutePointType() && type != 0 && type < text::kRoutePointTypeTexts.size())
            WriteVendorText(writing_, tarvik::kRoutePointType, Unicode(text::kRoutePointTypeTexts[type]),
                            depth);
        if (IsNewForm() && !rare_.formAttributes.empty())
            WriteForm(writing_, rare_.formAttributes, depth);
        if (IsNewSymbol() && rare_.symbolNumber > 0)
            WriteVendorText(writing_, tarvik::kTovasymbol, Unicode(std::to_string(rare_.symbolNumber)),
                            depth);
        if (IsNewIdentifier() && !rare_.guid.isEmpty())
            WriteVendorText(writing_, tarvik::kObjectid, rare_.guid, depth);
        if (newCache_ && rare_.geocache != nullptr)
            WriteGeocache(writing_, *rare_.geocache, depth);
    }

private:
    static icu::UnicodeString Unicode(std::string_view ascii) {
        return icu::UnicodeString::fromUTF8(icu::StringPiece(ascii.data(), static_cast<int>(ascii.size())));
    }
    bool IsNewForm() const { return !IsSameForm(rare_.formAttributes, readRare_.formAttributes); }
    bool IsNewSymbol() const { return rare_.symbolNumber != readRare_.symbolNumber; }
    bool IsNewIdentifier() const { return rare_.guid != readRare_.guid; }
    bool IsNewRoutePointType() const { return Access::GetRawRoutePointType(point_) != routePointType_; }

    Writing& writing_;
    const GpxPoint& point_;
    const RareData& rare_;
    const RareData& readRare_;
    std::size_t routePointType_;
    bool newCache_;
};

void WriteField(Writing& writing, const SourceElements& children, const Field& field, const GpxPoint& point,
                bool isAsRead, int depth) {
    bool isFirst = true;
    if (!isAsRead)
        field.write(writing, point, depth);
    for (const SourceElement& child : children) {
        if (!child.child.IsGpx(field.name))
            continue;
        if (isAsRead || !isFirst) {
            writing.StartLine(depth);
            CopyElement(writing, child);
        }
        isFirst = false;
    }
}

void CopyAll(Writing& writing, const SourceElements& children, std::string_view name, int depth) {
    for (const SourceElement& child : children) {
        if (!child.child.IsGpx(name))
            continue;
        writing.StartLine(depth);
        CopyElement(writing, child);
    }
}

// GPX 1.0 has a place for speed and course, which GPX 1.1 has in `extensions`.
void TakeOnlyIn10(Writing& writing, SourceElements& children) {
    const std::size_t count = children.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (!children[i].child.IsGpx(gpx::kExtensions))
            continue;
        for (const SourceElement& child : writing.ChildrenOf(children[i]))
            if (IsOnlyIn10(child.child))
                children.push_back(child);
    }
}

} // namespace

// A point is written anew when it was changed, or when its element is not as the output must have it.
void PointWriter::Write(const GpxPoint& point) {
    const SourceText* const source = Access::GetSource(point);
    writing_.StartLine(depth_);
    if (source == nullptr) {
        WriteAnew(point, {});
        return;
    }
    const char* const begin = source->At(Access::GetPlace(point));
    if (source == writing_.MainSource()) {
        NamespaceCursor& names = writing_.NamesOf(*source);
        const PointForm form = ExamineForm(names, *source, begin, type_, writing_.Is10());
        if (form.isStandard && form.IsSimple(point)) {
            writing_.Out().Append({begin, static_cast<std::size_t>(form.end - begin)});
            return;
        }
        if (form.isStandard && IsAsRead(point, {source, ScanChild(names, *source, begin), form.end})) {
            writing_.Out().Append({begin, static_cast<std::size_t>(form.end - begin)});
            return;
        }
    }
    WriteAnew(point, writing_.ElementAt(*source, begin));
}

bool PointWriter::IsAsRead(const GpxPoint& point, const SourceElement& element) {
    read_.clear();
    complete::ReadPoint(writing_.ContextOf(*element.source), element.child, type_, read_);
    return !read_.empty() && IsSame(point, read_.front());
}

void PointWriter::WriteAnew(const GpxPoint& point, const SourceElement& element) {
    const GpxPoint* read = nullptr;
    if (element.source != nullptr) {
        IsAsRead(point, element);
        read = read_.empty() ? nullptr : &read_.front();
    }
    StartPoint(writing_, point, element, read != nullptr && IsSamePosition(point, *read));
    SourceElements children = writing_.ChildrenOf(element);
    const bool hasOnlyIn10 = writing_.Is10() && type_ == kGpxTrackPoint;
    if (hasOnlyIn10)
        TakeOnlyIn10(writing_, children);
    const std::size_t before = writing_.Out().Count();
    writing_.Out().Append(">");
    const int depth = depth_ + 1;
    for (const std::string_view name : FieldsOf(type_, writing_.Is10())) {
        if (name == gpx::kLink)
            WriteLinks(writing_, children, LinkOf(point),
                       read != nullptr && IsSameLink(LinkOf(point), LinkOf(*read)), depth);
        else if (const Field* const field = FindField(name))
            WriteField(writing_, children, *field, point, read != nullptr && field->isSame(point, *read),
                       depth);
        else
            CopyAll(writing_, children, name, depth);
    }
    const PointExtensions extensions(writing_, point, read);
    ForeignParts parts;
    SortForeign(children, type_, writing_.Is10(), parts);
    parts.isReplaced = [&](const ScannedChild& child) {
        return extensions.IsReplaced(child) || (hasOnlyIn10 && IsOnlyIn10(child));
    };
    if (extensions.HasNew())
        parts.writeNew = [&](int inner) { extensions.WriteNew(inner); };
    WriteForeign(writing_, parts, depth);
    if (writing_.Out().Count() != before + 1)
        writing_.StartLine(depth_);
    writing_.Out().AppendAll("</", text::kPointElementNames[static_cast<std::size_t>(type_)], ">");
}

} // namespace vexaTransferLib::standard
