// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/repair/RepairLog.h>
#include <vexagpx/repair/StartTag.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace vexagpx {

inline constexpr std::string_view kRootNamespace11 = "http://www.topografix.com/GPX/1/1";

/// The part of a name before the colon; empty when there is none.
std::string_view PrefixOfName(std::string_view name);
/// The part of a name behind the colon.
std::string_view LocalPartOf(std::string_view name);

/// Gives the root the version and the namespace that it lacks, and corrects those that are none of GPX.
/// \param offset of the tag, for the log
void RepairRoot(StartTag& tag, std::size_t offset, RepairLog& log);

/// The namespace that is declared for a prefix that has none.
std::string NamespaceForPrefix(const std::string& prefix);

} // namespace vexagpx
