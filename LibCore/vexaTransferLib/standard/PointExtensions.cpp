// SPDX-License-Identifier: MIT
#include <vexaTransferLib/standard/PointExtensions.h>

#include <vexaTransferLib/standard/StandardWriters.h>
#include <vexaTransferLib/text/ElementNames.h>
#include <vexaTransferLib/text/GpxNames.h>
#include <vexaTransferLib/text/ValueText.h>

#include <string>
#include <string_view>

namespace vexaTransferLib::standard {

using Access = GpxModelAccess;

namespace {

icu::UnicodeString Unicode(std::string_view ascii) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(ascii.data(), static_cast<int>(ascii.size())));
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

} // namespace

PointExtensions::PointExtensions(Writing& writing, const GpxPoint& point, const GpxPoint* read)
    : writing_(writing), point_(point), rare_(RareOf(point)),
      readRare_(read != nullptr ? RareOf(*read) : NoRareData()),
      routePointType_(read != nullptr ? Access::GetRawRoutePointType(*read) : 0),
      hasNewCache_(read != nullptr ? !IsSameCache(point, *read) : rare_.geocache != nullptr) {}

bool PointExtensions::IsReplaced(const ScannedChild& child) const {
    const std::string_view name = child.name;
    if (child.kind == NamespaceKind::kGroundspeak)
        return hasNewCache_ && name == groundspeak::kCache.Local();
    if (child.kind == NamespaceKind::kOther)
        return false;
    return (name == tarvik::kFormdata.Local() && IsNewForm()) ||
           (name == tarvik::kTovasymbol.Local() && IsNewSymbol()) ||
           (name == tarvik::kObjectid.Local() && IsNewIdentifier()) ||
           (name == tarvik::kRoutePointType.Local() && IsNewRoutePointType());
}

bool PointExtensions::HasNew() const {
    return (IsNewRoutePointType() && Access::GetRawRoutePointType(point_) != 0) ||
           (IsNewForm() && !rare_.formAttributes.empty()) || (IsNewSymbol() && rare_.symbolNumber > 0) ||
           (IsNewIdentifier() && !rare_.guid.isEmpty()) || (hasNewCache_ && rare_.geocache != nullptr);
}

void PointExtensions::WriteNew(int depth) const {
    const std::size_t type = Access::GetRawRoutePointType(point_);
    if (IsNewRoutePointType() && type != 0 && type < text::kRoutePointTypeTexts.size())
        WriteVendorText(writing_, tarvik::kRoutePointType, Unicode(text::kRoutePointTypeTexts[type]), depth);
    if (IsNewForm() && !rare_.formAttributes.empty())
        WriteForm(writing_, rare_.formAttributes, depth);
    if (IsNewSymbol() && rare_.symbolNumber > 0)
        WriteVendorText(writing_, tarvik::kTovasymbol, Unicode(std::to_string(rare_.symbolNumber)), depth);
    if (IsNewIdentifier() && !rare_.guid.isEmpty())
        WriteVendorText(writing_, tarvik::kObjectid, rare_.guid, depth);
    if (hasNewCache_ && rare_.geocache != nullptr)
        WriteGeocache(writing_, *rare_.geocache, depth);
}

} // namespace vexaTransferLib::standard
