// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Turns the HTML and BBCode of geocache texts into plain text.

#include <common/Export.h>

#include <boost/scoped_ptr.hpp>
#include <unicode/regex.h>
#include <unicode/unistr.h>

namespace vexaTransferLib {

/// Makes texts fit for the vendor's Tova products: printable characters, CR LF line breaks, single spaces, no
/// markup.
///
/// Making a cleaner costs nothing and never throws. A cleaner serves any number of texts; it carries no state
/// from one text to the next. One cleaner serves one thread at a time; it can be neither copied nor moved.
///
/// All operations rewrite the caller's text in place. All but RegexReplaceAll scan the text, without regular
/// expressions: their time grows with the length of the text, whatever is in it. They fail only when there is no
/// memory for the result of a step: with a `std::bad_alloc` where the step replaces named references, dashes or
/// ellipses, with a `dbc::postcondition_error` in every other step. The text is then as the steps before left it.
/// A step that has nothing to do needs no memory.
///
///     CleanText cleaner;
///     icu::UnicodeString text(u"<p>Hello&nbsp;&amp; [b]welcome[/b]</p>");
///     cleaner.CleanWebTextForTova(text); // CR LF CR LF "Hello & welcome"
class VEXATRANSFERLIB_API CleanText {
public:
    CleanText();
    ~CleanText() = default;
    CleanText(const CleanText&) = delete;
    CleanText& operator=(const CleanText&) = delete;

    /// Cleans web text completely: HTMLToPlainText, StripBBCode, then CleanPlainTextForTova. After a failure the
    /// later ones do not run.
    /// \throws what these three throw
    void CleanWebTextForTova(icu::UnicodeString& text);

    /// Removes comments, style and script elements with their content, and all tags. Tags that open a block become
    /// paragraph breaks, tags that break a line become line breaks, and character references become characters.
    /// At most one empty line remains between paragraphs. Element names match as prefixes ("<param>" opens a block
    /// as "<p>" does).
    /// \throws dbc::postcondition_error "The HTML could not be converted to plain text because a replace
    ///         operation failed." or the message of a step: "Unable to replace tab characters.", "Unable to
    ///         remove leading and trailing spaces.", "Unable to remove redundant spaces.", "Unable to remove
    ///         extra line breaks.", and those of ReplaceHTMLSymbols and ConvertToDosLineBreaks
    void HTMLToPlainText(icu::UnicodeString& text);

    /// Removes the tags of BBCode and keeps their content. A tag with an empty parameter ("[color=]") stays.
    /// \throws dbc::postcondition_error "Unable to replace the BBCode inside a string."; the text is then
    ///         unchanged
    void StripBBCode(icu::UnicodeString& text);

    /// Replaces typographic quotes, dashes and ellipses by ASCII, tabs by spaces, and runs of spaces by one space.
    /// No space is left at the start or the end of the text. A line that started with a tab keeps one leading
    /// space.
    /// \throws dbc::postcondition_error "Unable to remove leading and trailing spaces.", "Unable to replace
    ///         single quotes.", "Unable to replace double quotes.", "Unable to replace tab characters.",
    ///         "Unable to remove redundant spaces.", "Unable to trim spaces."
    void CleanPlainTextForTova(icu::UnicodeString& text);

    /// Makes every line break CR LF. A CR that is not followed by LF is deleted; it does not become a line break.
    /// \throws dbc::postcondition_error "Unable to remove extra carriage returns.", "Unable to insert
    ///         carriage returns."
    void ConvertToDosLineBreaks(icu::UnicodeString& text);

    /// Replaces the numeric references, then the eight named ones: trade, reg, copy, deg, nbsp (by a plain
    /// space), lt, gt and amp, in this order and each once ("&amp;lt;" gives "&lt;"). Names are
    /// case-sensitive; references with other names stay.
    /// \throws dbc::postcondition_error as ReplaceNumericCharacterReferences
    void ReplaceHTMLSymbols(icu::UnicodeString& text);

    /// Replaces every decimal reference of 1 to 10 digits and every hexadecimal one of 1 to 8 digits by
    /// GetCharReplacementString of its number.
    /// \throws dbc::postcondition_error "The HTML symbols could not be replaced because a replace operation
    ///         failed."; the text is then unchanged
    void ReplaceNumericCharacterReferences(icu::UnicodeString& text);

    /// The replacement for a code point: the character itself for 32 to 126 and 160 to 255, ASCII for the
    /// typographic dashes, quotes and the ellipsis (U+2013, 2014, 2018, 2019, 201C, 201D, 2026), an empty text for
    /// all others. Never throws.
    icu::UnicodeString GetCharReplacementString(int codePoint) const;

    /// Replaces every match by \p replacement (in ICU's replacement syntax) and assigns the result to \p
    /// text. Stops the process when \p matcher is empty.
    /// \throws dbc::postcondition_error with \p message when ICU fails, also when it gives up on a text; the
    ///         matches before the failure are then replaced
    void RegexReplaceAll(const boost::scoped_ptr<icu::RegexMatcher>& matcher, icu::UnicodeString& text,
                         const icu::UnicodeString& replacement, const char* message);

private:
    // The line that contract reports name for each check, and what the check is about.
    enum CheckLine : int {
        kCommentsLine = __LINE__,          // HTMLToPlainText: comments
        kElementsLine = __LINE__,          // HTMLToPlainText: style and script elements
        kHtmlTabsLine = __LINE__,          // HTMLToPlainText: tabs
        kBlockTagsLine = __LINE__,         // HTMLToPlainText: tags of blocks
        kBreakTagsLine = __LINE__,         // HTMLToPlainText: tags that break the line
        kTagsLine = __LINE__,              // HTMLToPlainText: all other tags
        kHtmlLinesLine = __LINE__,         // HTMLToPlainText: spaces at the edges of lines
        kHtmlSpacesLine = __LINE__,        // HTMLToPlainText: runs of spaces
        kLineBreaksLine = __LINE__,        // HTMLToPlainText: runs of line breaks
        kBBCodeLine = __LINE__,            // StripBBCode
        kLinesLine = __LINE__,             // CleanPlainTextForTova: spaces at the edges of lines
        kSingleQuotesLine = __LINE__,      // CleanPlainTextForTova: single quotes
        kDoubleQuotesLine = __LINE__,      // CleanPlainTextForTova: double quotes
        kTabsLine = __LINE__,              // CleanPlainTextForTova: tabs
        kSpacesLine = __LINE__,            // CleanPlainTextForTova: runs of spaces
        kTextLine = __LINE__,              // CleanPlainTextForTova: spaces at the edges of the text
        kCarriageReturnsLine = __LINE__,   // ConvertToDosLineBreaks: carriage returns alone
        kLineFeedsLine = __LINE__,         // ConvertToDosLineBreaks: line feeds alone
        kNumericReferencesLine = __LINE__, // ReplaceNumericCharacterReferences
        kNoMatcherLine = __LINE__,         // RegexReplaceAll: an empty matcher
        kReplaceLine = __LINE__,           // RegexReplaceAll: the engine
    };
};

} // namespace vexaTransferLib
