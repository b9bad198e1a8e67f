// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/PlainCheck.h>

#include <vexaTransferLib/reader/PlainLexer.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace vexaTransferLib::reader {

namespace {

/// Receives the parts of a file while it is checked, and counts the children of its elements.
class ChildCounter {
public:
    explicit ChildCounter(std::vector<LongElement>& longElements) : longElements_(longElements) {}

    void StartElement(const PlainTag& tag) {
        if (depth_ != 0 && !tag.attributes.empty())
            ++open_[depth_ - 1].children;
        open_[depth_++] = {tag.begin, 0};
    }
    void EndElement(std::uint64_t) {
        const LongElement& ended = open_[--depth_];
        if (ended.children >= kLongElementChildren)
            longElements_.push_back(ended);
    }
    void Text(const RawText&) {}
    void CData(const RawText&) {}
    void Other() {}
    std::uint64_t KeptFrom(std::uint64_t next) const { return next; }

private:
    std::vector<LongElement>& longElements_;
    std::array<LongElement, kMostPlainDepth> open_;
    std::size_t depth_ = 0;
};

} // namespace

NotPlain CheckPlain(ByteWindow& window, const std::optional<GpxInputLimits>& limits,
                    std::vector<LongElement>& longElements) {
    ChildCounter counter(longElements);
    const NotPlain why = LexPlain(window, limits, counter);
    std::sort(longElements.begin(), longElements.end(),
              [](const LongElement& left, const LongElement& right) { return left.begin < right.begin; });
    return why;
}

} // namespace vexaTransferLib::reader
