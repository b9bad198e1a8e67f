// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <unicode/unistr.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>

namespace vexaTransferLib::standard {

/// Collects a text and passes it on in pieces.
class PieceOutput {
public:
    using Receive = std::function<void(std::string_view)>;

    explicit PieceOutput(const Receive& receive) : receive_(receive), buffer_(new char[kSize]) {}

    void Append(std::string_view text) {
        if (text.size() > kSize - used_) {
            AppendLong(text);
            return;
        }
        std::char_traits<char>::copy(buffer_.get() + used_, text.data(), text.size());
        used_ += text.size();
    }
    template <class... Texts>
    void AppendAll(const Texts&... texts) {
        (Append(texts), ...);
    }

    enum class Place { kContent, kAttribute };
    /// Escapes what markup would be; a character that XML cannot hold becomes U+FFFD.
    void AppendEscaped(const icu::UnicodeString& text, Place place);
    /// The shortest decimal that reads back the same. Finite.
    void AppendNumber(double number);
    void AppendInteger(long long number);

    /// How many bytes were appended.
    std::size_t Count() const { return passedOn_ + used_; }
    /// Passes on the rest.
    void Flush();

private:
    static constexpr std::size_t kSize = std::size_t{64} * 1024;

    void AppendLong(std::string_view text);

    const Receive& receive_;
    std::unique_ptr<char[]> buffer_;
    std::size_t used_ = 0;
    std::size_t passedOn_ = 0;
};

/// True for a character that XML 1.0 can hold.
bool IsXmlCharacter(char32_t character);

} // namespace vexaTransferLib::standard
