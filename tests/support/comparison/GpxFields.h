// SPDX-License-Identifier: MIT
#pragma once

#include <map>
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
    FieldForm form = FieldForm::kText;
    std::string_view path;
    const FieldGroup* group = nullptr;
};

using Fields = std::map<std::string_view, Field>;

/// An element with fields, such as `metadata`. What is no field of it is an extension, if it has these.
struct FieldGroup {
    Fields fields;
    bool hasExtensions = false;
};

/// An element that is one of many with an order: the document itself, a waypoint, a track, a track point.
struct ObjectKind {
    FieldGroup group;
    /// The objects in it, by their names.
    std::map<std::string_view, const ObjectKind*> objects;
    bool hasPosition = false;
};

/// The root element. Its fields of GPX 1.0 have the places that GPX 1.1 gives them in `metadata`.
const ObjectKind& DocumentKind();

} // namespace vexaTransferLib::testing_support
