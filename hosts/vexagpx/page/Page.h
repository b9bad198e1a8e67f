// SPDX-License-Identifier: MIT
#pragma once

#include <vexagpx/page/PageDocument.h>
#include <vexagpx/process/Output.h>

#include <vector>

namespace vexagpx {

/// Writes a page of HTML that shows the documents in a browser: a map and a profile that the script of the page draws,
/// and the tables of figures. It needs no network, and its policy forbids it any.
void WritePage(const std::vector<PageDocument>& documents, Output& out);

} // namespace vexagpx
