// SPDX-License-Identifier: MIT
#include <vexagpx/terminal/ProgressBar.h>

#include <vexagpx/process/Messages.h>
#include <vexagpx/process/Posix.h>
#include <vexagpx/terminal/DisplayText.h>

#include <algorithm>

#include <sys/ioctl.h>
#include <unistd.h>

namespace vexagpx {

namespace {

constexpr std::size_t kWidestBar = 40;
constexpr std::size_t kNarrowestBar = 10;
constexpr std::size_t kGap = 2;
constexpr std::size_t kBrackets = 2;

bool hidden = false;

double Share(const Progress& progress) {
    return std::min(1.0, static_cast<double>(progress.done) / static_cast<double>(progress.inAll));
}

icu::UnicodeString PercentText(const Progress& progress) {
    const std::string digits = std::to_string(static_cast<int>(Share(progress) * 100.0));
    return icu::UnicodeString::fromUTF8(std::string(3 - digits.size(), ' ') + digits + '%');
}

icu::UnicodeString BarText(const Progress& progress, std::size_t width) {
    const auto full = static_cast<std::size_t>(Share(progress) * static_cast<double>(width));
    return icu::UnicodeString::fromUTF8('[' + std::string(full, '=') + std::string(width - full, ' ') + ']');
}

icu::UnicodeString Spaces(std::size_t count) {
    return icu::UnicodeString(static_cast<std::int32_t>(count), u' ', static_cast<std::int32_t>(count));
}

/// The columns of the terminal without the last one, after which the line could break.
std::size_t UsableColumns(int terminal) {
    struct winsize size {};
    if (::ioctl(terminal, TIOCGWINSZ, &size) != 0 || size.ws_col == 0)
        return 79;
    return size.ws_col - 1U;
}

/// False for a job in the background, which must not overwrite what another one shows.
bool IsInForeground(int terminal) {
    const pid_t group = ::tcgetpgrp(terminal);
    return group < 0 || group == ::getpgrp();
}

} // namespace

icu::UnicodeString ProgressLine(const icu::UnicodeString& name, const Progress& progress, std::size_t width) {
    const bool isShare = progress.inAll > 0;
    icu::UnicodeString amount = isShare ? PercentText(progress) : SizeText(progress.done);
    const std::size_t amountWidth = DisplayWidth(amount);
    if (width < amountWidth)
        return {};
    if (width < amountWidth + kGap + 1)
        return amount;
    std::size_t room = width - amountWidth - kGap;
    const std::size_t nameWidth = DisplayWidth(name);
    icu::UnicodeString bar;
    constexpr std::size_t kLeast = kNarrowestBar + kBrackets + kGap;
    if (isShare && room >= kLeast + std::min(nameWidth, kNarrowestBar)) {
        const std::size_t left = room - std::min(nameWidth, room - kLeast) - kBrackets - kGap;
        const std::size_t barWidth = std::min(left, kWidestBar);
        bar = Spaces(kGap) + BarText(progress, barWidth);
        room -= barWidth + kBrackets + kGap;
    }
    return FittedAtEnd(name, room) + bar + Spaces(kGap) + amount;
}

bool ProgressPace::IsDue(Time now) {
    if (now < next_)
        return false;
    next_ = now + std::chrono::milliseconds(100);
    return true;
}

ProgressBar::ProgressBar(const std::string& name)
    : name_(Printable(icu::UnicodeString::fromUTF8(name))),
      wanted_(!hidden && IsCapableTerminal(STDERR_FILENO)), pace_(std::chrono::steady_clock::now()) {}

ProgressBar::~ProgressBar() {
    ClearStatus();
}

void ProgressBar::Update(const Progress& progress) {
    if (!wanted_ || !pace_.IsDue(std::chrono::steady_clock::now()))
        return;
    constexpr int kTerminal = STDERR_FILENO;
    if (!IsInForeground(kTerminal))
        return;
    std::string line;
    ProgressLine(name_, progress, UsableColumns(kTerminal)).toUTF8String(line);
    ShowStatus(line);
}

void HideProgress() {
    hidden = true;
}

} // namespace vexagpx
