// SPDX-License-Identifier: MIT
#pragma once

namespace vexagpx {

/// True when this descriptor is a terminal, and the locale of the environment does not have the characters of UTF-8, as
/// "C" has not. Text for a person is then written in ASCII.
bool ShowsOnlyAscii(int fd);

} // namespace vexagpx
