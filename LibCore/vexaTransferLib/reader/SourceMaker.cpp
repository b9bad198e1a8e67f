// SPDX-License-Identifier: MIT
#include <vexaTransferLib/reader/SourceMaker.h>

#include <vexaTransferLib/reader/ChildCounter.h>
#include <vexaTransferLib/reader/PlainLexer.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vexaTransferLib::reader {

namespace {

constexpr std::string_view kXmlns = "xmlns";

/// Collects the declarations of namespaces and the long elements of a plain file.
class ScopeCollector {
public:
    ScopeCollector(ByteWindow& window, std::vector<LongElement>& longElements)
        : window_(window), children_(longElements) {}

    void StartElement(const PlainTag& tag) {
        if (depth_ == 0)
            root_ = tag.begin;
        begins_[depth_++] = tag.begin;
        children_.StartElement(tag);
        for (const PlainAttribute& attribute : tag.attributes)
            if (attribute.name->IsDeclaration())
                Declare(tag, attribute);
    }
    void EndElement(std::uint64_t end) {
        if (!open_.empty() && open_.back().depth == depth_) {
            scopes_[open_.back().scope].end = end;
            open_.pop_back();
        }
        const std::uint64_t begin = begins_[--depth_];
        if (end - begin >= SourceText::kLongSpan)
            longSpans_.push_back({begin, end});
        children_.EndElement(end);
    }
    void Text(const RawText&) {}
    void CData(const RawText&) {}
    void Other() {}
    std::uint64_t KeptFrom(std::uint64_t next) const { return next; }

    std::uint64_t Root() const { return root_; }
    std::vector<SourceText::Scope> TakeScopes() { return std::move(scopes_); }
    std::vector<SourceText::LongSpan> TakeLongSpans() { return std::move(longSpans_); }

private:
    struct Open {
        std::size_t depth;
        std::size_t scope;
    };

    // The value of a declaration in a plain file is ASCII without references.
    void Declare(const PlainTag& tag, const PlainAttribute& attribute) {
        if (open_.empty() || open_.back().depth != depth_) {
            open_.push_back({depth_, scopes_.size()});
            scopes_.push_back({tag.begin, tag.end, {}});
        }
        const std::string_view name = attribute.name->Bytes();
        const RawText& value = attribute.value;
        scopes_.back().declarations.push_back(
            {name == kXmlns ? std::string() : std::string(name.substr(kXmlns.size() + 1)),
             std::string(window_.At(value.begin), window_.At(value.end))});
    }

    ByteWindow& window_;
    ChildCounter children_;
    std::uint64_t root_ = 0;
    std::array<std::uint64_t, kMostPlainDepth> begins_; ///< of the open elements
    std::size_t depth_ = 0;
    std::vector<Open> open_;
    std::vector<SourceText::Scope> scopes_;
    std::vector<SourceText::LongSpan> longSpans_;
};

} // namespace

SourceBytes ReadAll(xercesc::BinInputStream& stream, std::uint64_t expectedSize) {
    constexpr std::size_t kStartSize = std::size_t{64} * 1024;
    std::size_t wanted = kStartSize;
    // A file has ended when there is room for more bytes than it gives.
    if (expectedSize >= kStartSize && expectedSize < std::numeric_limits<std::size_t>::max() / 2)
        wanted = static_cast<std::size_t>(expectedSize) + 1;
    SourceBytes bytes;
    bytes.Reserve(wanted + SourceText::kPadding);
    for (;;) {
        const std::size_t count =
            stream.readBytes(reinterpret_cast<XMLByte*>(bytes.MakeRoom(wanted)), wanted);
        bytes.Grow(count);
        if (count < wanted)
            break;
        wanted = bytes.Size();
    }
    bytes.Finish(SourceText::kPadding);
    return bytes;
}

SourceText::Pointer MakeSource(SourceBytes& bytes, const std::optional<GpxInputLimits>& limits,
                               std::vector<LongElement>& longElements) {
    static_assert(SourceText::kPadding >= ByteWindow::kPadding);
    ByteWindow window(bytes.View());
    window.LeaveLines();
    ScopeCollector scopes(window, longElements);
    if (LexPlain(window, limits, scopes) != NotPlain::kIsPlain)
        return nullptr;
    SortByPlace(longElements);
    return SourceText::Make(std::move(bytes), scopes.Root(), scopes.TakeScopes(), scopes.TakeLongSpans(),
                            true);
}

} // namespace vexaTransferLib::reader
