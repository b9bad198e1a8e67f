// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace vexagpx {

/// Owns a file descriptor.
class Descriptor {
public:
    explicit Descriptor(int fd = -1) : fd_(fd) {}
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }
    ~Descriptor() { Close(); }

    int Get() const { return fd_; }
    bool IsOpen() const { return fd_ >= 0; }
    /// False, with errno set, when the system could not finish a write.
    bool Close();

private:
    int fd_;
};

/// Opens a file by the bytes of its name, in whatever encoding they are.
/// \throws std::system_error
Descriptor OpenFile(const std::string& path, int flags, unsigned mode = 0666);

/// Opens a folder for looking up names in it, which needs no right to read it. Links are followed.
/// \throws std::system_error
Descriptor OpenFolder(const std::string& path);

/// Opens a folder in another one by its name. A link is refused.
/// \throws std::system_error
Descriptor OpenFolderIn(const Descriptor& folder, const std::string& name);

/// A second descriptor of the same file.
/// \throws std::system_error
Descriptor Duplicate(const Descriptor& descriptor);

/// Writes everything. False, with errno set, when that failed.
bool WriteAll(int fd, std::string_view bytes);

/// Reads at most `capacity` bytes. Returns their number, 0 at the end, and -1 with errno on failure.
long ReadSome(int fd, char* buffer, std::size_t capacity);

/// Reads the rest of the file.
/// \throws std::system_error
std::string ReadAll(int fd);

/// The size of a regular file; 0 for anything else, and when it is not known.
std::uint64_t FileSize(int fd);
std::uint64_t FileSize(const std::string& path);

/// True for a terminal that can do more than show characters, such as moving the cursor: not for one of the kind
/// "dumb".
bool IsCapableTerminal(int fd);

/// The text of an error number, in English whatever the locale.
std::string ErrorText(int error);

/// Opens those of the three standard descriptors that the caller had closed (as `2>&-` does), so that no other file
/// gets their number. Using them still fails.
void KeepStandardDescriptors();

} // namespace vexagpx
