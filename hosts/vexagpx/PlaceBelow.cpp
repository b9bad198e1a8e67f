// SPDX-License-Identifier: MIT
#include <vexagpx/PlaceBelow.h>

#include <vexagpx/Posix.h>

#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include <sys/stat.h>

namespace vexagpx {

namespace {

constexpr mode_t kNothing = 0;

/// The kind of what is at the path, links not followed.
mode_t KindAt(const std::string& path) {
    struct stat status {};
    if (::lstat(path.c_str(), &status) == 0)
        return status.st_mode & S_IFMT;
    if (errno != ENOENT)
        throw std::runtime_error(path + ": " + ErrorText(errno));
    return kNothing;
}

void EnterFolder(const std::string& path) {
    if (::mkdir(path.c_str(), 0777) == 0)
        return;
    const int error = errno;
    if (error != EEXIST)
        throw std::runtime_error(path + ": " + ErrorText(error));
    const mode_t kind = KindAt(path);
    if (kind == S_IFLNK)
        throw std::runtime_error(path + " is a link");
    if (kind != S_IFDIR)
        throw std::runtime_error(path + " is no folder");
}

} // namespace

void MakeFolder(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        throw std::runtime_error("Unable to make the folder: " + folder + " (" + ErrorText(error.value()) +
                                 ")");
}

std::string PlaceBelow(const std::string& folder, const std::vector<std::string>& parts) {
    std::string path = folder;
    for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
        path += "/" + parts[i];
        EnterFolder(path);
    }
    if (parts.back().empty())
        return path;
    path += "/" + parts.back();
    switch (KindAt(path)) {
    case kNothing:
    case S_IFREG:
        return path;
    case S_IFLNK:
        throw std::runtime_error(path + " is a link");
    default:
        throw std::runtime_error(path + " is no file");
    }
}

} // namespace vexagpx
