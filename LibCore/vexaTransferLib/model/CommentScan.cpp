// SPDX-License-Identifier: MIT
#include <vexaTransferLib/model/CommentScan.h>

#include <vexaTransferLib/text/XmlBlank.h>

#include <algorithm>

namespace vexaTransferLib {

// No value of an attribute has a "<" in it, so that each one stands at the start of something.
bool CommentScan::Next() {
    for (;;) {
        begin_ = text_.find('<', end_);
        if (begin_ == std::string_view::npos)
            return false;
        const std::string_view rest = text_.substr(begin_);
        if (rest.starts_with("<!--")) {
            Take(4, "-->");
            return true;
        }
        if (rest.starts_with("<?")) {
            Take(2, "?>");
            if (!IsDeclaration())
                return true;
        } else if (rest.starts_with("<![CDATA[")) {
            Take(9, "]]>");
        } else {
            end_ = begin_ + 1;
        }
    }
}

void CommentScan::Take(std::size_t markSize, std::string_view endMark) {
    const std::size_t start = begin_ + markSize;
    const std::size_t contentEnd = std::min(text_.find(endMark, start), text_.size());
    content_ = text_.substr(start, contentEnd - start);
    end_ = std::min(contentEnd + endMark.size(), text_.size());
}

bool CommentScan::IsDeclaration() const {
    return content_.starts_with("xml") && content_.size() > 3 && text::IsBlank(content_[3]);
}

} // namespace vexaTransferLib
