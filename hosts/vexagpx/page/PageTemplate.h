// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace vexagpx {

/// page.html with its style and its script, made during the build. "{{title}}", "{{summary}}", "{{content}}" and
/// "{{data}}" mark what differs from page to page.
extern const std::string_view kPageTemplate;

} // namespace vexagpx
