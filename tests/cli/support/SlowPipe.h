// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <csignal>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cli {

/// A named pipe that passes on at once what the test writes.
class SlowPipe {
public:
    explicit SlowPipe(const std::string& path) : path_(path) {
        std::signal(SIGPIPE, SIG_IGN);
        if (::mkfifo(path.c_str(), 0600) != 0)
            throw std::runtime_error("cannot make the pipe " + path);
    }
    ~SlowPipe() { Close(); }
    SlowPipe(const SlowPipe&) = delete;
    SlowPipe& operator=(const SlowPipe&) = delete;

    /// Waits until a process has opened it for reading.
    void Open() {
        using namespace std::chrono_literals;
        for (int i = 0; i < 6000 && fd_ < 0; ++i) {
            fd_ = ::open(path_.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
            if (fd_ < 0)
                std::this_thread::sleep_for(10ms);
        }
        if (fd_ < 0 || ::fcntl(fd_, F_SETFL, 0) != 0)
            throw std::runtime_error("nobody reads the pipe " + path_);
    }

    /// Opens the pipe when it is not open. Bytes that are no longer read are lost.
    void Write(std::string_view bytes) {
        if (fd_ < 0)
            Open();
        static_cast<void>(!::write(fd_, bytes.data(), bytes.size()));
    }

    /// Closes the pipe, which is the end of the file for its reader.
    void Close() {
        if (fd_ >= 0)
            ::close(fd_);
        fd_ = -1;
    }

private:
    std::string path_;
    int fd_ = -1;
};

} // namespace cli
