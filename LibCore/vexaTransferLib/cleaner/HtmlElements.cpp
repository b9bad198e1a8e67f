// SPDX-License-Identifier: MIT
#include <vexaTransferLib/cleaner/HtmlElements.h>

#include <vexaTransferLib/cleaner/FoldedNames.h>
#include <vexaTransferLib/cleaner/Replacements.h>

#include <unicode/uchar.h>

#include <cstddef>
#include <string_view>

namespace vexaTransferLib::cleaner {

namespace {

constexpr std::size_t kNowhere = std::u16string_view::npos;
constexpr std::u16string_view kCommentBegin = u"<!--";
constexpr std::u16string_view kDashes = u"--";
constexpr std::u16string_view kClosingBegin = u"</";

std::size_t SkipWhiteSpace(std::u16string_view text, std::size_t at) {
    while (at < text.size() && u_isUWhiteSpace(text[at]) != 0)
        ++at;
    return at;
}

// Where the first end of a comment that begins at or behind `from` is over.
std::size_t EndOfComment(std::u16string_view text, std::size_t from) {
    for (std::size_t dashes = text.find(kDashes, from); dashes != kNowhere;
         dashes = text.find(kDashes, dashes + 1)) {
        const std::size_t bracket = SkipWhiteSpace(text, dashes + kDashes.size());
        if (bracket < text.size() && text[bracket] == u'>')
            return bracket + 1;
    }
    return kNowhere;
}

std::size_t EndOfTag(std::u16string_view text, std::size_t from) {
    const std::size_t bracket = text.find(u'>', from);
    return bracket == kNowhere ? kNowhere : bracket + 1;
}

// The elements of one name.
class Elements {
public:
    Elements(std::u16string_view text, std::u16string_view name) : text_(text), name_(name) {}

    // Where the element is over that begins at `begin`. When one has no end, none behind it has: the text is
    // not searched again.
    std::size_t EndOfElementAt(std::size_t begin) {
        const std::size_t nameEnd = noneEnds_ ? kNowhere : EndOfName(text_, begin + 1, name_);
        if (nameEnd == kNowhere)
            return kNowhere;
        const std::size_t tagEnd = EndOfTag(text_, nameEnd);
        const std::size_t end = tagEnd == kNowhere ? kNowhere : EndOfClosingTag(tagEnd);
        noneEnds_ = end == kNowhere;
        return end;
    }

private:
    // The first name decides: a bracket behind a later one is behind this one too.
    std::size_t EndOfClosingTag(std::size_t from) const {
        for (std::size_t begin = text_.find(kClosingBegin, from); begin != kNowhere;
             begin = text_.find(kClosingBegin, begin + 1)) {
            const std::size_t nameEnd = EndOfName(text_, begin + kClosingBegin.size(), name_);
            if (nameEnd != kNowhere)
                return EndOfTag(text_, nameEnd);
        }
        return kNowhere;
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
    for (std::size_t begin = 0; (begin = units.find(kCommentBegin, end)) != kNowhere;) {
        end = EndOfComment(units, begin + kCommentBegin.size() + 1);
        // No end for this one is no end for those behind it.
        if (end == kNowhere)
            break;
        replacements.Replace(begin, end, {});
    }
    return replacements.Finish();
}

bool RemoveStylesAndScripts(icu::UnicodeString& text) {
    Replacements replacements(text);
    const std::u16string_view units = replacements.Text();
    Elements styles(units, u"style");
    Elements scripts(units, u"script");
    std::size_t from = 0;
    for (std::size_t begin = 0; (begin = units.find(u'<', from)) != kNowhere;) {
        std::size_t end = styles.EndOfElementAt(begin);
        if (end == kNowhere)
            end = scripts.EndOfElementAt(begin);
        if (end != kNowhere)
            replacements.Replace(begin, end, {});
        from = end == kNowhere ? begin + 1 : end;
    }
    return replacements.Finish();
}

} // namespace vexaTransferLib::cleaner
