// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/unistr.h>

// Each step is false when there is no memory for its result; the text is then unchanged.

namespace vexaTransferLib::cleaner {

/// Every run of tabs becomes one space.
[[nodiscard]] bool ReplaceTabs(icu::UnicodeString& text);

/// Every run of spaces becomes one space.
[[nodiscard]] bool CollapseSpaces(icu::UnicodeString& text);

/// Removes the runs of spaces at the begin and the end of every line. Each of CR, LF, VT, FF, U+0085, U+2028
/// and U+2029 ends a line.
[[nodiscard]] bool TrimLines(icu::UnicodeString& text);

/// Removes the runs of spaces at the begin and the end of the text, the latter also before a line end that is
/// the text's last.
[[nodiscard]] bool TrimText(icu::UnicodeString& text);

/// Removes every CR that no LF follows.
[[nodiscard]] bool RemoveLoneCarriageReturns(icu::UnicodeString& text);

/// Gives every LF a CR in front of it that has none.
[[nodiscard]] bool CompleteLineFeeds(icu::UnicodeString& text);

/// Leaves two of every longer run of CR LF.
[[nodiscard]] bool CollapseLineBreaks(icu::UnicodeString& text);

} // namespace vexaTransferLib::cleaner
