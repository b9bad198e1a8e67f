// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/text/UsNumberFormat.h>

#include <unicode/unistr.h>

#include <cstdint>
#include <string_view>

namespace vexaTransferLib::writer {

/// Where GPX text goes. The text of the model is written once, against this; an implementation decides on the
/// encoding. One sink serves one call of a writer, so the number format inside is made at most once per call.
class TextSink {
public:
    virtual ~TextSink() = default;

    /// Fixed text and digits, ASCII only.
    virtual void Ascii(std::string_view text) = 0;
    /// Text of the model as it stands.
    virtual void Raw(const icu::UnicodeString& text) = 0;
    /// Text of the model with the five XML special characters escaped.
    virtual void Escaped(const icu::UnicodeString& text) = 0;

    /// A number in fixed notation.
    void Fixed(double number, int decimals);
    /// A number with thousands separators, as the vendor's extensions have them.
    void Grouped(std::int32_t number) { Raw(numberFormat_.Format(number)); }
    void Grouped(double number) { Raw(numberFormat_.Format(number)); }

private:
    text::UsNumberFormat numberFormat_;
};

/// Appends to a UnicodeString. A string that ICU cannot hold turns bogus and stays so; whoever finishes the
/// text looks (see RequireHeld).
class UnicodeSink final : public TextSink {
public:
    explicit UnicodeSink(icu::UnicodeString& out) : out_(out) {}

    void Ascii(std::string_view text) override;
    void Raw(const icu::UnicodeString& text) override { out_.append(text); }
    void Escaped(const icu::UnicodeString& text) override;

private:
    icu::UnicodeString& out_;
};

/// \throws dbc::postcondition_error when ICU gave up on the text; `source` is the class that wrote it
void RequireHeld(const icu::UnicodeString& text, const char* source, int line = __builtin_LINE());

} // namespace vexaTransferLib::writer
