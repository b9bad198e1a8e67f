// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Operations on a holder that owns at most one value: `std::optional` where the value is small and common,
/// `std::unique_ptr` elsewhere. A holder's value is its own: copying through these is always deep.

#include <memory>
#include <optional>

namespace vexaTransferLib {

/// \{
/// False, and \p out untouched, when the holder is empty; otherwise assigns the held value to \p out.
template <class T>
bool GetAutoPtrValue(T& out, const std::unique_ptr<T>& holder) {
    if (!holder)
        return false;
    out = *holder;
    return true;
}

template <class T>
bool GetAutoPtrValue(T& out, const std::optional<T>& holder) {
    if (!holder)
        return false;
    out = *holder;
    return true;
}
/// \}

/// \{
/// Assigns to the held object when there is one (no new object is made), otherwise makes the holder own a
/// copy.
template <class T>
void SetAutoPtrValue(std::unique_ptr<T>& holder, const T& value) {
    if (holder)
        *holder = value;
    else
        holder = std::make_unique<T>(value);
}

template <class T>
void SetAutoPtrValue(std::optional<T>& holder, const T& value) {
    if (holder)
        *holder = value;
    else
        holder.emplace(value);
}
/// \}

/// \{
/// Empties \p target when \p source is empty, otherwise sets it to a copy of the source's value.
template <class T>
void AssignAutoPtrValue(std::unique_ptr<T>& target, const std::unique_ptr<T>& source) {
    if (source)
        SetAutoPtrValue(target, *source);
    else
        target.reset();
}

template <class T>
void AssignAutoPtrValue(std::optional<T>& target, const std::optional<T>& source) {
    if (source)
        SetAutoPtrValue(target, *source);
    else
        target.reset();
}
/// \}

} // namespace vexaTransferLib
