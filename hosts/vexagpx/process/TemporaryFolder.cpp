// SPDX-License-Identifier: MIT
#include <vexagpx/process/TemporaryFolder.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace vexagpx {

namespace {

[[noreturn]] void Fail(int error) {
    throw std::system_error(error, std::generic_category(), "Unable to create a temporary folder");
}

std::string TemporaryRoot() {
    const char* root = std::getenv("TMPDIR");
    return root != nullptr && *root != '\0' ? root : "/tmp";
}

Descriptor OpenTemporaryRoot() {
    try {
        return OpenFolder(TemporaryRoot());
    } catch (const std::system_error& error) {
        Fail(error.code().value());
    }
}

std::string MakeFolder() {
    std::string path = TemporaryRoot() + "/vexagpx-XXXXXX";
    if (::mkdtemp(path.data()) == nullptr)
        Fail(errno);
    return path;
}

std::string NameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}

} // namespace

TemporaryFolder::TemporaryFolder(const std::string& fileName, const SignalBlock&)
    : parent_(OpenTemporaryRoot()), folderPath_(MakeFolder()), filePath_(folderPath_ + '/' + fileName),
      folder_(ScopedRemoval::Kind::kFolder, Duplicate(parent_), NameOf(folderPath_)),
      file_(ScopedRemoval::Kind::kFile, OpenFolderIn(parent_, NameOf(folderPath_)), fileName) {}

} // namespace vexagpx
