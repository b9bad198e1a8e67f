// SPDX-License-Identifier: MIT
#include <vexaTransferLib/writer/TextSink.h>

#include <vexaTransferLib/writer/XmlEntities.h>

#include <common/dbc.h>

#include <algorithm>
#include <array>

namespace vexaTransferLib::writer {

void UnicodeSink::AppendAscii(std::string_view text) {
    std::array<char16_t, 256> units;
    while (!text.empty()) {
        const std::size_t count = std::min(text.size(), units.size());
        std::copy_n(text.begin(), count, units.begin());
        out_.append(units.data(), static_cast<std::int32_t>(count));
        text.remove_prefix(count);
    }
}

// Appends the runs between the special characters whole: escaping in place would take quadratic time.
void UnicodeSink::Escaped(const icu::UnicodeString& text) {
    const char16_t* const units = text.getBuffer();
    const std::int32_t length = text.length();
    std::int32_t runStart = 0;
    for (std::int32_t i = 0; i < length; ++i) {
        if (!IsSpecial(units[i]))
            continue;
        out_.append(units, runStart, i - runStart);
        Ascii(EntityOf(units[i]));
        runStart = i + 1;
    }
    out_.append(units, runStart, length - runStart);
}

void RequireNotBogus(const icu::UnicodeString& text, const char* source, int line) {
    dbc::Ensure(!text.isBogus(), source, "The GPX text is too large to be held in memory.", line);
}

} // namespace vexaTransferLib::writer
