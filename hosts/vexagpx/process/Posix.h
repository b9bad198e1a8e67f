// SPDX-License-Identifier: MIT
#pragma once

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
    /// False, and errno set, when the system could not finish what was written.
    bool Close();

private:
    int fd_;
};

/// Opens a file by the bytes of its name, without following them into any encoding.
/// \throws std::system_error
Descriptor OpenFile(const std::string& path, int flags, unsigned mode = 0666);

/// Opens a folder as the place of names, which needs no right to read it. Links are followed.
/// \throws std::system_error
Descriptor OpenFolder(const std::string& path);

/// Opens a folder in another one by its name alone. A link is no folder.
/// \throws std::system_error
Descriptor OpenFolderIn(const Descriptor& folder, const std::string& name);

/// A second descriptor of the same file.
/// \throws std::system_error
Descriptor Duplicate(const Descriptor& descriptor);

/// False, and errno set, when not everything was written.
bool WriteAll(int fd, std::string_view bytes);

/// One piece of at most `capacity` bytes; 0 at the end, -1 and errno on failure.
long ReadSome(int fd, char* buffer, std::size_t capacity);

/// The rest of the file.
/// \throws std::system_error
std::string ReadAll(int fd);

/// The text of an error number, in English whatever the locale.
std::string ErrorText(int error);

/// What a caller closed (as `2>&-` does) is opened in a way that still fails, so that no file of the program
/// gets one of the three standard numbers.
void KeepStandardDescriptors();

} // namespace vexagpx
