// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/GpxInputLimits.h>
#include <vexaTransferLib/reader/InputName.h>
#include <vexaTransferLib/reader/ReadErrors.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vexaTransferLib::reader {

/// Checks what an XML parser finds in one untrusted file: each operation throws ReadAborted with a GpxReadError
/// when the file is refused.
class InputLimiter {
public:
    /// How much of the file is read: all of it, or its head, which has limits of its own.
    enum class Extent { kFile, kHead };

    InputLimiter(const GpxInputLimits& limits, InputName name, Extent extent = Extent::kFile)
        : limits_(limits), name_(std::move(name)),
          elementLimit_(extent == Extent::kHead ? limits.headElements
                                                : std::numeric_limits<std::uint64_t>::max()) {}

    [[noreturn]] void RefuseDocumentType() const;
    [[noreturn]] void RefuseEncoding(const std::string& encoding) const;
    [[noreturn]] void RefuseHeadBytes() const;

    /// \param nameNumber the XML parser's number of the element's name; it counts names upwards
    void StartElement(std::size_t nameNumber, std::uint64_t attributeCount) {
        textLength_ = 0;
        if (++depth_ > limits_.elementDepth)
            Refuse("Its elements are nested deeper than", limits_.elementDepth, "element depth");
        if (++elements_ > elementLimit_)
            Refuse("Its head has more elements than", elementLimit_, "head elements");
        CheckAttributes(attributeCount);
        if (nameNumber >= isKnownName_.size() || !isKnownName_[nameNumber])
            AddElementName(nameNumber);
    }
    void EndElement() {
        textLength_ = 0;
        if (!declarations_.empty() && declarations_.back() == depth_)
            EndDeclarations();
        --depth_;
    }
    /// A namespace declaration of the element that has started last.
    void AddNamespace(std::u16string_view prefix, std::u16string_view uri);
    void CheckAttributes(std::uint64_t count) const {
        if (count > limits_.attributes)
            Refuse("One of its elements has more attributes than", limits_.attributes, "attributes");
    }
    void CheckTagBytes(std::uint64_t bytes) const {
        if (bytes > limits_.tagBytes)
            Refuse("One of its start tags has more bytes than", limits_.tagBytes, "tag bytes");
    }
    /// A piece of the text between two tags.
    void AddText(std::uint64_t length) {
        textLength_ += length;
        CheckText(textLength_);
    }
    /// Another text as a whole.
    void CheckText(std::uint64_t length) const {
        if (length > limits_.textLength)
            Refuse("One of its texts is longer than", limits_.textLength, "text length");
    }

private:
    void AddElementName(std::size_t nameNumber);
    void AddName(std::set<std::u16string, std::less<>>& names, std::u16string_view name);
    void CountName();
    void EndDeclarations();
    [[noreturn]] void Refuse(const char* what, std::uint64_t limit, const char* limitName) const {
        RefuseOverLimit(name_, what, limit, limitName);
    }

    GpxInputLimits limits_;
    InputName name_;
    std::uint64_t elementLimit_;
    std::uint64_t elements_ = 0;
    std::uint64_t depth_ = 0;
    std::uint64_t textLength_ = 0;
    std::uint64_t names_ = 0;
    /// Indexed by the XML parser's numbers of the names.
    std::vector<bool> isKnownName_;
    // Ordered sets, because no choice of texts makes a search in them slow.
    std::set<std::u16string, std::less<>> prefixes_;
    std::set<std::u16string, std::less<>> uris_;
    /// The depth of each namespace declaration in scope.
    std::vector<std::uint64_t> declarations_;
};

} // namespace vexaTransferLib::reader
