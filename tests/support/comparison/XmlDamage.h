// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vexaTransferLib::testing_support {

enum class XmlPart { kElement, kAttribute, kText };

/// How many parts of a kind a GPX text has that are content. The root, its creator, version and schema locations,
/// empty `extensions`, and white space around elements are none.
std::size_t CountParts(std::string_view xml, XmlPart kind);

/// The text as UTF-8 without the n-th element or attribute, or with a "1" after the n-th text. With a number that
/// no part has, the same content in other bytes.
std::string Damaged(std::string_view xml, XmlPart kind, std::size_t n);

} // namespace vexaTransferLib::testing_support
