// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/export/LeftOut.h>
#include <vexagpx/export/Properties.h>

#include <vexaTransferLib/GpxElement.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace vexagpx {

/// An element whose text is a property.
struct ElementField {
    enum class Kind { kText, kNumber, kCount };

    std::string_view element; ///< its local name
    Field field;
    Kind kind;
};

/// Adds the value of the element when the table has it. A text that is no number is added as it is.
/// \return whether the table has it
bool TakeElement(const vexaTransferLib::GpxElement& element, const ElementField* begin,
                 const ElementField* end, Properties& properties);

template <class Table>
bool TakeElement(const vexaTransferLib::GpxElement& element, const Table& table, Properties& properties) {
    return TakeElement(element, std::begin(table), std::end(table), properties);
}

/// How many values an element has: its attributes and texts, and those of the elements in it. Declarations of
/// namespaces and blanks are none.
std::uint64_t CountValues(const vexaTransferLib::GpxElement& element);

/// True for `extensions`, and for an element that is in another namespace than the object that has it.
bool IsForeign(const vexaTransferLib::GpxElement& child, std::string_view objectNameSpace);

} // namespace vexagpx
