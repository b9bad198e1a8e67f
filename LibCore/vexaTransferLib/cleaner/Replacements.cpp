// SPDX-License-Identifier: MIT
#include <vexaTransferLib/cleaner/Replacements.h>

#include <cstdint>
#include <utility>

namespace vexaTransferLib::cleaner {

namespace {

std::u16string_view UnitsOf(const icu::UnicodeString& text) {
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

// Frees the memory that a text no longer needs when less than half of it is used. If there is no memory for a
// smaller copy, the text stays as it is.
void ShrinkToFit(icu::UnicodeString& text) {
    if (text.length() >= text.getCapacity() / 2)
        return;
    icu::UnicodeString smaller(text.getBuffer(), text.length());
    if (!smaller.isBogus())
        text = std::move(smaller);
}

} // namespace

Replacements::Replacements(icu::UnicodeString& text) : text_(text), units_(UnitsOf(text)) {}

void Replacements::Replace(std::size_t start, std::size_t end, std::u16string_view with) {
    if (!started_) {
        started_ = true;
        result_ = icu::UnicodeString(text_.length(), 0, 0);
    }
    Append(units_.substr(copied_, start - copied_));
    Append(with);
    copied_ = end;
}

bool Replacements::Finish() {
    if (!started_) {
        // A bogus text becomes empty, as in ICU's regular expressions.
        if (text_.isBogus())
            text_.remove();
        return true;
    }
    Append(units_.substr(copied_));
    if (result_.isBogus())
        return false;
    ShrinkToFit(result_);
    text_ = std::move(result_);
    return true;
}

void Replacements::Append(std::u16string_view units) {
    if (!units.empty())
        result_.append(units.data(), static_cast<std::int32_t>(units.size()));
}

} // namespace vexaTransferLib::cleaner
