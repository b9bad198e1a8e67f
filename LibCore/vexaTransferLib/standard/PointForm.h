// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxPoint.h>
#include <vexaTransferLib/model/ChildScan.h>
#include <vexaTransferLib/model/GpxModelAccess.h>
#include <vexaTransferLib/standard/StandardWriters.h>

#include <unicode/unistr.h>

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace vexaTransferLib::standard {

/// The elements of a point in the order of the schema, without those of other programs. A link stands for itself and
/// for `url` and `urlname` of GPX 1.0.
std::span<const std::string_view> FieldsOf(GpxPointType type, bool is10);

/// How the element of a point stands in its source.
struct PointForm {
    const char* end = nullptr;   ///< the place after it
    bool isStandard = true;      ///< copied as it stands, it is in order in the output
    bool hasOtherValues = false; ///< it has more values of the model than those below
    std::optional<double> latitude;
    std::optional<double> longitude;
    std::optional<double> elevation;
    std::optional<double> time;
    /// Name, cmt, desc, src, sym and type as they stand: each is one text without references.
    std::array<std::string_view, 6> texts;

    /// True when the model has exactly these values.
    bool IsSimple(const GpxPoint& point) const;

private:
    bool HasText(std::size_t index, const icu::UnicodeString& text) const;
    bool HasTexts(const GpxModelAccess::RareData* rare) const;
};

PointForm ExamineForm(NamespaceCursor& names, const SourceText& source, const char* begin, GpxPointType type,
                      bool is10);

/// Finds among the children of a point those that WriteForeign writes.
void SortForeign(const SourceElements& children, GpxPointType type, bool is10, ForeignParts& parts);

} // namespace vexaTransferLib::standard
