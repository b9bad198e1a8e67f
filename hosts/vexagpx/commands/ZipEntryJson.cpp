// SPDX-License-Identifier: MIT
#include <vexagpx/commands/ZipEntryJson.h>

#include <vexagpx/output/JsonWriter.h>
#include <vexagpx/output/ValueText.h>

#include <chrono>
#include <cstdint>
#include <string_view>

namespace vexagpx {

namespace {

/// The bits of a number from `first` on.
unsigned Bits(std::uint32_t number, unsigned first, unsigned count) {
    return (number >> first) & ((1U << count) - 1);
}

/// "2009-01-15T10:20:30"; empty for what is no date. It has no zone, because the archive states none.
std::string LocalTimeText(std::uint32_t dosTime) {
    const std::chrono::year_month_day date{std::chrono::year(1980 + static_cast<int>(Bits(dosTime, 25, 7))),
                                           std::chrono::month(Bits(dosTime, 21, 4)),
                                           std::chrono::day(Bits(dosTime, 16, 5))};
    const unsigned hour = Bits(dosTime, 11, 5);
    const unsigned minute = Bits(dosTime, 5, 6);
    const unsigned second = 2 * Bits(dosTime, 0, 5);
    if (!date.ok() || hour > 23 || minute > 59 || second > 59)
        return {};
    const std::chrono::milliseconds time = std::chrono::sys_days(date).time_since_epoch() +
                                           std::chrono::hours(hour) + std::chrono::minutes(minute) +
                                           std::chrono::seconds(second);
    const TimeDigits digits(static_cast<double>(time.count()));
    return std::string(digits.Text().substr(0, digits.Text().size() - 1));
}

std::string HexText(std::uint32_t number) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (unsigned shift = 32; shift != 0; shift -= 4)
        text += kDigits[Bits(number, shift - 4, 4)];
    return text;
}

} // namespace

void WriteEntryJson(const Archive& archive, const std::string& file, Output& out) {
    const vexaTransferLib::ZipEntryInfo& info = archive.Info();
    JsonWriter json(out);
    json.BeginObject();
    json.Member("entry", archive.Name());
    json.Member("file", file);
    if (archive.IsNameCut())
        json.Member("nameIsCut", true);
    json.Member("folder", archive.IsFolder());
    json.Member("link", archive.IsLink());
    json.Member("encrypted", info.isEncrypted);
    if (archive.HasSizes()) {
        json.Member("size", info.size);
        json.Member("compressedSize", info.compressedSize);
    }
    json.Member("method", std::uint32_t{info.method});
    if (const std::string_view name = MethodName(info.method); !name.empty())
        json.Member("methodName", name);
    if (const std::string time = LocalTimeText(info.dosTime); !time.empty())
        json.Member("localTime", time);
    json.Member("crc32", HexText(info.crc));
    json.EndObject();
    out.Write("\n");
}

} // namespace vexagpx
