// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::testing_support {

/// The errors of the text by an XML Schema, a line for each, or nothing when it is valid. Nothing is fetched: the
/// schema locations of the text are ignored. Throws std::runtime_error when the text is not well-formed or the
/// schema cannot be used.
std::optional<std::string> ValidateAgainst(std::string_view xml, const std::string& schemaFile);

/// Writes a schema "all.xsd" into the folder that imports the given ones, and returns its path. The wildcards of
/// GPX 1.0 demand that each foreign element is declared somewhere: elements of `xml` in namespaces that no schema
/// is for are declared with any content.
std::string WriteCombinedSchema(const std::filesystem::path& folder,
                                const std::vector<std::filesystem::path>& schemas, std::string_view xml = {});

} // namespace vexaTransferLib::testing_support
