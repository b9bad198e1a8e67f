// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// A holder owns at most one value: `std::optional` where the value is small and common, `std::unique_ptr` or
/// `OwnedValue` elsewhere. Here are `OwnedValue` and the operations on all three. A holder shares its value with no
/// other: these operations copy the value itself.

#include <memory>
#include <optional>

namespace vexaTransferLib {

/// A `std::unique_ptr` whose copy owns a copy of the value, so that a class with such a member needs no copy
/// constructor of its own. A copy that throws leaves both holders unchanged; moves do not throw.
template <class T>
class OwnedValue : public std::unique_ptr<T> {
public:
    /// Owns nothing.
    OwnedValue() = default;
    /// \{
    /// Copies are deep; a holder that was moved from owns nothing.
    OwnedValue(const OwnedValue& other)
        : std::unique_ptr<T>(other ? std::make_unique<T>(*other) : std::unique_ptr<T>()) {}
    OwnedValue(OwnedValue&&) noexcept = default;
    OwnedValue& operator=(const OwnedValue& other) { return *this = OwnedValue(other); }
    OwnedValue& operator=(OwnedValue&&) noexcept = default;
    using std::unique_ptr<T>::operator=;
    /// \}
    ~OwnedValue() = default;
};

/// \{
/// Returns false and leaves \p out unchanged when the holder is empty; otherwise assigns the holder's value to
/// \p out.
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
/// Assigns to the holder's object when there is one (no new object is made), otherwise makes the holder own a
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
