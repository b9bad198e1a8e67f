// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/text/NumberText.h>
#include <vexaTransferLib/text/TimeText.h>
#include <vexaTransferLib/text/UsNumberFormat.h>

#include <unicode/unistr.h>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vexaTransferLib::writer {

/// Receives GPX text. The writers write to this class, and an implementation decides on the encoding. Each call of a
/// public writing operation uses one sink, so that the number format inside is made at most once per call.
///
/// Nearly all of a track is ASCII in small pieces. An implementation whose encoding leaves ASCII unchanged lends its
/// buffer for them (see `next_`), so that they cost no virtual call.
class TextSink {
public:
    TextSink() = default;
    TextSink(const TextSink&) = delete;
    TextSink& operator=(const TextSink&) = delete;
    virtual ~TextSink() = default;

    /// Appends fixed text and digits, ASCII only: the pieces one after the other.
    template <std::convertible_to<std::string_view>... Pieces>
    void Ascii(const Pieces&... pieces) {
        AppendPieces(std::string_view(pieces)...);
    }
    /// Appends text of the model unescaped.
    virtual void Raw(const icu::UnicodeString& text) = 0;
    /// Appends text of the model with the five XML special characters escaped.
    virtual void Escaped(const icu::UnicodeString& text) = 0;

    /// Appends a number in fixed notation.
    void Fixed(double number, int decimals) {
        if (Room() >= text::kLongestFixed)
            next_ = text::WriteFixed(next_, number, decimals);
        else
            AppendAscii(text::FixedText(number, decimals).View());
    }
    /// Appends a number with thousands separators, as the vendor's extensions require.
    void Grouped(std::int32_t number) { Raw(numberFormat_.Format(number)); }
    void Grouped(double number) { Raw(numberFormat_.Format(number)); }

    /// Returns the GPX text of a time, empty for a NaN, valid until the next call. Appends nothing.
    std::string_view TimeText(double millis, text::YearDigits yearDigits) {
        timeText_.Set(millis, yearDigits);
        return timeText_.View();
    }

protected:
    /// Appends ASCII for which there is no room between `next_` and `end_`.
    virtual void AppendAscii(std::string_view text) = 0;

    std::size_t Room() const { return static_cast<std::size_t>(end_ - next_); }

    /// The place for the next ASCII character and the end of the buffer; equal when the implementation lends
    /// no buffer.
    char* next_ = nullptr;
    char* end_ = nullptr;

private:
    template <class... Views>
    void AppendPieces(Views... pieces) {
        if (Room() < (pieces.size() + ...)) {
            (AppendAscii(pieces), ...);
            return;
        }
        // A local copy, because the compiler has to assume that the stored characters change the member itself.
        char* next = next_;
        ((next += pieces.copy(next, pieces.size())), ...);
        next_ = next;
    }

    text::UsNumberFormat numberFormat_;
    text::TimeText timeText_;
};

/// Appends to a UnicodeString. A string that is too large for ICU becomes bogus and remains so;
/// RequireNotBogus checks it at the end.
class UnicodeSink final : public TextSink {
public:
    explicit UnicodeSink(icu::UnicodeString& out) : out_(out) {}

    void Raw(const icu::UnicodeString& text) override { out_.append(text); }
    void Escaped(const icu::UnicodeString& text) override;

private:
    void AppendAscii(std::string_view text) override;

    icu::UnicodeString& out_;
};

/// \throws dbc::postcondition_error when the text became bogus; `source` is that of the class that wrote it
void RequireNotBogus(const icu::UnicodeString& text, const char* source, int line = __builtin_LINE());
/// The same for a check that runs in another file than the one reported.
inline void RequireNotBogus(const icu::UnicodeString& text, const text::CheckSite& site) {
    RequireNotBogus(text, site.source, site.line);
}

} // namespace vexaTransferLib::writer
