// SPDX-License-Identifier: MIT
#include <vexagpx/export/ElementProperties.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace vexagpx {

using vexaTransferLib::GpxElement;

namespace {

constexpr int kMostLevels = 4;

// Whole numbers beyond this one are not exact in a double.
constexpr double kMostExact = 9007199254740992.0;

Value ValueOf(const GpxElement& element, ElementField::Kind kind) {
    if (kind == ElementField::Kind::kText)
        return element.GetText();
    const std::optional<double> number = element.GetNumber();
    if (!number || !std::isfinite(*number))
        return element.GetText().trim();
    const bool isCount = *number >= 0.0 && *number <= kMostExact && std::floor(*number) == *number;
    if (kind == ElementField::Kind::kCount && isCount)
        return static_cast<std::uint64_t>(*number);
    return *number;
}

std::uint64_t CountValues(const GpxElement& element, int levels) {
    std::uint64_t values = element.GetAttributes().size();
    const GpxElement first = element.GetFirstChild();
    if (!first || levels == 0)
        return values + (element.GetText().trim().isEmpty() ? 0 : 1);
    for (GpxElement child = first; child; child = child.GetNextSibling())
        values += CountValues(child, levels - 1);
    return values;
}

} // namespace

bool TakeElement(const GpxElement& element, const ElementField* begin, const ElementField* end,
                 Properties& properties) {
    const ElementField* const found = std::find_if(
        begin, end, [name = element.GetName()](const ElementField& field) { return field.element == name; });
    if (found == end)
        return false;
    if (!properties.Has(found->field))
        properties.Add(found->field, ValueOf(element, found->kind));
    return true;
}

std::uint64_t CountValues(const GpxElement& element) {
    return CountValues(element, kMostLevels);
}

bool IsForeign(const GpxElement& child, std::string_view objectNameSpace) {
    return child.GetName() == "extensions" || child.GetNamespace() != objectNameSpace;
}

} // namespace vexagpx
