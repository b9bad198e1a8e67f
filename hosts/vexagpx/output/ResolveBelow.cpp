// SPDX-License-Identifier: MIT
#include <vexagpx/output/ResolveBelow.h>

#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include <sys/stat.h>

namespace vexagpx {

namespace {

constexpr mode_t kNothing = 0;

[[noreturn]] void Fail(const FileInFolder& file, int error) {
    throw std::runtime_error(file.path + ": " + ErrorText(error));
}

/// The type of what has this name; a link is not followed.
mode_t KindOf(const FileInFolder& file) {
    try {
        const std::optional<struct stat> status = StatusOf(file);
        return status ? status->st_mode & S_IFMT : kNothing;
    } catch (const std::system_error& error) {
        Fail(file, error.code().value());
    }
}

Descriptor EnterFolder(const FileInFolder& file) {
    if (::mkdirat(file.folder.Get(), file.name.c_str(), 0777) != 0 && errno != EEXIST)
        Fail(file, errno);
    try {
        return OpenFolderIn(file.folder, file.name);
    } catch (const std::system_error& error) {
        const int cause = error.code().value();
        if (cause != ENOTDIR && cause != ELOOP)
            Fail(file, cause);
    }
    throw std::runtime_error(file.path + (KindOf(file) == S_IFLNK ? " is a link" : " is no folder"));
}

} // namespace

Descriptor MakeFolder(const std::string& path) {
    try {
        std::error_code error;
        std::filesystem::create_directories(path, error);
        if (error)
            throw std::system_error(error);
        return OpenFolder(path);
    } catch (const std::system_error& error) {
        throw std::runtime_error("Unable to make the folder: " + path + " (" +
                                 ErrorText(error.code().value()) + ")");
    }
}

FileInFolder ResolveBelow(const Descriptor& folder, const std::string& path,
                          const std::vector<std::string>& parts) {
    FileInFolder file{Duplicate(folder), {}, path};
    for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
        file.name = parts[i];
        file.path += "/" + parts[i];
        file.folder = EnterFolder(file);
    }
    file.name = parts.back();
    if (file.name.empty())
        return file;
    file.path += "/" + file.name;
    switch (KindOf(file)) {
    case kNothing:
    case S_IFREG:
        return file;
    case S_IFLNK:
        throw std::runtime_error(file.path + " is a link");
    default:
        throw std::runtime_error(file.path + " is no file");
    }
}

} // namespace vexagpx
