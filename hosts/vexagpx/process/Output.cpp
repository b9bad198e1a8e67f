// SPDX-License-Identifier: MIT
#include <vexagpx/process/Output.h>

#include <vexagpx/process/Colours.h>
#include <vexagpx/process/PlainText.h>
#include <vexagpx/process/Posix.h>

#include <cerrno>

#include <sys/ioctl.h>
#include <unistd.h>

namespace vexagpx {

namespace {

constexpr std::size_t kBufferSize = 1 << 16;

[[noreturn]] void Fail() {
    const int error = errno;
    const std::string message = "Unable to write to standard output: " + ErrorText(error);
    if (error == EPIPE)
        throw ClosedPipe(message);
    throw OutputError(message);
}

} // namespace

void Output::Write(std::string_view text) {
    buffer_.append(text);
    if (buffer_.size() >= kBufferSize)
        Flush();
}

void Output::Flush() {
    if (take_)
        return GiveBuffer();
    const bool written = WriteAll(fd_, buffer_);
    buffer_.clear();
    if (!written)
        Fail();
}

/// What was given is not given again, even if the taker throws.
void Output::GiveBuffer() {
    std::string piece;
    piece.swap(buffer_);
    take_(piece);
    // Its memory is used again.
    piece.clear();
    buffer_.swap(piece);
}

void Output::Close() {
    Flush();
    if (take_)
        return;
    if (::close(fd_) != 0 && errno != EINTR)
        Fail();
}

bool Output::UsesColours() const {
    return !take_ && vexagpx::UsesColours(fd_);
}

bool Output::ShowsOnlyAscii() const {
    return !take_ && vexagpx::ShowsOnlyAscii(fd_);
}

std::optional<std::size_t> Output::TerminalColumns() const {
    struct winsize size {};
    if (::ioctl(fd_, TIOCGWINSZ, &size) != 0 || size.ws_col == 0)
        return std::nullopt;
    return size.ws_col;
}

} // namespace vexagpx
