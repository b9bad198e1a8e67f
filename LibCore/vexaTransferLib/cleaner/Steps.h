// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/unistr.h>

// The steps of CleanText, in the order of CleanWebTextForTova, which runs HTMLToPlainText, StripBBCode and
// CleanPlainTextForTova. A step that runs more than once has its declaration where it runs first.
//
// A step rewrites the text in place. It returns false when there is no memory for its result; the text is then
// unchanged.

namespace vexaTransferLib::cleaner {

// HTMLToPlainText. HtmlElements.cpp, HtmlTags.cpp, CharacterReferences.cpp, Whitespace.cpp

/// Removes the comments. A comment starts with "<!--" and contains at least one character; it ends with the next
/// "--" that is followed by ">", with or without white space between them.
[[nodiscard]] bool RemoveComments(icu::UnicodeString& text);

/// Removes the elements whose name starts with "style" or "script", with their content. An element ends with
/// the first closing tag whose name starts with the same word.
[[nodiscard]] bool RemoveStylesAndScripts(icu::UnicodeString& text);

/// Replaces every run of tabs by one space.
[[nodiscard]] bool ReplaceTabs(icu::UnicodeString& text);

/// Replaces the tags that open a block by paragraph breaks. As in ReplaceBreakTags names match as prefixes
/// ("<param>" opens a block as "<p>" does), and a tag extends from its name to the next ">".
[[nodiscard]] bool ReplaceBlockTags(icu::UnicodeString& text);

/// Replaces the tags that break a line by line breaks.
[[nodiscard]] bool ReplaceBreakTags(icu::UnicodeString& text);

/// Removes all other tags: everything from a "<" to a ">" that has no other angle bracket in it.
[[nodiscard]] bool RemoveTags(icu::UnicodeString& text);

/// Replaces every decimal reference of 1 to 10 digits and every hexadecimal one of 1 to 8 digits by
/// CharacterFor its number. The digits may be of any script; the first one that is not ASCII ends the number,
/// and a reference without a number is removed.
[[nodiscard]] bool ReplaceNumericReferences(icu::UnicodeString& text);

/// The replacement for a code point, see CleanText::GetCharReplacementString. Not a step of its own.
icu::UnicodeString CharacterFor(int codePoint);

/// Replaces the eight named references. Their names are case-sensitive.
[[nodiscard]] bool ReplaceNamedReferences(icu::UnicodeString& text);

/// Removes every CR that is not followed by LF.
[[nodiscard]] bool RemoveLoneCarriageReturns(icu::UnicodeString& text);

/// Inserts a CR in front of every LF that has none.
[[nodiscard]] bool CompleteLineFeeds(icu::UnicodeString& text);

/// Removes the runs of spaces at the start and the end of every line. Each of CR, LF, VT, FF, U+0085, U+2028
/// and U+2029 ends a line. Also a step of CleanPlainTextForTova.
[[nodiscard]] bool TrimLines(icu::UnicodeString& text);

/// Replaces every run of spaces by one space. Also a step of CleanPlainTextForTova, as is ReplaceTabs.
[[nodiscard]] bool CollapseSpaces(icu::UnicodeString& text);

/// Replaces every run of more than two CR LF by two.
[[nodiscard]] bool CollapseLineBreaks(icu::UnicodeString& text);

// StripBBCode. BBCode.cpp

/// Removes the tags of BBCode: "[name]" and "[name=parameter]", with or without "/" in front of the name. The
/// parameter is not empty.
[[nodiscard]] bool RemoveBBCodeTags(icu::UnicodeString& text);

// CleanPlainTextForTova, after TrimLines. Punctuation.cpp, Whitespace.cpp

/// Replaces every ellipsis by three dots.
[[nodiscard]] bool ReplaceEllipses(icu::UnicodeString& text);

/// Replaces curly single quotes by straight ones.
[[nodiscard]] bool StraightenSingleQuotes(icu::UnicodeString& text);

/// Replaces curly double quotes by straight ones.
[[nodiscard]] bool StraightenDoubleQuotes(icu::UnicodeString& text);

/// Replaces every en dash by one hyphen, every em dash by two.
[[nodiscard]] bool ReplaceDashes(icu::UnicodeString& text);

// Here ReplaceTabs and CollapseSpaces run again.

/// Removes the run of spaces at the start of the text and the one at its end. A single line end may follow the
/// latter; it stays.
[[nodiscard]] bool TrimText(icu::UnicodeString& text);

} // namespace vexaTransferLib::cleaner
