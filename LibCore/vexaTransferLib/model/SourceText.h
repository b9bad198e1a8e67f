// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/model/SourceBytes.h>
#include <vexaTransferLib/text/LineCounter.h>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <limits>
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

    /// \param text with the padding behind it
    /// \param root the place of the root's start tag
    /// \param scopes of all elements that declare namespaces, in the order of their start tags
    /// \throws std::bad_alloc
    static Pointer Make(SourceBytes text, std::uint64_t root, std::vector<Scope> scopes);
    SourceText(const SourceText&) = delete;
    SourceText& operator=(const SourceText&) = delete;

    std::string_view Text() const { return text_.View(); }
    /// The place of the root's start tag.
    std::uint64_t RootPlace() const { return root_; }
    const char* At(std::uint64_t place) const { return text_.Data() + place; }
    std::uint64_t PlaceOf(const char* byte) const { return static_cast<std::uint64_t>(byte - text_.Data()); }

    /// The namespace of a prefix at a place, empty for none. Empty optional when the prefix is not declared there.
    /// Logarithmic in the numbers of scopes and of their declarations, linear in the number of scopes around the place.
    std::optional<std::string_view> FindNamespace(std::string_view prefix, std::uint64_t place) const;
    /// Calls `visit(prefix, uri)` for each prefix that is declared around the element at a place, not by the element
    /// itself: the innermost declaration of each.
    template <class Visit>
    void ForEachDeclarationAround(std::uint64_t place, Visit visit) const;
    /// True when only the root declares namespaces around the element at a place.
    bool IsInRootScope(std::uint64_t place) const;
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

    void EndScopes(std::size_t& innermost, std::uint64_t place);
    std::vector<Boundary>::const_iterator FirstBoundaryAfter(std::uint64_t place) const;
    /// The innermost scope around a place; kNoScope when there is none.
    std::size_t InnermostAt(std::uint64_t place) const;
    SourceText(SourceBytes text, std::uint64_t root, std::vector<Scope> scopes);

    friend void intrusive_ptr_add_ref(const SourceText* source) noexcept {
        source->owners_.fetch_add(1, std::memory_order_relaxed);
    }
    friend void intrusive_ptr_release(const SourceText* source) noexcept {
        if (source->owners_.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete source;
    }

    SourceBytes text_;
    std::uint64_t root_;
    std::vector<Scope> scopes_;
    /// The scope around each scope, by index.
    std::vector<std::size_t> outer_;
    /// In the order of their places.
    std::vector<Boundary> boundaries_;
    mutable std::atomic<std::uint64_t> owners_{0};
    mutable std::mutex linesMutex_;
    mutable text::LineCounter lines_;
};

template <class Visit>
void SourceText::ForEachDeclarationAround(std::uint64_t place, Visit visit) const {
    std::vector<std::string_view> seen;
    for (std::size_t at = InnermostAt(place); at != kNoScope; at = outer_[at]) {
        if (scopes_[at].begin == place)
            continue;
        for (const Declaration& declaration : scopes_[at].declarations) {
            if (std::find(seen.begin(), seen.end(), declaration.prefix) != seen.end())
                continue;
            seen.push_back(declaration.prefix);
            visit(std::string_view(declaration.prefix), std::string_view(declaration.uri));
        }
    }
}

} // namespace vexaTransferLib
