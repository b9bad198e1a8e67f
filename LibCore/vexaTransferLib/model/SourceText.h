// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/model/SourceBytes.h>
#include <vexaTransferLib/text/LineCounter.h>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib {

/// The text of a document that was read completely: well-formed XML in UTF-8. All objects that know their element in it
/// share it, and it lives as long as one of them. It never changes; all operations may run on several threads at once.
class SourceText {
public:
    /// The zero bytes that follow the text, for those who read it.
    static constexpr std::size_t kPadding = 16;

    using Pointer = boost::intrusive_ptr<const SourceText>;

    struct Declaration {
        std::string prefix; ///< empty for the default namespace
        std::string uri;    ///< empty for none
    };

    /// An element with declarations of namespaces.
    struct Scope {
        std::uint64_t begin; ///< the place of its start tag
        std::uint64_t end;   ///< the place after its end tag
        std::vector<Declaration> declarations;
    };

    /// An element that is at least `kLongSpan` bytes long. To find its end by its text would take long.
    struct LongSpan {
        std::uint64_t begin; ///< the place of its start tag
        std::uint64_t end;   ///< the place after its end tag
    };
    static constexpr std::uint64_t kLongSpan = std::uint64_t{16} * 1024;

    /// \param text with the padding behind it
    /// \param root the place of the root's start tag
    /// \param scopes of all elements that declare namespaces, in the order of their start tags
    /// \param longSpans of all long elements, in any order; without one of them, its end is found by its text
    /// \param isFile the text is what the file has, byte for byte
    /// \throws std::bad_alloc
    static Pointer Make(SourceBytes text, std::uint64_t root, std::vector<Scope> scopes,
                        std::vector<LongSpan> longSpans = {}, bool isFile = false);
    SourceText(const SourceText&) = delete;
    SourceText& operator=(const SourceText&) = delete;

    std::string_view Text() const { return text_.View(); }
    /// True when the text is what the file has, byte for byte. Otherwise it is the same content, without what is before
    /// the first comment or element.
    bool IsFile() const { return isFile_; }
    /// The place of the root's start tag.
    std::uint64_t RootPlace() const { return root_; }
    const char* At(std::uint64_t place) const { return text_.Data() + place; }
    std::uint64_t PlaceOf(const char* byte) const { return static_cast<std::uint64_t>(byte - text_.Data()); }

    /// The place after an element. Costs at most a search among the long elements and `kLongSpan` bytes of text.
    /// \param tag its "<"
    const char* EndOf(const char* tag) const;
    /// In the order of their places.
    const std::vector<LongSpan>& LongSpans() const { return longSpans_; }

    /// The namespace of a prefix at a place, empty for none. Empty optional when the prefix is not declared there.
    /// Logarithmic in the numbers of prefixes and of their declarations, however many scopes are around the place.
    std::optional<std::string_view> FindNamespace(std::string_view prefix, std::uint64_t place) const;
    /// True when only the root declares namespaces around the element at a place.
    bool IsInRootScope(std::uint64_t place) const;
    /// True when every prefix has the same declaration at both places.
    bool HaveSameScope(std::uint64_t one, std::uint64_t other) const {
        return InnermostAt(one) == InnermostAt(other);
    }
    /// True when an element that starts in this part declares namespaces. The part is not empty.
    bool HasScopeIn(std::uint64_t begin, std::uint64_t end) const;
    /// Up to here, from the place on, no prefix changes its namespace.
    std::uint64_t SameScopeUntil(std::uint64_t place) const;
    /// Line and column of a place. The first call for a place far in the text costs as much as the text before it.
    text::SourceLocation Locate(std::uint64_t place) const;

private:
    static constexpr std::size_t kNoScope = std::numeric_limits<std::size_t>::max();

    /// From a place on, this scope is the innermost.
    struct Boundary {
        std::uint64_t place;
        std::size_t scope; ///< kNoScope where there is none
    };

    /// From a place on, a prefix has this declaration.
    struct Binding {
        std::uint64_t place;
        const Declaration* declaration; ///< null where there is none
    };
    /// The declarations of one prefix.
    struct Prefix {
        std::vector<Binding> bindings; ///< in the order of their places
        std::vector<const Declaration*>
            open; ///< of the scopes that have not ended; empty after the construction
    };

    void EndScopes(std::size_t& innermost, std::uint64_t place);
    void Bind(const Scope& scope);
    void Unbind(const Scope& scope);
    std::vector<Boundary>::const_iterator FirstBoundaryAfter(std::uint64_t place) const;
    /// The innermost scope around a place; kNoScope when there is none.
    std::size_t InnermostAt(std::uint64_t place) const;
    SourceText(SourceBytes text, std::uint64_t root, std::vector<Scope> scopes,
               std::vector<LongSpan> longSpans, bool isFile);

    friend void intrusive_ptr_add_ref(const SourceText* source) noexcept {
        source->owners_.fetch_add(1, std::memory_order_relaxed);
    }
    friend void intrusive_ptr_release(const SourceText* source) noexcept {
        if (source->owners_.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete source;
    }

    SourceBytes text_;
    std::uint64_t root_;
    bool isFile_;
    std::vector<Scope> scopes_;
    /// In the order of their places.
    std::vector<LongSpan> longSpans_;
    /// The scope around each scope, by index.
    std::vector<std::size_t> outer_;
    /// In the order of their places.
    std::vector<Boundary> boundaries_;
    std::map<std::string_view, Prefix> prefixes_;
    mutable std::atomic<std::uint64_t> owners_{0};
    mutable std::mutex linesMutex_;
    mutable text::LineCounter lines_;
};

} // namespace vexaTransferLib
