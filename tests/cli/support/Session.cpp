// SPDX-License-Identifier: MIT
#include "support/Session.h"

#include "support/Signals.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cli {

using namespace std::chrono_literals;

namespace {

constexpr auto kLimit = 60s;

using Clock = std::chrono::steady_clock;

} // namespace

void TerminalTest::SetUp() {
    int ends[2];
    if (::openpty(&ends[0], &ends[1], nullptr, nullptr, nullptr) != 0)
        GTEST_SKIP() << "no terminal can be made here: " << std::strerror(errno);
    for (const int end : ends)
        ::close(end);
}

Session::Session(std::vector<std::string> arguments) : arguments_(std::move(arguments)) {
    environment_["TERM"] = "xterm";
}

Session::~Session() {
    if (child_ > 0 && !ended_) {
        ::kill(child_, SIGKILL);
        ::waitpid(child_, nullptr, 0);
    }
    if (terminal_ >= 0)
        ::close(terminal_);
}

Session& Session::In(const std::string& folder) {
    folder_ = folder;
    return *this;
}

Session& Session::Set(const std::string& name, const std::string& value) {
    environment_[name] = value;
    return *this;
}

Session& Session::Columns(unsigned short columns) {
    columns_ = columns;
    return *this;
}

Session& Session::OutToTerminal() {
    outToTerminal_ = true;
    return *this;
}

Session& Session::InBackground() {
    background_ = true;
    return *this;
}

Session& Session::Ignoring(int signal) {
    ignored_ = signal;
    return *this;
}

void Session::Become() const {
    ResetSignals(ignored_);
    if (background_) {
        const pid_t job = ::fork();
        if (job != 0) {
            int status = 0;
            ::waitpid(job, &status, 0);
            ::_exit(WIFEXITED(status) ? WEXITSTATUS(status) : 126);
        }
        ::setpgid(0, 0);
    }
    if (!outToTerminal_) {
        const int out = ::open(files_.File("out").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
        ::dup2(out, STDOUT_FILENO);
    }
    for (const auto& [name, value] : environment_)
        ::setenv(name.c_str(), value.c_str(), 1);
    std::vector<char*> arguments;
    arguments.push_back(const_cast<char*>("vexagpx"));
    for (const std::string& argument : arguments_)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    if (::chdir(folder_.c_str()) == 0)
        ::execv(VEXAGPX_TOOL, arguments.data());
    ::_exit(127);
}

Session& Session::Start() {
    files_.Write("out", "");
    struct winsize size {};
    size.ws_row = 24;
    size.ws_col = columns_;
    const SignalBlock block;
    child_ = ::forkpty(&terminal_, nullptr, nullptr, &size);
    if (child_ < 0)
        throw std::runtime_error("cannot make a terminal");
    if (child_ == 0)
        Become();
    ::fcntl(terminal_, F_SETFD, FD_CLOEXEC);
    return *this;
}

void Session::Pump(std::chrono::milliseconds patience) {
    pollfd waiting{terminal_, POLLIN, 0};
    if (::poll(&waiting, 1, static_cast<int>(patience.count())) <= 0)
        return;
    std::array<char, 4096> buffer;
    const ssize_t count = ::read(terminal_, buffer.data(), buffer.size());
    if (count > 0)
        screen_.append(buffer.data(), static_cast<std::size_t>(count));
    else
        std::this_thread::sleep_for(1ms); // the other end is closed
}

void Session::CheckEnd() {
    int status = 0;
    if (ended_ || ::waitpid(child_, &status, WNOHANG) != child_)
        return;
    ended_ = true;
    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

bool Session::Until(const std::function<bool()>& condition) {
    for (const auto start = Clock::now(); Clock::now() - start < kLimit;) {
        if (condition())
            return true;
        if (ended_)
            return false;
        Pump(5ms);
        CheckEnd();
    }
    return false;
}

bool Session::StepUntil(const std::function<bool()>& condition, std::chrono::milliseconds pause) {
    for (const auto start = Clock::now(); Clock::now() - start < kLimit;) {
        Stop();
        if (ended_)
            return false;
        for (const auto rest = Clock::now(); Clock::now() - rest < pause;)
            Pump(5ms);
        if (condition())
            return true;
        Continue();
        std::this_thread::sleep_for(2ms);
    }
    return false;
}

void Session::Finish() {
    if (!Until([this] { return ended_; })) {
        ADD_FAILURE() << "the run does not end";
        return;
    }
    // Another process of the run may still write when the run itself has ended.
    for (const auto start = Clock::now(); Clock::now() - start < kLimit;) {
        pollfd waiting{terminal_, POLLIN, 0};
        std::array<char, 4096> buffer;
        if (::poll(&waiting, 1, 100) <= 0)
            continue;
        const ssize_t count = ::read(terminal_, buffer.data(), buffer.size());
        if (count <= 0)
            return;
        screen_.append(buffer.data(), static_cast<std::size_t>(count));
    }
}

void Session::Type(const std::string& keys) const {
    if (::write(terminal_, keys.data(), keys.size()) != static_cast<ssize_t>(keys.size()))
        throw std::runtime_error("cannot type");
}

bool Session::HasPending(int signal) const {
    std::ifstream status("/proc/" + std::to_string(child_) + "/status");
    const unsigned long long bit = 1ULL << (signal - 1);
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("SigPnd:") || line.starts_with("ShdPnd:"))
            if ((std::stoull(line.substr(7), nullptr, 16) & bit) != 0)
                return true;
    return false;
}

void Session::Send(int signal) const {
    ::kill(child_, signal);
}

void Session::SendAndWait(int signal) {
    Send(signal);
    Until([&] { return !HasPending(signal); });
}

void Session::Stop() {
    ::kill(child_, SIGSTOP);
    int status = 0;
    if (ended_ || ::waitpid(child_, &status, WUNTRACED) != child_ || WIFSTOPPED(status))
        return;
    ended_ = true;
    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

void Session::Continue() const {
    ::kill(child_, SIGCONT);
}

} // namespace cli
