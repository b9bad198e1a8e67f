// SPDX-License-Identifier: MIT
#include <vexagpx/commands/Clean.h>

#include <vexagpx/input/Input.h>
#include <vexagpx/process/Messages.h>

#include <vexaTransferLib/CleanText.h>

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string_view>

namespace vexagpx {

namespace {

icu::UnicodeString DecodeUtf8(std::string_view bytes) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (bytes.substr(0, kByteOrderMark.size()) == kByteOrderMark)
        bytes.remove_prefix(kByteOrderMark.size());
    constexpr char kTooLarge[] = "The text is too large to be held in memory.";
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()))
        throw std::runtime_error(kTooLarge);
    icu::UnicodeString text =
        icu::UnicodeString::fromUTF8(icu::StringPiece(bytes.data(), static_cast<std::int32_t>(bytes.size())));
    if (text.isBogus())
        throw std::runtime_error(kTooLarge);
    return text;
}

} // namespace

bool Clean(const CleanOptions& options, Output& out) {
    std::string cleaned;
    try {
        icu::UnicodeString text = DecodeUtf8(ReadInput(options.file));
        vexaTransferLib::CleanText().CleanWebTextForTova(text);
        text.toUTF8String(cleaned);
    } catch (const std::exception& failure) {
        PrintError(failure.what());
        return false;
    }
    out.Write(cleaned);
    return true;
}

} // namespace vexagpx
