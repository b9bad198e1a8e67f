// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vexaTransferLib::reader {

/// A qualified name of a file. Every object of one table has another name, so that pointers to equal names are equal.
class PlainName {
public:
    explicit PlainName(std::string_view name);
    PlainName(const PlainName&) = delete;
    PlainName& operator=(const PlainName&) = delete;

    std::string_view Bytes() const { return bytes_; }
    const char16_t* Qualified() const { return HasPrefix() ? wide_.c_str() : local_; }
    const char16_t* Local() const { return local_; }
    bool HasPrefix() const { return localStart_ != 0; }
    /// True for "xmlns" and "xmlns:...".
    bool IsDeclaration() const { return isDeclaration_; }
    /// True for a declaration and for a name with a prefix.
    bool IsSpecial() const { return isSpecial_; }

private:
    friend class PlainNames;

    std::string bytes_;
    std::u16string wide_;
    std::size_t localStart_;
    const char16_t* local_;
    bool isDeclaration_;
    bool isSpecial_;
    // The first eight bytes, and which of them a shorter name has.
    std::uint64_t key_ = 0;
    std::uint64_t mask_ = 0;
    // The table's object for the prefix; null as long as no such prefix has been declared.
    mutable const std::string* prefix_ = nullptr;
    // The result of the last search for the namespace, and the scope in which it was made.
    mutable const char16_t* uri_ = nullptr;
    mutable std::uint64_t scope_ = 0;
    // The name that came after this one the last time.
    PlainName* next_ = nullptr;
};

/// The names, prefixes and namespaces of one file, and the declarations of namespaces in scope. Every object that it
/// returns lives as long as the table. It refuses more than real files have, so that no search takes long.
class PlainNames {
public:
    /// \param mostNames elements' and attributes' names, prefixes and namespaces in all
    PlainNames(std::uint64_t mostNames, std::uint64_t mostInScope, std::uint64_t longestUri);
    PlainNames(const PlainNames&) = delete;
    PlainNames& operator=(const PlainNames&) = delete;

    /// The name that came after the last one before, if the bytes start with it; null otherwise. In most files the
    /// names of one point are those of the next.
    const PlainName* Expected(const char* bytes, const char* end) {
        PlainName* const expected = last_->next_;
        if (expected == nullptr || !StartsWith(bytes, end, *expected))
            return nullptr;
        return last_ = expected;
    }
    /// The name; null when it is one too many. Seven more bytes follow it in memory.
    const PlainName* Find(std::string_view name) {
        const std::uint64_t key = Load(name.data()) & MaskOf(name.size());
        PlainName* found = recent_[SlotOf(key)];
        if (found == nullptr || found->bytes_ != name)
            found = FindSlowly(name, key);
        if (found != nullptr)
            last_ = last_->next_ = found;
        return found;
    }
    /// True when the bytes up to \p end, after which there are zeros, start with the name.
    static bool StartsWith(const char* bytes, const char* end, const PlainName& name) {
        if ((Load(bytes) & name.mask_) != name.key_)
            return false;
        const std::size_t size = name.bytes_.size();
        return size <= kKeyBytes || (size <= static_cast<std::size_t>(end - bytes) &&
                                     std::memcmp(bytes, name.bytes_.data(), size) == 0);
    }

    // Declarations. An element's are in scope from its start tag to its end.

    /// \param name "xmlns" or "xmlns:...". Returns false for a declaration that is not certain to be allowed, or one
    ///             too many.
    bool Declare(const PlainName& name, std::string_view uri);
    std::size_t CountDeclared() const { return scope_.size(); }
    /// Ends the scope of all declarations but the first \p count.
    void EndDeclarations(std::size_t count);

    /// Gives the namespace of an element with this name, or of an attribute that has a prefix: null for none. Returns
    /// false when the prefix is not declared.
    bool FindNamespace(const PlainName& name, const char16_t*& uri) const {
        if (name.scope_ != scopeNumber_ && !Search(name))
            return false;
        uri = name.uri_;
        return true;
    }

private:
    static constexpr std::size_t kSlots = 256;
    static constexpr std::size_t kKeyBytes = sizeof(std::uint64_t);

    struct Declaration {
        const std::string* prefix;
        const char16_t* uri;
    };

    static std::uint64_t Load(const char* bytes) {
        std::uint64_t loaded = 0;
        std::memcpy(&loaded, bytes, kKeyBytes);
        return loaded;
    }
    // Selects as many of the first eight bytes as the name has.
    static std::uint64_t MaskOf(std::size_t length) {
        return kMasks[length < kKeyBytes ? length : kKeyBytes];
    }
    static std::size_t SlotOf(std::uint64_t key) {
        constexpr unsigned kShift = 56; // leaves as many bits as a slot's number has
        return static_cast<std::size_t>((key * 0x9E3779B97F4A7C15u) >> kShift);
    }
    PlainName* FindSlowly(std::string_view name, std::uint64_t key);
    const std::string* KnownPrefix(std::string_view prefix) const;
    bool Search(const PlainName& name) const;
    bool CountName();

    static const std::array<std::uint64_t, kKeyBytes + 1> kMasks;

    std::uint64_t mostNames_;
    std::uint64_t mostInScope_;
    std::uint64_t longestUri_;
    std::uint64_t count_ = 0;
    std::array<PlainName*, kSlots> recent_{};
    PlainName beforeFirst_{{}};
    /// The name that was returned last.
    PlainName* last_ = &beforeFirst_;
    std::map<std::string, std::unique_ptr<PlainName>, std::less<>> names_;
    std::set<std::string, std::less<>> prefixes_;
    std::map<std::string, std::u16string, std::less<>> uris_;
    std::vector<Declaration> scope_;
    // Changes with each declaration that comes into scope or leaves it.
    std::uint64_t scopeNumber_ = 1;
};

} // namespace vexaTransferLib::reader
