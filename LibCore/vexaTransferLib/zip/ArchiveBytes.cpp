// SPDX-License-Identifier: MIT
#include <vexaTransferLib/zip/ArchiveBytes.h>

#include <algorithm>

namespace vexaTransferLib::zip {

namespace {

std::uint64_t Number(std::string_view bytes, std::size_t at, std::size_t count) {
    std::uint64_t number = 0;
    for (std::size_t i = count; i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

} // namespace

std::uint64_t Number16(std::string_view bytes, std::size_t at) {
    return Number(bytes, at, 2);
}

std::uint64_t Number32(std::string_view bytes, std::size_t at) {
    return Number(bytes, at, 4);
}

std::uint64_t Number64(std::string_view bytes, std::size_t at) {
    return Number(bytes, at, 8);
}

ArchiveBytes::ArchiveBytes(const std::string& path) : file_(path, std::ios::binary | std::ios::ate) {
    const std::streamoff size = file_ ? static_cast<std::streamoff>(file_.tellg()) : 0;
    size_ = size > 0 ? static_cast<std::uint64_t>(size) : 0;
}

std::size_t ArchiveBytes::ReadAt(std::uint64_t at, char* buffer, std::size_t count) {
    if (at >= size_)
        return 0;
    file_.clear();
    file_.seekg(static_cast<std::streamoff>(at));
    file_.read(buffer, static_cast<std::streamsize>(std::min<std::uint64_t>(count, size_ - at)));
    return file_.gcount() > 0 ? static_cast<std::size_t>(file_.gcount()) : 0;
}

std::string ArchiveBytes::ReadAt(std::uint64_t at, std::size_t count) {
    std::string bytes(at >= size_ ? 0 : static_cast<std::size_t>(std::min<std::uint64_t>(count, size_ - at)),
                      '\0');
    bytes.resize(ReadAt(at, bytes.data(), bytes.size()));
    return bytes;
}

} // namespace vexaTransferLib::zip
