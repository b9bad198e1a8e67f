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
    for (std::size_t dashes = text.find(kDashes, from); dashes != kNpos;
         dashes = text.find(kDashes, dashes + 1)) {
        const std::size_t bracket = SkipWhiteSpace(text, dashes + kDashes.size());
        if (bracket < text.size() && text[bracket] == u'>')
            return bracket + 1;
    }
    return kNpos;
}

std::size_t EndOfTag(std::u16string_view text, std::size_t from) {
    const std::size_t bracket = text.find(u'>', from);
    return bracket == kNpos ? kNpos : bracket + 1;
}

// The elements of one name.
class Elements {
public:
    Elements(std::u16string_view text, std::u16string_view name) : text_(text), name_(name) {}

    // Where the element is over that begins at `begin`. When one has no end, none behind it has: the text is
    // not searched again.
    std::size_t EndOfElementAt(std::size_t begin) {
        const std::size_t nameEnd = noneEnds_ ? kNpos : EndOfName(text_, begin + 1, name_);
        if (nameEnd == kNpos)
            return kNpos;
        const std::size_t tagEnd = EndOfTag(text_, nameEnd);
        const std::size_t end = tagEnd == kNpos ? kNpos : EndOfClosingTag(tagEnd);
        noneEnds_ = end == kNpos;
        return end;
    }

private:
    // The first name decides: a bracket behind a later one is behind this one too.
    std::size_t EndOfClosingTag(std::size_t from) const {
        for (std::size_t begin = text_.find(kClosingBegin, from); begin != kNpos;
             begin = text_.find(kClosingBegin, begin + 1)) {
            const std::size_t nameEnd = EndOfName(text_, begin + kClosingBegin.size(), name_);
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
    for (std::size_t begin = 0; (begin = units.find(kCommentBegin, end)) != kNpos;) {
        end = EndOfComment(units, begin + kCommentBegin.size() + 1);
        // No end for this one is no end for those behind it.
        if (end == kNpos)
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
    for (std::size_t begin = 0; (begin = units.find(u'<', from)) != kNpos;) {
        std::size_t end = styles.EndOfElementAt(begin);
        if (end == kNpos)
            end = scripts.EndOfElementAt(begin);
        if (end != kNpos)
            replacements.Replace(begin, end, {});
        from = end == kNpos ? begin + 1 : end;
    }
    return replacements.Finish();
}

} // namespace vexaTransferLib::cleaner
