// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/unistr.h>

#include <string_view>

namespace vexaTransferLib {

// Names and texts of the elements in well-formed XML in UTF-8.

/// \{
/// The parts of a qualified name; the prefix may be empty.
std::string_view PrefixOf(std::string_view name);
std::string_view LocalNameOf(std::string_view name);
/// \}

/// True for the name of an attribute that declares a namespace.
bool IsDeclaration(std::string_view name);

/// The value of an attribute as a reader of XML gets it.
/// \param raw as it stands, without its quotes
/// \throws std::bad_alloc
icu::UnicodeString DecodedValue(std::string_view raw);

/// All text in an element and in its descendants, in their order, as a reader of XML gets it. The stack does not grow
/// with the depth of the element.
/// \param tag the element's "<"
/// \throws std::bad_alloc
icu::UnicodeString ContentText(const char* tag);

} // namespace vexaTransferLib
