// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/PointFields.h>

#include <vexaTransferLib/standard/StandardWriters.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/ValueText.h>

#include <cmath>
#include <cstddef>
#include <optional>
#include <string>

namespace vexaTransferLib::standard {

using Access = GpxModelAccess;
using RareData = Access::RareData;

const RareData& NoRareData() {
    static const RareData kNone;
    return kNone;
}

const RareData& RareOf(const GpxPoint& point) {
    const RareData* const rare = Access::GetRareData(point);
    return rare != nullptr ? *rare : NoRareData();
}

bool IsSamePosition(const GpxPoint& left, const GpxPoint& right) {
    return Access::GetLatitude(left) == Access::GetLatitude(right) &&
           Access::GetLongitude(left) == Access::GetLongitude(right);
}

bool IsSameLink(const GpxUrl* left, const GpxUrl* right) {
    return left == nullptr || right == nullptr ? left == right : *left == *right;
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

bool IsSameCache(const GpxPoint& left, const GpxPoint& right) {
    const GpxGroundspeakCache* const one = RareOf(left).geocache.get();
    const GpxGroundspeakCache* const other = RareOf(right).geocache.get();
    return one == nullptr || other == nullptr ? one == other : *one == *other;
}

namespace {

template <class Value>
bool IsSameValue(const Value* left, const Value* right) {
    return left == nullptr || right == nullptr ? left == right : *left == *right;
}

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

template <std::optional<double> RareData::*field, const text::ElementName& name>
void WriteRareNumber(Writing& writing, const GpxPoint& point, int depth) {
    if (const std::optional<double>& number = RareOf(point).*field)
        WriteNumber(writing, name, *number, depth);
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

constexpr PointField kFields[] = {
    {gpx::kEle, IsSameElevation, WriteElevation},
    {gpx::kTime, IsSameTime, WriteTime},
    {gpx::kMagvar, IsSameNumber<&RareData::magneticVariation>,
     WriteRareNumber<&RareData::magneticVariation, gpx::kMagvar>},
    {gpx::kGeoidheight, IsSameNumber<&RareData::geoidHeight>,
     WriteRareNumber<&RareData::geoidHeight, gpx::kGeoidheight>},
    {gpx::kName, IsSameText<&RareData::name>, WriteText<&RareData::name, gpx::kName>},
    {gpx::kCmt, IsSameText<&RareData::comment>, WriteText<&RareData::comment, gpx::kCmt>},
    {gpx::kDesc, IsSameText<&RareData::description>, WriteText<&RareData::description, gpx::kDesc>},
    {gpx::kSrc, IsSameText<&RareData::source>, WriteText<&RareData::source, gpx::kSrc>},
    {gpx::kSym, IsSameText<&RareData::symbol>, WriteText<&RareData::symbol, gpx::kSym>},
    {gpx::kType, IsSameText<&RareData::type>, WriteText<&RareData::type, gpx::kType>},
    {gpx::kFix, IsSameFix, WriteFix},
};

bool HasSameVendorValues(const GpxPoint& left, const GpxPoint& right) {
    return Access::GetRawRoutePointType(left) == Access::GetRawRoutePointType(right) &&
           RareOf(left).symbolNumber == RareOf(right).symbolNumber &&
           RareOf(left).guid == RareOf(right).guid &&
           IsSameForm(RareOf(left).formAttributes, RareOf(right).formAttributes) && IsSameCache(left, right);
}

} // namespace

const PointField* FindPointField(std::string_view name) {
    for (const PointField& field : kFields)
        if (field.name == name)
            return &field;
    return nullptr;
}

bool HasSameValues(const GpxPoint& left, const GpxPoint& right) {
    if (!IsSamePosition(left, right))
        return false;
    for (const PointField& field : kFields)
        if (!field.isSame(left, right))
            return false;
    return IsSameLink(LinkOf(left), LinkOf(right)) && HasSameVendorValues(left, right);
}

} // namespace vexaTransferLib::standard
