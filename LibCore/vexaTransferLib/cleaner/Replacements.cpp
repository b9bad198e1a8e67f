// SPDX-License-Identifier: MIT
#include <vexaTransferLib/cleaner/Replacements.h>

#include <cstdint>
#include <utility>

namespace vexaTransferLib::cleaner {

namespace {

std::u16string_view UnitsOf(const icu::UnicodeString& text) {
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

// A text that shrank to less than half does not hold on to the memory of what is gone. Without memory for
// a smaller one it does.
void GiveBackMemory(icu::UnicodeString& text) {
    if (text.length() >= text.getCapacity() / 2)
        return;
    icu::UnicodeString smaller(text.getBuffer(), text.length());
    if (!smaller.isBogus())
        text = std::move(smaller);
}

} // namespace

Replacements::Replacements(icu::UnicodeString& text) : text_(text), units_(UnitsOf(text)) {}

void Replacements::Replace(std::size_t begin, std::size_t end, std::u16string_view with) {
    if (!begun_) {
        begun_ = true;
        result_ = icu::UnicodeString(text_.length(), 0, 0);
    }
    Append(units_.substr(taken_, begin - taken_));
    Append(with);
    taken_ = end;
}

bool Replacements::Finish() {
    if (!begun_) {
        // A bogus text comes out empty, as it does from the engine.
        if (text_.isBogus())
            text_.remove();
        return true;
    }
    Append(units_.substr(taken_));
    if (result_.isBogus())
        return false;
    GiveBackMemory(result_);
    text_ = std::move(result_);
    return true;
}

void Replacements::Append(std::u16string_view units) {
    if (!units.empty())
        result_.append(units.data(), static_cast<std::int32_t>(units.size()));
}

} // namespace vexaTransferLib::cleaner
