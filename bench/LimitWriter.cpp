// SPDX-License-Identifier: MIT
#include "LimitWriter.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace bench {

namespace {

using namespace vexaTransferLib;

constexpr std::int64_t kSecondsPerDay = 86400;

// "00" to "99" in one text.
constexpr std::array<char, 200> kPairs = [] {
    std::array<char, 200> pairs = {};
    for (std::size_t i = 0; i < pairs.size(); ++i)
        pairs[i] = static_cast<char>('0' + (i % 2 == 0 ? i / 20 : i / 2 % 10));
    return pairs;
}();

char* AppendPair(char* out, std::uint64_t number) {
    std::memcpy(out, kPairs.data() + 2 * number, 2);
    return out + 2;
}

template <std::size_t size>
char* AppendLiteral(char* out, const char (&text)[size]) {
    std::memcpy(out, text, size - 1);
    return out + size - 1;
}

constexpr std::uint64_t PowerOfTen(int exponent) {
    return exponent == 0 ? 1 : 10 * PowerOfTen(exponent - 1);
}

template <int decimals>
char* AppendFixed(char* out, double number) {
    constexpr std::uint64_t kUnits = PowerOfTen(decimals);
    const auto units = static_cast<std::uint64_t>(number * static_cast<double>(kUnits) + 0.5);
    out = std::to_chars(out, out + 20, units / kUnits).ptr;
    *out++ = '.';
    std::uint64_t rest = units % kUnits;
    char* const end = out + decimals;
    char* next = end;
    for (; next - out > 1; rest /= 100)
        AppendPair(next -= 2, rest % 100);
    if (next != out)
        *out = static_cast<char>('0' + rest);
    return end;
}

// "2012-03-14T" of a day since 1970, and the "Z" of the time after room for the clock.
class TimeForm {
public:
    char* Append(char* out, std::int64_t second) {
        const std::int64_t day = second / kSecondsPerDay;
        if (day != day_)
            SetDay(day);
        const auto rest = static_cast<std::uint64_t>(second % kSecondsPerDay);
        std::memcpy(out, text_.data(), text_.size());
        AppendPair(out + 11, rest / 3600);
        AppendPair(out + 14, rest / 60 % 60);
        AppendPair(out + 17, rest % 60);
        return out + text_.size();
    }

private:
    void SetDay(std::int64_t day) {
        const std::chrono::year_month_day date{std::chrono::sys_days{std::chrono::days{day}}};
        const auto year = static_cast<std::uint64_t>(static_cast<int>(date.year()));
        AppendPair(text_.data(), year / 100);
        AppendPair(text_.data() + 2, year % 100);
        AppendPair(text_.data() + 5, static_cast<unsigned>(date.month()));
        AppendPair(text_.data() + 8, static_cast<unsigned>(date.day()));
        day_ = day;
    }

    std::int64_t day_ = -1;
    std::array<char, 20> text_ = {'0', '0', '0', '0', '-', '0', '0', '-', '0', '0',
                                  'T', '0', '0', ':', '0', '0', ':', '0', '0', 'Z'};
};

// A file that is written in large pieces, each of which fits into the processor's cache.
class PieceFile {
public:
    explicit PieceFile(const std::string& path)
        : file_(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666)), piece_(kPiece + kRoom),
          next_(piece_.data()) {
        if (file_ < 0)
            throw std::runtime_error("Unable to create " + path);
    }
    ~PieceFile() { ::close(file_); }
    PieceFile(const PieceFile&) = delete;
    PieceFile& operator=(const PieceFile&) = delete;

    char* Next() const { return next_; }

    /// Takes what was written at Next, at most kRoom bytes.
    void Take(const char* end) {
        next_ += end - next_;
        if (next_ - piece_.data() >= static_cast<std::ptrdiff_t>(kPiece))
            Flush();
    }

    void Append(std::string_view text) { Take(next_ + text.copy(next_, kRoom)); }

    void Flush() {
        const std::size_t size = static_cast<std::size_t>(next_ - piece_.data());
        if (::write(file_, piece_.data(), size) != static_cast<ssize_t>(size))
            throw std::runtime_error("Unable to write the file.");
        next_ = piece_.data();
    }

private:
    static constexpr std::size_t kPiece = std::size_t{1} << 18;
    static constexpr std::size_t kRoom = 4096;

    int file_;
    std::vector<char> piece_;
    char* next_;
};

// Everything before the first segment of the text that the library writes.
std::string HeadOf(const GpxDocument& document, const std::string& applicationName,
                   const std::string& applicationUrl) {
    std::string text;
    document.WriteToString(GpxVersion::GetLatestVersion(), icu::UnicodeString::fromUTF8(applicationName),
                           icu::UnicodeString::fromUTF8(applicationUrl), text);
    return text.substr(0, text.find("<trkseg>"));
}

} // namespace

LimitWriter::LimitWriter(const GpxDocument& document, const std::string& applicationName,
                         const std::string& applicationUrl)
    : head_(HeadOf(document, applicationName, applicationUrl)) {
    if (document.GetTrackCount() != 1 || document.GetWaypointCount() + document.GetRouteCount() != 0)
        throw std::runtime_error("The limit of writing needs one track and nothing else.");
    AddTrack(*document.GetTrackIter());
}

LimitWriter::Point LimitWriter::PointOf(const GpxPoint& point) {
    Point result = {};
    double millis = 0.0;
    point.GetPoint(result.latitude, result.longitude);
    if (!point.GetElevation(result.elevation) || !point.GetTime(millis))
        throw std::runtime_error("The limit of writing needs points with elevation and time.");
    result.second = static_cast<std::int64_t>(millis) / 1000;
    return result;
}

void LimitWriter::AddTrack(const GpxTrack& track) {
    for (auto segment = track.GetSegmentIter(); segment != track.GetSegmentEndIter(); ++segment) {
        segments_.emplace_back();
        for (const GpxPoint& point : *segment)
            segments_.back().push_back(PointOf(point));
    }
}

void LimitWriter::WriteToFile(const std::string& path) const {
    PieceFile file(path);
    TimeForm time;
    file.Append(head_);
    for (const Segment& segment : segments_) {
        file.Append("<trkseg>\r\n");
        for (const Point& point : segment) {
            char* out = AppendLiteral(file.Next(), "<trkpt lat=\"");
            out = AppendLiteral(AppendFixed<9>(out, point.latitude), "\" lon=\"");
            out = AppendLiteral(AppendFixed<9>(out, point.longitude), "\">\r\n<ele>");
            out = AppendLiteral(AppendFixed<6>(out, point.elevation), "</ele>\r\n<time>");
            file.Take(AppendLiteral(time.Append(out, point.second), "</time>\r\n</trkpt>\r\n"));
        }
        file.Append("</trkseg>\r\n");
    }
    file.Append("</trk>\r\n</gpx>\r\n");
    file.Flush();
}

} // namespace bench
