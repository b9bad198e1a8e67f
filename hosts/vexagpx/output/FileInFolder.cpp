// SPDX-License-Identifier: MIT
#include <vexagpx/output/FileInFolder.h>

#include <cerrno>
#include <system_error>

#include <fcntl.h>

namespace vexagpx {

std::optional<struct stat> StatusOf(const FileInFolder& file) {
    struct stat status {};
    if (::fstatat(file.folder.Get(), file.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0)
        return status;
    if (errno != ENOENT)
        throw std::system_error(errno, std::generic_category());
    return std::nullopt;
}

} // namespace vexagpx
