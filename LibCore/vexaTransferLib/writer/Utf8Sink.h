// SPDX-License-Identifier: MIT
#pragma once

#ifndef VEXATRANSFERLIB_INTERNAL
#error "Internal header: not part of the installed interface."
#endif

#include <vexaTransferLib/text/CheckSites.h>
#include <vexaTransferLib/writer/TextSink.h>

#include <common/UnicodeStrUtils.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>

namespace vexaTransferLib::writer {

/// Appends UTF-8 to a buffer that becomes the result without a copy. An unpaired surrogate is written as ICU's
/// converter writes it, U+0000 as a zero byte.
class Utf8Sink final : public TextSink {
public:
    /// \param site what the report names when the text is too large
    /// \param limit the most bytes that the text may have; beyond it, or without the memory, writing or Take throws
    ///         dbc::postcondition_error
    explicit Utf8Sink(const text::CheckSite& site,
                      std::size_t limit = std::numeric_limits<std::uint32_t>::max())
        : site_(site), limit_(limit) {}

    void Raw(const icu::UnicodeString& text) override;
    void Escaped(const icu::UnicodeString& text) override;

    /// Returns the bytes written, followed by four zero bytes, and empties the sink.
    UnicodeStrUtils::ByteString Take();

private:
    struct Free {
        void operator()(char* bytes) const { std::free(bytes); }
    };

    void AppendAscii(std::string_view text) override;
    std::size_t Length() const { return static_cast<std::size_t>(next_ - bytes_.get()); }
    /// Makes room for so many more bytes, and for the zeros after them.
    void Reserve(std::size_t count);
    void Grow(std::size_t count);
    void RequireRoom(bool hasRoom) const;
    void Append(const char16_t* units, std::size_t count);

    text::CheckSite site_;
    std::size_t limit_;
    std::unique_ptr<char, Free> bytes_;
};

} // namespace vexaTransferLib::writer
