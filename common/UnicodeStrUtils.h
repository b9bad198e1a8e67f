// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Conversion of ICU text to bytes, and the case-insensitive order of texts.
///
/// Nothing here keeps state: each conversion opens its own converter, so all of it may run on several threads
/// at once. Failures are plain `std::runtime_error`s, without a contract report.

#include <common/Export.h>

#include <boost/shared_array.hpp>
#include <unicode/ucnv.h>
#include <unicode/unistr.h>

#include <cstdint>
#include <stdexcept>
#include <string>

namespace UnicodeStrUtils {

/// Owns one ICU converter for the length of a scope.
class VEXATRANSFERLIB_API Converter {
public:
    /// Opens a converter; null means ICU's default converter.
    /// \throws std::runtime_error "Unable to open the converter: " and the name, or, for null, the default
    ///         converter's name followed by " (default)"
    explicit Converter(const char* codePageName = nullptr);
    ~Converter();

    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    /// The converter, valid as long as this object lives; never null.
    UConverter* Get() const noexcept { return converter_; }

private:
    UConverter* converter_;
};

/// The bytes of one conversion. Copies share the buffer.
///
/// `buffer` is never null and holds `length` bytes followed by four zero bytes, so that it can be used as a
/// zero-terminated text of 8, 16 or 32 bit units.
class VEXATRANSFERLIB_API ByteString {
public:
    /// Converts \p text to the named code page; null means ICU's default code page.
    ///
    /// An empty or bogus text gives `length` 0 for any code page name, even one that does not exist.
    /// Unpaired surrogates become the converter's substitution (EF BF BD in UTF-8), U+0000 becomes a zero
    /// byte.
    /// The text is converted twice, first to count its bytes. A converter that keeps a state from one conversion
    /// to the next (ICU's x11-compound-text) may give another number of bytes the second time; the conversion then
    /// fails.
    /// \throws std::runtime_error as `Converter` does, or "Unable to convert the UnicodeString." when the
    ///         conversion fails or its result is longer than INT32_MAX - 4 bytes
    explicit ByteString(const icu::UnicodeString& text, const char* codePageName = nullptr);
    /// \{
    /// The copy shares the buffer.
    ByteString(const ByteString&) = default;
    ByteString& operator=(const ByteString&) = default;
    /// \}
    virtual ~ByteString();

    /// Releases the bytes: `length` is then 0 and `buffer` a new array of four zero bytes. Copies keep theirs.
    void Clear();

    boost::shared_array<char> buffer; ///< the bytes and four zero bytes; never null
    std::uint32_t length = 0;         ///< bytes in `buffer`, the four zero bytes not counted
};

/// Orders texts without regard to case (ICU's `caseCompare` with default case folding): a strict weak order
/// in which "Color" and "COLOR" are equal. Compares by UTF-16 code unit after folding.
class VEXATRANSFERLIB_API UnicodeStringCaseInsensitiveComp {
public:
    /// True when \p first comes before \p second.
    bool operator()(const icu::UnicodeString& first, const icu::UnicodeString& second) const;
};

/// Converts to UTF-8. \p out is replaced by the zero-terminated bytes (four zero bytes follow the text).
/// \returns the number of bytes without the trailing zeros
/// \throws std::runtime_error as `ByteString` does; \p out is then unchanged
VEXATRANSFERLIB_API std::int32_t UnicodeStringToUTF8(const icu::UnicodeString& text,
                                                     boost::shared_array<char>& out);

/// Converts to a narrow string in the named code page (null: ICU's default). The result ends at the first
/// zero byte of the converted text.
/// \throws std::runtime_error as `ByteString` does
VEXATRANSFERLIB_API std::string UnicodeStringToStlString(const icu::UnicodeString& text,
                                                         const char* codePageName = nullptr);

} // namespace UnicodeStrUtils
