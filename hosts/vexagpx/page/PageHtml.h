// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/page/PageDocument.h>
#include <vexagpx/process/Output.h>

#include <string_view>
#include <vector>

namespace vexagpx {

/// Writes text for the content of an HTML element or an attribute in double quotes.
/// \param utf8 must be UTF-8
void WriteHtmlText(std::string_view utf8, Output& out);

/// Writes the headings and tables that the page shows with or without its script: a section for each document, in it
/// one for each path, and the waypoints.
void WritePageTables(const std::vector<PageDocument>& documents, Output& out);

} // namespace vexagpx
