// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <span>
#include <string_view>

namespace vexaTransferLib::testing_support {

/// How the content of a standard GPX element is compared.
enum class FieldForm {
    kText,    ///< exactly
    kNumber,  ///< by value
    kTime,    ///< by instant
    kBounds,  ///< its attributes by value
    kLink,    ///< as a link of GPX 1.1
    kUrl,     ///< as the address of a link
    kUrlName, ///< as the text of a link
    kEmail,   ///< its two attributes as one address
    kGroup,   ///< as an element that has fields of its own
};

struct FieldGroup;

/// Where a standard element goes in the normal form, as a path below its parent.
struct Field {
    std::string_view name;
    FieldForm form = FieldForm::kText;
    std::string_view path;
    const FieldGroup* group = nullptr;
};

/// An element with fields, such as `metadata`. What is no field of it is an extension, if it has these.
struct FieldGroup {
    std::span<const Field> fields;
    bool hasExtensions = false;
};

struct ObjectKind;

struct NamedKind {
    std::string_view name;
    const ObjectKind* kind = nullptr;
};

/// An element that is one of many with an order: the document itself, a waypoint, a track, a track point.
struct ObjectKind {
    FieldGroup group;
    std::span<const NamedKind> objects;
    bool hasPosition = false;
};

/// The entry with the name, or null.
template <class T>
const T* FindNamed(std::span<const T> entries, std::string_view name) {
    const auto entry =
        std::find_if(entries.begin(), entries.end(), [&](const T& one) { return one.name == name; });
    return entry == entries.end() ? nullptr : &*entry;
}

/// The root element. Its fields of GPX 1.0 have the places that GPX 1.1 gives them in `metadata`.
const ObjectKind& DocumentKind();

} // namespace vexaTransferLib::testing_support
