// SPDX-License-Identifier: MIT
#include <vexaTransferLib/cleaner/Steps.h>

#include <vexaTransferLib/cleaner/CaseFolding.h>
#include <vexaTransferLib/cleaner/Replacements.h>
#include <vexaTransferLib/cleaner/Scanning.h>

#include <unicode/uchar.h>

#include <cstddef>
#include <string_view>

namespace vexaTransferLib::cleaner {

namespace {

constexpr std::u16string_view kCommentStart = u"<!--";
constexpr std::u16string_view kDashes = u"--";
constexpr std::u16string_view kClosingTagStart = u"</";

std::size_t SkipWhiteSpace(std::u16string_view text, std::size_t at) {
    while (at < text.size() && u_isUWhiteSpace(text[at]) != 0)
        ++at;
    return at;
}

// The position after the first end of a comment ("--", white space, ">") at `from` or later.
std::size_t EndOfComment(std::u16string_view text, std::size_t from) {
    for (std::size_t dashes = text.find(kDashes, from); dashes != kNpos;
         dashes = text.find(kDashes, dashes + 1)) {
        const std::size_t bracket = SkipWhiteSpace(text, dashes + kDashes.size());
        if (bracket < text.size() && text[bracket] == u'>')
            return bracket + 1;
    }
    return kNpos;
}

// The position after the next ">".
std::size_t EndOfTag(std::u16string_view text, std::size_t from) {
    const std::size_t bracket = text.find(u'>', from);
    return bracket == kNpos ? kNpos : bracket + 1;
}

// Finds the ends of the elements with one name.
class Elements {
public:
    Elements(std::u16string_view text, std::u16string_view name) : text_(text), name_(name) {}

    // The end of the element that starts at `start`; kNpos when there is no element or it has no end. When one
    // element has no end, no later one has: the text is then not searched again.
    std::size_t EndOfElementAt(std::size_t start) {
        const std::size_t nameEnd = noneEnds_ ? kNpos : EndOfName(text_, start + 1, name_);
        if (nameEnd == kNpos)
            return kNpos;
        const std::size_t tagEnd = EndOfTag(text_, nameEnd);
        const std::size_t end = tagEnd == kNpos ? kNpos : EndOfClosingTag(tagEnd);
        noneEnds_ = end == kNpos;
        return end;
    }

private:
    // The first closing tag with the name decides: if no ">" follows it, none follows a later one.
    std::size_t EndOfClosingTag(std::size_t from) const {
        for (std::size_t start = text_.find(kClosingTagStart, from); start != kNpos;
             start = text_.find(kClosingTagStart, start + 1)) {
            const std::size_t nameEnd = EndOfName(text_, start + kClosingTagStart.size(), name_);
            if (nameEnd != kNpos)
                return EndOfTag(text_, nameEnd);
        }
        return kNpos;
    }

    const std::u16string_view text_;
    const std::u16string_view name_;
    bool noneEnds_ = false;
};

} // namespace

bool RemoveComments(icu::UnicodeString& text) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    std::size_t end = 0;
    for (std::size_t start = 0; (start = units.find(kCommentStart, end)) != kNpos;) {
        end = EndOfComment(units, start + kCommentStart.size() + 1);
        // If this comment has no end, no later one has.
        if (end == kNpos)
            break;
        replacements.Replace(start, end, {});
    }
    return replacements.Finish();
}

bool RemoveStylesAndScripts(icu::UnicodeString& text) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    Elements styles(units, u"style");
    Elements scripts(units, u"script");
    std::size_t from = 0;
    for (std::size_t start = 0; (start = units.find(u'<', from)) != kNpos;) {
        std::size_t end = styles.EndOfElementAt(start);
        if (end == kNpos)
            end = scripts.EndOfElementAt(start);
        if (end != kNpos)
            replacements.Replace(start, end, {});
        from = end == kNpos ? start + 1 : end;
    }
    return replacements.Finish();
}

} // namespace vexaTransferLib::cleaner
