// SPDX-License-Identifier: MIT
#include <vexagpx/process/ReportFilter.h>

#include <vexagpx/process/Messages.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vexagpx {

namespace {

constexpr std::string_view kReportStart = "ASSERT failed at ";
// Far above any report; keeps a stream without line ends from being collected whole.
constexpr std::size_t kLongestReport = 4096;

bool CanBecomeReport(std::string_view line) {
    const std::size_t common = std::min(line.size(), kReportStart.size());
    return line.size() <= kLongestReport && line.substr(0, common) == kReportStart.substr(0, common);
}

/// "ASSERT failed at SOURCE:LINE" and the line feed.
bool IsReport(std::string_view line) {
    if (line.substr(0, kReportStart.size()) != kReportStart)
        return false;
    line.remove_prefix(kReportStart.size());
    line.remove_suffix(1);
    const std::size_t colon = line.rfind(':');
    return colon != std::string_view::npos && colon > 0 && colon + 1 < line.size() &&
           line.find_first_not_of("0123456789", colon + 1) == std::string_view::npos;
}

[[noreturn]] void FailWith(int error, const char* what) {
    throw std::system_error(error, std::generic_category(), what);
}

} // namespace

void ReportSplitter::Take(std::string_view bytes) {
    while (!bytes.empty())
        bytes.remove_prefix(place_ == Place::kInOther ? TakeOther(bytes) : TakeCandidate(bytes));
}

std::size_t ReportSplitter::TakeOther(std::string_view bytes) {
    const std::size_t end = bytes.find('\n');
    const std::size_t count = end == std::string_view::npos ? bytes.size() : end + 1;
    others_(bytes.substr(0, count));
    if (end != std::string_view::npos)
        place_ = Place::kLineStart;
    return count;
}

std::size_t ReportSplitter::TakeCandidate(std::string_view bytes) {
    held_ += bytes.front();
    place_ = Place::kInReport;
    if (bytes.front() == '\n') {
        (IsReport(held_) ? reports_ : others_)(held_);
        held_.clear();
        place_ = Place::kLineStart;
    } else if (!CanBecomeReport(held_)) {
        others_(held_);
        held_.clear();
        place_ = Place::kInOther;
    }
    return 1;
}

void ReportSplitter::End() {
    if (!held_.empty())
        others_(held_);
    held_.clear();
    place_ = Place::kLineStart;
}

namespace {

/// The child's whole life.
[[noreturn]] void CopyUntilEnd(int from, int to, int log) {
    for (const int signal : {SIGINT, SIGQUIT, SIGTERM, SIGHUP, SIGPIPE})
        std::signal(signal, SIG_IGN);
    // A reader at the other end of standard output must not wait for this process.
    ::close(STDIN_FILENO);
    ::close(STDOUT_FILENO);
    bool logged = true;
    ReportSplitter splitter(
        [&](std::string_view line) { logged = logged && (log < 0 || WriteAll(log, line)); },
        [&](std::string_view text) { static_cast<void>(WriteAll(to, text)); });
    std::array<char, 1 << 14> buffer;
    for (long count; (count = ReadSome(from, buffer.data(), buffer.size())) > 0;)
        splitter.Take({buffer.data(), static_cast<std::size_t>(count)});
    splitter.End();
    if (log >= 0 && ::close(log) != 0)
        logged = false;
    ::_exit(logged ? 0 : 1);
}

} // namespace

ReportFilter::ReportFilter(Descriptor log) : original_(::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3)) {
    int ends[2];
    if (!original_.IsOpen() || ::pipe2(ends, O_CLOEXEC) != 0)
        FailWith(errno, "Unable to redirect standard error");
    const Descriptor readEnd(ends[0]);
    Descriptor writeEnd(ends[1]);
    child_ = ::fork();
    if (child_ < 0)
        FailWith(errno, "Unable to redirect standard error");
    if (child_ == 0) {
        static_cast<void>(writeEnd.Close());
        ::close(STDERR_FILENO);
        CopyUntilEnd(readEnd.Get(), original_.Get(), log.Get());
    }
    SetErrorDescriptor(original_.Get());
    ::dup2(writeEnd.Get(), STDERR_FILENO);
}

ReportFilter::~ReportFilter() {
    static_cast<void>(Finish());
}

bool ReportFilter::Finish() {
    if (child_ < 0)
        return true;
    // Standard error goes on to exist: sanitizers and the like speak after main() has ended.
    ::dup2(original_.Get(), STDERR_FILENO);
    SetErrorDescriptor(STDERR_FILENO);
    int status = 0;
    pid_t ended;
    do
        ended = ::waitpid(child_, &status, 0);
    while (ended < 0 && errno == EINTR);
    child_ = -1;
    return ended < 0 || !WIFEXITED(status) || WEXITSTATUS(status) == 0;
}

} // namespace vexagpx
