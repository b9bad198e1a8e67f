// SPDX-License-Identifier: MIT
#include <vexagpx/output/PlaceBelow.h>

#include <cerrno>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include <sys/stat.h>

namespace vexagpx {

namespace {

constexpr mode_t kNothing = 0;

[[noreturn]] void Fail(const FilePlace& place, int error) {
    throw std::runtime_error(place.path + ": " + ErrorText(error));
}

/// The kind of what is at the place, links not followed.
mode_t KindAt(const FilePlace& place) {
    try {
        const std::optional<struct stat> status = StatusAt(place);
        return status ? status->st_mode & S_IFMT : kNothing;
    } catch (const std::system_error& error) {
        Fail(place, error.code().value());
    }
}

Descriptor EnterFolder(const FilePlace& place) {
    if (::mkdirat(place.folder.Get(), place.name.c_str(), 0777) != 0 && errno != EEXIST)
        Fail(place, errno);
    try {
        return OpenFolderIn(place.folder, place.name);
    } catch (const std::system_error& error) {
        const int cause = error.code().value();
        if (cause != ENOTDIR && cause != ELOOP)
            Fail(place, cause);
    }
    throw std::runtime_error(place.path + (KindAt(place) == S_IFLNK ? " is a link" : " is no folder"));
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

FilePlace PlaceBelow(const Descriptor& folder, const std::string& path,
                     const std::vector<std::string>& parts) {
    FilePlace place{Duplicate(folder), {}, path};
    for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
        place.name = parts[i];
        place.path += "/" + parts[i];
        place.folder = EnterFolder(place);
    }
    place.name = parts.back();
    if (place.name.empty())
        return place;
    place.path += "/" + place.name;
    switch (KindAt(place)) {
    case kNothing:
    case S_IFREG:
        return place;
    case S_IFLNK:
        throw std::runtime_error(place.path + " is a link");
    default:
        throw std::runtime_error(place.path + " is no file");
    }
}

} // namespace vexagpx
